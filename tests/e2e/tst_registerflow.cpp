#include "HudRecorder.h"
#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "StoreProcess.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/WindowSnapshot.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/Window.h"
#include "screens/account/FindPasswordMobileViewController.h"
#include "screens/account/FindPasswordViewController.h"
#include "screens/account/FindPswByEmailViewController.h"
#include "screens/account/MessageCheckingViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/RegisterViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"

#include <QDir>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrlQuery>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using tarvel::test::findNamed;

namespace {

const QString DemoPhone = QStringLiteral("13800138000");
const QString DemoPassword = QStringLiteral("tarvel2024");

// Sends `request` on the app's own network stack (its cookies, its session) and answers the body.
QByteArray exchange(QNetworkAccessManager *network, const QNetworkRequest &request,
                    const QByteArray &postBody = {}, int *status = nullptr)
{
    QNetworkReply *reply
            = postBody.isNull() ? network->get(request) : network->post(request, postBody);
    QSignalSpy finished(reply, &QNetworkReply::finished);
    if (!reply->isFinished())
        finished.wait(10000);
    if (status)
        *status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QByteArray body = reply->readAll();
    reply->deleteLater();
    return body;
}

} // namespace

// Accounts end to end: tarvel-store as its own process, the app started as main() starts it. A
// newcomer registers by phone from the cart tab and lands there signed in; another registers by
// mail, opens the activation link and signs in; the demo phone account is locked by five wrong
// passwords and unlocked by SMS; the mail account's password is reset through the mailed link.
class TestRegisterFlow : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_storeFolder;
    QProcess m_storeProcess;
    QString m_baseUrl;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;

    QQuickItem *root() const { return m_window->contentItem(); }
    QNetworkAccessManager *appNetwork() const
    {
        return NetWorkHelper::shareInstance()->networkManager();
    }

    QVariant storeData(const QString &pathAndQuery)
    {
        return QJsonDocument::fromJson(
                       exchange(appNetwork(), QNetworkRequest(QUrl(m_baseUrl + pathAndQuery))))
                .toVariant()
                .toMap()
                .value("data");
    }
    QString captchaText()
    {
        return storeData("/sandbox/captcha.json").toMap().value("captcha").toString();
    }
    QVariantMap lastMessage(const QString &to)
    {
        const QVariantList list = storeData("/sandbox/outbox.json?to="
                                            + QString::fromLatin1(QUrl::toPercentEncoding(to)))
                                          .toList();
        return list.isEmpty() ? QVariantMap() : list.constFirst().toMap();
    }

    platform::TabBarController *tabs() const
    {
        return qobject_cast<platform::TabBarController *>(
                AppDelegate::shared()->window()->rootViewController());
    }

    template<typename Screen>
    Screen *waitForScreen()
    {
        Screen *screen = nullptr;
        (void)QTest::qWaitFor(
                [&] {
                    screen = qobject_cast<Screen *>(AppDelegate::shared()->visibleViewController());
                    return screen && !tarvel::test::stacksBusy(root());
                },
                10000);
        return screen;
    }

    // Taps the shown item called `name` once it stands still and no HUD covers it.
    bool tap(const QString &name)
    {
        (void)QTest::qWaitFor([] { return !Hud::shared().isVisible(); }, 10000);
        QQuickItem *item = nullptr;
        // Found, and inside the window (a presented sheet slides up from below it).
        (void)QTest::qWaitFor(
                [&] {
                    item = findNamed(root(), name);
                    if (!item)
                        return false;
                    const QPointF centre
                            = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
                    return QRectF(0, 0, m_window->width(), m_window->height()).contains(centre);
                },
                10000);
        const bool tapped = tarvel::test::tapWhenStill(m_window, item);
        if (!tapped)
            qWarning() << "could not tap" << name << item
                       << (item ? item->mapToScene(QPointF(0, 0)) : QPointF())
                       << tarvel::test::stacksBusy(root());
        return tapped;
    }

    bool waitForHud(const QString &text)
    {
        return QTest::qWaitFor([&] { return HudRecorder::shared().history().contains(text); },
                               10000);
    }

    void snapshot(const QString &name)
    {
        QTRY_VERIFY(!tarvel::test::stacksBusy(root()) && !Hud::shared().isVisible());
        QVERIFY(WindowSnapshot::save(
                m_window, QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name)));
    }

    // Sign-out is local: the user record and the cookies go.
    static void signOut()
    {
        AppDelegate::shared()->setUserLogin(std::nullopt);
        ICSessionHelper::userClearData();
        ICCookiesHelper::deleteCookies();
    }

    // The sign-in screen, presented by a tap on a tab that needs an account.
    NavRootViewController *signInFromTab(int tab)
    {
        if (!tap(QStringLiteral("tabButton%1").arg(tab)))
            return nullptr;
        auto *signIn = waitForScreen<NavRootViewController>();
        if (signIn)
            (void)QTest::qWaitFor([signIn] { return !signIn->imageHead().isEmpty(); });
        return signIn;
    }

    bool signIn(NavRootViewController *screen, const QString &account, const QString &password)
    {
        screen->fieldUser()->setText(account);
        screen->fieldPassword()->setText(password);
        HudRecorder::shared().clear();
        return tap(QStringLiteral("buttonLogin"));
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_storeFolder.isValid());
        // The sandbox gives the captcha answers and the outbox.
        const int port = tarvel::test::startStoreOnAnyPort(
                m_storeProcess,
                {QStringLiteral("--db"), m_storeFolder.filePath(QStringLiteral("store.sqlite")),
                 QStringLiteral("--quiet"), QStringLiteral("--sandbox")});
        QVERIFY(port > 0);
        m_baseUrl = QStringLiteral("http://127.0.0.1:%1").arg(port);
        QVERIFY(QTest::qWaitFor([this] { return storeData("/store.json").isValid(); }, 30000));
        qputenv("TARVEL_API_BASE_URL", m_baseUrl.toUtf8());

        Hud::shared().setAutoDismissInterval(300);
        AppDelegate::shared()->setCountdownTickInterval(5);
    }

    // Each journey starts from a fresh launch of a signed-out app, as a new customer's would.
    void init()
    {
        signOut();
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = AppLaunch::launch(*qGuiApp, *m_engine);
        QVERIFY(m_window);
        QVERIFY(QTest::qWaitForWindowExposed(m_window));
        QVERIFY(QTest::qWaitFor([this] { return tabs() != nullptr; }));
    }

    void cleanup()
    {
        m_engine.reset();
        m_window = nullptr;
    }

    void cleanupTestCase()
    {
        m_engine.reset();
        m_storeProcess.terminate();
        if (!m_storeProcess.waitForFinished(10000))
            m_storeProcess.kill();
    }

    void registerByPhoneFromTheCartTab()
    {
        const QString phone = QStringLiteral("13912345678");
        NavRootViewController *signInScreen = signInFromTab(1);
        QVERIFY(signInScreen);
        QVERIFY(tap(QStringLiteral("buttonRegister")));
        auto *registration = waitForScreen<RegisterViewController>();
        QVERIFY(registration);
        QVERIFY(QTest::qWaitFor(
                [&] { return !registration->imageCode()->backgroundImageUrl().isEmpty(); }, 10000));
        registration->fieldUser()->setText(phone);
        registration->fieldImageCode()->setText(captchaText());
        QVERIFY(tap(QStringLiteral("buttonAuthCode")));
        QVERIFY(waitForHud(QStringLiteral("验证码发送成功")));
        const QString code = lastMessage(phone).value("code").toString();
        QCOMPARE(code.size(), 6);
        registration->fieldAuthCode()->setText(code);
        registration->fieldPassword()->setText(QStringLiteral("newcomer1"));
        registration->fieldPasswordAgain()->setText(QStringLiteral("newcomer1"));
        QVERIFY(tap(QStringLiteral("buttonNext")));
        QVERIFY(waitForHud(QStringLiteral("注册成功")));
        QTRY_COMPARE_WITH_TIMEOUT(tabs()->selectedIndex(), 1, 10000);
        QTRY_COMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QVERIFY(AppDelegate::shared()->userLogin());
        QCOMPARE(AppDelegate::shared()->userLogin()->phone_number, phone);
        snapshot(QStringLiteral("accountflow_1_registered_on_cart.png"));
    }

    void registerByMailActivateAndSignIn()
    {
        signOut();
        QVERIFY(tap(QStringLiteral("tabButton0")));
        const QString mail = QStringLiteral("player@tarvel.test");
        NavRootViewController *signInScreen = signInFromTab(2);
        QVERIFY(signInScreen);
        QVERIFY(tap(QStringLiteral("buttonRegister")));
        auto *registration = waitForScreen<RegisterViewController>();
        QVERIFY(registration);
        QVERIFY(QTest::qWaitFor(
                [&] { return !registration->imageCode()->backgroundImageUrl().isEmpty(); }, 10000));
        registration->fieldUser()->setText(mail);
        registration->fieldUser()->resignFirstResponder();
        registration->fieldImageCode()->setText(captchaText());
        registration->fieldPassword()->setText(QStringLiteral("mailplayer1"));
        registration->fieldPasswordAgain()->setText(QStringLiteral("mailplayer1"));
        QVERIFY(tap(QStringLiteral("buttonNext")));
        QVERIFY(waitForHud(QStringLiteral("注册成功,请前往邮箱激活账号。")));
        QCOMPARE(waitForScreen<NavRootViewController>(), signInScreen);

        int status = 0;
        const QString link = lastMessage(mail).value("link").toString();
        QNetworkAccessManager browser;
        const QString page
                = QString::fromUtf8(exchange(&browser, QNetworkRequest(QUrl(link)), {}, &status));
        QCOMPARE(status, 200);
        QVERIFY2(page.contains(QStringLiteral("账号已激活")), qPrintable(page));

        QVERIFY(signIn(signInScreen, mail, QStringLiteral("mailplayer1")));
        QVERIFY(waitForHud(QStringLiteral("登录成功")));
        QTRY_COMPARE_WITH_TIMEOUT(tabs()->selectedIndex(), 2, 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->email, mail);
    }

    void lockTheDemoPhoneAndUnlockBySms()
    {
        signOut();
        QVERIFY(tap(QStringLiteral("tabButton0")));
        NavRootViewController *signInScreen = signInFromTab(1);
        QVERIFY(signInScreen);
        for (int attempt = 0; attempt < 5; ++attempt) {
            QVERIFY(signIn(signInScreen, DemoPhone, QStringLiteral("wrong-pass")));
            QVERIFY(QTest::qWaitFor([] { return HudRecorder::shared().history().size() >= 2; },
                                    10000));
            (void)QTest::qWaitFor([] { return !Hud::shared().isVisible(); });
        }
        QVERIFY(HudRecorder::shared().history().contains(QStringLiteral("账号被锁定")));
        auto *chooser = waitForScreen<FindPasswordViewController>();
        QVERIFY(chooser);
        QCOMPARE(chooser->viewType(), qint64(1));
        QVERIFY(tap(QStringLiteral("buttonMobile")));
        auto *mobile = waitForScreen<FindPasswordMobileViewController>();
        QVERIFY(mobile);
        QVERIFY(QTest::qWaitFor(
                [&] { return !mobile->imageCode()->backgroundImageUrl().isEmpty(); }, 10000));
        mobile->fieldUser()->setText(DemoPhone);
        mobile->fieldAuthCode()->setText(captchaText());
        QVERIFY(tap(QStringLiteral("buttonNext")));
        auto *checking = waitForScreen<MessageCheckingViewController>();
        QVERIFY(checking);
        checking->fieldAuthCode()->setText(lastMessage(DemoPhone).value("code").toString());
        QVERIFY(tap(QStringLiteral("buttonNext")));
        QVERIFY(waitForHud(QStringLiteral("账号解锁成功")));
        QCOMPARE(waitForScreen<NavRootViewController>(), signInScreen);

        QVERIFY(signIn(signInScreen, DemoPhone, DemoPassword));
        QVERIFY(waitForHud(QStringLiteral("登录成功")));
        QTRY_COMPARE_WITH_TIMEOUT(tabs()->selectedIndex(), 1, 10000);
    }

    void recoverTheMailPasswordThroughTheLink()
    {
        signOut();
        QVERIFY(tap(QStringLiteral("tabButton0")));
        const QString mail = QStringLiteral("player@tarvel.test");
        NavRootViewController *signInScreen = signInFromTab(2);
        QVERIFY(signInScreen);
        QVERIFY(tap(QStringLiteral("buttonForget")));
        auto *chooser = waitForScreen<FindPasswordViewController>();
        QVERIFY(chooser);
        QVERIFY(tap(QStringLiteral("buttonEmail")));
        auto *byMail = waitForScreen<FindPswByEmailViewController>();
        QVERIFY(byMail);
        QVERIFY(QTest::qWaitFor(
                [&] { return !byMail->imageCode()->backgroundImageUrl().isEmpty(); }, 10000));
        byMail->fieldUser()->setText(mail);
        byMail->fieldAuthCode()->setText(captchaText());
        QVERIFY(tap(QStringLiteral("buttonNext")));
        QVERIFY(waitForHud(QStringLiteral("邮件已发送,请前往邮箱查看")));
        QCOMPARE(waitForScreen<NavRootViewController>(), signInScreen);

        // The mailed link's form sets the new password.
        const QUrl link(lastMessage(mail).value("link").toString());
        QVERIFY2(link.path() == "/account/password/edit", qPrintable(link.toString()));
        QNetworkAccessManager browser;
        int status = 0;
        QVERIFY(exchange(&browser, QNetworkRequest(link), {}, &status).contains("<form"));
        QCOMPARE(status, 200);
        QUrlQuery form;
        form.addQueryItem("token", QUrlQuery(link).queryItemValue("token"));
        form.addQueryItem("password", "renewed123");
        form.addQueryItem("password_confirmation", "renewed123");
        QNetworkRequest post(QUrl(m_baseUrl + "/account/password/edit"));
        post.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
        const QString done = QString::fromUtf8(
                exchange(&browser, post, form.toString(QUrl::FullyEncoded).toUtf8(), &status));
        QCOMPARE(status, 200);
        QVERIFY2(done.contains(QStringLiteral("密码已更新")), qPrintable(done));

        QVERIFY(signIn(signInScreen, mail, QStringLiteral("mailplayer1")));
        QVERIFY(QTest::qWaitFor([] { return HudRecorder::shared().history().size() >= 2; }, 10000));
        QVERIFY(!AppDelegate::shared()->userLogin());
        (void)QTest::qWaitFor([] { return !Hud::shared().isVisible(); });
        QVERIFY(signIn(signInScreen, mail, QStringLiteral("renewed123")));
        QVERIFY(waitForHud(QStringLiteral("登录成功")));
        QTRY_COMPARE_WITH_TIMEOUT(tabs()->selectedIndex(), 2, 10000);
    }
};

TARVEL_TEST_MAIN(TestRegisterFlow)
#include "tst_registerflow.moc"
