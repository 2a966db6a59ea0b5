#pragma once

namespace SQLite {
class Database;
}

// The database layout, versioned with PRAGMA user_version. Each step moves one version up and
// runs in its own transaction; a file written by a newer service is refused.
namespace Schema {
constexpr int kCurrentVersion = 2;
void migrate(SQLite::Database &db);
} // namespace Schema
