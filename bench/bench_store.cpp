// Load benchmark of tarvel-store next to nginx serving the same bodies as static files.
// wrk runs 10 s (TARVEL_BENCH_SECONDS) per address; the report gives requests/s, p50 and p99 for
// both and the ratio store/static. It reports and never fails on a number.

#include "StoreContext.h"
#include "StoreSeed.h"
#include "StoreServer.h"

#include <httplib.h>

#include <QCoreApplication>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>
#include <thread>

namespace {

struct Load
{
    double requestsPerSecond = 0;
    double p50Ms = 0;
    double p99Ms = 0;
    qint64 requests = 0;
    qint64 errorAnswers = 0; // answers outside 2xx and 3xx
    qint64 socketErrors = 0;
    bool measured = false;
    bool ok() const { return measured && requests > 0 && errorAnswers == 0 && socketErrors == 0; }
};

struct Target
{
    QString name;
    QString path; // with query
    QString file; // where nginx finds the same body
    bool withSession = false;
};

QString findProgram(const QString &name)
{
    QString found = QStandardPaths::findExecutable(name);
    if (found.isEmpty())
        found = QStandardPaths::findExecutable(
                name, {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")});
    return found;
}

int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

double milliseconds(const QString &value, const QString &unit)
{
    const double number = value.toDouble();
    if (unit == QLatin1String("us"))
        return number / 1000.0;
    if (unit == QLatin1String("s"))
        return number * 1000.0;
    return number;
}

Load runWrk(const QString &wrk, const QString &url, const QString &cookie, int seconds)
{
    QStringList arguments{QStringLiteral("-t2"), QStringLiteral("-c16"),
                          QStringLiteral("-d%1s").arg(seconds), QStringLiteral("--latency")};
    if (!cookie.isEmpty())
        arguments << QStringLiteral("-H") << QStringLiteral("Cookie: ") + cookie;
    arguments << url;
    QProcess process;
    process.start(wrk, arguments);
    process.waitForFinished((seconds + 30) * 1000);
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    Load load;
    const auto rate
            = QRegularExpression(QStringLiteral("Requests/sec:\\s+([0-9.]+)")).match(output);
    const auto p50
            = QRegularExpression(QStringLiteral("\\s50%\\s+([0-9.]+)(us|ms|s)")).match(output);
    const auto p99
            = QRegularExpression(QStringLiteral("\\s99%\\s+([0-9.]+)(us|ms|s)")).match(output);
    const auto total = QRegularExpression(QStringLiteral("(\\d+) requests in")).match(output);
    const auto non2xx = QRegularExpression(QStringLiteral("Non-2xx or 3xx responses:\\s+(\\d+)"))
                                .match(output);
    const auto socket
            = QRegularExpression(QStringLiteral("Socket errors: connect (\\d+), read (\\d+), "
                                                "write (\\d+), timeout (\\d+)"))
                      .match(output);
    if (rate.hasMatch() && p50.hasMatch() && p99.hasMatch() && total.hasMatch()) {
        load.requestsPerSecond = rate.captured(1).toDouble();
        load.p50Ms = milliseconds(p50.captured(1), p50.captured(2));
        load.p99Ms = milliseconds(p99.captured(1), p99.captured(2));
        load.requests = total.captured(1).toLongLong();
        load.measured = true;
    }
    if (non2xx.hasMatch())
        load.errorAnswers = non2xx.captured(1).toLongLong();
    if (socket.hasMatch())
        for (int i = 1; i <= 4; ++i)
            load.socketErrors += socket.captured(i).toLongLong();
    return load;
}

bool writeFile(const QString &path, const std::string &body)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly)
           && file.write(body.data(), qint64(body.size())) == qint64(body.size());
}

QString nginxConfig(const QString &prefix, int port)
{
    return QStringLiteral("worker_processes auto;\ndaemon off;\npid %1/nginx.pid;\nerror_log "
                          "%1/error.log;\n"
                          "events { worker_connections 1024; }\n"
                          "http {\n  access_log off;\n  client_body_temp_path %1/tmp;\n  "
                          "proxy_temp_path %1/tmp;\n"
                          "  fastcgi_temp_path %1/tmp;\n  uwsgi_temp_path %1/tmp;\n  "
                          "scgi_temp_path %1/tmp;\n"
                          "  keepalive_requests 100000;\n"
                          "  server {\n    listen 127.0.0.1:%2;\n    root %1/www;\n"
                          "    location / { default_type application/json; }\n  }\n}\n")
            .arg(prefix)
            .arg(port);
}

// The ratio compares like with like only: both sides answered every request with success.
void printRow(const Target &target, const Load &store, const Load &nginx)
{
    std::printf("%-40s %10.0f %8.2f %8.2f %7lld   %10.0f %8.2f %8.2f %7lld   ",
                qPrintable(target.name), store.requestsPerSecond, store.p50Ms, store.p99Ms,
                store.errorAnswers + store.socketErrors, nginx.requestsPerSecond, nginx.p50Ms,
                nginx.p99Ms, nginx.errorAnswers + nginx.socketErrors);
    if (store.ok() && nginx.ok() && nginx.requestsPerSecond > 0)
        std::printf("%6.2f\n", store.requestsPerSecond / nginx.requestsPerSecond);
    else
        std::printf("%6s\n", "-");
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QString wrk = findProgram(QStringLiteral("wrk"));
    const QString nginx = findProgram(QStringLiteral("nginx"));
    if (wrk.isEmpty() || nginx.isEmpty()) {
        std::printf(
                "bench_store: skipped, %s not installed (scripts/install-deps.sh installs it)\n",
                wrk.isEmpty() ? "wrk" : "nginx");
        return 0;
    }
    const int seconds = qEnvironmentVariableIsSet("TARVEL_BENCH_SECONDS")
                                ? qEnvironmentVariableIntValue("TARVEL_BENCH_SECONDS")
                                : 10;

    QTemporaryDir work;
    std::FILE *requestLog
            = std::fopen(qPrintable(work.filePath(QStringLiteral("requests.log"))), "w");
    StoreOptions options;
    options.port = 0;
    options.databasePath = work.filePath(QStringLiteral("bench.sqlite"));
    options.requestLog
            = requestLog; // a real store logs every request; the cost is part of the figure
    options.outboxLog = nullptr;
    options.sandbox = true; // measured as `make run` serves it
    StoreServer store(options);
    if (!store.bind()) {
        std::printf("bench_store: the store could not listen\n");
        return 0;
    }
    std::thread serving([&] { store.listen(); });
    const QString storeBase = QStringLiteral("http://127.0.0.1:%1").arg(store.port());

    httplib::Client http("127.0.0.1", store.port());
    const auto signIn = http.Post("/sign_in.json",
                                  httplib::Params{{"account[login_name]", StoreSeed::kDemoPhone},
                                                  {"account[password]", StoreSeed::kDemoPassword}});
    const std::string setCookie
            = signIn ? signIn->get_header_value("Set-Cookie", 0) : std::string();
    const QString cookie = QString::fromStdString(setCookie.substr(0, setCookie.find(';')));
    const qint64 gameId = 7; // a game the demo account does not own

    const QList<Target> targets{
            {QStringLiteral("GET /products.json?type=latest&page=1"),
             QStringLiteral("/products.json?type=latest&page=1"), QStringLiteral("products.json"),
             false},
            {QStringLiteral("GET /products/%1.json?verbose=1").arg(gameId),
             QStringLiteral("/products/%1.json?verbose=1").arg(gameId),
             QStringLiteral("products/%1.json").arg(gameId), false},
            {QStringLiteral("GET /cart/add.json (signed in)"),
             QStringLiteral("/cart/add.json?game_id=%1").arg(gameId),
             QStringLiteral("cart/add.json"), true},
    };

    // nginx serves the very bodies the store answers
    const int nginxPort = freePort();
    QDir().mkpath(work.filePath(QStringLiteral("nginx/tmp")));
    const QString prefix = work.filePath(QStringLiteral("nginx"));
    for (const Target &target : targets) {
        httplib::Headers headers;
        if (target.withSession)
            headers.emplace("Cookie", cookie.toStdString());
        const auto answer = http.Get(target.path.toStdString().c_str(), headers);
        writeFile(prefix + QStringLiteral("/www/") + target.file,
                  answer ? answer->body : std::string());
    }
    writeFile(prefix + QStringLiteral("/nginx.conf"), nginxConfig(prefix, nginxPort).toStdString());
    // nginx's workers drop to an unprivileged user when started as root; the temporary folder is
    // owner-only, so open the path to the bodies for reading.
    for (QString dir = prefix + QStringLiteral("/www"); dir.startsWith(work.path());
         dir = QFileInfo(dir).absolutePath()) {
        QFile::setPermissions(dir, QFile::permissions(dir) | QFileDevice::ReadOther
                                           | QFileDevice::ExeOther | QFileDevice::ReadGroup
                                           | QFileDevice::ExeGroup);
        if (dir == work.path())
            break;
    }
    QProcess staticServer;
    staticServer.start(nginx, {QStringLiteral("-p"), prefix, QStringLiteral("-c"),
                               prefix + QStringLiteral("/nginx.conf")});
    staticServer.waitForStarted();
    QThread::msleep(500);

    std::printf("tarvel-store under wrk (2 threads, 16 connections, %d s each) next to nginx "
                "serving the same bodies\n\n",
                seconds);
    std::printf("%-40s %10s %8s %8s %7s   %10s %8s %8s %7s   %6s\n", "request", "store r/s",
                "p50 ms", "p99 ms", "errors", "nginx r/s", "p50 ms", "p99 ms", "errors", "ratio");
    bool goalMet = true;
    for (const Target &target : targets) {
        const Load storeLoad = runWrk(wrk, storeBase + target.path,
                                      target.withSession ? cookie : QString(), seconds);
        const Load staticLoad
                = runWrk(wrk, QStringLiteral("http://127.0.0.1:%1/").arg(nginxPort) + target.file,
                         QString(), seconds);
        printRow(target, storeLoad, staticLoad);
        if (!target.withSession)
            goalMet &= storeLoad.ok() && staticLoad.ok()
                       && storeLoad.requestsPerSecond >= 0.5 * staticLoad.requestsPerSecond
                       && storeLoad.p99Ms < 20;
    }
    std::printf(
            "\ngoal for catalogue reads (at least half of the static rate, p99 under 20 ms): %s\n",
            goalMet ? "met" : "not met");

    staticServer.terminate();
    staticServer.waitForFinished(5000);
    store.stop();
    serving.join();
    std::fclose(requestLog);
    return 0;
}
