#include "accounts/MailTokens.h"

#include "core/Crypto.h"
#include "db/Database.h"

namespace MailTokens {

QByteArray issue(SQLite::Database &db, qint64 accountId, const QString &purpose, qint64 now)
{
    const QByteArray token = Crypto::randomToken(24);
    SQLite::Statement insert(db, "INSERT INTO mail_tokens (token_hash, account_id, purpose, "
                                 "expires_at) VALUES (?, ?, ?, ?)");
    insert.bind(1, Crypto::lookupHash(token).toStdString());
    insert.bind(2, static_cast<int64_t>(accountId));
    Sql::bind(insert, 3, purpose);
    insert.bind(4, static_cast<int64_t>(now + kLifetimeSeconds));
    insert.exec();
    return token;
}

void revoke(SQLite::Database &db, qint64 accountId, const QString &purpose, qint64 now)
{
    SQLite::Statement used(db, "UPDATE mail_tokens SET used_at = ? WHERE account_id = ? AND "
                               "purpose = ? AND used_at IS NULL");
    used.bind(1, static_cast<int64_t>(now));
    used.bind(2, static_cast<int64_t>(accountId));
    Sql::bind(used, 3, purpose);
    used.exec();
}

std::optional<qint64> peek(SQLite::Database &db, const QByteArray &token, const QString &purpose,
                           qint64 now)
{
    if (token.isEmpty() || token.size() > 128)
        return std::nullopt;
    SQLite::Statement query(db, "SELECT account_id FROM mail_tokens WHERE token_hash = ? AND "
                                "purpose = ? AND used_at IS NULL AND expires_at > ?");
    query.bind(1, Crypto::lookupHash(token).toStdString());
    Sql::bind(query, 2, purpose);
    query.bind(3, static_cast<int64_t>(now));
    if (!query.executeStep())
        return std::nullopt;
    return query.getColumn(0).getInt64();
}

std::optional<qint64> consume(SQLite::Database &db, const QByteArray &token, const QString &purpose,
                              qint64 now)
{
    const auto account = peek(db, token, purpose, now);
    if (!account)
        return std::nullopt;
    SQLite::Statement used(db, "UPDATE mail_tokens SET used_at = ? WHERE token_hash = ?");
    used.bind(1, static_cast<int64_t>(now));
    used.bind(2, Crypto::lookupHash(token).toStdString());
    used.exec();
    return account;
}

} // namespace MailTokens
