#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

struct Product;
class Catalog;

namespace SQLite {
class Database;
}

struct OrderGame
{
    qint64 productId = 0;
    QString title;
    QString typeName;
    qint64 price = 0; // fen, the sale price when the order was made
};

// A non-game line of an order: an attached coupon.
struct OrderLineItem
{
    qint64 id = 0;
    QString itemType;
    QString typeValue; // the coupon code as entered
    qint64 amount = 0;
    qint64 couponId = 0;
};

struct Order
{
    qint64 id = 0;
    qint64 accountId = 0;
    QString state;
    QString source; // "cart" or "one_key"
    QString paymentMethod;
    qint64 createdAt = 0;
    qint64 completedAt = 0;
    QList<OrderGame> games;
    QList<OrderLineItem> lineItems;

    qint64 total() const; // the games
    qint64 discount() const; // the coupons
    qint64 subtotal() const; // what is due: never below one fen
};

// Orders and their states: "in_checkout" (not paid), "completed", "canceled", "pending".
namespace Orders {

inline const QString kInCheckout = QStringLiteral("in_checkout");
inline const QString kCompleted = QStringLiteral("completed");
inline const QString kCanceled = QStringLiteral("canceled");
inline const QString kPending = QStringLiteral("pending");
inline constexpr int kPageSize = 10;

qint64 create(SQLite::Database &db, qint64 accountId, const QList<const Product *> &products,
              const QString &source, qint64 now);
std::optional<Order> find(SQLite::Database &db, qint64 orderId);
// The account's own order; another account's order is answered as not found.
Order requireOwn(SQLite::Database &db, qint64 accountId, qint64 orderId);
// One page of the account's orders, newest first; an empty state means every state.
QList<Order> page(SQLite::Database &db, qint64 accountId, const QString &state, int page);

// Paid: the games (and a bundle's contents) become the account's, its coupons are used, and the
// games leave the cart.
void complete(SQLite::Database &db, const Catalog &catalog, const Order &order,
              const QString &paymentMethod, qint64 now);
void cancel(SQLite::Database &db, const Order &order);

QString paymentMethodTitle(const QString &name);
QJsonObject checkoutJson(const Order &order);
// An order of the history; each game carries its cover under `baseUrl`.
QJsonObject historyJson(const Order &order, const QString &baseUrl);
QJsonObject completionJson(const Order &order);

} // namespace Orders
