#include "db/Database.h"

#include "db/Schema.h"

#include <QFileInfo>

namespace {
constexpr int kBusyTimeoutMs = 10000;
}

Database::Database(const QString &path)
    : m_path(QFileInfo(path).absoluteFilePath())
{
    auto connection = open();
    connection->exec("PRAGMA journal_mode=WAL");
    Schema::migrate(*connection);
    m_idle.push_back(std::move(connection));
}

Database::~Database() = default;

int Database::schemaVersion()
{
    return read(
            [](SQLite::Database &db) { return int(Sql::scalarInt(db, "PRAGMA user_version")); });
}

std::unique_ptr<SQLite::Database> Database::open() const
{
    auto connection = std::make_unique<SQLite::Database>(
            m_path.toStdString(),
            SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_FULLMUTEX, kBusyTimeoutMs);
    // NORMAL keeps every commit across a crash of the process; only a power cut may lose the
    // last ones, which WAL then rolls back cleanly.
    connection->exec("PRAGMA synchronous=NORMAL");
    connection->exec("PRAGMA foreign_keys=ON");
    return connection;
}

Database::Lease::Lease(Database &owner)
    : m_owner(owner)
{
    {
        std::lock_guard lock(owner.m_poolMutex);
        if (!owner.m_idle.empty()) {
            m_connection = std::move(owner.m_idle.back());
            owner.m_idle.pop_back();
        }
    }
    if (!m_connection)
        m_connection = owner.open();
}

Database::Lease::~Lease()
{
    std::lock_guard lock(m_owner.m_poolMutex);
    m_owner.m_idle.push_back(std::move(m_connection));
}

namespace Sql {

qint64 scalarInt(SQLite::Database &db, const char *sql, qint64 fallback)
{
    SQLite::Statement query(db, sql);
    if (!query.executeStep() || query.getColumn(0).isNull())
        return fallback;
    return query.getColumn(0).getInt64();
}

QString text(const SQLite::Column &column)
{
    if (column.isNull())
        return QStringLiteral("");
    return QString::fromUtf8(column.getText());
}

void bind(SQLite::Statement &statement, int index, const QString &value)
{
    statement.bind(index, value.toStdString());
}

} // namespace Sql
