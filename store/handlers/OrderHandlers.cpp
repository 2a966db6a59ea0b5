#include "StoreContext.h"
#include "core/Money.h"
#include "handlers/Handlers.h"
#include "handlers/ShopRules.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "http/Paging.h"
#include "shop/Coupons.h"
#include "shop/Orders.h"
#include "shop/Payments.h"

#include <QJsonArray>

// Orders: made from the cart (CartHandlers) or for one game here, then checkout, coupons,
// payment, completion, history and cancelling. Only the owner ever sees an order.
namespace {

Order ownOrder(Exchange &exchange, qint64 accountId, qint64 orderId)
{
    return exchange.store().database().read(
            [&](SQLite::Database &db) { return Orders::requireOwn(db, accountId, orderId); });
}

qint64 orderIdField(Exchange &exchange)
{
    bool ok = false;
    const qint64 id = exchange.field("order_id").trimmed().toLongLong(&ok);
    if (!ok || id <= 0)
        throw ApiError::fail(QStringLiteral("order_id"), QStringLiteral("请选择有效的"),
                             QStringLiteral("订单"));
    return id;
}

// POST /orders.json: buy one game at once.
void createOneKey(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const QList<const Product *> products = ShopRules::productsOf(
            exchange, exchange.fieldList("game_id").mid(0, 1), QStringLiteral("game_id"));
    const qint64 orderId = exchange.store().database().write([&](SQLite::Database &db) {
        ShopRules::requirePurchasable(db, session.accountId, *products.first());
        return Orders::create(db, session.accountId, products, QStringLiteral("one_key"),
                              exchange.now());
    });
    exchange.success(QJsonObject{{QStringLiteral("url"), QStringLiteral("/orders/%1").arg(orderId)},
                                 {QStringLiteral("order_id"), orderId}});
}

// GET /orders/<id>.json and /orders/<id>/checkout.json
void checkout(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    exchange.success(
            Orders::checkoutJson(ownOrder(exchange, session.accountId, exchange.routeId("id"))));
}

// GET /orders.json?type=&page=
void history(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    const QString type = exchange.hasField("type") ? exchange.field("type") : QStringLiteral("all");
    const QStringList states{Orders::kInCheckout, Orders::kCompleted, Orders::kCanceled,
                             Orders::kPending};
    if (type != QLatin1String("all") && !states.contains(type))
        throw ApiError::fail(QStringLiteral("type"), QStringLiteral("请选择正确的"),
                             QStringLiteral("订单状态"));
    const int page = Paging::page(exchange);
    const QList<Order> orders = exchange.store().database().read([&](SQLite::Database &db) {
        return Orders::page(db, session.accountId, type == QLatin1String("all") ? QString() : type,
                            page);
    });
    QJsonArray list;
    for (const Order &order : orders)
        list.append(Orders::historyJson(order, exchange.baseUrl()));
    exchange.success(list);
}

// POST /orders/<id>/line_items.json: attach a coupon code.
void attachCoupon(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const QString itemType = exchange.field("item_type").trimmed();
    const QString code = exchange.field("code").trimmed();
    FieldErrors errors;
    if (itemType != QLatin1String("coupon"))
        errors.add(QStringLiteral("item_type"), QStringLiteral("请选择正确的"),
                   QStringLiteral("优惠类型"));
    if (code.isEmpty())
        errors.add(QStringLiteral("code"), QStringLiteral("请输入"), QStringLiteral("优惠码"));
    errors.raiseIfAny();
    const qint64 orderId = exchange.routeId("id");
    const auto [item, order] = exchange.store().database().write([&](SQLite::Database &db) {
        const OrderLineItem item = Coupons::attach(
                db, Orders::requireOwn(db, session.accountId, orderId), code, exchange.now());
        return std::pair{item, Orders::requireOwn(db, session.accountId, orderId)};
    });
    exchange.success(QJsonObject{{QStringLiteral("id"), item.couponId},
                                 {QStringLiteral("line_item_id"), item.id},
                                 {QStringLiteral("code"), item.typeValue},
                                 {QStringLiteral("amount"), Money::text(item.amount)},
                                 {QStringLiteral("subtotal"), Money::text(order.subtotal())},
                                 {QStringLiteral("order_id"), order.id}});
}

// DELETE (or POST with _method=delete) /orders/<id>/line_items/<line>.json
void detachCoupon(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const qint64 orderId = exchange.routeId("id");
    const Order order = exchange.store().database().write([&](SQLite::Database &db) {
        Coupons::detach(db, Orders::requireOwn(db, session.accountId, orderId),
                        exchange.routeId("line"), exchange.now());
        return Orders::requireOwn(db, session.accountId, orderId);
    });
    exchange.success(QJsonObject{{QStringLiteral("subtotal"), Money::text(order.subtotal())},
                                 {QStringLiteral("order_total"), Money::text(order.total())},
                                 {QStringLiteral("order_id"), order.id}});
}

// POST /orders/pay.json: the WeChat payment request's parameters.
void pay(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const QString method = exchange.field("payment_method").trimmed();
    const qint64 orderId = orderIdField(exchange);
    if (method != Payments::kWeChat)
        throw ApiError::error(422, QStringLiteral("暂不支持该支付方式，请使用微信支付"));
    const QJsonObject params = exchange.store().database().write([&](SQLite::Database &db) {
        const Order order = Orders::requireOwn(db, session.accountId, orderId);
        if (order.state != Orders::kInCheckout)
            throw ApiError::error(409, QStringLiteral("该订单已支付或已取消"));
        for (const OrderGame &game : order.games) {
            if (const Product *product = exchange.store().catalog().find(game.productId))
                ShopRules::requirePurchasable(db, session.accountId, *product);
        }
        return Payments::prepay(db, order, exchange.field("openID").left(128), exchange.now());
    });
    exchange.success(QJsonObject{{QStringLiteral("params_info"), params},
                                 {QStringLiteral("order_id"), orderId},
                                 {QStringLiteral("payment_method"), method}});
}

// GET /orders/<id>/complete.json
void completion(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    exchange.success(
            Orders::completionJson(ownOrder(exchange, session.accountId, exchange.routeId("id"))));
}

// POST /orders/<id>/cancel.json
void cancel(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const qint64 orderId = exchange.routeId("id");
    exchange.store().database().write([&](SQLite::Database &db) {
        const Order order = Orders::requireOwn(db, session.accountId, orderId);
        if (order.state != Orders::kInCheckout)
            throw ApiError::error(409, QStringLiteral("只能取消未付款的订单"));
        Orders::cancel(db, order);
    });
    exchange.success(QJsonObject{{QStringLiteral("order_id"), orderId},
                                 {QStringLiteral("state"), Orders::kCanceled}});
}

} // namespace

void Handlers::installOrder(Router &router)
{
    router.add("POST", "/orders.json", createOneKey);
    router.add("GET", "/orders.json", history);
    router.add("POST", "/orders/pay.json", pay);
    router.add("GET", "/orders/:id.json", checkout);
    router.add("GET", "/orders/:id/checkout.json", checkout);
    router.add("POST", "/orders/:id/line_items.json", attachCoupon);
    router.add("DELETE", "/orders/:id/line_items/:line.json", detachCoupon);
    router.add("GET", "/orders/:id/complete.json", completion);
    router.add("POST", "/orders/:id/cancel.json", cancel);
}
