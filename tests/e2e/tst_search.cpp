#include "InProcessStore.h"
#include "NetWorkReplies.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Label.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/store/SearchDetailViewController.h"
#include "service/NetWorkHelper.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tarvel::test;
using platform::Hud;
using platform::RefreshFooter;

namespace {

QStringList idsOf(const QList<Object_SearchGames> &games)
{
    QStringList ids;
    for (const Object_SearchGames &game : games)
        ids.append(game.id);
    return ids;
}

// One page of the store's search, fetched past the screen.
QStringList searchIds(const QString &q, int page)
{
    QStringList ids;
    bool done = false;
    NetWorkHelper::shareInstance()->searchGameWithQ(
            q, QString::number(page), {}, {},
            [&](const QVariant &data, const QVariant &) {
                for (const QVariant &game : data.toList())
                    ids.append(game.toMap().value(QStringLiteral("id")).toString());
                done = true;
            },
            [&](const QVariant &, const QString &, const QVariant &) { done = true; });
    if (!QTest::qWaitFor([&] { return done; }, 10000))
        qWarning("no answer from the store");
    return ids;
}

bool waitForFirstPage(SearchDetailViewController *search)
{
    return QTest::qWaitFor(
            [&] { return search->pageNum() == 2 && !search->refreshHeader()->isRefreshing(); },
            10000);
}

bool pullUpAndWait(SearchDetailViewController *search)
{
    search->refreshFooter()->pullUp();
    return QTest::qWaitFor([&] { return !search->refreshFooter()->isLoading(); }, 10000);
}

QByteArray envelope(const QJsonValue &data)
{
    return QJsonDocument(QJsonObject{{"status", "success"}, {"data", data}, {"message", ""}})
            .toJson(QJsonDocument::Compact);
}

QByteArray results(const QStringList &ids)
{
    QJsonArray list;
    for (const QString &id : ids)
        list.append(QJsonObject{{"id", id.toInt()},
                                {"title", "搜索" + id},
                                {"list_price", "30"},
                                {"sale_price", "15"},
                                {"release_date", "1480125600"},
                                {"product_image", "http://cdn.test/c.jpg"}});
    return envelope(list);
}

} // namespace

// The search results screen against a running tarvel-store and against exact answers.
class TestSearch : public QObject
{
    Q_OBJECT

    std::unique_ptr<InProcessStore> m_store;

private slots:
    void initTestCase()
    {
        StoreOptions options;
        options.requestLog = nullptr;
        options.outboxLog = nullptr;
        m_store = std::make_unique<InProcessStore>(options);
        QVERIFY(m_store->isRunning());
    }

    void init()
    {
        pointApiAt(m_store->baseUrl());
        resetSharedState();
    }

    void emptyBoxStillSearchesOnce()
    {
        auto *search = new SearchDetailViewController(QString());
        ScreenHost host(search);
        QVERIFY(waitForFirstPage(search));
        QCOMPARE(idsOf(search->arraySource()), searchIds(QString(), 1));
        QCOMPARE(search->arraySource().size(), 20);
        QCOMPARE(search->labelTitle()->text(), QStringLiteral("搜索到相关游戏20款"));
        QCOMPARE(search->collectionMenu()->count(), 20);

        QCOMPARE(search->title(), QString());
        QCOMPARE(search->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QCOMPARE(search->fieldSearch()->placeholder(), QStringLiteral("请输入游戏名称"));
        QCOMPARE(search->fieldSearch()->leftImageName(), QStringLiteral("common_search"));
        QVERIFY(host.tabBar()->isHide());
    }

    void searchOfATitle()
    {
        auto *search = new SearchDetailViewController(QStringLiteral("星际"));
        ScreenHost host(search);
        QVERIFY(waitForFirstPage(search));
        QCOMPARE(search->fieldSearch()->text(), QStringLiteral("星际"));
        const QStringList expected = searchIds(QStringLiteral("星际"), 1);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(idsOf(search->arraySource()), expected);
        QVERIFY(search->arraySource().first().title.contains(QStringLiteral("星际")));
        QCOMPARE(search->labelTitle()->text(),
                 QStringLiteral("搜索到相关游戏%1款").arg(expected.size()));
    }

    void pagingCountsWhatIsLoaded()
    {
        auto *search = new SearchDetailViewController(QString());
        ScreenHost host(search);
        QVERIFY(waitForFirstPage(search));
        int loaded = 20;
        int pulls = 0;
        while (pulls < 20) {
            QVERIFY(pullUpAndWait(search));
            ++pulls;
            QCOMPARE(search->pageNum(), 2 + pulls);
            const int now = int(search->arraySource().size());
            QCOMPARE(search->labelTitle()->text(), QStringLiteral("搜索到相关游戏%1款").arg(now));
            if (now == loaded)
                break; // an empty page: nothing added
            loaded = now;
        }
        QVERIFY(loaded > 150);
        // The search never marks its end: further pulls keep asking.
        QCOMPARE(search->refreshFooter()->state(), RefreshFooter::Idle);
        QVERIFY(pullUpAndWait(search));
        QCOMPARE(search->pageNum(), 3 + pulls);
        QCOMPARE(search->arraySource().size(), loaded);
    }

    void secondSearchReplacesResultsAndPaging()
    {
        auto *search = new SearchDetailViewController(QString());
        ScreenHost host(search);
        QVERIFY(waitForFirstPage(search));
        QVERIFY(pullUpAndWait(search));
        QCOMPARE(search->pageNum(), 3);
        QCOMPARE(search->arraySource().size(), 40);

        search->fieldSearch()->setText(QStringLiteral("stellar"));
        search->fieldSearch()->becomeFirstResponder();
        search->fieldSearch()->pressReturn();
        QVERIFY(!search->fieldSearch()->isFirstResponder());
        QCOMPARE(search->pageNum(), 1);
        QVERIFY(waitForFirstPage(search));
        const QStringList expected = searchIds(QStringLiteral("stellar"), 1);
        QCOMPARE(idsOf(search->arraySource()), expected);
        QCOMPARE(search->labelTitle()->text(),
                 QStringLiteral("搜索到相关游戏%1款").arg(expected.size()));
    }

    void tappingAResultOpensItsDetail()
    {
        auto *search = new SearchDetailViewController(QStringLiteral("stellar"));
        ScreenHost host(search);
        QVERIFY(waitForFirstPage(search));
        QVERIFY(!search->arraySource().isEmpty());
        search->clickCellAtIndex(0);
        QVERIFY(isGoodsDetail(host.top()));
        QCOMPARE(gameIdOf(host.top()), search->arraySource().at(0).id);
    }

    void exactRequestsAndFailures()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        pointApiAt(server.baseUrl());
        server.enqueue(ScriptedResponse::json(results({"1", "2"})));
        auto *search = new SearchDetailViewController(QString());
        ScreenHost host(search);
        QVERIFY(server.waitForRequests(1));
        QVERIFY(waitForFirstPage(search));
        const RecordedRequest first = server.lastRequest();
        QCOMPARE(first.path, QStringLiteral("/store/search.json"));
        QVERIFY(first.query.hasQueryItem("q")); // sent even when empty
        QCOMPARE(first.query.queryItemValue("q"), QString());
        QCOMPARE(first.query.queryItemValue("page"), QStringLiteral("1"));

        // A failing further page keeps what is shown.
        server.enqueue(ScriptedResponse::json(
                R"({"status":"error","data":null,"message":"搜索服务暂不可用"})", 503));
        QVERIFY(pullUpAndWait(search));
        QCOMPARE(server.lastRequest().query.queryItemValue("page"), QStringLiteral("2"));
        QTRY_COMPARE(Hud::shared().text(), QStringLiteral("搜索服务暂不可用"));
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(idsOf(search->arraySource()), QStringList({"1", "2"}));
        QCOMPARE(search->pageNum(), 2);
        QCOMPARE(search->labelTitle()->text(), QStringLiteral("搜索到相关游戏2款"));
    }

    void newSearchWinsOverASlowOne()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        pointApiAt(server.baseUrl());
        server.enqueue(ScriptedResponse::json(results({"1", "2", "3"})).withDelay(400));
        server.enqueue(ScriptedResponse::json(results({"9"})));
        auto *search = new SearchDetailViewController(QStringLiteral("慢"));
        ScreenHost host(search);
        QVERIFY(server.waitForRequests(1));
        search->fieldSearch()->setText(QStringLiteral("快"));
        search->fieldSearch()->pressReturn();
        QVERIFY(server.waitForRequests(2));
        QCOMPARE(server.lastRequest().query.queryItemValue("q"), QStringLiteral("快"));
        QTRY_COMPARE(idsOf(search->arraySource()), QStringList({"9"}));
        QTRY_COMPARE(repliesAlive(), 0); // the earlier, slower answer has come too
        QCOMPARE(idsOf(search->arraySource()), QStringList({"9"}));
        QCOMPARE(search->labelTitle()->text(), QStringLiteral("搜索到相关游戏1款"));
        QVERIFY(!search->refreshHeader()->isRefreshing());
    }
};

TARVEL_TEST_MAIN(TestSearch)
#include "tst_search.moc"
