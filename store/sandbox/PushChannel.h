#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace SQLite {
class Database;
}

// The push service of the sandbox: devices register their token and get a client id, poll for
// the messages sent to them or to everyone since they registered, and fetch each payload with
// their client id. Only the operator sends (`tarvel-store push`, straight into the database).
namespace PushChannel {

struct Message
{
    QString title;
    QString content;
    QString date; // "yyyy-MM-dd HH:mm"
    QString url; // optional
};

// A new client id each time: registering again replaces the device's earlier id (which then is
// unknown) and keeps what was sent to it, so a client id is never learnt from a device token.
// `continued` tells whether the token was registered before (the device's message ids go on).
QString registerDevice(SQLite::Database &db, const QString &deviceToken, qint64 now,
                       bool *continued = nullptr);
bool isRegistered(SQLite::Database &db, const QString &clientId);
// Sends to one client, or to every client when `clientId` is empty; returns the message id.
qint64 send(SQLite::Database &db, const Message &message, const QString &clientId, qint64 now);
QJsonArray poll(SQLite::Database &db, const QString &clientId, qint64 after, int limit);
// The newest message id of the whole channel, whoever it was sent to; 0 when there is none.
qint64 newestMessageId(SQLite::Database &db);
// The payload the device receives: {"title", "content", "date", "url"}, without an empty url;
// nullopt unless the message is for that client (sent to it, or to everyone after it registered).
std::optional<QJsonObject> payload(SQLite::Database &db, qint64 messageId, const QString &clientId);

} // namespace PushChannel
