#include "TestEnvironment.h"

#include "models/Object_CartList.h"
#include "models/Object_Coupon.h"
#include "models/Object_MyGameList.h"
#include "models/Object_MyOrderList.h"
#include "models/Object_OrderDetail.h"
#include "util/ICRuntimeHelper.h"
#include "util/NSStringUtils.h"

#include <QJsonDocument>
#include <QTest>

namespace {

QVariant json(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("bad test JSON: %s", qPrintable(error.errorString()));
    return document.toVariant();
}

} // namespace

class TestOrderModels : public QObject
{
    Q_OBJECT

private slots:
    void sumsCartPrices_data();
    void sumsCartPrices();
    void mapsOrderDetail_data();
    void mapsOrderDetail();
    void mapsOrderHistory();
    void mapsCouponAndOwnedGames();
    void roundTripsTypedLists();
};

// The cart total reads each line's sale_price as a number; a missing price counts as 0.
void TestOrderModels::sumsCartPrices_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("salePrices");
    QTest::addColumn<double>("total");

    QTest::newRow("text prices") << QByteArray(
            R"([{"id":"1","sale_price":"58"},{"id":"2","sale_price":"10.5"}])")
                                 << QStringList{"58", "10.5"} << 68.5;
    QTest::newRow("number prices")
            << QByteArray(R"([{"id":1,"sale_price":58},{"id":2,"sale_price":0.1}])")
            << QStringList{"58", "0.1"} << 58.1;
    QTest::newRow("missing price") << QByteArray(R"([{"id":"1"},{"id":"2","sale_price":"30"}])")
                                   << QStringList{QString(), "30"} << 30.0;
    QTest::newRow("null price and non-dictionary line")
            << QByteArray(R"([{"id":"1","sale_price":null},"junk",{"sale_price":"5"}])")
            << QStringList{QString(), "5"} << 5.0;
    QTest::newRow("empty cart") << QByteArray("[]") << QStringList{} << 0.0;
    QTest::newRow("cart answer not a list")
            << QByteArray(R"({"id":"1","sale_price":"9"})") << QStringList{} << 0.0;
}

void TestOrderModels::sumsCartPrices()
{
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, salePrices);
    QFETCH(double, total);

    const QList<Object_CartList> lines
            = ICRuntimeHelper::analysArrayData<Object_CartList>(json(answer))
                      .value_or(QList<Object_CartList>());
    QStringList prices;
    double sum = 0;
    for (const Object_CartList &line : lines) {
        prices << line.sale_price;
        sum += NSStringUtils::doubleValue(line.sale_price);
    }
    QCOMPARE(prices, salePrices);
    for (qsizetype i = 0; i < prices.size(); ++i)
        QCOMPARE(prices.at(i).isNull(), salePrices.at(i).isNull());
    QCOMPARE(sum, total);
}

void TestOrderModels::mapsOrderDetail_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("gameTitles");
    QTest::addColumn<int>("paymentMethods");
    QTest::addColumn<int>("lineItems");

    QTest::newRow("full order") << QByteArray(R"({"order_id":77,"order_subtotal":"88.5",
        "order_games":[{"id":"1","title":"文明VI","type_name":"游戏","price":58},
                       {"id":"2","title":"DLC","price":"30.5"}],
        "payment_methods":[{"name":"wechat"}],
        "order_line_items":[{"type_value":"CODE1","amount":"10","id":"9"}]})")
                                << QStringList{QStringLiteral("文明VI"), "DLC"} << 1 << 1;
    QTest::newRow("no line items") << QByteArray(R"({"order_id":"77","order_games":[],
        "payment_methods":[{"name":"wechat"},{"name":"alipay"}]})")
                                   << QStringList{} << 2 << 0;
    QTest::newRow("wrong kinds") << QByteArray(R"({"order_games":"none","payment_methods":{},
        "order_line_items":"CODE1"})")
                                 << QStringList{} << 0 << 0;
    QTest::newRow("games with junk elements")
            << QByteArray(R"({"order_games":[null,{"title":"A"},3,{"title":"B"}]})")
            << QStringList{"A", "B"} << 0 << 0;
}

void TestOrderModels::mapsOrderDetail()
{
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, gameTitles);
    QFETCH(int, paymentMethods);
    QFETCH(int, lineItems);

    const auto order = JSONModel::initWithDictionary<Object_OrderDetail>(json(answer));
    QVERIFY(order.has_value());
    QStringList titles;
    for (const Object_OrderDetailGames &game : order->order_games)
        titles << game.title;
    QCOMPARE(titles, gameTitles);
    QCOMPARE(order->payment_methods.size(), paymentMethods);
    QCOMPARE(order->order_line_items.size(), lineItems);
}

void TestOrderModels::mapsOrderHistory()
{
    const QList<Object_MyOrderList> orders
            = ICRuntimeHelper::analysArrayData<Object_MyOrderList>(
                      json(R"([{"id":5,"subtotal":"128","type":"normal","state":"in_checkout",
                      "created_at":"2024-05-01T10:00:00+08:00",
                      "order_games":[{"name":"星露谷物语","tag":"本体","price":48},{"name":"X"}]},
                     {"id":"6","state":"completed"}])"))
                      .value_or(QList<Object_MyOrderList>());
    QCOMPARE(orders.size(), 2);
    QCOMPARE(orders.at(0).id, QStringLiteral("5"));
    QCOMPARE(orders.at(0).state, QStringLiteral("in_checkout"));
    QCOMPARE(orders.at(0).order_games.size(), 2);
    QCOMPARE(orders.at(0).order_games.at(0).name, QStringLiteral("星露谷物语"));
    QCOMPARE(orders.at(0).order_games.at(0).price, QStringLiteral("48"));
    QVERIFY(orders.at(0).order_games.at(1).tag.isNull());
    QVERIFY(orders.at(1).order_games.isEmpty());
    QVERIFY(orders.at(1).subtotal.isNull());
}

void TestOrderModels::mapsCouponAndOwnedGames()
{
    const auto coupon = JSONModel::initWithDictionary<Object_Coupon>(
            json(R"({"amount":10,"code":"SPRING","id":3,"line_item_id":"41","subtotal":78.5})"));
    QVERIFY(coupon.has_value());
    QCOMPARE(QStringList({coupon->amount, coupon->code, coupon->id, coupon->line_item_id,
                          coupon->subtotal}),
             QStringList({"10", "SPRING", "3", "41", "78.5"}));

    const QVariant answer = json(R"({"games":[{"gameId":1,"gameIcon":"i.png","productImage":"p.jpg",
                                               "game_id":"wrong key"}]})");
    const QList<Object_MyGameList> games
            = ICRuntimeHelper::analysArrayData<Object_MyGameList>(answer.toMap().value("games"))
                      .value_or(QList<Object_MyGameList>());
    QCOMPARE(games.size(), 1);
    QCOMPARE(games.at(0).gameId, QStringLiteral("1"));
    QCOMPARE(games.at(0).gameIcon, QStringLiteral("i.png"));
    QCOMPARE(games.at(0).productImage, QStringLiteral("p.jpg"));
}

void TestOrderModels::roundTripsTypedLists()
{
    const QVariant answer = json(R"({"order_id":"77","order_subtotal":"30",
        "order_games":[{"id":"1","title":"A","price":"30"}],"payment_methods":[{"name":"wechat"}]})");
    const auto order = JSONModel::initWithDictionary<Object_OrderDetail>(answer);
    QVERIFY(order.has_value());
    const QVariantMap dictionary = JSONModel::toDictionary(*order);
    QCOMPARE(dictionary.value("order_games"),
             QVariant(QVariantList{QVariantMap{{"id", "1"}, {"title", "A"}, {"price", "30"}}}));
    QCOMPARE(JSONModel::initWithDictionary<Object_OrderDetail>(dictionary), order);
}

TARVEL_TEST_MAIN(TestOrderModels)
#include "tst_ordermodels.moc"
