#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "StoreSeed.h"
#include "StoreServer.h"
#include "TestEnvironment.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <httplib.h>

#include <QTcpSocket>
#include <QtTest>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <thread>

using namespace tarvel::test;

// What every answer shares: envelopes for every refusal, body limits, malformed requests,
// parameterised queries, concurrency, the request log and the database file.
class TestProtocol : public QObject
{
    Q_OBJECT

private:
    static void verifyEnvelope(const QByteArray &body)
    {
        const QJsonObject envelope = QJsonDocument::fromJson(body).object();
        QVERIFY2(envelope.contains("status") && envelope.contains("data")
                         && envelope.contains("message"),
                 body);
        QVERIFY2(!envelope.value("message").toString().isEmpty(), body);
    }

    // Sends raw bytes and returns the whole answer (head and body).
    static QByteArray rawExchange(quint16 port, const QByteArray &request)
    {
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        if (!socket.waitForConnected(5000))
            return {};
        socket.write(request);
        socket.waitForBytesWritten(5000);
        QByteArray answer;
        while (socket.waitForReadyRead(3000)) {
            answer += socket.readAll();
            const qsizetype headEnd = answer.indexOf("\r\n\r\n");
            if (headEnd < 0)
                continue;
            const qsizetype at = answer.toLower().indexOf("content-length:");
            const qsizetype length = answer.mid(at + 15, answer.indexOf("\r\n", at) - at - 15)
                                             .trimmed()
                                             .toLongLong();
            if (answer.size() >= headEnd + 4 + length)
                break;
        }
        return answer;
    }

    static qint64 count(const QString &database, const char *sql)
    {
        SQLite::Database db(database.toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement query(db, sql);
        query.executeStep();
        return query.getColumn(0).getInt64();
    }

private slots:
    void everyRefusalIsAnEnvelope_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<int>("status");
        QTest::newRow("unknown path")
                << QByteArray("GET") << "/nothing.json" << QByteArray() << QByteArray() << 404;
        QTest::newRow("wrong method")
                << QByteArray("DELETE") << "/store.json" << QByteArray() << QByteArray() << 405;
        QTest::newRow("patch") << QByteArray("PATCH") << "/sign_in.json" << QByteArray("a=b")
                               << QByteArray("application/x-www-form-urlencoded") << 405;
        QTest::newRow("options") << QByteArray("OPTIONS") << "/cart.json" << QByteArray()
                                 << QByteArray() << 405;
        QTest::newRow("over eight megabytes")
                << QByteArray("POST") << "/sign_in.json" << QByteArray(8 * 1024 * 1024 + 1, 'a')
                << QByteArray("application/x-www-form-urlencoded") << 413;
        QTest::newRow("broken multipart")
                << QByteArray("POST") << "/sign_in.json"
                << QByteArray("--zz\r\nContent-Disposition: form-data\r\n\r\nno end")
                << QByteArray("multipart/form-data; boundary=zz") << 400;
        QTest::newRow("not signed in")
                << QByteArray("GET") << "/home/games.json" << QByteArray() << QByteArray() << 401;
        QTest::newRow("unknown order") << QByteArray("GET") << "/orders/abc/complete.json"
                                       << QByteArray() << QByteArray() << 401;
    }
    void everyRefusalIsAnEnvelope()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QString, path);
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, contentType);
        QFETCH(int, status);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer answer = client.send(verb, path, body, contentType);
        QCOMPARE(answer.status, status);
        QVERIFY(answer.contentType.startsWith("application/json"));
        verifyEnvelope(answer.body);
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("error"));
        QVERIFY(client.get(QStringLiteral("/store.json")).ok()); // and the service goes on
    }

    void malformedRawRequests_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("statusLine");
        QTest::newRow("garbage line")
                << QByteArray("GARBAGE\r\n\r\n") << QByteArray("HTTP/1.1 400");
        QTest::newRow("address too long")
                << "GET /" + QByteArray(9000, 'a') + " HTTP/1.1\r\nHost: x\r\n\r\n"
                << QByteArray("HTTP/1.1 414");
        QByteArray chunked("POST /sign_in.json HTTP/1.1\r\nHost: x\r\nContent-Type: "
                           "application/x-www-form-urlencoded\r\n"
                           "Transfer-Encoding: chunked\r\n\r\n");
        for (int i = 0; i < 9; ++i)
            chunked += "100000\r\n" + QByteArray(0x100000, 'a') + "\r\n";
        chunked += "0\r\n\r\n";
        QTest::newRow("chunked over the limit") << chunked << QByteArray("HTTP/1.1 413");
    }
    void malformedRawRequests()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, statusLine);
        InProcessStore store;
        const QByteArray answer = rawExchange(quint16(store.port()), request);
        QVERIFY2(answer.startsWith(statusLine), answer.left(200));
        verifyEnvelope(answer.mid(answer.indexOf("\r\n\r\n") + 4));
    }

    void multipartFormsAreReadLikeUrlEncodedOnes()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        auto *parts = new QHttpMultiPart(QHttpMultiPart::FormDataType);
        for (const auto &[name, value] : Form{{"account[login_name]", StoreSeed::kDemoPhone},
                                              {"account[password]", StoreSeed::kDemoPassword}}) {
            QHttpPart part;
            part.setHeader(QNetworkRequest::ContentDispositionHeader,
                           QStringLiteral("form-data; name=\"%1\"").arg(name));
            part.setBody(value.toUtf8());
            parts->append(part);
        }
        QNetworkAccessManager manager;
        QNetworkReply *reply = manager.post(
                QNetworkRequest(QUrl(store.baseUrl() + QStringLiteral("/sign_in.json"))), parts);
        parts->setParent(reply);
        QSignalSpy finished(reply, &QNetworkReply::finished);
        QVERIFY(finished.wait(10000));
        const QJsonObject envelope = QJsonDocument::fromJson(reply->readAll()).object();
        QCOMPARE(envelope.value("status").toString(), QStringLiteral("success"));
        reply->deleteLater();
    }

    void sqlMetacharactersChangeNothing()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QVERIFY(client.signIn(QString::fromLatin1(StoreSeed::kDemoPhone),
                              QString::fromLatin1(StoreSeed::kDemoPassword))
                        .ok());
        const QString evil = QStringLiteral("'; DROP TABLE accounts; -- \" OR 1=1 %_\\");
        const QList<std::pair<QString, QStringList>> forms{
                {"/sign_in.json", {"account[login_name]", "account[password]"}},
                {"/sign_up.json",
                 {"account[email]", "account[captcha]", "account[password]",
                  "account[password_confirmation]"}},
                {"/sign_up.json",
                 {"account[phone_number]", "account[pending_phone_number_token]",
                  "account[captcha]"}},
                {"/phone_number_tokens.json", {"phone_number", "captcha"}},
                {"/password/token.json", {"phone_number", "captcha"}},
                {"/password.json", {"account[email]", "account[captcha]"}},
                {"/password.json",
                 {"account[phone_number]", "account[pending_phone_number_token]",
                  "account[password]"}},
                {"/unlock.json", {"account[phone_number]", "account[pending_phone_number_token]"}},
                {"/cart/remove.json", {"game_ids"}},
                {"/cart/submit.json", {"game_ids"}},
                {"/orders.json", {"game_id"}},
                {"/orders/8/line_items.json", {"item_type", "code"}},
                {"/orders/pay.json", {"payment_method", "order_id", "openID"}},
                {"/setting/check_phone_number.json",
                 {"account[phone_number]", "account[pending_phone_number_token]",
                  "account[current_password]"}},
                {"/sandbox/wechat/confirm", {"prepayid", "result"}},
                {"/sandbox/push/register", {"device_token"}},
        };
        for (const auto &[path, fields] : forms) {
            Form form{{QStringLiteral("authenticity_token"), client.token()}};
            for (const QString &field : fields)
                form.append({field, evil});
            const Answer answer = client.post(path, form);
            QVERIFY2(answer.status != 500 && answer.json.contains("status"),
                     qPrintable(path + ": " + answer.body));
        }
        const QList<std::pair<QString, QStringList>> queries{
                {"/products.json", {"type", "page"}},
                {"/store/search.json", {"q"}},
                {"/cart/add.json", {"game_id"}},
                {"/orders.json", {"type", "page"}},
                {"/sandbox/outbox.json", {"to"}},
                {"/sandbox/push/poll", {"client_id", "after"}},
        };
        for (const auto &[path, fields] : queries) {
            Form query;
            for (const QString &field : fields)
                query.append({field, evil});
            const Answer answer = client.get(path, query);
            QVERIFY2(answer.status != 500 && answer.json.contains("status"),
                     qPrintable(path + ": " + answer.body));
        }
        const Answer put = client.put(
                QStringLiteral("/setting/email.json"),
                client.withToken({{QStringLiteral("account[email]"), evil},
                                  {QStringLiteral("account[current_password]"), evil}}));
        QCOMPARE(put.status, 422);
        QCOMPARE(count(store.databasePath(), "SELECT COUNT(*) FROM accounts"), 2);
        QCOMPARE(count(store.databasePath(), "SELECT COUNT(*) FROM products"),
                 qint64(store.context().catalog().size()));
        QCOMPARE(count(store.databasePath(), "SELECT COUNT(*) FROM orders"), 8);
        QVERIFY(client.signIn(QString::fromLatin1(StoreSeed::kDemoPhone),
                              QString::fromLatin1(StoreSeed::kDemoPassword))
                        .ok());
    }

    // A burst of customers connecting at the same moment: every connection is taken and
    // answered, none is reset because the listening queue was full.
    void aBurstOfConnectionsIsServed()
    {
        InProcessStore store;
        constexpr int kConnections = 200;
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(quint16(store.port()));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        std::vector<int> sockets;
        for (int i = 0; i < kConnections; ++i) {
            const int sock = ::socket(AF_INET, SOCK_STREAM, 0);
            QVERIFY(sock >= 0);
            sockets.push_back(sock);
            QVERIFY2(::connect(sock, reinterpret_cast<const sockaddr *>(&address), sizeof address)
                             == 0,
                     strerror(errno));
        }
        const QByteArray request("GET /products.json?type=top&page=1 HTTP/1.1\r\nHost: x\r\n"
                                 "Connection: close\r\n\r\n");
        for (int sock : sockets)
            QCOMPARE(::send(sock, request.constData(), size_t(request.size()), MSG_NOSIGNAL),
                     ssize_t(request.size()));
        int answered = 0;
        for (int sock : sockets) {
            timeval wait{60, 0};
            ::setsockopt(sock, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
            char head[16] = {};
            const ssize_t received = ::recv(sock, head, sizeof head - 1, MSG_WAITALL);
            if (received > 0 && QByteArray(head).startsWith("HTTP/1.1 200"))
                ++answered;
            ::close(sock);
        }
        QCOMPARE(answered, kConnections);
    }

    void concurrentWritersNeverSeeALockedDatabase()
    {
        InProcessStore store;
        constexpr int kThreads = 8;
        constexpr int kRounds = 15;
        std::atomic<int> answered{0};
        QStringList problems;
        std::mutex problemsMutex;
        auto worker = [&](int index) {
            httplib::Client http("127.0.0.1", store.port());
            const httplib::Params signIn{{"account[login_name]", index % 2 ? StoreSeed::kDemoPhone
                                                                           : StoreSeed::kDemoEmail},
                                         {"account[password]", StoreSeed::kDemoPassword}};
            const auto session = http.Post("/sign_in.json", signIn);
            if (!session || session->status != 200)
                return;
            const std::string cookie
                    = session->get_header_value("Set-Cookie", 0)
                              .substr(0, session->get_header_value("Set-Cookie", 0).find(';'));
            const std::string token
                    = QJsonDocument::fromJson(QByteArray::fromStdString(session->body))
                              .object()
                              .value("data")
                              .toObject()
                              .value("token")
                              .toString()
                              .toStdString();
            const httplib::Headers headers{{"Cookie", cookie}};
            const std::string game = std::to_string(60 + index);
            for (int round = 0; round < kRounds; ++round) {
                const std::vector<httplib::Result> results = [&] {
                    std::vector<httplib::Result> all;
                    all.push_back(http.Get(("/cart/add.json?game_id=" + game).c_str(), headers));
                    all.push_back(http.Post(
                            "/cart/remove.json", headers,
                            httplib::Params{{"authenticity_token", token}, {"game_ids", game}}));
                    all.push_back(http.Post(
                            "/orders.json", headers,
                            httplib::Params{{"authenticity_token", token}, {"game_id", game}}));
                    all.push_back(http.Get("/orders.json?type=all&page=1", headers));
                    all.push_back(http.Get("/products.json?type=top&page=2"));
                    return all;
                }();
                for (const httplib::Result &result : results) {
                    if (result && result->status == 200) {
                        ++answered;
                        continue;
                    }
                    std::lock_guard lock(problemsMutex);
                    problems.append(result ? QString::fromStdString(result->body)
                                           : QStringLiteral("no answer"));
                }
            }
        };
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back(worker, i);
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join('\n')));
        QCOMPARE(answered.load(), kThreads * kRounds * 5);
        QCOMPARE(count(store.databasePath(), "SELECT COUNT(*) FROM orders"),
                 8 + kThreads * kRounds);
    }

    void eachRequestIsLogged()
    {
        QTemporaryDir directory;
        std::FILE *log = std::tmpfile();
        {
            StoreOptions options;
            options.requestLog = log;
            options.outboxLog = nullptr;
            options.port = 0;
            options.databasePath = directory.filePath(QStringLiteral("logged.sqlite"));
            StoreServer server(options);
            QVERIFY(server.bind());
            std::thread serving([&] { server.listen(); });
            httplib::Client http("127.0.0.1", server.port());
            QVERIFY(http.Get("/products.json?type=latest&page=1"));
            QVERIFY(http.Get("/missing"));
            server.stop();
            serving.join();
        }
        std::rewind(log);
        QByteArray lines;
        char buffer[512];
        while (std::fgets(buffer, sizeof buffer, log))
            lines += buffer;
        std::fclose(log);
        QVERIFY2(lines.contains("\"GET /products.json?type=latest&page=1\" 200"), lines);
        QVERIFY2(lines.contains("\"GET /missing\" 404"), lines);
        QVERIFY(QRegularExpression(
                        QStringLiteral(
                                "^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ 127\\.0\\.0\\.1 "))
                        .match(QString::fromUtf8(lines))
                        .hasMatch());
    }

    void databaseIsVersionedAndInWalMode()
    {
        InProcessStore store;
        SQLite::Database db(store.databasePath().toStdString(), SQLite::OPEN_READWRITE);
        SQLite::Statement mode(db, "PRAGMA journal_mode");
        mode.executeStep();
        QCOMPARE(QString::fromStdString(mode.getColumn(0).getString()), QStringLiteral("wal"));
        SQLite::Statement version(db, "PRAGMA user_version");
        version.executeStep();
        QCOMPARE(version.getColumn(0).getInt(), 2);
    }

    void aNewerDatabaseIsRefused()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("future.sqlite"));
        {
            SQLite::Database db(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            db.exec("PRAGMA user_version = 99");
        }
        StoreOptions options;
        options.databasePath = path;
        options.requestLog = nullptr;
        try {
            StoreServer server(options);
            QFAIL("a database of a newer schema was opened");
        } catch (const std::exception &error) {
            QVERIFY2(QByteArray(error.what()).contains("newer"), error.what());
        }
    }
};

TARVEL_TEST_MAIN(TestProtocol)
#include "tst_protocol.moc"
