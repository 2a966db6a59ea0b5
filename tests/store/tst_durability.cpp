#include "InProcessStore.h"
#include "StoreProcess.h"
#include "StoreSeed.h"
#include "TestEnvironment.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <httplib.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <atomic>
#include <mutex>
#include <thread>

using namespace tarvel::test;

// The tarvel-store program itself: seeding, clean stops, and no committed order, coupon change or
// payment lost when the process is killed in the middle of writing.
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
                process,
                arguments + QStringList{QStringLiteral("--quiet"), QStringLiteral("--sandbox")});
    }

    static std::pair<httplib::Headers, std::string>
    signIn(httplib::Client &http, const char *login = StoreSeed::kDemoPhone)
    {
        const auto answer = http.Post(
                "/sign_in.json", httplib::Params{{"account[login_name]", login},
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

    static QJsonObject dataOf(const httplib::Result &answer)
    {
        if (!answer || answer->status != 200)
            return {};
        return QJsonDocument::fromJson(QByteArray::fromStdString(answer->body))
                .object()
                .value("data")
                .toObject();
    }

    // Games of at least `minimumFen` that neither demo account owns or has in its cart.
    QList<qint64> freeGames(qint64 minimumFen, int count)
    {
        SQLite::Database db(database().toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement query(
                db,
                "SELECT id FROM products WHERE kind = 'game' AND blocked = 0 AND sale_price >= ? "
                "AND id NOT BETWEEN 60 AND 63 AND id NOT IN (SELECT product_id FROM "
                "owned_games) AND id NOT IN (SELECT product_id FROM cart_items) "
                "AND release_date < strftime('%s', 'now') ORDER BY id LIMIT ?");
        query.bind(1, static_cast<int64_t>(minimumFen));
        query.bind(2, count);
        QList<qint64> ids;
        while (query.executeStep())
            ids.append(query.getColumn(0).getInt64());
        return ids;
    }

private slots:
    void seedOnlyCreatesTheDatabaseOnce()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(QStringLiteral("once.sqlite"));
        QProcess first;
        first.start(InProcessStore::executablePath(),
                    {QStringLiteral("--db"), path, QStringLiteral("--seed-only"),
                     QStringLiteral("--no-scale-ahead")});
        QVERIFY(first.waitForFinished(30000));
        QCOMPARE(first.exitCode(), 0);
        QVERIFY(first.readAllStandardOutput().contains("seeded 160 products"));
        QProcess second;
        second.start(InProcessStore::executablePath(),
                     {QStringLiteral("--db"), path, QStringLiteral("--seed-only"),
                      QStringLiteral("--no-scale-ahead")});
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
        // Coupon writes: one order of the phone account has its coupon attached and detached.
        const QList<qint64> games = freeGames(5000, 41);
        QCOMPARE(games.size(), 41);
        QList<qint64> attached; // coupon lines whose attaching was answered
        QList<qint64> detached; // ... and whose detaching was answered
        auto couponCycler = [&] {
            httplib::Client http("127.0.0.1", port);
            http.set_connection_timeout(2);
            const auto [headers, token] = signIn(http);
            const qint64 order
                    = dataOf(http.Post("/orders.json", headers,
                                       httplib::Params{{"authenticity_token", token},
                                                       {"game_id", std::to_string(games.first())}}))
                              .value("order_id")
                              .toInteger();
            const std::string lines = "/orders/" + std::to_string(order) + "/line_items";
            while (!stop && order > 0) {
                const qint64 line = dataOf(http.Post(lines + ".json", headers,
                                                     httplib::Params{{"authenticity_token", token},
                                                                     {"item_type", "coupon"},
                                                                     {"code", "PHONE15"}}))
                                            .value("line_item_id")
                                            .toInteger();
                if (line <= 0)
                    continue;
                {
                    std::lock_guard lock(answeredMutex);
                    attached.append(line);
                }
                const auto answer = http.Post(
                        lines + "/" + std::to_string(line) + ".json", headers,
                        httplib::Params{{"authenticity_token", token}, {"_method", "delete"}});
                if (answer && answer->status == 200) {
                    std::lock_guard lock(answeredMutex);
                    detached.append(line);
                }
            }
        };
        // Payment writes: the e-mail account buys game after game through the WeChat sandbox.
        QList<std::pair<qint64, qint64>> paid; // order, game
        auto payer = [&] {
            httplib::Client http("127.0.0.1", port);
            http.set_connection_timeout(2);
            const auto [headers, token] = signIn(http, StoreSeed::kDemoEmail);
            for (qsizetype next = 1; next < games.size() && !stop; ++next) {
                const qint64 game = games.at(next);
                const qint64 order
                        = dataOf(http.Post("/orders.json", headers,
                                           httplib::Params{{"authenticity_token", token},
                                                           {"game_id", std::to_string(game)}}))
                                  .value("order_id")
                                  .toInteger();
                const std::string prepay
                        = dataOf(http.Post("/orders/pay.json", headers,
                                           httplib::Params{{"authenticity_token", token},
                                                           {"payment_method", "wechat"},
                                                           {"order_id", std::to_string(order)},
                                                           {"openID", "oDurable"}}))
                                  .value("params_info")
                                  .toObject()
                                  .value("prepayid")
                                  .toString()
                                  .toStdString();
                const std::string amount
                        = dataOf(http.Get("/sandbox/wechat/prepay?prepayid=" + prepay))
                                  .value("amount")
                                  .toString()
                                  .toStdString();
                const auto confirmed = http.Post("/sandbox/wechat/confirm",
                                                 httplib::Params{{"prepayid", prepay},
                                                                 {"result", "success"},
                                                                 {"amount", amount}});
                if (confirmed && confirmed->status == 200) {
                    std::lock_guard lock(answeredMutex);
                    paid.append({order, game});
                }
            }
        };
        std::vector<std::thread> buyers;
        for (int i = 0; i < 4; ++i)
            buyers.emplace_back(buyer, 60 + i);
        buyers.emplace_back(couponCycler);
        buyers.emplace_back(payer);
        // Until 60 orders, 3 coupon cycles and 3 payments are answered (or half a minute passes:
        // the kill then comes anyway).
        (void)QTest::qWaitFor(
                [&] {
                    std::lock_guard lock(answeredMutex);
                    return answered.size() >= 60 && detached.size() >= 3 && paid.size() >= 3;
                },
                30000);
        store.kill(); // SIGKILL while the buyers keep writing
        store.waitForFinished(10000);
        stop = true;
        for (std::thread &thread : buyers)
            thread.join();
        QVERIFY(answered.size() >= 60);
        QVERIFY(detached.size() >= 3);
        QVERIFY(paid.size() >= 3);

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
            // Every answered attach was written (line ids are never reused), every answered
            // detach too; a detach cut off by the kill may have happened or not.
            SQLite::Statement sequence(
                    db, "SELECT seq FROM sqlite_sequence WHERE name = 'order_line_items'");
            QVERIFY(sequence.executeStep());
            QVERIFY(sequence.getColumn(0).getInt64() >= attached.last());
            SQLite::Statement lines(db,
                                    "SELECT id FROM order_line_items WHERE type_value = 'PHONE15'");
            QList<qint64> remaining;
            while (lines.executeStep())
                remaining.append(lines.getColumn(0).getInt64());
            QVERIFY(remaining.size() <= 1);
            for (qint64 line : remaining)
                QVERIFY(!detached.contains(line) && line >= attached.last());
            for (const auto &[orderId, game] : paid) {
                SQLite::Statement completed(
                        db,
                        "SELECT o.state, p.state, (SELECT COUNT(*) FROM owned_games g WHERE "
                        "g.account_id = o.account_id AND g.product_id = ? AND g.order_id = o.id) "
                        "FROM orders o JOIN prepays p ON p.order_id = o.id WHERE o.id = ?");
                completed.bind(1, static_cast<int64_t>(game));
                completed.bind(2, static_cast<int64_t>(orderId));
                QVERIFY2(completed.executeStep(),
                         qPrintable(QStringLiteral("paid order %1 was lost").arg(orderId)));
                QCOMPARE(QString::fromStdString(completed.getColumn(0).getString()),
                         QStringLiteral("completed"));
                QCOMPARE(QString::fromStdString(completed.getColumn(1).getString()),
                         QStringLiteral("success"));
                QCOMPARE(completed.getColumn(2).getInt(), 1);
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
                      QStringLiteral("--port"), QString::number(port),
                      QStringLiteral("--no-scale-ahead")});
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
