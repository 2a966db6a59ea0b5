#include "StoreServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <csignal>
#include <cstdio>

namespace {
StoreServer *runningServer = nullptr;

void stopOnSignal(int)
{
    if (runningServer)
        runningServer->stop();
}
} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarvel-store"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tarvel reference store service"));
    parser.addHelpOption();
    QCommandLineOption portOption(QStringLiteral("port"), QStringLiteral("TCP port (0: any)."),
                                  QStringLiteral("port"), QStringLiteral("8080"));
    QCommandLineOption hostOption(QStringLiteral("host"), QStringLiteral("Address to listen on."),
                                  QStringLiteral("host"), QStringLiteral("127.0.0.1"));
    QCommandLineOption dbOption(QStringLiteral("db"), QStringLiteral("SQLite database file."),
                                QStringLiteral("path"), QStringLiteral("tarvel-store.sqlite"));
    parser.addOptions({portOption, hostOption, dbOption});
    parser.process(app);

    StoreServer::Options options;
    options.host = parser.value(hostOption);
    options.port = parser.value(portOption).toInt();
    options.databasePath = QDir::current().absoluteFilePath(parser.value(dbOption));

    StoreServer server(options);
    if (!server.bind()) {
        std::fprintf(stderr, "tarvel-store: cannot listen on %s:%d\n", qPrintable(options.host),
                     options.port);
        return 1;
    }
    runningServer = &server;
    std::signal(SIGINT, stopOnSignal);
    std::signal(SIGTERM, stopOnSignal);
    std::printf("tarvel-store listening on http://%s:%d (database %s)\n", qPrintable(options.host),
                server.port(), qPrintable(options.databasePath));
    std::fflush(stdout);
    server.listen();
    return 0;
}
