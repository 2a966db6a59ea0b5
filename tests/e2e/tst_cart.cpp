#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_purchase_support.h"

#include "platform/ui/BarButtonItem.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/TabThreeViewController.h"

#include <QSignalSpy>

using namespace purchasetest;
using platform::Hud;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

const QString CartPath = QStringLiteral("/cart.json");
const QString RemovePath = QStringLiteral("/cart/remove.json");
const QString SubmitPath = QStringLiteral("/cart/submit.json");

QString totalText(TabThreeViewController *cart)
{
    return cart->bottomView()->labelPrice()->text();
}

bool selectAllTicked(TabThreeViewController *cart)
{
    return cart->bottomView()->buttonSelectAll()->isSelected();
}

} // namespace

// The cart: its lines with prices and badges, ticking and the total's two rules, select all,
// deleting with the cart count, submitting, the empty cart, and the slide that uncovers delete.
class TestCart : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    ScriptedHttpServer m_server;

    void useScripted() { qputenv("TARVEL_API_BASE_URL", m_server.baseUrl().toUtf8()); }
    void useStore() { qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8()); }

    // A scripted cart of a discounted line (100 -> 75), a full-price one and one without a
    // sale price.
    void scriptCart(const QVariantList &lines)
    {
        m_server.route(CartPath, ScriptedResponse::json(envelope(lines)));
    }
    static QVariantList threeLines()
    {
        return {cartLine(11, QStringLiteral("星海远征"), QStringLiteral("100"),
                         QStringLiteral("75")),
                cartLine(12, QStringLiteral("幻想王国"), QStringLiteral("38"),
                         QStringLiteral("38")),
                cartLine(13, QStringLiteral("风暴猎人"), QStringLiteral("74.4"),
                         QStringLiteral("49.5"))};
    }

    // Pushes a cart from a home screen (viewFather 1) and waits for its lines.
    TabThreeViewController *openCart(TabsHarness &harness, int expectedLines)
    {
        auto *cart = new TabThreeViewController(TabThreeViewController::FatherPushed);
        harness.push(cart);
        if (!QTest::qWaitFor([&] { return cart->cells().size() == expectedLines; }, 10000))
            return nullptr;
        return cart;
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
        useScripted();
        signInLocally();
        m_server.clearRequests();
        scriptCart(threeLines());
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
    }

    void linesShowPricesAndBadges_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("sale");
        QTest::addColumn<bool>("badgeHidden");
        QTest::addColumn<QString>("badge");
        QTest::addColumn<QString>("oldPrice");
        QTest::newRow("same text") << "38"
                                   << "38" << true << ""
                                   << "";
        QTest::newRow("a quarter off") << "100"
                                       << "75" << false << " 25%OFF "
                                       << "¥100";
        QTest::newRow("rounds") << "74.4"
                                << "49.5" << false << " 33%OFF "
                                << "¥74.4";
        // Equal in value but not as text: the badge shows, with nothing off.
        QTest::newRow("same value, other text") << "38.0"
                                                << "38" << false << " 0%OFF "
                                                << "¥38.0";
        QTest::newRow("no list price") << ""
                                       << "20" << true << ""
                                       << "";
    }

    void linesShowPricesAndBadges()
    {
        QFETCH(QString, list);
        QFETCH(QString, sale);
        QFETCH(bool, badgeHidden);
        QFETCH(QString, badge);
        QFETCH(QString, oldPrice);
        ShoppingCartCell cell;
        cell.setCellContentWithImage(QStringLiteral("http://127.0.0.1:1/pictures/covers/星海.jpg"),
                                     QStringLiteral("星海远征"), sale, true);
        cell.setListPrice(list, sale);
        QCOMPARE(cell.labelPrice(), QStringLiteral("¥") + sale);
        QCOMPARE(cell.isCutOffHidden(), badgeHidden);
        QCOMPARE(cell.labelCutOff(), badge);
        QCOMPARE(cell.labelOldPrice(), oldPrice);
        QVERIFY(cell.isSelected());
        QVERIFY(cell.imageGoods().startsWith(
                QStringLiteral("http://127.0.0.1:1/pictures/covers/%E6%98%9F%E6%B5%B7.jpg"
                               "?imageView2/2/w/")));
    }

    void slideRestsClosedOrOpen_data()
    {
        QTest::addColumn<bool>("startOpen");
        QTest::addColumn<QList<qreal>>("moves");
        QTest::addColumn<qreal>("rest");
        QTest::newRow("left opens") << false << QList<qreal>{-5, -20, -35} << -40.0;
        QTest::newRow("left then back right closes") << false << QList<qreal>{-30, -20} << 10.0;
        QTest::newRow("right from closed closes") << false << QList<qreal>{4, 8} << 10.0;
        QTest::newRow("held still opens") << false << QList<qreal>{} << -40.0;
        QTest::newRow("right from open closes") << true << QList<qreal>{10, 30} << 10.0;
        QTest::newRow("left from open stays open") << true << QList<qreal>{-10} << -40.0;
        // Past x = 20 the card stops following; its last step decides.
        QTest::newRow("far right stops at the limit") << false << QList<qreal>{5, 40, 60} << 10.0;
    }

    void slideRestsClosedOrOpen()
    {
        QFETCH(bool, startOpen);
        QFETCH(QList<qreal>, moves);
        QFETCH(qreal, rest);
        ShoppingCartCell cell;
        if (startOpen) {
            cell.panBegan();
            cell.panMoved(-30);
            cell.panEnded();
            QCOMPARE(cell.contentX(), -40.0);
        }
        QSignalSpy moved(&cell, &ShoppingCartCell::contentXChanged);
        QVERIFY(!cell.gestureShouldBegin(0, 12));
        QVERIFY(cell.gestureShouldBegin(-1, 12));
        cell.panBegan();
        QVERIFY(!cell.isSettling());
        for (qreal move : moves) {
            cell.panMoved(move);
            QVERIFY(cell.contentX() <= 20);
        }
        cell.panEnded();
        QCOMPARE(cell.contentX(), rest);
        QCOMPARE(cell.startPointX(), rest);
        QVERIFY(cell.isSettling());
        QCOMPARE(cell.settleDuration(), 250);
        QCOMPARE(cell.isOpen(), rest != 10);
        QVERIFY(moved.count() > 0);
    }

    void tickingShowsTheTotal_data()
    {
        QTest::addColumn<QList<int>>("taps");
        QTest::addColumn<QString>("total");
        QTest::addColumn<QStringList>("ticks");
        QTest::newRow("one") << QList<int>{0} << "¥75.0" << QStringList{"1", "0", "0"};
        QTest::newRow("two") << QList<int>{0, 2} << "¥124.5" << QStringList{"1", "0", "1"};
        QTest::newRow("ticked and unticked reads 0")
                << QList<int>{0, 0} << "¥0" << QStringList{"0", "0", "0"};
        QTest::newRow("every line one by one")
                << QList<int>{0, 1, 2} << "¥162.5" << QStringList{"1", "1", "1"};
        QTest::newRow("rows outside the list")
                << QList<int>{-1, 3} << "¥0" << QStringList{"0", "0", "0"};
    }

    void tickingShowsTheTotal()
    {
        QFETCH(QList<int>, taps);
        QFETCH(QString, total);
        QFETCH(QStringList, ticks);
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        QCOMPARE(totalText(cart), QStringLiteral("¥0"));
        for (int row : taps)
            cart->didSelectRowAtIndex(row);
        QCOMPARE(totalText(cart), total);
        QCOMPARE(cart->arraySelect(), ticks);
        for (int row = 0; row < ticks.size(); ++row)
            QCOMPARE(cart->cells().at(row)->isSelected(), ticks.at(row) == QLatin1String("1"));
        // Ticking by hand never sets select all, not even with every line ticked.
        QVERIFY(!selectAllTicked(cart));
    }

    void selectAllTicksEverything()
    {
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        QVERIFY(cart->bottomView()->buttonSelectAll()->tap());
        QVERIFY(selectAllTicked(cart));
        QCOMPARE(cart->arraySelect(), (QStringList{"1", "1", "1"}));
        QCOMPARE(totalText(cart), QStringLiteral("¥162.5"));
        cart->didSelectRowAtIndex(1);
        QVERIFY(!selectAllTicked(cart));
        QCOMPARE(totalText(cart), QStringLiteral("¥124.5"));
        QVERIFY(cart->bottomView()->buttonSelectAll()->tap());
        QVERIFY(cart->bottomView()->buttonSelectAll()->tap());
        QCOMPARE(cart->arraySelect(), (QStringList{"0", "0", "0"}));
        QCOMPARE(totalText(cart), QStringLiteral("¥0"));
    }

    void deletingShowsTheRestWithoutTheZeroRule_data()
    {
        QTest::addColumn<QList<int>>("ticked");
        QTest::addColumn<int>("deleteRow");
        QTest::addColumn<QString>("total");
        QTest::newRow("the only ticked line") << QList<int>{0} << 0 << "¥0.0";
        QTest::newRow("an unticked line") << QList<int>{0} << 1 << "¥75.0";
        QTest::newRow("nothing ticked") << QList<int>{} << 2 << "¥0.0";
    }

    void deletingShowsTheRestWithoutTheZeroRule()
    {
        QFETCH(QList<int>, ticked);
        QFETCH(int, deleteRow);
        QFETCH(QString, total);
        m_server.route(RemovePath, ScriptedResponse::json(envelope(QVariantMap()))
                                           .withHeader("Set-Cookie", "cart_num=2; path=/"));
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        for (int row : ticked)
            cart->didSelectRowAtIndex(row);
        const QString gameId = cart->arraySource().at(deleteRow).id;
        HudRecorder::shared().clear();

        cart->cells().at(deleteRow)->clickDelete();
        QTRY_COMPARE(cart->cells().size(), 2);
        QCOMPARE(m_server.lastRequest().path, RemovePath);
        QCOMPARE(m_server.lastRequest().formValue(QStringLiteral("game_ids")), gameId);
        QCOMPARE(m_server.lastRequest().formValue(QStringLiteral("authenticity_token")),
                 QStringLiteral("token"));
        QCOMPARE(HudRecorder::shared().records().first(),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在删除..."), true}));
        QVERIFY(!Hud::shared().isVisible());
        QCOMPARE(totalText(cart), total);
        QCOMPARE(cart->arraySource().size(), cart->arraySelect().size());
        for (const Object_CartList &line : cart->arraySource())
            QVERIFY(line.id != gameId);
        QCOMPARE(storedCartNum(), QStringLiteral("2"));
        QVERIFY(cart->isEmptyViewHidden());
    }

    void failedDeleteKeepsTheLine()
    {
        m_server.route(RemovePath,
                       ScriptedResponse::json(failure(QStringLiteral("error"),
                                                      QStringLiteral("登录状态已失效，请重新登录")),
                                              403));
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        cart->cells().at(1)->clickDelete();
        QVERIFY(waitForLastHud(QStringLiteral("登录状态已失效，请重新登录")));
        QCOMPARE(cart->cells().size(), 3);
    }

    void submitting_data()
    {
        QTest::addColumn<QList<int>>("ticked");
        QTest::addColumn<QStringList>("gameIds");
        QTest::newRow("nothing ticked") << QList<int>{} << QStringList{};
        QTest::newRow("two in list order") << QList<int>{2, 0} << QStringList{"11", "13"};
    }

    void submitting()
    {
        QFETCH(QList<int>, ticked);
        QFETCH(QStringList, gameIds);
        m_server.route(SubmitPath, ScriptedResponse::hang());
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        for (int row : ticked)
            cart->didSelectRowAtIndex(row);
        m_server.clearRequests();
        HudRecorder::shared().clear();
        QVERIFY(cart->bottomView()->buttonClearing()->tap());
        if (gameIds.isEmpty()) {
            QCOMPARE(HudRecorder::shared().records(),
                     (QList<HudRecorder::Record>{{Hud::Error, QStringLiteral("未选择游戏"), false}}));
            QCOMPARE(harness.top(), cart);
            QCoreApplication::processEvents();
            QCOMPARE(m_server.requestCount(), 0);
            return;
        }
        auto *order = qobject_cast<ConfirmOrderViewController *>(harness.top());
        QVERIFY(order);
        QCOMPARE(order->gamesID(), gameIds);
        QCOMPARE(order->type(), 0);
    }

    // Each appearance loads afresh and clears every tick, the total and select all.
    void reappearingReloadsWithoutTicks()
    {
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        QVERIFY(cart->bottomView()->buttonSelectAll()->tap());
        QCOMPARE(totalText(cart), QStringLiteral("¥162.5"));
        scriptCart(threeLines().mid(0, 2));
        harness.push(new platform::ViewController);
        harness.navigation->popViewController(false);
        QTRY_COMPARE(cart->cells().size(), 2);
        QCOMPARE(cart->arraySelect(), (QStringList{"0", "0"}));
        QCOMPARE(totalText(cart), QStringLiteral("¥0"));
        QVERIFY(!selectAllTicked(cart));
        QCOMPARE(requestsFor(m_server, CartPath), 2);
    }

    void emptyCartLeadsBackToTheShop_data()
    {
        QTest::addColumn<int>("viewFather");
        QTest::newRow("tab") << 0;
        QTest::newRow("pushed") << 1;
    }

    void emptyCartLeadsBackToTheShop()
    {
        QFETCH(int, viewFather);
        scriptCart({});
        auto *cart = new TabThreeViewController(viewFather);
        TabsHarness harness(viewFather == 1 ? new platform::ViewController : cart);
        if (viewFather == 1) {
            harness.push(new platform::ViewController);
            harness.push(cart);
        } else {
            harness.tabs->selectViewControllerAtIndex(ICTabBarController::CartTab);
        }
        QTRY_VERIFY(!cart->isEmptyViewHidden());
        QCOMPARE(cart->leftBarItem()->isHidden(), viewFather != 1);
        QTRY_COMPARE(harness.tabs->isHide(), viewFather == 1);
        cart->clickGoShopping();
        QTRY_COMPARE(harness.tabs->selectedIndex(), 0);
        QCOMPARE(harness.depth(), 1);
        QCOMPARE(harness.top(), harness.home.data());
    }

    void failedLoadKeepsTheLines()
    {
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 3);
        QVERIFY(cart);
        m_server.route(CartPath,
                       ScriptedResponse::json(
                               failure(QStringLiteral("error"), QStringLiteral("请先登录")), 401));
        harness.push(new platform::ViewController);
        harness.navigation->popViewController(false);
        QVERIFY(waitForLastHud(QStringLiteral("请先登录")));
        QCOMPARE(cart->cells().size(), 3);
        QVERIFY(cart->isEmptyViewHidden());
    }

    // The demo account's cart at the store: its two lines, deleting one brings the count to 1.
    void deletingAtTheStoreUpdatesTheCartCount()
    {
        useStore();
        QVERIFY(signInDemoAccount());
        TabsHarness harness;
        TabThreeViewController *cart = openCart(harness, 2);
        QVERIFY(cart);
        QCOMPARE(storedCartNum(), QStringLiteral("2"));
        cart->didSelectRowAtIndex(0);
        const double price = cart->arraySource().at(0).sale_price.toDouble();
        QCOMPARE(totalText(cart), QString::asprintf("¥%.1f", price));
        cart->cells().at(1)->clickDelete();
        QTRY_COMPARE(cart->cells().size(), 1);
        QCOMPARE(storedCartNum(), QStringLiteral("1"));
        QCOMPARE(totalText(cart), QString::asprintf("¥%.1f", price));
        signOut();
    }
};

TARVEL_TEST_MAIN(TestCart)
#include "tst_cart.moc"
