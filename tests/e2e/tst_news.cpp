#include "HudRecorder.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "screens/store/NewsDetailViewController.h"
#include "screens/store/TabFiveViewController.h"
#include "screens/store/TabTwoViewController.h"

#include <QSignalSpy>
#include <QTcpServer>

using namespace tarvel::test;
using platform::Hud;

// The news list, the news page and the category screen.
class TestNews : public QObject
{
    Q_OBJECT

    std::unique_ptr<ScriptedHttpServer> m_server;

private slots:
    void init()
    {
        resetSharedState();
        m_server = std::make_unique<ScriptedHttpServer>();
        QVERIFY(m_server->listen());
        NewsDetailViewController::setDefaultPageAddress(QUrl(m_server->baseUrl() + "/news"));
    }

    void listRows()
    {
        auto *news = new TabFiveViewController;
        ScreenHost host(news);
        settle();
        QCOMPARE(news->title(), QStringLiteral("资讯公告"));
        QVERIFY(!host.tabBar()->isHide());
        QCOMPARE(news->numberOfRows(), 23);
        QCOMPARE(news->mainTable()->count(), 23);
        for (int row = 0; row < 23; ++row) {
            QCOMPARE(news->heightForRow(row), 34.0);
            QCOMPARE(news->mainTable()->get(row).value("identifier").toString(),
                     QStringLiteral("NewsTableViewCell"));
        }
        QVERIFY(news->arraySource().isEmpty());
    }

    void refreshingNeverChangesTheRows_data()
    {
        QTest::addColumn<bool>("pullDown");
        QTest::addColumn<int>("pageAfter");
        QTest::newRow("pull-down goes back to page 1") << true << 1;
        QTest::newRow("pull-up counts a page on") << false << 3;
    }

    void refreshingNeverChangesTheRows()
    {
        QFETCH(bool, pullDown);
        auto *news = new TabFiveViewController;
        ScreenHost host(news);
        settle();
        // Start from page 2 so that both directions show.
        news->refreshFooter()->pullUp();
        QTRY_VERIFY_WITH_TIMEOUT(!news->refreshFooter()->isLoading(), 3000);
        QCOMPARE(news->pageMain(), 2);
        const QList<QVariantMap> rowsBefore = news->mainTable()->rows();
        HudRecorder::shared().clear();

        if (pullDown)
            news->refreshHeader()->beginRefreshing();
        else
            news->refreshFooter()->pullUp();
        QVERIFY(Hud::shared().isVisible());
        QCOMPARE(Hud::shared().text(), QStringLiteral("加载中..."));
        QCOMPARE(news->pageMain(), 2); // nothing happens before the pretended load is over
        QTRY_VERIFY_WITH_TIMEOUT(!Hud::shared().isVisible(), 3000);
        QTEST(news->pageMain(), "pageAfter");
        QVERIFY(!news->refreshHeader()->isRefreshing());
        QVERIFY(!news->refreshFooter()->isLoading());
        QCOMPARE(news->mainTable()->rows(), rowsBefore);
        QCOMPARE(news->mainTable()->count(), 23);
        QCOMPARE(HudRecorder::shared().history(), QStringList{QStringLiteral("加载中...")});
    }

    void rowOpensTheNewsPage()
    {
        auto *news = new TabFiveViewController;
        ScreenHost host(news);
        settle();
        QSignalSpy deselected(news, &TabFiveViewController::rowDeselected);
        m_server->route("/news", ScriptedResponse::text("<html></html>", "text/html"));
        news->didSelectRowAtIndex(5);
        QCOMPARE(deselected.size(), 1);
        QCOMPARE(deselected.first().first().toInt(), 5);
        QVERIFY(qobject_cast<NewsDetailViewController *>(host.top()));
        news->didSelectRowAtIndex(23); // no such row
        QCOMPARE(host.depth(), 2);
    }

    void newsPageLoads()
    {
        m_server->route("/news",
                        ScriptedResponse::text("<html><head><title>Tarvel 资讯中心</title></head>"
                                               "<body>新闻</body></html>",
                                               "text/html; charset=utf-8"));
        auto *root = new platform::ViewController;
        ScreenHost host(root);
        auto *page = new NewsDetailViewController;
        host.navigation()->pushViewController(page, false);
        QCOMPARE(page->title(), QStringLiteral("资讯详情"));
        QCOMPARE(page->leftBarItem()->imageName(), QStringLiteral("common_navBackBlack"));
        QCOMPARE(page->rightBarItem()->imageName(), QStringLiteral("common_share"));
        QTRY_COMPARE(page->loadState(), NewsDetailViewController::Loaded);
        QCOMPARE(page->pageTitle(), QStringLiteral("Tarvel 资讯中心"));
        QCOMPARE(HudRecorder::shared().records().first(),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在加载"), false}));
        QVERIFY(!Hud::shared().isVisible());
        QVERIFY(host.tabBar()->isHide());
        QCOMPARE(m_server->lastRequest().path, QStringLiteral("/news"));

        // Share: the fixed title (written unlike the list's), content and the page's address.
        QVERIFY(page->rightBarItem()->tap());
        QVERIFY(page->shareView()->isShown());
        QCOMPARE(page->shareView()->StrTitle(), QStringLiteral("咨询公告"));
        QCOMPARE(page->shareView()->StrContent(), QStringLiteral("内容"));
        QCOMPARE(page->shareView()->StrImageUrl(), QString(""));
        QCOMPARE(page->shareView()->StrUrl(), m_server->baseUrl() + "/news");
        page->shareView()->hideView();

        page->openInBrowser();
        QCOMPARE(platform::UrlOpener::shared().lastOpenedURL(),
                 QUrl(m_server->baseUrl() + "/news"));

        QVERIFY(page->leftBarItem()->tap());
        QCOMPARE(host.depth(), 1);
    }

    void failedLoadLeavesThePageBlank_data()
    {
        QTest::addColumn<bool>("refused");
        QTest::addColumn<ScriptedResponse>("answer");
        QTest::newRow("no server") << true << ScriptedResponse();
        QTest::newRow("server error")
                << false << ScriptedResponse::text("<title>错误</title>", "text/html", 500);
        QTest::newRow("connection dropped mid-page")
                << false << ScriptedResponse::closeMidBody("<html><title>半个</title></html>");
    }

    void failedLoadLeavesThePageBlank()
    {
        QFETCH(bool, refused);
        QFETCH(ScriptedResponse, answer);
        if (refused) {
            QTcpServer closed;
            QVERIFY(closed.listen(QHostAddress::LocalHost));
            const quint16 port = closed.serverPort();
            closed.close();
            NewsDetailViewController::setDefaultPageAddress(
                    QUrl(QStringLiteral("http://127.0.0.1:%1/news").arg(port)));
        } else {
            m_server->route("/news", answer);
        }
        auto *root = new platform::ViewController;
        ScreenHost host(root);
        auto *page = new NewsDetailViewController;
        host.navigation()->pushViewController(page, false);
        QTRY_COMPARE(page->loadState(), NewsDetailViewController::Failed);
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(Hud::shared().text(), QStringLiteral("加载失败"));
        QVERIFY(page->pageTitle().isEmpty());

        // Loading again once the page is there works.
        NewsDetailViewController::setDefaultPageAddress(QUrl(m_server->baseUrl() + "/news"));
        m_server->route("/news", ScriptedResponse::text("<title>好了</title>", "text/html"));
        auto *again = new NewsDetailViewController;
        host.navigation()->pushViewController(again, false);
        QTRY_COMPARE(again->loadState(), NewsDetailViewController::Loaded);
        QCOMPARE(again->pageTitle(), QStringLiteral("好了"));
    }

    void categoryScreen()
    {
        auto *root = new platform::ViewController;
        ScreenHost host(root);
        auto *categories = new TabTwoViewController;
        root->presentViewController(categories, false);
        settle();
        QCOMPARE(categories->title(), QStringLiteral("分类"));
        QCOMPARE(categories->categories()->count(), 4);
        QSignalSpy chosen(categories, &TabTwoViewController::categorySelected);
        QPointer<TabTwoViewController> guard(categories);
        categories->didSelectCategoryAtIndex(2);
        QCOMPARE(chosen.size(), 1);
        QCOMPARE(chosen.first().first().toString(), QStringLiteral("onsale"));
        settle();
        QCOMPARE(host.window()->presentedCount(), 0);

        auto *again = new TabTwoViewController;
        root->presentViewController(again, false);
        settle();
        QVERIFY(again->leftBarItem()->tap()); // back dismisses
        settle();
        QCOMPARE(host.window()->presentedCount(), 0);
    }
};

TARVEL_TEST_MAIN(TestNews)
#include "tst_news.moc"
