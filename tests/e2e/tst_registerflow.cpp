#include "JourneyApp.h"

#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/TextField.h"
#include "screens/account/FindPasswordMobileViewController.h"
#include "screens/account/FindPasswordViewController.h"
#include "screens/account/FindPswByEmailViewController.h"
#include "screens/account/MessageCheckingViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/RegisterViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"

#include <QNetworkAccessManager>
#include <QQmlExtensionPlugin>
#include <QUrlQuery>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using tarvel::test::exchange;

namespace {

const QString DemoPhone = QStringLiteral("13800138000");
const QString DemoPassword = QStringLiteral("tarvel2024");

} // namespace

// Accounts end to end: tarvel-store as its own process, the app started as main() starts it. A
// newcomer registers by phone from the cart tab and lands there signed in; another registers by
// mail, opens the activation link and signs in; the demo phone account is locked by five wrong
// passwords and unlocked by SMS; the mail account's password is reset through the mailed link.
class TestRegisterFlow : public QObject
{
    Q_OBJECT

private:
    tarvel::test::JourneyApp m_app;

    // The captcha the app's session was last shown (the store keeps it with the session).
    QString captchaText()
    {
        QNetworkAccessManager *appNetwork = NetWorkHelper::shareInstance()->networkManager();
        return m_app.storeData("/sandbox/captcha.json", appNetwork)
                .toMap()
                .value("captcha")
                .toString();
    }

    // Whether the form's captcha picture has come.
    static bool captchaShown(ImageCodeButton *code)
    {
        return QTest::qWaitFor([code] { return !code->backgroundImageUrl().isEmpty(); }, 10000);
    }

    // Sign-out is local: the user record and the cookies go.
    static void signOut()
    {
        AppDelegate::shared()->setUserLogin(std::nullopt);
        ICSessionHelper::userClearData();
        ICCookiesHelper::deleteCookies();
    }

    // Signed out on the home tab, the sign-in screen presented by a tap on a tab that needs an
    // account.
    NavRootViewController *signInFromTab(int tab)
    {
        signOut();
        if (!m_app.tapNamed(QStringLiteral("tabButton0"))
            || !m_app.tapNamed(QStringLiteral("tabButton%1").arg(tab)))
            return nullptr;
        auto *signIn = m_app.waitForScreen<NavRootViewController>();
        if (signIn)
            (void)QTest::qWaitFor([signIn] { return !signIn->imageHead().isEmpty(); });
        return signIn;
    }

    bool signIn(NavRootViewController *screen, const QString &account, const QString &password)
    {
        screen->fieldUser()->setText(account);
        screen->fieldPassword()->setText(password);
        HudRecorder::shared().clear();
        return m_app.tapNamed(QStringLiteral("buttonLogin"));
    }

private slots:
    void initTestCase()
    {
        // The sandbox gives the captcha answers and the outbox.
        QVERIFY(m_app.startStore());

        Hud::shared().setAutoDismissInterval(300);
        AppDelegate::shared()->setCountdownTickInterval(5);
    }

    // Each journey starts from a fresh launch of a signed-out app, as a new customer's would.
    void init()
    {
        signOut();
        QVERIFY(m_app.launch());
    }

    void cleanup() { m_app.close(); }

    void cleanupTestCase() { m_app.stopStore(); }

    void registerByPhoneFromTheCartTab()
    {
        const QString phone = QStringLiteral("13912345678");
        NavRootViewController *signInScreen = signInFromTab(1);
        QVERIFY(signInScreen);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonRegister")));
        auto *registration = m_app.waitForScreen<RegisterViewController>();
        QVERIFY(registration);
        QVERIFY(captchaShown(registration->imageCode()));
        registration->fieldUser()->setText(phone);
        registration->fieldImageCode()->setText(captchaText());
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonAuthCode")));
        QVERIFY(m_app.waitForHud(QStringLiteral("验证码发送成功")));
        const QString code = m_app.lastMessage(phone).value("code").toString();
        QCOMPARE(code.size(), 6);
        registration->fieldAuthCode()->setText(code);
        registration->fieldPassword()->setText(QStringLiteral("newcomer1"));
        registration->fieldPasswordAgain()->setText(QStringLiteral("newcomer1"));
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        QVERIFY(m_app.waitForHud(QStringLiteral("注册成功")));
        QTRY_COMPARE_WITH_TIMEOUT(m_app.tabs()->selectedIndex(), 1, 10000);
        QTRY_COMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QVERIFY(AppDelegate::shared()->userLogin());
        QCOMPARE(AppDelegate::shared()->userLogin()->phone_number, phone);
        QTRY_VERIFY(!Hud::shared().isVisible());
        QVERIFY(m_app.snapshot(QStringLiteral("accountflow_1_registered_on_cart.png")));
    }

    void registerByMailActivateAndSignIn()
    {
        const QString mail = QStringLiteral("player@tarvel.test");
        NavRootViewController *signInScreen = signInFromTab(2);
        QVERIFY(signInScreen);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonRegister")));
        auto *registration = m_app.waitForScreen<RegisterViewController>();
        QVERIFY(registration);
        QVERIFY(captchaShown(registration->imageCode()));
        registration->fieldUser()->setText(mail);
        registration->fieldUser()->resignFirstResponder();
        registration->fieldImageCode()->setText(captchaText());
        registration->fieldPassword()->setText(QStringLiteral("mailplayer1"));
        registration->fieldPasswordAgain()->setText(QStringLiteral("mailplayer1"));
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        QVERIFY(m_app.waitForHud(QStringLiteral("注册成功,请前往邮箱激活账号。")));
        QCOMPARE(m_app.waitForScreen<NavRootViewController>(), signInScreen);

        int status = 0;
        const QString link = m_app.lastMessage(mail).value("link").toString();
        QNetworkAccessManager browser;
        const QString page
                = QString::fromUtf8(exchange(&browser, QNetworkRequest(QUrl(link)), {}, &status));
        QCOMPARE(status, 200);
        QVERIFY2(page.contains(QStringLiteral("账号已激活")), qPrintable(page));

        QVERIFY(signIn(signInScreen, mail, QStringLiteral("mailplayer1")));
        QVERIFY(m_app.waitForHud(QStringLiteral("登录成功")));
        QTRY_COMPARE_WITH_TIMEOUT(m_app.tabs()->selectedIndex(), 2, 10000);
        QCOMPARE(AppDelegate::shared()->userLogin()->email, mail);
    }

    void lockTheDemoPhoneAndUnlockBySms()
    {
        NavRootViewController *signInScreen = signInFromTab(1);
        QVERIFY(signInScreen);
        for (int attempt = 0; attempt < 5; ++attempt) {
            QVERIFY(signIn(signInScreen, DemoPhone, QStringLiteral("wrong-pass")));
            QVERIFY(QTest::qWaitFor([] { return HudRecorder::shared().history().size() >= 2; },
                                    10000));
            (void)QTest::qWaitFor([] { return !Hud::shared().isVisible(); });
        }
        QVERIFY(HudRecorder::shared().history().contains(QStringLiteral("账号被锁定")));
        auto *chooser = m_app.waitForScreen<FindPasswordViewController>();
        QVERIFY(chooser);
        QCOMPARE(chooser->viewType(), qint64(1));
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonMobile")));
        auto *mobile = m_app.waitForScreen<FindPasswordMobileViewController>();
        QVERIFY(mobile);
        QVERIFY(captchaShown(mobile->imageCode()));
        mobile->fieldUser()->setText(DemoPhone);
        mobile->fieldAuthCode()->setText(captchaText());
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        auto *checking = m_app.waitForScreen<MessageCheckingViewController>();
        QVERIFY(checking);
        checking->fieldAuthCode()->setText(m_app.lastMessage(DemoPhone).value("code").toString());
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        QVERIFY(m_app.waitForHud(QStringLiteral("账号解锁成功")));
        QCOMPARE(m_app.waitForScreen<NavRootViewController>(), signInScreen);

        QVERIFY(signIn(signInScreen, DemoPhone, DemoPassword));
        QVERIFY(m_app.waitForHud(QStringLiteral("登录成功")));
        QTRY_COMPARE_WITH_TIMEOUT(m_app.tabs()->selectedIndex(), 1, 10000);
    }

    void recoverTheMailPasswordThroughTheLink()
    {
        const QString mail = QStringLiteral("player@tarvel.test");
        NavRootViewController *signInScreen = signInFromTab(2);
        QVERIFY(signInScreen);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonForget")));
        auto *chooser = m_app.waitForScreen<FindPasswordViewController>();
        QVERIFY(chooser);
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonEmail")));
        auto *byMail = m_app.waitForScreen<FindPswByEmailViewController>();
        QVERIFY(byMail);
        QVERIFY(captchaShown(byMail->imageCode()));
        byMail->fieldUser()->setText(mail);
        byMail->fieldAuthCode()->setText(captchaText());
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonNext")));
        QVERIFY(m_app.waitForHud(QStringLiteral("邮件已发送,请前往邮箱查看")));
        QCOMPARE(m_app.waitForScreen<NavRootViewController>(), signInScreen);

        // The mailed link's form sets the new password.
        const QUrl link(m_app.lastMessage(mail).value("link").toString());
        QVERIFY2(link.path() == "/account/password/edit", qPrintable(link.toString()));
        QNetworkAccessManager browser;
        int status = 0;
        QVERIFY(exchange(&browser, QNetworkRequest(link), {}, &status).contains("<form"));
        QCOMPARE(status, 200);
        QUrlQuery form;
        form.addQueryItem("token", QUrlQuery(link).queryItemValue("token"));
        form.addQueryItem("password", "renewed123");
        form.addQueryItem("password_confirmation", "renewed123");
        QNetworkRequest post(QUrl(m_app.baseUrl() + "/account/password/edit"));
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
        QVERIFY(m_app.waitForHud(QStringLiteral("登录成功")));
        QTRY_COMPARE_WITH_TIMEOUT(m_app.tabs()->selectedIndex(), 2, 10000);
    }
};

TARVEL_TEST_MAIN(TestRegisterFlow)
#include "tst_registerflow.moc"
