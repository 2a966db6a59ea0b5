#pragma once

#include "catalog/Product.h"

#include <QList>

// Builds the seeded catalogue: 100 base games, 45 DLCs and 15 bundles, the same on every machine
// except that pre-sales are placed after `now`.
namespace CatalogGenerator {

inline constexpr int kGames = 100;
inline constexpr int kDlcs = 45;
inline constexpr int kBundles = 15;

QList<Product> products(qint64 now);
QList<FocusRec> focusRecs(const QList<Product> &products, qint64 now);

} // namespace CatalogGenerator
