#include "HudRecorder.h"
#include "InProcessStore.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"
#include "tst_home_fixture.h"

#include "platform/ui/Button.h"
#include "platform/ui/ImageNetworkFactory.h"
#include "platform/ui/Label.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "screens/store/TabOneViewController.h"
#include "service/NetWorkHelper.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

using namespace tarvel::test;
using detailtest::signInDemoAccount;
using detailtest::signOut;
using platform::Hud;

namespace {

const QString UnreadableText = QStringLiteral("网络通信错误，数据异常");
const QString OfflineText = QStringLiteral("网络不可用，显示的是上次浏览的内容");

// What one request's callbacks received.
struct Outcome
{
    QStringList order; // "end", "success", "failure"
    QVariant data;
    QString message;
};

using Operation = std::function<void(const EndFn &, const SuccessFn &, const FailureFn &)>;

Outcome run(const Operation &operation)
{
    auto outcome = std::make_shared<Outcome>();
    bool ended = false;
    operation(
            [outcome, &ended](const QVariant &) {
                outcome->order.append(QStringLiteral("end"));
                ended = true;
            },
            [outcome](const QVariant &data, const QVariant &) {
                outcome->order.append(QStringLiteral("success"));
                outcome->data = data;
            },
            [outcome](const QVariant &, const QString &message, const QVariant &) {
                outcome->order.append(QStringLiteral("failure"));
                outcome->message = message;
            });
    if (!QTest::qWaitFor([&ended] { return ended; }, 20000))
        qWarning("no answer");
    return *outcome;
}

NetWorkHelper *helper()
{
    return NetWorkHelper::shareInstance();
}

OfflineState *offline()
{
    return helper()->offlineState();
}

// The body of a GET through `network`, and whether it came from the disk cache; empty on failure.
std::pair<QByteArray, bool> fetch(QNetworkAccessManager &network, const QUrl &url)
{
    QNetworkReply *reply = network.get(QNetworkRequest(url));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    if (!reply->isFinished())
        finished.wait(10000);
    reply->deleteLater();
    if (reply->error() != QNetworkReply::NoError)
        return {};
    return {reply->readAll(),
            reply->attribute(QNetworkRequest::SourceIsFromCacheAttribute).toBool()};
}

bool waitForFirstPage(TabOneViewController *home)
{
    return QTest::qWaitFor(
            [home] {
                return !home->buttonRefresh() && home->pageNum() == 2
                       && !home->refreshHeader()->isRefreshing();
            },
            15000);
}

} // namespace

Q_DECLARE_METATYPE(Operation)

// The catalogue without network: its reads are answered from what was kept when the store cannot
// be reached, everything else fails as it always did, and the home page shows the kept pages under
// a notice until the store answers again.
class TestOffline : public QObject
{
    Q_OBJECT

    std::unique_ptr<InProcessStore> m_store;

    void storeUp()
    {
        if (!m_store->isRunning())
            m_store->startAgain();
        QVERIFY(m_store->isRunning());
    }

    // Waits until the app has seen the store back (its probe reached it).
    bool waitUntilOnline()
    {
        return QTest::qWaitFor([] { return !offline()->answeredFromCache(); }, 15000);
    }

private slots:
    void initTestCase()
    {
        StoreOptions options;
        options.requestLog = nullptr;
        options.outboxLog = nullptr;
        m_store = std::make_unique<InProcessStore>(options);
        QVERIFY(m_store->isRunning());
        offline()->setProbeIntervals(20, 200);
    }

    void init()
    {
        storeUp();
        pointApiAt(m_store->baseUrl());
        resetSharedState();
        QVERIFY(waitUntilOnline());
        helper()->answerCache()->clear();
        signOut();
    }

    void catalogueReadsAnsweredFromKeptAnswers_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::newRow("home page") << Operation([](auto end, auto success, auto failure) {
            helper()->getHomepageDataWithStartFn({}, end, success, failure);
        });
        QTest::newRow("sort page") << Operation([](auto end, auto success, auto failure) {
            helper()->getGameListWithType("onsale", "1", {}, end, success, failure);
        });
        QTest::newRow("game page") << Operation([](auto end, auto success, auto failure) {
            helper()->getGameDetailWithGameId("1", "1", {}, end, success, failure);
        });
        QTest::newRow("search") << Operation([](auto end, auto success, auto failure) {
            helper()->searchGameWithQ("a", "1", {}, end, success, failure);
        });
    }

    void catalogueReadsAnsweredFromKeptAnswers()
    {
        QFETCH(Operation, operation);
        const Outcome live = run(operation);
        QCOMPARE(live.order, (QStringList{"end", "success"}));
        QVERIFY(live.data.isValid());
        QCOMPARE(helper()->answerCache()->count(), 1);
        QVERIFY(!offline()->answeredFromCache());

        m_store->stop();
        QSignalSpy changed(offline(), &OfflineState::answeredFromCacheChanged);
        const Outcome kept = run(operation);
        // The callbacks run as for a live answer, with what the store said last time.
        QCOMPARE(kept.order, (QStringList{"end", "success"}));
        QCOMPARE(kept.data, live.data);
        QVERIFY(offline()->answeredFromCache());
        QCOMPARE(changed.count(), 1);

        QSignalSpy returned(offline(), &OfflineState::networkReturned);
        m_store->startAgain();
        QVERIFY(waitUntilOnline());
        QCOMPARE(returned.count(), 1);
    }

    void readsNeverSeenFailAsBefore()
    {
        QCOMPARE(run([](auto end, auto success, auto failure) {
                     helper()->getGameListWithType("top", "1", {}, end, success, failure);
                 }).order,
                 (QStringList{"end", "success"}));
        m_store->stop();
        // Another page of the same list was never fetched.
        const Outcome other = run([](auto end, auto success, auto failure) {
            helper()->getGameListWithType("top", "2", {}, end, success, failure);
        });
        QCOMPARE(other.order, (QStringList{"end", "failure"}));
        QCOMPARE(other.message, UnreadableText);
        QVERIFY(!offline()->answeredFromCache());
    }

    void userRequestsAndWritesAreNotKept_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::newRow("cart (GET)") << Operation([](auto end, auto success, auto failure) {
            helper()->getCartDataWithStartFn({}, end, success, failure);
        });
        QTest::newRow("owned games (GET)") << Operation([](auto end, auto success, auto failure) {
            helper()->getMyGamesWithStartFn({}, end, success, failure);
        });
        QTest::newRow("add to cart (GET)") << Operation([](auto end, auto success, auto failure) {
            helper()->addGoodsToCartWithGameIds("2", {}, end, success, failure);
        });
        QTest::newRow("orders (GET)") << Operation([](auto end, auto success, auto failure) {
            helper()->getMyOrderListWithType("all", "1", {}, end, success, failure);
        });
        QTest::newRow("sign in (POST)") << Operation([](auto end, auto success, auto failure) {
            helper()->signInWithAccountEmail("13800138000", "tarvel2024", {}, end, success,
                                             failure);
        });
        QTest::newRow("remove from cart (POST)")
                << Operation([](auto end, auto success, auto failure) {
                       helper()->removeGoodsFromCartWithGameIds("2", {}, end, success, failure);
                   });
    }

    void userRequestsAndWritesAreNotKept()
    {
        QFETCH(Operation, operation);
        QVERIFY(signInDemoAccount());
        const Outcome live = run(operation);
        QCOMPARE(live.order.value(0), QStringLiteral("end"));
        QCOMPARE(helper()->answerCache()->count(), 0);

        m_store->stop();
        const Outcome down = run(operation);
        QCOMPARE(down.order, (QStringList{"end", "failure"}));
        QCOMPARE(down.message, UnreadableText);
        QVERIFY(!offline()->answeredFromCache());
    }

    void onlyAnUnreachableStoreIsAnsweredFromKeptAnswers_data()
    {
        QTest::addColumn<ScriptedResponse>("second");
        QTest::addColumn<QStringList>("order");
        QTest::addColumn<QString>("message");
        QTest::newRow("error page from a live store")
                << ScriptedResponse::text("<html>down</html>", "text/html", 502)
                << QStringList{"end", "failure"} << UnreadableText;
        QTest::newRow("refusal envelope from a live store")
                << ScriptedResponse::json(R"({"status":"error","message":"维护中"})", 503)
                << QStringList{"end", "failure"} << QStringLiteral("维护中");
        QTest::newRow("no answer within the time-out")
                << ScriptedResponse::hang() << QStringList{"end", "success"} << QString();
    }

    void onlyAnUnreachableStoreIsAnsweredFromKeptAnswers()
    {
        QFETCH(ScriptedResponse, second);
        QFETCH(QStringList, order);
        QFETCH(QString, message);
        // No probe while the scripted server stands in for the store.
        offline()->setProbeIntervals(60000, 60000);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        pointApiAt(server.baseUrl());
        server.enqueue(ScriptedResponse::json(R"({"status":"success","data":{"focus_recs":[]}})"));
        server.enqueue(second);
        const Operation home = [](auto end, auto success, auto failure) {
            helper()->getHomepageDataWithStartFn({}, end, success, failure);
        };
        QCOMPARE(run(home).order, (QStringList{"end", "success"}));

        helper()->networkManager()->setTransferTimeout(300);
        const Outcome outcome = run(home);
        helper()->networkManager()->setTransferTimeout(NetWorkHelper::DefaultTimeoutMs);
        QCOMPARE(outcome.order, order);
        QCOMPARE(outcome.message, message);
        if (order.contains("success"))
            QCOMPARE(outcome.data.toMap().value("focus_recs"), QVariant(QVariantList()));
        QCOMPARE(offline()->answeredFromCache(), order.contains("success"));
        pointApiAt(m_store->baseUrl());
        offline()->setProbeIntervals(20, 200);
    }

    void homeStartsOfflineWithTheKeptCatalogue()
    {
        // A first visit with the store up: the carousel and the first page of "latest".
        {
            auto *home = new TabOneViewController;
            ScreenHost host(home);
            QVERIFY(waitForFirstPage(home));
            QVERIFY(home->labelOffline()->isHidden());
        }
        const QVariantList banners = [] {
            QVariantList kept;
            helper()->getHomepageDataWithStartFn(
                    {}, {},
                    [&kept](const QVariant &data, const QVariant &) {
                        kept = data.toMap().value("focus_recs").toList();
                    },
                    [](const QVariant &, const QString &, const QVariant &) {});
            if (!QTest::qWaitFor([&kept] { return !kept.isEmpty(); }, 10000))
                qWarning("no home data");
            return kept;
        }();
        QVERIFY(!banners.isEmpty());

        // The next start finds no store.
        m_store->stop();
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(waitForFirstPage(home));
        QCOMPARE(home->arrayImageBanner(), banners);
        QVERIFY(!home->arraySource().isEmpty());
        QCOMPARE(home->collectionMenu()->count(), home->arraySource().size());
        QVERIFY(!home->labelOffline()->isHidden());
        QCOMPARE(home->labelOffline()->text(), OfflineText);
        QVERIFY(!HudRecorder::shared().history().contains(UnreadableText));

        // A sort tab never opened has nothing kept: it fails as it does with no network.
        home->clickButtonSort(home->scrollSort().at(3));
        QTRY_VERIFY(HudRecorder::shared().history().contains(UnreadableText));
        QVERIFY(!home->labelOffline()->isHidden());

        // The store returns: the notice goes and the page loads again by itself.
        HudRecorder::shared().clear();
        m_store->startAgain();
        QTRY_VERIFY_WITH_TIMEOUT(home->labelOffline()->isHidden(), 15000);
        QTRY_VERIFY(HudRecorder::shared().records().contains(
                HudRecorder::Record{Hud::Progress, QStringLiteral("正在加载"), true}));
        QVERIFY(waitForFirstPage(home));
        QCOMPARE(home->viewType(), QStringLiteral("latest"));
        QVERIFY(!home->arraySource().isEmpty());
        QVERIFY(!HudRecorder::shared().history().contains(UnreadableText));
    }

    void coversComeFromTheDiskWithoutNetwork()
    {
        QUrl cover;
        {
            auto *home = new TabOneViewController;
            ScreenHost host(home);
            QVERIFY(waitForFirstPage(home));
            cover = QUrl(home->collectionMenu()->get(0).value("imageUrl").toString());
        }
        QVERIFY(cover.isValid());
        platform::ImageNetworkFactory factory;
        QByteArray picture;
        {
            std::unique_ptr<QNetworkAccessManager> network(factory.create(nullptr));
            picture = fetch(*network, cover).first;
            QVERIFY(!picture.isEmpty());
        }
        m_store->stop();
        // A manager of its own, as after a relaunch: only the disk holds the picture.
        std::unique_ptr<QNetworkAccessManager> offlineNetwork(factory.create(nullptr));
        const auto [kept, fromCache] = fetch(*offlineNetwork, cover);
        QCOMPARE(kept, picture);
        QVERIFY(fromCache);
        // A picture never shown is not there.
        QUrl other = cover;
        other.setPath(cover.path() + QStringLiteral("x"));
        QVERIFY(fetch(*offlineNetwork, other).first.isEmpty());
    }

    void homeWithNothingKeptFailsAsBefore()
    {
        m_store->stop();
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QTRY_VERIFY(HudRecorder::shared().history().contains(UnreadableText));
        QVERIFY(home->buttonRefresh());
        QCOMPARE(home->buttonRefresh()->title(), QStringLiteral("暂无数据,点击刷新"));
        QVERIFY(home->labelOffline()->isHidden());
        QVERIFY(home->arraySource().isEmpty());
    }
};

TARVEL_TEST_MAIN(TestOffline)
#include "tst_offline.moc"
