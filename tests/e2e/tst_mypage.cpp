#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"
#include "tst_shell_support.h"
#include "tst_signin_support.h"

#include "platform/HTTPCookieStorage.h"
#include "platform/kits/Application.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/ui/Assets.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"
#include "screens/account/AboutQMRTViewController.h"
#include "screens/account/AboutTarvelViewController.h"
#include "screens/account/AboutViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/PreferencesViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/MyOrderViewController.h"
#include "service/ICDataHelper.h"
#include "util/AppConfig.h"

#include <QFile>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::Application;
using platform::UserDefaults;
using platform::UserNotificationType;
using platform::UserNotificationTypes;
using shelltest::launchedTabBar;
using shelltest::settle;

namespace {

QString stored(const QString &key)
{
    return UserDefaults::standard().objectForKey(key).toString();
}

void allowNotifications(bool allowed)
{
    Application &application = Application::shared();
    application.setSupportsUserNotificationSettings(true);
    platform::UserNotificationSettings settings;
    if (allowed)
        settings.types = UserNotificationTypes(UserNotificationType::Alert)
                         | UserNotificationType::Badge | UserNotificationType::Sound;
    application.registerUserNotificationSettings(settings);
}

} // namespace

// The my page: its head and menu, where each button leads, the local sign-out, the push switch
// and the about screens; and the views of the my page and the preferences.
class TestMyPage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<tarvel::test::InProcessStore> m_store;

    // The app launched and signed in as the phone demo user, showing the my-page tab.
    TabFourViewController *showMyPage()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions();
        settle();
        if (!detailtest::signInDemoAccount())
            return nullptr;
        ICTabBarController *tabs = launchedTabBar();
        tabs->selectViewControllerAtIndex(ICTabBarController::MyPageTab);
        auto *stack = qobject_cast<platform::NavigationController *>(
                tabs->viewControllerAt(ICTabBarController::MyPageTab));
        auto *page = qobject_cast<TabFourViewController *>(stack->viewControllerAt(0));
        if (page && !QTest::qWaitFor([page] { return !page->nickName().isEmpty(); }, 5000))
            return nullptr;
        return page;
    }

private slots:
    void initTestCase()
    {
        tarvel::test::QmlWarnings::install();
        m_store = std::make_unique<tarvel::test::InProcessStore>();
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        platform::UrlOpener::shared().setHandler([](const QUrl &) { return true; });
    }

    void init()
    {
        shelltest::resetApplication();
        platform::UrlOpener::shared().clearHistory();
        tarvel::test::QmlWarnings::clear();
    }

    void headAndMenu()
    {
        TabFourViewController *page = showMyPage();
        QVERIFY(page);
        QCOMPARE(page->title(), QStringLiteral("我的Tarvel"));
        QVERIFY(page->leftBarItem()->isHidden());
        QVERIFY(page->rightBarItem()->isHidden());
        QVERIFY(page->isNavigationBarTransparent());
        QVERIFY(!launchedTabBar()->isHide());
        QCOMPARE(page->nickName(), QStringLiteral("演示玩家"));
        QVERIFY(page->imageHead().toString().startsWith(m_store->baseUrl()));
        QStringList titles;
        for (platform::Button *button : page->menuButtons()) {
            titles.append(button->title());
            QCOMPARE(button->imageName(), QStringLiteral("mine_menu%1").arg(button->tag() + 1));
            QVERIFY(platform::Assets::hasImage(button->imageName()));
        }
        QCOMPARE(titles, (QStringList{"我的游戏", "我的订单", "个人资料", "账户安全", "偏好设置",
                                      "帮助与反馈"}));
        QCOMPARE(page->buttonLogOut()->title(), QStringLiteral("退出当前账号"));
        QCOMPARE(page->buttonAbout()->title(), QStringLiteral("关于Tarvel游戏"));
        QVERIFY(platform::Assets::hasImage(QStringLiteral("myInfo_bg")));
    }

    void avatarAddress_data()
    {
        QTest::addColumn<QString>("avatar");
        QTest::addColumn<QString>("shown");
        QTest::newRow("store path") << "/uploads/a.jpg"
                                    << "BASE/uploads/a.jpg";
        QTest::newRow("full address") << "http://cdn.example.com/a.jpg"
                                      << "http://cdn.example.com/a.jpg";
        QTest::newRow("secure address") << "https://cdn.example.com/a.jpg"
                                        << "https://cdn.example.com/a.jpg";
        QTest::newRow("none") << ""
                              << "";
    }

    void avatarAddress()
    {
        QFETCH(QString, avatar);
        QFETCH(QString, shown);
        shown.replace(QLatin1String("BASE"), m_store->baseUrl());
        QCOMPARE(TabFourViewController::avatarUrl(avatar).toString(), shown);
    }

    void menuButtonsOpenTheirScreens_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QByteArray>("screen");
        QTest::addColumn<QString>("title");
        QTest::newRow("games") << 0 << QByteArray("MyGamesViewController") << "我的游戏";
        QTest::newRow("orders") << 1 << QByteArray("MyOrderViewController") << "我的订单";
        QTest::newRow("personal data") << 2 << QByteArray("PersonalDataViewController") << "个人资料";
        QTest::newRow("account security") << 3 << QByteArray("AccountSafeViewController") << "账户安全";
        QTest::newRow("preferences") << 4 << QByteArray("PreferencesViewController") << "偏好设置";
        QTest::newRow("help") << 5 << QByteArray("HelpAndFeedbackViewController") << "帮助与反馈";
        QTest::newRow("tag 6") << 6 << QByteArray() << "";
        QTest::newRow("tag 9") << 9 << QByteArray() << "";
        QTest::newRow("negative") << -1 << QByteArray() << "";
    }

    void menuButtonsOpenTheirScreens()
    {
        QFETCH(int, tag);
        QFETCH(QByteArray, screen);
        QFETCH(QString, title);
        TabFourViewController *page = showMyPage();
        QVERIFY(page);
        platform::NavigationController *stack = page->navigationController();
        page->clickButtonMenu(tag);
        if (title.isEmpty()) {
            QCOMPARE(stack->depth(), 1); // nothing for tags past the menu
            return;
        }
        QCOMPARE(stack->depth(), 2);
        platform::ViewController *top = stack->topViewController();
        if (!screen.isEmpty())
            QCOMPARE(QByteArray(top->metaObject()->className()), screen);
        QTRY_COMPARE(top->title(), title);
        QTRY_VERIFY(launchedTabBar()->isHide());
        if (auto *orders = qobject_cast<MyOrderViewController *>(top))
            QCOMPARE(orders->fatherView(), 0);
        // Back returns to the my page, which shows the tab strip again.
        QVERIFY(top->leftBarItem()->tap());
        QTRY_COMPARE(stack->depth(), 1);
        QTRY_VERIFY(!launchedTabBar()->isHide());
    }

    void signOutIsLocal()
    {
        TabFourViewController *page = showMyPage();
        QVERIFY(page);
        const Object_User user = *AppDelegate::shared()->userLogin();
        QVariantMap record{{QStringLiteral("account_id"), user.account_id},
                           {QStringLiteral("nick_name"), user.nick_name},
                           {QStringLiteral("token"), user.token}};
        ICSessionHelper::userSaveObjectUser(record);
        ICCookiesHelper::saveCookiesWithUrl(m_store->baseUrl() + QStringLiteral("/sign_in.json"));
        UserDefaults::standard().setObject(QStringLiteral("3"), QStringLiteral("cartnum"));
        UserDefaults::standard().setObject(QStringLiteral("13800138000"),
                                           QStringLiteral("username"));
        QVERIFY(ICSessionHelper::userIsLoginSelf());
        QVERIFY(!platform::HTTPCookieStorage::shared()->cookies().isEmpty());

        page->buttonLogOut()->tap();

        QVERIFY(!AppDelegate::shared()->isSignedIn());
        QVERIFY(!ICSessionHelper::userIsLoginSelf());
        QVERIFY(!QFile::exists(ICDataHelper::docPath() + QStringLiteral("/User.plist")));
        QVERIFY(platform::HTTPCookieStorage::shared()->cookies().isEmpty());
        QVERIFY(!UserDefaults::standard().objectForKey(ICCookiesHelper::cookiesKey).isValid());
        QCOMPARE(stored(QStringLiteral("cartnum")), QStringLiteral("3"));
        QCOMPARE(stored(QStringLiteral("username")), QStringLiteral("13800138000"));
        QCOMPARE(launchedTabBar()->selectedIndex(), int(ICTabBarController::HomeTab));
        QCOMPARE(platform::Hud::shared().kind(), platform::Hud::Success);
        QCOMPARE(platform::Hud::shared().text(), QStringLiteral("退出成功"));
        QVERIFY(platform::Hud::shared().isMasked());

        // The my page asks for sign-in again.
        launchedTabBar()->selectIndex(
                launchedTabBar()->arrayButton().at(ICTabBarController::MyPageTab));
        QCOMPARE(launchedTabBar()->selectedIndex(), int(ICTabBarController::HomeTab));
        QTRY_VERIFY(qobject_cast<NavRootViewController *>(
                AppDelegate::shared()->visibleViewController()));
    }

    void pushSwitchFollowsSystemAndSetting_data()
    {
        QTest::addColumn<bool>("systemAllows");
        QTest::addColumn<QString>("isPush");
        QTest::addColumn<bool>("on");
        QTest::newRow("allowed, never set") << true << QString() << true;
        QTest::newRow("allowed, wanted") << true << "1" << true;
        QTest::newRow("allowed, turned off") << true << "0" << false;
        QTest::newRow("held back, wanted") << false << "1" << false;
        QTest::newRow("held back, never set") << false << QString() << false;
    }

    void pushSwitchFollowsSystemAndSetting()
    {
        QFETCH(bool, systemAllows);
        QFETCH(QString, isPush);
        QFETCH(bool, on);
        allowNotifications(systemAllows);
        if (!isPush.isNull())
            UserDefaults::standard().setObject(isPush, QStringLiteral("isPush"));
        detailtest::StackHarness harness;
        auto *preferences = new PreferencesViewController;
        harness.push(preferences);
        QTRY_COMPARE(preferences->title(), QStringLiteral("偏好设置"));
        QCOMPARE(preferences->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(!preferences->isNavigationBarTransparent());
        QCOMPARE(preferences->switchPush()->isOn(), on);
    }

    void flippingTheSwitchStoresAndTellsThePushService_data()
    {
        QTest::addColumn<bool>("systemAllows");
        QTest::newRow("notifications allowed") << true;
        QTest::newRow("notifications disabled") << false;
    }

    void flippingTheSwitchStoresAndTellsThePushService()
    {
        QFETCH(bool, systemAllows);
        allowNotifications(systemAllows);
        detailtest::StackHarness harness;
        auto *preferences = new PreferencesViewController;
        harness.push(preferences);
        settle();
        preferences->switchPush()->setOn(true);
        QVERIFY(preferences->switchPush()->toggleByUser(false));
        QCOMPARE(stored(QStringLiteral("isPush")), QStringLiteral("0"));
        QVERIFY(GeTuiSdk::isPushModeOff());
        QVERIFY(preferences->switchPush()->toggleByUser(true));
        QCOMPARE(stored(QStringLiteral("isPush")), QStringLiteral("1"));
        QVERIFY(!GeTuiSdk::isPushModeOff());
    }

    void aboutOpensTheCompanyPagesInTheBrowser()
    {
        TabFourViewController *page = showMyPage();
        QVERIFY(page);
        page->buttonAbout()->tap();
        auto *about = qobject_cast<AboutViewController *>(
                page->navigationController()->topViewController());
        QVERIFY(about);
        QTRY_COMPARE(about->title(), QStringLiteral("关于Tarvel游戏"));
        QCOMPARE(about->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        about->buttonTarvel()->tap();
        about->buttonQMRT()->tap();
        QCOMPARE(platform::UrlOpener::shared().openedURLs(),
                 (QList<QUrl>{QUrl(m_store->baseUrl() + "/about/tarvel"),
                              QUrl(m_store->baseUrl() + "/about/qmrt")}));
        QCOMPARE(page->navigationController()->topViewController(), about);
    }

    void placeholderPagesSayTheyAreNotWritten_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("app") << "关于Tarvel游戏";
        QTest::newRow("company") << "关于QMRT";
    }

    void placeholderPagesSayTheyAreNotWritten()
    {
        QFETCH(QString, title);
        detailtest::StackHarness harness;
        WebPageViewController *screen
                = title == QStringLiteral("关于QMRT")
                          ? static_cast<WebPageViewController *>(new AboutQMRTViewController)
                          : new AboutTarvelViewController;
        harness.push(screen);
        QTRY_COMPARE(screen->webView()->requestNumber(), 1);
        QCOMPARE(screen->title(), title);
        QVERIFY(screen->webView()->url().isEmpty());
        QVERIFY(screen->webView()->html().contains(QStringLiteral("这是一个web页,尚未开发")));
    }

    void viewsOfTheMyPageAndPreferences()
    {
        TabFourViewController *page = showMyPage();
        QVERIFY(page);
        tarvel::test::PhoneWindow phone;
        QVERIFY(phone.show(AppDelegate::shared()->window()));
        QTRY_VERIFY(tarvel::test::findNamed(phone.root(), "menuButton5"));
        QVERIFY(tarvel::test::findText(phone.root(), QStringLiteral("演示玩家")));
        QVERIFY(tarvel::test::findText(phone.root(), QStringLiteral("帮助与反馈")));
        QVERIFY(tarvel::test::findText(phone.root(), QStringLiteral("退出当前账号")));
        QTRY_VERIFY(tarvel::test::findNamed(phone.root(), "imageHead")
                            ->childItems()
                            .at(1)
                            ->property("ready")
                            .toBool());
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("mypage.png")));

        // The preferences, reached by tapping the menu as a user would.
        allowNotifications(true);
        QVERIFY(tarvel::test::tapWhenStill(phone.window(),
                                           tarvel::test::findNamed(phone.root(), "menuButton4")));
        QTRY_VERIFY(tarvel::test::findNamed(phone.root(), "switchPush"));
        QVERIFY(tarvel::test::findText(phone.root(), QStringLiteral("接收推送消息")));
        QTRY_VERIFY(!tarvel::test::stacksBusy(phone.root()));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("preferences.png")));
        QVERIFY2(tarvel::test::QmlWarnings::messages().isEmpty(),
                 qPrintable(tarvel::test::QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestMyPage)
#include "tst_mypage.moc"
