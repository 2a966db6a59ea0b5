#include "shop/Payments.h"

#include "core/Crypto.h"
#include "core/Money.h"
#include "db/Database.h"
#include "http/ApiError.h"
#include "shop/Cart.h"
#include "shop/Orders.h"

#include <QDateTime>

namespace Payments {

namespace {

// The sandbox merchant's API key; a real deployment keeps its own out of the source.
const QByteArray kSigningKey = QByteArrayLiteral("tarvel-sandbox-merchant-key-0001");

QString sign(const QList<std::pair<QString, QString>> &sortedParameters)
{
    QStringList pairs;
    for (const auto &[key, value] : sortedParameters)
        pairs.append(key + QLatin1Char('=') + value);
    return QString::fromLatin1(
            Crypto::hmacSha256Hex(kSigningKey, pairs.join(QLatin1Char('&')).toUtf8()));
}

} // namespace

QJsonObject prepay(SQLite::Database &db, const Order &order, const QString &openId, qint64 now)
{
    const QString prepayId
            = QStringLiteral("wx%1%2")
                      .arg(QDateTime::fromSecsSinceEpoch(now).toUTC().toString(
                              QStringLiteral("yyyyMMddHHmmss")))
                      .arg(Crypto::randomFrom(QStringLiteral("0123456789abcdef"), 20));
    SQLite::Statement insert(db, "INSERT INTO prepays (prepay_id, order_id, account_id, open_id, "
                                 "amount, state, created_at) VALUES (?, ?, ?, ?, ?, 'pending', ?)");
    Sql::bind(insert, 1, prepayId);
    insert.bind(2, static_cast<int64_t>(order.id));
    insert.bind(3, static_cast<int64_t>(order.accountId));
    Sql::bind(insert, 4, openId);
    insert.bind(5, static_cast<int64_t>(order.subtotal()));
    insert.bind(6, static_cast<int64_t>(now));
    insert.exec();

    const QString nonce
            = Crypto::randomFrom(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"), 32);
    const QString timestamp = QString::number(now);
    const QList<std::pair<QString, QString>> parameters{
            {QStringLiteral("appid"), kAppId},
            {QStringLiteral("noncestr"), nonce},
            {QStringLiteral("package"), QStringLiteral("Sign=WXPay")},
            {QStringLiteral("partnerid"), kPartnerId},
            {QStringLiteral("prepayid"), prepayId},
            {QStringLiteral("timestamp"), timestamp}};
    QJsonObject params;
    for (const auto &[key, value] : parameters)
        params.insert(key, value);
    params.insert(QStringLiteral("sign"), sign(parameters));
    return params;
}

std::optional<PrepayInfo> find(SQLite::Database &db, const QString &prepayId)
{
    SQLite::Statement query(db, "SELECT order_id, amount, state FROM prepays WHERE prepay_id = ?");
    Sql::bind(query, 1, prepayId);
    if (!query.executeStep())
        return std::nullopt;
    return PrepayInfo{prepayId, query.getColumn(0).getInt64(), query.getColumn(1).getInt64(),
                      Sql::text(query.getColumn(2))};
}

Settlement settle(SQLite::Database &db, const Catalog &catalog, const QString &prepayId,
                  bool success, qint64 paidAmount, qint64 now)
{
    const auto prepay = find(db, prepayId);
    if (!prepay)
        throw ApiError::error(404, QStringLiteral("RecordNotFound: 预支付交易不存在"));
    if (prepay->state == QLatin1String("cancel"))
        throw ApiError::error(409, QStringLiteral("该笔支付已取消或已失效，请重新发起支付"));
    if (prepay->state != QLatin1String("pending"))
        throw ApiError::error(409, QStringLiteral("该笔支付已经处理过了"));
    const auto order = Orders::find(db, prepay->orderId);
    if (!order)
        throw ApiError::orderNotFound();
    if (success) {
        if (order->state != Orders::kInCheckout && order->state != Orders::kPending)
            throw ApiError::error(409, QStringLiteral("订单已取消或已支付，无法完成支付"));
        if (paidAmount != prepay->amount)
            throw ApiError::error(409, QStringLiteral("支付金额与订单应付金额¥%1不符，支付未完成")
                                               .arg(Money::text(prepay->amount)));
        if (order->subtotal() != prepay->amount)
            throw ApiError::error(409, QStringLiteral("订单应付金额已变为¥%1，请重新发起支付")
                                               .arg(Money::text(order->subtotal())));
        for (const OrderGame &game : order->games) {
            if (Library::owns(db, order->accountId, game.productId))
                throw ApiError::error(
                        409,
                        QStringLiteral("您已拥有《%1》，无需重复购买，支付未完成").arg(game.title));
        }
    }

    SQLite::Statement settled(db,
                              "UPDATE prepays SET state = ?, settled_at = ? WHERE prepay_id = ?");
    settled.bind(1, success ? "success" : "cancel");
    settled.bind(2, static_cast<int64_t>(now));
    Sql::bind(settled, 3, prepayId);
    settled.exec();
    if (!success)
        return {order->id, order->state};
    Orders::complete(db, catalog, *order, kWeChat, now);
    return {order->id, Orders::kCompleted};
}

void voidOpen(SQLite::Database &db, qint64 orderId, qint64 now)
{
    SQLite::Statement voided(db, "UPDATE prepays SET state = 'cancel', settled_at = ? "
                                 "WHERE order_id = ? AND state = 'pending'");
    voided.bind(1, static_cast<int64_t>(now));
    voided.bind(2, static_cast<int64_t>(orderId));
    voided.exec();
}

} // namespace Payments
