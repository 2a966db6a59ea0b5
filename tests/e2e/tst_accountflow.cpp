#include "JourneyApp.h"

#include "device/ICImagePickerController.h"
#include "device/ICMediaPhotoHelper.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"
#include "screens/account/AccountSafeViewController.h"
#include "screens/account/BindEmailViewController.h"
#include "screens/account/BindMobileViewController.h"
#include "screens/account/ModifyMobileOldViewController.h"
#include "screens/account/ModifyPasswordViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/PersonalDataBottomView.h"
#include "screens/account/PersonalDataViewController.h"
#include "service/ICSessionHelper.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QQmlExtensionPlugin>
#include <QUrlQuery>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findNamed;
using tarvel::test::findText;

namespace {

const QString Phone = QStringLiteral("13800138000");
const QString NewPhone = QStringLiteral("13811112222");
const QString OldPassword = QStringLiteral("tarvel2024");
const QString NewPassword = QStringLiteral("changed2025");

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
    tarvel::test::JourneyApp m_app;

    QQuickItem *root() const { return m_app.root(); }
    platform::NavigationController *homeStack() const { return m_app.stack(0); }

    QString lastCode(const QString &phone)
    {
        return m_app.lastMessage(phone).value(QStringLiteral("code")).toString();
    }

    void launch()
    {
        QVERIFY(m_app.launch());
        QVERIFY(QTest::qWaitFor([this] { return homeStack() != nullptr; }, 10000));
        // The home page has come up and stands still.
        QVERIFY(m_app.waitNamed(QStringLiteral("homePageViewCell")));
        QVERIFY(QTest::qWaitFor([this] { return !tarvel::test::stacksBusy(root()); }));
    }

    // The sign-in screen presented over home, filled and sent; true when the user is in.
    bool signInThroughTheScreen(const QString &account, const QString &password)
    {
        AppDelegate::shared()->setUserLogin(std::nullopt);
        auto *signIn = new NavRootViewController;
        homeStack()->presentViewController(new platform::NavigationController(signIn), true);
        if (!m_app.waitNamed(QStringLiteral("buttonLogin"))) {
            qWarning() << "no sign-in button";
            return false;
        }
        signIn->fieldUser()->setText(account);
        signIn->fieldPassword()->setText(password);
        if (!m_app.tapNamed(QStringLiteral("buttonLogin"))) {
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
        QNetworkRequest request(QUrl(m_app.baseUrl() + QStringLiteral("/sign_in.json")));
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          QStringLiteral("application/x-www-form-urlencoded"));
        QUrlQuery form;
        form.addQueryItem(QStringLiteral("account[login_name]"), account);
        form.addQueryItem(QStringLiteral("account[password]"), password);
        const QByteArray answer = tarvel::test::exchange(
                &other, request, form.toString(QUrl::FullyEncoded).toUtf8());
        const QString status = QJsonDocument::fromJson(answer)
                                       .object()
                                       .value(QStringLiteral("status"))
                                       .toString();
        return status == QLatin1String("success");
    }

    AccountSafeViewController *openSecurityList()
    {
        homeStack()->popToRootViewController(false);
        homeStack()->pushViewController(new AccountSafeViewController, true);
        return m_app.waitForScreen<AccountSafeViewController>();
    }

    // The button of security row `row`, as drawn.
    QQuickItem *rowButton(int row)
    {
        QQuickItem *cell = m_app.waitNamed(QStringLiteral("accountSafeCell%1").arg(row));
        return cell ? tarvel::test::findNamed(cell, QStringLiteral("buttonModify")) : nullptr;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_app.startStore());
        // The SMS countdown runs on fast ticks, so the second step's code can follow soon.
        AppDelegate::shared()->setCountdownTickInterval(20);
    }

    void cleanupTestCase()
    {
        m_app.close();
        m_app.stopStore();
    }

    void passwordPhoneEmailAndAvatar()
    {
        launch();
        QVERIFY(signInThroughTheScreen(Phone, OldPassword));

        // The password.
        QVERIFY(openSecurityList());
        QVERIFY(findText(root(), QStringLiteral("*138****8000")));
        QVERIFY(m_app.snapshot(QStringLiteral("accountflow_1_security.png")));
        QVERIFY(m_app.tap(rowButton(0)));
        auto *password = m_app.waitForScreen<ModifyPasswordViewController>();
        QVERIFY(password);
        password->fieldOldPassword()->setText(OldPassword);
        password->fieldNewPassword()->setText(NewPassword);
        password->fieldNewPasswordAgain()->setText(NewPassword);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonSave")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        QVERIFY(!storeAcceptsSignIn(Phone, OldPassword));
        QVERIFY(signInThroughTheScreen(Phone, NewPassword));

        // The number, through both SMS steps.
        QVERIFY(openSecurityList());
        QVERIFY(m_app.tap(rowButton(1)));
        auto *stepOne = m_app.waitForScreen<ModifyMobileOldViewController>();
        QVERIFY(stepOne);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonAuthCode")));
        QTRY_COMPARE_WITH_TIMEOUT(lastCode(Phone).size(), 6, 10000);
        stepOne->fieldNewPsw()->setText(lastCode(Phone));
        stepOne->fieldPassword()->setText(NewPassword);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        auto *bind = m_app.waitForScreen<BindMobileViewController>();
        QVERIFY(bind);
        // The first step's countdown has to end before the new number gets its code.
        QTRY_COMPARE_WITH_TIMEOUT(AppDelegate::shared()->countdown(), AppDelegate::CountdownSeconds,
                                  10000);
        QTRY_VERIFY(!platform::UserDefaults::standard()
                             .objectForKey(QStringLiteral("isCountdown"))
                             .toBool());
        bind->fieldMobile()->setText(NewPhone);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonAuthCode")));
        QTRY_COMPARE_WITH_TIMEOUT(lastCode(NewPhone).size(), 6, 10000);
        bind->fieldAuthCode()->setText(lastCode(NewPhone));
        bind->fieldPassword()->setText(NewPassword);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->phone_number, NewPhone);
        QVERIFY(signInThroughTheScreen(NewPhone, NewPassword));

        // The e-mail address.
        QVERIFY(openSecurityList());
        QVERIFY(m_app.tap(rowButton(2)));
        auto *email = m_app.waitForScreen<BindEmailViewController>();
        QVERIFY(email);
        email->fieldEmail()->setText(QStringLiteral("flow@example.com"));
        email->fieldPassword()->setText(NewPassword);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->email, QStringLiteral("flow@example.com"));

        // A picture file, cropped, saved with a new nickname and gender.
        QImage picture(1200, 800, QImage::Format_RGB32);
        picture.fill(QColor(40, 120, 200));
        QPainter(&picture).fillRect(QRect(500, 300, 200, 200), QColor(250, 200, 40));
        const QString file = m_app.storeFile(QStringLiteral("me.png"));
        QVERIFY(picture.save(file));
        homeStack()->pushViewController(new PersonalDataViewController, true);
        auto *personal = m_app.waitForScreen<PersonalDataViewController>();
        QVERIFY(personal);
        QTRY_VERIFY_WITH_TIMEOUT(!personal->imageHead().isEmpty(), 10000);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonEditHead")));
        QQuickItem *library = nullptr;
        QVERIFY(QTest::qWaitFor([&] {
            return (library = findText(root(), QStringLiteral("相册获取"))) != nullptr;
        }));
        QVERIFY(m_app.tap(library));
        QTRY_VERIFY(ICMediaPhotoHelper::shareInstance()->ICImagePicker());
        ICImagePickerController *picker = ICMediaPhotoHelper::shareInstance()->ICImagePicker();
        // The file chooser's answer.
        QVERIFY(picker->didChooseFile(QUrl::fromLocalFile(file)));
        QQuickItem *frame = m_app.waitNamed(QStringLiteral("cropFrame"));
        QVERIFY(m_app.waitInWindow(frame));
        const QPointF centre = frame->mapToScene(QPointF(frame->width() / 2, frame->height() / 2));
        const qreal xBefore = picker->cropper()->imageX();
        QTest::mousePress(m_app.window(), Qt::LeftButton, {}, centre.toPoint());
        for (int step = 1; step <= 5; ++step)
            QTest::mouseMove(m_app.window(), (centre + QPointF(-12 * step, 0)).toPoint());
        QTest::mouseRelease(m_app.window(), Qt::LeftButton, {},
                            (centre + QPointF(-60, 0)).toPoint());
        QVERIFY(picker->cropper()->imageX() < xBefore);
        QVERIFY(m_app.snapshot(QStringLiteral("accountflow_2_crop.png")));
        QVERIFY(m_app.tapNamed(QStringLiteral("useButton")));
        QTRY_COMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QTRY_VERIFY(!findNamed(root(), QStringLiteral("cropFrame")));
        QCOMPARE(personal->imageHeaderUpload().size(), QSize(320, 320));
        personal->bottomView()->fieldName()->setText(QStringLiteral("新头像玩家"));
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNone")));
        QVERIFY(personal->bottomView()->buttonNone()->isSelected());
        QVERIFY(m_app.snapshot(QStringLiteral("accountflow_3_personal.png")));
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonSave")));
        QTRY_COMPARE_WITH_TIMEOUT(homeStack()->depth(), 1, 10000);
        const QString avatar = AppDelegate::shared()->userLogin()->avatar;
        QVERIFY2(avatar.startsWith(m_app.baseUrl() + QStringLiteral("/uploads/")),
                 qPrintable(avatar));

        // A relaunch: nothing but what the app stored survives.
        m_app.close();
        AppDelegate::shared()->setUserLogin(std::nullopt);
        auto *jar = platform::HTTPCookieStorage::shared();
        for (const QNetworkCookie &cookie : jar->cookies())
            jar->deleteCookie(cookie);
        launch();
        QTRY_VERIFY_WITH_TIMEOUT(AppDelegate::shared()->isSignedIn(), 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->nick_name, QStringLiteral("新头像玩家"));
        QCOMPARE(AppDelegate::shared()->userLogin()->avatar, avatar);
        homeStack()->pushViewController(new PersonalDataViewController, true);
        personal = m_app.waitForScreen<PersonalDataViewController>();
        QVERIFY(personal);
        QTRY_COMPARE_WITH_TIMEOUT(personal->imageHead(), QUrl(avatar), 10000);
        QCOMPARE(personal->bottomView()->fieldName()->text(), QStringLiteral("新头像玩家"));
        QVERIFY(personal->bottomView()->buttonNone()->isSelected());
        QQuickItem *head = m_app.waitNamed(QStringLiteral("imageHead"));
        QVERIFY(head);
        QTRY_VERIFY_WITH_TIMEOUT(head->property("ready").toBool(), 10000);
        QVERIFY(m_app.snapshot(QStringLiteral("accountflow_4_relaunched.png")));
    }
};

TARVEL_TEST_MAIN(TestAccountFlow)
#include "tst_accountflow.moc"
