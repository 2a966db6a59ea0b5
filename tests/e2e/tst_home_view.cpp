#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"

#include "app/WindowSnapshot.h"
#include "platform/ui/ImageNetworkFactory.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/TextField.h"
#include "screens/store/SearchDetailViewController.h"
#include "screens/store/TabFiveViewController.h"
#include "screens/store/TabOneViewController.h"
#include "screens/store/TabTwoViewController.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTcpServer>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace tarvel::test;

// The store screens' QML views, offscreen in the phone-sized window against a running store:
// they build without a QML warning, show what their controllers hold, react to taps and
// scrolling, and are written out as screenshots for review.
class TestHomeView : public QObject
{
    Q_OBJECT

    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<platform::Window> m_platformWindow;
    platform::NavigationController *m_navigation = nullptr;
    QQuickItem *m_root = nullptr;

    // Shows `screen` in a navigation stack under a tab bar, drawn by the app's window view.
    bool show(platform::ViewController *screen)
    {
        m_platformWindow = std::make_unique<platform::Window>();
        auto *tabs = new ICTabBarController;
        m_navigation = new platform::NavigationController(screen);
        tabs->setViewControllers({m_navigation});
        m_platformWindow->setRootViewController(tabs);
        m_platformWindow->makeKeyAndVisible();

        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(375, 667);
        QQmlComponent component(m_engine.get());
        component.setData("import QtQuick\nimport Tarvel\nWindowView { tabBar: TabStrip {} }",
                          QUrl(QStringLiteral("qrc:/tests/StoreHarness.qml")));
        QObject *object = component.createWithInitialProperties(
                {{"window", QVariant::fromValue(m_platformWindow.get())}});
        m_root = qobject_cast<QQuickItem *>(object);
        if (!m_root) {
            qWarning() << component.errors();
            delete object;
            return false;
        }
        m_root->setParentItem(m_window->contentItem());
        m_root->setSize(QSizeF(375, 667));
        m_window->show();
        return QTest::qWaitForWindowExposed(m_window.get());
    }

    bool waitForFrame()
    {
        QSignalSpy swapped(m_window.get(), &QQuickWindow::frameSwapped);
        m_window->update();
        return swapped.wait(5000);
    }

    void snapshot(const QString &name)
    {
        QVERIFY(waitForFrame());
        const QString path = QDir(TestEnvironment::artifactsDir()).filePath(name);
        QVERIFY(WindowSnapshot::save(m_window.get(), path));
    }

    void click(QQuickItem *item)
    {
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre.toPoint());
    }

    bool waitForCovers()
    {
        return QTest::qWaitFor([&] { return coversOnScreenLoaded(m_window.get()); }, 20000);
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
    }

    void init()
    {
        QmlWarnings::clear();
        pointApiAt(m_store->baseUrl());
        resetSharedState();
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/"));
        platform::ImageNetworkFactory::install(m_engine.get());
    }

    void cleanup()
    {
        delete m_root;
        m_root = nullptr;
        m_window.reset();
        m_platformWindow.reset();
        settle();
        m_engine.reset();
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }

    void homeGridWithPictures()
    {
        auto *home = new TabOneViewController;
        QVERIFY(show(home));
        QVERIFY(QTest::qWaitFor([&] { return home->pageNum() == 2; }, 15000));
        QVERIFY(waitForCovers());
        QTRY_VERIFY_WITH_TIMEOUT(!home->refreshHeader()->isRefreshing(), 5000);
        QVERIFY(findText(m_root, QStringLiteral("最新")));
        QVERIFY(!findText(m_root, QStringLiteral("暂无数据,点击刷新")));
        // The first game's price is on screen as the price label draws it.
        QVERIFY(findText(m_root, QStringLiteral("¥") + home->arraySource().first().sale_price));
        QVERIFY(tarvel::test::waitForStillScene(m_window.get())); // slides and fades
        snapshot(QStringLiteral("home.png"));

        // Tapping a cover opens the game.
        const QList<QQuickItem *> cells = findAllNamed(m_root, QStringLiteral("homePageViewCell"));
        QVERIFY(!cells.isEmpty());
        click(cells.first());
        QTRY_VERIFY(isGoodsDetail(m_navigation->topViewController()));
    }

    void scrollingToTheEndLoadsTheNextPage()
    {
        auto *home = new TabOneViewController;
        QVERIFY(show(home));
        QVERIFY(QTest::qWaitFor([&] { return home->pageNum() == 2; }, 15000));
        QTRY_VERIFY_WITH_TIMEOUT(!home->refreshHeader()->isRefreshing(), 5000);
        auto *grid = findAllNamed(m_root, QStringLiteral("homeGrid")).value(0);
        QVERIFY(grid);
        QVERIFY(waitForFrame());
        QMetaObject::invokeMethod(grid, "positionViewAtEnd");
        QTRY_COMPARE_WITH_TIMEOUT(home->arraySource().size(), 40, 15000);
        QCOMPARE(home->pageNum(), 3);
        QVERIFY(waitForCovers());
        QVERIFY(tarvel::test::waitForStillScene(m_window.get())); // slides and fades
        snapshot(QStringLiteral("home_scrolled.png"));
    }

    void carouselSwipeMovesTheDots()
    {
        auto *home = new TabOneViewController;
        QVERIFY(show(home));
        QVERIFY(QTest::qWaitFor([&] { return home->pageNum() == 2; }, 15000));
        auto *banners = findAllNamed(m_root, QStringLiteral("homeBanners")).value(0);
        QVERIFY(banners);
        QVERIFY(waitForFrame());
        // A flick to the left settles on the next picture.
        QVERIFY(QMetaObject::invokeMethod(banners, "flick", Q_ARG(qreal, -1200), Q_ARG(qreal, 0)));
        QTRY_COMPARE_WITH_TIMEOUT(home->pageControl()->currentPage(), 1, 5000);
    }

    void retryScreenBeforeTheFirstAnswer()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const quint16 port = closed.serverPort();
        closed.close();
        pointApiAt(QStringLiteral("http://127.0.0.1:%1").arg(port));
        auto *home = new TabOneViewController;
        QVERIFY(show(home));
        QTRY_COMPARE_WITH_TIMEOUT(platform::Hud::shared().kind(), platform::Hud::Error, 20000);
        platform::Hud::shared().dismiss();
        QQuickItem *retry = findText(m_root, QStringLiteral("暂无数据,点击刷新"));
        QVERIFY(retry);
        snapshot(QStringLiteral("home_retry.png"));

        pointApiAt(m_store->baseUrl());
        click(retry);
        QTRY_VERIFY_WITH_TIMEOUT(home->buttonRefresh() == nullptr, 15000);
        QVERIFY(QTest::qWaitFor([&] { return home->pageNum() == 2; }, 15000));
    }

    void searchResults()
    {
        auto *home = new TabOneViewController;
        QVERIFY(show(home));
        QVERIFY(QTest::qWaitFor([&] { return home->pageNum() == 2; }, 15000));
        // Search for the first word of the newest game from the home page's field.
        const QString query = home->arraySource().first().title.left(2);
        home->fieldSearch()->setText(query);
        home->fieldSearch()->pressReturn();
        auto *search
                = qobject_cast<SearchDetailViewController *>(m_navigation->topViewController());
        QVERIFY(search);
        QTRY_VERIFY_WITH_TIMEOUT(search->pageNum() == 2, 15000);
        QTRY_VERIFY_WITH_TIMEOUT(!search->refreshHeader()->isRefreshing(), 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!m_navigation->transitionsDrivenByView()
                                         || m_navigation->viewControllers().size() == 2,
                                 5000);
        QVERIFY(waitForCovers());
        QVERIFY(findText(m_root,
                         QStringLiteral("搜索到相关游戏%1款").arg(search->arraySource().size())));
        QVERIFY(tarvel::test::waitForStillScene(m_window.get())); // slides and fades
        snapshot(QStringLiteral("search.png"));
    }

    void newsScreens()
    {
        auto *news = new TabFiveViewController;
        QVERIFY(show(news));
        QTRY_VERIFY(findText(m_root, QStringLiteral("资讯公告")));
        snapshot(QStringLiteral("news.png"));
    }

    void categoryScreen()
    {
        auto *categories = new TabTwoViewController;
        QVERIFY(show(categories));
        QTRY_VERIFY(findText(m_root, QStringLiteral("特价优惠")));
        snapshot(QStringLiteral("category.png"));
    }
};

TARVEL_TEST_MAIN(TestHomeView)
#include "tst_home_view.moc"
