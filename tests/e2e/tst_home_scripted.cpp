#include "HudRecorder.h"
#include "NetWorkReplies.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"

#include "platform/ui/Button.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "screens/store/ICPageControl.h"
#include "screens/store/TabOneViewController.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace tarvel::test;
using platform::Hud;
using platform::RefreshFooter;
using platform::UrlOpener;

namespace {

QByteArray envelope(const QJsonValue &data)
{
    return QJsonDocument(QJsonObject{{"status", "success"}, {"data", data}, {"message", ""}})
            .toJson(QJsonDocument::Compact);
}

QJsonObject game(const QString &id, const QString &list = "99", const QString &sale = "99",
                 const QString &releaseDate = "1480125600",
                 const QString &image = "http://cdn.test/covers/1.jpg")
{
    return {{"id", id.toInt()},        {"title", "游戏" + id},        {"list_price", list},
            {"sale_price", sale},      {"release_date", releaseDate}, {"product_image", image},
            {"game_status", "on_sale"}};
}

QJsonArray games(const QStringList &ids)
{
    QJsonArray list;
    for (const QString &id : ids)
        list.append(game(id));
    return list;
}

QByteArray homeWithBanners(const QStringList &urls)
{
    QJsonArray recs;
    for (const QString &url : urls)
        recs.append(QJsonObject{{"img", "http://cdn.test/banner.jpg"}, {"url", url}});
    return envelope(QJsonObject{{"focus_recs", recs}});
}

QStringList idsOf(const QList<Object_HomeGames> &list)
{
    QStringList ids;
    for (const Object_HomeGames &each : list)
        ids.append(each.id);
    return ids;
}

} // namespace

// The home page against exact answers: the carousel's tap rule, answers without a carousel,
// paging after an empty page, failures and answers that arrive after the user moved on.
class TestHomeScripted : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedHttpServer> m_server;

    // Shows the home page with the given home answer and first page, and waits for both.
    void showHome(ScreenHost **host, TabOneViewController **home, const QByteArray &homeAnswer,
                  const QJsonArray &firstPage)
    {
        m_server->enqueue(ScriptedResponse::json(homeAnswer));
        m_server->enqueue(ScriptedResponse::json(envelope(firstPage)));
        *home = new TabOneViewController;
        *host = new ScreenHost(*home);
        QVERIFY(m_server->waitForRequests(2));
        QVERIFY(QTest::qWaitFor([&] { return (*home)->pageNum() == 2; }, 5000));
    }

    bool pullUp(TabOneViewController *home, int requestsBefore)
    {
        home->refreshFooter()->pullUp();
        return m_server->waitForRequests(requestsBefore + 1)
               && QTest::qWaitFor([&] { return !home->refreshFooter()->isLoading(); }, 5000);
    }

private slots:
    void init()
    {
        m_server = std::make_unique<ScriptedHttpServer>();
        QVERIFY(m_server->listen());
        pointApiAt(m_server->baseUrl());
        resetSharedState();
    }

    void requestsAsTheStoreExpects()
    {
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, homeWithBanners({}), games({"1"}));
        std::unique_ptr<ScreenHost> owner(host);
        const QList<RecordedRequest> requests = m_server->requests();
        QCOMPARE(requests.at(0).method, QByteArray("GET"));
        QCOMPARE(requests.at(0).target, QByteArray("/store.json"));
        QCOMPARE(requests.at(1).path, QStringLiteral("/products.json"));
        QCOMPARE(requests.at(1).query.queryItemValue("type"), QStringLiteral("latest"));
        QCOMPARE(requests.at(1).query.queryItemValue("page"), QStringLiteral("1"));
    }

    void carouselTapRule_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("gameId"); // empty: the address goes to the system instead
        QTest::addColumn<QString>("opened");

        QTest::newRow("products/123 opens game 123") << "http://shop.test/products/123"
                                                     << "123"
                                                     << "";
        QTest::newRow("relative products/123") << "products/123"
                                               << "123"
                                               << "";
        QTest::newRow("store path /products/6") << "/products/6"
                                                << "6"
                                                << "";
        QTest::newRow("products/abc is not a game") << "http://shop.test/products/abc"
                                                    << ""
                                                    << "http://shop.test/products/abc";
        // A relative address opens under the store, as a message's link does.
        QTest::newRow("bare 123 has too few components") << "123"
                                                         << ""
                                                         << "{base}/123";
        QTest::newRow("a relative page without its slash") << "help/faq"
                                                           << ""
                                                           << "{base}/help/faq";
        QTest::newRow("another folder") << "http://shop.test/games/123"
                                        << ""
                                        << "http://shop.test/games/123";
        QTest::newRow("outside page") << "https://www.example.com/tarvel/summer-sale"
                                      << ""
                                      << "https://www.example.com/tarvel/summer-sale";
        QTest::newRow("a store page that is no game goes under the store") << "/help/faq"
                                                                           << ""
                                                                           << "{base}/help/faq";
    }

    void carouselTapRule()
    {
        QFETCH(QString, url);
        QFETCH(QString, gameId);
        QFETCH(QString, opened);
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, homeWithBanners({"http://elsewhere.test/", url}), games({"1"}));
        std::unique_ptr<ScreenHost> owner(host);

        home->clickImageBanner(1);
        if (!gameId.isEmpty()) {
            QVERIFY(isGoodsDetail(host->top()));
            QCOMPARE(gameIdOf(host->top()), gameId);
            QVERIFY(UrlOpener::shared().openedURLs().isEmpty());
        } else {
            QCOMPARE(host->depth(), 1);
            opened.replace(QStringLiteral("{base}"), m_server->baseUrl());
            QCOMPARE(UrlOpener::shared().openedURLs(), QList<QUrl>{QUrl(opened)});
        }
        // Tags past the carousel do nothing.
        home->clickImageBanner(2);
        home->clickImageBanner(-1);
        QCOMPARE(UrlOpener::shared().openedURLs().size(), gameId.isEmpty() ? 1 : 0);
    }

    void homeAnswerWithoutCarousel_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("no focus_recs") << envelope(QJsonObject{});
        QTest::newRow("focus_recs not a list") << envelope(QJsonObject{{"focus_recs", "x"}});
        QTest::newRow("data a list") << envelope(QJsonArray{1, 2});
        QTest::newRow("data null") << envelope(QJsonValue::Null);
    }

    void homeAnswerWithoutCarousel()
    {
        QFETCH(QByteArray, answer);
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, answer, games({"7", "8"}));
        std::unique_ptr<ScreenHost> owner(host);
        settle();
        // Still a successful start: the retry button is gone and the first list is loaded.
        QVERIFY(!home->buttonRefresh());
        QCOMPARE(idsOf(home->arraySource()), QStringList({"7", "8"}));
        QCOMPARE(home->scrollBanner()->count(), 0);
        QCOMPARE(home->pageControl()->numberOfPages(), 0);
        for (const HudRecorder::Record &record : HudRecorder::shared().records())
            QVERIFY(record.kind != Hud::Error);
    }

    void pagingAfterAnEmptyPage()
    {
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, homeWithBanners({}), games({"1", "2"}));
        std::unique_ptr<ScreenHost> owner(host);

        m_server->enqueue(ScriptedResponse::json(envelope(QJsonArray{})));
        QVERIFY(pullUp(home, 2));
        QCOMPARE(m_server->lastRequest().query.queryItemValue("page"), QStringLiteral("2"));
        QCOMPARE(home->refreshFooter()->text(), QStringLiteral("没有更多了"));
        QCOMPARE(home->pageNum(), 3);

        // Pulling again asks for the page after the empty one, and it is empty too.
        m_server->enqueue(ScriptedResponse::json(envelope(QJsonArray{})));
        QVERIFY(pullUp(home, 3));
        QCOMPARE(m_server->lastRequest().query.queryItemValue("page"), QStringLiteral("3"));
        QCOMPARE(home->refreshFooter()->text(), QStringLiteral("没有更多了"));
        QCOMPARE(home->pageNum(), 4);

        // A page that has games again is appended.
        m_server->enqueue(ScriptedResponse::json(envelope(games({"9"}))));
        QVERIFY(pullUp(home, 4));
        QCOMPARE(m_server->lastRequest().query.queryItemValue("page"), QStringLiteral("4"));
        QCOMPARE(idsOf(home->arraySource()), QStringList({"1", "2", "9"}));
        QCOMPARE(home->collectionMenu()->count(), 3);
        QCOMPARE(home->pageNum(), 5);
    }

    void failuresKeepTheGrid_data()
    {
        QTest::addColumn<ScriptedResponse>("answer");
        QTest::addColumn<QString>("message");
        QTest::newRow("error envelope on a 500") << ScriptedResponse::json(
                R"({"status":"error","data":null,"message":"服务器开小差了"})", 500)
                                                 << "服务器开小差了";
        QTest::newRow("fail envelope") << ScriptedResponse::json(
                R"({"status":"fail","data":{"page":"页码无效"},"message":"页码无效"})", 422)
                                       << "页码无效";
    }

    void failuresKeepTheGrid()
    {
        QFETCH(ScriptedResponse, answer);
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, homeWithBanners({}), games({"1", "2"}));
        std::unique_ptr<ScreenHost> owner(host);

        m_server->enqueue(answer);
        QVERIFY(pullUp(home, 2));
        QTRY_COMPARE(Hud::shared().kind(), Hud::Error);
        QTEST(Hud::shared().text(), "message");
        QCOMPARE(idsOf(home->arraySource()), QStringList({"1", "2"}));
        QCOMPARE(home->pageNum(), 2);
        QCOMPARE(home->refreshFooter()->state(), RefreshFooter::Idle);
    }

    void cellsOfTheGrid()
    {
        const QString future = QString::number(QDateTime::currentSecsSinceEpoch() + 86400 * 30);
        const QString now = QString::number(QDateTime::currentSecsSinceEpoch());
        const QJsonArray page{game("1", "99", "99", "1480125600", "/pictures/covers/1.jpg"),
                              game("2", "99", "99.00"), game("3", "168", "42", future),
                              game("4", "20", "10", now)};
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, homeWithBanners({}), page);
        std::unique_ptr<ScreenHost> owner(host);

        const QList<HomePageViewCell> cells = home->cells();
        QCOMPARE(cells.size(), 4);
        QCOMPARE(cells.at(0).labelOldPrice(), QString());
        QVERIFY(cells.at(0).isDiscountHidden());
        QCOMPARE(cells.at(0).imageGoods(),
                 HomePageViewCell::imageUrlWithWidth(m_server->baseUrl() + "/pictures/covers/1.jpg",
                                                     home->itemWidth(),
                                                     HomePageViewCell::screenScale()));
        QCOMPARE(cells.at(1).labelDiscount(), QStringLiteral("0%OFF "));
        QCOMPARE(cells.at(2).labelDiscount(), QStringLiteral("75%OFF "));
        // Released in the future: a pre-sale; released this second or before: not.
        QVERIFY(!cells.at(2).isPresellHidden());
        QVERIFY(cells.at(3).isPresellHidden());
        QVERIFY(cells.at(0).isPresellHidden());
        // The QML grid gets the same values.
        QCOMPARE(home->collectionMenu()->get(2).value("discount").toString(),
                 QStringLiteral("75%OFF "));
        QCOMPARE(home->collectionMenu()->get(2).value("title").toString(), QStringLiteral("游戏3"));
    }

    void answersForAnEarlierTabAreDropped()
    {
        ScreenHost *host = nullptr;
        TabOneViewController *home = nullptr;
        showHome(&host, &home, homeWithBanners({}), games({"1"}));
        std::unique_ptr<ScreenHost> owner(host);

        // "rec" is slow to answer; the user moves on to "top" before it arrives.
        m_server->enqueue(ScriptedResponse::json(envelope(games({"50", "51"}))).withDelay(400));
        m_server->enqueue(ScriptedResponse::json(envelope(games({"70"}))));
        QVERIFY(home->scrollSort().at(1)->tap());
        QVERIFY(m_server->waitForRequests(3));
        QVERIFY(home->scrollSort().at(3)->tap());
        QVERIFY(m_server->waitForRequests(4));
        QCOMPARE(m_server->lastRequest().query.queryItemValue("type"), QStringLiteral("top"));
        QTRY_COMPARE(idsOf(home->arraySource()), QStringList({"70"}));
        QTRY_COMPARE(repliesAlive(), 0); // the earlier tabs' slower answers have come too
        QCOMPARE(idsOf(home->arraySource()), QStringList({"70"}));
        QCOMPARE(home->viewType(), QStringLiteral("top"));
        QVERIFY(!home->refreshHeader()->isRefreshing());
    }
};

TARVEL_TEST_MAIN(TestHomeScripted)
#include "tst_home_scripted.moc"
