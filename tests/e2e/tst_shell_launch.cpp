#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_shell_support.h"

#include "app/ViewController.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/MyMessageViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/TabThreeViewController.h"
#include "screens/store/TabOneViewController.h"
#include "service/NetWorkHelper.h"
#include "util/AppConfig.h"

#include <QSignalSpy>

using shelltest::launchedTabBar;
using shelltest::settle;

namespace {

const QString DemoPhone = QStringLiteral("13800138000");
const QString DemoPassword = QStringLiteral("tarvel2024");

bool hasSessionCookie()
{
    for (const QNetworkCookie &cookie :
         platform::HTTPCookieStorage::shared()->cookiesForURL(QUrl(ApiBaseUrl()))) {
        if (cookie.name() == "_tarvel_session")
            return true;
    }
    return false;
}

// The tab bars and root controllers the window holds right after a launch, before the replaced
// ones are deleted.
int pendingTabBars()
{
    return int(AppDelegate::shared()
                       ->window()
                       ->findChildren<ICTabBarController *>(Qt::FindDirectChildrenOnly)
                       .size());
}

int pendingRootControllers()
{
    int count = 0;
    const auto children = AppDelegate::shared()->window()->findChildren<platform::ViewController *>(
            Qt::FindDirectChildrenOnly);
    for (platform::ViewController *child : children) {
        if (dynamic_cast<::ViewController *>(child))
            ++count;
    }
    return count;
}

} // namespace

// Start-up: the launch order's visible results, signed out and with a remembered sign-in restored
// from User.plist and the archived cookies against a running store.
class TestShellLaunch : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<tarvel::test::InProcessStore> m_store;

    // Signs the demo user in against the store and keeps what the sign-in screen keeps (the user
    // record and the cookies of the sign-in address), then forgets the live session as a quit
    // would: no user in memory, an empty cookie store.
    QVariantMap rememberSignIn()
    {
        QVariantMap data;
        bool done = false;
        NetWorkHelper::shareInstance()->signInWithAccountEmail(
                DemoPhone, DemoPassword, {}, {},
                [&](const QVariant &answer, const QVariant &) {
                    data = answer.toMap();
                    done = true;
                },
                [&](const QVariant &, const QString &message, const QVariant &) {
                    qWarning() << "sign-in failed:" << message;
                    done = true;
                });
        if (!QTest::qWaitFor([&] { return done; }, 10000))
            return {};
        ICCookiesHelper::saveCookiesWithUrl(ApiBaseUrl() + QStringLiteral("/sign_in.json"));
        ICSessionHelper::userSaveObjectUser(data);
        for (const QNetworkCookie &cookie : platform::HTTPCookieStorage::shared()->cookies())
            platform::HTTPCookieStorage::shared()->deleteCookie(cookie);
        return data;
    }

    // Whether the store accepts the session: the cart needs a signed-in session.
    bool storeAcceptsSession()
    {
        bool done = false;
        bool accepted = false;
        NetWorkHelper::shareInstance()->getCartDataWithStartFn(
                {}, {},
                [&](const QVariant &, const QVariant &) {
                    accepted = true;
                    done = true;
                },
                [&](const QVariant &, const QString &, const QVariant &) { done = true; });
        return QTest::qWaitFor([&] { return done; }, 10000) && accepted;
    }

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<tarvel::test::InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
    }

    void init() { shelltest::resetApplication(); }

    void cleanupTestCase()
    {
        shelltest::resetApplication();
        m_store.reset();
    }

    void signedOutLaunchBuildsTheTabBarOnce()
    {
        AppDelegate *delegate = AppDelegate::shared();
        QVERIFY(delegate->application_didFinishLaunchingWithOptions({}));

        QVERIFY(delegate->window()->isVisible());
        QCOMPARE(delegate->statusBarStyle(), AppDelegate::StatusBarStyleLightContent);
        QCOMPARE(pendingRootControllers(), 1);
        QCOMPARE(pendingTabBars(), 1);
        QVERIFY(launchedTabBar());
        QVERIFY(!delegate->userLogin());
        settle();
        QCOMPARE(pendingRootControllers(), 0); // the start-up root gave way
        QVERIFY(launchedTabBar()->isViewLoaded());
    }

    // Home, cart, my page and messages, each the root of its own navigation stack.
    void tabsInOrder()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        ICTabBarController *tabBar = launchedTabBar();
        QVERIFY(tabBar);
        const QList<platform::ViewController *> tabs = tabBar->viewControllers();
        QCOMPARE(tabs.size(), 4);
        QList<platform::ViewController *> roots;
        for (platform::ViewController *tab : tabs) {
            auto *stack = qobject_cast<platform::NavigationController *>(tab);
            QVERIFY(stack);
            QCOMPARE(stack->depth(), 1);
            roots.append(stack->viewControllers().constFirst());
        }
        QVERIFY(qobject_cast<TabOneViewController *>(roots[0]));
        auto *cart = qobject_cast<TabThreeViewController *>(roots[1]);
        QVERIFY(cart);
        QCOMPARE(cart->viewFather(), 0);
        QVERIFY(qobject_cast<TabFourViewController *>(roots[2]));
        QVERIFY(qobject_cast<MyMessageViewController *>(roots[3]));
        QCOMPARE(tabBar->selectedIndex(), 0);
        QCOMPARE(AppDelegate::shared()->visibleViewController(), roots[0]);
    }

    void rememberedSignInIsRestored()
    {
        const QVariantMap data = rememberSignIn();
        QVERIFY(!data.value(QStringLiteral("account_id")).toString().isEmpty());
        QVERIFY(!hasSessionCookie());
        QVERIFY(!storeAcceptsSession());

        AppDelegate *delegate = AppDelegate::shared();
        delegate->application_didFinishLaunchingWithOptions({});

        // Built signed out first, then again with the user known. The first is replaced before
        // it comes on screen: neither it nor its home screen loads a view.
        QCOMPARE(pendingTabBars(), 2);
        for (ICTabBarController *tabBar :
             delegate->window()->findChildren<ICTabBarController *>(Qt::FindDirectChildrenOnly)) {
            const bool shown = tabBar == launchedTabBar();
            auto *home = qobject_cast<platform::NavigationController *>(tabBar->viewControllerAt(0))
                                 ->viewControllers()
                                 .constFirst();
            QCOMPARE(tabBar->isViewLoaded(), shown);
            QCOMPARE(home->isViewLoaded(), shown);
        }
        QVERIFY(delegate->userLogin());
        QCOMPARE(delegate->userLogin()->account_id,
                 data.value(QStringLiteral("account_id")).toString());
        QCOMPARE(delegate->userLogin()->phone_number, DemoPhone);
        QVERIFY(hasSessionCookie());
        settle();
        QCOMPARE(pendingTabBars(), 1);
        QVERIFY(launchedTabBar()->isViewLoaded());
        QVERIFY(storeAcceptsSession());
        // The phone number is this device's push tag.
        QCOMPARE(delegate->pushTags(), QStringList{DemoPhone});
        // Tagged before the push service started; it gets the tag once it runs.
        QCOMPARE(GeTuiSdk::tags(), QStringList{DemoPhone});
    }

    // A stored record without an account id is not a sign-in; the file stays as it is.
    void storedUserWithoutAccountIdStaysSignedOut()
    {
        ICSessionHelper::userSaveObjectUser(
                {{"nick_name", QStringLiteral("无名")}, {"token", QStringLiteral("t")}});
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        QVERIFY(!AppDelegate::shared()->userLogin());
        QCOMPARE(pendingTabBars(), 1);
        QVERIFY(ICSessionHelper::userIsLoginSelf());
    }

    // Whatever the last run left, the countdown starts idle and the badge follows "cartnum".
    void launchResetsTheCountdownAndFollowsCartNum()
    {
        auto &defaults = platform::UserDefaults::standard();
        defaults.setObject(true, QStringLiteral("isCountdown"));
        defaults.synchronize();
        AppDelegate *delegate = AppDelegate::shared();
        delegate->application_didFinishLaunchingWithOptions({});
        QCOMPARE(defaults.objectForKey(QStringLiteral("isCountdown")), QVariant(false));
        QCOMPARE(delegate->countdown(), AppDelegate::CountdownSeconds);

        platform::Label badge;
        delegate->setLabelRedDot(&badge);
        defaults.setObject(QStringLiteral("5"), QStringLiteral("cartnum"));
        QCOMPARE(badge.text(), QStringLiteral("5"));
        QVERIFY(!badge.isHidden());
        delegate->setLabelRedDot(nullptr);
    }
};

TARVEL_TEST_MAIN(TestShellLaunch)
#include "tst_shell_launch.moc"
