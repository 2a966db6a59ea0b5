#include "accounts/Sessions.h"

#include "core/Crypto.h"
#include "db/Database.h"

namespace Sessions {

std::optional<Session> find(SQLite::Database &db, const QByteArray &cookieValue, qint64 now)
{
    if (cookieValue.isEmpty() || cookieValue.size() > 128)
        return std::nullopt;
    SQLite::Statement query(db, "SELECT id_hash, account_id, token, captcha, captcha_at, "
                                "captcha_tries, phone_checked_at, captcha_subject FROM sessions "
                                "WHERE id_hash = ? AND expires_at > ?");
    query.bind(1, Crypto::lookupHash(cookieValue).toStdString());
    query.bind(2, static_cast<int64_t>(now));
    if (!query.executeStep())
        return std::nullopt;
    Session session;
    session.idHash = QByteArray(query.getColumn(0).getText());
    session.accountId = query.getColumn(1).getInt64();
    session.token = Sql::text(query.getColumn(2));
    session.captcha = Sql::text(query.getColumn(3));
    session.captchaAt = query.getColumn(4).getInt64();
    session.captchaTries = query.getColumn(5).getInt();
    session.phoneCheckedAt = query.getColumn(6).getInt64();
    session.captchaSubject = Sql::text(query.getColumn(7));
    return session;
}

QByteArray create(SQLite::Database &db, qint64 accountId, qint64 now, QString *token)
{
    SQLite::Statement expired(db, "DELETE FROM sessions WHERE expires_at <= ?");
    expired.bind(1, static_cast<int64_t>(now));
    expired.exec();

    const QByteArray id = Crypto::randomToken(16);
    SQLite::Statement insert(db, "INSERT INTO sessions (id_hash, account_id, token, created_at, "
                                 "expires_at) VALUES (?, ?, ?, ?, ?)");
    insert.bind(1, Crypto::lookupHash(id).toStdString());
    if (accountId > 0) {
        const QString newToken = QString::fromLatin1(Crypto::randomToken(24));
        insert.bind(2, static_cast<int64_t>(accountId));
        Sql::bind(insert, 3, newToken);
        if (token)
            *token = newToken;
    } else {
        insert.bind(2);
        insert.bind(3);
    }
    insert.bind(4, static_cast<int64_t>(now));
    insert.bind(5, static_cast<int64_t>(
                           now + (accountId > 0 ? kLifetimeSeconds : kAnonymousLifetimeSeconds)));
    insert.exec();
    return id;
}

void remove(SQLite::Database &db, const QByteArray &idHash)
{
    SQLite::Statement statement(db, "DELETE FROM sessions WHERE id_hash = ?");
    statement.bind(1, idHash.toStdString());
    statement.exec();
}

void removeOthers(SQLite::Database &db, qint64 accountId, const QByteArray &keepIdHash)
{
    SQLite::Statement statement(db, "DELETE FROM sessions WHERE account_id = ? AND id_hash <> ?");
    statement.bind(1, static_cast<int64_t>(accountId));
    statement.bind(2, keepIdHash.toStdString());
    statement.exec();
}

void setCaptcha(SQLite::Database &db, const QByteArray &idHash, const QString &text, qint64 now)
{
    SQLite::Statement statement(db, "UPDATE sessions SET captcha = ?, captcha_at = ?, "
                                    "captcha_tries = 0, captcha_subject = NULL WHERE id_hash = ?");
    Sql::bind(statement, 1, text);
    statement.bind(2, static_cast<int64_t>(now));
    statement.bind(3, idHash.toStdString());
    statement.exec();
}

CaptchaCheck checkCaptcha(SQLite::Database &db, const Session &session, const QString &answer,
                          const QString &subject, qint64 now)
{
    if (session.captcha.isEmpty() || session.captchaTries >= kCaptchaTries
        || now - session.captchaAt > kCaptchaLifetimeSeconds)
        return CaptchaCheck::Missing;
    if (answer.trimmed().compare(session.captcha, Qt::CaseInsensitive) == 0) {
        const QString key = subject.trimmed().toLower();
        if (session.captchaSubject.isEmpty()) {
            SQLite::Statement used(db, "UPDATE sessions SET captcha_subject = ? WHERE id_hash = ? "
                                       "AND captcha_subject IS NULL");
            Sql::bind(used, 1, key);
            used.bind(2, session.idHash.toStdString());
            // Two requests with one answer at once: only the first takes it.
            return used.exec() == 1 ? CaptchaCheck::Passed : CaptchaCheck::Missing;
        }
        return session.captchaSubject == key ? CaptchaCheck::Passed : CaptchaCheck::Missing;
    }
    SQLite::Statement statement(
            db, "UPDATE sessions SET captcha_tries = captcha_tries + 1, "
                "captcha = CASE WHEN captcha_tries + 1 >= ? THEN NULL ELSE captcha END "
                "WHERE id_hash = ?");
    statement.bind(1, kCaptchaTries);
    statement.bind(2, session.idHash.toStdString());
    statement.exec();
    return CaptchaCheck::Wrong;
}

void markPhoneChecked(SQLite::Database &db, const QByteArray &idHash, qint64 now)
{
    SQLite::Statement statement(db, "UPDATE sessions SET phone_checked_at = ? WHERE id_hash = ?");
    statement.bind(1, static_cast<int64_t>(now));
    statement.bind(2, idHash.toStdString());
    statement.exec();
}

} // namespace Sessions
