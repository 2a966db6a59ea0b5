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

using namespace tarvel::test;
using platform::Hud;

// The news list, the way to the news page and the category screen (the page itself, in the web
// view, is tested with the other web pages).
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
