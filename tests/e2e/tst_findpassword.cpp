#include "HudRecorder.h"
#include "tst_register_support.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/TextField.h"
#include "screens/account/FindPasswordMobileViewController.h"
#include "screens/account/FindPasswordViewController.h"
#include "screens/account/FindPswByEmailViewController.h"
#include "screens/account/MessageCheckingViewController.h"
#include "screens/account/SetNewPasswordViewController.h"

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using platform::NavigationController;
using namespace tarvel::test;

namespace {

const QString OldPassword = QStringLiteral("secret123");
const QString NewPassword = QStringLiteral("another456");

template<typename Screen>
Screen *topAs(NavigationController *stack)
{
    return qobject_cast<Screen *>(stack->topViewController());
}

bool waitForHudGone()
{
    return QTest::qWaitFor([] { return !Hud::shared().isVisible(); }, 10000);
}

} // namespace

// Password recovery and unlocking against tarvel-store: the chooser in both modes, the mobile
// and mail screens with their checks, the SMS step with its masked number, and every way these
// flows end.
class TestFindPassword : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AccountFixture> m_fixture;
    NavRootViewController *m_signIn = nullptr;

    NavigationController *stack() const { return m_signIn->navigationController(); }

    // The chooser, opened the way the sign-in screen opens it.
    FindPasswordViewController *openChooser(qint64 viewType)
    {
        m_signIn = m_fixture->presentSignIn();
        if (!m_signIn)
            return nullptr;
        if (viewType == FindPasswordViewController::FindPassword)
            m_signIn->buttonForget()->tap();
        else
            stack()->pushViewController(new FindPasswordViewController(viewType), false);
        auto *chooser = topAs<FindPasswordViewController>(stack());
        if (!chooser || !QTest::qWaitFor([chooser] { return chooser->buttonMobile(); }))
            return nullptr;
        return chooser;
    }

    // A recovery screen from the chooser, with its first captcha shown.
    template<typename Screen>
    Screen *openForm(qint64 viewType)
    {
        FindPasswordViewController *chooser = openChooser(viewType);
        if (!chooser)
            return nullptr;
        if constexpr (std::is_same_v<Screen, FindPasswordMobileViewController>)
            chooser->buttonMobile()->tap();
        else
            chooser->buttonEmail()->tap();
        auto *form = topAs<Screen>(stack());
        if (!form || !AccountFixture::waitForCaptcha(form->imageCode()) || !waitForHudGone())
            return nullptr;
        clearHud();
        return form;
    }

    // The SMS step reached through the mobile screen with the right captcha.
    MessageCheckingViewController *openMessageChecking(qint64 viewType, const QString &phone)
    {
        auto *mobile = openForm<FindPasswordMobileViewController>(viewType);
        if (!mobile)
            return nullptr;
        mobile->fieldUser()->setText(phone);
        mobile->fieldAuthCode()->setText(m_fixture->captchaText());
        mobile->buttonNext()->tap();
        if (!waitForHuds(2)) {
            qWarning() << "no SMS code:" << HudRecorder::shared().history();
            return nullptr;
        }
        auto *checking = topAs<MessageCheckingViewController>(stack());
        if (!checking
            || !QTest::qWaitFor([checking] { return !checking->labelTitle()->text().isEmpty(); }))
            return nullptr;
        return checking;
    }

    // Signs in through the service as the sign-in screen would; answers whether it worked.
    bool signInWorks(const QString &account, const QString &password)
    {
        bool done = false;
        bool worked = false;
        NetWorkHelper::shareInstance()->signInWithAccountEmail(
                account, password, {}, {},
                [&](const QVariant &, const QVariant &) { done = worked = true; },
                [&](const QVariant &, const QString &, const QVariant &) { done = true; });
        return QTest::qWaitFor([&] { return done; }, 10000) && worked;
    }

    // Five wrong passwords lock the account (the service then answers with code 601).
    void lock(const QString &account)
    {
        for (int i = 0; i < 5; ++i)
            QVERIFY(!signInWorks(account, QStringLiteral("not-it")));
        QVERIFY(!signInWorks(account, OldPassword));
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
    void cleanup()
    {
        m_signIn = nullptr;
        m_fixture->closeWindow();
    }

    void chooserByMode_data()
    {
        QTest::addColumn<qint64>("viewType");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("mobile");
        QTest::addColumn<QString>("email");
        QTest::newRow("find password") << qint64(0) << "找回方式"
                                       << "通过手机找回"
                                       << "通过邮箱找回";
        QTest::newRow("unlock") << qint64(1) << "解锁方式"
                                << "通过手机解锁"
                                << "通过邮箱解锁";
    }

    void chooserByMode()
    {
        QFETCH(qint64, viewType);
        QFETCH(QString, title);
        QFETCH(QString, mobile);
        QFETCH(QString, email);
        FindPasswordViewController *chooser = openChooser(viewType);
        QVERIFY(chooser);
        QCOMPARE(chooser->title(), title);
        QVERIFY(chooser->isNavigationBarTransparent());
        QCOMPARE(chooser->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QCOMPARE(chooser->buttonMobile()->title(), mobile);
        QCOMPARE(chooser->buttonEmail()->title(), email);

        // Each way keeps the mode and shows "找回密码".
        QVERIFY(chooser->buttonMobile()->tap());
        auto *byMobile = topAs<FindPasswordMobileViewController>(stack());
        QVERIFY(byMobile);
        QCOMPARE(byMobile->viewType(), viewType);
        QTRY_COMPARE(byMobile->title(), QStringLiteral("找回密码"));
        QTRY_VERIFY(!byMobile->backgroundImage().isEmpty());
        QCOMPARE(byMobile->fieldUser()->placeholder(), QStringLiteral("请输入手机号"));
        QCOMPARE(byMobile->fieldAuthCode()->placeholder(), QStringLiteral("请输入验证码"));
        QCOMPARE(byMobile->buttonNext()->title(), QStringLiteral("下一步"));
        QVERIFY(AccountFixture::waitForCaptcha(byMobile->imageCode()));
        QVERIFY(byMobile->leftBarItem()->tap());
        QVERIFY(chooser->buttonEmail()->tap());
        auto *byMail = topAs<FindPswByEmailViewController>(stack());
        QVERIFY(byMail);
        QCOMPARE(byMail->viewType(), viewType);
        QTRY_COMPARE(byMail->title(), QStringLiteral("找回密码"));
        QTRY_VERIFY(!byMail->backgroundImage().isEmpty());
        QCOMPARE(byMail->fieldUser()->placeholder(), QStringLiteral("请输入邮箱"));
        QCOMPARE(byMail->buttonNext()->title(), QStringLiteral("发送验证邮件"));
        QVERIFY(AccountFixture::waitForCaptcha(byMail->imageCode()));
        QCOMPARE(hudRecords().constFirst(), progressHud(QStringLiteral("正在加载")));
    }

    void mobileScreenChecks_data()
    {
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("captcha");
        QTest::addColumn<HudRecords>("shown");
        const auto asking = progressHud(QStringLiteral("正在获取验证码..."));
        QTest::newRow("not a mobile number")
                << "1380013800"
                << "ABCD" << HudRecords{errorHud(QStringLiteral("请输入正确的手机号"))};
        QTest::newRow("empty captcha is sent")
                << "13800138000"
                << "" << HudRecords{asking, errorHud(QStringLiteral("请重新输入正确的图片验证码"))};
        QTest::newRow("unknown number")
                << "13012345678"
                << "right"
                << HudRecords{asking, errorHud(QStringLiteral("该号码尚未注册，请检查手机号"))};
    }

    void mobileScreenChecks()
    {
        QFETCH(QString, phone);
        QFETCH(QString, captcha);
        QFETCH(HudRecords, shown);
        auto *mobile = openForm<FindPasswordMobileViewController>(0);
        QVERIFY(mobile);
        mobile->fieldUser()->setText(phone);
        mobile->fieldAuthCode()->setText(captcha == "right" ? m_fixture->captchaText() : captcha);
        QVERIFY(mobile->buttonNext()->tap());
        QVERIFY(waitForHuds(shown.size()));
        QCOMPARE(hudRecords(), shown);
        QCOMPARE(stack()->topViewController(), mobile);
    }

    void countdownRefusalShowsAnEmptyHud()
    {
        m_fixture->createAccount(QStringLiteral("13911110001"), QString());
        AppDelegate::shared()->setCountdownTickInterval(60 * 1000);
        MessageCheckingViewController *checking
                = openMessageChecking(0, QStringLiteral("13911110001"));
        QVERIFY(checking);
        // Back on the mobile screen, a second "下一步" meets the countdown.
        QVERIFY(checking->leftBarItem()->tap());
        auto *mobile = topAs<FindPasswordMobileViewController>(stack());
        QVERIFY(mobile);
        clearHud();
        QVERIFY(mobile->buttonNext()->tap());
        QCOMPARE(hudRecords(), HudRecords{errorHud(QString())});
        QCOMPARE(stack()->topViewController(), mobile);
    }

    void maskedNumber_data()
    {
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("shown");
        QTest::newRow("eleven digits") << "13800138000"
                                       << "138******00";
        QTest::newRow("nine characters") << "123456789"
                                         << "123******";
        QTest::newRow("twelve characters") << "861380013800"
                                           << "861******800";
    }

    void maskedNumber()
    {
        QFETCH(QString, phone);
        QFETCH(QString, shown);
        QCOMPARE(MessageCheckingViewController::maskedPhoneNumber(phone), shown);
    }

    void smsStepByMode_data()
    {
        QTest::addColumn<qint64>("viewType");
        QTest::newRow("find password") << qint64(0);
        QTest::newRow("unlock") << qint64(1);
    }

    void smsStepByMode()
    {
        QFETCH(qint64, viewType);
        const QString phone = QStringLiteral("1391111010%1").arg(viewType);
        m_fixture->createAccount(phone, QString());
        MessageCheckingViewController *checking = openMessageChecking(viewType, phone);
        QVERIFY(checking);
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在获取验证码...")),
                                           successHud(QStringLiteral("验证码发送成功"))}));
        QCOMPARE(checking->phoneNum(), phone);
        QCOMPARE(checking->strImageCode(), m_fixture->captchaText());
        QCOMPARE(checking->viewType(), viewType);
        QCOMPARE(checking->title(), QStringLiteral("短信验证"));
        QCOMPARE(checking->labelTitle()->text(), QStringLiteral("已向手机%1******%2发送验证信息!")
                                                         .arg(phone.left(3), phone.right(2)));
        QCOMPARE(checking->fieldAuthCode()->placeholder(), QStringLiteral("请输入短信验证码"));
        // The code just sent: its countdown runs on this screen's button.
        QCOMPARE(AppDelegate::shared()->buttonAuthCode(), checking->buttonAuthCode());
        QCOMPARE(checking->buttonAuthCode()->isEnabled(), AppDelegate::shared()->countdown() == 60);
        QCOMPARE(checking->fieldPassword()->isHidden(), viewType == 1);
        QCOMPARE(checking->fieldPasswordAgain()->isHidden(), viewType == 1);
        QCOMPARE(checking->fieldPassword()->placeholder(),
                 QStringLiteral("请输入至少8位字母或数字"));
        QVERIFY(checking->fieldPassword()->isSecureTextEntry());
        QCOMPARE(checking->fieldPasswordAgain()->placeholder(), QStringLiteral("请再次输入密码"));
        QCOMPARE(checking->buttonNext()->title(), QStringLiteral("完成"));
        // The code went to the number for the purpose of the mode.
        QCOMPARE(m_fixture->smsCode(phone).size(), 6);
    }

    void findPasswordChecks_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("again");
        QTest::addColumn<QString>("shown");
        QTest::newRow("all empty") << ""
                                   << ""
                                   << ""
                                   << "请输入验证码";
        QTest::newRow("seven characters") << "123456"
                                          << "1234567"
                                          << "1234567"
                                          << "请输入8位以上密码";
        QTest::newRow("repeat empty") << "123456"
                                      << "12345678"
                                      << ""
                                      << "请再次输入密码";
        QTest::newRow("differ") << "123456"
                                << "12345678"
                                << "12345679"
                                << "两次密码输入结果不同";
    }

    void findPasswordChecks()
    {
        QFETCH(QString, code);
        QFETCH(QString, password);
        QFETCH(QString, again);
        QFETCH(QString, shown);
        MessageCheckingViewController checking(0);
        checking.setPhoneNum(QStringLiteral("13800138000"));
        checking.fieldAuthCode()->setText(code);
        checking.fieldPassword()->setText(password);
        checking.fieldPasswordAgain()->setText(again);
        checking.clickButtonNext();
        QCOMPARE(hudRecords(), HudRecords{errorHud(shown, false)});

        // The stand-alone form has the same checks without the code.
        if (code.isEmpty())
            return;
        clearHud();
        SetNewPasswordViewController form;
        form.fieldPassword()->setText(password);
        form.fieldPasswordAgain()->setText(again);
        form.clickButtonNext();
        QCOMPARE(hudRecords(), HudRecords{errorHud(shown, false)});
    }

    void newPasswordBySms()
    {
        const QString phone = QStringLiteral("13911110200");
        m_fixture->createAccount(phone, QString());
        MessageCheckingViewController *checking = openMessageChecking(0, phone);
        QVERIFY(checking);
        // A wrong code: one text whatever the service said.
        checking->fieldAuthCode()->setText(QStringLiteral("000000"));
        checking->fieldPassword()->setText(NewPassword);
        checking->fieldPasswordAgain()->setText(NewPassword);
        clearHud();
        QVERIFY(checking->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在修改密码")),
                                           errorHud(QStringLiteral("出错啦,请重试!"), false)}));

        checking->fieldAuthCode()->setText(m_fixture->smsCode(phone));
        clearHud();
        QVERIFY(checking->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在修改密码")),
                                           successHud(QStringLiteral("密码修改成功"), false)}));
        QCOMPARE(stack()->depth(), 1);
        QVERIFY(!AppDelegate::shared()->userLogin()); // the user signs in again
        QVERIFY(!signInWorks(phone, OldPassword));
        QVERIFY(signInWorks(phone, NewPassword));
    }

    void unlockBySmsAfterFiveFailures()
    {
        const QString phone = QStringLiteral("13911110300");
        m_fixture->createAccount(phone, QString());
        // The sign-in screen sends a locked account (code 601) to the unlock chooser.
        m_signIn = m_fixture->presentSignIn();
        QVERIFY(m_signIn);
        for (int i = 0; i < 5; ++i) {
            clearHud();
            m_signIn->fieldUser()->setText(phone);
            m_signIn->fieldPassword()->setText(QStringLiteral("not-it"));
            QVERIFY(m_signIn->buttonLogin()->tap());
            QVERIFY(waitForHuds(2));
        }
        QCOMPARE(hudRecords().constLast(), errorHud(QStringLiteral("账号被锁定"), false));
        auto *chooser = topAs<FindPasswordViewController>(stack());
        QVERIFY(chooser);
        QCOMPARE(chooser->viewType(), qint64(FindPasswordViewController::Unlock));
        QTRY_VERIFY(chooser->buttonMobile());
        QVERIFY(chooser->buttonMobile()->tap());
        auto *mobile = topAs<FindPasswordMobileViewController>(stack());
        QVERIFY(mobile);
        QVERIFY(AccountFixture::waitForCaptcha(mobile->imageCode()));
        QVERIFY(waitForHudGone());
        mobile->fieldUser()->setText(phone);
        mobile->fieldAuthCode()->setText(m_fixture->captchaText());
        QVERIFY(mobile->buttonNext()->tap());
        QTRY_VERIFY(topAs<MessageCheckingViewController>(stack()));
        auto *checking = topAs<MessageCheckingViewController>(stack());
        QCOMPARE(checking->viewType(), qint64(1));
        QTRY_VERIFY(!checking->backgroundImage().isEmpty());

        // An empty code is sent as it is; the service's refusal reads as a sentence.
        clearHud();
        QVERIFY(checking->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在解锁...")),
                             errorHud(QStringLiteral("无效或已过期，请重新获取短信验证码"))}));

        checking->fieldAuthCode()->setText(m_fixture->smsCode(phone));
        clearHud();
        QVERIFY(checking->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在解锁...")),
                                           successHud(QStringLiteral("账号解锁成功"))}));
        QCOMPARE(stack()->depth(), 1);
        QVERIFY(signInWorks(phone, OldPassword));
    }

    void mailScreenChecks_data()
    {
        QTest::addColumn<QString>("mail");
        QTest::addColumn<QString>("captcha");
        QTest::addColumn<HudRecords>("shown");
        const auto asking = progressHud(QStringLiteral("正在验证..."));
        QTest::newRow("not a mail address")
                << "demo@tarvel"
                << "ABCD" << HudRecords{errorHud(QStringLiteral("请输入正确的邮箱"), false)};
        QTest::newRow("empty captcha")
                << "demo@tarvel.test"
                << "" << HudRecords{errorHud(QStringLiteral("请输入验证码"), false)};
        QTest::newRow("wrong captcha")
                << "demo@tarvel.test"
                << "????" << HudRecords{asking, errorHud(QStringLiteral("出错啦,请重试!"), false)};
        QTest::newRow("unknown address")
                << "nobody@tarvel.test"
                << "right" << HudRecords{asking, errorHud(QStringLiteral("出错啦,请重试!"), false)};
    }

    void mailScreenChecks()
    {
        QFETCH(QString, mail);
        QFETCH(QString, captcha);
        QFETCH(HudRecords, shown);
        auto *byMail = openForm<FindPswByEmailViewController>(0);
        QVERIFY(byMail);
        byMail->fieldUser()->setText(mail);
        byMail->fieldAuthCode()->setText(captcha == "right" ? m_fixture->captchaText() : captcha);
        QVERIFY(byMail->buttonNext()->tap());
        QVERIFY(waitForHuds(shown.size()));
        QCOMPARE(hudRecords(), shown);
        QCOMPARE(stack()->topViewController(), byMail);
    }

    void mailSendsTheLink_data()
    {
        QTest::addColumn<qint64>("viewType");
        QTest::addColumn<QString>("linkPath");
        QTest::newRow("find password") << qint64(0) << "/account/password/edit?token=";
        QTest::newRow("unlock") << qint64(1) << "/account/unlock?token=";
    }

    void mailSendsTheLink()
    {
        QFETCH(qint64, viewType);
        QFETCH(QString, linkPath);
        const QString mail = QStringLiteral("reader%1@tarvel.test").arg(viewType);
        m_fixture->createAccount(QString(), mail);
        auto *byMail = openForm<FindPswByEmailViewController>(viewType);
        QVERIFY(byMail);
        byMail->fieldUser()->setText(mail);
        byMail->fieldAuthCode()->setText(m_fixture->captchaText());
        QVERIFY(byMail->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(),
                 (HudRecords{progressHud(QStringLiteral("正在验证...")),
                             successHud(QStringLiteral("邮件已发送,请前往邮箱查看"))}));
        QCOMPARE(stack()->depth(), 1);
        const QString link = m_fixture->lastMessage(mail).value("link").toString();
        QVERIFY2(link.contains(linkPath), qPrintable(link));
    }

    void setNewPasswordForm()
    {
        const QString phone = QStringLiteral("13911110400");
        m_fixture->createAccount(phone, QString());
        MessageCheckingViewController *checking = openMessageChecking(0, phone);
        QVERIFY(checking);
        // The stand-alone form, handed what the SMS step holds.
        auto *form = new SetNewPasswordViewController;
        form->setStrPhoneNum(phone);
        form->setStrImageCode(checking->strImageCode());
        form->setStrAuthCode(m_fixture->smsCode(phone));
        stack()->pushViewController(form, false);
        QTRY_VERIFY(!form->backgroundImage().isEmpty());
        QCOMPARE(form->title(), QStringLiteral("设置新密码"));
        QCOMPARE(form->fieldPassword()->placeholder(), QStringLiteral("请输入至少8位字母或数字"));
        QVERIFY(form->fieldPassword()->isSecureTextEntry());
        QCOMPARE(form->fieldPasswordAgain()->placeholder(), QStringLiteral("请再次输入密码"));
        QCOMPARE(form->buttonNext()->title(), QStringLiteral("确定"));
        form->fieldPassword()->setText(NewPassword);
        form->fieldPasswordAgain()->setText(NewPassword);
        clearHud();
        QVERIFY(form->buttonNext()->tap());
        QVERIFY(waitForHuds(2));
        QCOMPARE(hudRecords(), (HudRecords{progressHud(QStringLiteral("正在修改密码")),
                                           successHud(QStringLiteral("密码修改成功"), false)}));
        QCOMPARE(stack()->depth(), 1);
        QVERIFY(signInWorks(phone, NewPassword));
    }

    void viewsShowTheSteps()
    {
        const QString phone = QStringLiteral("13911110500");
        m_fixture->createAccount(phone, QString());
        FindPasswordViewController *chooser = openChooser(0);
        QVERIFY(chooser);
        PhoneWindow window;
        QVERIFY(window.show(m_fixture->window()));
        QTRY_VERIFY(window.findText(QStringLiteral("通过手机找回")));
        QVERIFY(window.findText(QStringLiteral("通过邮箱找回")));
        QTRY_VERIFY(!stacksBusy(window.root())); // the slide has ended
        QVERIFY(window.waitForFrame());
        QVERIFY(window.screenshot(QStringLiteral("findpassword-choice.png")));

        window.click(window.findItem(QStringLiteral("buttonMobile")));
        QTRY_VERIFY(topAs<FindPasswordMobileViewController>(stack()));
        auto *mobile = topAs<FindPasswordMobileViewController>(stack());
        QVERIFY(AccountFixture::waitForCaptcha(mobile->imageCode()));
        QVERIFY(waitForHudGone());
        QTRY_VERIFY(window.findText(QStringLiteral("下一步")));
        QTRY_COMPARE(
                window.findItem(QStringLiteral("imageCodePicture"))->property("status").toInt(),
                1 /* Image.Ready */);
        QTRY_VERIFY(!stacksBusy(window.root()));
        QVERIFY(window.waitForFrame());
        QVERIFY(window.screenshot(QStringLiteral("findpassword-mobile.png")));

        mobile->fieldUser()->setText(phone);
        mobile->fieldAuthCode()->setText(m_fixture->captchaText());
        clearHud();
        window.click(window.findItem(QStringLiteral("buttonNext")));
        QTRY_VERIFY(topAs<MessageCheckingViewController>(stack()));
        QVERIFY(waitForHuds(2));
        Hud::shared().dismiss();
        QTRY_VERIFY(!window.findText(QStringLiteral("验证码发送成功")));
        QTRY_VERIFY(window.findText(QStringLiteral("已向手机139******00发送验证信息!")));
        QVERIFY(window.findItem(QStringLiteral("fieldPasswordAgain")));
        QTRY_VERIFY(!stacksBusy(window.root())); // the slide has ended
        QVERIFY(window.waitForFrame());
        QVERIFY(window.screenshot(QStringLiteral("findpassword-sms.png")));
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestFindPassword)
#include "tst_findpassword.moc"
