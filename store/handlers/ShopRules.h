#pragma once

#include <QList>
#include <QStringList>

class Exchange;
struct Product;

namespace SQLite {
class Database;
}

// What may be bought, shared by the cart and the orders.
namespace ShopRules {

// The products of a "game_id"/"game_ids" field; throws ApiError for malformed or unknown ids.
QList<const Product *> productsOf(Exchange &exchange, const QStringList &ids, const QString &field);
// Throws ApiError when the product is blocked or already owned by the account.
void requirePurchasable(SQLite::Database &db, qint64 accountId, const Product &product);

} // namespace ShopRules
