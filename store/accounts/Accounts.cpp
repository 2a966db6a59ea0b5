#include "accounts/Accounts.h"

#include "db/Database.h"

namespace {

const char *const kColumns = "SELECT id, phone_number, email, password_hash, nick_name, gender, "
                             "avatar, confirmed, failed_sign_ins, locked_at FROM accounts ";

template<typename Value>
std::optional<Account> fetch(SQLite::Database &db, const std::string &where, const Value &value)
{
    SQLite::Statement query(db, kColumns + where);
    if constexpr (std::is_same_v<Value, QString>)
        Sql::bind(query, 1, value);
    else
        query.bind(1, static_cast<int64_t>(value));
    if (!query.executeStep())
        return std::nullopt;
    Account account;
    account.id = query.getColumn(0).getInt64();
    account.phoneNumber = Sql::text(query.getColumn(1));
    account.email = Sql::text(query.getColumn(2));
    account.passwordHash = Sql::text(query.getColumn(3));
    account.nickName = Sql::text(query.getColumn(4));
    account.gender = query.getColumn(5).getInt();
    account.avatar = Sql::text(query.getColumn(6));
    account.confirmed = query.getColumn(7).getInt() != 0;
    account.failedSignIns = query.getColumn(8).getInt();
    account.lockedAt = query.getColumn(9).getInt64();
    return account;
}

void update(SQLite::Database &db, const char *sql, qint64 id, const QString &value)
{
    SQLite::Statement statement(db, sql);
    if (value.isNull())
        statement.bind(1);
    else
        Sql::bind(statement, 1, value);
    statement.bind(2, static_cast<int64_t>(id));
    statement.exec();
}

} // namespace

QJsonObject Account::userJson() const
{
    return QJsonObject{{QStringLiteral("account_id"), id},
                       {QStringLiteral("nick_name"), nickName},
                       {QStringLiteral("email"), email},
                       {QStringLiteral("avatar"), avatar},
                       {QStringLiteral("phone_number"), phoneNumber},
                       {QStringLiteral("gender"), gender}};
}

namespace Accounts {

std::optional<Account> byId(SQLite::Database &db, qint64 id)
{
    return fetch(db, "WHERE id = ?", id);
}

std::optional<Account> byPhone(SQLite::Database &db, const QString &phoneNumber)
{
    return fetch(db, "WHERE phone_number = ?", phoneNumber);
}

std::optional<Account> byEmail(SQLite::Database &db, const QString &email)
{
    return fetch(db, "WHERE email = ?", email);
}

std::optional<Account> byLogin(SQLite::Database &db, const QString &login)
{
    if (login.contains(QLatin1Char('@')))
        return byEmail(db, login);
    return byPhone(db, login);
}

qint64 create(SQLite::Database &db, const QString &phoneNumber, const QString &email,
              const QString &passwordHash, const QString &nickName, bool confirmed, qint64 now)
{
    SQLite::Statement insert(
            db, "INSERT INTO accounts (phone_number, email, password_hash, "
                "nick_name, avatar, confirmed, created_at) VALUES (?, ?, ?, ?, ?, ?, ?)");
    if (phoneNumber.isEmpty())
        insert.bind(1);
    else
        Sql::bind(insert, 1, phoneNumber);
    if (email.isEmpty())
        insert.bind(2);
    else
        Sql::bind(insert, 2, email);
    Sql::bind(insert, 3, passwordHash);
    Sql::bind(insert, 4, nickName);
    Sql::bind(insert, 5, kDefaultAvatar);
    insert.bind(6, confirmed ? 1 : 0);
    insert.bind(7, static_cast<int64_t>(now));
    insert.exec();
    return db.getLastInsertRowid();
}

int reserveSignInTry(SQLite::Database &db, qint64 id)
{
    SQLite::Statement statement(db, "UPDATE accounts SET failed_sign_ins = failed_sign_ins + 1 "
                                    "WHERE id = ? AND locked_at IS NULL AND failed_sign_ins < ? "
                                    "RETURNING failed_sign_ins");
    statement.bind(1, static_cast<int64_t>(id));
    statement.bind(2, kSignInAttempts);
    return statement.executeStep() ? statement.getColumn(0).getInt() : 0;
}

void recordFailedSignIn(SQLite::Database &db, qint64 id, int tries, qint64 now)
{
    if (tries < kSignInAttempts)
        return; // the try was counted when it was reserved
    SQLite::Statement statement(
            db, "UPDATE accounts SET locked_at = COALESCE(locked_at, ?) WHERE id = ?");
    statement.bind(1, static_cast<int64_t>(now));
    statement.bind(2, static_cast<int64_t>(id));
    statement.exec();
}

void clearSignInFailures(SQLite::Database &db, qint64 id)
{
    SQLite::Statement statement(
            db, "UPDATE accounts SET failed_sign_ins = 0, locked_at = NULL WHERE id = ?");
    statement.bind(1, static_cast<int64_t>(id));
    statement.exec();
}

bool resetSignInTries(SQLite::Database &db, qint64 id)
{
    SQLite::Statement statement(
            db, "UPDATE accounts SET failed_sign_ins = 0 WHERE id = ? AND locked_at IS NULL");
    statement.bind(1, static_cast<int64_t>(id));
    return statement.exec() == 1;
}

void confirm(SQLite::Database &db, qint64 id)
{
    SQLite::Statement statement(db, "UPDATE accounts SET confirmed = 1 WHERE id = ?");
    statement.bind(1, static_cast<int64_t>(id));
    statement.exec();
}

void setPasswordHash(SQLite::Database &db, qint64 id, const QString &hash)
{
    update(db, "UPDATE accounts SET password_hash = ? WHERE id = ?", id, hash);
}

void setPhoneNumber(SQLite::Database &db, qint64 id, const QString &phoneNumber)
{
    update(db, "UPDATE accounts SET phone_number = ? WHERE id = ?", id, phoneNumber);
}

void setPendingEmail(SQLite::Database &db, qint64 id, const QString &email)
{
    update(db, "UPDATE accounts SET pending_email = ? WHERE id = ?", id, email);
}

bool confirmPendingEmail(SQLite::Database &db, qint64 id)
{
    SQLite::Statement pending(db, "SELECT pending_email FROM accounts WHERE id = ?");
    pending.bind(1, static_cast<int64_t>(id));
    if (!pending.executeStep() || pending.getColumn(0).isNull())
        return false;
    const QString email = Sql::text(pending.getColumn(0));
    if (const auto owner = byEmail(db, email); owner && owner->id != id)
        return false;
    SQLite::Statement statement(db, "UPDATE accounts SET email = pending_email, confirmed = 1, "
                                    "pending_email = NULL WHERE id = ?");
    statement.bind(1, static_cast<int64_t>(id));
    return statement.exec() == 1;
}

void setProfile(SQLite::Database &db, qint64 id, const QString &nickName, int gender,
                const QString &avatar)
{
    SQLite::Statement statement(
            db, "UPDATE accounts SET nick_name = ?, gender = ?, avatar = ? WHERE id = ?");
    Sql::bind(statement, 1, nickName);
    statement.bind(2, gender);
    Sql::bind(statement, 3, avatar);
    statement.bind(4, static_cast<int64_t>(id));
    statement.exec();
}

} // namespace Accounts
