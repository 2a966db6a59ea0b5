#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <QString>

#include <memory>
#include <mutex>
#include <vector>

// The store's SQLite file in WAL mode. Readers take a pooled connection each and run side by
// side; writers are serialised inside the process and begin IMMEDIATE, so no request ever sees
// "database is locked" from its own process, and other processes wait on the busy timeout.
class Database
{
public:
    // Opens (creating it when missing) and brings the schema up to date; throws on failure.
    explicit Database(const QString &path);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    QString path() const { return m_path; }
    int schemaVersion();

    template<typename Fn>
    auto read(Fn &&fn)
    {
        Lease lease(*this);
        return fn(lease.db());
    }

    // Runs `fn` in one transaction: committed when it returns, rolled back when it throws.
    template<typename Fn>
    auto write(Fn &&fn)
    {
        std::lock_guard writer(m_writeMutex);
        Lease lease(*this);
        SQLite::Transaction transaction(lease.db(), SQLite::TransactionBehavior::IMMEDIATE);
        if constexpr (std::is_void_v<decltype(fn(lease.db()))>) {
            fn(lease.db());
            transaction.commit();
        } else {
            auto result = fn(lease.db());
            transaction.commit();
            return result;
        }
    }

private:
    class Lease
    {
    public:
        explicit Lease(Database &owner);
        ~Lease();
        SQLite::Database &db() { return *m_connection; }

    private:
        Database &m_owner;
        std::unique_ptr<SQLite::Database> m_connection;
    };

    std::unique_ptr<SQLite::Database> open() const;

    QString m_path;
    std::mutex m_poolMutex;
    std::vector<std::unique_ptr<SQLite::Database>> m_idle;
    std::mutex m_writeMutex;
};

// Small helpers for the many single-value queries.
namespace Sql {
qint64 scalarInt(SQLite::Database &db, const char *sql, qint64 fallback = 0);
QString text(const SQLite::Column &column); // UTF-8 text, or an empty string for NULL
void bind(SQLite::Statement &statement, int index, const QString &value);
} // namespace Sql
