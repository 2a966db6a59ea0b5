#include "InProcessStore.h"
#include "PushCommand.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "StoreSeed.h"
#include "StoreServer.h"
#include "TestEnvironment.h"
#include "http/RequestLog.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <httplib.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QProcess>
#include <QtEndian>
#include <QtTest>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <mutex>
#include <thread>

using namespace tarvel::test;

// What an outsider tried against the store, each as it was first done, now refused without any
// change to the database.
class TestHardening : public QObject
{
    Q_OBJECT

private:
    const QString kPhone = QString::fromLatin1(StoreSeed::kDemoPhone);
    const QString kEmail = QString::fromLatin1(StoreSeed::kDemoEmail);
    const QString kPassword = QString::fromLatin1(StoreSeed::kDemoPassword);

    // Every row of the tables requests write to, in a stable order.
    static QString dump(const QString &databasePath)
    {
        SQLite::Database db(databasePath.toStdString(), SQLite::OPEN_READONLY);
        QString text;
        for (const char *table :
             {"accounts", "sessions", "sms_codes", "mail_tokens", "outbox", "cart_items", "orders",
              "order_games", "coupons", "order_line_items", "owned_games", "upload_credentials",
              "uploads", "prepays", "push_clients", "push_messages"}) {
            SQLite::Statement rows(db, std::string("SELECT * FROM ") + table + " ORDER BY 1, 2");
            text += QLatin1String(table) + QLatin1Char('\n');
            while (rows.executeStep()) {
                for (int column = 0; column < rows.getColumnCount(); ++column)
                    text += QString::fromStdString(rows.getColumn(column).getString()) + u'|';
                text += u'\n';
            }
        }
        return text;
    }

    static qint64 scalar(const QString &databasePath, const std::string &sql)
    {
        SQLite::Database db(databasePath.toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement query(db, sql);
        return query.executeStep() ? query.getColumn(0).getInt64() : -1;
    }

    static QByteArray cookieHeader(StoreClient &client, const QString &baseUrl)
    {
        QByteArray header;
        for (const QNetworkCookie &cookie : client.cookies().cookiesForUrl(QUrl(baseUrl + "/"))) {
            if (!header.isEmpty())
                header += "; ";
            header += cookie.name() + '=' + cookie.value();
        }
        return header;
    }

    // A one-key order the phone account may pay, for a game of at least `minimumYuan`.
    static qint64 orderForGame(InProcessStore &store, StoreClient &client, int minimumYuan,
                               qint64 *gameId = nullptr)
    {
        for (const Product &product : store.context().catalog().products()) {
            if (product.kind != QLatin1String("game") || product.blocked
                || product.salePrice < minimumYuan * 100)
                continue;
            const Answer order = client.post(
                    QStringLiteral("/orders.json"),
                    client.withToken({{QStringLiteral("game_id"), QString::number(product.id)}}));
            if (order.ok()) {
                if (gameId)
                    *gameId = product.id;
                return order.object().value("order_id").toInteger();
            }
        }
        return 0;
    }

    static Answer attach(StoreClient &client, qint64 orderId, const QString &code)
    {
        return client.post(
                QStringLiteral("/orders/%1/line_items.json").arg(orderId),
                client.withToken({{QStringLiteral("item_type"), QStringLiteral("coupon")},
                                  {QStringLiteral("code"), code}}));
    }

    static QString pay(StoreClient &client, qint64 orderId)
    {
        return client
                .post(QStringLiteral("/orders/pay.json"),
                      client.withToken(
                              {{QStringLiteral("from"), QStringLiteral("ios")},
                               {QStringLiteral("payment_method"), QStringLiteral("wechat")},
                               {QStringLiteral("order_id"), QString::number(orderId)},
                               {QStringLiteral("openID"), QStringLiteral("oTester")}}))
                .object()
                .value("params_info")
                .toObject()
                .value("prepayid")
                .toString();
    }

    static QString prepayAmount(StoreClient &client, const QString &prepayId)
    {
        return client
                .get(QStringLiteral("/sandbox/wechat/prepay"),
                     {{QStringLiteral("prepayid"), prepayId}})
                .object()
                .value("amount")
                .toString();
    }

    static Answer confirm(StoreClient &client, const QString &prepayId, const QString &amount)
    {
        return client.post(QStringLiteral("/sandbox/wechat/confirm"),
                           {{QStringLiteral("prepayid"), prepayId},
                            {QStringLiteral("result"), QStringLiteral("success")},
                            {QStringLiteral("amount"), amount}});
    }

    static quint32 crc32(const QByteArray &bytes)
    {
        quint32 crc = 0xFFFFFFFFu;
        for (const char byte : bytes) {
            crc ^= quint8(byte);
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
        return ~crc;
    }

    // A small PNG whose header declares `width` x `height` pixels, as a decompression bomb does.
    static QByteArray pngDeclaring(int width, int height)
    {
        QImage tiny(1, 1, QImage::Format_RGB32);
        tiny.fill(Qt::white);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        tiny.save(&buffer, "PNG");
        // Signature (8), IHDR length (4), "IHDR" (4), width, height, 5 more bytes, CRC.
        qToBigEndian<quint32>(quint32(width), bytes.data() + 16);
        qToBigEndian<quint32>(quint32(height), bytes.data() + 20);
        qToBigEndian<quint32>(crc32(bytes.mid(12, 17)), bytes.data() + 29);
        return bytes;
    }

    static QJsonObject uploadCredential(StoreClient &client)
    {
        return client.get(QStringLiteral("/setting/info.json"))
                .object()
                .value("qiniu_params")
                .toObject();
    }

    static Form uploadFields(const QJsonObject &credential)
    {
        Form fields;
        for (const char *key :
             {"token", "x:account_id", "x:timestamp", "x:tarvel_token", "x:bucket_name"})
            fields.append({QLatin1String(key), credential.value(QLatin1String(key)).toString()});
        return fields;
    }

    static int connectTo(int port)
    {
        const int sock = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(quint16(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(sock, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0) {
            ::close(sock);
            return -1;
        }
        return sock;
    }

private slots:
    // 1. The outbox, the captcha answers and the payment confirmation were open to anyone.
    void sandboxPartiesNeedTheFlag_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QString>("path");
        QTest::newRow("every SMS code and mail link")
                << QByteArray("GET") << "/sandbox/outbox.json";
        QTest::newRow("the captcha answer") << QByteArray("GET") << "/sandbox/captcha.json";
        QTest::newRow("completing an order without money")
                << QByteArray("POST") << "/sandbox/wechat/confirm?prepayid=wx1&result=success";
        QTest::newRow("uploads without storage") << QByteArray("POST") << "/sandbox/qiniu/upload";
    }
    void sandboxPartiesNeedTheFlag()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QString, path);
        InProcessStore store({}, InProcessStore::Sandbox::Off);
        StoreClient client(store.baseUrl());
        QCOMPARE(client.get(QStringLiteral("/captcha")).status, 200);
        const QString before = dump(store.databasePath());
        const Answer answer = client.send(verb, path, "a=b", "application/x-www-form-urlencoded");
        QCOMPARE(answer.status, 404);
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("error"));
        QCOMPARE(dump(store.databasePath()), before);
    }

    void sandboxOnlyOnLoopback_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("refused");
        QTest::newRow("every interface") << "0.0.0.0" << true;
        QTest::newRow("every IPv6 interface") << "::" << true;
        QTest::newRow("a LAN address") << "192.168.1.20" << true;
        QTest::newRow("a name") << "store.example" << true;
        QTest::newRow("loopback") << "127.0.0.1" << false;
        QTest::newRow("another loopback address") << "127.0.0.2" << false;
        QTest::newRow("IPv6 loopback") << "::1" << false;
        QTest::newRow("localhost") << "localhost" << false;
    }
    void sandboxOnlyOnLoopback()
    {
        QFETCH(QString, host);
        QFETCH(bool, refused);
        QTemporaryDir directory;
        StoreOptions options;
        options.sandbox = true;
        options.host = host;
        options.port = 0;
        options.requestLog = nullptr;
        options.outboxLog = nullptr;
        options.databasePath = directory.filePath(QStringLiteral("store.sqlite"));
        bool threw = false;
        try {
            StoreServer server(options);
        } catch (const std::exception &error) {
            threw = true;
            QVERIFY2(QByteArray(error.what()).contains("loopback"), error.what());
        }
        QCOMPARE(threw, refused);
        QCOMPARE(QFile::exists(options.databasePath), !refused); // refused before anything is made
    }

    void theProgramRefusesAnExposedSandbox()
    {
        QTemporaryDir directory;
        const QString database = directory.filePath(QStringLiteral("store.sqlite"));
        QProcess store;
        store.start(InProcessStore::executablePath(),
                    {QStringLiteral("--sandbox"), QStringLiteral("--host"),
                     QStringLiteral("0.0.0.0"), QStringLiteral("--port"), QStringLiteral("0"),
                     QStringLiteral("--db"), database, QStringLiteral("--no-scale-ahead")});
        QVERIFY(store.waitForFinished(30000));
        QCOMPARE(store.exitCode(), 1);
        QVERIFY(store.readAllStandardError().contains("loopback"));
        QVERIFY(!QFile::exists(database));
    }

    // 2 and 3. A use-once coupon used again and again; one game paid twice.
    void paymentsSettleOnlyWhatIsDue_data()
    {
        QTest::addColumn<int>("scenario");
        QTest::addColumn<QString>("message");
        QTest::newRow("coupon detached after the payment request")
                << 0 << QStringLiteral("该笔支付已取消或已失效，请重新发起支付");
        QTest::newRow("coupon attached after the payment request")
                << 1 << QStringLiteral("该笔支付已取消或已失效，请重新发起支付");
        QTest::newRow("a smaller amount confirmed")
                << 2 << QStringLiteral("支付金额与订单应付金额¥");
        QTest::newRow("the same game paid by a second order")
                << 3 << QStringLiteral("无需重复购买，支付未完成");
    }
    void paymentsSettleOnlyWhatIsDue()
    {
        QFETCH(int, scenario);
        QFETCH(QString, message);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QVERIFY(client.signIn(kPhone, kPassword).ok());
        qint64 game = 0;
        const qint64 order = orderForGame(store, client, 120, &game);
        QVERIFY(order > 0);
        QString prepay;
        QString amount;
        if (scenario == 0) {
            const Answer attached = attach(client, order, QStringLiteral("SAVE20"));
            QVERIFY2(attached.ok(), attached.body);
            prepay = pay(client, order);
            amount = prepayAmount(client, prepay);
            const Answer detached = client.post(
                    QStringLiteral("/orders/%1/line_items/%2.json")
                            .arg(order)
                            .arg(attached.object().value("line_item_id").toInteger()),
                    client.withToken({{QStringLiteral("_method"), QStringLiteral("delete")}}));
            QVERIFY2(detached.ok(), detached.body);
        } else if (scenario == 1) {
            prepay = pay(client, order);
            amount = prepayAmount(client, prepay);
            QVERIFY(attach(client, order, QStringLiteral("SAVE20")).ok());
        } else if (scenario == 2) {
            prepay = pay(client, order);
            amount = QStringLiteral("0.01");
        } else {
            const Answer second = client.post(
                    QStringLiteral("/orders.json"),
                    client.withToken({{QStringLiteral("game_id"), QString::number(game)}}));
            QVERIFY(second.ok());
            prepay = pay(client, second.object().value("order_id").toInteger());
            amount = prepayAmount(client, prepay);
            const QString first = pay(client, order);
            QVERIFY(confirm(client, first, prepayAmount(client, first)).ok());
        }
        QVERIFY(!prepay.isEmpty());

        const QString before = dump(store.databasePath());
        const Answer refused = confirm(client, prepay, amount);
        QCOMPARE(refused.status, 409);
        QVERIFY2(refused.message().contains(message), qPrintable(refused.message()));
        QCOMPARE(dump(store.databasePath()), before);
        if (scenario < 3) {
            QCOMPARE(client.get(QStringLiteral("/orders/%1/complete.json").arg(order))
                             .object()
                             .value("completed")
                             .toInt(),
                     0);
            QCOMPARE(scalar(store.databasePath(),
                            "SELECT used_at IS NULL FROM coupons WHERE code = 'SAVE20'"),
                     1);
        }
    }

    // 4. Two thousand ranges made a 20 KB cover into a 41 MB answer.
    void rangesCannotMultiplyAnAnswer_data()
    {
        QTest::addColumn<QByteArray>("range");
        QByteArray many = "bytes=0-";
        for (int i = 1; i < 2000; ++i)
            many += ",0-";
        QTest::newRow("2,000 ranges") << many;
        QTest::newRow("one range") << QByteArray("bytes=0-99");
        QTest::newRow("past the end") << QByteArray("bytes=900000000-");
    }
    void rangesCannotMultiplyAnAnswer()
    {
        QFETCH(QByteArray, range);
        InProcessStore store;
        httplib::Client http("127.0.0.1", store.port());
        const auto whole = http.Get("/pictures/covers/3.jpg");
        QVERIFY(whole && whole->status == 200 && !whole->body.empty());
        const auto ranged = http.Get("/pictures/covers/3.jpg", {{"Range", range.toStdString()}});
        QVERIFY(ranged);
        QCOMPARE(ranged->status, 200);
        QCOMPARE(ranged->body.size(), whole->body.size());
        QVERIFY(!ranged->has_header("Content-Range"));
    }

    // 5. A small PNG declaring 5000 x 5000 pixels was decoded; four took the store to 438 MB.
    void pictureBombsAreRefusedBeforeDecoding_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("5000 x 5000") << 5000 << 5000;
        QTest::newRow("too wide") << 40000 << 10;
        QTest::newRow("13 million pixels") << 4000 << 3250;
    }
    void pictureBombsAreRefusedBeforeDecoding()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QVERIFY(client.signIn(kPhone, kPassword).ok());
        const Form fields = uploadFields(uploadCredential(client));
        const QByteArray bomb = pngDeclaring(width, height);
        QVERIFY(bomb.size() < 1024);
        const QString before = dump(store.databasePath());
        const Answer refused
                = client.upload(QStringLiteral("/sandbox/qiniu/upload"), fields, bomb, "image/png");
        QCOMPARE(refused.status, 422);
        QVERIFY2(refused.json.value("error").toString().startsWith(QStringLiteral("图片尺寸过大")),
                 refused.body);
        QCOMPARE(dump(store.databasePath()), before); // the credential is still unused

        // A picture that reached the uploads some other way is not decoded for a scaled view.
        QFile planted(QDir(store.directory()).filePath(QStringLiteral("uploads/planted.png")));
        QVERIFY(planted.open(QIODevice::WriteOnly));
        planted.write(bomb);
        planted.close();
        const Answer view
                = client.get(QStringLiteral("/uploads/planted.png?imageView2/2/w/300/q/85"));
        QCOMPARE(view.status, 422);
        QCOMPARE(view.envelopeStatus(), QStringLiteral("error"));
    }

    void aScaledViewCannotBecomeABomb()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QImage strip(2, 1500, QImage::Format_RGB32); // fine itself; 2048 wide it would be 1.5 G px
        strip.fill(Qt::gray);
        QVERIFY(strip.save(QDir(store.directory()).filePath(QStringLiteral("uploads/strip.png"))));
        QCOMPARE(client.get(QStringLiteral("/uploads/strip.png?imageView2/2/w/2048/q/85")).status,
                 422);
        QCOMPARE(client.get(QStringLiteral("/uploads/strip.png?imageView2/2/w/2/q/85")).status,
                 200);
    }

    // 6. Twenty wrong passwords at once were all checked before the lock applied.
    void parallelWrongSignInsCountFive()
    {
        InProcessStore store;
        std::atomic<int> wrong{0};
        std::atomic<int> locked{0};
        std::mutex othersMutex;
        QStringList others; // anything else, for the failure message
        std::vector<std::thread> guesses;
        for (int i = 0; i < 20; ++i) {
            guesses.emplace_back([&, i] {
                httplib::Client http("127.0.0.1", store.port());
                http.set_read_timeout(60);
                const auto answer = http.Post(
                        "/sign_in.json",
                        httplib::Params{{"account[login_name]", StoreSeed::kDemoPhone},
                                        {"account[password]", "guess-" + std::to_string(i)}});
                if (answer && answer->body.find("\"code\":601") != std::string::npos) {
                    ++locked;
                } else if (answer && answer->status == 401) {
                    ++wrong;
                } else {
                    std::lock_guard lock(othersMutex);
                    others.append(
                            answer ? QString::fromStdString(answer->body)
                                   : QString::fromStdString(httplib::to_string(answer.error())));
                }
            });
        }
        for (std::thread &guess : guesses)
            guess.join();
        QVERIFY2(others.isEmpty(), qPrintable(others.join(QLatin1Char('|'))));
        QCOMPARE(wrong.load() + locked.load(), 20);
        QCOMPARE(wrong.load(), 4); // the fifth wrong password locks and says so
        QCOMPARE(scalar(store.databasePath(),
                        "SELECT failed_sign_ins FROM accounts WHERE phone_number = '13800138000'"),
                 5);
        QCOMPARE(scalar(store.databasePath(), "SELECT locked_at IS NOT NULL FROM accounts WHERE "
                                              "phone_number = '13800138000'"),
                 1);
        StoreClient client(store.baseUrl());
        QCOMPARE(client.signIn(kPhone, kPassword).json.value("code").toInt(), 601);
    }

    // 7. A reset requested with "Host: attacker.example" mailed a link to that host.
    void mailLinksIgnoreTheHostHeader_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("email");
        QTest::newRow("password reset") << "/password.json" << kEmail;
        QTest::newRow("unlock") << "/unlock.json" << kEmail;
        QTest::newRow("activation") << "/sign_up.json"
                                    << "new@example.com";
    }
    void mailLinksIgnoreTheHostHeader()
    {
        QFETCH(QString, path);
        QFETCH(QString, email);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString captcha = client.captcha();
        httplib::Client http("127.0.0.1", store.port());
        const auto answer = http.Post(
                path.toStdString(),
                httplib::Headers{{"Host", "attacker.example"},
                                 {"Cookie", cookieHeader(client, store.baseUrl()).toStdString()}},
                httplib::Params{{"account[email]", email.toStdString()},
                                {"account[captcha]", captcha.toStdString()},
                                {"account[password]", "secret123"},
                                {"account[password_confirmation]", "secret123"}});
        QVERIFY(answer && answer->status == 200);
        const QString link = client.lastMessage(email).value("link").toString();
        QVERIFY2(link.startsWith(store.baseUrl() + QStringLiteral("/account/")), qPrintable(link));
    }

    // 8. One right captcha answer sent SMS to eight numbers.
    void aCaptchaAnswerServesOneNumber_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("phone");
        QTest::newRow("a code for another new number") << "/phone_number_tokens.json"
                                                       << "13900000002";
        QTest::newRow("a recovery code for an account") << "/password/token.json" << kPhone;
        QTest::newRow("an unlock code for an account") << "/unlock/token.json" << kPhone;
    }
    void aCaptchaAnswerServesOneNumber()
    {
        QFETCH(QString, path);
        QFETCH(QString, phone);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString captcha = client.captcha();
        const Answer first = client.post(QStringLiteral("/phone_number_tokens.json"),
                                         {{QStringLiteral("phone_number"), "13900000001"},
                                          {QStringLiteral("captcha"), captcha}});
        QVERIFY2(first.ok(), first.body);
        const QString before = dump(store.databasePath());
        const Answer second = client.post(path, {{QStringLiteral("phone_number"), phone},
                                                 {QStringLiteral("captcha"), captcha}});
        QCOMPARE(second.envelopeStatus(), QStringLiteral("fail"));
        QCOMPARE(second.failMessage("captcha"), QStringLiteral("请重新输入正确的图片验证码"));
        QCOMPARE(dump(store.databasePath()), before);
        // The first number goes on with the same answer: registering it.
        const Answer registered
                = client.post(QStringLiteral("/sign_up.json"),
                              {{QStringLiteral("account[phone_number]"), "13900000001"},
                               {QStringLiteral("account[pending_phone_number_token]"),
                                client.lastCode(QStringLiteral("13900000001"))},
                               {QStringLiteral("account[captcha]"), captcha},
                               {QStringLiteral("account[password]"), "secret123"},
                               {QStringLiteral("account[password_confirmation]"), "secret123"}});
        QVERIFY2(registered.ok(), registered.body);
    }

    // 9. A bound e-mail address was confirmed at once, locking its owner out and signing in.
    void anUnconfirmedEmailBindingProvesNothing()
    {
        InProcessStore store;
        StoreClient binder(store.baseUrl());
        QVERIFY(binder.signIn(kPhone, kPassword).ok());
        const QString victim = QStringLiteral("owner@example.com");
        const Answer bound = binder.put(
                QStringLiteral("/setting/email.json"),
                binder.withToken({{QStringLiteral("account[email]"), victim},
                                  {QStringLiteral("account[current_password]"), kPassword}}));
        QVERIFY(bound.ok());
        StoreClient signIn(store.baseUrl());
        const QString before = dump(store.databasePath());
        QCOMPARE(signIn.signIn(victim, kPassword).message(), QStringLiteral("账号或密码错误"));
        QCOMPARE(dump(store.databasePath()), before);

        // The real owner registers the address, and the binder's link no longer binds it.
        StoreClient owner(store.baseUrl());
        const QString link = owner.lastMessage(victim).value("link").toString();
        const Answer registered
                = owner.post(QStringLiteral("/sign_up.json"),
                             {{QStringLiteral("account[email]"), victim},
                              {QStringLiteral("account[captcha]"), owner.captcha()},
                              {QStringLiteral("account[password]"), "secret123"},
                              {QStringLiteral("account[password_confirmation]"), "secret123"}});
        QVERIFY2(registered.ok(), registered.body);
        QCOMPARE(binder.get(QUrl(link).path() + QLatin1Char('?') + QUrl(link).query()).status, 410);
        QCOMPARE(
                binder.get(QStringLiteral("/setting/info.json")).object().value("email").toString(),
                QString());
    }

    // 10. Slow clients held a worker as long as they liked.
    void slowClientsAreCutOff_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("trickle");
        QTest::newRow("a header line every 300 ms")
                << QByteArray("GET /store.json HTTP/1.1\r\nHost: x\r\n")
                << QByteArray("X-A: b\r\n");
        QTest::newRow("a body byte every 300 ms")
                << QByteArray("POST /sign_in.json HTTP/1.1\r\nHost: x\r\nContent-Type: "
                              "application/x-www-form-urlencoded\r\nContent-Length: 100\r\n\r\n")
                << QByteArray("a");
    }
    void slowClientsAreCutOff()
    {
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, trickle);
        StoreOptions options;
        options.threads = 3;
        options.headerDeadline = std::chrono::milliseconds(1000);
        options.bodyDeadline = std::chrono::milliseconds(1000);
        InProcessStore store(options);
        constexpr int kSlowClients = 5;
        constexpr int kTrickles = 40; // 12 s of trickling, far beyond the deadline
        std::atomic<int> cutOff{0};
        std::vector<std::thread> slow;
        for (int i = 0; i < kSlowClients; ++i) {
            slow.emplace_back([&] {
                const int sock = connectTo(store.port());
                if (sock < 0)
                    return;
                timeval wait{0, 300'000};
                setsockopt(sock, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
                ::send(sock, head.constData(), size_t(head.size()), MSG_NOSIGNAL);
                for (int sent = 0; sent < kTrickles; ++sent) {
                    char answer[512];
                    // The server answers 400 or closes: either way this client is done.
                    if (::recv(sock, answer, sizeof answer, 0) >= 0
                        || ::send(sock, trickle.constData(), size_t(trickle.size()), MSG_NOSIGNAL)
                                   < 0) {
                        ++cutOff;
                        break;
                    }
                }
                ::close(sock);
            });
        }
        StoreClient client(store.baseUrl());
        QVERIFY(client.get(QStringLiteral("/store.json")).ok()); // served meanwhile
        for (std::thread &thread : slow)
            thread.join();
        QCOMPARE(cutOff.load(), kSlowClients);
    }

    // 11. Registration said "该号码已注册" before looking at the captcha.
    void registrationChecksTheCaptchaFirst_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("login");
        QTest::newRow("phone") << "account[phone_number]" << kPhone;
        QTest::newRow("email") << "account[email]" << kEmail;
    }
    void registrationChecksTheCaptchaFirst()
    {
        QFETCH(QString, field);
        QFETCH(QString, login);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        client.captcha();
        const qint64 accounts = scalar(store.databasePath(), "SELECT COUNT(*) FROM accounts");
        const Answer answer
                = client.post(QStringLiteral("/sign_up.json"),
                              {{field, login},
                               {QStringLiteral("account[pending_phone_number_token]"), "123456"},
                               {QStringLiteral("account[captcha]"), "WRNG"},
                               {QStringLiteral("account[password]"), "secret123"},
                               {QStringLiteral("account[password_confirmation]"), "secret123"}});
        QCOMPARE(answer.failMessage("captcha"), QStringLiteral("请重新输入正确的图片验证码"));
        QVERIFY(!answer.body.contains("已注册"));
        // Only the wrong answer was counted.
        QCOMPARE(scalar(store.databasePath(), "SELECT MAX(captcha_tries) FROM sessions"), 1);
        QCOMPARE(scalar(store.databasePath(), "SELECT COUNT(*) FROM accounts"), accounts);
    }

    // 12. Anyone read any device's push message, learnt client ids, and sent to every device.
    void aPushPayloadIsForItsDeviceOnly_data()
    {
        QTest::addColumn<QString>("reader");
        QTest::newRow("another device") << "other";
        QTest::newRow("no client id") << "";
        QTest::newRow("a made-up client id") << "0123456789abcdef01234567";
    }
    void aPushPayloadIsForItsDeviceOnly()
    {
        QFETCH(QString, reader);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        auto registerDevice = [&](const QString &token) {
            return client
                    .post(QStringLiteral("/sandbox/push/register"),
                          {{QStringLiteral("device_token"), token}})
                    .object()
                    .value("client_id")
                    .toString();
        };
        const QString owner = registerDevice(QStringLiteral("owner-device"));
        const QString other = registerDevice(QStringLiteral("other-device"));
        QCOMPARE(PushCommand::run({"tarvel-store", "--title", "订单已发货", "--content",
                                   "激活码见附件", "--client-id", owner, "--db",
                                   store.databasePath()}),
                 0);
        const qint64 id = client.get(QStringLiteral("/sandbox/push/poll"),
                                     {{QStringLiteral("client_id"), owner}})
                                  .array()
                                  .first()
                                  .toObject()
                                  .value("id")
                                  .toInteger();
        QVERIFY(id > 0);
        const QString before = dump(store.databasePath());
        const Answer foreign
                = client.get(QStringLiteral("/sandbox/push/payload/%1").arg(id),
                             {{QStringLiteral("client_id"), reader == "other" ? other : reader}});
        QCOMPARE(foreign.status, 404);
        QVERIFY(!foreign.body.contains("激活码"));
        QCOMPARE(client.post(QStringLiteral("/sandbox/push/send"),
                             {{QStringLiteral("title"), "t"}, {QStringLiteral("content"), "c"}})
                         .status,
                 404);
        QCOMPARE(dump(store.databasePath()), before);
        // Registering the token again never gives the id out.
        QVERIFY(registerDevice(QStringLiteral("owner-device")) != owner);
    }

    // 13. Thirty-day rows for every cookieless captcha, foreign avatars, the 413 text, tokens in
    // addresses and in the log.
    void anonymousSessionsExpireWithinAnHour()
    {
        InProcessStore store;
        for (int i = 0; i < 300; ++i)
            QCOMPARE(StoreClient(store.baseUrl()).get(QStringLiteral("/captcha")).status, 200);
        QCOMPARE(scalar(store.databasePath(), "SELECT COUNT(*) FROM sessions"), 300);
        QVERIFY(scalar(store.databasePath(), "SELECT MAX(expires_at - created_at) FROM sessions")
                <= 3600);
        store.advanceClock(3601);
        StoreClient late(store.baseUrl());
        const Answer captcha = late.get(QStringLiteral("/captcha"));
        QVERIFY(captcha.setCookie("_tarvel_session").contains("SameSite=Strict"));
        QCOMPARE(scalar(store.databasePath(), "SELECT COUNT(*) FROM sessions"), 1);
    }

    void oversizedFormsNameTheirLimit_data()
    {
        QTest::addColumn<QByteArray>("contentType");
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("message");
        QTest::newRow("a form over 8 KB") << QByteArray("application/x-www-form-urlencoded") << 9000
                                          << QStringLiteral("表单内容超过8KB上限");
        QTest::newRow("another body over 8 MB")
                << QByteArray("application/octet-stream") << 8 * 1024 * 1024 + 1
                << QStringLiteral("请求内容超过8MB上限");
    }
    void oversizedFormsNameTheirLimit()
    {
        QFETCH(QByteArray, contentType);
        QFETCH(int, size);
        QFETCH(QString, message);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString before = dump(store.databasePath());
        const Answer answer = client.send("POST", QStringLiteral("/sign_in.json"),
                                          "a=" + QByteArray(size - 2, 'x'), contentType);
        QCOMPARE(answer.status, 413);
        QCOMPARE(answer.message(), message);
        QCOMPARE(dump(store.databasePath()), before);
    }

    void tokensStayOutOfAddresses()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QVERIFY(client.signIn(kPhone, kPassword).ok());
        const QString before = dump(store.databasePath());
        const Answer answer = client.post(
                QStringLiteral("/cart/remove.json?authenticity_token=%1").arg(client.token()),
                client.withToken({{QStringLiteral("game_ids"), "5"}}));
        QCOMPARE(answer.status, 403);
        QCOMPARE(dump(store.databasePath()), before);
    }

    void theLogHidesTokens_data()
    {
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<QByteArray>("logged");
        QTest::newRow("mail link") << QByteArray("/account/activate?token=s3cr3t")
                                   << QByteArray("/account/activate?token=[hidden]");
        QTest::newRow("authenticity token")
                << QByteArray("/cart/add.json?game_id=5&authenticity_token=s3cr3t")
                << QByteArray("/cart/add.json?game_id=5&authenticity_token=[hidden]");
        QTest::newRow("encoded name") << QByteArray("/x?authenticity%5Ftoken=s3cr3t&a=1")
                                      << QByteArray("/x?authenticity%5Ftoken=[hidden]&a=1");
        QTest::newRow("nothing to hide") << QByteArray("/products.json?type=latest&page=1")
                                         << QByteArray("/products.json?type=latest&page=1");
    }
    void theLogHidesTokens()
    {
        QFETCH(QByteArray, target);
        QFETCH(QByteArray, logged);
        QCOMPARE(QByteArray::fromStdString(RequestLog::redacted(target.toStdString())), logged);
    }
};

TARVEL_TEST_MAIN(TestHardening)
#include "tst_hardening.moc"
