// Load benchmark of tarvel-store.
// Reads: next to nginx serving the same bodies as static files; wrk runs 10 s
// (TARVEL_BENCH_SECONDS) per address; the report gives requests/s, p50 and p99 for both and the
// ratio store/static.
// Writes a shop lives on (sign-in, add to cart, create an order, pay it through the sandbox's
// WeChat), against 2,000 seeded users, with 16 and 64 connections of an in-process client for 3 s
// (TARVEL_BENCH_WRITE_SECONDS) each.
// It reports and never fails on a number.

#include "StoreContext.h"
#include "StoreSeed.h"
#include "StoreServer.h"
#include "accounts/Accounts.h"
#include "catalog/Catalog.h"
#include "core/Crypto.h"
#include "db/Database.h"

#include <httplib.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <latch>
#include <mutex>
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

// ---- writes: an in-process client, one thread and one keep-alive connection per connection ----

constexpr int kBenchUsers = 2000;
constexpr char kBenchPassword[] = "bench-2024";

QString benchPhone(int user)
{
    return QStringLiteral("139%1").arg(user, 8, 10, QLatin1Char('0'));
}

// The benchmark's customers, beside the seeded demo accounts. One password hash serves them all:
// every sign-in still checks the password in full.
void seedUsers(StoreContext &context)
{
    const QString hash = Crypto::hashPassword(QString::fromLatin1(kBenchPassword));
    context.database().write([&](SQLite::Database &db) {
        for (int user = 0; user < kBenchUsers; ++user)
            Accounts::create(db, benchPhone(user), QString(), hash,
                             QStringLiteral("压测玩家%1").arg(user), true, context.now());
        return true;
    });
}

// The first refusal or failed exchange of a run, shown under its row.
std::mutex firstErrorMutex;
std::string firstError;

void noteError(const std::string &text)
{
    std::lock_guard lock(firstErrorMutex);
    if (firstError.empty())
        firstError = text.substr(0, 160);
}

QJsonObject envelope(const httplib::Result &answer)
{
    if (!answer) {
        noteError("no answer: " + httplib::to_string(answer.error()));
        return {};
    }
    if (answer->status != 200) {
        noteError(std::to_string(answer->status) + " " + answer->body);
        return {};
    }
    const QJsonObject object
            = QJsonDocument::fromJson(QByteArray::fromStdString(answer->body)).object();
    return object.value(QStringLiteral("status")).toString() == QLatin1String("success")
                   ? object
                   : QJsonObject();
}

QJsonObject dataOf(const httplib::Result &answer)
{
    return envelope(answer).value(QStringLiteral("data")).toObject();
}

struct Connection
{
    explicit Connection(int port)
        : http("127.0.0.1", port)
    {
        http.set_keep_alive(true);
        // as the app's network stack: a POST's headers and body leave at once, not 40 ms apart
        http.set_tcp_nodelay(true);
        http.set_read_timeout(60, 0);
    }

    // Signs in as the next of this connection's users; false when that failed.
    bool signInNext()
    {
        const int user = users.at(nextUser++ % users.size());
        const auto answer = send([&] {
            return http.Post(
                    "/sign_in.json",
                    httplib::Params{{"account[login_name]", benchPhone(user).toStdString()},
                                    {"account[password]", kBenchPassword}});
        });
        const QJsonObject data = dataOf(answer);
        cookie.clear();
        for (size_t i = 0; answer && i < answer->get_header_value_count("Set-Cookie"); ++i) {
            const std::string raw = answer->get_header_value("Set-Cookie", i);
            cookie += (cookie.empty() ? "" : "; ") + raw.substr(0, raw.find(';'));
        }
        token = data.value(QStringLiteral("token")).toString().toStdString();
        nextGame = 0;
        return !token.empty() && !cookie.empty();
    }
    httplib::Headers headers() const { return {{"Cookie", cookie}}; }
    // A kept-alive connection the store closed while it was idle fails the next request before
    // it reaches the store; like the app's network stack, send such a request once more.
    template<typename Request>
    httplib::Result send(Request request)
    {
        httplib::Result answer = request();
        if (!answer
            && (answer.error() == httplib::Error::Read
                || answer.error() == httplib::Error::Write)) {
            http.stop(); // on a new connection
            answer = request();
        }
        return answer;
    }
    httplib::Result get(const std::string &path)
    {
        return send([&] { return http.Get(path, headers()); });
    }
    httplib::Result post(const std::string &path, httplib::Params fields, bool withToken = true)
    {
        if (withToken)
            fields.emplace("authenticity_token", token);
        return send([&] { return http.Post(path, headers(), fields); });
    }

    httplib::Client http;
    QList<int> users;
    int nextUser = 0;
    std::string cookie;
    std::string token;
    int nextGame = 0;
};

using Operation = std::function<bool(Connection &, const QList<qint64> &games)>;

struct WritePath
{
    QString name;
    int usersPerConnection;
    bool signedIn; // the connection signs in before the clock starts
    Operation operation;
};

bool addToCart(Connection &connection, const QList<qint64> &games)
{
    const qint64 game = games.at(connection.nextGame++ % games.size());
    return !dataOf(connection.get(
                           QStringLiteral("/cart/add.json?game_id=%1").arg(game).toStdString()))
                    .isEmpty();
}

qint64 createOrder(Connection &connection, qint64 game)
{
    return dataOf(connection.post("/orders.json", {{"game_id", std::to_string(game)}}))
            .value(QStringLiteral("order_id"))
            .toInteger();
}

// A new order for a game the user does not own yet, paid as the app does: the payment request,
// then the payer's side of the sandbox reads the amount and confirms it.
bool buyOne(Connection &connection, const QList<qint64> &games)
{
    if (connection.nextGame >= games.size() && !connection.signInNext())
        return false;
    const qint64 orderId = createOrder(connection, games.at(connection.nextGame++));
    if (orderId == 0)
        return false;
    const QString prepayId
            = dataOf(connection.post("/orders/pay.json", {{"from", "ios"},
                                                          {"payment_method", "wechat"},
                                                          {"order_id", std::to_string(orderId)},
                                                          {"openID", ""}}))
                      .value(QStringLiteral("params_info"))
                      .toObject()
                      .value(QStringLiteral("prepayid"))
                      .toString();
    if (prepayId.isEmpty())
        return false;
    const QString amount
            = dataOf(connection.get(("/sandbox/wechat/prepay?prepayid=" + prepayId).toStdString()))
                      .value(QStringLiteral("amount"))
                      .toString();
    const QJsonObject paid = dataOf(connection.post("/sandbox/wechat/confirm",
                                                    {{"prepayid", prepayId.toStdString()},
                                                     {"result", "success"},
                                                     {"amount", amount.toStdString()}},
                                                    false));
    return paid.value(QStringLiteral("state")).toString() == QLatin1String("completed");
}

const QList<WritePath> &writePaths()
{
    static const QList<WritePath> paths{
            {QStringLiteral("sign in (argon2id check)"), 8, false,
             [](Connection &connection, const QList<qint64> &) { return connection.signInNext(); }},
            {QStringLiteral("add to cart"), 1, true, addToCart},
            {QStringLiteral("create an order"), 1, true,
             [](Connection &connection, const QList<qint64> &games) {
                 return createOrder(connection, games.at(connection.nextGame++ % games.size())) > 0;
             }},
            {QStringLiteral("order + pay + WeChat confirm"), 3, true, buyOne},
    };
    return paths;
}

struct WriteLoad
{
    QList<double> latenciesMs; // of operations that succeeded
    qint64 errors = 0;
    double seconds = 0;
    int connectionsServed = 0; // with at least one success
    int connectionsNotReady = 0; // could not sign in before the clock started
    double rate() const { return seconds > 0 ? double(latenciesMs.size()) / seconds : 0; }
    bool ok() const { return !latenciesMs.isEmpty() && errors == 0 && connectionsNotReady == 0; }
};

WriteLoad runWrites(int port, const WritePath &path, int connections, int seconds,
                    const QList<qint64> &games, int &nextUser)
{
    WriteLoad load;
    std::mutex merging;
    std::latch ready(connections + 1);
    std::atomic<bool> stop{false};
    std::vector<std::thread> workers;
    for (int c = 0; c < connections; ++c) {
        QList<int> users;
        for (int i = 0; i < path.usersPerConnection; ++i)
            users.append(nextUser++ % kBenchUsers);
        workers.emplace_back([&, users] {
            Connection connection(port);
            connection.users = users;
            const bool prepared = !path.signedIn || connection.signInNext();
            QList<double> latencies;
            qint64 errors = 0;
            ready.arrive_and_wait();
            while (prepared && !stop) {
                QElapsedTimer clock;
                clock.start();
                const bool done = path.operation(connection, games);
                if (done)
                    latencies.append(double(clock.nsecsElapsed()) / 1e6);
                else
                    ++errors;
            }
            std::lock_guard lock(merging);
            load.latenciesMs += latencies;
            load.errors += errors;
            load.connectionsServed += latencies.isEmpty() ? 0 : 1;
            load.connectionsNotReady += prepared ? 0 : 1;
        });
    }
    ready.arrive_and_wait();
    QElapsedTimer wall;
    wall.start();
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
    stop = true;
    for (std::thread &worker : workers)
        worker.join();
    load.seconds = double(wall.nsecsElapsed()) / 1e9;
    return load;
}

double percentile(QList<double> values, double share)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values.at(std::min<qsizetype>(values.size() - 1, qsizetype(share * values.size())));
}

void benchWritePaths(StoreServer &store, int seconds)
{
    seedUsers(store.context());
    QList<qint64> games;
    for (const Product &product : store.context().catalog().products()) {
        if (product.kind == QLatin1String("game") && !product.blocked)
            games.append(product.id);
    }
    std::printf("\nwrites against %d seeded users, %d s per run, one keep-alive connection per "
                "client thread (client and store share this machine's cores), store with %d worker "
                "threads\n\n",
                kBenchUsers, seconds, store.context().options().threads);
    std::printf("%-32s %5s %9s %8s %8s %8s %7s %7s %8s   %s\n", "operation", "conns", "ops/s",
                "p50 ms", "p99 ms", "max ms", "ops", "errors", "served", "64/16");
    int nextUser = 0;
    for (const WritePath &path : writePaths()) {
        WriteLoad previous;
        for (int connections : {16, 64}) {
            firstError.clear();
            const WriteLoad load
                    = runWrites(store.port(), path, connections, seconds, games, nextUser);
            std::printf("%-32s %5d %9.1f %8.2f %8.2f %8.0f %7lld %7lld %5d/%-2d",
                        qPrintable(path.name), connections, load.rate(),
                        percentile(load.latenciesMs, 0.5), percentile(load.latenciesMs, 0.99),
                        percentile(load.latenciesMs, 1.0), qint64(load.latenciesMs.size()),
                        load.errors + load.connectionsNotReady, load.connectionsServed,
                        connections);
            // the same operation both times, and every one of them succeeded
            if (connections == 64 && previous.ok() && load.ok())
                std::printf("   %5.2f\n", load.rate() / previous.rate());
            else
                std::printf("   %5s\n", connections == 64 ? "-" : "");
            if (!firstError.empty())
                std::printf("    first error: %s\n", firstError.c_str());
            previous = load;
        }
    }
    std::printf("\nerrors: operations that failed, plus connections that could not sign in; "
                "served: connections with at least one success. A kept-alive connection holds one "
                "of the store's worker threads while it lasts, so connections beyond them wait "
                "for one (see max ms).\n");
}

// Reads next to nginx serving the very bodies the store answers.
void compareReadsWithStatic(StoreServer &store, const QString &wrk, const QString &nginx,
                            const QTemporaryDir &work, int seconds)
{
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
}

int secondsFrom(const char *variable, int fallback)
{
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : fallback;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
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

    const QString wrk = findProgram(QStringLiteral("wrk"));
    const QString nginx = findProgram(QStringLiteral("nginx"));
    const int readSeconds = secondsFrom("TARVEL_BENCH_SECONDS", 10);
    if (readSeconds <= 0)
        std::printf("bench_store: reads skipped (TARVEL_BENCH_SECONDS=0)\n");
    else if (wrk.isEmpty() || nginx.isEmpty())
        std::printf("bench_store: reads skipped, %s not installed (scripts/install-deps.sh "
                    "installs it)\n",
                    wrk.isEmpty() ? "wrk" : "nginx");
    else
        compareReadsWithStatic(store, wrk, nginx, work, readSeconds);
    benchWritePaths(store, secondsFrom("TARVEL_BENCH_WRITE_SECONDS", 3));

    store.stop();
    serving.join();
    std::fclose(requestLog);
    return 0;
}
