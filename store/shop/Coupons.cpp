#include "shop/Coupons.h"

#include "core/Money.h"
#include "db/Database.h"
#include "http/ApiError.h"
#include "shop/Orders.h"
#include "shop/Payments.h"

namespace Coupons {

namespace {

bool reservedByAnotherOrder(SQLite::Database &db, qint64 couponId, qint64 orderId)
{
    SQLite::Statement query(db,
                            "SELECT 1 FROM order_line_items JOIN orders ON orders.id = order_id "
                            "WHERE coupon_id = ? AND order_id <> ? AND orders.state IN "
                            "('in_checkout', 'pending')");
    query.bind(1, static_cast<int64_t>(couponId));
    query.bind(2, static_cast<int64_t>(orderId));
    return query.executeStep();
}

void requireOpen(const Order &order)
{
    if (order.state != Orders::kInCheckout)
        throw ApiError::error(409, QStringLiteral("只能修改未付款的订单"));
}

} // namespace

std::optional<Coupon> byCode(SQLite::Database &db, const QString &code)
{
    SQLite::Statement query(db, "SELECT id, code, amount, minimum, account_id, expires_at, used_at "
                                "FROM coupons WHERE code = ?");
    Sql::bind(query, 1, code);
    if (!query.executeStep())
        return std::nullopt;
    return Coupon{query.getColumn(0).getInt64(), Sql::text(query.getColumn(1)),
                  query.getColumn(2).getInt64(), query.getColumn(3).getInt64(),
                  query.getColumn(4).getInt64(), query.getColumn(5).getInt64(),
                  query.getColumn(6).getInt64()};
}

qint64 create(SQLite::Database &db, const QString &code, qint64 amount, qint64 minimum,
              qint64 accountId, qint64 expiresAt)
{
    SQLite::Statement insert(db,
                             "INSERT INTO coupons (code, amount, minimum, account_id, expires_at) "
                             "VALUES (?, ?, ?, ?, ?)");
    Sql::bind(insert, 1, code);
    insert.bind(2, static_cast<int64_t>(amount));
    insert.bind(3, static_cast<int64_t>(minimum));
    if (accountId > 0)
        insert.bind(4, static_cast<int64_t>(accountId));
    else
        insert.bind(4);
    insert.bind(5, static_cast<int64_t>(expiresAt));
    insert.exec();
    return db.getLastInsertRowid();
}

OrderLineItem attach(SQLite::Database &db, const Order &order, const QString &code, qint64 now)
{
    requireOpen(order);
    const auto coupon = byCode(db, code);
    // Another account's code reads as unknown: whether it exists is none of this user's business.
    if (!coupon || (coupon->accountId > 0 && coupon->accountId != order.accountId))
        throw ApiError::error(422, QStringLiteral("该优惠码无效，请核对后重新输入"));
    if (coupon->usedAt > 0)
        throw ApiError::error(409, QStringLiteral("该优惠码已被使用"));
    if (coupon->expiresAt <= now)
        throw ApiError::error(409, QStringLiteral("该优惠码已过期"));
    if (!order.lineItems.isEmpty())
        throw ApiError::error(409, QStringLiteral("每个订单只能使用一张优惠码"));
    if (order.total() < coupon->minimum)
        throw ApiError::error(
                409,
                QStringLiteral("订单满%1元才能使用该优惠码").arg(Money::text(coupon->minimum)));
    if (reservedByAnotherOrder(db, coupon->id, order.id))
        throw ApiError::error(409,
                              QStringLiteral("该优惠码已用于另一个未付款的订单，请先取消那个订单"));

    SQLite::Statement insert(db, "INSERT INTO order_line_items (order_id, item_type, coupon_id, "
                                 "type_value, amount) VALUES (?, 'coupon', ?, ?, ?)");
    insert.bind(1, static_cast<int64_t>(order.id));
    insert.bind(2, static_cast<int64_t>(coupon->id));
    Sql::bind(insert, 3, code);
    insert.bind(4, static_cast<int64_t>(coupon->amount));
    insert.exec();
    Payments::voidOpen(db, order.id, now);
    return OrderLineItem{db.getLastInsertRowid(), QStringLiteral("coupon"), code, coupon->amount,
                         coupon->id};
}

void detach(SQLite::Database &db, const Order &order, qint64 lineItemId, qint64 now)
{
    requireOpen(order);
    SQLite::Statement statement(db, "DELETE FROM order_line_items WHERE id = ? AND order_id = ?");
    statement.bind(1, static_cast<int64_t>(lineItemId));
    statement.bind(2, static_cast<int64_t>(order.id));
    if (statement.exec() == 0)
        throw ApiError::error(404, QStringLiteral("该订单没有这张优惠码"));
    Payments::voidOpen(db, order.id, now);
}

} // namespace Coupons
