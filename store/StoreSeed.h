#pragma once

#include <QtGlobal>

class Database;

// The first start of a store: the catalogue, the focus recommendations, public coupon codes and
// two demo accounts (one by phone, one by e-mail) with owned games, a cart, orders in every state
// and unused coupons. Written in one transaction, so a store is either seeded or empty.
namespace StoreSeed {

// Phone account and e-mail account of the demo, both with this password.
inline constexpr char kDemoPhone[] = "13800138000";
inline constexpr char kDemoEmail[] = "demo@tarvel.test";
inline constexpr char kDemoPassword[] = "tarvel2024";

// Seeds an empty database; returns false when it was seeded before.
bool seedIfEmpty(Database &database, qint64 now);

} // namespace StoreSeed
