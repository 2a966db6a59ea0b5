#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "tst_shell_support.h"

#include "app/AppLaunch.h"
#include "app/Q9FatherViewController.h"
#include "app/SlidePanelController.h"
#include "app/UserGuideViewController.h"
#include "app/ViewController.h"
#include "app/WindowSnapshot.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/MyMessageViewController.h"

#include <QDir>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using shelltest::launchedTabBar;
using shelltest::settle;

using tarvel::test::findItem;
using tarvel::test::findText;

namespace {

QPoint centreOf(QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

QString artifact(const QString &name)
{
    return QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name);
}

// A form with a text field over a short list, for the end-editing tap.
const char FormView[] = R"(import QtQuick
import QtQuick.Controls
import Tarvel
Rectangle {
    property var controller
    property int rowTaps: 0
    color: "white"
    TextField { objectName: "formField"; x: 20; y: 90; width: 220; height: 40 }
    ListView {
        objectName: "formRows"; x: 0; y: 160; width: 375; height: 200; model: 3
        delegate: Rectangle {
            objectName: "formRow" + index; width: 375; height: 44; color: "#eeeeee"
            Text { anchors.centerIn: parent; text: "第" + (index + 1) + "行" }
        }
    }
    Rectangle {
        objectName: "tappableRow"; x: 0; y: 380; width: 375; height: 44; color: "#dddddd"
        MouseArea { anchors.fill: parent; onClicked: parent.parent.rowTaps += 1 }
    }
    Text { objectName: "formNote"; x: 20; y: 440; text: "说明文字" }
}
)";

// Navigation stacks made under `item`, shown or not.
int stacksMade(QQuickItem *item)
{
    int made = item->objectName() == QLatin1String("controllerStack") ? 1 : 0;
    for (QQuickItem *child : item->childItems())
        made += stacksMade(child);
    return made;
}

} // namespace

// The QML shell on screen: the launched app in Main.qml, the tab strip with its badge and slide,
// the sign-in sheet from the cart tab, the user guide, the sliding panel and the end-editing tap.
// Screenshots go to the artifacts folder for review; any QML warning fails the case.
class TestShellViews : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;

    bool showMain()
    {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = AppLaunch::loadMainWindow(*m_engine);
        return m_window && QTest::qWaitForWindowExposed(m_window) && waitForFrame();
    }

    void launchAndShow()
    {
        AppDelegate::shared()->application_didFinishLaunchingWithOptions({});
        QVERIFY(showMain());
    }

    bool waitForFrame()
    {
        QSignalSpy swapped(m_window, &QQuickWindow::frameSwapped);
        m_window->update();
        return swapped.wait(5000);
    }

    // Lets slides and fades finish and the window draw the result.
    void waitForAnimations()
    {
        QVERIFY(tarvel::test::waitForStillScene(m_window));
        settle();
        QVERIFY(waitForFrame());
    }

    void snapshot(const QString &name) { QVERIFY(WindowSnapshot::save(m_window, artifact(name))); }

    QQuickItem *root() const { return m_window->contentItem(); }

    // A quick finger swipe from right to left across the middle of the window.
    void swipeLeft()
    {
        QTest::mousePress(m_window, Qt::LeftButton, {}, QPoint(320, 330));
        for (int x = 300; x >= 60; x -= 40)
            QTest::mouseMove(m_window, QPoint(x, 330), 10);
        QTest::mouseRelease(m_window, Qt::LeftButton, {}, QPoint(40, 330), 10);
    }

    void click(QQuickItem *item)
    {
        QTest::mouseClick(m_window, Qt::LeftButton, {}, centreOf(item));
    }

private slots:
    void initTestCase()
    {
        tarvel::test::QmlWarnings::install();
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        tarvel::test::QmlWarnings::clear();
        shelltest::resetApplication();
    }

    void cleanup()
    {
        m_engine.reset();
        m_window = nullptr;
        shelltest::resetApplication();
        const QStringList warnings = tarvel::test::QmlWarnings::messages();
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join(QLatin1Char('\n'))));
    }

    void homeTabSignedOut()
    {
        launchAndShow();
        waitForAnimations();
        for (int i = 0; i < 4; ++i)
            QVERIFY(findItem(root(), QStringLiteral("tabButton%1").arg(i)));
        QVERIFY(!findItem(root(), QStringLiteral("cartBadge"))->isVisible());
        // The home page: its retry screen, or its sort strip once a store has answered.
        QVERIFY(findText(root(), QStringLiteral("暂无数据,点击刷新"))
                || findText(root(), QStringLiteral("最新")));
        snapshot(QStringLiteral("shell_home_signed_out.png"));
    }

    void badgeOnTheStrip()
    {
        launchAndShow();
        platform::Label badge;
        AppDelegate::shared()->setLabelRedDot(&badge);
        platform::UserDefaults::standard().setObject(QStringLiteral("3"),
                                                     QStringLiteral("cartnum"));
        waitForAnimations();
        QQuickItem *dot = findItem(root(), QStringLiteral("cartBadge"));
        QVERIFY(dot && dot->isVisible());
        QVERIFY(findText(dot, QStringLiteral("3")));
        QQuickItem *strip = dot->parentItem();
        QCOMPARE(dot->position(), QPointF(375.0 * 3 / 8 + 4, 3));
        QCOMPARE(dot->size(), QSizeF(15, 15));
        QCOMPARE(strip->mapToScene(QPointF(0, 0)).y(), 667.0 - 49);
        snapshot(QStringLiteral("shell_badge.png"));

        platform::UserDefaults::standard().setObject(QStringLiteral("0"),
                                                     QStringLiteral("cartnum"));
        QVERIFY(!dot->isVisible());
        AppDelegate::shared()->setLabelRedDot(nullptr);
    }

    void cartTabAsksToSignIn()
    {
        launchAndShow();
        click(findItem(root(), QStringLiteral("tabButton1")));
        QCOMPARE(AppDelegate::shared()->window()->presentedCount(), 1);
        waitForAnimations();
        QCOMPARE(launchedTabBar()->selectedIndex(), 0);
        QVERIFY(findText(root(), QStringLiteral("登录")));
        snapshot(QStringLiteral("shell_signin_from_cart.png"));
    }

    void messagesTabOpensSignedOut()
    {
        launchAndShow();
        click(findItem(root(), QStringLiteral("tabButton3")));
        waitForAnimations();
        QCOMPARE(launchedTabBar()->selectedIndex(), 3);
        QCOMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
        QVERIFY(qobject_cast<MyMessageViewController *>(
                AppDelegate::shared()->visibleViewController()));
        snapshot(QStringLiteral("shell_messages_tab.png"));
    }

    void cartAndMyPageTabsSignedIn()
    {
        AppDelegate::shared()->setUserLogin(
                shelltest::userWithPhone(QStringLiteral("13800138000")));
        launchAndShow();
        click(findItem(root(), QStringLiteral("tabButton1")));
        waitForAnimations();
        QCOMPARE(launchedTabBar()->selectedIndex(), 1);
        QVERIFY(findText(root(), QStringLiteral("购物车")));
        snapshot(QStringLiteral("shell_cart_tab.png"));

        click(findItem(root(), QStringLiteral("tabButton2")));
        waitForAnimations();
        QCOMPARE(launchedTabBar()->selectedIndex(), 2);
        QVERIFY(findText(root(), QStringLiteral("我的Tarvel")));
        QVERIFY(findText(root(), QStringLiteral("演示玩家")));
        snapshot(QStringLiteral("shell_my_page_tab.png"));
    }

    // Only the shown tab's screen is made at launch; another is made when first shown and then
    // kept.
    void tabViewsAreMadeWhenFirstShown()
    {
        launchAndShow();
        waitForAnimations();
        ICTabBarController *tabBar = launchedTabBar();
        const auto rootOf = [tabBar](int tab) {
            return qobject_cast<platform::NavigationController *>(tabBar->viewControllerAt(tab))
                    ->viewControllers()
                    .constFirst();
        };
        QVERIFY(rootOf(0)->isViewLoaded());
        for (int tab = 1; tab < 4; ++tab)
            QVERIFY2(!rootOf(tab)->isViewLoaded(), qPrintable(QString::number(tab)));
        QCOMPARE(stacksMade(root()), 1);

        click(findItem(root(), QStringLiteral("tabButton3")));
        waitForAnimations();
        QVERIFY(rootOf(3)->isViewLoaded());
        click(findItem(root(), QStringLiteral("tabButton0")));
        waitForAnimations();
        QCOMPARE(stacksMade(root()), 2);
        QVERIFY(!rootOf(1)->isViewLoaded());
        QVERIFY(!rootOf(2)->isViewLoaded());
    }

    // The strip slides away and the content takes its room; shown again it slides back.
    void stripHidesAndShows()
    {
        launchAndShow();
        ICTabBarController *tabBar = launchedTabBar();
        tabBar->hideTabBar(true);
        QVERIFY(findItem(root(), QStringLiteral("tabButton0")));
        waitForAnimations();
        QVERIFY(!findItem(root(), QStringLiteral("tabButton0")));

        tabBar->hideTabBar(false);
        settle();
        QQuickItem *button = findItem(root(), QStringLiteral("tabButton0"));
        QVERIFY(button);
        waitForAnimations();
        QCOMPARE(button->mapToScene(QPointF(0, 0)).y(), 667.0 - 49);
    }

    void userGuide()
    {
        launchAndShow();
        platform::UserDefaults::standard().removeObjectForKey(
                ViewController::userGuideFlagKey(ViewController::currentVersion()));
        ViewController::goForwardToUserGuide();
        waitForAnimations();
        snapshot(QStringLiteral("shell_user_guide_1.png"));

        QQuickItem *pages = findItem(root(), QStringLiteral("guidePages"));
        QVERIFY(pages);
        swipeLeft();
        waitForAnimations();
        swipeLeft();
        waitForAnimations();
        auto *guide = qobject_cast<UserGuideViewController *>(
                AppDelegate::shared()->window()->presentedViewControllerAt(0));
        QVERIFY(guide);
        QCOMPARE(guide->currentPage(), 2);
        snapshot(QStringLiteral("shell_user_guide_3.png"));

        QQuickItem *moveOut = nullptr;
        std::function<void(QQuickItem *)> visit = [&](QQuickItem *item) {
            if (item->objectName() == QLatin1String("guideMoveOut") && item->isVisible())
                moveOut = item;
            for (QQuickItem *child : item->childItems())
                visit(child);
        };
        visit(pages);
        QVERIFY(moveOut);
        click(moveOut);
        waitForAnimations();
        QCOMPARE(AppDelegate::shared()->window()->presentedCount(), 0);
    }

    void slidingPanel()
    {
        AppDelegate::shared()->window()->makeKeyAndVisible();
        ViewController::goForwardToSliderPanel();
        QVERIFY(showMain());
        auto *panel = qobject_cast<SlidePanelController *>(
                AppDelegate::shared()->window()->rootViewController());
        QVERIFY(panel);
        QVERIFY(findText(root(), QStringLiteral("Tarvel游戏")));

        // A drag to the right past half the left panel's way opens it.
        const QPoint start(60, 400);
        QTest::mousePress(m_window, Qt::LeftButton, {}, start);
        for (int x = 70; x <= 260; x += 10)
            QTest::mouseMove(m_window, QPoint(x, 400), 5);
        QTest::mouseRelease(m_window, Qt::LeftButton, {}, QPoint(260, 400), 5);
        QCOMPARE(panel->revealed(), SlidePanelController::LeftRevealed);
        waitForAnimations();
        QVERIFY(findText(root(), QStringLiteral("菜单")));
        snapshot(QStringLiteral("shell_slide_panel_left.png"));

        panel->showCenterPanel();
        waitForAnimations();
    }

    void endEditingTap_data()
    {
        QTest::addColumn<QString>("touched");
        QTest::addColumn<bool>("ends");
        QTest::newRow("the field itself") << "formField" << false;
        QTest::newRow("a row of a list") << "formRow1" << false;
        QTest::newRow("a row that takes taps") << "tappableRow" << false;
        QTest::newRow("a text on the background") << "formNote" << true;
        QTest::newRow("the bare background") << QString() << true;
    }

    // A touch that nothing in the view takes reaches the page's background and ends editing; a
    // field, a list or a row with a tap of its own keeps the touch (and the row's tap runs).
    void endEditingTap()
    {
        QFETCH(QString, touched);
        QFETCH(bool, ends);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("FormView.qml"));
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(FormView);
        out.close();

        auto *screen = new Q9FatherViewController;
        screen->setViewSource(QUrl::fromLocalFile(file));
        AppDelegate::shared()->window()->makeKeyAndVisible();
        AppDelegate::shared()->window()->setRootViewController(
                new platform::NavigationController(screen));
        QVERIFY(showMain());
        QSignalSpy ended(screen, &Q9FatherViewController::endEditingRequested);

        QQuickItem *field = findItem(root(), QStringLiteral("formField"));
        QVERIFY(field);
        click(field);
        QVERIFY(field->hasActiveFocus());
        QCOMPARE(ended.count(), 0);

        if (touched.isEmpty()) {
            QTest::mouseClick(m_window, Qt::LeftButton, {}, QPoint(300, 600));
        } else {
            QQuickItem *target = findItem(root(), touched);
            QVERIFY(target);
            click(target);
        }
        QCOMPARE(ended.count(), ends ? 1 : 0);
        QCOMPARE(field->hasActiveFocus(), !ends);
        QQuickItem *row = findItem(root(), QStringLiteral("tappableRow"));
        QCOMPARE(row->parentItem()->property("rowTaps").toInt(),
                 touched == QLatin1String("tappableRow") ? 1 : 0);
    }
};

TARVEL_TEST_MAIN(TestShellViews)
#include "tst_shell_views.moc"
