#include "HudRecorder.h"
#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "tst_account_support.h"
#include "tst_signin_support.h"

#include "app/AppDelegate.h"
#include "platform/UserDefaults.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/Window.h"
#include "screens/account/AccountSafeCell.h"
#include "screens/account/AccountSafeViewController.h"
#include "screens/account/BindEmailViewController.h"
#include "screens/account/BindMobileViewController.h"
#include "screens/account/ModifyMobileOldViewController.h"
#include "screens/account/ModifyPasswordViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using platform::NavigationController;
using namespace tarvel::test;

namespace {

const QString Password = QStringLiteral("secret123");

QList<HudRecorder::Record> hudRecords()
{
    return HudRecorder::shared().records();
}

bool countdownRuns()
{
    return platform::UserDefaults::standard().objectForKey(QStringLiteral("isCountdown")).toBool();
}

// Ends a running countdown tick by tick, without waiting for its seconds.
void finishCountdown()
{
    while (countdownRuns())
        AppDelegate::shared()->TimerCountdown();
}

Object_User userWith(const QString &phone, const QString &email)
{
    Object_User user;
    user.account_id = QStringLiteral("1");
    user.nick_name = QStringLiteral("测试玩家");
    user.phone_number = phone;
    user.email = email;
    return user;
}

} // namespace

// The security list and its four sub-screens against tarvel-store: the rows and their masks,
// every check of the forms in order, the SMS steps with the codes the store sent, and what a
// success changes and where it leads.
class TestAccountSafe : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<platform::Window> m_window;
    NavigationController *m_stack = nullptr;
    platform::ViewController *m_root = nullptr;

    // A stack whose root stands for the my page, with `screen` pushed on it once its deferred
    // hooks have run.
    template<typename Screen>
    Screen *push(Screen *screen)
    {
        m_window = std::make_unique<platform::Window>();
        m_root = new platform::ViewController;
        m_stack = new NavigationController(m_root);
        m_window->setRootViewController(m_stack);
        m_window->makeKeyAndVisible();
        m_stack->pushViewController(screen, false);
        const bool loaded = QTest::qWaitFor([screen] { return !screen->title().isEmpty(); });
        settle();
        return loaded ? screen : nullptr;
    }

    template<typename Screen>
    Screen *top() const
    {
        return qobject_cast<Screen *>(m_stack->topViewController());
    }

    void signInFresh(const QString &phone, const QString &email)
    {
        createAccount(*m_store, phone, email, Password, QStringLiteral("安全测试"));
        QVERIFY(signIn(phone.isEmpty() ? email : phone, Password));
        HudRecorder::shared().clear();
    }

    static bool waitForHud(qsizetype count)
    {
        return QTest::qWaitFor([count] { return hudRecords().size() >= count; }, 10000);
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        AppDelegate::shared();
    }

    void init()
    {
        finishCountdown();
        ICCookiesHelper::deleteCookies();
        ICSessionHelper::userClearData();
        AppDelegate::shared()->setUserLogin(std::nullopt);
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        QmlWarnings::clear();
    }

    void cleanup()
    {
        m_window.reset();
        settle();
    }

    void listShowsTheUser_data()
    {
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("phoneTip");
        QTest::addColumn<QString>("phoneButton");
        QTest::addColumn<QString>("emailTip");
        QTest::addColumn<QString>("emailButton");
        QTest::newRow("11 digits, no e-mail") << "13800138000"
                                              << ""
                                              << "*138****8000"
                                              << "修改"
                                              << "*请您绑定您的邮箱!"
                                              << "绑定";
        QTest::newRow("no number, e-mail") << ""
                                           << "demo@tarvel.test"
                                           << "*请您绑定您的手机!"
                                           << "绑定"
                                           << "*demo@tarvel.test"
                                           << "修改";
        QTest::newRow("10 digits count as none") << "1380013800"
                                                 << ""
                                                 << "*请您绑定您的手机!"
                                                 << "绑定"
                                                 << "*请您绑定您的邮箱!"
                                                 << "绑定";
        QTest::newRow("12 characters count as none") << "+86138001380"
                                                     << "a@b"
                                                     << "*请您绑定您的手机!"
                                                     << "绑定"
                                                     << "*请您绑定您的邮箱!"
                                                     << "绑定";
        QTest::newRow("both") << "13912345678"
                              << "me@example.com"
                              << "*139****5678"
                              << "修改"
                              << "*me@example.com"
                              << "修改";
    }

    void listShowsTheUser()
    {
        QFETCH(QString, phone);
        QFETCH(QString, email);
        QFETCH(QString, phoneTip);
        QFETCH(QString, phoneButton);
        QFETCH(QString, emailTip);
        QFETCH(QString, emailButton);
        AppDelegate::shared()->setUserLogin(userWith(phone, email));
        auto *list = push(new AccountSafeViewController);
        QCOMPARE(list->title(), QStringLiteral("账户安全"));
        QCOMPARE(list->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(list->leftBarItem()->title().isEmpty());
        QVERIFY(!list->isNavigationBarTransparent());
        QCOMPARE(list->numberOfSectionsInTableView(), 1);
        QCOMPARE(list->numberOfRowsInSection(0), 3);

        const QStringList titles{QStringLiteral("账户密码"), QStringLiteral("绑定手机"),
                                 QStringLiteral("绑定邮箱")};
        const QStringList tips{QStringLiteral("*定期更改密码可保护账户安全"), phoneTip, emailTip};
        const QStringList buttons{QStringLiteral("修改"), phoneButton, emailButton};
        for (int row = 0; row < 3; ++row) {
            AccountSafeCell *cell = list->cellForRowAtIndexPath(row);
            QCOMPARE(cell->title(), titles.at(row));
            QCOMPARE(cell->labelTip()->text(), tips.at(row));
            QCOMPARE(cell->buttonModify()->title(), buttons.at(row));
        }
        // Each kind of button has its own look, and the rows wear the look of their title.
        AccountSafeCell bindLook;
        bindLook.setButtonType(AccountSafeCell::Bind);
        const AccountSafeCell modifyLook;
        QVERIFY(bindLook.buttonBackgroundColor() != modifyLook.buttonBackgroundColor());
        QVERIFY(bindLook.buttonModify()->titleColor() != modifyLook.buttonModify()->titleColor());
        for (int row = 0; row < 3; ++row) {
            const AccountSafeCell &look
                    = buttons.at(row) == QStringLiteral("绑定") ? bindLook : modifyLook;
            AccountSafeCell *cell = list->cellForRowAtIndexPath(row);
            QCOMPARE(cell->buttonBackgroundColor(), look.buttonBackgroundColor());
            QCOMPARE(cell->buttonModify()->titleColor(), look.buttonModify()->titleColor());
        }
    }

    void buttonsOpenTheirScreens_data()
    {
        QTest::addColumn<QString>("phoneWhenShown");
        QTest::addColumn<QString>("phoneAtTap");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("opens");
        QTest::newRow("password") << "13800138000"
                                  << "13800138000" << 0 << "ModifyPasswordViewController";
        QTest::newRow("number: old one first")
                << "13800138000"
                << "13800138000" << 1 << "ModifyMobileOldViewController";
        QTest::newRow("no number: bind at once") << ""
                                                 << "" << 1 << "BindMobileViewController";
        QTest::newRow("number gone by the tap") << "13800138000"
                                                << "" << 1 << "BindMobileViewController";
        QTest::newRow("number come by the tap")
                << ""
                << "13800138000" << 1 << "ModifyMobileOldViewController";
        QTest::newRow("e-mail") << ""
                                << "" << 2 << "BindEmailViewController";
    }

    void buttonsOpenTheirScreens()
    {
        QFETCH(QString, phoneWhenShown);
        QFETCH(QString, phoneAtTap);
        QFETCH(int, row);
        QFETCH(QString, opens);
        AppDelegate::shared()->setUserLogin(userWith(phoneWhenShown, QString()));
        auto *list = push(new AccountSafeViewController);
        AppDelegate::shared()->setUserLogin(userWith(phoneAtTap, QString()));
        QVERIFY(list->cellForRowAtIndexPath(row)->buttonModify()->tap());
        QCOMPARE(m_stack->depth(), 3);
        QCOMPARE(QString::fromLatin1(m_stack->topViewController()->metaObject()->className()),
                 opens);
    }

    void passwordChecksInOrder_data()
    {
        QTest::addColumn<QString>("oldPass");
        QTest::addColumn<QString>("newPass");
        QTest::addColumn<QString>("again");
        QTest::addColumn<QString>("shown");
        QTest::newRow("all empty") << ""
                                   << ""
                                   << ""
                                   << "请输入旧密码";
        QTest::newRow("old empty") << ""
                                   << "abc"
                                   << "abc"
                                   << "请输入旧密码";
        QTest::newRow("new empty") << "old"
                                   << ""
                                   << "abc"
                                   << "请输入新密码";
        QTest::newRow("again empty") << "old"
                                     << "abc"
                                     << ""
                                     << "请重复输入新密码";
        QTest::newRow("differ") << "old"
                                << "abc"
                                << "abd"
                                << "两次密码输入不同";
    }

    void passwordChecksInOrder()
    {
        QFETCH(QString, oldPass);
        QFETCH(QString, newPass);
        QFETCH(QString, again);
        QFETCH(QString, shown);
        AppDelegate::shared()->setUserLogin(userWith(QStringLiteral("13800138000"), QString()));
        auto *screen = push(new ModifyPasswordViewController);
        QCOMPARE(screen->title(), QStringLiteral("密码修改"));
        screen->fieldOldPassword()->setText(oldPass);
        screen->fieldNewPassword()->setText(newPass);
        screen->fieldNewPasswordAgain()->setText(again);
        QVERIFY(screen->buttonSave()->tap());
        // A request would have shown its progress text at once.
        QCOMPARE(hudRecords(), QList<HudRecorder::Record>{hudError(shown)});
        QCOMPARE(m_stack->depth(), 2);
        QCOMPARE(screen->fieldNewPassword()->text(), newPass);
    }

    void passwordChangeGoesToTheService()
    {
        signInFresh(QStringLiteral("13700001111"), QString());
        auto *screen = push(new ModifyPasswordViewController);
        auto submit = [&](const QString &oldPass, const QString &newPass) {
            HudRecorder::shared().clear();
            screen->fieldOldPassword()->setText(oldPass);
            screen->fieldNewPassword()->setText(newPass);
            screen->fieldNewPasswordAgain()->setText(newPass);
            QVERIFY(screen->buttonSave()->tap());
            QVERIFY(waitForHud(2));
        };
        // One character passes the screen; the service refuses it.
        submit(Password, QStringLiteral("x"));
        QCOMPARE(hudRecords(),
                 (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在修改...")),
                                     hudError(QStringLiteral("请输入至少8位的密码"))}));
        submit(QStringLiteral("not-mine1"), QStringLiteral("brandnew99"));
        QCOMPARE(hudRecords().constLast(), hudError(QStringLiteral("请输入正确的当前密码")));
        QCOMPARE(m_stack->depth(), 2);

        submit(Password, QStringLiteral("brandnew99"));
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在修改...")),
                                                   hudSuccess(QStringLiteral("密码修改成功"))}));
        QTRY_COMPARE(m_stack->depth(), 1);
        QVERIFY(AppDelegate::shared()->userLogin());
        // This session goes on; the new password signs in, the old one no more.
        QVERIFY(signIn(QStringLiteral("13700001111"), QStringLiteral("brandnew99")));
        QVERIFY(!signIn(QStringLiteral("13700001111"), Password));
    }

    void stepOneTip_data()
    {
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("tip");
        QTest::newRow("11 digits") << "13800138000"
                                   << "已向手机138******00发送验证码!";
        QTest::newRow("10 digits") << "1380013800"
                                   << "无手机号";
        QTest::newRow("none") << ""
                              << "无手机号";
    }

    void stepOneTip()
    {
        QFETCH(QString, phone);
        QFETCH(QString, tip);
        AppDelegate::shared()->setUserLogin(userWith(phone, QString()));
        auto *screen = push(new ModifyMobileOldViewController);
        QCOMPARE(screen->title(), QStringLiteral("短信验证"));
        QTRY_COMPARE(screen->labelTip()->text(), tip);
        QCOMPARE(AppDelegate::shared()->buttonAuthCode(), screen->buttonAuthCode());
    }

    void stepOneChecksInOrder_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("shown");
        QTest::newRow("both empty") << ""
                                    << ""
                                    << "请输入验证码";
        QTest::newRow("code empty") << "" << Password << "请输入验证码";
        QTest::newRow("password empty") << "123456"
                                        << ""
                                        << "请输入密码";
    }

    void stepOneChecksInOrder()
    {
        QFETCH(QString, code);
        QFETCH(QString, password);
        QFETCH(QString, shown);
        AppDelegate::shared()->setUserLogin(userWith(QStringLiteral("13800138000"), QString()));
        auto *screen = push(new ModifyMobileOldViewController);
        screen->fieldNewPsw()->setText(code);
        screen->fieldPassword()->setText(password);
        QVERIFY(screen->buttonNext()->tap());
        QCOMPARE(hudRecords(), QList<HudRecorder::Record>{hudError(shown)});
    }

    void bindChecksInOrder_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("shown");
        QTest::newRow("all empty") << ""
                                   << ""
                                   << ""
                                   << "请输入11位手机号";
        QTest::newRow("10 digits") << "1350000111"
                                   << "123456" << Password << "请输入11位手机号";
        QTest::newRow("code empty") << "13500001111"
                                    << "" << Password << "请输入验证码";
        QTest::newRow("password empty") << "13500001111"
                                        << "123456"
                                        << ""
                                        << "请输入密码";
    }

    void bindChecksInOrder()
    {
        QFETCH(QString, number);
        QFETCH(QString, code);
        QFETCH(QString, password);
        QFETCH(QString, shown);
        AppDelegate::shared()->setUserLogin(userWith(QString(), QString()));
        auto *screen = push(new BindMobileViewController);
        QCOMPARE(screen->title(), QStringLiteral("绑定手机"));
        screen->fieldMobile()->setText(number);
        screen->fieldAuthCode()->setText(code);
        screen->fieldPassword()->setText(password);
        QVERIFY(screen->buttonNext()->tap());
        QCOMPARE(hudRecords(), QList<HudRecorder::Record>{hudError(shown)});
        // The code button asks for 11 characters too.
        HudRecorder::shared().clear();
        screen->fieldMobile()->setText(QStringLiteral("1350000"));
        QVERIFY(screen->buttonAuthCode()->tap());
        QCOMPARE(hudRecords(), QList<HudRecorder::Record>{hudError(QStringLiteral("请输入11位手机号"))});
    }

    void changeOfNumberThroughBothSteps()
    {
        const QString oldNumber = QStringLiteral("13700002222");
        const QString newNumber = QStringLiteral("13700003333");
        signInFresh(oldNumber, QString());
        auto *list = push(new AccountSafeViewController);
        QVERIFY(list->cellForRowAtIndexPath(1)->buttonModify()->tap());
        auto *stepOne = top<ModifyMobileOldViewController>();
        QVERIFY(stepOne);
        QTRY_COMPARE(AppDelegate::shared()->buttonAuthCode(), stepOne->buttonAuthCode());

        // The code goes to the bound number and starts the countdown on this button.
        QVERIFY(stepOne->buttonAuthCode()->tap());
        QVERIFY(waitForHud(2));
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在获取验证码...")),
                                                   hudSuccess(QStringLiteral("验证码发送成功"))}));
        QVERIFY(countdownRuns());
        QVERIFY(!stepOne->buttonAuthCode()->isEnabled());
        const QString oldCode = lastSmsCode(*m_store, oldNumber);
        QCOMPARE(oldCode.size(), 6);

        // A wrong code is the service's to refuse.
        HudRecorder::shared().clear();
        stepOne->fieldNewPsw()->setText(QStringLiteral("000000") == oldCode
                                                ? QStringLiteral("111111")
                                                : QStringLiteral("000000"));
        stepOne->fieldPassword()->setText(Password);
        QVERIFY(stepOne->buttonNext()->tap());
        QVERIFY(waitForHud(2));
        QCOMPARE(hudRecords().constFirst(), hudProgress(QStringLiteral("正在验证...")));
        QCOMPARE(hudRecords().constLast().kind, Hud::Error);
        QVERIFY(!hudRecords().constLast().text.isEmpty());
        QCOMPARE(m_stack->depth(), 3);

        HudRecorder::shared().clear();
        stepOne->fieldNewPsw()->setText(oldCode);
        QVERIFY(stepOne->buttonNext()->tap());
        QVERIFY(waitForHud(2));
        QCOMPARE(hudRecords().constLast(), hudSuccess(QStringLiteral("验证成功")));
        auto *bind = top<BindMobileViewController>();
        QVERIFY(bind);

        // Intended: while the first step's countdown runs, the second step's code is refused
        // with the seconds left, and nothing is sent.
        HudRecorder::shared().clear();
        bind->fieldMobile()->setText(newNumber);
        QVERIFY(bind->buttonAuthCode()->tap());
        const int left = AppDelegate::shared()->countdown();
        QCOMPARE(hudRecords(),
                 QList<HudRecorder::Record>{hudError(QStringLiteral("%1S后才能再次获取验证码").arg(left))});
        QVERIFY(lastSmsCode(*m_store, newNumber).isEmpty());

        // Once it is over the code comes, and this screen starts no countdown of its own.
        finishCountdown();
        HudRecorder::shared().clear();
        QVERIFY(bind->buttonAuthCode()->tap());
        QVERIFY(waitForHud(2));
        QCOMPARE(hudRecords().constLast(), hudSuccess(QStringLiteral("验证码发送成功")));
        QVERIFY(!countdownRuns());
        QCOMPARE(AppDelegate::shared()->countdown(), AppDelegate::CountdownSeconds);
        const QString newCode = lastSmsCode(*m_store, newNumber);
        QCOMPARE(newCode.size(), 6);

        HudRecorder::shared().clear();
        bind->fieldAuthCode()->setText(newCode);
        bind->fieldPassword()->setText(Password);
        QVERIFY(bind->buttonNext()->tap());
        QVERIFY(waitForHud(2));
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在绑定...")),
                                                   hudSuccess(QStringLiteral("绑定成功"))}));
        QTRY_COMPARE(m_stack->depth(), 1);
        // The live user has the new number; the stored one keeps the old until the next sign-in.
        QCOMPARE(AppDelegate::shared()->userLogin()->phone_number, newNumber);
        QCOMPARE(ICSessionHelper::userGetinfo()->value(QStringLiteral("phone_number")).toString(),
                 oldNumber);
        QVERIFY(signIn(newNumber, Password));
    }

    void bindEmail_data()
    {
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("password");
        QTest::addColumn<HudRecorder::Record>("shown");
        QTest::newRow("no address")
                << "" << Password << hudError(QStringLiteral("请输入正确的邮箱地址"));
        QTest::newRow("not an address")
                << "me@example" << Password << hudError(QStringLiteral("请输入正确的邮箱地址"));
        QTest::newRow("password empty") << "me@example.com"
                                        << "" << hudError(QStringLiteral("请输入密码"));
        QTest::newRow("wrong password")
                << "me@example.com"
                << "not-mine1" << hudError(QStringLiteral("请输入正确的当前密码"));
        QTest::newRow("taken address")
                << "demo@tarvel.test" << Password
                << hudError(QStringLiteral("该邮箱已被其他账号使用，请更换邮箱"));
    }

    void bindEmail()
    {
        QFETCH(QString, email);
        QFETCH(QString, password);
        QFETCH(HudRecorder::Record, shown);
        static int accounts = 0;
        signInFresh(QStringLiteral("1360000%1").arg(4000 + ++accounts), QString());
        auto *screen = push(new BindEmailViewController);
        QCOMPARE(screen->title(), QStringLiteral("绑定邮箱"));
        screen->fieldEmail()->setText(email);
        screen->fieldPassword()->setText(password);
        QVERIFY(screen->buttonNext()->tap());
        QVERIFY(waitForHud(1));
        QTRY_COMPARE(hudRecords().constLast(), shown);
        QCOMPARE(m_stack->depth(), 2);
        QCOMPARE(screen->fieldEmail()->text(), email);
        QVERIFY(AppDelegate::shared()->userLogin()->email.isEmpty());
    }

    void bindEmailSucceeds()
    {
        signInFresh(QStringLiteral("13600005000"), QString());
        auto *list = push(new AccountSafeViewController);
        QVERIFY(list->cellForRowAtIndexPath(2)->buttonModify()->tap());
        auto *screen = top<BindEmailViewController>();
        QVERIFY(screen);
        screen->fieldEmail()->setText(QStringLiteral("bound@example.com"));
        screen->fieldPassword()->setText(Password);
        QVERIFY(screen->buttonNext()->tap());
        QVERIFY(waitForHud(2));
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在绑定...")),
                                                   hudSuccess(QStringLiteral("绑定成功"))}));
        QTRY_COMPARE(m_stack->depth(), 1);
        QCOMPARE(AppDelegate::shared()->userLogin()->email, QStringLiteral("bound@example.com"));
        QVERIFY(ICSessionHelper::userGetinfo()
                        ->value(QStringLiteral("email"))
                        .toString()
                        .isEmpty());
    }

    void viewsLookFinished()
    {
        AppDelegate::shared()->setUserLogin(userWith(QStringLiteral("13800138000"), QString()));
        auto *list = push(new AccountSafeViewController);
        PhoneWindow phone;
        QVERIFY(phone.show(m_window.get()));
        // The engine may collect garbage while the screens change; the view must stay.
        phone.root()->setParent(phone.window());
        QTRY_VERIFY(phone.findText(QStringLiteral("*138****8000")));
        QVERIFY(phone.findText(QStringLiteral("账户安全")));
        QVERIFY(phone.findText(QStringLiteral("*请您绑定您的邮箱!")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("accountsafe.png")));

        // The e-mail row's button, tapped as a user would, opens its form.
        QList<QQuickItem *> buttons = findAllNamed(phone.root(), QStringLiteral("buttonModify"));
        QCOMPARE(buttons.size(), 3);
        QVERIFY(tapWhenStill(phone.window(), buttons.at(2)));
        QTRY_VERIFY(top<BindEmailViewController>());
        QTRY_VERIFY(phone.findItem(QStringLiteral("fieldEmail")));
        QVERIFY(tapWhenStill(phone.window(), phone.findItem(QStringLiteral("buttonNext"))));
        QCOMPARE(hudRecords().constLast(), hudError(QStringLiteral("请输入正确的邮箱地址")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("bindemail.png")));
        Hud::shared().dismiss();

        m_stack->popViewController(false);
        QVERIFY(list->cellForRowAtIndexPath(1)->buttonModify()->tap());
        QTRY_VERIFY(phone.findItem(QStringLiteral("buttonAuthCode")));
        QTRY_VERIFY(!stacksBusy(phone.root()));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("modifymobileold.png")));
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestAccountSafe)
#include "tst_accountsafe.moc"
