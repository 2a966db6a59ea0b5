#pragma once

#include <QString>

#include <optional>

struct Order;
struct OrderLineItem;

namespace SQLite {
class Database;
}

// Coupon codes: a fixed amount off an order of at least a minimum, used once. A code attached to
// an unpaid order is reserved for it until the order is paid (then it is used) or cancelled.
struct Coupon
{
    qint64 id = 0;
    QString code;
    qint64 amount = 0;
    qint64 minimum = 0;
    qint64 accountId = 0; // 0: anyone may use it
    qint64 expiresAt = 0;
    qint64 usedAt = 0;
};

namespace Coupons {

std::optional<Coupon> byCode(SQLite::Database &db, const QString &code);
qint64 create(SQLite::Database &db, const QString &code, qint64 amount, qint64 minimum,
              qint64 accountId, qint64 expiresAt);
// Attaches the code to the account's unpaid order; throws ApiError for every reason it may not.
// Either change voids the order's open payment requests: they ask for the amount before it.
OrderLineItem attach(SQLite::Database &db, const Order &order, const QString &code, qint64 now);
// Removes one coupon line of the order; throws ApiError when it has no such line.
void detach(SQLite::Database &db, const Order &order, qint64 lineItemId, qint64 now);

} // namespace Coupons
