// Time of a cover request on tarvel-store: cold (scaled on request, the picture drawn first),
// warm (read from the file kept on disk), warm again after a restart, and what scaling the seeded
// pictures ahead costs at start. It reports and never fails on a number.

#include "StoreContext.h"
#include "StoreServer.h"
#include "pictures/SeededPictures.h"

#include <httplib.h>

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <thread>

namespace {

constexpr int kCovers = 40;

struct Timing
{
    QList<double> ms;
    int failures = 0;
};

double percentile(QList<double> values, double share)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values.at(std::min<qsizetype>(values.size() - 1, qsizetype(share * values.size())));
}

void printTiming(const char *label, const Timing &timing)
{
    std::printf("%-46s %5lld %8.2f %8.2f %8.2f %8d\n", label, qint64(timing.ms.size()),
                percentile(timing.ms, 0.5), percentile(timing.ms, 0.9), percentile(timing.ms, 1.0),
                timing.failures);
}

// A served store on its own thread, for as long as it lives.
class Running
{
public:
    explicit Running(const StoreOptions &options)
    {
        QElapsedTimer started;
        started.start();
        m_server = std::make_unique<StoreServer>(options);
        startMs = double(started.nsecsElapsed()) / 1e6;
        m_server->bind();
        m_thread = std::thread([this] { m_server->listen(); });
        while (!m_server->isRunning())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ~Running()
    {
        m_server->stop();
        m_thread.join();
    }
    int port() const { return m_server->port(); }
    StoreContext &context() { return m_server->context(); }
    double startMs = 0;

private:
    std::unique_ptr<StoreServer> m_server;
    std::thread m_thread;
};

Timing requestCovers(int port, int width, int first)
{
    httplib::Client http("127.0.0.1", port);
    http.set_keep_alive(true);
    Timing timing;
    for (int id = first; id < first + kCovers; ++id) {
        const std::string path = QStringLiteral("/pictures/covers/%1.jpg?imageView2/2/w/%2/q/85")
                                         .arg(id)
                                         .arg(width)
                                         .toStdString();
        QElapsedTimer clock;
        clock.start();
        const auto answer = http.Get(path);
        const double ms = double(clock.nsecsElapsed()) / 1e6;
        if (answer && answer->status == 200 && !answer->body.empty())
            timing.ms.append(ms);
        else
            ++timing.failures;
    }
    return timing;
}

qint64 bytesIn(const QString &directory)
{
    qint64 total = 0;
    for (const QFileInfo &file : QDir(directory).entryInfoList(QDir::Files))
        total += file.size();
    return total;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QTemporaryDir work;
    StoreOptions options;
    options.port = 0;
    options.requestLog = nullptr;
    options.outboxLog = nullptr;
    const int width = SeededPictures::kGridCellWidths[1]; // a grid cell at 2x

    std::printf("cover requests on tarvel-store, %d covers at width %d, one keep-alive "
                "connection\n\n",
                kCovers, width);
    std::printf("%-46s %5s %8s %8s %8s %8s\n", "request", "n", "p50 ms", "p90 ms", "max ms",
                "failed");
    options.databasePath = work.filePath(QStringLiteral("on-request.sqlite"));
    double plainStartMs = 0;
    {
        Running store(options);
        plainStartMs = store.startMs;
        printTiming("cold: drawn and scaled on request", requestCovers(store.port(), width, 1));
        printTiming("warm: read from the kept file", requestCovers(store.port(), width, 1));
    }
    {
        Running store(options);
        printTiming("warm after a restart", requestCovers(store.port(), width, 1));
        printTiming("cold again, covers not asked for before",
                    requestCovers(store.port(), width, 1 + kCovers));
    }

    options.databasePath = work.filePath(QStringLiteral("ahead.sqlite"));
    options.scalePicturesAhead = true;
    Running ahead(options);
    printTiming("scaled ahead at start, first request", requestCovers(ahead.port(), width, 1));
    std::printf("\nfirst start (seeding): %.0f ms without scaling ahead, %.0f ms with it (%lld "
                "copies, %.1f MB on disk)\n",
                plainStartMs, ahead.startMs, ahead.context().pictures().scaledCount(),
                double(bytesIn(ahead.context().pictures().shelf().directory())) / 1e6);
    return 0;
}
