#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace SQLite {
class Database;
}

struct Account
{
    qint64 id = 0;
    QString phoneNumber;
    QString email;
    QString passwordHash;
    QString nickName;
    int gender = 2; // 0 male, 1 female, 2 not stated
    QString avatar;
    bool confirmed = false;
    int failedSignIns = 0;
    qint64 lockedAt = 0;

    bool locked() const { return lockedAt > 0; }
    // The user record the client keeps: account_id, nick_name, email, avatar, phone_number,
    // gender (the caller adds "token").
    QJsonObject userJson() const;
};

// Account rows. Every query is parameterised; phone numbers and e-mail addresses are unique.
namespace Accounts {

inline constexpr int kSignInAttempts = 5;
inline const QString kDefaultAvatar = QStringLiteral("/pictures/avatars/default.png");

std::optional<Account> byId(SQLite::Database &db, qint64 id);
std::optional<Account> byPhone(SQLite::Database &db, const QString &phoneNumber);
std::optional<Account> byEmail(SQLite::Database &db, const QString &email);
// An e-mail address or a phone number.
std::optional<Account> byLogin(SQLite::Database &db, const QString &login);

qint64 create(SQLite::Database &db, const QString &phoneNumber, const QString &email,
              const QString &passwordHash, const QString &nickName, bool confirmed, qint64 now);

// Counts a failed sign-in and locks the account at the fifth; returns the failures so far.
int recordFailedSignIn(SQLite::Database &db, qint64 id, qint64 now);
void clearSignInFailures(SQLite::Database &db, qint64 id); // also unlocks
void confirm(SQLite::Database &db, qint64 id);
void setPasswordHash(SQLite::Database &db, qint64 id, const QString &hash);
void setPhoneNumber(SQLite::Database &db, qint64 id, const QString &phoneNumber);
void setEmail(SQLite::Database &db, qint64 id, const QString &email);
void setProfile(SQLite::Database &db, qint64 id, const QString &nickName, int gender,
                const QString &avatar);

} // namespace Accounts
