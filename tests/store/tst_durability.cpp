#include "InProcessStore.h"
#include "StoreProcess.h"
#include "StoreSeed.h"
#include "TestEnvironment.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <httplib.h>

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <atomic>
#include <mutex>
#include <thread>

using namespace tarvel::test;

// The tarvel-store program itself: seeding, clean stops, and no committed order lost when the
// process is killed in the middle of writing.
class TestDurability : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_directory;

    QString database() const { return m_directory.filePath(QStringLiteral("store.sqlite")); }

    // Starts the program on a port it picks itself and returns that port.
    static int start(QProcess &process, const QStringList &arguments)
    {
        return tarvel::test::startStoreOnAnyPort(
                process, arguments + QStringList{QStringLiteral("--quiet")});
    }

    static std::pair<httplib::Headers, std::string> signIn(httplib::Client &http)
    {
        const auto answer = http.Post(
                "/sign_in.json", httplib::Params{{"account[login_name]", StoreSeed::kDemoPhone},
                                                 {"account[password]", StoreSeed::kDemoPassword}});
        if (!answer)
            return {};
        const std::string cookie = answer->get_header_value("Set-Cookie", 0);
        const QJsonObject data = QJsonDocument::fromJson(QByteArray::fromStdString(answer->body))
                                         .object()
                                         .value("data")
                                         .toObject();
        return {httplib::Headers{{"Cookie", cookie.substr(0, cookie.find(';'))}},
                data.value("token").toString().toStdString()};
    }

private slots:
    void seedOnlyCreatesTheDatabaseOnce()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("once.sqlite"));
        QProcess first;
        first.start(InProcessStore::executablePath(),
                    {QStringLiteral("--db"), path, QStringLiteral("--seed-only")});
        QVERIFY(first.waitForFinished(30000));
        QCOMPARE(first.exitCode(), 0);
        QVERIFY(first.readAllStandardOutput().contains("seeded 160 products"));
        QProcess second;
        second.start(InProcessStore::executablePath(),
                     {QStringLiteral("--db"), path, QStringLiteral("--seed-only")});
        QVERIFY(second.waitForFinished(30000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(!second.readAllStandardOutput().contains("seeded 160 products"));
        SQLite::Database db(path.toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement products(db, "SELECT COUNT(*) FROM products");
        products.executeStep();
        QCOMPARE(products.getColumn(0).getInt(), 160);
    }

    void aKillLosesNoCommittedOrder()
    {
        QProcess store;
        const int port = start(store, {QStringLiteral("--db"), database()});
        QVERIFY2(port > 0, store.readAllStandardError());

        std::mutex answeredMutex;
        QList<qint64> answered;
        std::atomic<bool> stop{false};
        auto buyer = [&](int game) {
            httplib::Client http("127.0.0.1", port);
            http.set_connection_timeout(2);
            const auto [headers, token] = signIn(http);
            while (!stop) {
                const auto answer = http.Post("/orders.json", headers,
                                              httplib::Params{{"authenticity_token", token},
                                                              {"game_id", std::to_string(game)}});
                if (!answer || answer->status != 200)
                    continue;
                const qint64 id = QJsonDocument::fromJson(QByteArray::fromStdString(answer->body))
                                          .object()
                                          .value("data")
                                          .toObject()
                                          .value("order_id")
                                          .toInteger();
                std::lock_guard lock(answeredMutex);
                answered.append(id);
            }
        };
        std::vector<std::thread> buyers;
        for (int i = 0; i < 4; ++i)
            buyers.emplace_back(buyer, 60 + i);
        // Until 60 orders are answered (or half a minute passes: the kill then comes anyway).
        (void)QTest::qWaitFor(
                [&] {
                    std::lock_guard lock(answeredMutex);
                    return answered.size() >= 60;
                },
                30000);
        store.kill(); // SIGKILL while the buyers keep writing
        store.waitForFinished(10000);
        stop = true;
        for (std::thread &thread : buyers)
            thread.join();
        QVERIFY(answered.size() >= 60);

        {
            SQLite::Database db(database().toStdString(), SQLite::OPEN_READWRITE);
            SQLite::Statement integrity(db, "PRAGMA integrity_check");
            integrity.executeStep();
            QCOMPARE(QString::fromStdString(integrity.getColumn(0).getString()),
                     QStringLiteral("ok"));
            for (qint64 id : answered) {
                SQLite::Statement order(db, "SELECT state, (SELECT COUNT(*) FROM order_games WHERE "
                                            "order_id = orders.id) "
                                            "FROM orders WHERE id = ?");
                order.bind(1, static_cast<int64_t>(id));
                QVERIFY2(order.executeStep(),
                         qPrintable(QStringLiteral("order %1 was lost").arg(id)));
                QCOMPARE(QString::fromStdString(order.getColumn(0).getString()),
                         QStringLiteral("in_checkout"));
                QCOMPARE(order.getColumn(1).getInt(), 1);
            }
        }

        // the service starts again on the same file and answers for every order
        QProcess again;
        const int secondPort = start(again, {QStringLiteral("--db"), database()});
        QVERIFY(secondPort > 0);
        httplib::Client http("127.0.0.1", secondPort);
        const auto [headers, token] = signIn(http);
        const auto last = http.Get(
                ("/orders/" + std::to_string(answered.last()) + "/checkout.json").c_str(), headers);
        QVERIFY(last && last->status == 200);
        again.terminate(); // SIGTERM: a clean stop
        QVERIFY(again.waitForFinished(15000));
        QCOMPARE(again.exitStatus(), QProcess::NormalExit);
        QCOMPARE(again.exitCode(), 0);
        QVERIFY(again.readAllStandardOutput().contains("tarvel-store stopped"));
    }

    void aTakenPortIsReported()
    {
        QProcess first;
        const int port = start(first, {QStringLiteral("--db"),
                                       m_directory.filePath(QStringLiteral("port.sqlite"))});
        QVERIFY(port > 0);
        QProcess second;
        second.start(InProcessStore::executablePath(),
                     {QStringLiteral("--db"), m_directory.filePath(QStringLiteral("port.sqlite")),
                      QStringLiteral("--port"), QString::number(port)});
        QVERIFY(second.waitForFinished(30000));
        QCOMPARE(second.exitCode(), 1);
        QVERIFY(second.readAllStandardError().contains("cannot listen"));
        first.terminate();
        QVERIFY(first.waitForFinished(15000));
        QCOMPARE(first.exitCode(), 0);
    }
};

TARVEL_TEST_MAIN(TestDurability)
#include "tst_durability.moc"
