#include "JourneyApp.h"
#include "tst_home_fixture.h"

#include "platform/ui/ImageNetworkFactory.h"
#include "platform/ui/Label.h"
#include "platform/ui/RowModel.h"
#include "screens/store/GoodsDetailHeaderView.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/TabOneViewController.h"
#include "service/NetWorkHelper.h"

#include <QNetworkDiskCache>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findAllNamed;
using tarvel::test::findNamed;

// The catalogue without network, end to end: tarvel-store runs as its own process; the app shows
// the home page and a game, the store goes away, the app is started again and shows the kept home
// page and game with their covers under the offline notice, and reloads when the store is back.
class TestOfflineJourney : public QObject
{
    Q_OBJECT

private:
    tarvel::test::JourneyApp m_app;

    QQuickItem *root() const { return m_app.root(); }
    platform::NavigationController *homeStack() const { return m_app.stack(0); }

    TabOneViewController *home() const { return m_app.first<TabOneViewController>(0); }

    bool homeShowsCovers() const
    {
        return home() && !home()->arraySource().isEmpty() && home()->pageNum() == 2
               && tarvel::test::coversOnScreenLoaded(m_app.window());
    }

    QQuickItem *cellOf(const QString &title) const
    {
        for (QQuickItem *cell : findAllNamed(root(), QStringLiteral("homePageViewCell"))) {
            if (cell->property("row").toMap().value("title").toString() == title)
                return cell;
        }
        return nullptr;
    }

    // Opens the game shown first in the grid and waits for its page with its cover.
    GoodsDetailViewController *openFirstGame()
    {
        const QString title = home()->arraySource().constFirst().title;
        QQuickItem *cell = cellOf(title);
        if (!cell || !m_app.tap(cell))
            return nullptr;
        if (!QTest::qWaitFor([this] { return homeStack()->depth() == 2; }, 10000))
            return nullptr;
        auto *game = qobject_cast<GoodsDetailViewController *>(homeStack()->topViewController());
        const bool shown
                = game
                  && QTest::qWaitFor(
                          [this, game] {
                              QQuickItem *cover
                                      = findNamed(root(), QStringLiteral("goodsDetailCover"));
                              return game->isLoaded() && cover
                                     && cover->property("status").toInt() == 1; // Image.Ready
                          },
                          15000);
        return shown ? game : nullptr;
    }

    void back()
    {
        QVERIFY(m_app.tapBack());
        QTRY_COMPARE(homeStack()->depth(), 1);
    }

    // The kept carousel shows at the top of the page, not scrolled away.
    bool carouselOnScreen() const
    {
        QQuickItem *carousel = findNamed(root(), QStringLiteral("homeBanners"));
        if (!carousel || !carousel->isVisible() || carousel->property("count").toInt() == 0)
            return false;
        const QRectF box
                = carousel->mapRectToScene(QRectF(0, 0, carousel->width(), carousel->height()));
        return box.top() >= 0 && box.bottom() <= m_app.window()->height();
    }

    bool bannerShown() const
    {
        QQuickItem *banner = findNamed(root(), QStringLiteral("homeOfflineBanner"));
        return banner && banner->isVisible();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_app.startStore());
        NetWorkHelper::shareInstance()->offlineState()->setProbeIntervals(100, 1000);
        platform::Hud::shared().setAutoDismissInterval(300);
    }

    void cleanupTestCase()
    {
        m_app.close();
        m_app.stopStore();
    }

    void browseOfflineThenReload()
    {
        // Online: the home page and a game, with their covers.
        QVERIFY(m_app.launch());
        QVERIFY(QTest::qWaitFor([this] { return homeShowsCovers(); }, 20000));
        QVERIFY(!bannerShown());
        const QList<Object_HomeGames> seen = home()->arraySource();
        GoodsDetailViewController *game = openFirstGame();
        QVERIFY(game);
        const QString gameId = game->gameId();
        const QString coverUrl = game->headerView()->imageUrl();
        back();

        // The covers are on disk, not only in memory.
        QNetworkDiskCache pictures;
        pictures.setCacheDirectory(platform::ImageNetworkFactory::cacheDirectory());
        QVERIFY(pictures.metaData(QUrl(coverUrl)).isValid());
        QVERIFY(pictures.metaData(QUrl(home()->cells().constFirst().imageGoods())).isValid());

        // No store, and the app starts again.
        m_app.stopStore();
        QVERIFY(m_app.launch());
        QVERIFY(QTest::qWaitFor([this] { return homeShowsCovers(); }, 20000));
        QTRY_VERIFY(bannerShown());
        QCOMPARE(findNamed(root(), QStringLiteral("homeOfflineText"))->property("text").toString(),
                 QStringLiteral("网络不可用，显示的是上次浏览的内容"));
        QCOMPARE(home()->arraySource().size(), seen.size());
        QCOMPARE(home()->arraySource().constFirst().id, seen.constFirst().id);
        QVERIFY(!home()->buttonRefresh());
        QCOMPARE(home()->scrollBanner()->count(), home()->arrayImageBanner().size());
        QVERIFY(carouselOnScreen());
        QVERIFY(m_app.snapshot(QStringLiteral("offline_1_home_banner.png")));

        GoodsDetailViewController *keptGame = openFirstGame();
        QVERIFY(keptGame);
        QCOMPARE(keptGame->gameId(), gameId);
        QCOMPARE(keptGame->headerView()->imageUrl(), coverUrl);
        QVERIFY(m_app.snapshot(QStringLiteral("offline_2_kept_game.png")));
        back();

        // The store returns on its address: the notice goes and the page loads again.
        HudRecorder::shared().clear();
        QVERIFY(m_app.startStore(m_app.port()));
        QTRY_VERIFY_WITH_TIMEOUT(!bannerShown(), 20000);
        QVERIFY(!NetWorkHelper::shareInstance()->offlineState()->answeredFromCache());
        QTRY_VERIFY(HudRecorder::shared().history().contains(QStringLiteral("正在加载")));
        QVERIFY(QTest::qWaitFor([this] { return homeShowsCovers(); }, 20000));
        QVERIFY(m_app.snapshot(QStringLiteral("offline_3_back_online.png")));
    }
};

TARVEL_TEST_MAIN(TestOfflineJourney)
#include "tst_offline_journey.moc"
