#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_purchase_support.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "screens/purchase/MyCouponViewController.h"
#include "screens/purchase/MyGamesViewController.h"

#include <QElapsedTimer>

using namespace purchasetest;
using detailtest::StackHarness;
using platform::Hud;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

// The owned games' grid (refreshed at once, covers that open the game) and the coupon list (six
// fixed cards whose refreshes end after a second without asking anybody).
class TestOwned : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    ScriptedHttpServer m_server;

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        QVERIFY(m_server.listen());
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        m_server.clearRequests();
    }

    void myGamesFromTheStore()
    {
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        QVERIFY(signInDemoAccount());
        StackHarness harness;
        auto *games = new MyGamesViewController;
        harness.push(games);
        QCOMPARE(games->title(), QStringLiteral("我的游戏"));
        QCOMPARE(games->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QTRY_VERIFY(!games->arraySource().isEmpty());
        QTRY_VERIFY(!games->refreshHeader()->isRefreshing());
        QVariantList owned;
        bool answered = false;
        NetWorkHelper::shareInstance()->getMyGamesWithStartFn(
                {}, {},
                [&](const QVariant &data, const QVariant &) {
                    owned = data.toMap().value(QStringLiteral("games")).toList();
                    answered = true;
                },
                [&](const QVariant &, const QString &, const QVariant &) { answered = true; });
        QTRY_VERIFY(answered);
        QVERIFY(!owned.isEmpty());
        QCOMPARE(games->arraySource().size(), owned.size());
        QCOMPARE(games->collectionMenu()->count(), owned.size());
        QCOMPARE(games->arraySource().last().gameId,
                 owned.last().toMap().value(QStringLiteral("gameId")).toString());
        QCOMPARE(HudRecorder::shared().records().first(),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在加载..."), false}));
        QVERIFY(!Hud::shared().isVisible());
        const QString cover = games->collectionMenu()->rows().first().value("imageUrl").toString();
        QVERIFY2(cover.startsWith(m_store->baseUrl()) && cover.contains("?imageView2/2/w/"),
                 qPrintable(cover));

        games->didSelectItemAtIndex(2);
        auto *detail = qobject_cast<GoodsDetailViewController *>(harness.top());
        QVERIFY(detail);
        QCOMPARE(detail->gameId(), games->arraySource().at(2).gameId);
        games->didSelectItemAtIndex(int(owned.size())); // past the last cover
        QCOMPARE(harness.top(), detail);
        signOut();
    }

    void myGamesFailureShowsTheMessage()
    {
        qputenv("TARVEL_API_BASE_URL", m_server.baseUrl().toUtf8());
        signInLocally();
        m_server.route(QStringLiteral("/home/games.json"),
                       ScriptedResponse::json(
                               failure(QStringLiteral("error"), QStringLiteral("请先登录")), 401));
        StackHarness harness;
        auto *games = new MyGamesViewController;
        harness.push(games);
        QVERIFY(waitForLastHud(QStringLiteral("请先登录")));
        QVERIFY(!games->refreshHeader()->isRefreshing());
        QVERIFY(games->arraySource().isEmpty());
    }

    void couponsAreSixFixedRows_data()
    {
        QTest::addColumn<bool>("pullDown");
        QTest::newRow("pull down") << true;
        QTest::newRow("pull up") << false;
    }

    void couponsAreSixFixedRows()
    {
        QFETCH(bool, pullDown);
        qputenv("TARVEL_API_BASE_URL", m_server.baseUrl().toUtf8());
        StackHarness harness;
        auto *coupons = new MyCouponViewController;
        harness.push(coupons);
        QCOMPARE(coupons->title(), QStringLiteral("我的优惠券"));
        QCOMPARE(coupons->rowCount(), 6);
        QCOMPARE(coupons->rowHeight(), 74);

        QElapsedTimer clock;
        clock.start();
        if (pullDown)
            coupons->refreshHeader()->beginRefreshing();
        else
            coupons->refreshFooter()->beginRefreshing();
        QCOMPARE(HudRecorder::shared().records(),
                 (QList<HudRecorder::Record>{{Hud::Progress, QStringLiteral("加载中..."), false}}));
        QTRY_VERIFY(!Hud::shared().isVisible());
        QVERIFY(clock.elapsed() >= MyCouponViewController::RefreshMs - 50);
        QVERIFY(!coupons->refreshHeader()->isRefreshing());
        QVERIFY(!coupons->refreshFooter()->isLoading());
        QCOMPARE(coupons->pageMain(), 1);
        QCOMPARE(m_server.requestCount(), 0);

        // Back pops the list.
        QVERIFY(coupons->leftBarItem()->tap());
        QCOMPARE(harness.top(), harness.home.data());
    }
};

TARVEL_TEST_MAIN(TestOwned)
#include "tst_owned.moc"
