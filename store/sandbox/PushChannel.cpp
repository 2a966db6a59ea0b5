#include "sandbox/PushChannel.h"

#include "core/Crypto.h"
#include "db/Database.h"

namespace PushChannel {

namespace {

QJsonObject payloadOf(const Message &message)
{
    QJsonObject payload{{QStringLiteral("title"), message.title},
                        {QStringLiteral("content"), message.content},
                        {QStringLiteral("date"), message.date}};
    if (!message.url.isEmpty())
        payload.insert(QStringLiteral("url"), message.url);
    return payload;
}

} // namespace

QString registerDevice(SQLite::Database &db, const QString &deviceToken, qint64 now,
                       bool *continued)
{
    const QString clientId = QString::fromLatin1(Crypto::randomToken(12).toHex());
    SQLite::Statement existing(
            db, "SELECT client_id, first_message_id FROM push_clients WHERE device_token = ?");
    Sql::bind(existing, 1, deviceToken);
    const bool known = existing.executeStep();
    if (continued)
        *continued = known;
    if (known) {
        const QString previous = Sql::text(existing.getColumn(0));
        const int64_t firstMessage = existing.getColumn(1).getInt64();
        existing.reset();
        SQLite::Statement retire(db,
                                 "UPDATE push_clients SET device_token = ? WHERE client_id = ?");
        Sql::bind(retire, 1, QStringLiteral("retired:") + previous);
        Sql::bind(retire, 2, previous);
        retire.exec();
        SQLite::Statement insert(db, "INSERT INTO push_clients (client_id, device_token, "
                                     "first_message_id, created_at) VALUES (?, ?, ?, ?)");
        Sql::bind(insert, 1, clientId);
        Sql::bind(insert, 2, deviceToken);
        insert.bind(3, firstMessage);
        insert.bind(4, static_cast<int64_t>(now));
        insert.exec();
        SQLite::Statement moved(db, "UPDATE push_messages SET client_id = ? WHERE client_id = ?");
        Sql::bind(moved, 1, clientId);
        Sql::bind(moved, 2, previous);
        moved.exec();
        SQLite::Statement forgotten(db, "DELETE FROM push_clients WHERE client_id = ?");
        Sql::bind(forgotten, 1, previous);
        forgotten.exec();
        return clientId;
    }
    SQLite::Statement insert(db,
                             "INSERT INTO push_clients (client_id, device_token, first_message_id, "
                             "created_at) VALUES (?, ?, (SELECT COALESCE(MAX(id), 0) FROM "
                             "push_messages), ?)");
    Sql::bind(insert, 1, clientId);
    Sql::bind(insert, 2, deviceToken);
    insert.bind(3, static_cast<int64_t>(now));
    insert.exec();
    return clientId;
}

bool isRegistered(SQLite::Database &db, const QString &clientId)
{
    SQLite::Statement query(db, "SELECT 1 FROM push_clients WHERE client_id = ?");
    Sql::bind(query, 1, clientId);
    return query.executeStep();
}

qint64 send(SQLite::Database &db, const Message &message, const QString &clientId, qint64 now)
{
    SQLite::Statement insert(db, "INSERT INTO push_messages (client_id, title, content, date, url, "
                                 "created_at) VALUES (?, ?, ?, ?, ?, ?)");
    if (clientId.isEmpty())
        insert.bind(1);
    else
        Sql::bind(insert, 1, clientId);
    Sql::bind(insert, 2, message.title);
    Sql::bind(insert, 3, message.content);
    Sql::bind(insert, 4, message.date);
    Sql::bind(insert, 5, message.url);
    insert.bind(6, static_cast<int64_t>(now));
    insert.exec();
    return db.getLastInsertRowid();
}

QJsonArray poll(SQLite::Database &db, const QString &clientId, qint64 after, int limit)
{
    SQLite::Statement query(
            db,
            "SELECT m.id, m.title, m.content, m.date, m.url FROM push_messages m, push_clients c "
            "WHERE c.client_id = ? AND m.id > MAX(?, c.first_message_id) "
            "AND (m.client_id IS NULL OR m.client_id = c.client_id) ORDER BY m.id LIMIT ?");
    Sql::bind(query, 1, clientId);
    query.bind(2, static_cast<int64_t>(after));
    query.bind(3, limit);
    QJsonArray messages;
    while (query.executeStep()) {
        QJsonObject entry
                = payloadOf({Sql::text(query.getColumn(1)), Sql::text(query.getColumn(2)),
                             Sql::text(query.getColumn(3)), Sql::text(query.getColumn(4))});
        entry.insert(QStringLiteral("id"), qint64(query.getColumn(0).getInt64()));
        messages.append(entry);
    }
    return messages;
}

qint64 newestMessageId(SQLite::Database &db)
{
    return Sql::scalarInt(db, "SELECT COALESCE(MAX(id), 0) FROM push_messages");
}

std::optional<QJsonObject> payload(SQLite::Database &db, qint64 messageId, const QString &clientId)
{
    SQLite::Statement query(
            db, "SELECT m.title, m.content, m.date, m.url FROM push_messages m, push_clients c "
                "WHERE m.id = ? AND c.client_id = ? AND (m.client_id = c.client_id OR "
                "(m.client_id IS NULL AND m.id > c.first_message_id))");
    query.bind(1, static_cast<int64_t>(messageId));
    Sql::bind(query, 2, clientId);
    if (!query.executeStep())
        return std::nullopt;
    return payloadOf({Sql::text(query.getColumn(0)), Sql::text(query.getColumn(1)),
                      Sql::text(query.getColumn(2)), Sql::text(query.getColumn(3))});
}

} // namespace PushChannel
