#include "PushCommand.h"

#include <httplib.h>

#include <QCommandLineParser>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace PushCommand {

int run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
            QStringLiteral("Sends a push message to the app through a running tarvel-store."));
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
    const QCommandLineOption server(QStringLiteral("server"),
                                    QStringLiteral("The store's address."), QStringLiteral("url"),
                                    QStringLiteral("http://127.0.0.1:8080"));
    parser.addOptions({title, content, url, date, client, server});
    parser.process(arguments);
    if (!parser.isSet(title) || !parser.isSet(content)) {
        std::fprintf(stderr, "tarvel-store push: --title and --content are required\n");
        return 2;
    }

    httplib::Params form{{"title", parser.value(title).toStdString()},
                         {"content", parser.value(content).toStdString()}};
    for (const auto &[option, field] :
         {std::pair{&url, "url"}, {&date, "date"}, {&client, "client_id"}}) {
        if (parser.isSet(*option))
            form.emplace(field, parser.value(*option).toStdString());
    }
    httplib::Client connection(parser.value(server).toStdString());
    connection.set_connection_timeout(5);
    const auto answer = connection.Post("/sandbox/push/send", form);
    if (!answer) {
        std::fprintf(stderr, "tarvel-store push: no answer from %s (%s)\n",
                     qPrintable(parser.value(server)), httplib::to_string(answer.error()).c_str());
        return 1;
    }
    const QJsonObject envelope
            = QJsonDocument::fromJson(QByteArray::fromStdString(answer->body)).object();
    if (envelope.value(QStringLiteral("status")).toString() != QLatin1String("success")) {
        std::fprintf(stderr, "tarvel-store push: refused (%d): %s\n", answer->status,
                     answer->body.c_str());
        return 1;
    }
    const QJsonObject data = envelope.value(QStringLiteral("data")).toObject();
    std::printf("push message %lld sent to %s\n", data.value(QStringLiteral("id")).toInteger(),
                qPrintable(data.value(QStringLiteral("sent_to")).toString()));
    return 0;
}

} // namespace PushCommand
