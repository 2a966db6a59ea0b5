#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_kits_support.h"
#include "tst_purchase_support.h"

#include "platform/kits/Application.h"
#include "platform/kits/ShareSDK.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/BarButtonItem.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyCouponViewController.h"
#include "screens/purchase/MyOrderViewController.h"

using namespace purchasetest;
using detailtest::StackHarness;
using kitstest::LogRecorder;
using platform::Hud;
using platform::WeChatPayPrompt;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

const QString OrderPath = QStringLiteral("/orders/77");

QVariantMap orderAnswer(const QVariant &subtotal, const QVariantList &lineItems)
{
    return {{QStringLiteral("order_id"), 77},
            {QStringLiteral("state"), QStringLiteral("in_checkout")},
            {QStringLiteral("order_games"),
             QVariantList{QVariantMap{{QStringLiteral("id"), 5},
                                      {QStringLiteral("title"), QStringLiteral("幻想王国")},
                                      {QStringLiteral("type_name"), QStringLiteral("游戏本体")},
                                      {QStringLiteral("price"), QStringLiteral("38")}},
                          QVariantMap{{QStringLiteral("id"), 12},
                                      {QStringLiteral("title"), QStringLiteral("风暴猎人")},
                                      {QStringLiteral("type_name"), QStringLiteral("游戏本体")},
                                      {QStringLiteral("price"), QStringLiteral("30")}}}},
            {QStringLiteral("order_subtotal"), subtotal},
            {QStringLiteral("payment_methods"),
             QVariantList{QVariantMap{{QStringLiteral("name"), QStringLiteral("wechat")}}}},
            {QStringLiteral("order_line_items"), lineItems}};
}

QVariantMap couponLine(const QVariant &amount)
{
    return {{QStringLiteral("id"), 5},
            {QStringLiteral("item_type"), QStringLiteral("coupon")},
            {QStringLiteral("type_value"), QStringLiteral("WELCOME10")},
            {QStringLiteral("amount"), amount}};
}

ConfirmOrderBottomView *footer(ConfirmOrderViewController *order)
{
    return order->footerView();
}

} // namespace

// Checkout: the three ways in, the amounts, attaching and detaching a coupon code with each
// refusal, and the payment sequences through the WeChat sandbox to the purchase result.
class TestConfirmOrder : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    ScriptedHttpServer m_server;
    int m_nextGame = 2;

    AppDelegate *app() { return AppDelegate::shared(); }
    void useScripted() { qputenv("TARVEL_API_BASE_URL", m_server.baseUrl().toUtf8()); }
    void useStore() { qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8()); }

    // Opens an order for one game of the store the demo user can buy, of at least `minimum`.
    ConfirmOrderViewController *openStoreOrder(StackHarness &harness, double minimum = 0)
    {
        for (; m_nextGame < 80; ++m_nextGame) {
            HudRecorder::shared().clear();
            auto *order = new ConfirmOrderViewController({QString::number(m_nextGame)},
                                                         ConfirmOrderViewController::BuyDirectly);
            harness.push(order);
            const bool settled = QTest::qWaitFor([order] {
                const QStringList history = HudRecorder::shared().history();
                return order->isOrderLoaded()
                       || (!history.isEmpty() && Hud::shared().kind() == Hud::Error);
            });
            if (settled && order->isOrderLoaded()
                && order->sourceModel().order_subtotal.toDouble() >= minimum) {
                ++m_nextGame;
                if (!QTest::qWaitFor(
                            [] { return Hud::shared().text() == QStringLiteral("订单获取成功"); }))
                    return nullptr;
                HudRecorder::shared().clear();
                return order;
            }
            harness.navigation->popViewController(false);
        }
        return nullptr;
    }

    // Types `code` into the footer and taps "使用", the HUD's record started afresh.
    static bool useCoupon(ConfirmOrderViewController *order, const QString &code)
    {
        HudRecorder::shared().clear();
        footer(order)->fieldCoupon()->setText(code);
        return footer(order)->buttonSure()->tap();
    }

    // The same for the demo account, signed in on the store.
    ConfirmOrderViewController *openDemoOrder(StackHarness &harness, double minimum = 0)
    {
        useStore();
        return signInDemoAccount() ? openStoreOrder(harness, minimum) : nullptr;
    }

    // Waits until the progress overlay is down and the latest text is no progress text.
    static bool settled()
    {
        return QTest::qWaitFor([] {
            return !HudRecorder::shared().history().isEmpty()
                   && Hud::shared().kind() != Hud::Progress;
        });
    }

    void forgetPendingPayment()
    {
        if (WeChatPayPrompt::shared().isShown())
            WeChatPayPrompt::shared().dismiss();
        if (!QTest::qWaitFor([this] { return !app()->isWeChatPay(); }, 2000))
            qWarning("a payment stayed pending");
    }

private slots:
    void initTestCase()
    {
        LogRecorder::install();
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        QVERIFY(m_server.listen());
        app()->initWithShareSDK();
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        useScripted();
        signInLocally();
        m_server.clearRequests();
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        LogRecorder::clear();
        ShareSDK::setUserInfoProvider({});
    }

    void cleanup() { forgetPendingPayment(); }

    void waysIn_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<QString>("createPath");
        QTest::addColumn<QString>("fetchPath");
        QTest::addColumn<QString>("cartNum");
        QTest::newRow("from the cart") << 0 << QStringList{"5", "12"} << "/cart/submit.json"
                                       << "/orders/77.json"
                                       << "0";
        QTest::newRow("one game") << 1 << QStringList{"5"} << "/orders.json"
                                  << "/orders/77.json"
                                  << "";
        QTest::newRow("an unpaid order") << 2 << QStringList{"77"} << ""
                                         << "/orders/77/checkout.json"
                                         << "";
        QTest::newRow("anything else loads nothing") << 3 << QStringList{"77"} << ""
                                                     << ""
                                                     << "";
    }

    void waysIn()
    {
        QFETCH(int, type);
        QFETCH(QStringList, ids);
        QFETCH(QString, createPath);
        QFETCH(QString, fetchPath);
        QFETCH(QString, cartNum);
        platform::UserDefaults::standard().removeObjectForKey(QStringLiteral("cartnum"));
        const QByteArray made = envelope(
                QVariantMap{{QStringLiteral("url"), OrderPath}, {QStringLiteral("order_id"), 77}});
        m_server.route(QStringLiteral("/cart/submit.json"),
                       ScriptedResponse::json(made).withHeader("Set-Cookie", "cart_num=0; path=/"));
        m_server.route(QStringLiteral("/orders.json"),
                       ScriptedResponse::json(made).withHeader("Set-Cookie", "cart_num=9; path=/"));
        const QByteArray order = envelope(orderAnswer(QStringLiteral("68"), {}));
        m_server.route(QStringLiteral("/orders/77.json"), ScriptedResponse::json(order));
        m_server.route(QStringLiteral("/orders/77/checkout.json"), ScriptedResponse::json(order));

        StackHarness harness;
        auto *screen = new ConfirmOrderViewController(ids, type);
        harness.push(screen);
        QCOMPARE(screen->title(), QStringLiteral("确认订单"));
        QCOMPARE(screen->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(screen->rightBarItem()->isHidden());
        if (fetchPath.isEmpty()) {
            QVERIFY(screen->isViewLoaded());
            QCoreApplication::processEvents(); // the deferred load step runs
            QCOMPARE(m_server.requestCount(), 0);
            QVERIFY(HudRecorder::shared().history().isEmpty());
            return;
        }
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        QStringList paths;
        for (const auto &request : m_server.requests()) {
            // A new sign-in also asks for the owned games; that is not the order's business.
            if (request.path != QLatin1String("/home/games.json"))
                paths.append(request.path);
        }
        const QStringList expectedPaths = createPath.isEmpty() ? QStringList{fetchPath}
                                                               : QStringList{createPath, fetchPath};
        QCOMPARE(paths, expectedPaths);
        const auto requestTo = [this](const QString &path) {
            for (const auto &request : m_server.requests()) {
                if (request.path == path)
                    return request;
            }
            return m_server.requests().value(0);
        };
        const auto fetched = requestTo(fetchPath);
        QCOMPARE(fetched.query.queryItemValue(QStringLiteral("from")), QStringLiteral("ios"));
        if (type == 0) {
            QStringList sent;
            for (const auto &[name, value] : requestTo(createPath).formFields()) {
                if (name.startsWith(QLatin1String("game_ids")))
                    sent.append(value);
            }
            QCOMPARE(sent, ids);
        } else if (type == 1) {
            QCOMPARE(requestTo(createPath).formValue(QStringLiteral("game_id")), ids.first());
        }
        QCOMPARE(storedCartNum(), cartNum);
        QList<HudRecorder::Record> expected;
        if (!createPath.isEmpty())
            expected.append({Hud::Progress, QStringLiteral("生成订单..."), true});
        expected.append({Hud::Progress, QStringLiteral("获取订单..."), true});
        expected.append({Hud::Success, QStringLiteral("订单获取成功"), false});
        QCOMPARE(HudRecorder::shared().records(), expected);
        const QList<QVariantMap> rows = screen->tableMain()->rows();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(1).value("name").toString(), QStringLiteral("风暴猎人"));
        QCOMPARE(rows.at(1).value("price").toString(), QStringLiteral("¥30"));
    }

    void amounts_data()
    {
        QTest::addColumn<QVariant>("subtotal");
        QTest::addColumn<QVariantList>("lineItems");
        QTest::addColumn<QString>("goods");
        QTest::addColumn<QString>("coupon");
        QTest::addColumn<QString>("pay");
        QTest::addColumn<QString>("code");
        QTest::newRow("coupon of 10 on 58")
                << QVariant(QStringLiteral("58")) << QVariantList{couponLine(QStringLiteral("10"))}
                << "¥68.0"
                << "-¥10"
                << "¥58"
                << "WELCOME10";
        QTest::newRow("numbers from the store")
                << QVariant(58) << QVariantList{couponLine(10)} << "¥68.0"
                << "-¥10"
                << "¥58"
                << "WELCOME10";
        QTest::newRow("no coupon keeps the text")
                << QVariant(QStringLiteral("58.50")) << QVariantList{} << "¥58.50"
                << "-¥0"
                << "¥58.50"
                << "";
    }

    void amounts()
    {
        QFETCH(QVariant, subtotal);
        QFETCH(QVariantList, lineItems);
        QFETCH(QString, goods);
        QFETCH(QString, coupon);
        QFETCH(QString, pay);
        QFETCH(QString, code);
        m_server.route(QStringLiteral("/orders/77/checkout.json"),
                       ScriptedResponse::json(envelope(orderAnswer(subtotal, lineItems))));
        StackHarness harness;
        auto *order = new ConfirmOrderViewController({QStringLiteral("77")},
                                                     ConfirmOrderViewController::ExistingOrder);
        harness.push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        QCOMPARE(footer(order)->labelGoodsPrice()->text(), goods);
        QCOMPARE(footer(order)->labelCouponPrice()->text(), coupon);
        QCOMPARE(footer(order)->labelCouponNum()->text(), QStringLiteral("优惠券:可用优惠券(0)"));
        QCOMPARE(order->viewPay()->labelPrice()->text(), pay);
        QCOMPARE(footer(order)->getCouponCode(), code);
        QCOMPARE(footer(order)->fieldCoupon()->isEnabled(), code.isEmpty());
    }

    // Nothing to send: the screen answers by itself.
    void localRefusals_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<QString>("text");
        QTest::newRow("use with an empty field") << 3 << "请输入优惠码";
        QTest::newRow("detach with nothing attached") << 4 << "没有绑定的优惠码";
    }

    void localRefusals()
    {
        QFETCH(int, button);
        QFETCH(QString, text);
        m_server.route(QStringLiteral("/orders/77/checkout.json"),
                       ScriptedResponse::json(envelope(orderAnswer(QStringLiteral("58"), {}))));
        StackHarness harness;
        auto *order = new ConfirmOrderViewController({QStringLiteral("77")}, 2);
        harness.push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        m_server.clearRequests();
        HudRecorder::shared().clear();
        platform::Button *tapped
                = button == 3 ? footer(order)->buttonSure() : footer(order)->buttonCancel();
        QVERIFY(tapped->tap());
        QCOMPARE(HudRecorder::shared().records(),
                 (QList<HudRecorder::Record>{{Hud::Error, text, false}}));
        QCoreApplication::processEvents();
        QCOMPARE(m_server.requestCount(), 0);
        QCOMPARE(footer(order)->labelCouponPrice()->text(), QStringLiteral("-¥0"));
    }

    void footerButtons_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("zfbSelected");
        QTest::addColumn<QByteArray>("top");
        QTest::newRow("alipay only highlights")
                << 0 << true << QByteArray("ConfirmOrderViewController");
        QTest::newRow("wechat only highlights")
                << 1 << false << QByteArray("ConfirmOrderViewController");
        QTest::newRow("choose a coupon") << 2 << false << QByteArray("MyCouponViewController");
    }

    void footerButtons()
    {
        QFETCH(int, button);
        QFETCH(bool, zfbSelected);
        QFETCH(QByteArray, top);
        m_server.route(QStringLiteral("/orders/77/checkout.json"),
                       ScriptedResponse::json(envelope(orderAnswer(QStringLiteral("58"), {}))));
        StackHarness harness;
        auto *order = new ConfirmOrderViewController({QStringLiteral("77")}, 2);
        harness.push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        m_server.clearRequests();
        const QList<platform::Button *> buttons{footer(order)->buttonZFB(),
                                                footer(order)->buttonWX(),
                                                footer(order)->buttonSelectCoupon()};
        QVERIFY(buttons.at(button)->tap());
        QCOMPARE(footer(order)->buttonZFB()->isSelected(), zfbSelected);
        QCOMPARE(footer(order)->buttonWX()->isSelected(), !zfbSelected);
        QCOMPARE(QByteArray(harness.top()->metaObject()->className()), top);
        QCoreApplication::processEvents();
        QCOMPARE(m_server.requestCount(), 0);
        // Back from the coupons finds the order as it was, not loaded again.
        if (harness.top() != order) {
            QVERIFY(harness.top()->leftBarItem()->tap());
            QCOMPARE(harness.top(), order);
            QCoreApplication::processEvents();
            QCOMPARE(m_server.requestCount(), 0);
        }
    }

    void couponRefusals_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("used") << "PHONEWELCOME5"
                              << "该优惠码已被使用";
        QTest::newRow("another user's") << "MAIL15"
                                        << "该优惠码无效，请核对后重新输入";
        QTest::newRow("unknown") << "NOPE-2024"
                                 << "该优惠码无效，请核对后重新输入";
        QTest::newRow("under the minimum") << "BIG50"
                                           << "订单满200元才能使用该优惠码";
    }

    void couponRefusals()
    {
        QFETCH(QString, code);
        QFETCH(QString, text);
        StackHarness harness;
        ConfirmOrderViewController *order = openDemoOrder(harness);
        QVERIFY(order);
        if (order->sourceModel().order_subtotal.toDouble() >= 200 && code == "BIG50")
            QSKIP("the game found costs enough for this coupon");
        const QString goods = footer(order)->labelGoodsPrice()->text();
        QVERIFY(useCoupon(order, code));
        QVERIFY(settled());
        QCOMPARE(HudRecorder::shared().records(),
                 (QList<HudRecorder::Record>{{Hud::Progress, QStringLiteral("使用优惠码..."), true},
                                             {Hud::Error, text, false}}));
        QCOMPARE(footer(order)->labelGoodsPrice()->text(), goods);
        QCOMPARE(footer(order)->labelCouponPrice()->text(), QStringLiteral("-¥0"));
        QVERIFY(footer(order)->fieldCoupon()->isEnabled());
        QVERIFY(!order->modelCoupon());
    }

    void attachDetachAttach()
    {
        StackHarness harness;
        ConfirmOrderViewController *order = openDemoOrder(harness, 30);
        QVERIFY(order);
        const QString subtotal = order->sourceModel().order_subtotal;
        const double total = subtotal.toDouble();
        for (int round = 0; round < 2; ++round) {
            QVERIFY(useCoupon(order, QStringLiteral("WELCOME10")));
            QVERIFY(waitForLastHud(QStringLiteral("使用成功")));
            QCOMPARE(HudRecorder::shared().records().first(),
                     (HudRecorder::Record{Hud::Progress, QStringLiteral("使用优惠码..."), true}));
            QCOMPARE(footer(order)->labelGoodsPrice()->text(), QString::asprintf("¥%.1f", total));
            QCOMPARE(footer(order)->labelCouponPrice()->text(), QStringLiteral("-¥10"));
            QCOMPARE(order->viewPay()->labelPrice()->text(),
                     QStringLiteral("¥") + order->modelCoupon()->subtotal);
            QCOMPARE(order->modelCoupon()->subtotal.toDouble(), total - 10);
            QCOMPARE(footer(order)->getCouponCode(), QStringLiteral("WELCOME10"));
            QVERIFY(!footer(order)->fieldCoupon()->isEnabled());

            HudRecorder::shared().clear();
            QVERIFY(footer(order)->buttonCancel()->tap());
            QVERIFY(waitForLastHud(QStringLiteral("取消成功")));
            QCOMPARE(HudRecorder::shared().records().first(),
                     (HudRecorder::Record{Hud::Progress, QStringLiteral("正在取消..."), true}));
            QCOMPARE(footer(order)->labelGoodsPrice()->text(), QStringLiteral("¥") + subtotal);
            QCOMPARE(footer(order)->labelCouponPrice()->text(), QStringLiteral("-¥0"));
            QCOMPARE(order->viewPay()->labelPrice()->text(), QStringLiteral("¥") + subtotal);
            QVERIFY(footer(order)->getCouponCode().isEmpty());
            QVERIFY(footer(order)->fieldCoupon()->isEnabled());
            QVERIFY(!order->modelCoupon());
        }
    }

    // An unpaid order opened again with its coupon: detaching takes the order's own line.
    void existingOrderDetachesItsOwnCoupon()
    {
        StackHarness harness;
        ConfirmOrderViewController *first = openDemoOrder(harness, 30);
        QVERIFY(first);
        const QString orderId = first->sourceModel().order_id;
        QVERIFY(useCoupon(first, QStringLiteral("WELCOME10")));
        QVERIFY(waitForLastHud(QStringLiteral("使用成功")));
        harness.navigation->popViewController(false);

        HudRecorder::shared().clear();
        auto *again = new ConfirmOrderViewController({orderId}, 2);
        harness.push(again);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        QCOMPARE(footer(again)->getCouponCode(), QStringLiteral("WELCOME10"));
        QVERIFY(!footer(again)->fieldCoupon()->isEnabled());
        QCOMPARE(footer(again)->labelCouponPrice()->text(), QStringLiteral("-¥10"));
        QVERIFY(footer(again)->buttonCancel()->tap());
        QVERIFY(waitForLastHud(QStringLiteral("取消成功")));
        QVERIFY(again->sourceModel().order_line_items.isEmpty());
        QVERIFY(footer(again)->fieldCoupon()->isEnabled());
    }

    void paymentSequences_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<bool>("alipayHighlighted");
        QTest::addColumn<bool>("resultShown");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("confirmed")
                << "confirm" << false << true
                << QStringList{"获取支付信息...", "获取成功成功", "获取订单状态...", "获取成功"};
        QTest::newRow("confirmed with alipay highlighted")
                << "confirm" << true << true
                << QStringList{"获取支付信息...", "获取成功成功", "获取订单状态...", "获取成功"};
        QTest::newRow("refused in the sandbox")
                << "cancel" << false << false
                << QStringList{"获取支付信息...", "获取成功成功", "支付失败"};
        QTest::newRow("sheet dismissed, back in the app")
                << "dismiss" << false << false
                << QStringList{"获取支付信息...", "获取成功成功", "获取订单状态...", "支付失败",
                               "获取成功"};
    }

    void paymentSequences()
    {
        QFETCH(QString, choice);
        QFETCH(bool, alipayHighlighted);
        QFETCH(bool, resultShown);
        QFETCH(QStringList, texts);
        StackHarness harness;
        ConfirmOrderViewController *order = openDemoOrder(harness);
        QVERIFY(order);
        if (alipayHighlighted)
            QVERIFY(footer(order)->buttonZFB()->tap());

        QVERIFY(order->viewPay()->buttonPay()->tap());
        auto &prompt = WeChatPayPrompt::shared();
        QTRY_VERIFY(prompt.canConfirm());
        QVERIFY(app()->isWeChatPay());
        QCOMPARE(order->openID(), ShareSDK::sandboxUid(ShareTypeWeixiSession));
        QCOMPARE(app()->openID(), order->openID());
        QCOMPARE(prompt.orderNumber(), order->sourceModel().order_id);
        if (choice == QLatin1String("confirm"))
            prompt.confirm();
        else if (choice == QLatin1String("cancel"))
            prompt.cancel();
        else
            prompt.dismiss();
        QVERIFY(waitForLastHud(texts.last()));
        QCoreApplication::processEvents();
        QCOMPARE(HudRecorder::shared().history(), texts);

        auto *result = qobject_cast<BuySuccessViewController *>(harness.top());
        QCOMPARE(result != nullptr, resultShown);
        if (!result) {
            QCOMPARE(harness.top(), order);
            return;
        }
        QCOMPARE(result->title(), QStringLiteral("购买成功"));
        const QList<QVariantMap> rows = result->tableMain()->rows();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows.at(0).value("title").toString(),
                 QStringLiteral("订单金额:¥") + order->sourceModel().order_subtotal);
        QCOMPARE(rows.at(1).value("title").toString(),
                 QStringLiteral("订单号:") + order->sourceModel().order_id);
        QCOMPARE(rows.at(2).value("title").toString(), QStringLiteral("支付方式:微信支付"));
        QCOMPARE(rows.at(2).value("separatorHidden").toBool(), true);
        QCOMPARE(rows.at(0).value("separatorHidden").toBool(), false);
    }

    void identityRefusedSendsNothing()
    {
        ShareSDK::setUserInfoProvider([](ShareType, const UserInfoResultFn &result) {
            result(false, ShareUser{}, ShareError{ShareErrorPlatformNotConnected, QString()});
        });
        m_server.route(QStringLiteral("/orders/77/checkout.json"),
                       ScriptedResponse::json(envelope(orderAnswer(QStringLiteral("58"), {}))));
        StackHarness harness;
        auto *order = new ConfirmOrderViewController({QStringLiteral("77")}, 2);
        harness.push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        m_server.clearRequests();
        HudRecorder::shared().clear();
        QVERIFY(order->viewPay()->buttonPay()->tap());
        QTRY_VERIFY(LogRecorder::infos().contains(QStringLiteral("20001")));
        QCOMPARE(m_server.requestCount(), 0);
        QVERIFY(!app()->isWeChatPay());
        QVERIFY(HudRecorder::shared().history().isEmpty());
    }

    void orderWithoutPaymentMethodsDoesNotPay()
    {
        QVariantMap answer = orderAnswer(QStringLiteral("58"), {});
        answer.remove(QStringLiteral("payment_methods"));
        m_server.route(QStringLiteral("/orders/77/checkout.json"),
                       ScriptedResponse::json(envelope(answer)));
        bool asked = false;
        ShareSDK::setUserInfoProvider(
                [&asked](ShareType, const UserInfoResultFn &) { asked = true; });
        StackHarness harness;
        auto *order = new ConfirmOrderViewController({QStringLiteral("77")}, 2);
        harness.push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        QVERIFY(order->sourceModel().payment_methods.isEmpty());
        QVERIFY(order->viewPay()->buttonPay()->tap());
        QCoreApplication::processEvents();
        QVERIFY(!asked);
    }

    // The result callback outlives the screen and then does nothing.
    void lateResultAfterTheScreenClosed()
    {
        m_server.route(QStringLiteral("/orders/77/checkout.json"),
                       ScriptedResponse::json(envelope(orderAnswer(QStringLiteral("58"), {}))));
        StackHarness harness;
        auto *order = new ConfirmOrderViewController({QStringLiteral("77")}, 2);
        harness.push(order);
        QVERIFY(waitForLastHud(QStringLiteral("订单获取成功")));
        QPointer<ConfirmOrderViewController> watched(order);
        harness.navigation->popViewController(false);
        QTRY_VERIFY(!watched);
        m_server.clearRequests();
        HudRecorder::shared().clear();
        QVERIFY(app()->weChatBlock());
        app()->weChatBlock()(true);
        QCoreApplication::processEvents();
        QCOMPARE(m_server.requestCount(), 0);
        QCOMPARE(harness.top(), harness.home.data());
    }

    void resultButtons_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("depth");
        QTest::addColumn<QString>("title");
        QTest::newRow("继续购物 lands on the root") << 1 << 1 << "首页";
        QTest::newRow("我的订单 opens the orders") << 0 << 4 << "我的订单";
    }

    void resultButtons()
    {
        QFETCH(int, button);
        QFETCH(int, depth);
        QFETCH(QString, title);
        StackHarness harness;
        harness.push(new ConfirmOrderViewController({QStringLiteral("77")}, 3));
        auto *result = new BuySuccessViewController(
                {{QStringLiteral("subtotal"), QStringLiteral("58")},
                 {QStringLiteral("id"), 9},
                 {QStringLiteral("payment_method"), QStringLiteral("微信支付")},
                 {QStringLiteral("completed"), 1}});
        harness.push(result);
        QCOMPARE(result->tableMain()->rows().at(1).value("title").toString(),
                 QStringLiteral("订单号:9"));
        QVERIFY((button == 0 ? result->buttonMyOrder() : result->buttonContinue())->tap());
        QTRY_COMPARE(harness.depth(), depth);
        QTRY_COMPARE(harness.top()->title(), title);
        if (button == 0) { // the order history, as opened from a purchase
            auto *orders = qobject_cast<MyOrderViewController *>(harness.top());
            QVERIFY(orders);
            QCOMPARE(orders->fatherView(), 1);
        }
    }
};

TARVEL_TEST_MAIN(TestConfirmOrder)
#include "tst_confirmorder.moc"
