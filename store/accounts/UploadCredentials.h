#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace SQLite {
class Database;
}

// The one-time credentials of avatar uploads ("qiniu_params"), valid for one upload within an
// hour. The upload service accepts a file only with every field exactly as handed out.
namespace UploadCredentials {

inline constexpr qint64 kLifetimeSeconds = 3600;
inline const QString kBucket = QStringLiteral("tarvel-avatars");

struct Fields
{
    QString token;
    QString accountId;
    QString timestamp;
    QString tarvelToken;
    QString bucketName;
};

// "token", "x:account_id", "x:timestamp", "x:tarvel_token", "x:bucket_name"
QJsonObject issue(SQLite::Database &db, qint64 accountId, const QString &tarvelToken, qint64 now);
// The account the credential was issued to; it is used up. nullopt when it is not valid.
std::optional<qint64> consume(SQLite::Database &db, const Fields &fields, qint64 now);

} // namespace UploadCredentials
