#include "shop/Orders.h"

#include "catalog/Catalog.h"
#include "core/Money.h"
#include "core/TimeText.h"
#include "db/Database.h"
#include "http/ApiError.h"
#include "shop/Cart.h"

#include <QJsonArray>

#include <algorithm>

qint64 Order::total() const
{
    qint64 sum = 0;
    for (const OrderGame &game : games)
        sum += game.price;
    return sum;
}

qint64 Order::discount() const
{
    qint64 sum = 0;
    for (const OrderLineItem &item : lineItems)
        sum += item.amount;
    return sum;
}

qint64 Order::subtotal() const
{
    return std::max<qint64>(total() - discount(), 1);
}

namespace Orders {

namespace {

Order readOrder(SQLite::Statement &row)
{
    Order order;
    order.id = row.getColumn(0).getInt64();
    order.accountId = row.getColumn(1).getInt64();
    order.state = Sql::text(row.getColumn(2));
    order.source = Sql::text(row.getColumn(3));
    order.paymentMethod = Sql::text(row.getColumn(4));
    order.createdAt = row.getColumn(5).getInt64();
    order.completedAt = row.getColumn(6).getInt64();
    return order;
}

void readLines(SQLite::Database &db, Order &order)
{
    SQLite::Statement games(db, "SELECT product_id, title, type_name, price FROM order_games "
                                "WHERE order_id = ? ORDER BY rowid");
    games.bind(1, static_cast<int64_t>(order.id));
    while (games.executeStep())
        order.games.append({games.getColumn(0).getInt64(), Sql::text(games.getColumn(1)),
                            Sql::text(games.getColumn(2)), games.getColumn(3).getInt64()});
    SQLite::Statement items(db, "SELECT id, item_type, type_value, amount, coupon_id FROM "
                                "order_line_items WHERE order_id = ? ORDER BY id");
    items.bind(1, static_cast<int64_t>(order.id));
    while (items.executeStep())
        order.lineItems.append({items.getColumn(0).getInt64(), Sql::text(items.getColumn(1)),
                                Sql::text(items.getColumn(2)), items.getColumn(3).getInt64(),
                                items.getColumn(4).getInt64()});
}

const char *const kOrderColumns
        = "SELECT id, account_id, state, source, payment_method, created_at, "
          "completed_at FROM orders ";

} // namespace

qint64 create(SQLite::Database &db, qint64 accountId, const QList<const Product *> &products,
              const QString &source, qint64 now)
{
    SQLite::Statement insert(db, "INSERT INTO orders (account_id, state, source, created_at) "
                                 "VALUES (?, 'in_checkout', ?, ?)");
    insert.bind(1, static_cast<int64_t>(accountId));
    Sql::bind(insert, 2, source);
    insert.bind(3, static_cast<int64_t>(now));
    insert.exec();
    const qint64 orderId = db.getLastInsertRowid();
    for (const Product *product : products) {
        SQLite::Statement line(db,
                               "INSERT INTO order_games (order_id, product_id, title, type_name, "
                               "price) VALUES (?, ?, ?, ?, ?)");
        line.bind(1, static_cast<int64_t>(orderId));
        line.bind(2, static_cast<int64_t>(product->id));
        Sql::bind(line, 3, product->title);
        Sql::bind(line, 4, product->typeName());
        line.bind(5, static_cast<int64_t>(product->salePrice));
        line.exec();
    }
    return orderId;
}

std::optional<Order> find(SQLite::Database &db, qint64 orderId)
{
    SQLite::Statement query(db, std::string(kOrderColumns) + "WHERE id = ?");
    query.bind(1, static_cast<int64_t>(orderId));
    if (!query.executeStep())
        return std::nullopt;
    Order order = readOrder(query);
    readLines(db, order);
    return order;
}

Order requireOwn(SQLite::Database &db, qint64 accountId, qint64 orderId)
{
    auto order = orderId > 0 ? find(db, orderId) : std::nullopt;
    if (!order || order->accountId != accountId)
        throw ApiError::orderNotFound();
    return *order;
}

QList<Order> page(SQLite::Database &db, qint64 accountId, const QString &state, int page)
{
    SQLite::Statement query(db, std::string(kOrderColumns)
                                        + "WHERE account_id = ? AND (? = '' OR state = ?) "
                                          "ORDER BY created_at DESC, id DESC LIMIT ? OFFSET ?");
    query.bind(1, static_cast<int64_t>(accountId));
    Sql::bind(query, 2, state);
    Sql::bind(query, 3, state);
    query.bind(4, kPageSize);
    query.bind(5, static_cast<int64_t>(page - 1) * kPageSize);
    QList<Order> orders;
    while (query.executeStep())
        orders.append(readOrder(query));
    for (Order &order : orders)
        readLines(db, order);
    return orders;
}

void complete(SQLite::Database &db, const Catalog &catalog, const Order &order,
              const QString &paymentMethod, qint64 now)
{
    SQLite::Statement paid(db, "UPDATE orders SET state = 'completed', payment_method = ?, "
                               "completed_at = ? WHERE id = ?");
    Sql::bind(paid, 1, paymentMethod);
    paid.bind(2, static_cast<int64_t>(now));
    paid.bind(3, static_cast<int64_t>(order.id));
    paid.exec();
    QList<qint64> bought;
    for (const OrderGame &game : order.games) {
        bought.append(game.productId);
        if (const Product *product = catalog.find(game.productId))
            bought.append(product->bundleItems);
    }
    for (qint64 productId : bought)
        Library::grant(db, order.accountId, productId, order.id, now);
    Cart::remove(db, order.accountId, bought);
    for (const OrderLineItem &item : order.lineItems) {
        SQLite::Statement used(db,
                               "UPDATE coupons SET used_order_id = ?, used_at = ? WHERE id = ?");
        used.bind(1, static_cast<int64_t>(order.id));
        used.bind(2, static_cast<int64_t>(now));
        used.bind(3, static_cast<int64_t>(item.couponId));
        used.exec();
    }
}

void cancel(SQLite::Database &db, const Order &order)
{
    SQLite::Statement canceled(db, "UPDATE orders SET state = 'canceled' WHERE id = ?");
    canceled.bind(1, static_cast<int64_t>(order.id));
    canceled.exec();
    SQLite::Statement released(db, "DELETE FROM order_line_items WHERE order_id = ?");
    released.bind(1, static_cast<int64_t>(order.id));
    released.exec();
    SQLite::Statement prepays(
            db, "UPDATE prepays SET state = 'cancel' WHERE order_id = ? AND state = 'pending'");
    prepays.bind(1, static_cast<int64_t>(order.id));
    prepays.exec();
}

QString paymentMethodTitle(const QString &name)
{
    if (name == QLatin1String("wechat"))
        return QStringLiteral("微信支付");
    if (name == QLatin1String("alipay"))
        return QStringLiteral("支付宝");
    return name;
}

QJsonObject checkoutJson(const Order &order)
{
    QJsonArray games;
    for (const OrderGame &game : order.games) {
        games.append(QJsonObject{{QStringLiteral("id"), game.productId},
                                 {QStringLiteral("title"), game.title},
                                 {QStringLiteral("type_name"), game.typeName},
                                 {QStringLiteral("price"), Money::text(game.price)}});
    }
    QJsonArray items;
    for (const OrderLineItem &item : order.lineItems) {
        items.append(QJsonObject{{QStringLiteral("id"), item.id},
                                 {QStringLiteral("item_type"), item.itemType},
                                 {QStringLiteral("type_value"), item.typeValue},
                                 {QStringLiteral("amount"), Money::text(item.amount)}});
    }
    const QJsonArray methods{QJsonObject{{QStringLiteral("name"), QStringLiteral("wechat")},
                                         {QStringLiteral("title"), QStringLiteral("微信支付")}}};
    return QJsonObject{{QStringLiteral("order_id"), order.id},
                       {QStringLiteral("state"), order.state},
                       {QStringLiteral("created_at"), TimeText::dateTime(order.createdAt)},
                       {QStringLiteral("order_games"), games},
                       {QStringLiteral("order_total"), Money::text(order.total())},
                       {QStringLiteral("order_subtotal"), Money::text(order.subtotal())},
                       {QStringLiteral("payment_methods"), methods},
                       {QStringLiteral("order_line_items"), items}};
}

QJsonObject historyJson(const Order &order, const QString &baseUrl)
{
    QJsonArray games;
    for (const OrderGame &game : order.games) {
        games.append(QJsonObject{
                {QStringLiteral("id"), game.productId},
                {QStringLiteral("name"), game.title},
                {QStringLiteral("tag"), game.typeName},
                {QStringLiteral("price"), Money::text(game.price)},
                {QStringLiteral("product_image"), Catalog::coverUrl(baseUrl, game.productId)}});
    }
    return QJsonObject{{QStringLiteral("id"), order.id},
                       {QStringLiteral("subtotal"), Money::text(order.subtotal())},
                       {QStringLiteral("type"), order.source},
                       {QStringLiteral("state"), order.state},
                       {QStringLiteral("created_at"), TimeText::dateTime(order.createdAt)},
                       {QStringLiteral("order_games"), games}};
}

QJsonObject completionJson(const Order &order)
{
    const bool completed = order.state == kCompleted;
    return QJsonObject{{QStringLiteral("completed"), completed ? 1 : 0},
                       {QStringLiteral("id"), order.id},
                       {QStringLiteral("state"), order.state},
                       {QStringLiteral("subtotal"), Money::text(order.subtotal())},
                       {QStringLiteral("payment_method"),
                        completed ? paymentMethodTitle(order.paymentMethod) : QString()}};
}

} // namespace Orders
