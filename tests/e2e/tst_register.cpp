#include "HudRecorder.h"
#include "ScriptedHttpServer.h"
#include "tst_register_support.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/TextField.h"
#include "screens/account/FoldingRowView.h"
#include "screens/account/RegisterViewController.h"

#include <QBuffer>
#include <QPointer>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using platform::UserDefaults;
using namespace tarvel::test;

namespace {

const QString Password = QStringLiteral("secret123");

QByteArray pngBytes()
{
    QImage image(90, 36, QImage::Format_RGB32);
    image.fill(Qt::white);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

// Registration against tarvel-store: the form's checks in their order, the SMS row that folds for
// a mail address, the SMS code and its countdown, and both ways a registration ends.
class TestRegister : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AccountFixture> m_fixture;

    // The registration screen pushed from the sign-in screen, its first captcha shown.
    RegisterViewController *openRegistration(qint64 father = 0, bool waitForCaptcha = true)
    {
        NavRootViewController *signIn = m_fixture->presentSignIn(father);
        if (!signIn || !signIn->buttonRegister()->tap())
            return nullptr;
        auto *registration = qobject_cast<RegisterViewController *>(
                signIn->navigationController()->topViewController());
        if (!registration || !QTest::qWaitFor([registration] {
                return !registration->backgroundImage().isEmpty();
            }))
            return nullptr;
        if (waitForCaptcha && !AccountFixture::waitForCaptcha(registration->imageCode()))
            return nullptr;
        (void)QTest::qWaitFor([] { return !Hud::shared().isVisible(); });
        clearHud();
        return registration;
    }

    static void fill(RegisterViewController *registration, const QString &account,
                     const QString &authCode, const QString &password, const QString &again)
    {
        registration->fieldUser()->setText(account);
        registration->fieldAuthCode()->setText(authCode);
        registration->fieldPassword()->setText(password);
        registration->fieldPasswordAgain()->setText(again);
    }

    // Asks for an SMS code for `phone` with the right captcha and answers the code sent.
    QString requestCode(RegisterViewController *registration, const QString &phone)
    {
        registration->fieldUser()->setText(phone);
        registration->fieldImageCode()->setText(m_fixture->captchaText());
        clearHud();
        registration->buttonAuthCode()->tap();
        if (!waitForHuds(2) || hudRecords().constLast().kind != Hud::Success)
            return {};
        return m_fixture->smsCode(phone);
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        AppDelegate::shared()->setCountdownTickInterval(5);
        m_fixture = std::make_unique<AccountFixture>();
        QVERIFY(m_fixture->store().isRunning());
    }

    void init() { m_fixture->reset(); }
    void cleanup() { m_fixture->closeWindow(); }

    void buildsTheForm()
    {
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        QCOMPARE(registration->title(), QStringLiteral("注册"));
        QCOMPARE(registration->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(registration->leftBarItem()->title().isEmpty());
        QVERIFY(registration->isNavigationBarTransparent());
        QCOMPARE(registration->backgroundImage(), QStringLiteral("login_background"));
        QCOMPARE(registration->fieldUser()->placeholder(), QStringLiteral("手机号/邮箱"));
        QCOMPARE(registration->fieldImageCode()->placeholder(), QStringLiteral("请输入验证码"));
        QCOMPARE(registration->fieldAuthCode()->placeholder(), QStringLiteral("请输入短信验证码"));
        QCOMPARE(registration->buttonAuthCode()->title(), QStringLiteral("获取验证码"));
        QCOMPARE(AppDelegate::shared()->buttonAuthCode(), registration->buttonAuthCode());
        QCOMPARE(registration->fieldPassword()->placeholder(), QStringLiteral("请输入密码"));
        QVERIFY(registration->fieldPassword()->isSecureTextEntry());
        QCOMPARE(registration->fieldPasswordAgain()->placeholder(), QStringLiteral("确认密码"));
        QVERIFY(registration->fieldPasswordAgain()->isSecureTextEntry());
        QCOMPARE(registration->buttonNext()->title(), QStringLiteral("完成"));
        QCOMPARE(registration->viewAuthCode()->height(), RegisterViewController::AuthCodeRowHeight);

        // The picture is the one the service drew for this session, held in memory.
        const QImage first = platform::MemoryImageProvider::image(
                registration->imageCode()->backgroundImageUrl());
        QVERIFY(!first.isNull());
        QVERIFY(!m_fixture->captchaText().isEmpty());
        const QUrl firstUrl = registration->imageCode()->backgroundImageUrl();
        QVERIFY(registration->imageCode()->tap());
        QTRY_VERIFY(registration->imageCode()->backgroundImageUrl() != firstUrl);
        QCOMPARE(hudRecords().constFirst(), progressHud(QStringLiteral("正在加载")));
        QTRY_VERIFY(!Hud::shared().isVisible());
        QVERIFY(!platform::MemoryImageProvider::image(
                         registration->imageCode()->backgroundImageUrl())
                         .isNull());

        // Back goes to the sign-in screen.
        platform::NavigationController *stack = registration->navigationController();
        QVERIFY(registration->leftBarItem()->tap());
        QCOMPARE(stack->depth(), 1);
    }

    void checksInOrder_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("authCode");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("again");
        QTest::addColumn<QString>("shown");
        QTest::newRow("all empty") << ""
                                   << ""
                                   << ""
                                   << ""
                                   << "请输入手机号或邮箱";
        QTest::newRow("phone without code") << "13900001111"
                                            << "" << Password << Password << "请输入验证码";
        QTest::newRow("other text without code") << "player one"
                                                 << "" << Password << Password << "请输入验证码";
        QTest::newRow("mail needs no code") << "a@b.cn"
                                            << ""
                                            << "1234567"
                                            << "1234567"
                                            << "请输入8位以上的密码";
        QTest::newRow("seven characters") << "13900001111"
                                          << "123456"
                                          << "1234567"
                                          << "1234567"
                                          << "请输入8位以上的密码";
        QTest::newRow("mismatch") << "13900001111"
                                  << "123456"
                                  << "12345678"
                                  << "12345679"
                                  << "两次密码输入不同";
        QTest::newRow("empty confirmation") << "a@b.cn"
                                            << ""
                                            << "12345678"
                                            << ""
                                            << "两次密码输入不同";
    }

    void checksInOrder()
    {
        QFETCH(QString, account);
        QFETCH(QString, authCode);
        QFETCH(QString, password);
        QFETCH(QString, again);
        QFETCH(QString, shown);
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        fill(registration, account, authCode, password, again);
        QVERIFY(registration->buttonNext()->tap());
        // Refused before anything is sent: no "正在注册...".
        QCOMPARE(hudRecords(), HudRecords{errorHud(shown)});
    }

    void smsRowFoldsForMail_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<bool>("folds");
        QTest::newRow("mail") << "a@b.cn" << true;
        QTest::newRow("mobile") << "13800138000" << false;
        QTest::newRow("other text") << "a@b" << false;
    }

    void smsRowFoldsForMail()
    {
        QFETCH(QString, account);
        QFETCH(bool, folds);
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        FoldingRowView *row = registration->viewAuthCode();
        // First folded by a mail address, so that growing back can be seen too.
        registration->fieldUser()->setText(QStringLiteral("first@b.cn"));
        registration->fieldUser()->setFirstResponder(true);
        registration->fieldUser()->resignFirstResponder();
        QVERIFY(!row->isHidden()); // hidden only once the animation ends
        QTRY_VERIFY(row->isHidden());
        QCOMPARE(row->height(), 0.0);

        registration->fieldUser()->setText(account);
        registration->fieldUser()->setFirstResponder(true);
        registration->fieldUser()->resignFirstResponder();
        if (folds) {
            QVERIFY(row->isAnimating());
            QTRY_VERIFY(!row->isAnimating());
            QVERIFY(row->isHidden());
            QCOMPARE(row->height(), 0.0);
        } else {
            QVERIFY(!row->isHidden()); // at once
            QVERIFY(row->isAnimating());
            QTRY_COMPARE(row->height(), RegisterViewController::AuthCodeRowHeight);
            QVERIFY(!row->isHidden());
        }
    }

    void getCodeRefusesOtherThanMobile_data()
    {
        QTest::addColumn<QString>("account");
        QTest::newRow("ten digits") << "1380013800";
        QTest::newRow("mail") << "a@b.cn";
        QTest::newRow("empty") << "";
    }

    void getCodeRefusesOtherThanMobile()
    {
        QFETCH(QString, account);
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        registration->fieldUser()->setText(account);
        QVERIFY(registration->buttonAuthCode()->tap());
        QCOMPARE(hudRecords(), HudRecords{errorHud(QStringLiteral("请输入正确的手机号"))});
    }

    void wrongCaptchaReadsAsASentence()
    {
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        registration->fieldUser()->setText(QStringLiteral("13900002222"));
        registration->fieldImageCode()->setText(QStringLiteral("????"));
        QVERIFY(registration->buttonAuthCode()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在获取验证码...")),
                             errorHud(QStringLiteral("请重新输入正确的图片验证码"))}));
        QCOMPARE(AppDelegate::shared()->countdown(), 60);
    }

    void countdownRefusesAndEnds()
    {
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        platform::Button *button = registration->buttonAuthCode();
        AppDelegate *delegate = AppDelegate::shared();
        QStringList titles;
        const QMetaObject::Connection titleWatch
                = connect(button, &platform::Button::changed, this, [&] {
                      const QString title = button->title();
                      if (title.endsWith(QLatin1Char('S'))
                          && (titles.isEmpty() || titles.constLast() != title))
                          titles.append(title);
                  });
        // Held at 42 seconds left.
        const QMetaObject::Connection hold
                = connect(delegate, &AppDelegate::countdownChanged, this, [delegate] {
                      if (delegate->countdown() == 42)
                          delegate->timer()->stop();
                  });
        QVERIFY(!requestCode(registration, QStringLiteral("13900003333")).isEmpty());
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在获取验证码...")),
                                           successHud(QStringLiteral("验证码发送成功"))}));
        QVERIFY(UserDefaults::standard().objectForKey(QStringLiteral("isCountdown")).toBool());
        QVERIFY(!button->isEnabled());

        // A second tap while it runs sends nothing and says how long to wait.
        QTRY_COMPARE(delegate->countdown(), 42);
        QVERIFY(!delegate->timer()->isActive());
        clearHud();
        registration->clickButtonGetCode(); // the button itself is disabled meanwhile
        QCOMPARE(hudRecords(), HudRecords{errorHud(QStringLiteral("42S后才能再次获取验证码"))});

        // The rest of the countdown: 59S down to 1S, then the button is back.
        disconnect(hold);
        delegate->timer()->start();
        QTRY_COMPARE(delegate->countdown(), 60);
        QCOMPARE(button->title(), QStringLiteral("获取验证码"));
        QVERIFY(button->isEnabled());
        QVERIFY(!UserDefaults::standard().objectForKey(QStringLiteral("isCountdown")).toBool());
        QStringList shown;
        for (int second = 59; second >= 1; --second)
            shown.append(QStringLiteral("%1S").arg(second));
        QCOMPARE(titles.mid(0, 59), shown);
        disconnect(titleWatch);
    }

    void phoneRegistrationSignsIn_data()
    {
        QTest::addColumn<qint64>("father");
        QTest::newRow("from the cart tab") << qint64(0);
        QTest::newRow("from my page") << qint64(1);
    }

    void phoneRegistrationSignsIn()
    {
        QFETCH(qint64, father);
        const QString phone = QStringLiteral("1390000444%1").arg(father);
        UserDefaults::standard().setObject(QStringLiteral("4"), QStringLiteral("cartnum"));
        RegisterViewController *registration = openRegistration(father);
        QVERIFY(registration);
        const QString code = requestCode(registration, phone);
        QCOMPARE(code.size(), 6);
        clearHud();
        fill(registration, phone, code, Password, Password);
        QVERIFY(registration->buttonNext()->tap());
        QTRY_COMPARE_WITH_TIMEOUT(m_fixture->completions(), QList<qint64>{father}, 10000);
        QTRY_COMPARE(m_fixture->window()->presentedCount(), 0);
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在注册...")),
                                           successHud(QStringLiteral("注册成功"))}));
        const std::optional<Object_User> user = AppDelegate::shared()->userLogin();
        QVERIFY(user);
        QCOMPARE(user->phone_number, phone);
        QVERIFY(ICSessionHelper::userGetinfo());
        QVERIFY(ICCookiesHelper::isEmptyCookies()); // despite its name: the cookies are stored
        // Left alone, as the registration's sign-in does: the stored name and the cart count.
        QVERIFY(!UserDefaults::standard().objectForKey(QStringLiteral("username")).isValid());
        QCOMPARE(UserDefaults::standard().objectForKey(QStringLiteral("cartnum")).toString(),
                 QStringLiteral("4"));
    }

    void mailRegistrationNeedsActivation()
    {
        const QString mail = QStringLiteral("newcomer@tarvel.test");
        RegisterViewController *registration = openRegistration(1);
        QVERIFY(registration);
        platform::NavigationController *stack = registration->navigationController();
        fill(registration, mail, QString(), Password, Password);
        registration->fieldImageCode()->setText(m_fixture->captchaText());
        QVERIFY(registration->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在注册...")),
                             successHud(QStringLiteral("注册成功,请前往邮箱激活账号。"))}));
        QCOMPARE(stack->depth(), 1);
        QVERIFY(m_fixture->completions().isEmpty());
        QVERIFY(!AppDelegate::shared()->userLogin());

        // Signing in before the activation link was opened is refused.
        auto *signIn = qobject_cast<NavRootViewController *>(stack->topViewController());
        QVERIFY(signIn);
        QTRY_VERIFY(signIn->isOnScreen());
        settle(); // it refills its account field as it appears
        signIn->fieldUser()->setText(mail);
        signIn->fieldPassword()->setText(Password);
        clearHud();
        QVERIFY(signIn->buttonLogin()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords().constLast(),
                 errorHud(QStringLiteral("继续操作前请先到邮箱激活您的账号"), false));

        // The mailed link activates the account; then signing in works.
        const QString link = m_fixture->lastMessage(mail).value("link").toString();
        QVERIFY2(link.contains("/account/activate?token="), qPrintable(link));
        QCOMPARE(AccountFixture::fetchPage(link).first, 200);
        clearHud();
        QVERIFY(signIn->buttonLogin()->tap());
        QVERIFY2(waitForHuds(2), qPrintable(HudRecorder::shared().history().join('|')));
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在登录...")),
                                           successHud(QStringLiteral("登录成功"))}));
        QCOMPARE(m_fixture->completions(), QList<qint64>{1});
        QVERIFY(AppDelegate::shared()->userLogin());
    }

    void refusalsShowMessageAndName_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<bool>("rightCaptcha");
        QTest::addColumn<QString>("shown");
        QTest::newRow("wrong SMS code")
                << "13900005555" << true << "无效或已过期，请重新获取短信验证码";
        QTest::newRow("wrong captcha")
                << "other@tarvel.test" << false << "请重新输入正确的图片验证码";
        QTest::newRow("mail taken")
                << "demo@tarvel.test" << true << "该邮箱已注册，请直接登录或更换邮箱";
    }

    void refusalsShowMessageAndName()
    {
        QFETCH(QString, account);
        QFETCH(bool, rightCaptcha);
        QFETCH(QString, shown);
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        fill(registration, account, QStringLiteral("000000"), Password, Password);
        registration->fieldImageCode()->setText(rightCaptcha ? m_fixture->captchaText()
                                                             : QStringLiteral("????"));
        QVERIFY(registration->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在注册...")), errorHud(shown)}));
        QCOMPARE(registration->navigationController()->topViewController(), registration);
    }

    void failureWithoutPiecesShowsAnEmptyHud()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        qputenv("TARVEL_API_BASE_URL", server.baseUrl().toUtf8());
        server.enqueue(ScriptedResponse::text(pngBytes(), "image/png"));
        server.enqueue(ScriptedResponse::json(
                "{\"status\":\"error\",\"data\":null,\"message\":\"服务暂时不可用\"}", 503));
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        fill(registration, QStringLiteral("13900006666"), QStringLiteral("123456"), Password,
             Password);
        QVERIFY(registration->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在注册...")), errorHud(QString())}));
    }

    void failedSignInAfterRegistrationStays()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        qputenv("TARVEL_API_BASE_URL", server.baseUrl().toUtf8());
        server.enqueue(ScriptedResponse::text(pngBytes(), "image/png"));
        server.enqueue(ScriptedResponse::json(
                "{\"status\":\"success\",\"message\":\"\",\"data\":{\"account_id\":9}}"));
        server.enqueue(ScriptedResponse::json("{\"status\":\"error\",\"data\":null,\"message\":"
                                              "\"authentication.failure.unconfirmed\"}",
                                              403));
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        fill(registration, QStringLiteral("13900007777"), QStringLiteral("123456"), Password,
             Password);
        QVERIFY(registration->buttonNext()->tap());
        QVERIFY(server.waitForRequests(3));
        QCOMPARE(server.requests().at(2).path, QStringLiteral("/sign_in.json"));
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在注册...")),
                             errorHud(QStringLiteral("继续操作前请先到邮箱激活您的账号"), false)}));
        QCOMPARE(registration->navigationController()->topViewController(), registration);
        QCOMPARE(m_fixture->window()->presentedCount(), 1);
        QVERIFY(!AppDelegate::shared()->userLogin());
    }

    void viewShowsTheFormAndCountdown()
    {
        RegisterViewController *registration = openRegistration();
        QVERIFY(registration);
        PhoneWindow phone;
        QVERIFY(phone.show(m_fixture->window()));
        QTRY_VERIFY(phone.findItem(QStringLiteral("buttonNext")));
        QVERIFY(phone.findText(QStringLiteral("注册")));
        QVERIFY(phone.findText(QStringLiteral("获取验证码")));
        QTRY_COMPARE(phone.findItem(QStringLiteral("imageCodePicture"))->property("status").toInt(),
                     1 /* Image.Ready */);

        // Typing reaches the controller; the picture takes taps.
        QQuickItem *account = phone.findItem(QStringLiteral("fieldUser"));
        QVERIFY(account);
        phone.click(account);
        QTRY_VERIFY(registration->fieldUser()->isFirstResponder());
        for (const char key : QByteArrayLiteral("13900008888"))
            QTest::keyClick(phone.window(), key);
        QCOMPARE(registration->fieldUser()->text(), QStringLiteral("13900008888"));
        const QUrl before = registration->imageCode()->backgroundImageUrl();
        phone.click(phone.findItem(QStringLiteral("imageCode")));
        QTRY_VERIFY(registration->imageCode()->backgroundImageUrl() != before);
        QTRY_VERIFY(!Hud::shared().isVisible());

        // The countdown running on the button, held still for the picture.
        AppDelegate::shared()->setCountdownTickInterval(60 * 1000);
        registration->fieldImageCode()->setText(m_fixture->captchaText());
        clearHud();
        phone.click(phone.findItem(QStringLiteral("buttonAuthCode")));
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords().constLast(), successHud(QStringLiteral("验证码发送成功")));
        AppDelegate::shared()->TimerCountdown();
        QTRY_VERIFY(phone.findText(QStringLiteral("59S")));
        Hud::shared().dismiss();
        QTRY_VERIFY(!phone.findText(QStringLiteral("验证码发送成功")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("register-countdown.png")));

        // A mail address folds the SMS row away.
        registration->fieldUser()->setText(QStringLiteral("a@b.cn"));
        registration->fieldUser()->setFirstResponder(true);
        registration->fieldUser()->resignFirstResponder();
        QTRY_VERIFY(!phone.findItem(QStringLiteral("viewAuthCode")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("register-mail.png")));
        AppDelegate::shared()->setCountdownTickInterval(5);
        AppDelegate::shared()->setTimerStart();
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestRegister)
#include "tst_register.moc"
