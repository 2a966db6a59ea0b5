#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "StoreProcess.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/WindowSnapshot.h"
#include "device/ICImagePickerController.h"
#include "device/ICMediaPhotoHelper.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/Window.h"
#include "screens/account/AccountSafeViewController.h"
#include "screens/account/BindEmailViewController.h"
#include "screens/account/BindMobileViewController.h"
#include "screens/account/ModifyMobileOldViewController.h"
#include "screens/account/ModifyPasswordViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/PersonalDataBottomView.h"
#include "screens/account/PersonalDataViewController.h"
#include "service/ICSessionHelper.h"

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPainter>
#include <QPointer>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrlQuery>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findNamed;
using tarvel::test::findText;

namespace {

const QString Phone = QStringLiteral("13800138000");
const QString NewPhone = QStringLiteral("13811112222");
const QString OldPassword = QStringLiteral("tarvel2024");
const QString NewPassword = QStringLiteral("changed2025");

QVariant storeData(QNetworkAccessManager &network, const QString &url)
{
    QNetworkReply *reply = network.get(QNetworkRequest(QUrl(url)));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    finished.wait(10000);
    const QVariant data
            = QJsonDocument::fromJson(reply->readAll()).toVariant().toMap().value("data");
    reply->deleteLater();
    return data;
}

} // namespace

// The account screens end to end: tarvel-store runs as its own process and the app starts as it
// does for a user. Sign in, change the password and sign in with it, move the account to a new
// number through both SMS steps (codes from the store's outbox) and sign in with it, bind an
// e-mail address, then pick a picture file, crop it and save it with a new nickname and gender;
// after a relaunch the personal-data screen shows the new avatar.
class TestAccountFlow : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_storeFolder;
    QProcess m_storeProcess;
    QString m_baseUrl;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
    QNetworkAccessManager m_network;

    QQuickItem *root() const { return m_window->contentItem(); }

    QQuickItem *waitNamed(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findNamed(root(), name)) != nullptr; }, 10000))
            qWarning() << "no item named" << name;
        return found;
    }

    // Whether `item` has come to rest inside the window (sheets slide in slowly on a busy
    // machine).
    bool waitInWindow(QQuickItem *item)
    {
        QPointer<QQuickItem> target(item);
        const QRectF window(0, 0, m_window->width(), m_window->height());
        QPointF last(-1, -1);
        return target
               && QTest::qWaitFor(
                       [&] {
                           if (!target)
                               return false;
                           const QPointF centre = target->mapToScene(
                                   QPointF(target->width() / 2, target->height() / 2));
                           const bool resting = centre == last && window.contains(centre);
                           last = centre;
                           return resting;
                       },
                       10000);
    }

    // A tap as a user makes it: once the HUD of the last step has gone (its mask takes touches)
    // and the item is in the window.
    bool tap(QQuickItem *item)
    {
        return QTest::qWaitFor([] { return !platform::Hud::shared().isVisible(); }, 10000)
               && waitInWindow(item) && tarvel::test::tapWhenStill(m_window, item);
    }

    bool tapNamed(const QString &name) { return tap(waitNamed(name)); }

    void snapshot(const QString &name)
    {
        QVERIFY(tarvel::test::waitForStillScene(m_window)); // stacks and sheets have settled
        QVERIFY(WindowSnapshot::save(
                m_window, QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name)));
    }

    platform::NavigationController *homeStack() const
    {
        auto *tabs = qobject_cast<platform::TabBarController *>(
                AppDelegate::shared()->window()->rootViewController());
        return tabs ? qobject_cast<platform::NavigationController *>(tabs->viewControllerAt(0))
                    : nullptr;
    }

    template<typename Screen>
    Screen *waitTop()
    {
        Screen *screen = nullptr;
        const bool shown = QTest::qWaitFor(
                [&] {
                    screen = qobject_cast<Screen *>(homeStack()->topViewController());
                    return screen && !tarvel::test::stacksBusy(root());
                },
                10000);
        return shown ? screen : nullptr;
    }

    QString lastCode(const QString &phone)
    {
        const QVariantList messages
                = storeData(m_network, m_baseUrl + "/sandbox/outbox.json?to=" + phone).toList();
        return messages.isEmpty() ? QString() : messages.first().toMap().value("code").toString();
    }

    void launch()
    {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = AppLaunch::launch(*qGuiApp, *m_engine);
        QVERIFY(m_window);
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        QVERIFY(QTest::qWaitFor([this] { return homeStack() != nullptr; }, 10000));
        // The home page has come up and stands still.
        QVERIFY(waitNamed(QStringLiteral("homePageViewCell")));
        QVERIFY(QTest::qWaitFor([this] { return !tarvel::test::stacksBusy(root()); }));
    }

    // The sign-in screen presented over home, filled and sent; true when the user is in.
    bool signInThroughTheScreen(const QString &account, const QString &password)
    {
        AppDelegate::shared()->setUserLogin(std::nullopt);
        auto *signIn = new NavRootViewController;
        homeStack()->presentViewController(new platform::NavigationController(signIn), true);
        if (!waitNamed(QStringLiteral("buttonLogin"))) {
            qWarning() << "no sign-in button";
            return false;
        }
        signIn->fieldUser()->setText(account);
        signIn->fieldPassword()->setText(password);
        if (!tapNamed(QStringLiteral("buttonLogin"))) {
            qWarning() << "sign-in button not tapped";
            return false;
        }
        return QTest::qWaitFor(
                [] {
                    return AppDelegate::shared()->isSignedIn()
                           && AppDelegate::shared()->window()->presentedCount() == 0;
                },
                10000);
    }

    // Whether the store takes this account and password, asked from outside the app.
    bool storeAcceptsSignIn(const QString &account, const QString &password)
    {
        QNetworkAccessManager other;
        QNetworkRequest request(QUrl(m_baseUrl + QStringLiteral("/sign_in.json")));
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          QStringLiteral("application/x-www-form-urlencoded"));
        QUrlQuery form;
        form.addQueryItem(QStringLiteral("account[login_name]"), account);
        form.addQueryItem(QStringLiteral("account[password]"), password);
        QNetworkReply *reply = other.post(request, form.toString(QUrl::FullyEncoded).toUtf8());
        QSignalSpy finished(reply, &QNetworkReply::finished);
        finished.wait(10000);
        const QString status = QJsonDocument::fromJson(reply->readAll())
                                       .object()
                                       .value(QStringLiteral("status"))
                                       .toString();
        delete reply;
        return status == QLatin1String("success");
    }

    AccountSafeViewController *openSecurityList()
    {
        homeStack()->popToRootViewController(false);
        homeStack()->pushViewController(new AccountSafeViewController, true);
        return waitTop<AccountSafeViewController>();
    }

    // The button of security row `row`, as drawn.
    QQuickItem *rowButton(int row)
    {
        QQuickItem *cell = waitNamed(QStringLiteral("accountSafeCell%1").arg(row));
        return cell ? tarvel::test::findNamed(cell, QStringLiteral("buttonModify")) : nullptr;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_storeFolder.isValid());
        // Its own database, quiet, with the sandbox parties (SMS outbox, picture upload).
        const int port = tarvel::test::startStoreOnAnyPort(
                m_storeProcess,
                {QStringLiteral("--db"), m_storeFolder.filePath(QStringLiteral("store.sqlite")),
                 QStringLiteral("--quiet"), QStringLiteral("--sandbox")});
        QVERIFY(port > 0);
        m_baseUrl = QStringLiteral("http://127.0.0.1:%1").arg(port);
        QVERIFY(QTest::qWaitFor(
                [this] { return storeData(m_network, m_baseUrl + "/store.json").isValid(); },
                30000));
        qputenv("TARVEL_API_BASE_URL", m_baseUrl.toUtf8());
        // The SMS countdown runs on fast ticks, so the second step's code can follow soon.
        AppDelegate::shared()->setCountdownTickInterval(20);
    }

    void cleanupTestCase()
    {
        m_engine.reset();
        m_storeProcess.terminate();
        if (!m_storeProcess.waitForFinished(10000))
            m_storeProcess.kill();
    }

    void passwordPhoneEmailAndAvatar()
    {
        launch();
        QVERIFY(signInThroughTheScreen(Phone, OldPassword));

        // The password.
        QVERIFY(openSecurityList());
        QVERIFY(findText(root(), QStringLiteral("*138****8000")));
        snapshot(QStringLiteral("accountflow_1_security.png"));
        QVERIFY(tap(rowButton(0)));
        auto *password = waitTop<ModifyPasswordViewController>();
        QVERIFY(password);
        password->fieldOldPassword()->setText(OldPassword);
        password->fieldNewPassword()->setText(NewPassword);
        password->fieldNewPasswordAgain()->setText(NewPassword);
        QVERIFY(tapNamed(QStringLiteral("buttonSave")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        QVERIFY(!storeAcceptsSignIn(Phone, OldPassword));
        QVERIFY(signInThroughTheScreen(Phone, NewPassword));

        // The number, through both SMS steps.
        QVERIFY(openSecurityList());
        QVERIFY(tap(rowButton(1)));
        auto *stepOne = waitTop<ModifyMobileOldViewController>();
        QVERIFY(stepOne);
        QVERIFY(tapNamed(QStringLiteral("buttonAuthCode")));
        QTRY_COMPARE_WITH_TIMEOUT(lastCode(Phone).size(), 6, 10000);
        stepOne->fieldNewPsw()->setText(lastCode(Phone));
        stepOne->fieldPassword()->setText(NewPassword);
        QVERIFY(tapNamed(QStringLiteral("buttonNext")));
        auto *bind = waitTop<BindMobileViewController>();
        QVERIFY(bind);
        // The first step's countdown has to end before the new number gets its code.
        QTRY_COMPARE_WITH_TIMEOUT(AppDelegate::shared()->countdown(), AppDelegate::CountdownSeconds,
                                  10000);
        QTRY_VERIFY(!platform::UserDefaults::standard()
                             .objectForKey(QStringLiteral("isCountdown"))
                             .toBool());
        bind->fieldMobile()->setText(NewPhone);
        QVERIFY(tapNamed(QStringLiteral("buttonAuthCode")));
        QTRY_COMPARE_WITH_TIMEOUT(lastCode(NewPhone).size(), 6, 10000);
        bind->fieldAuthCode()->setText(lastCode(NewPhone));
        bind->fieldPassword()->setText(NewPassword);
        QVERIFY(tapNamed(QStringLiteral("buttonNext")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->phone_number, NewPhone);
        QVERIFY(signInThroughTheScreen(NewPhone, NewPassword));

        // The e-mail address.
        QVERIFY(openSecurityList());
        QVERIFY(tap(rowButton(2)));
        auto *email = waitTop<BindEmailViewController>();
        QVERIFY(email);
        email->fieldEmail()->setText(QStringLiteral("flow@example.com"));
        email->fieldPassword()->setText(NewPassword);
        QVERIFY(tapNamed(QStringLiteral("buttonNext")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->email, QStringLiteral("flow@example.com"));

        // A picture file, cropped, saved with a new nickname and gender.
        QImage picture(1200, 800, QImage::Format_RGB32);
        picture.fill(QColor(40, 120, 200));
        QPainter(&picture).fillRect(QRect(500, 300, 200, 200), QColor(250, 200, 40));
        const QString file = m_storeFolder.filePath(QStringLiteral("me.png"));
        QVERIFY(picture.save(file));
        homeStack()->pushViewController(new PersonalDataViewController, true);
        auto *personal = waitTop<PersonalDataViewController>();
        QVERIFY(personal);
        QTRY_VERIFY_WITH_TIMEOUT(!personal->imageHead().isEmpty(), 10000);
        QVERIFY(tapNamed(QStringLiteral("buttonEditHead")));
        QQuickItem *library = nullptr;
        QVERIFY(QTest::qWaitFor([&] {
            return (library = findText(root(), QStringLiteral("相册获取"))) != nullptr;
        }));
        QVERIFY(tap(library));
        QTRY_VERIFY(ICMediaPhotoHelper::shareInstance()->ICImagePicker());
        ICImagePickerController *picker = ICMediaPhotoHelper::shareInstance()->ICImagePicker();
        // The file chooser's answer.
        QVERIFY(picker->didChooseFile(QUrl::fromLocalFile(file)));
        QQuickItem *frame = waitNamed(QStringLiteral("cropFrame"));
        QVERIFY(waitInWindow(frame));
        const QPointF centre = frame->mapToScene(QPointF(frame->width() / 2, frame->height() / 2));
        const qreal xBefore = picker->cropper()->imageX();
        QTest::mousePress(m_window, Qt::LeftButton, {}, centre.toPoint());
        for (int step = 1; step <= 5; ++step)
            QTest::mouseMove(m_window, (centre + QPointF(-12 * step, 0)).toPoint());
        QTest::mouseRelease(m_window, Qt::LeftButton, {}, (centre + QPointF(-60, 0)).toPoint());
        QVERIFY(picker->cropper()->imageX() < xBefore);
        snapshot(QStringLiteral("accountflow_2_crop.png"));
        QVERIFY(tapNamed(QStringLiteral("useButton")));
        QTRY_COMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QTRY_VERIFY(!findNamed(root(), QStringLiteral("cropFrame")));
        QCOMPARE(personal->imageHeaderUpload().size(), QSize(320, 320));
        personal->bottomView()->fieldName()->setText(QStringLiteral("新头像玩家"));
        QVERIFY(tapNamed(QStringLiteral("buttonNone")));
        QVERIFY(personal->bottomView()->buttonNone()->isSelected());
        snapshot(QStringLiteral("accountflow_3_personal.png"));
        QVERIFY(tapNamed(QStringLiteral("buttonSave")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        const QString avatar = AppDelegate::shared()->userLogin()->avatar;
        QVERIFY2(avatar.startsWith(m_baseUrl + QStringLiteral("/uploads/")), qPrintable(avatar));

        // A relaunch: nothing but what the app stored survives.
        m_engine.reset();
        m_window = nullptr;
        AppDelegate::shared()->setUserLogin(std::nullopt);
        auto *jar = platform::HTTPCookieStorage::shared();
        for (const QNetworkCookie &cookie : jar->cookies())
            jar->deleteCookie(cookie);
        launch();
        QTRY_VERIFY_WITH_TIMEOUT(AppDelegate::shared()->isSignedIn(), 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->nick_name, QStringLiteral("新头像玩家"));
        QCOMPARE(AppDelegate::shared()->userLogin()->avatar, avatar);
        homeStack()->pushViewController(new PersonalDataViewController, true);
        personal = waitTop<PersonalDataViewController>();
        QVERIFY(personal);
        QTRY_COMPARE_WITH_TIMEOUT(personal->imageHead(), QUrl(avatar), 10000);
        QCOMPARE(personal->bottomView()->fieldName()->text(), QStringLiteral("新头像玩家"));
        QVERIFY(personal->bottomView()->buttonNone()->isSelected());
        QQuickItem *head = waitNamed(QStringLiteral("imageHead"));
        QVERIFY(head);
        QTRY_VERIFY_WITH_TIMEOUT(head->property("ready").toBool(), 10000);
        snapshot(QStringLiteral("accountflow_4_relaunched.png"));
    }
};

TARVEL_TEST_MAIN(TestAccountFlow)
#include "tst_accountflow.moc"
