#include "accounts/SmsCodes.h"

#include "core/Crypto.h"
#include "db/Database.h"
#include "sandbox/Outbox.h"

namespace SmsCodes {

qint64 waitBeforeNext(SQLite::Database &db, const QString &phoneNumber, qint64 now)
{
    SQLite::Statement query(db, "SELECT MAX(created_at) FROM sms_codes WHERE phone_number = ?");
    Sql::bind(query, 1, phoneNumber);
    if (!query.executeStep() || query.getColumn(0).isNull())
        return 0;
    const qint64 wait = query.getColumn(0).getInt64() + kResendSeconds - now;
    return wait > 0 ? wait : 0;
}

QString send(SQLite::Database &db, Outbox &outbox, const QString &phoneNumber,
             const QString &purpose, qint64 now)
{
    SQLite::Statement retire(db, "UPDATE sms_codes SET used_at = ? WHERE phone_number = ? "
                                 "AND purpose = ? AND used_at IS NULL");
    retire.bind(1, static_cast<int64_t>(now));
    Sql::bind(retire, 2, phoneNumber);
    Sql::bind(retire, 3, purpose);
    retire.exec();

    const QString code = Crypto::randomDigits(6);
    SQLite::Statement insert(db, "INSERT INTO sms_codes (phone_number, purpose, code, created_at, "
                                 "expires_at) VALUES (?, ?, ?, ?, ?)");
    Sql::bind(insert, 1, phoneNumber);
    Sql::bind(insert, 2, purpose);
    Sql::bind(insert, 3, code);
    insert.bind(4, static_cast<int64_t>(now));
    insert.bind(5, static_cast<int64_t>(now + kLifetimeSeconds));
    insert.exec();

    outbox.sms(db, phoneNumber,
               QStringLiteral("【Tarvel】您的验证码是%1，10分钟内有效，请勿告诉他人。").arg(code),
               code, now);
    return code;
}

Check consume(SQLite::Database &db, const QString &phoneNumber, const QString &purpose,
              const QString &code, qint64 now)
{
    SQLite::Statement query(db, "SELECT id, code, attempts FROM sms_codes WHERE phone_number = ? "
                                "AND purpose = ? AND used_at IS NULL AND expires_at > ? "
                                "ORDER BY id DESC LIMIT 1");
    Sql::bind(query, 1, phoneNumber);
    Sql::bind(query, 2, purpose);
    query.bind(3, static_cast<int64_t>(now));
    if (!query.executeStep() || query.getColumn(2).getInt() >= kAttempts)
        return Check::Invalid;
    const qint64 id = query.getColumn(0).getInt64();
    const QByteArray expected = QByteArray(query.getColumn(1).getText());
    if (Crypto::equalConstantTime(code.trimmed().toUtf8(), expected)) {
        SQLite::Statement used(db, "UPDATE sms_codes SET used_at = ? WHERE id = ?");
        used.bind(1, static_cast<int64_t>(now));
        used.bind(2, static_cast<int64_t>(id));
        used.exec();
        return Check::Passed;
    }
    SQLite::Statement wrong(db, "UPDATE sms_codes SET attempts = attempts + 1 WHERE id = ?");
    wrong.bind(1, static_cast<int64_t>(id));
    wrong.exec();
    return Check::Wrong;
}

} // namespace SmsCodes
