#include "HudRecorder.h"
#include "InProcessStore.h"
#include "NetWorkReplies.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/TextField.h"
#include "screens/account/NavRootViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/TabThreeViewController.h"
#include "screens/store/BindingPackageViewContoller.h"

#include <QRegularExpression>
#include <QSignalSpy>

using namespace detailtest;
using platform::Hud;
using platform::ViewController;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

// Stands in for the message detail page, which the back rule treats like a game's page.
class MyMessageDetailViewController : public ViewController
{
    Q_OBJECT
};

const QByteArray AddToCartPath = "/cart/add.json";

} // namespace

// What a game's page does: its see buttons, the back rule across chains of detail pages, the
// bottom bar (sign-in gate, cart, buy now, add to cart with the "cart_num" cookie), the badge on
// each appearance and sharing.
class TestGoodsDetailActions : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    ScriptedHttpServer m_server;

    void useStore() { qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8()); }
    void useScripted() { qputenv("TARVEL_API_BASE_URL", m_server.baseUrl().toUtf8()); }

    GoodsDetailViewController *openLoaded(StackHarness &harness, const QString &gameId)
    {
        GoodsDetailViewController *detail = openDetail(harness, gameId);
        return waitUntilLoaded(detail) ? detail : nullptr;
    }

    GoodsDetailViewController *openScripted(StackHarness &harness, const QVariantMap &game)
    {
        useScripted();
        m_server.route(QStringLiteral("/products/7.json"), ScriptedResponse::json(envelope(game)));
        return openLoaded(harness, QStringLiteral("7"));
    }

    static int requestsFor(const ScriptedHttpServer &server, const QString &path)
    {
        int count = 0;
        for (const auto &request : server.requests())
            count += request.path == path ? 1 : 0;
        return count;
    }

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
        useStore();
        signOut();
        platform::UserDefaults::standard().removeObjectForKey(QStringLiteral("cartnum"));
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        m_server.clearRequests();
    }

    void seeButtonsOpenRelatedLists_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QString>("titleFormat");
        QTest::newRow("bundles") << 1 << QStringLiteral("%1的捆绑包");
        QTest::newRow("DLCs") << 2 << QStringLiteral("%1的DLC");
    }

    void seeButtonsOpenRelatedLists()
    {
        QFETCH(int, tag);
        QFETCH(QString, titleFormat);

        StackHarness harness;
        GoodsDetailViewController *detail = openLoaded(harness, QStringLiteral("1"));
        QVERIFY(detail);
        const Object_GameDetail game = *detail->sourceModel();
        const QList<Object_DLCOrBind> expected = tag == 1 ? game.included_bundles : game.dlcs;
        QVERIFY(!expected.isEmpty());

        detail->clickButtonLook(tag);
        auto *list = qobject_cast<BindingPackageViewContoller *>(harness.top());
        QVERIFY(list);
        QCOMPARE(list->navTitle(), titleFormat.arg(game.title));
        QCOMPARE(list->title(), titleFormat.arg(game.title));
        QCOMPARE(list->arraySource(), expected);
    }

    void seeButtonsWithoutItemsStay_data()
    {
        QTest::addColumn<int>("tag");
        QTest::newRow("base game of a game without parent") << 0;
        QTest::newRow("no bundles") << 1;
        QTest::newRow("no DLCs") << 2;
        QTest::newRow("unknown tag") << 7;
    }

    void seeButtonsWithoutItemsStay()
    {
        QFETCH(int, tag);
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        detail->clickButtonLook(tag);
        QCOMPARE(harness.top(), detail);
        QCOMPARE(harness.depth(), 2);
    }

    void seeButtonOfABaseGameWithoutIdOnlyLogs_data()
    {
        QTest::addColumn<QVariantMap>("parent");
        QTest::newRow("empty parent") << QVariantMap();
        QTest::newRow("base game without an id")
                << QVariantMap{{"parent", QVariantMap{{"title", "星际远征"}}}};
    }

    // The base-game row shows, but its see button has nothing to open: the page stays and the
    // log says why.
    void seeButtonOfABaseGameWithoutIdOnlyLogs()
    {
        QFETCH(QVariantMap, parent);
        StackHarness harness;
        GoodsDetailViewController *detail
                = openScripted(harness, gameAnswer(QVariantMap{{"parent", parent}}));
        QVERIFY(detail);
        QVERIFY(!detail->cellForRowAtIndexPath(0, 3).isHidden());
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression("base game .* has no id"));
        detail->clickButtonLook(0);
        QCOMPARE(harness.top(), detail);
        QCOMPARE(harness.depth(), 2);
    }

    // A DLC, its base game through the see button, back: the home page in one step.
    void dlcChainReturnsInOneStep()
    {
        StackHarness harness;
        GoodsDetailViewController *dlc = openLoaded(harness, QStringLiteral("101"));
        QVERIFY(dlc);
        QCOMPARE(dlc->parentID(), QStringLiteral("1"));
        QVERIFY(!dlc->cellForRowAtIndexPath(0, 3).isHidden());
        QVERIFY(dlc->cellForRowAtIndexPath(0, 3).labelTitle().contains(
                dlc->tableHeaderView()->labelNameCn().section(QStringLiteral("："), 0, 0)));

        dlc->clickButtonLook(0);
        auto *base = qobject_cast<GoodsDetailViewController *>(harness.top());
        QVERIFY(base && base != dlc);
        QCOMPARE(base->gameId(), QStringLiteral("1"));
        QVERIFY(waitUntilLoaded(base));
        QVERIFY(!base->sourceModel()->dlcs.isEmpty());
        QVERIFY(base->cellForRowAtIndexPath(0, 3).isHidden());

        QVERIFY(base->leftBarItem()->tap());
        QCOMPARE(harness.depth(), 1);
        QCOMPARE(harness.top(), harness.home.data());
    }

    void backRule_data()
    {
        // The stack from the bottom: H a plain screen, G a game's page, M a message's page. Back
        // is pressed on the game's page on top.
        QTest::addColumn<QString>("stack");
        QTest::addColumn<int>("depthAfter");
        QTest::newRow("one page") << "HG" << 1;
        QTest::newRow("chain of pages") << "HGGG" << 1;
        QTest::newRow("page, list, page") << "HGHG" << 1;
        QTest::newRow("opened from a list") << "HHG" << 2;
        QTest::newRow("opened from a message page") << "HMG" << 1;
        QTest::newRow("page at the bottom is not counted") << "GHG" << 2;
        QTest::newRow("only page at the bottom") << "G" << 1;
    }

    void backRule()
    {
        QFETCH(QString, stack);
        QFETCH(int, depthAfter);

        useScripted(); // every page load fails quickly; the back rule does not care
        platform::Window window;
        QList<ViewController *> controllers;
        for (const QChar kind : stack) {
            ViewController *controller = nullptr;
            if (kind == QLatin1Char('G')) {
                auto *detail = new GoodsDetailViewController;
                detail->setGameId(QStringLiteral("1"));
                controller = detail;
            } else if (kind == QLatin1Char('M')) {
                controller = new MyMessageDetailViewController;
            } else {
                controller = new ViewController;
            }
            controllers.append(controller);
        }
        auto *navigation = new platform::NavigationController;
        navigation->setViewControllers(controllers, false);
        window.setRootViewController(navigation);
        window.makeKeyAndVisible();

        ViewController *top = navigation->topViewController();
        QVERIFY(top->leftBarItem()->tap());
        QCOMPARE(navigation->depth(), depthAfter);
        QCOMPARE(navigation->viewControllers(), controllers.mid(0, depthAfter));
    }

    void signedOutBottomBarAsksForSignIn_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("cart") << 0;
        QTest::newRow("buy now") << 1;
        QTest::newRow("add to cart") << 2;
    }

    void signedOutBottomBarAsksForSignIn()
    {
        QFETCH(int, index);
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        m_server.clearRequests();

        const QList<platform::Button *> buttons{detail->footerView()->buttonCart(),
                                                detail->footerView()->buttonOneKeyBuy(),
                                                detail->footerView()->buttonAddToCart()};
        QVERIFY(buttons.at(index)->tap());
        QCOMPARE(harness.window.presentedCount(), 1);
        auto *signIn = qobject_cast<platform::NavigationController *>(
                harness.window.presentedViewControllerAt(0));
        QVERIFY(signIn);
        QCOMPARE(signIn->depth(), 1);
        auto *screen = qobject_cast<NavRootViewController *>(signIn->topViewController());
        QVERIFY(screen);
        QCOMPARE(screen->viewFather(), 3);
        QCOMPARE(harness.top(), detail); // the user stays on the page
        QCOMPARE(tarvel::test::repliesAlive(), 0); // nothing was asked of the service
        QCOMPARE(m_server.requestCount(), 0);
    }

    // Signing in from the bar returns to the page, which then shows the account's cart count.
    void signInFromTheBottomBarReturnsToThePage()
    {
        StackHarness harness;
        GoodsDetailViewController *detail = openLoaded(harness, QStringLiteral("1"));
        QVERIFY(detail);
        QVERIFY(detail->footerView()->buttonAddToCart()->tap());
        auto *stack = qobject_cast<platform::NavigationController *>(
                harness.window.presentedViewControllerAt(0));
        QVERIFY(stack);
        auto *signIn = qobject_cast<NavRootViewController *>(stack->topViewController());
        QVERIFY(signIn);
        QTRY_VERIFY(signIn->isViewLoaded());
        signIn->fieldUser()->setText(QStringLiteral("13800138000"));
        signIn->fieldPassword()->setText(QStringLiteral("tarvel2024"));
        signIn->clickButtonLogin();

        QTRY_COMPARE_WITH_TIMEOUT(harness.window.presentedCount(), 0, 10000);
        QCOMPARE(harness.top(), detail);
        QVERIFY(AppDelegate::shared()->isSignedIn());
        QTRY_COMPARE_WITH_TIMEOUT(detail->footerView()->labelRedDot()->text(), QStringLiteral("2"),
                                  10000);
        QVERIFY(!detail->footerView()->labelRedDot()->isHidden());
    }

    void buyNowOpensOrderConfirmation()
    {
        signInLocally();
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        QVERIFY(detail->footerView()->buttonOneKeyBuy()->tap());
        auto *order = qobject_cast<ConfirmOrderViewController *>(harness.top());
        QVERIFY(order);
        QCOMPARE(order->gamesID(), QStringList{QStringLiteral("7")});
        QCOMPARE(order->type(), 1);
        QCOMPARE(harness.window.presentedCount(), 0);
    }

    void cartButtonOpensTheCart()
    {
        signInLocally();
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        QVERIFY(detail->footerView()->buttonCart()->tap());
        auto *cart = qobject_cast<TabThreeViewController *>(harness.top());
        QVERIFY(cart);
        QCOMPARE(cart->viewFather(), 1);
        QCOMPARE(harness.depth(), 3);
    }

    void addToCartAtTheStore()
    {
        QVERIFY(signInDemoAccount()); // two games in the demo cart
        StackHarness harness;
        GoodsDetailViewController *detail = openLoaded(harness, QStringLiteral("1"));
        QVERIFY(detail);
        HudRecorder::shared().clear();

        QVERIFY(detail->footerView()->buttonAddToCart()->tap());
        QVERIFY(waitForHud(QStringLiteral("添加成功")));
        QCOMPARE(HudRecorder::shared().records(),
                 (QList<HudRecorder::Record>{{Hud::Progress, QStringLiteral("正在添加..."), true},
                                             {Hud::Success, QStringLiteral("添加成功"), false}}));
        QCOMPARE(storedCartNum(), QStringLiteral("3"));
        QCOMPARE(detail->footerView()->labelRedDot()->text(), QStringLiteral("3"));
        QVERIFY(!detail->footerView()->labelRedDot()->isHidden());
    }

    void addToCartRefusedShowsTheMessage()
    {
        QVERIFY(signInDemoAccount());
        StackHarness harness;
        GoodsDetailViewController *detail = openLoaded(harness, QStringLiteral("3")); // owned
        QVERIFY(detail);
        const QString expected
                = QStringLiteral("您已拥有《%1》，无需重复购买").arg(detail->sourceModel()->title);
        QVERIFY(detail->footerView()->buttonAddToCart()->tap());
        QVERIFY(waitForHud(expected));
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QVERIFY(!HudRecorder::shared().history().contains(QStringLiteral("添加成功")));
    }

    void cartNumCookieRule_data()
    {
        QTest::addColumn<QByteArray>("setCookie"); // empty: the answer sets no cookie
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("badgeHidden");
        QTest::newRow("count in the cookie") << QByteArray("cart_num=4; Path=/") << "4" << false;
        QTest::newRow("empty cart") << QByteArray("cart_num=0; Path=/") << "0" << true;
        QTest::newRow("no cookie keeps the stored count") << QByteArray() << "7" << false;
        QTest::newRow("cookie for another path")
                << QByteArray("cart_num=9; Path=/orders") << "7" << false;
    }

    void cartNumCookieRule()
    {
        QFETCH(QByteArray, setCookie);
        QFETCH(QString, stored);
        QFETCH(bool, badgeHidden);

        platform::UserDefaults::standard().setObject(QStringLiteral("7"),
                                                     QStringLiteral("cartnum"));
        signInLocally();
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        QTRY_COMPARE(detail->footerView()->labelRedDot()->text(), QStringLiteral("7"));

        ScriptedResponse answer = ScriptedResponse::json(envelope(QVariantMap{{"id", 7}}));
        if (!setCookie.isEmpty())
            answer.withHeader("Set-Cookie", setCookie);
        m_server.route(QString::fromLatin1(AddToCartPath), answer);
        QVERIFY(detail->footerView()->buttonAddToCart()->tap());
        QVERIFY(waitForHud(QStringLiteral("添加成功")));
        QCOMPARE(m_server.lastRequest().query.queryItemValue(QStringLiteral("game_id")),
                 QStringLiteral("7"));
        QCOMPARE(storedCartNum(), stored);
        QCOMPARE(detail->footerView()->labelRedDot()->text(), stored);
        QCOMPARE(detail->footerView()->labelRedDot()->isHidden(), badgeHidden);
    }

    void eachAppearanceRefreshesOnlyTheBadge_data()
    {
        QTest::addColumn<QVariant>("cartnum");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("nothing stored") << QVariant() << true;
        QTest::newRow("empty") << QVariant(QString()) << true;
        QTest::newRow("zero") << QVariant(QStringLiteral("0")) << true;
        QTest::newRow("three") << QVariant(QStringLiteral("3")) << false;
    }

    void eachAppearanceRefreshesOnlyTheBadge()
    {
        QFETCH(QVariant, cartnum);
        QFETCH(bool, hidden);

        platform::UserDefaults::standard().setObject(QStringLiteral("12"),
                                                     QStringLiteral("cartnum"));
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        QTRY_COMPARE(detail->footerView()->labelRedDot()->text(), QStringLiteral("12"));

        platform::UserDefaults::standard().setObject(cartnum, QStringLiteral("cartnum"));
        harness.push(new ViewController);
        harness.navigation->popViewController(false);
        QTRY_COMPARE(detail->footerView()->labelRedDot()->text(), cartnum.toString());
        QCOMPARE(detail->footerView()->labelRedDot()->isHidden(), hidden);
        QCOMPARE(requestsFor(m_server, QStringLiteral("/products/7.json")), 1);
    }

    void shareOpensThePanelWithThePage()
    {
        StackHarness harness;
        GoodsDetailViewController *detail = openLoaded(harness, QStringLiteral("34"));
        QVERIFY(detail);
        const Object_GameDetail game = *detail->sourceModel();
        QVERIFY(!detail->shareView()->isShown());
        QVERIFY(detail->rightBarItem()->tap());
        ICShareView *share = detail->shareView();
        QVERIFY(share->isShown());
        QCOMPARE(share->StrTitle(), game.title);
        QCOMPARE(share->StrContent(), game.raw_summary);
        QVERIFY(!share->StrContent().contains(QLatin1Char('<')));
        QCOMPARE(share->StrImageUrl(), game.product_image);
        QCOMPARE(share->StrUrl(), m_store->baseUrl() + QStringLiteral("/products/34"));
    }
};

TARVEL_TEST_MAIN(TestGoodsDetailActions)
#include "tst_detailactions.moc"
