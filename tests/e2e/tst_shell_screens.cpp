#include "TestEnvironment.h"
#include "tst_shell_support.h"

#include "app/LeftViewController.h"
#include "app/MainViewController.h"
#include "app/Q9FatherViewController.h"
#include "app/RightViewController.h"
#include "app/SlidePanelController.h"
#include "app/UserGuideViewController.h"
#include "app/ViewController.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/MyMessageViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/TabThreeViewController.h"
#include "screens/store/TabOneViewController.h"

#include <QPointer>
#include <QSignalSpy>

using shelltest::settle;

namespace {

// A screen that writes its lifecycle and template hooks into a log.
class HookRecorder : public Q9FatherViewController
{
public:
    QStringList log;

protected:
    void viewDidLoad() override
    {
        Q9FatherViewController::viewDidLoad();
        log << QStringLiteral("viewDidLoad");
    }
    void viewWillAppear(bool animated) override
    {
        Q9FatherViewController::viewWillAppear(animated);
        log << QStringLiteral("viewWillAppear");
    }
    void setLoadViewAction() override { log << QStringLiteral("setLoadViewAction"); }
    void setRefleshDataAction() override { log << QStringLiteral("setRefleshDataAction"); }
    void setNavLeftAction() override { log << QStringLiteral("setNavLeftAction"); }
    void setNavRightAction() override { log << QStringLiteral("setNavRightAction"); }
};

platform::Window *appWindow()
{
    return AppDelegate::shared()->window();
}

// The window shows `root` on its own.
void showAsRoot(platform::ViewController *root)
{
    appWindow()->makeKeyAndVisible();
    appWindow()->setRootViewController(root);
}

// The title `button` shows after each tick of one whole countdown; false when it does not end.
bool countDown(platform::Button *button, QStringList &titles)
{
    AppDelegate *delegate = AppDelegate::shared();
    delegate->setTimerStart();
    QObject::connect(delegate->timer(), &QTimer::timeout, button,
                     [button, &titles] { titles.append(button->title()); });
    return QTest::qWaitFor([delegate] { return !delegate->timer(); }, 10000);
}

} // namespace

// The screen base's template, the SMS countdown, the user guide, the sliding panel and the
// sign-in root, and the cart and my-page tab roots.
class TestShellScreens : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        AppDelegate::shared()->setCountdownTickInterval(1);
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init() { shelltest::resetApplication(); }

    // The hooks run one pass of the main loop after the view load and the will-appear call,
    // never inside them.
    void templateHooksAreDeferred()
    {
        auto *screen = new HookRecorder;
        QPointer<HookRecorder> guard(screen);
        showAsRoot(screen);
        QCOMPARE(screen->log, QStringList({"viewDidLoad", "viewWillAppear"}));
        QCoreApplication::processEvents();
        QCOMPARE(screen->log, QStringList({"viewDidLoad", "viewWillAppear", "setLoadViewAction",
                                           "setRefleshDataAction"}));

        // Each return to the front reloads; the view is built once.
        screen->log.clear();
        screen->beginAppearanceTransition(false, false);
        screen->endAppearanceTransition();
        screen->beginAppearanceTransition(true, false);
        screen->endAppearanceTransition();
        QCOMPARE(screen->log, QStringList{"viewWillAppear"});
        QCoreApplication::processEvents();
        QCOMPARE(screen->log, QStringList({"viewWillAppear", "setRefleshDataAction"}));
    }

    void templateLook()
    {
        auto *screen = new HookRecorder;
        showAsRoot(new platform::NavigationController(screen));
        QCOMPARE(screen->backgroundColor(), QColor(210, 210, 210));
        QCOMPARE(screen->navBarColor(), QColor(60, 102, 183));
        QCOMPARE(screen->navTitleColor(), QColor(Qt::white));
        QCOMPARE(screen->navTitleFontSize(), 16);
        QVERIFY(screen->title().isEmpty());
        QVERIFY(screen->hidesBottomBarWhenPushed());
        QCOMPARE(screen->leftBarItem()->imageName(), QStringLiteral("navLeftImageIcon"));
        QCOMPARE(screen->rightBarItem()->imageName(), QStringLiteral("navRightImageIcon"));
        QCOMPARE(screen->leftBarItem()->titleColor(), QColor(110, 185, 43));
        QVERIFY(screen->leftBarItem()->title().isEmpty());

        QVERIFY(screen->rightBarItem()->tap());
        QVERIFY(screen->leftBarItem()->tap());
        QCOMPARE(screen->log.mid(screen->log.size() - 2),
                 QStringList({"setNavRightAction", "setNavLeftAction"}));
    }

    void countdownRunsSixtyTicks()
    {
        AppDelegate *delegate = AppDelegate::shared();
        auto &defaults = platform::UserDefaults::standard();
        platform::Button button;
        button.setTitle(QStringLiteral("获取验证码"));
        delegate->setButtonIsEnable(&button);
        QVERIFY(button.isEnabled());
        QCOMPARE(delegate->buttonAuthCode(), &button);

        QSignalSpy ticks(delegate, &AppDelegate::countdownChanged);
        bool disabledAtStart = false;
        connect(&button, &platform::Button::changed, this,
                [&] { disabledAtStart = disabledAtStart || !button.isEnabled(); });
        QStringList titles;
        QVERIFY(countDown(&button, titles));

        QStringList expected;
        for (int left = 59; left >= 1; --left)
            expected << QStringLiteral("%1S").arg(left);
        expected << QStringLiteral("获取验证码");
        QCOMPARE(titles, expected);
        QVERIFY(disabledAtStart);
        // 60 ticks, then back to 60.
        QCOMPARE(ticks.count(), 61);
        QCOMPARE(delegate->countdown(), 60);
        QVERIFY(button.isEnabled());
        QCOMPARE(defaults.objectForKey(QStringLiteral("isCountdown")), QVariant(false));
        QVERIFY(!delegate->timer());
    }

    void countdownMarksItsRun()
    {
        AppDelegate *delegate = AppDelegate::shared();
        delegate->setCountdownTickInterval(60 * 1000);
        platform::Button button;
        delegate->setButtonIsEnable(&button);
        delegate->setTimerStart();
        QCOMPARE(platform::UserDefaults::standard().objectForKey(QStringLiteral("isCountdown")),
                 QVariant(true));
        QVERIFY(!button.isEnabled());
        QVERIFY(delegate->timer() && delegate->timer()->isActive());
        QCOMPARE(delegate->timer()->interval(), 60 * 1000);

        // A screen registering its button mid-countdown gets it disabled at once, and sees the
        // seconds from the next tick.
        delegate->TimerCountdown();
        platform::Button later;
        later.setTitle(QStringLiteral("获取验证码"));
        delegate->setButtonIsEnable(&later);
        QVERIFY(!later.isEnabled());
        QCOMPARE(later.title(), QStringLiteral("获取验证码"));
        delegate->TimerCountdown();
        QCOMPARE(later.title(), QStringLiteral("58S"));
        QCOMPARE(button.title(), QStringLiteral("59S")); // only the last registered one counts

        for (int i = 0; i < 58; ++i)
            delegate->TimerCountdown();
        QCOMPARE(delegate->countdown(), 60);
        QVERIFY(later.isEnabled());
        delegate->setButtonIsEnable(nullptr);
        delegate->setCountdownTickInterval(1);
    }

    void userGuideOncePerVersion()
    {
        const QString key = ViewController::userGuideFlagKey(ViewController::currentVersion());
        QCOMPARE(key, QStringLiteral("FirstJoin") + ViewController::currentVersion());
        auto &defaults = platform::UserDefaults::standard();
        defaults.removeObjectForKey(key);
        // The guide of an older version does not count for this one.
        defaults.setObject(QStringLiteral("YES"), ViewController::userGuideFlagKey("0.0.1"));
        auto *root = new HookRecorder;
        showAsRoot(root);

        ViewController::goForwardToUserGuide();
        QCOMPARE(appWindow()->presentedCount(), 1);
        auto *guide = qobject_cast<UserGuideViewController *>(
                appWindow()->presentedViewControllerAt(0));
        QVERIFY(guide);
        QCOMPARE(guide->presentingViewController(), root);
        QCOMPARE(guide->imageNames(),
                 QStringList({"dguide_learn1", "dguide_learn2", "dguide_learn3"}));
        QCOMPARE(defaults.objectForKey(key).toString(), QStringLiteral("YES"));

        guide->actionMoveOut();
        settle();
        QCOMPARE(appWindow()->presentedCount(), 0);

        ViewController::goForwardToUserGuide();
        QCOMPARE(appWindow()->presentedCount(), 0);
    }

    void userGuidePages_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("current");
        QTest::newRow("second") << 1 << 1;
        QTest::newRow("last") << 2 << 2;
        QTest::newRow("past the last") << 5 << 2;
        QTest::newRow("before the first") << -1 << 0;
    }

    void userGuidePages()
    {
        QFETCH(int, page);
        QFETCH(int, current);
        UserGuideViewController guide({"a", "b", "c"});
        guide.setCurrentPage(page);
        QCOMPARE(guide.currentPage(), current);
    }

    void signInAsRoot()
    {
        ViewController::goForwardToNavRoot();
        auto *stack
                = qobject_cast<platform::NavigationController *>(appWindow()->rootViewController());
        QVERIFY(stack);
        QCOMPARE(stack->depth(), 1);
        auto *signIn = qobject_cast<NavRootViewController *>(stack->viewControllers().constFirst());
        QVERIFY(signIn);
        QVERIFY(!signIn->myLoginSuccess());
    }

    void slidingPanelRoot()
    {
        appWindow()->makeKeyAndVisible();
        ViewController::goForwardToSliderPanel();
        auto *panel = qobject_cast<SlidePanelController *>(appWindow()->rootViewController());
        QVERIFY(panel);
        auto *center = qobject_cast<platform::NavigationController *>(panel->centerPanel());
        QVERIFY(center);
        auto *main = qobject_cast<MainViewController *>(center->topViewController());
        QVERIFY(main);
        QVERIFY(qobject_cast<LeftViewController *>(panel->leftPanel()));
        QVERIFY(qobject_cast<RightViewController *>(panel->rightPanel()));
        for (platform::ViewController *child : panel->childViewControllers())
            QVERIFY(child->isOnScreen());
        QVERIFY(main->isOnScreen());

        QCOMPARE(panel->revealed(), SlidePanelController::CenterShown);
        QVERIFY(main->leftBarItem()->tap());
        QCOMPARE(panel->revealed(), SlidePanelController::LeftRevealed);
        QCOMPARE(panel->centerOffset(375), 260.0);
        QVERIFY(main->leftBarItem()->tap());
        QCOMPARE(panel->revealed(), SlidePanelController::CenterShown);
        QVERIFY(main->rightBarItem()->tap());
        QCOMPARE(panel->revealed(), SlidePanelController::RightRevealed);
        QCOMPARE(panel->centerOffset(375), -315.0);
    }

    void panEnds_data()
    {
        QTest::addColumn<qreal>("offset");
        QTest::addColumn<int>("revealed");
        QTest::newRow("short drag right") << 100.0 << int(SlidePanelController::CenterShown);
        QTest::newRow("past half the left panel")
                << 131.0 << int(SlidePanelController::LeftRevealed);
        QTest::newRow("short drag left") << -150.0 << int(SlidePanelController::CenterShown);
        QTest::newRow("past half the right panel")
                << -158.0 << int(SlidePanelController::RightRevealed);
    }

    void panEnds()
    {
        QFETCH(qreal, offset);
        QFETCH(int, revealed);
        SlidePanelController panel;
        panel.setLeftPanel(new LeftViewController);
        panel.setRightPanel(new RightViewController);
        panel.finishPan(offset, 375);
        QCOMPARE(int(panel.revealed()), revealed);
    }

    // Without a panel on a side there is nothing to reveal there.
    void panelMissingOnASide()
    {
        SlidePanelController panel;
        panel.setCenterPanel(new MainViewController);
        panel.showLeftPanel();
        panel.finishPan(300, 375);
        QCOMPARE(panel.revealed(), SlidePanelController::CenterShown);
    }

    void replacingAPanel()
    {
        appWindow()->makeKeyAndVisible();
        auto *panel = new SlidePanelController;
        auto *first = new LeftViewController;
        panel->setLeftPanel(first);
        appWindow()->setRootViewController(panel);
        QVERIFY(first->isOnScreen());
        QPointer<LeftViewController> old(first);
        auto *second = new LeftViewController;
        panel->setLeftPanel(second);
        QVERIFY(second->isOnScreen());
        QCOMPARE(second->parentViewController(), panel);
        QVERIFY(!old->isOnScreen());
        settle();
        QVERIFY(!old);
    }

    void cartTabRoot()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        settle();
        ICTabBarController *tabBar = shelltest::launchedTabBar();
        AppDelegate::shared()->setUserLogin(shelltest::userWithPhone("13800138000"));
        tabBar->hideTabBar(true);
        tabBar->selectViewControllerAtIndex(1);
        settle();
        auto *cart = qobject_cast<TabThreeViewController *>(
                AppDelegate::shared()->visibleViewController());
        QVERIFY(cart);
        QCOMPARE(cart->title(), QStringLiteral("购物车"));
        QVERIFY(cart->leftBarItem()->isHidden());
        QVERIFY(cart->rightBarItem()->isHidden());
        QVERIFY(!tabBar->isHide()); // the tab shows the strip
    }

    // Pushed from another screen, the cart has a back button and no strip.
    void pushedCart()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        settle();
        ICTabBarController *tabBar = shelltest::launchedTabBar();
        auto *home = qobject_cast<platform::NavigationController *>(tabBar->viewControllerAt(0));
        auto *cart = new TabThreeViewController(1);
        home->pushViewController(cart, false);
        settle();
        QCOMPARE(cart->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(!cart->leftBarItem()->isHidden());
        QVERIFY(tabBar->isHide());
        QVERIFY(cart->leftBarItem()->tap());
        settle();
        QCOMPARE(home->depth(), 1);
    }

    void myPageTabRoot()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        settle();
        ICTabBarController *tabBar = shelltest::launchedTabBar();
        Object_User user = shelltest::userWithPhone("13800138000");
        AppDelegate::shared()->setUserLogin(user);
        tabBar->hideTabBar(true);
        tabBar->selectViewControllerAtIndex(2);
        settle();
        auto *page = qobject_cast<TabFourViewController *>(
                AppDelegate::shared()->visibleViewController());
        QVERIFY(page);
        QCOMPARE(page->title(), QStringLiteral("我的Tarvel"));
        QVERIFY(page->isNavigationBarTransparent());
        QVERIFY(page->leftBarItem()->isHidden());
        QCOMPARE(page->nickName(), user.nick_name);
        QVERIFY(!tabBar->isHide());
    }
};

TARVEL_TEST_MAIN(TestShellScreens)
#include "tst_shell_screens.moc"
