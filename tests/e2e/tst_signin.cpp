#include "HudRecorder.h"
#include "InProcessStore.h"
#include "NetWorkReplies.h"
#include "ScriptedHttpServer.h"
#include "StoreContext.h"
#include "TestEnvironment.h"
#include "tst_signin_support.h"

#include "accounts/Accounts.h"
#include "app/AppDelegate.h"
#include "core/Crypto.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/UserDefaults.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/Window.h"
#include "screens/account/FindPasswordViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/RegisterViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"

#include <QPointer>
#include <QQmlExtensionPlugin>

#include <SQLiteCpp/Database.h>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Hud;
using platform::NavigationController;
using platform::UserDefaults;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

const QString DemoPassword = QStringLiteral("tarvel2024");

QVariant storedValue(const QString &key)
{
    return UserDefaults::standard().objectForKey(key);
}

void store(const QString &key, const QVariant &value)
{
    UserDefaults::standard().setObject(value, key);
    UserDefaults::standard().synchronize();
}

QList<HudRecorder::Record> hudRecords()
{
    return HudRecorder::shared().records();
}

HudRecorder::Record errorHud(const QString &text, bool masked)
{
    return {Hud::Error, text, masked};
}

const HudRecorder::Record SigningIn{Hud::Progress, QStringLiteral("正在登录..."), true};
const HudRecorder::Record SignedIn{Hud::Success, QStringLiteral("登录成功"), true};

QByteArray signInAnswer(const QByteArray &data)
{
    return "{\"status\":\"success\",\"message\":\"\",\"data\":" + data + "}";
}

} // namespace

// The sign-in screen against a real tarvel-store (and a scripted server where an answer must be
// exact): its checks, what a successful sign-in stores and in which order, how refusals read, the
// unlock route, and the view.
class TestSignIn : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<platform::Window> m_window;
    NavigationController *m_home = nullptr;
    QList<qint64> m_completions;

    void useService(const QString &baseUrl) { qputenv("TARVEL_API_BASE_URL", baseUrl.toUtf8()); }

    // An account only this test uses, so that failed sign-ins lock nobody else.
    QString createAccount(const QString &phone, const QString &email, bool confirmed)
    {
        const QString hash = Crypto::hashPassword(QStringLiteral("secret123"));
        m_store->context().database().write([&](SQLite::Database &db) {
            return Accounts::create(db, phone, email, hash, QStringLiteral("测试玩家"), confirmed,
                                    m_store->context().now());
        });
        return phone.isEmpty() ? email : phone;
    }

    // The sign-in screen presented over a home screen the way the tab bar does it, once its
    // deferred hooks have run; nullptr if it never got there.
    NavRootViewController *presentSignIn(qint64 father = 0, bool withBlock = true)
    {
        m_window = std::make_unique<platform::Window>();
        m_home = new NavigationController(new platform::ViewController);
        m_window->setRootViewController(m_home);
        m_window->makeKeyAndVisible();
        NavRootViewController::LoginSuccess block;
        if (withBlock)
            block = [this](qint64 viewFather) { m_completions.append(viewFather); };
        auto *signIn = (new NavRootViewController)->initWithViewFather(father, block);
        m_home->presentViewController(new NavigationController(signIn), true);
        const bool ready = QTest::qWaitFor([signIn] { return !signIn->imageHead().isEmpty(); });
        tarvel::test::settle();
        return ready ? signIn : nullptr;
    }

    static void typeAndSignIn(NavRootViewController *signIn, const QString &account,
                              const QString &password)
    {
        signIn->fieldUser()->setText(account);
        signIn->fieldPassword()->setText(password);
        QVERIFY(signIn->buttonLogin()->tap());
    }

    // Waits for the sign-in request to end with its error HUD.
    static bool waitForOutcome(qsizetype records)
    {
        return QTest::qWaitFor([records] { return hudRecords().size() >= records; }, 10000);
    }

private slots:
    void initTestCase()
    {
        tarvel::test::QmlWarnings::install();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        AppDelegate::shared();
    }

    void init()
    {
        useService(m_store->baseUrl());
        for (const QString &key : {QStringLiteral("username"), QStringLiteral("cartnum")})
            UserDefaults::standard().removeObjectForKey(key);
        ICCookiesHelper::deleteCookies();
        ICSessionHelper::userClearData();
        AppDelegate::shared()->setUserLogin(std::nullopt);
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        m_completions.clear();
        tarvel::test::QmlWarnings::clear();
    }

    void cleanup()
    {
        m_window.reset();
        tarvel::test::settle();
    }

    void buildsTheScreen_data()
    {
        QTest::addColumn<QVariant>("storedName");
        QTest::addColumn<QString>("shownName");
        QTest::newRow("first sign-in") << QVariant() << QString();
        QTest::newRow("remembered name") << QVariant(QStringLiteral("demo@tarvel.test"))
                                         << QStringLiteral("demo@tarvel.test");
    }

    void buildsTheScreen()
    {
        QFETCH(QVariant, storedName);
        QFETCH(QString, shownName);
        store(QStringLiteral("username"), storedName);
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);

        QCOMPARE(signIn->title(), QStringLiteral("登录"));
        QCOMPARE(signIn->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(signIn->leftBarItem()->title().isEmpty());
        QVERIFY(signIn->rightBarItem()->isHidden());
        QVERIFY(signIn->isNavigationBarTransparent());
        QCOMPARE(signIn->backgroundImage(), QStringLiteral("login_background"));
        QCOMPARE(signIn->imageHead(), QStringLiteral("login_header"));

        QCOMPARE(signIn->fieldUser()->text(), shownName);
        QCOMPARE(signIn->fieldUser()->placeholder(), QStringLiteral("手机号/邮箱"));
        QCOMPARE(signIn->fieldUser()->leftImageName(), QStringLiteral("login_user"));
        QVERIFY(signIn->fieldUser()->isClearButtonShown());
        QCOMPARE(signIn->fieldUser()->keyboardType(), platform::TextField::Default);
        QVERIFY(!signIn->fieldUser()->isSecureTextEntry());
        QCOMPARE(signIn->fieldPassword()->placeholder(), QStringLiteral("密码"));
        QCOMPARE(signIn->fieldPassword()->leftImageName(), QStringLiteral("login_psw"));
        QVERIFY(signIn->fieldPassword()->isSecureTextEntry());
        QCOMPARE(signIn->buttonLogin()->title(), QStringLiteral("登录"));
        QCOMPARE(signIn->buttonForget()->title(), QStringLiteral("找回密码"));
        QCOMPARE(signIn->buttonRegister()->title(), QStringLiteral("注册"));
    }

    void refusesEmptyFieldsWithoutAsking_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("shown");
        QTest::newRow("both empty") << ""
                                    << ""
                                    << "请输入账号";
        QTest::newRow("account empty") << "" << DemoPassword << "请输入账号";
        QTest::newRow("password empty") << "13800138000"
                                        << ""
                                        << "请输入密码";
    }

    void refusesEmptyFieldsWithoutAsking()
    {
        QFETCH(QString, account);
        QFETCH(QString, password);
        QFETCH(QString, shown);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        typeAndSignIn(signIn, account, password);
        QCOMPARE(tarvel::test::repliesAlive(), 0); // refused before asking
        QCOMPARE(hudRecords(), QList<HudRecorder::Record>{errorHud(shown, true)});
        QCOMPARE(server.requestCount(), 0);
        QCOMPARE(m_window->presentedCount(), 1);
    }

    void blankAccountIsSentAsTyped()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        // What tarvel-store answers for a login name of blanks.
        server.enqueue(ScriptedResponse::json(
                "{\"status\":\"fail\",\"data\":{\"login_name\":[{\"message\":\"请输入\",\"human_"
                "name\":\"账号\"}]},\"message\":\"请输入账号\"}",
                422));
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        typeAndSignIn(signIn, QStringLiteral("   "), QStringLiteral("x"));
        QVERIFY(server.waitForRequests(1));
        QCOMPARE(server.lastRequest().path, QStringLiteral("/sign_in.json"));
        QCOMPARE(server.lastRequest().formValue(QStringLiteral("account[login_name]")),
                 QStringLiteral("   "));
        QCOMPARE(server.lastRequest().formValue(QStringLiteral("account[password]")),
                 QStringLiteral("x"));
        QVERIFY(waitForOutcome(2));
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{
                                       SigningIn, errorHud(QStringLiteral("请输入账号"), true)}));
    }

    void signsInAndKeepsTheSession_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<qint64>("father");
        QTest::addColumn<QString>("nickName");
        QTest::addColumn<QString>("cartCount");
        QTest::newRow("phone, from the cart tab") << "13800138000" << qint64(0) << "演示玩家"
                                                  << "2";
        QTest::newRow("e-mail, from my page") << "demo@tarvel.test" << qint64(1) << "邮箱玩家"
                                              << "3";
    }

    void signsInAndKeepsTheSession()
    {
        QFETCH(QString, account);
        QFETCH(qint64, father);
        QFETCH(QString, nickName);
        QFETCH(QString, cartCount);
        store(QStringLiteral("cartnum"), QStringLiteral("9"));
        NavRootViewController *signIn = presentSignIn(father);
        QVERIFY(signIn);

        // What is already stored when the user is set, and when the presenter continues.
        bool cookiesBeforeUser = false;
        bool userFileBeforeUser = true;
        QVariant nameBeforeUser(QStringLiteral("unset"));
        QMetaObject::Connection watch
                = connect(AppDelegate::shared(), &AppDelegate::userLoginChanged, this, [&] {
                      cookiesBeforeUser = ICCookiesHelper::isEmptyCookies();
                      userFileBeforeUser = ICSessionHelper::userGetinfo().has_value();
                      nameBeforeUser = storedValue(QStringLiteral("username"));
                  });
        int presentedAtCompletion = -1;
        QString storedIdAtCompletion;
        QVariant nameAtCompletion;
        signIn->initWithViewFather(father, [&](qint64 viewFather) {
            m_completions.append(viewFather);
            presentedAtCompletion = m_window->presentedCount();
            storedIdAtCompletion = ICSessionHelper::userGetinfo()
                                           .value_or(QVariantMap())
                                           .value(QStringLiteral("account_id"))
                                           .toString();
            nameAtCompletion = storedValue(QStringLiteral("username"));
        });

        typeAndSignIn(signIn, account, DemoPassword);
        QTRY_COMPARE_WITH_TIMEOUT(m_completions, QList<qint64>{father}, 10000);
        disconnect(watch);

        QVERIFY(cookiesBeforeUser);
        QVERIFY(!userFileBeforeUser);
        QVERIFY(!nameBeforeUser.isValid());
        QCOMPARE(presentedAtCompletion, 1); // dismissed only after the continuation
        const std::optional<Object_User> user = AppDelegate::shared()->userLogin();
        QVERIFY(user);
        QCOMPARE(user->nick_name, nickName);
        QVERIFY(!user->token.isEmpty());
        QVERIFY(!user->account_id.isEmpty());
        QCOMPARE(storedIdAtCompletion, user->account_id); // a number, stored as its text
        QCOMPARE(nameAtCompletion.toString(), account);

        QTRY_COMPARE(m_window->presentedCount(), 0);
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{SigningIn, SignedIn}));
        // The cart read after sign-in brings the count of the cart_num cookie.
        QTRY_COMPARE_WITH_TIMEOUT(storedValue(QStringLiteral("cartnum")).toString(), cartCount,
                                  10000);
        QCOMPARE(storedValue(QStringLiteral("username")).toString(), account);

        // The archived cookies carry the session: restored into an empty store, they are there.
        auto *jar = platform::HTTPCookieStorage::shared();
        for (const QNetworkCookie &cookie : jar->cookies())
            jar->deleteCookie(cookie);
        ICCookiesHelper::setCookies();
        QStringList names;
        for (const QNetworkCookie &cookie :
             jar->cookiesForURL(QUrl(m_store->baseUrl() + QStringLiteral("/sign_in.json"))))
            names.append(QString::fromUtf8(cookie.name()));
        QVERIFY2(names.contains(QStringLiteral("_tarvel_session")), qPrintable(names.join(',')));
    }

    void refusalsReadAsTheServiceMeansThem_data()
    {
        QTest::addColumn<QString>("account");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("masked");
        QTest::newRow("wrong password") << "13800138000"
                                        << "wrong-one"
                                        << "账号或密码错误" << true;
        QTest::newRow("unknown account") << "13012345678"
                                         << "secret123"
                                         << "账号或密码错误" << true;
        QTest::newRow("unconfirmed e-mail") << "new@tarvel.test"
                                            << "secret123"
                                            << "继续操作前请先到邮箱激活您的账号" << false;
    }

    void refusalsReadAsTheServiceMeansThem()
    {
        QFETCH(QString, account);
        QFETCH(QString, password);
        QFETCH(QString, shown);
        QFETCH(bool, masked);
        if (account.contains(QLatin1Char('@')))
            createAccount(QString(), account, false);
        store(QStringLiteral("cartnum"), QStringLiteral("2"));
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        typeAndSignIn(signIn, account, password);
        QVERIFY(waitForOutcome(2));
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{SigningIn, errorHud(shown, masked)}));
        QCOMPARE(m_window->presentedCount(), 1);
        QCOMPARE(signIn->navigationController()->depth(), 1);
        QVERIFY(m_completions.isEmpty());
        QVERIFY(!AppDelegate::shared()->userLogin());
        QVERIFY(!storedValue(QStringLiteral("username")).isValid());
        QVERIFY(!ICCookiesHelper::isEmptyCookies());
        QCOMPARE(storedValue(QStringLiteral("cartnum")).toString(), QStringLiteral("2"));
    }

    void unreachableServiceShowsThePipelineText()
    {
        QString address;
        {
            ScriptedHttpServer gone;
            QVERIFY(gone.listen());
            address = gone.baseUrl();
        }
        useService(address);
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        typeAndSignIn(signIn, QStringLiteral("13800138000"), DemoPassword);
        QVERIFY(waitForOutcome(2));
        QCOMPARE(hudRecords(),
                 (QList<HudRecorder::Record>{
                         SigningIn, errorHud(QStringLiteral("网络通信错误，数据异常"), true)}));
    }

    void fiveFailuresLockTheAccountAndOpenUnlock()
    {
        const QString account = createAccount(QStringLiteral("13911112222"), QString(), true);
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        NavigationController *stack = signIn->navigationController();
        const QStringList warnings{
                QStringLiteral("账号或密码错误"),
                QStringLiteral("账号或密码错误"),
                QStringLiteral("账号或密码错误，再输错2次账号将被锁定"),
                QStringLiteral("账号或密码错误，再输错1次账号将被锁定"),
        };
        for (const QString &warning : warnings) {
            HudRecorder::shared().clear();
            typeAndSignIn(signIn, account, QStringLiteral("not-it"));
            QVERIFY(waitForOutcome(2));
            QCOMPARE(hudRecords().constLast(), errorHud(warning, true));
            QCOMPARE(stack->depth(), 1);
        }

        // The fifth failure locks: the unlock screen opens and the HUD says why.
        HudRecorder::shared().clear();
        typeAndSignIn(signIn, account, QStringLiteral("not-it"));
        QVERIFY(waitForOutcome(2));
        QCOMPARE(hudRecords().constLast(), errorHud(QStringLiteral("账号被锁定"), false));
        QCOMPARE(stack->depth(), 2);
        auto *unlock = qobject_cast<FindPasswordViewController *>(stack->topViewController());
        QVERIFY(unlock);
        QCOMPARE(unlock->viewType(), qint64(FindPasswordViewController::Unlock));
        QTRY_COMPARE(unlock->title(), QStringLiteral("解锁方式"));

        // Even the right password is refused now, the same way.
        stack->popViewController(false);
        tarvel::test::settle();
        HudRecorder::shared().clear();
        typeAndSignIn(signIn, account, QStringLiteral("secret123"));
        QVERIFY(waitForOutcome(2));
        QCOMPARE(hudRecords().constLast(), errorHud(QStringLiteral("账号被锁定"), false));
        QVERIFY(qobject_cast<FindPasswordViewController *>(stack->topViewController()));
        QVERIFY(!AppDelegate::shared()->userLogin());
    }

    void unlockCodeOpensUnlock_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("opensUnlock");
        QTest::addColumn<HudRecorder::Record>("shown");
        QTest::newRow("number 601") << QByteArray("{\"status\":\"error\",\"data\":null,\"message\":"
                                                  "\"authentication.failure.locked\",\"code\":601}")
                                    << true << errorHud(QStringLiteral("账号被锁定"), false);
        QTest::newRow("text 601") << QByteArray(
                "{\"status\":\"error\",\"data\":null,\"message\":\"账号已冻结\",\"code\":\"601\"}")
                                  << true << errorHud(QStringLiteral("账号已冻结"), true);
        QTest::newRow("other code") << QByteArray("{\"status\":\"error\",\"data\":null,\"message\":"
                                                  "\"authentication.failure.locked\",\"code\":600}")
                                    << false << errorHud(QStringLiteral("账号被锁定"), false);
        QTest::newRow("no code") << QByteArray(
                "{\"status\":\"error\",\"data\":null,\"message\":\"账号或密码错误\"}")
                                 << false << errorHud(QStringLiteral("账号或密码错误"), true);
    }

    void unlockCodeOpensUnlock()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, opensUnlock);
        QFETCH(HudRecorder::Record, shown);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        server.enqueue(ScriptedResponse::json(answer, 423));
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        typeAndSignIn(signIn, QStringLiteral("13800138000"), DemoPassword);
        QVERIFY(waitForOutcome(2));
        QCOMPARE(hudRecords().constLast(), shown);
        NavigationController *stack = signIn->navigationController();
        QCOMPARE(stack->depth(), opensUnlock ? 2 : 1);
        if (opensUnlock) {
            auto *unlock = qobject_cast<FindPasswordViewController *>(stack->topViewController());
            QVERIFY(unlock);
            QCOMPARE(unlock->viewType(), qint64(FindPasswordViewController::Unlock));
        }
    }

    void cartCountAfterSignIn_data()
    {
        QTest::addColumn<ScriptedResponse>("cartAnswer");
        QTest::addColumn<QString>("cartCount");
        const QByteArray emptyCart = "{\"status\":\"success\",\"message\":\"\",\"data\":[]}";
        QTest::newRow("cart_num cookie")
                << ScriptedResponse::json(emptyCart).withHeader("Set-Cookie", "cart_num=4; path=/")
                << "4";
        QTest::newRow("no cart_num cookie") << ScriptedResponse::json(emptyCart) << "5";
        QTest::newRow("other cookies only")
                << ScriptedResponse::json(emptyCart).withHeader("Set-Cookie", "theme=dark; path=/")
                << "5";
        QTest::newRow("cart read refused")
                << ScriptedResponse::json(
                           "{\"status\":\"error\",\"data\":null,\"message\":\"请先登录\"}", 401)
                           .withHeader("Set-Cookie", "cart_num=7; path=/")
                << "5";
    }

    void cartCountAfterSignIn()
    {
        QFETCH(ScriptedResponse, cartAnswer);
        QFETCH(QString, cartCount);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        server.enqueue(ScriptedResponse::json(signInAnswer("{\"account_id\":8,\"token\":\"t8\"}"))
                               .withHeader("Set-Cookie", "_tarvel_session=s8; path=/; HttpOnly"));
        server.enqueue(cartAnswer);
        store(QStringLiteral("cartnum"), QStringLiteral("5"));
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        typeAndSignIn(signIn, QStringLiteral("13800138000"), DemoPassword);
        QVERIFY(server.waitForRequests(2, 10000));
        QCOMPARE(server.requests().at(1).method, QByteArray("GET"));
        QCOMPARE(server.requests().at(1).path, QStringLiteral("/cart.json"));
        QTRY_COMPARE(storedValue(QStringLiteral("cartnum")).toString(), cartCount);
        QTRY_COMPARE(tarvel::test::repliesAlive(),
                     0); // every answer handled: nothing changes it later
        QCOMPARE(storedValue(QStringLiteral("cartnum")).toString(), cartCount);
        // The cart read shows nothing of its own.
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{SigningIn, SignedIn}));
    }

    void answerWithoutUserStillSignsIn()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        server.enqueue(ScriptedResponse::json(signInAnswer("\"ok\"")));
        server.enqueue(
                ScriptedResponse::json("{\"status\":\"success\",\"message\":\"\",\"data\":[]}"));
        NavRootViewController *signIn = presentSignIn(1);
        QVERIFY(signIn);
        typeAndSignIn(signIn, QStringLiteral("13800138000"), DemoPassword);
        QTRY_COMPARE(m_completions, QList<qint64>{1});
        QTRY_COMPARE(m_window->presentedCount(), 0);
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{SigningIn, SignedIn}));
        QCOMPARE(storedValue(QStringLiteral("username")).toString(), QStringLiteral("13800138000"));
        QVERIFY(!AppDelegate::shared()->userLogin());
        QVERIFY(!ICSessionHelper::userGetinfo());
    }

    void withoutABlockNothingIsKept()
    {
        NavRootViewController *signIn = presentSignIn(7, false);
        QVERIFY(signIn);
        QCOMPARE(signIn->viewFather(), qint64(0));
        QVERIFY(!signIn->myLoginSuccess());
        const NavRootViewController kept(4, [](qint64) {});
        QCOMPARE(kept.viewFather(), qint64(4));
        QVERIFY(kept.myLoginSuccess());
        const NavRootViewController notKept(4, {});
        QCOMPARE(notKept.viewFather(), qint64(0));
        typeAndSignIn(signIn, QStringLiteral("13800138000"), DemoPassword);
        QTRY_COMPARE_WITH_TIMEOUT(m_window->presentedCount(), 0, 10000);
        QCOMPARE(hudRecords(), (QList<HudRecorder::Record>{SigningIn, SignedIn}));
        QVERIFY(AppDelegate::shared()->userLogin());
    }

    void backItemChangesNothing()
    {
        store(QStringLiteral("username"), QStringLiteral("13800138000"));
        store(QStringLiteral("cartnum"), QStringLiteral("2"));
        NavRootViewController *signIn = presentSignIn(1);
        QVERIFY(signIn);
        QPointer<NavRootViewController> guard(signIn);
        signIn->fieldPassword()->setText(DemoPassword);
        QVERIFY(signIn->leftBarItem()->tap());
        QCOMPARE(m_window->presentedCount(), 0);
        QTRY_VERIFY(!guard);
        QVERIFY(m_completions.isEmpty());
        QVERIFY(hudRecords().isEmpty());
        QCOMPARE(storedValue(QStringLiteral("username")).toString(), QStringLiteral("13800138000"));
        QCOMPARE(storedValue(QStringLiteral("cartnum")).toString(), QStringLiteral("2"));
        QVERIFY(!AppDelegate::shared()->userLogin());
        QVERIFY(!ICCookiesHelper::isEmptyCookies());
    }

    void linksOpenRegistrationAndRecovery()
    {
        NavRootViewController *signIn = presentSignIn(1);
        QVERIFY(signIn);
        NavigationController *stack = signIn->navigationController();

        QVERIFY(signIn->buttonRegister()->tap());
        auto *registration = qobject_cast<RegisterViewController *>(stack->topViewController());
        QVERIFY(registration);
        QCOMPARE(registration->viewFather(), qint64(1));
        QVERIFY(registration->myLoginSuccess());
        registration->myLoginSuccess()(registration->viewFather());
        QCOMPARE(m_completions, QList<qint64>{1}); // the presenter's own block
        QTRY_COMPARE(registration->title(), QStringLiteral("注册"));
        QVERIFY(registration->leftBarItem()->tap());
        QCOMPARE(stack->depth(), 1);

        QVERIFY(signIn->buttonForget()->tap());
        auto *recovery = qobject_cast<FindPasswordViewController *>(stack->topViewController());
        QVERIFY(recovery);
        QCOMPARE(recovery->viewType(), qint64(FindPasswordViewController::FindPassword));
        QTRY_COMPARE(recovery->title(), QStringLiteral("找回方式"));
    }

    void viewShowsTheScreenAndTakesTaps()
    {
        NavRootViewController *signIn = presentSignIn();
        QVERIFY(signIn);
        tarvel::test::PhoneWindow phone;
        QVERIFY(phone.show(m_window.get()));
        QTRY_VERIFY(phone.findItem(QStringLiteral("buttonLogin")));
        QVERIFY(phone.findText(QStringLiteral("登录"))); // the bar's title
        QVERIFY(phone.findText(QStringLiteral("找回密码")));
        QVERIFY(phone.findText(QStringLiteral("注册")));
        QVERIFY(tarvel::test::waitForStillScene(phone.window())); // the sheet's slide
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("signin.png")));

        // Typing reaches the controller, and the button reaches its check.
        QQuickItem *account = phone.findItem(QStringLiteral("fieldUser"));
        QVERIFY(account);
        phone.click(account);
        QTRY_VERIFY(signIn->fieldUser()->isFirstResponder());
        for (const char key : QByteArrayLiteral("13800138000"))
            QTest::keyClick(phone.window(), key);
        QCOMPARE(signIn->fieldUser()->text(), QStringLiteral("13800138000"));
        phone.click(phone.findItem(QStringLiteral("buttonLogin")));
        QCOMPARE(hudRecords(),
                 QList<HudRecorder::Record>{errorHud(QStringLiteral("请输入密码"), true)});
        QVERIFY(tarvel::test::waitForStillScene(phone.window()));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("signin-error.png")));
        Hud::shared().dismiss();

        // The recovery link opens its chooser.
        phone.click(phone.findItem(QStringLiteral("buttonForget")));
        QTRY_VERIFY(phone.findText(QStringLiteral("找回方式")));
        QVERIFY(tarvel::test::waitForStillScene(phone.window()));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("findpassword.png")));
        QVERIFY2(tarvel::test::QmlWarnings::messages().isEmpty(),
                 qPrintable(tarvel::test::QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestSignIn)
#include "tst_signin.moc"
