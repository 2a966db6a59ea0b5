#pragma once

#include <QList>

namespace SQLite {
class Database;
}

// The cart lines and the owned games of an account.
namespace Cart {
qint64 count(SQLite::Database &db, qint64 accountId);
QList<qint64> productIds(SQLite::Database &db, qint64 accountId); // oldest first
bool contains(SQLite::Database &db, qint64 accountId, qint64 productId);
void add(SQLite::Database &db, qint64 accountId, qint64 productId, qint64 now);
int remove(SQLite::Database &db, qint64 accountId, const QList<qint64> &productIds);
} // namespace Cart

namespace Library {
bool owns(SQLite::Database &db, qint64 accountId, qint64 productId);
QList<qint64> owned(SQLite::Database &db, qint64 accountId); // newest first
void grant(SQLite::Database &db, qint64 accountId, qint64 productId, qint64 orderId, qint64 now);
} // namespace Library
