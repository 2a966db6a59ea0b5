#include "PushCommand.h"
#include "StoreContext.h"
#include "StoreSeed.h"
#include "StoreServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>

#include <pthread.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <thread>

namespace {

QCommandLineOption option(const char *name, const char *description, const char *value = nullptr,
                          const char *fallback = nullptr)
{
    if (!value)
        return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(description));
    return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(description),
                              QString::fromLatin1(value),
                              QString::fromLatin1(fallback ? fallback : ""));
}

sigset_t stopSignals()
{
    sigset_t stopSet;
    sigemptyset(&stopSet);
    sigaddset(&stopSet, SIGINT);
    sigaddset(&stopSet, SIGTERM);
    return stopSet;
}

// SIGINT and SIGTERM are blocked in every thread from the start of main (threads inherit the
// mask) and taken by this one, which stops the server; no request is cut off in a write.
class SignalWatcher
{
public:
    explicit SignalWatcher(StoreServer &server)
    {
        m_thread = std::thread([this, &server] {
            const sigset_t stopSet = stopSignals();
            int received = 0;
            sigwait(&stopSet, &received);
            if (!m_done) {
                std::printf("tarvel-store: %s, stopping\n", strsignal(received));
                std::fflush(stdout);
                server.stop();
            }
        });
    }
    ~SignalWatcher()
    {
        m_done = true;
        pthread_kill(m_thread.native_handle(), SIGTERM);
        m_thread.join();
    }

private:
    std::atomic<bool> m_done{false};
    std::thread m_thread;
};

} // namespace

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "push") == 0) {
        QCoreApplication app(argc, argv);
        QStringList arguments = app.arguments();
        arguments.removeAt(1);
        return PushCommand::run(arguments);
    }
    const sigset_t stopSet = stopSignals();
    pthread_sigmask(SIG_BLOCK, &stopSet, nullptr);
    // Pictures with text need Qt's font machinery, which needs a GUI application; the store never
    // shows a window, so it runs on the offscreen platform.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tarvel-store"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
            "Tarvel reference store service.\n`tarvel-store push --help` sends push messages."));
    parser.addHelpOption();
    const auto port = option("port", "TCP port (0: any free one).", "port", "8080");
    const auto host = option("host", "Address to listen on.", "host", "127.0.0.1");
    const auto db = option("db", "SQLite database file (created and seeded when missing).", "path",
                           "tarvel-store.sqlite");
    const auto uploads
            = option("uploads", "Folder of uploaded pictures (default: <db>.uploads).", "path");
    const auto publicUrl = option(
            "public-url", "Base of addresses in answers (default: from the Host header).", "url");
    const auto seedOnly = option("seed-only", "Create and seed the database, then exit.");
    const auto sandbox = option("sandbox", "Play the outside parties too (outbox, upload, WeChat, "
                                           "push); only on a loopback address.");
    const auto quiet = option("quiet", "Do not log each request.");
    const auto noScaleAhead
            = option("no-scale-ahead", "Scale pictures only when asked for, not the catalogue's "
                                       "ahead at start (throwaway stores, such as tests').");
    parser.addOptions({port, host, db, uploads, publicUrl, seedOnly, sandbox, quiet, noScaleAhead});
    parser.process(app);

    StoreServer::Options options;
    options.host = parser.value(host);
    options.port = parser.value(port).toInt();
    options.databasePath = QDir::current().absoluteFilePath(parser.value(db));
    options.uploadsDirectory = parser.value(uploads);
    options.publicBaseUrl = parser.value(publicUrl);
    options.sandbox = parser.isSet(sandbox);
    options.scalePicturesAhead = !parser.isSet(noScaleAhead);
    if (parser.isSet(quiet))
        options.requestLog = nullptr;

    try {
        StoreServer server(options);
        if (server.context().seededNow())
            std::printf("tarvel-store: seeded %d products and the demo accounts %s and %s "
                        "(password %s)\n",
                        server.context().catalog().size(), StoreSeed::kDemoPhone,
                        StoreSeed::kDemoEmail, StoreSeed::kDemoPassword);
        if (const qint64 made = server.context().pictures().scaledCount())
            std::printf("tarvel-store: scaled %lld pictures ahead for the app's screens, kept in "
                        "%s\n",
                        made, qPrintable(server.context().pictures().shelf().directory()));
        if (parser.isSet(seedOnly)) {
            std::printf("tarvel-store: database %s is ready\n", qPrintable(options.databasePath));
            return 0;
        }
        if (!server.bind()) {
            std::fprintf(stderr, "tarvel-store: cannot listen on %s:%d\n", qPrintable(options.host),
                         options.port);
            return 1;
        }
        SignalWatcher watcher(server);
        std::printf("tarvel-store listening on http://%s:%d (database %s, sandbox %s)\n",
                    qPrintable(options.host), server.port(), qPrintable(options.databasePath),
                    options.sandbox ? "on" : "off");
        std::fflush(stdout);
        server.listen();
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "tarvel-store: %s\n", failure.what());
        return 1;
    }
    std::printf("tarvel-store stopped\n");
    return 0;
}
