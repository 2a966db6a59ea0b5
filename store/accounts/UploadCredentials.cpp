#include "accounts/UploadCredentials.h"

#include "core/Crypto.h"
#include "db/Database.h"

namespace UploadCredentials {

QJsonObject issue(SQLite::Database &db, qint64 accountId, const QString &tarvelToken, qint64 now)
{
    const QByteArray token = Crypto::randomToken(24);
    const QString timestamp = QString::number(now);
    SQLite::Statement insert(db,
                             "INSERT INTO upload_credentials (token_hash, account_id, timestamp, "
                             "tarvel_token, bucket_name, expires_at) VALUES (?, ?, ?, ?, ?, ?)");
    insert.bind(1, Crypto::lookupHash(token).toStdString());
    insert.bind(2, static_cast<int64_t>(accountId));
    Sql::bind(insert, 3, timestamp);
    Sql::bind(insert, 4, tarvelToken);
    Sql::bind(insert, 5, kBucket);
    insert.bind(6, static_cast<int64_t>(now + kLifetimeSeconds));
    insert.exec();
    return QJsonObject{{QStringLiteral("token"), QString::fromLatin1(token)},
                       {QStringLiteral("x:account_id"), QString::number(accountId)},
                       {QStringLiteral("x:timestamp"), timestamp},
                       {QStringLiteral("x:tarvel_token"), tarvelToken},
                       {QStringLiteral("x:bucket_name"), kBucket}};
}

std::optional<qint64> consume(SQLite::Database &db, const Fields &fields, qint64 now)
{
    if (fields.token.isEmpty() || fields.token.size() > 128)
        return std::nullopt;
    const std::string hash = Crypto::lookupHash(fields.token.toUtf8()).toStdString();
    SQLite::Statement query(db, "SELECT account_id, timestamp, tarvel_token, bucket_name FROM "
                                "upload_credentials WHERE token_hash = ? AND used_at IS NULL AND "
                                "expires_at > ?");
    query.bind(1, hash);
    query.bind(2, static_cast<int64_t>(now));
    if (!query.executeStep())
        return std::nullopt;
    const qint64 accountId = query.getColumn(0).getInt64();
    if (fields.accountId != QString::number(accountId)
        || fields.timestamp != Sql::text(query.getColumn(1))
        || !Crypto::equalConstantTime(fields.tarvelToken.toUtf8(),
                                      Sql::text(query.getColumn(2)).toUtf8())
        || fields.bucketName != Sql::text(query.getColumn(3)))
        return std::nullopt;
    SQLite::Statement used(db, "UPDATE upload_credentials SET used_at = ? WHERE token_hash = ?");
    used.bind(1, static_cast<int64_t>(now));
    used.bind(2, hash);
    used.exec();
    return accountId;
}

} // namespace UploadCredentials
