#include "sandbox/Outbox.h"

#include "core/TimeText.h"
#include "db/Database.h"

#include <QJsonObject>

void Outbox::sms(SQLite::Database &db, const QString &phoneNumber, const QString &text,
                 const QString &code, qint64 now)
{
    record(db, "sms", phoneNumber, QStringLiteral("短信"), text, code, QString(), now);
}

void Outbox::mail(SQLite::Database &db, const QString &address, const QString &subject,
                  const QString &body, const QString &link, qint64 now)
{
    record(db, "mail", address, subject, body, QString(), link, now);
}

void Outbox::record(SQLite::Database &db, const char *channel, const QString &recipient,
                    const QString &subject, const QString &body, const QString &code,
                    const QString &link, qint64 now)
{
    SQLite::Statement insert(db, "INSERT INTO outbox (channel, recipient, subject, body, code, "
                                 "link, created_at) VALUES (?, ?, ?, ?, ?, ?, ?)");
    insert.bind(1, channel);
    Sql::bind(insert, 2, recipient);
    Sql::bind(insert, 3, subject);
    Sql::bind(insert, 4, body);
    Sql::bind(insert, 5, code);
    Sql::bind(insert, 6, link);
    insert.bind(7, static_cast<int64_t>(now));
    insert.exec();
    if (m_console) {
        std::lock_guard lock(m_consoleMutex);
        std::fprintf(m_console, "[outbox] %s to %s: %s\n", channel, qPrintable(recipient),
                     qPrintable(link.isEmpty() ? body : subject + QLatin1Char(' ') + link));
        std::fflush(m_console);
    }
}

QJsonArray Outbox::list(SQLite::Database &db, const QString &recipient, int limit)
{
    SQLite::Statement query(db,
                            "SELECT id, channel, recipient, subject, body, code, link, "
                            "created_at FROM outbox WHERE (? = '' OR recipient = ? COLLATE NOCASE) "
                            "ORDER BY id DESC LIMIT ?");
    Sql::bind(query, 1, recipient);
    Sql::bind(query, 2, recipient);
    query.bind(3, limit);
    QJsonArray messages;
    while (query.executeStep()) {
        messages.append(QJsonObject{
                {QStringLiteral("id"), qint64(query.getColumn(0).getInt64())},
                {QStringLiteral("channel"), Sql::text(query.getColumn(1))},
                {QStringLiteral("to"), Sql::text(query.getColumn(2))},
                {QStringLiteral("subject"), Sql::text(query.getColumn(3))},
                {QStringLiteral("body"), Sql::text(query.getColumn(4))},
                {QStringLiteral("code"), Sql::text(query.getColumn(5))},
                {QStringLiteral("link"), Sql::text(query.getColumn(6))},
                {QStringLiteral("created_at"), TimeText::dateTime(query.getColumn(7).getInt64())},
        });
    }
    return messages;
}
