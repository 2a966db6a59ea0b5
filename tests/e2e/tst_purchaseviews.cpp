#include "HudRecorder.h"
#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "tst_kits_support.h"
#include "tst_purchase_support.h"

#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyCouponViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/purchase/TabThreeViewController.h"

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace purchasetest;
using kitstest::ShellWindow;
using platform::Hud;
using tarvel::test::findNamed;
using tarvel::test::findText;
using tarvel::test::InProcessStore;
using tarvel::test::QmlWarnings;

// The purchase screens as the user sees them in the phone-sized window: they build without a QML
// warning, show what their controllers hold, pass taps and the cart's slide back to C++, and are
// written out as screenshots.
class TestPurchaseViews : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<TabsHarness> m_harness;
    std::unique_ptr<ShellWindow> m_shell;

    QQuickItem *root() const { return m_shell->root(); }

    QQuickItem *waitNamed(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findNamed(root(), name)) != nullptr; }, 10000))
            qWarning() << "no item named" << name;
        return found;
    }

    bool waitForCovers(const QString &name, int count)
    {
        return QTest::qWaitFor(
                [&] {
                    const QList<QQuickItem *> covers = tarvel::test::findAllNamed(root(), name);
                    if (covers.size() < count)
                        return false;
                    for (QQuickItem *cover : covers) {
                        if (cover->property("status").toInt() != 1) // Image.Ready
                            return false;
                    }
                    return true;
                },
                15000);
    }

    void click(QQuickItem *item) { QVERIFY(tarvel::test::tapWhenStill(m_shell->window(), item)); }

    void snapshot(const QString &name) { QVERIFY(m_shell->snapshot(name)); }

    void showWith(platform::ViewController *second = new platform::ViewController)
    {
        m_harness = std::make_unique<TabsHarness>(second);
        m_shell = std::make_unique<ShellWindow>();
        QVERIFY(m_shell->show(&m_harness->window));
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        QVERIFY(signInDemoAccount());
    }

    void init()
    {
        QmlWarnings::clear();
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
    }

    void cleanup()
    {
        if (m_shell)
            m_shell->close();
        m_shell.reset();
        m_harness.reset();
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }

    void cartTab()
    {
        auto *cart = new TabThreeViewController(0);
        showWith(cart);
        m_harness->tabs->selectViewControllerAtIndex(ICTabBarController::CartTab);
        QTRY_COMPARE(cart->cells().size(), 2);
        QVERIFY(waitNamed(QStringLiteral("cartBottomBar")));
        QVERIFY(waitForCovers(QStringLiteral("cartCover"), 2));
        Hud::shared().dismiss();

        // A tap on a line ticks it and the bar shows its price.
        click(waitNamed(QStringLiteral("cartCell0")));
        QTRY_COMPARE(cart->arraySelect().first(), QStringLiteral("1"));
        QCOMPARE(findNamed(root(), QStringLiteral("cartTotal"))->property("text").toString(),
                 QString::asprintf("¥%.1f", cart->arraySource().first().sale_price.toDouble()));
        snapshot(QStringLiteral("purchase_cart.png"));

        // Sliding the second line to the left uncovers its delete button.
        QQuickItem *card = waitNamed(QStringLiteral("cartCell1"));
        const QPoint start
                = card->mapToScene(QPointF(card->width() * 0.7, card->height() / 2)).toPoint();
        QQuickWindow *window = m_shell->window();
        QTest::mousePress(window, Qt::LeftButton, {}, start);
        for (int step = 1; step <= 6; ++step)
            QTest::mouseMove(window, start - QPoint(step * 10, 0), 16);
        QTest::mouseRelease(window, Qt::LeftButton, {}, start - QPoint(60, 0), 16);
        QTRY_COMPARE(cart->cells().at(1)->contentX(), -40.0);
        QCOMPARE(cart->arraySelect().at(1), QStringLiteral("0")); // a slide is no tap
        snapshot(QStringLiteral("purchase_cart_slide.png"));

        // Nothing changes in the store here: sliding back closes the line again.
        const QPoint back
                = card->mapToScene(QPointF(card->width() * 0.3, card->height() / 2)).toPoint();
        QTest::mousePress(window, Qt::LeftButton, {}, back);
        for (int step = 1; step <= 6; ++step)
            QTest::mouseMove(window, back + QPoint(step * 10, 0), 16);
        QTest::mouseRelease(window, Qt::LeftButton, {}, back + QPoint(60, 0), 16);
        QTRY_COMPARE(cart->cells().at(1)->contentX(), 10.0);
    }

    void emptyCart()
    {
        tarvel::test::ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.route(QStringLiteral("/cart.json"),
                     tarvel::test::ScriptedResponse::json(envelope(QVariantList())));
        qputenv("TARVEL_API_BASE_URL", server.baseUrl().toUtf8());
        auto *cart = new TabThreeViewController(TabThreeViewController::FatherPushed);
        showWith();
        m_harness->push(cart);
        QTRY_VERIFY(!cart->isEmptyViewHidden());
        QVERIFY(waitNamed(QStringLiteral("cartEmptyView")));
        QVERIFY(!findNamed(root(), QStringLiteral("cartBottomBar")));
        Hud::shared().dismiss();
        snapshot(QStringLiteral("purchase_cart_empty.png"));
        click(waitNamed(QStringLiteral("cartGoShopping")));
        QTRY_COMPARE(m_harness->depth(), 1);
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
    }

    void confirmOrder()
    {
        showWith();
        auto *order = new ConfirmOrderViewController({QStringLiteral("41")}, 1);
        m_harness->push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        QVERIFY(waitNamed(QStringLiteral("confirmOrderCell0")));
        order->footerView()->fieldCoupon()->setText(QStringLiteral("WELCOME10"));
        click(waitNamed(QStringLiteral("confirmCouponSure")));
        QVERIFY(waitForLastHud(QStringLiteral("使用成功")));
        QTRY_COMPARE(
                findNamed(root(), QStringLiteral("confirmPayAmount"))->property("text").toString(),
                QStringLiteral("¥") + order->modelCoupon()->subtotal);
        Hud::shared().dismiss();
        snapshot(QStringLiteral("purchase_confirm_order.png"));
        click(waitNamed(QStringLiteral("confirmPayZFB")));
        QTRY_VERIFY(order->footerView()->buttonZFB()->isSelected());
        click(waitNamed(QStringLiteral("confirmCouponCancel")));
        QVERIFY(waitForLastHud(QStringLiteral("取消成功")));
        QVERIFY(order->footerView()->getCouponCode().isEmpty());
    }

    void buySuccess()
    {
        showWith();
        m_harness->push(new BuySuccessViewController(
                {{QStringLiteral("subtotal"), QStringLiteral("97.4")},
                 {QStringLiteral("id"), 9},
                 {QStringLiteral("payment_method"), QStringLiteral("微信支付")},
                 {QStringLiteral("completed"), 1}}));
        QVERIFY(waitNamed(QStringLiteral("buySuccessCell2")));
        QVERIFY(findText(root(), QStringLiteral("订单金额:¥97.4")));
        QVERIFY(findText(root(), QStringLiteral("支付方式:微信支付")));
        snapshot(QStringLiteral("purchase_buy_success.png"));
        click(waitNamed(QStringLiteral("buySuccessContinue")));
        QTRY_COMPARE(m_harness->depth(), 1);
    }

    void myGames()
    {
        showWith();
        auto *games = new MyGamesViewController;
        m_harness->push(games);
        QTRY_VERIFY(!games->arraySource().isEmpty());
        QVERIFY(waitForCovers(QStringLiteral("myGamesCover"), int(games->arraySource().size())));
        QTRY_VERIFY(!games->refreshHeader()->isRefreshing());
        snapshot(QStringLiteral("purchase_my_games.png"));
        click(waitNamed(QStringLiteral("myGamesCell0")));
        QTRY_COMPARE(m_harness->depth(), 3);
    }

    void myCoupons()
    {
        showWith();
        auto *coupons = new MyCouponViewController;
        m_harness->push(coupons);
        QVERIFY(waitNamed(QStringLiteral("myCouponCell5")));
        // With every card in view the list's end asks for more at once; that ends by itself.
        QTRY_VERIFY_WITH_TIMEOUT(
                !Hud::shared().isVisible() && !coupons->refreshFooter()->isLoading(), 5000);
        snapshot(QStringLiteral("purchase_my_coupons.png"));
    }
};

TARVEL_TEST_MAIN(TestPurchaseViews)
#include "tst_purchaseviews.moc"
