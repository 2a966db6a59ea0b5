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

// Counts a sign-in try before its password is checked, so that no more than kSignInAttempts
// wrong passwords are ever checked, however many arrive at once. Returns the tries counted so far
// with this one, or 0 when the account is locked or out of tries (the caller answers "locked").
int reserveSignInTry(SQLite::Database &db, qint64 id);
// The counted try had a wrong password: at the last allowed try the account locks.
void recordFailedSignIn(SQLite::Database &db, qint64 id, int tries, qint64 now);
void clearSignInFailures(SQLite::Database &db, qint64 id); // also unlocks
// A right password: the count starts again, unless a try running alongside locked the account
// meanwhile (false; the lock stays).
bool resetSignInTries(SQLite::Database &db, qint64 id);
void confirm(SQLite::Database &db, qint64 id);
void setPasswordHash(SQLite::Database &db, qint64 id, const QString &hash);
void setPhoneNumber(SQLite::Database &db, qint64 id, const QString &phoneNumber);
// The address waits, unconfirmed, until the link mailed to it is followed (confirmPendingEmail).
void setPendingEmail(SQLite::Database &db, qint64 id, const QString &email);
// Binds the waiting address; false when there is none or another account has it by now.
bool confirmPendingEmail(SQLite::Database &db, qint64 id);
void setProfile(SQLite::Database &db, qint64 id, const QString &nickName, int gender,
                const QString &avatar);

} // namespace Accounts
