#include "HudRecorder.h"
#include "InProcessStore.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"
#include "tst_signin_support.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RowModel.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyOrderViewController.h"

#include <QJsonDocument>
#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using detailtest::envelope;
using detailtest::StackHarness;
using platform::Hud;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

QVariantMap orderGame(const QString &name, const QString &price)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("tag"), QStringLiteral("游戏本体")},
            {QStringLiteral("price"), price}};
}

QVariantMap order(int id, const QString &state, const QString &subtotal, const QVariantList &games)
{
    return {{QStringLiteral("id"), id},
            {QStringLiteral("state"), state},
            {QStringLiteral("type"), QStringLiteral("cart")},
            {QStringLiteral("subtotal"), subtotal},
            {QStringLiteral("created_at"), QStringLiteral("2024-05-01 20:44:57")},
            {QStringLiteral("order_games"), games}};
}

ScriptedResponse page(const QVariant &data)
{
    return ScriptedResponse::json(envelope(data));
}

QStringList column(const MyOrderViewController *screen, const char *key)
{
    QStringList values;
    for (const QVariantMap &row : screen->tableMain()->rows())
        values.append(row.value(QLatin1String(key)).toString());
    return values;
}

// The row whose state label is `label`, or -1.
int rowWithStatus(const MyOrderViewController *screen, const QString &label)
{
    return int(column(screen, "status").indexOf(label));
}

// Whether every shown game cover has its picture.
bool coversShown(QQuickItem *root)
{
    const QList<QQuickItem *> covers = tarvel::test::findAllNamed(root, "orderGameCover");
    for (QQuickItem *cover : covers) {
        if (cover->property("status").toInt() != 1) // Image.Ready
            return false;
    }
    return !covers.isEmpty();
}

bool waitUntilLoaded(MyOrderViewController *screen)
{
    return QTest::qWaitFor([screen] { return !screen->refreshHeader()->isRefreshing(); }, 10000);
}

} // namespace

// The order history: what a row shows of an order, the tabs' requests, paging, cancelling and
// paying unpaid orders, against scripted answers and against tarvel-store; and its views.
class TestOrders : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;

    static void pointAt(const QString &baseUrl)
    {
        qputenv("TARVEL_API_BASE_URL", baseUrl.toUtf8());
    }

    // The order history pushed on a stack, after its first load.
    static MyOrderViewController *open(StackHarness &harness)
    {
        auto *screen = MyOrderViewController::initWithFatherView(0);
        harness.push(screen);
        return screen;
    }

    // The order history of a user signed in locally, `server` answering `orders` on every page.
    static MyOrderViewController *openScripted(ScriptedHttpServer &server, StackHarness &harness,
                                               const QVariant &orders)
    {
        if (!server.listen())
            return nullptr;
        pointAt(server.baseUrl());
        server.setFallback(page(orders));
        detailtest::signInLocally();
        return open(harness);
    }

    // The unpaid tab of the demo account on `store`, once it lists that one order.
    static MyOrderViewController *openUnpaidTab(InProcessStore &store, StackHarness &harness)
    {
        pointAt(store.baseUrl());
        if (!detailtest::signInDemoAccount())
            return nullptr;
        MyOrderViewController *screen = open(harness);
        if (!QTest::qWaitFor([screen] { return screen->tableMain()->count() == 4; }))
            return nullptr;
        screen->clickButtonTab(MyOrderViewController::NoPay);
        const bool unpaidListed = QTest::qWaitFor(
                [screen] { return column(screen, "status") == QStringList{"未付款"}; });
        return unpaidListed && waitUntilLoaded(screen) ? screen : nullptr;
    }

private slots:
    void initTestCase()
    {
        tarvel::test::QmlWarnings::install();
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
    }

    void init()
    {
        detailtest::signOut();
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        tarvel::test::QmlWarnings::clear();
    }

    void rowShowsTheOrder_data()
    {
        QTest::addColumn<QStringList>("prices");
        QTest::addColumn<QString>("subtotal");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("goods");
        QTest::addColumn<QString>("coupon");
        QTest::addColumn<QString>("due");
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("buttonsHidden");

        QTest::newRow("no coupon") << QStringList{"30", "28"} << "58"
                                   << "in_checkout"
                                   << "商品金额:¥58.0"
                                   << "优惠券:-¥0"
                                   << "¥58"
                                   << "未付款" << false;
        QTest::newRow("coupon of 10") << QStringList{"30", "28"} << "48"
                                      << "completed"
                                      << "商品金额:¥58.0"
                                      << "优惠券:-¥10.0"
                                      << "¥48"
                                      << "已完成" << true;
        // 38 + 74.4 is 112.4 only up to a crumb in binary floating point.
        QTest::newRow("sum with a fraction") << QStringList{"38", "74.4"} << "112.4"
                                             << "canceled"
                                             << "商品金额:¥112.4"
                                             << "优惠券:-¥0"
                                             << "¥112.4"
                                             << "已取消" << true;
        QTest::newRow("pending") << QStringList{"68.6"} << "63.6"
                                 << "pending"
                                 << "商品金额:¥68.6"
                                 << "优惠券:-¥5.0"
                                 << "¥63.6"
                                 << "待定中" << true;
        QTest::newRow("unknown state") << QStringList{"20"} << "20"
                                       << "refunded"
                                       << "商品金额:¥20.0"
                                       << "优惠券:-¥0"
                                       << "¥20"
                                       << "refunded" << true;
        QTest::newRow("no games") << QStringList{} << "0"
                                  << "in_checkout"
                                  << "商品金额:¥0.0"
                                  << "优惠券:-¥0"
                                  << "¥0"
                                  << "未付款" << false;
    }

    void rowShowsTheOrder()
    {
        QFETCH(QStringList, prices);
        QFETCH(QString, subtotal);
        QFETCH(QString, state);
        QFETCH(QString, goods);
        QFETCH(QString, coupon);
        QFETCH(QString, due);
        QFETCH(QString, label);
        QFETCH(bool, buttonsHidden);

        QVariantList games;
        for (int i = 0; i < prices.size(); ++i)
            games.append(orderGame(QStringLiteral("游戏%1").arg(i + 1), prices.at(i)));
        const auto model = JSONModel::initWithDictionary<Object_MyOrderList>(
                order(9, state, subtotal, games));
        QVERIFY(model);
        const QVariantMap row = MyOrderViewController::cellForOrder(*model, 3).toRow();
        QCOMPARE(row.value("orderId").toString(), QStringLiteral("订单号:9"));
        QCOMPARE(row.value("status").toString(), label);
        QCOMPARE(row.value("allPrice").toString(), goods);
        QCOMPARE(row.value("couponPrice").toString(), coupon);
        QCOMPARE(row.value("shouldPrice").toString(), due);
        QCOMPARE(row.value("buttonsHidden").toBool(), buttonsHidden);
        QCOMPARE(row.value("tag").toInt(), 3);
        const QVariantList lines = row.value("games").toList();
        QCOMPARE(lines.size(), prices.size());
        for (int i = 0; i < prices.size(); ++i)
            QCOMPARE(lines.at(i).toMap().value("price").toString(), "¥" + prices.at(i));

        // One more game makes the row taller.
        Object_MyOrderList longer = *model;
        longer.order_games.append(longer.order_games.value(0));
        QVERIFY(MyOrderViewController::cellForOrder(longer, 3).height()
                > MyOrderViewController::cellForOrder(*model, 3).height());
    }

    void tabsSendTheirState_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("type");
        QTest::newRow("全部") << 0 << "all";
        QTest::newRow("未付款") << 1 << "in_checkout";
        QTest::newRow("已完成") << 2 << "completed";
    }

    void tabsSendTheirState()
    {
        QFETCH(int, tab);
        QFETCH(QString, type);
        ScriptedHttpServer server;
        StackHarness harness;
        MyOrderViewController *screen
                = openScripted(server, harness, QVariantList{order(1, "in_checkout", "30", {})});
        QVERIFY(screen);
        QCOMPARE(screen->title(), QStringLiteral("我的订单"));
        QCOMPARE(screen->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(screen->rightBarItem()->isHidden());
        // The screen opens on "全部".
        QTRY_VERIFY(server.requestCount() >= 1);
        QVERIFY(waitUntilLoaded(screen));
        QCOMPARE(server.lastRequest().query.queryItemValue("type"), QStringLiteral("all"));
        QVERIFY(screen->buttonAll()->isSelected());

        server.clearRequests();
        screen->clickButtonTab(tab);
        QVERIFY(server.waitForRequests(1));
        const tarvel::test::RecordedRequest request = server.lastRequest();
        QCOMPARE(request.path, QStringLiteral("/orders.json"));
        QCOMPARE(request.query.queryItemValue("type"), type);
        QCOMPARE(request.query.queryItemValue("page"), QStringLiteral("1"));
        QCOMPARE(screen->viewType(), type);
        const QList<platform::Button *> buttons{screen->buttonAll(), screen->buttonNoPay(),
                                                screen->buttonFinish()};
        QCOMPARE(buttons.at(tab)->title(), QTest::currentDataTag());
        for (int i = 0; i < buttons.size(); ++i)
            QCOMPARE(buttons.at(i)->isSelected(), i == tab);
        QVERIFY(waitUntilLoaded(screen));
        QCOMPARE(screen->pageMain(), 2);
    }

    void reloadKeepsWhatItCannotRead_data()
    {
        QTest::addColumn<QVariant>("answer");
        QTest::addColumn<QStringList>("orders");
        QTest::newRow("orders") << QVariant(
                QVariantList{order(5, "completed", "20", {}), order(6, "canceled", "30", {})})
                                << QStringList{"订单号:5", "订单号:6"};
        QTest::newRow("other elements skipped")
                << QVariant(QVariantList{QStringLiteral("x"), order(7, "pending", "20", {}), 3})
                << QStringList{"订单号:7"};
        QTest::newRow("empty list") << QVariant(QVariantList{}) << QStringList{};
        QTest::newRow("not a list keeps the rows")
                << QVariant(QVariantMap{{QStringLiteral("id"), 1}}) << QStringList{"订单号:1"};
    }

    void reloadKeepsWhatItCannotRead()
    {
        QFETCH(QVariant, answer);
        QFETCH(QStringList, orders);
        ScriptedHttpServer server;
        StackHarness harness;
        MyOrderViewController *screen
                = openScripted(server, harness, QVariantList{order(1, "in_checkout", "30", {})});
        QVERIFY(screen);
        QTRY_COMPARE(column(screen, "orderId"), QStringList{"订单号:1"});
        QVERIFY(waitUntilLoaded(screen));

        server.setFallback(page(answer));
        screen->refreshHeader()->beginRefreshing();
        QVERIFY(waitUntilLoaded(screen));
        QCOMPARE(column(screen, "orderId"), orders);
        QCOMPARE(screen->pageMain(), 2);
    }

    void emptyPageEndsTheListAndStillAdvances()
    {
        ScriptedHttpServer server;
        StackHarness harness;
        MyOrderViewController *screen = openScripted(
                server, harness,
                QVariantList{order(1, "in_checkout", "30", {}), order(2, "completed", "40", {})});
        QVERIFY(screen);
        QTRY_COMPARE(screen->tableMain()->count(), 2);
        QVERIFY(waitUntilLoaded(screen));
        QCOMPARE(screen->pageMain(), 2);

        // Page 2 holds one more order.
        server.clearRequests();
        server.setFallback(page(QVariantList{order(3, "pending", "10", {})}));
        screen->refreshFooter()->beginRefreshing();
        QVERIFY(server.waitForRequests(1));
        QCOMPARE(server.lastRequest().query.queryItemValue("page"), QStringLiteral("2"));
        QTRY_COMPARE(screen->tableMain()->count(), 3);
        QCOMPARE(screen->pageMain(), 3);
        QCOMPARE(screen->refreshFooter()->state(), platform::RefreshFooter::Idle);

        // Page 3 is empty: "没有更多了", and the page number moves on all the same.
        server.clearRequests();
        server.setFallback(page(QVariantList{}));
        screen->refreshFooter()->beginRefreshing();
        QVERIFY(server.waitForRequests(1));
        QCOMPARE(server.lastRequest().query.queryItemValue("page"), QStringLiteral("3"));
        QTRY_COMPARE(screen->pageMain(), 4);
        QCOMPARE(screen->refreshFooter()->state(), platform::RefreshFooter::NoMoreData);
        QCOMPARE(screen->refreshFooter()->text(), QStringLiteral("没有更多了"));
        QCOMPARE(screen->tableMain()->count(), 3);

        // A reload starts over and forgets the end.
        server.setFallback(page(QVariantList{order(1, "in_checkout", "30", {})}));
        screen->refreshHeader()->beginRefreshing();
        QVERIFY(waitUntilLoaded(screen));
        QCOMPARE(screen->pageMain(), 2);
        QCOMPARE(screen->tableMain()->count(), 1);
        QCOMPARE(screen->refreshFooter()->state(), platform::RefreshFooter::Idle);
    }

    void seededOrdersShowTheirStates()
    {
        pointAt(m_store->baseUrl());
        QVERIFY(detailtest::signInDemoAccount());
        StackHarness harness;
        MyOrderViewController *screen = open(harness);
        QTRY_COMPARE(screen->tableMain()->count(), 4);
        QStringList labels = column(screen, "status");
        labels.sort();
        QStringList expected{"未付款", "已完成", "已取消", "待定中"};
        expected.sort();
        QCOMPARE(labels, expected);
        // Only the unpaid order has buttons; the completed one was paid with a ¥5 coupon.
        for (const QVariantMap &row : screen->tableMain()->rows())
            QCOMPARE(row.value("buttonsHidden").toBool(), row.value("status") != "未付款");
        const QVariantMap completed
                = screen->tableMain()->rows().at(rowWithStatus(screen, "已完成"));
        QCOMPARE(completed.value("couponPrice").toString(), QStringLiteral("优惠券:-¥5.0"));
        const QVariantList games = completed.value("games").toList();
        QCOMPARE(games.size(), 1);
        QVERIFY(games.at(0).toMap().value("cover").toString().contains("/pictures/covers/"));

        screen->clickButtonTab(MyOrderViewController::NoPay);
        QTRY_COMPARE(column(screen, "status"), QStringList{"未付款"});
        screen->clickButtonTab(MyOrderViewController::Finish);
        QTRY_COMPARE(column(screen, "status"), QStringList{"已完成"});
    }

    void buttonsOfOtherStatesDoNothing_data()
    {
        QTest::addColumn<QString>("label");
        QTest::newRow("completed") << "已完成";
        QTest::newRow("canceled") << "已取消";
        QTest::newRow("pending") << "待定中";
    }

    void buttonsOfOtherStatesDoNothing()
    {
        QFETCH(QString, label);
        pointAt(m_store->baseUrl());
        QVERIFY(detailtest::signInDemoAccount());
        StackHarness harness;
        MyOrderViewController *screen = open(harness);
        QTRY_COMPARE(screen->tableMain()->count(), 4);
        QVERIFY(waitUntilLoaded(screen));
        const int row = rowWithStatus(screen, label);
        QVERIFY(row >= 0);
        screen->clickButtonPay(row);
        screen->clickButtonCancle(row);
        screen->clickButtonPay(99);
        screen->clickButtonCancle(-1);
        QCOMPARE(harness.top(), screen);
        QVERIFY(!HudRecorder::shared().history().contains(QStringLiteral("正在取消...")));
    }

    void payOpensTheOrderScreen()
    {
        pointAt(m_store->baseUrl());
        QVERIFY(detailtest::signInDemoAccount());
        StackHarness harness;
        MyOrderViewController *screen = open(harness);
        QTRY_COMPARE(screen->tableMain()->count(), 4);
        const int row = rowWithStatus(screen, "未付款");
        const QString orderId = screen->arraySource().at(row).id;
        screen->clickButtonPay(row);
        auto *confirm = qobject_cast<ConfirmOrderViewController *>(harness.top());
        QVERIFY(confirm);
        QCOMPARE(confirm->gamesID(), QStringList{orderId});
        QCOMPARE(confirm->type(), 2);
    }

    void cancelThenReload()
    {
        // A store of its own: the cancellation must not change the other tests' orders.
        InProcessStore store;
        StackHarness harness;
        MyOrderViewController *screen = openUnpaidTab(store, harness);
        QVERIFY(screen);

        screen->clickButtonCancle(0);
        QCOMPARE(Hud::shared().text(), QStringLiteral("正在取消..."));
        QVERIFY(Hud::shared().isMasked());
        // No question asked: the list reloads without the order.
        QTRY_COMPARE(screen->tableMain()->count(), 0);
        QVERIFY(waitUntilLoaded(screen));
        screen->clickButtonTab(MyOrderViewController::All);
        QTRY_COMPARE(screen->tableMain()->count(), 4);
        QVERIFY(waitUntilLoaded(screen));
        QCOMPARE(rowWithStatus(screen, "未付款"), -1);
        QCOMPARE(column(screen, "status").count("已取消"), 2);
    }

    void failedCancelKeepsTheOrder()
    {
        InProcessStore store;
        StackHarness harness;
        MyOrderViewController *screen = openUnpaidTab(store, harness);
        QVERIFY(screen);
        const QString orderId = screen->arraySource().at(0).id;

        // Cancelled elsewhere meanwhile: the store refuses the second cancellation.
        bool cancelled = false;
        NetWorkHelper::shareInstance()->cancleMyOrderListWithOrderID(
                orderId, {}, {}, [&](const QVariant &, const QVariant &) { cancelled = true; },
                [](const QVariant &, const QString &, const QVariant &) {});
        QTRY_VERIFY(cancelled);

        screen->clickButtonCancle(0);
        QTRY_COMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(Hud::shared().text(), QStringLiteral("只能取消未付款的订单"));
        QCOMPARE(column(screen, "status"), QStringList{"未付款"});
        QCOMPARE(screen->arraySource().at(0).id, orderId);
        QVERIFY(!screen->refreshHeader()->isRefreshing());
    }

    void viewsOfEachTab_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("rows");
        QTest::newRow("all") << 0 << 4;
        QTest::newRow("unpaid") << 1 << 1;
        QTest::newRow("completed") << 2 << 1;
    }

    void viewsOfEachTab()
    {
        QFETCH(int, tab);
        QFETCH(int, rows);
        pointAt(m_store->baseUrl());
        QVERIFY(detailtest::signInDemoAccount());
        platform::Window window;
        auto *screen = MyOrderViewController::initWithFatherView(0);
        auto *home = new platform::ViewController;
        auto *navigation = new platform::NavigationController(home);
        window.setRootViewController(navigation);
        tarvel::test::PhoneWindow phone;
        QVERIFY(phone.show(&window));
        navigation->pushViewController(screen, false);
        QTRY_VERIFY(tarvel::test::findNamed(phone.root(), "orderList"));
        QQuickItem *tabItem
                = tarvel::test::findNamed(phone.root(), "orderTab" + QString::number(tab));
        QVERIFY(tabItem);
        QVERIFY(tarvel::test::tapWhenStill(phone.window(), tabItem));
        QTRY_COMPARE(screen->viewType(), MyOrderViewController::viewTypeForTab(tab));
        QTRY_COMPARE(screen->tableMain()->count(), rows);
        QVERIFY(waitUntilLoaded(screen));
        QTRY_VERIFY(!tarvel::test::findAllNamed(phone.root(), "orderState").isEmpty());
        // Unpaid orders carry their two buttons, the others none.
        const int unpaid = int(column(screen, "status").count("未付款"));
        QTRY_COMPARE(tarvel::test::findAllNamed(phone.root(), "buttonPay").size(), unpaid);
        QCOMPARE(tarvel::test::findAllNamed(phone.root(), "buttonCancle").size(), unpaid);
        QVERIFY(tarvel::test::findText(phone.root(), QStringLiteral("我的订单")));
        // The covers come from the store: the picture is taken once they show.
        QTRY_VERIFY(coversShown(phone.root()));
        QVERIFY(phone.screenshot(QStringLiteral("orders-%1.png").arg(QTest::currentDataTag())));
        QVERIFY2(tarvel::test::QmlWarnings::messages().isEmpty(),
                 qPrintable(tarvel::test::QmlWarnings::text()));
    }

    void longTitlesStayInTheirLine()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        pointAt(server.baseUrl());
        const QString longest = QStringLiteral(
                "星辰大海的远征者：银河边境的最后守望与失落文明的回响 年度豪华典藏版");
        server.setFallback(page(QVariantList{
                order(12, "in_checkout", "236.5",
                      {orderGame(longest, "168"),
                       orderGame(QStringLiteral("幻想王国 季票与全部扩展内容合集"), "88.5")}),
                order(11, "completed", "58", {orderGame(QStringLiteral("风暴猎人"), "58")})}));
        detailtest::signInLocally();
        platform::Window window;
        auto *navigation = new platform::NavigationController(new platform::ViewController);
        window.setRootViewController(navigation);
        tarvel::test::PhoneWindow phone;
        QVERIFY(phone.show(&window));
        auto *screen = MyOrderViewController::initWithFatherView(0);
        navigation->pushViewController(screen, false);
        QTRY_COMPARE(tarvel::test::findAllNamed(phone.root(), "orderGameName").size(), 3);
        QTRY_VERIFY(!tarvel::test::stacksBusy(phone.root()));
        for (QQuickItem *name : tarvel::test::findAllNamed(phone.root(), "orderGameName")) {
            QVERIFY(name->property("lineCount").toInt() <= 2);
            // The name ends before the price begins.
            const QQuickItem *price = nullptr;
            for (QQuickItem *sibling : name->parentItem()->childItems()) {
                if (sibling->objectName() == QLatin1String("orderGamePrice"))
                    price = sibling;
            }
            QVERIFY(price);
            QVERIFY(name->x() + name->width() <= price->x());
            if (name->property("text").toString() == longest)
                QVERIFY(name->property("truncated").toBool());
        }
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("orders-long-titles.png")));
    }
};

TARVEL_TEST_MAIN(TestOrders)
#include "tst_orders.moc"
