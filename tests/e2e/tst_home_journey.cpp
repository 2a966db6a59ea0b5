#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/WindowSnapshot.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/RefreshFooter.h"
#include "screens/store/BindingPackageViewContoller.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/TabOneViewController.h"
#include "service/NetWorkHelper.h"

#include <QDir>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace tarvel::test;

namespace {

// Whether the store lists DLCs for the game.
bool hasDlcs(const QString &gameId)
{
    bool found = false;
    bool done = false;
    NetWorkHelper::shareInstance()->getGameDetailWithGameId(
            gameId, QStringLiteral("1"), {}, {},
            [&](const QVariant &data, const QVariant &) {
                found = !data.toMap().value(QStringLiteral("dlcs")).toList().isEmpty();
                done = true;
            },
            [&](const QVariant &, const QString &, const QVariant &) { done = true; });
    return QTest::qWaitFor([&] { return done; }, 10000) && found;
}

} // namespace

// A customer's first minute, end to end: the app starts against tarvel-store, the home grid
// shows its games, a game opens, then its DLC list, then a DLC, and back goes straight home.
class TestHomeJourney : public QObject
{
    Q_OBJECT

    std::unique_ptr<InProcessStore> m_store;

    static void snapshot(QQuickWindow *window, const QString &name)
    {
        QSignalSpy swapped(window, &QQuickWindow::frameSwapped);
        window->update();
        QVERIFY(swapped.wait(5000));
        QVERIFY(WindowSnapshot::save(window, QDir(TestEnvironment::artifactsDir()).filePath(name)));
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        StoreOptions options;
        options.requestLog = nullptr;
        options.outboxLog = nullptr;
        m_store = std::make_unique<InProcessStore>(options);
        QVERIFY(m_store->isRunning());
        pointApiAt(m_store->baseUrl());
        resetSharedState();
    }

    void fromHomeToADlcAndBackInOneStep()
    {
        QQmlApplicationEngine engine;
        QQuickWindow *window = AppLaunch::launch(*qGuiApp, engine);
        QVERIFY(window);
        QVERIFY(QTest::qWaitForWindowExposed(window));

        // The home grid with its covers.
        auto *tabs = qobject_cast<ICTabBarController *>(
                AppDelegate::shared()->window()->rootViewController());
        QVERIFY(tabs);
        auto *stack = qobject_cast<platform::NavigationController *>(tabs->viewControllerAt(0));
        QVERIFY(stack);
        QPointer<TabOneViewController> home
                = qobject_cast<TabOneViewController *>(stack->viewControllerAt(0));
        QVERIFY(home);
        QVERIFY(QTest::qWaitFor([&] { return home->pageNum() == 2; }, 15000));
        QVERIFY(QTest::qWaitFor([&] { return coversOnScreenLoaded(window); }, 15000));
        QVERIFY(tarvel::test::waitForStillScene(window)); // slides and fades
        snapshot(window, QStringLiteral("journey_home.png"));

        // The first game on the grid that has DLCs, paging on when needed.
        int index = -1;
        while (index < 0) {
            const QList<Object_HomeGames> games = home->arraySource();
            for (int i = 0; i < games.size() && index < 0; ++i) {
                if (hasDlcs(games.at(i).id))
                    index = i;
            }
            if (index >= 0 || home->refreshFooter()->state() == platform::RefreshFooter::NoMoreData)
                break;
            home->refreshFooter()->pullUp();
            QVERIFY(QTest::qWaitFor([&] { return !home->refreshFooter()->isLoading(); }, 10000));
        }
        QVERIFY2(index >= 0, "no game with DLCs in the catalogue");
        const QString gameId = home->arraySource().at(index).id;

        // Tap its cover on screen.
        QQuickItem *grid = findAllNamed(window->contentItem(), QStringLiteral("homeGrid")).value(0);
        QVERIFY(grid);
        QMetaObject::invokeMethod(grid, "positionViewAtIndex", Q_ARG(int, index), Q_ARG(int, 2));
        QQuickItem *cover = nullptr;
        QVERIFY(QTest::qWaitFor(
                [&] {
                    for (QQuickItem *cell :
                         findAllNamed(window->contentItem(), QStringLiteral("homePageViewCell"))) {
                        if (cell->parentItem()->property("index").toInt() == index)
                            cover = cell;
                    }
                    return cover != nullptr;
                },
                5000));
        const QPointF centre = cover->mapToScene(QPointF(cover->width() / 2, 30));
        QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
        QTRY_COMPARE(stack->depth(), 2);
        auto *game = qobject_cast<GoodsDetailViewController *>(stack->topViewController());
        QVERIFY(game);
        QCOMPARE(game->gameId(), gameId);
        QVERIFY(QTest::qWaitFor([&] { return game->isLoaded(); }, 10000));

        // Its DLC list, then the first DLC.
        game->clickButtonLook(2);
        QTRY_COMPARE(stack->depth(), 3);
        auto *list = qobject_cast<BindingPackageViewContoller *>(stack->topViewController());
        QVERIFY(list);
        QVERIFY(!list->arraySource().isEmpty());
        list->didSelectRowAtIndex(0);
        QTRY_COMPARE(stack->depth(), 4);
        auto *dlc = qobject_cast<GoodsDetailViewController *>(stack->topViewController());
        QVERIFY(dlc);
        QCOMPARE(dlc->gameId(), list->arraySource().first().id);
        QVERIFY(QTest::qWaitFor([&] { return dlc->isLoaded(); }, 10000));
        QVERIFY(tarvel::test::waitForStillScene(window)); // slides and fades
        snapshot(window, QStringLiteral("journey_dlc.png"));

        // Back leaves the whole chain of detail pages at once.
        QVERIFY(dlc->leftBarItem()->tap());
        QTRY_COMPARE(stack->depth(), 1);
        QCOMPARE(stack->topViewController(), home.data());
        QTRY_VERIFY(!stack->transitionsDrivenByView() || home->isOnScreen());
        QVERIFY(tarvel::test::waitForStillScene(window)); // slides and fades
        snapshot(window, QStringLiteral("journey_back_home.png"));

        AppDelegate::shared()->window()->setRootViewController(nullptr);
        settle();
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestHomeJourney)
#include "tst_home_journey.moc"
