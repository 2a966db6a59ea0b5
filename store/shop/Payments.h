#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

class Catalog;
struct Order;

namespace SQLite {
class Database;
}

// WeChat app payments. The store asks the provider for a prepay id and hands the client the
// signed parameters of the payment request; the provider later reports the outcome, which
// completes the order. In sandbox mode the provider is tarvel-store itself.
namespace Payments {

inline const QString kWeChat = QStringLiteral("wechat");
inline const QString kAppId = QStringLiteral("wx7d3b5f1a9c2e4860");
inline const QString kPartnerId = QStringLiteral("1900000109");

// Records a prepay for the order and answers the "params_info" of the payment request.
QJsonObject prepay(SQLite::Database &db, const Order &order, const QString &openId, qint64 now);

// A prepay as the payer sees it before answering: its order and the amount due.
struct PrepayInfo
{
    QString prepayId;
    qint64 orderId = 0;
    qint64 amount = 0; // fen
    QString state; // "pending", "success" or "cancel"
};
std::optional<PrepayInfo> find(SQLite::Database &db, const QString &prepayId);

struct Settlement
{
    qint64 orderId = 0;
    QString orderState;
};
// The provider's report for a prepay: success completes the order, cancel leaves it unpaid.
// A success carries the amount paid (fen), which must be the prepay's amount and what the order
// is due now; an order whose games the account already owns is not completed. Throws ApiError
// for an unknown, settled or void prepay and for every refusal, which changes nothing.
Settlement settle(SQLite::Database &db, const Catalog &catalog, const QString &prepayId,
                  bool success, qint64 paidAmount, qint64 now);

// Voids the order's open prepays: the amount they ask for no longer holds (a coupon changed).
void voidOpen(SQLite::Database &db, qint64 orderId, qint64 now);

} // namespace Payments
