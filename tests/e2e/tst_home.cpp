#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"

#include "app/AppDelegate.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/store/ICPageControl.h"
#include "screens/store/SearchDetailViewController.h"
#include "screens/store/TabOneViewController.h"
#include "service/NetWorkHelper.h"

#include <QJsonDocument>
#include <QSet>
#include <QTcpServer>

using namespace tarvel::test;
using platform::Hud;
using platform::RefreshFooter;
using platform::UrlOpener;

namespace {

// The first page of one of the store's lists, fetched past the screen.
QStringList firstPageIds(const QString &type)
{
    QStringList ids;
    bool done = false;
    NetWorkHelper::shareInstance()->getGameListWithType(
            type, QStringLiteral("1"), {}, {},
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

QStringList idsOf(const QList<Object_HomeGames> &games)
{
    QStringList ids;
    for (const Object_HomeGames &game : games)
        ids.append(game.id);
    return ids;
}

// Shows the home page and waits for its first page of games.
bool waitForFirstPage(TabOneViewController *home)
{
    return QTest::qWaitFor(
            [&] {
                return !home->buttonRefresh() && home->pageNum() == 2
                       && !home->refreshHeader()->isRefreshing();
            },
            15000);
}

bool pullUpAndWait(TabOneViewController *home)
{
    home->refreshFooter()->pullUp();
    return QTest::qWaitFor([&] { return !home->refreshFooter()->isLoading(); }, 15000);
}

} // namespace

// The home page against a running tarvel-store: first load, carousel, sort tabs, paging to the
// end of the catalogue, search and the cart badge.
class TestHome : public QObject
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

    void firstLoad()
    {
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        // Until the first answer the retry button covers the screen and the search field hides.
        QVERIFY(home->buttonRefresh());
        QCOMPARE(home->buttonRefresh()->title(), QStringLiteral("暂无数据,点击刷新"));
        QVERIFY(waitForFirstPage(home));

        QCOMPARE(HudRecorder::shared().records().first(),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在加载"), true}));
        QVERIFY(!Hud::shared().isVisible());
        QVERIFY(!home->fieldSearch()->isHidden());
        QCOMPARE(home->fieldSearch()->placeholder(), QStringLiteral("请输入游戏名称"));
        QCOMPARE(home->fieldSearch()->leftImageName(), QStringLiteral("homepage_search"));

        // The store has five carousel entries; the dots follow them.
        const int banners = int(home->arrayImageBanner().size());
        QCOMPARE(banners, 5);
        QCOMPARE(home->scrollBanner()->count(), banners);
        QCOMPARE(home->pageControl()->numberOfPages(), banners);
        QCOMPARE(home->pageControl()->currentPage(), 0);
        QVERIFY(home->scrollBanner()
                        ->get(0)
                        .value("imageUrl")
                        .toString()
                        .endsWith(QStringLiteral("?imageView2/2/w/375/q/85")));

        QCOMPARE(home->viewType(), QStringLiteral("latest"));
        QCOMPARE(idsOf(home->arraySource()), firstPageIds(QStringLiteral("latest")));
        QCOMPARE(home->collectionMenu()->count(), home->arraySource().size());
        QVERIFY(home->scrollSort().at(0)->isSelected());

        // Appearance: a see-through bar, the search field at 0.9, the tab strip shown.
        QVERIFY(home->isNavigationBarTransparent());
        QCOMPARE(home->titleViewAlpha(), 0.9);
        QVERIFY(!host.tabBar()->isHide());
    }

    void sortTabs_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("image");
        QTest::newRow("latest") << 0 << "latest"
                                << "homepage_sort1";
        QTest::newRow("recommended") << 1 << "rec"
                                     << "homepage_sort2";
        QTest::newRow("on sale") << 2 << "onsale"
                                 << "homepage_sort3";
        QTest::newRow("best selling") << 3 << "top"
                                      << "homepage_sort4";
    }

    void sortTabs()
    {
        QFETCH(int, tag);
        QFETCH(QString, key);
        QFETCH(QString, image);
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(waitForFirstPage(home));
        QCOMPARE(home->scrollSort().size(), 4);

        platform::Button *button = home->scrollSort().at(tag);
        QCOMPARE(button->tag(), tag);
        // The "_select" picture is the normal state's, the plain one the selected state's.
        QCOMPARE(button->backgroundImageName(), image + QStringLiteral("_select"));
        QCOMPARE(button->selectedBackgroundImageName(), image);

        QVERIFY(button->tap());
        QCOMPARE(home->viewType(), key);
        QCOMPARE(home->pageNum(), 1);
        QVERIFY(home->refreshHeader()->isRefreshing());
        QVERIFY(waitForFirstPage(home));
        for (platform::Button *each : home->scrollSort())
            QCOMPARE(each->isSelected(), each == button);
        QCOMPARE(idsOf(home->arraySource()), firstPageIds(key));
    }

    void pagingToTheEndOfTheCatalogue()
    {
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(waitForFirstPage(home));

        int pulls = 0;
        while (home->refreshFooter()->state() != RefreshFooter::NoMoreData && pulls < 30) {
            QVERIFY(pullUpAndWait(home));
            ++pulls;
        }
        QCOMPARE(home->refreshFooter()->text(), QStringLiteral("没有更多了"));
        const QStringList ids = idsOf(home->arraySource());
        QCOMPARE(QSet<QString>(ids.begin(), ids.end()).size(), ids.size()); // no page twice
        QVERIFY(ids.size() > 150);
        QCOMPARE(home->collectionMenu()->count(), ids.size());
        // The empty page was counted too: the next pull asks for the page after it.
        const int afterEmpty = home->pageNum();
        QCOMPARE(afterEmpty, pulls + 2);
        QVERIFY(pullUpAndWait(home));
        QCOMPARE(home->pageNum(), afterEmpty + 1);
        QCOMPARE(home->refreshFooter()->state(), RefreshFooter::NoMoreData);
        QCOMPARE(home->arraySource().size(), ids.size());

        // Pull-down starts over with the first page and forgets the end.
        home->refreshHeader()->beginRefreshing();
        QVERIFY(waitForFirstPage(home));
        QCOMPARE(home->refreshFooter()->state(), RefreshFooter::Idle);
        QCOMPARE(idsOf(home->arraySource()), firstPageIds(QStringLiteral("latest")));
    }

    void carouselOfTheStore()
    {
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(waitForFirstPage(home));
        const QVariantList banners = home->arrayImageBanner();
        for (int tag = 0; tag < banners.size(); ++tag) {
            const QString url = banners.at(tag).toMap().value("url").toString();
            UrlOpener::shared().clearHistory();
            home->clickImageBanner(tag);
            if (url.startsWith(QLatin1String("/products/"))) {
                QVERIFY(isGoodsDetail(host.top()));
                QCOMPARE(gameIdOf(host.top()), url.section(QLatin1Char('/'), -1));
                host.navigation()->popToRootViewController(false);
            } else {
                QCOMPARE(host.depth(), 1);
                QCOMPARE(UrlOpener::shared().openedURLs(), QList<QUrl>{QUrl(url)});
            }
        }
        // The dots follow the carousel when it settles, by whole pages.
        home->scrollViewDidEndDecelerating(2 * home->screenWidth() + 40);
        QCOMPARE(home->pageControl()->currentPage(), 2);
    }

    void searchFieldOpensSearch_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a title") << "星际";
        QTest::newRow("an empty box is passed on as it is") << "";
    }

    void searchFieldOpensSearch()
    {
        QFETCH(QString, text);
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(waitForFirstPage(home));
        home->fieldSearch()->setText(text);
        home->fieldSearch()->becomeFirstResponder();
        home->fieldSearch()->pressReturn();
        QVERIFY(!home->fieldSearch()->isFirstResponder());
        auto *search = qobject_cast<SearchDetailViewController *>(host.top());
        QVERIFY(search);
        QCOMPARE(search->strSearch(), text);
    }

    void cartBadge_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("three in the cart") << QVariant("3") << "3" << false;
        QTest::newRow("0 hides the badge") << QVariant("0") << "0" << true;
        QTest::newRow("nothing stored hides the badge") << QVariant() << "" << true;
    }

    void cartBadge()
    {
        QFETCH(QVariant, stored);
        if (stored.isValid())
            platform::UserDefaults::standard().setObject(stored, QStringLiteral("cartnum"));
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(QTest::qWaitFor([&] { return home->labelRedDot() != nullptr; }, 5000));
        QTEST(home->labelRedDot()->text(), "text");
        QTEST(home->labelRedDot()->isHidden(), "hidden");
        QCOMPARE(AppDelegate::shared()->labelRedDot(), home->labelRedDot());
        QVERIFY(waitForFirstPage(home));
    }

    void retryAfterAFailedStart()
    {
        // Nothing listens there: the start fails.
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const quint16 deadPort = closed.serverPort();
        closed.close();
        pointApiAt(QStringLiteral("http://127.0.0.1:%1").arg(deadPort));

        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QVERIFY(QTest::qWaitFor([] { return Hud::shared().kind() == Hud::Error; }, 20000));
        QVERIFY(!Hud::shared().text().isEmpty());
        QVERIFY(home->buttonRefresh());
        QVERIFY(home->fieldSearch()->isHidden());
        QCOMPARE(home->collectionMenu()->count(), 0);

        pointApiAt(m_store->baseUrl());
        QVERIFY(home->buttonRefresh()->tap());
        QVERIFY(waitForFirstPage(home));
        QCOMPARE(home->arraySource().size(), 20);
        settle();
        QVERIFY(!home->buttonRefresh());
    }
};

TARVEL_TEST_MAIN(TestHome)
#include "tst_home.moc"
