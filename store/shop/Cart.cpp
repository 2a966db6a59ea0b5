#include "shop/Cart.h"

#include "db/Database.h"

namespace {

QList<qint64> ids(SQLite::Database &db, const char *sql, qint64 accountId)
{
    SQLite::Statement query(db, sql);
    query.bind(1, static_cast<int64_t>(accountId));
    QList<qint64> result;
    while (query.executeStep())
        result.append(query.getColumn(0).getInt64());
    return result;
}

bool exists(SQLite::Database &db, const char *sql, qint64 accountId, qint64 productId)
{
    SQLite::Statement query(db, sql);
    query.bind(1, static_cast<int64_t>(accountId));
    query.bind(2, static_cast<int64_t>(productId));
    return query.executeStep();
}

} // namespace

namespace Cart {

qint64 count(SQLite::Database &db, qint64 accountId)
{
    SQLite::Statement query(db, "SELECT COUNT(*) FROM cart_items WHERE account_id = ?");
    query.bind(1, static_cast<int64_t>(accountId));
    query.executeStep();
    return query.getColumn(0).getInt64();
}

QList<qint64> productIds(SQLite::Database &db, qint64 accountId)
{
    return ids(db,
               "SELECT product_id FROM cart_items WHERE account_id = ? ORDER BY added_at, rowid",
               accountId);
}

bool contains(SQLite::Database &db, qint64 accountId, qint64 productId)
{
    return exists(db, "SELECT 1 FROM cart_items WHERE account_id = ? AND product_id = ?", accountId,
                  productId);
}

void add(SQLite::Database &db, qint64 accountId, qint64 productId, qint64 now)
{
    SQLite::Statement insert(db,
                             "INSERT OR IGNORE INTO cart_items (account_id, product_id, added_at) "
                             "VALUES (?, ?, ?)");
    insert.bind(1, static_cast<int64_t>(accountId));
    insert.bind(2, static_cast<int64_t>(productId));
    insert.bind(3, static_cast<int64_t>(now));
    insert.exec();
}

int remove(SQLite::Database &db, qint64 accountId, const QList<qint64> &productIds)
{
    int removed = 0;
    for (qint64 productId : productIds) {
        SQLite::Statement statement(
                db, "DELETE FROM cart_items WHERE account_id = ? AND product_id = ?");
        statement.bind(1, static_cast<int64_t>(accountId));
        statement.bind(2, static_cast<int64_t>(productId));
        removed += statement.exec();
    }
    return removed;
}

} // namespace Cart

namespace Library {

bool owns(SQLite::Database &db, qint64 accountId, qint64 productId)
{
    return exists(db, "SELECT 1 FROM owned_games WHERE account_id = ? AND product_id = ?",
                  accountId, productId);
}

QList<qint64> owned(SQLite::Database &db, qint64 accountId)
{
    return ids(db,
               "SELECT product_id FROM owned_games WHERE account_id = ? "
               "ORDER BY acquired_at DESC, product_id",
               accountId);
}

void grant(SQLite::Database &db, qint64 accountId, qint64 productId, qint64 orderId, qint64 now)
{
    SQLite::Statement insert(db, "INSERT OR IGNORE INTO owned_games (account_id, product_id, "
                                 "order_id, acquired_at) VALUES (?, ?, ?, ?)");
    insert.bind(1, static_cast<int64_t>(accountId));
    insert.bind(2, static_cast<int64_t>(productId));
    if (orderId > 0)
        insert.bind(3, static_cast<int64_t>(orderId));
    else
        insert.bind(3);
    insert.bind(4, static_cast<int64_t>(now));
    insert.exec();
}

} // namespace Library
