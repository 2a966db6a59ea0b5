#include "PushCommand.h"

#include "core/TimeText.h"
#include "db/Database.h"
#include "sandbox/PushChannel.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace PushCommand {

int run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
            "Sends a push message to the app's devices through the store's database."));
    parser.addHelpOption();
    const QCommandLineOption title(QStringLiteral("title"), QStringLiteral("Message title."),
                                   QStringLiteral("text"));
    const QCommandLineOption content(QStringLiteral("content"), QStringLiteral("Message text."),
                                     QStringLiteral("text"));
    const QCommandLineOption url(QStringLiteral("url"),
                                 QStringLiteral("Address opened on tap, e.g. /products/12."),
                                 QStringLiteral("url"));
    const QCommandLineOption date(QStringLiteral("date"),
                                  QStringLiteral("Shown date, yyyy-MM-dd HH:mm (default: now)."),
                                  QStringLiteral("date"));
    const QCommandLineOption client(QStringLiteral("client-id"),
                                    QStringLiteral("Only this client (default: everyone)."),
                                    QStringLiteral("id"));
    const QCommandLineOption database(
            QStringLiteral("db"), QStringLiteral("The store's database file."),
            QStringLiteral("path"), QStringLiteral("tarvel-store.sqlite"));
    parser.addOptions({title, content, url, date, client, database});
    parser.process(arguments);
    if (!parser.isSet(title) || !parser.isSet(content) || parser.value(title).trimmed().isEmpty()
        || parser.value(content).trimmed().isEmpty()) {
        std::fprintf(stderr, "tarvel-store push: --title and --content are required\n");
        return 2;
    }
    const QString path = QDir::current().absoluteFilePath(parser.value(database));
    if (!QFileInfo::exists(path)) {
        std::fprintf(stderr, "tarvel-store push: no store database at %s\n", qPrintable(path));
        return 1;
    }

    // The operator's own command: it writes into the store's database, which a running store
    // shares (WAL), instead of offering the sending to anyone who reaches the port.
    PushChannel::Message message{parser.value(title).trimmed(), parser.value(content).trimmed(),
                                 parser.value(date).trimmed(), parser.value(url).trimmed()};
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    if (message.date.isEmpty())
        message.date = TimeText::minutes(now);
    const QString clientId = parser.value(client).trimmed();
    try {
        Database store(path);
        const qint64 id = store.write([&](SQLite::Database &db) -> qint64 {
            if (!clientId.isEmpty() && !PushChannel::isRegistered(db, clientId))
                return 0;
            return PushChannel::send(db, message, clientId, now);
        });
        if (id == 0) {
            std::fprintf(stderr, "tarvel-store push: no device with client id %s\n",
                         qPrintable(clientId));
            return 1;
        }
        std::printf("push message %lld sent to %s\n", id,
                    clientId.isEmpty() ? "all" : qPrintable(clientId));
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "tarvel-store push: %s\n", failure.what());
        return 1;
    }
    return 0;
}

} // namespace PushCommand
