#pragma once

#include "catalog/Product.h"

#include <QList>

namespace SQLite {
class Database;
}

// Writes and reads the catalogue tables.
namespace CatalogSeed {
void write(SQLite::Database &db, const QList<Product> &products, const QList<FocusRec> &recs);
QList<Product> readProducts(SQLite::Database &db);
QList<FocusRec> readFocusRecs(SQLite::Database &db);
} // namespace CatalogSeed
