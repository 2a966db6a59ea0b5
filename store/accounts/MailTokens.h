#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace SQLite {
class Database;
}

// The one-time links of activation, password and unlock mails; valid for a day.
namespace MailTokens {

inline constexpr qint64 kLifetimeSeconds = 24 * 3600;
inline const QString kActivate = QStringLiteral("activate");
inline const QString kPassword = QStringLiteral("password");
inline const QString kUnlock = QStringLiteral("unlock");
inline const QString kBindEmail = QStringLiteral("bind_email");

QByteArray issue(SQLite::Database &db, qint64 accountId, const QString &purpose, qint64 now);
// Uses up the account's live tokens of `purpose` (a newer mail replaces them).
void revoke(SQLite::Database &db, qint64 accountId, const QString &purpose, qint64 now);
// The account of a live token (without using it up).
std::optional<qint64> peek(SQLite::Database &db, const QByteArray &token, const QString &purpose,
                           qint64 now);
// The account of a live token, which is used up.
std::optional<qint64> consume(SQLite::Database &db, const QByteArray &token, const QString &purpose,
                              qint64 now);

} // namespace MailTokens
