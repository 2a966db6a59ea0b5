#include "InProcessStore.h"
#include "PushCommand.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "TestEnvironment.h"

#include <QRegularExpression>
#include <QtTest>

using namespace tarvel::test;

// The outside parties the sandbox plays: outbox, push channel, the push command, and switching
// all of them off.
class TestSandbox : public QObject
{
    Q_OBJECT

private:
    static Answer requestCode(StoreClient &client, const QString &phone)
    {
        const QString captcha = client.captcha();
        return client.post(
                QStringLiteral("/phone_number_tokens.json"),
                {{QStringLiteral("phone_number"), phone}, {QStringLiteral("captcha"), captcha}});
    }

    static QString registerDevice(StoreClient &client, const QString &deviceToken)
    {
        return client
                .post(QStringLiteral("/sandbox/push/register"),
                      {{QStringLiteral("device_token"), deviceToken}})
                .object()
                .value("client_id")
                .toString();
    }

    static QJsonArray poll(StoreClient &client, const QString &clientId, qint64 after = 0)
    {
        return client
                .get(QStringLiteral("/sandbox/push/poll"),
                     {{QStringLiteral("client_id"), clientId},
                      {QStringLiteral("after"), QString::number(after)}})
                .array();
    }

    // The operator's command against the store's database; its exit code.
    static int send(InProcessStore &store, QStringList arguments)
    {
        arguments.prepend(QStringLiteral("tarvel-store"));
        arguments << QStringLiteral("--db") << store.databasePath();
        return PushCommand::run(arguments);
    }

    static Answer payload(StoreClient &client, qint64 messageId, const QString &clientId)
    {
        return client.get(QStringLiteral("/sandbox/push/payload/%1").arg(messageId),
                          {{QStringLiteral("client_id"), clientId}});
    }

private slots:
    void outboxIsNewestFirstPerRecipient()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QVERIFY(requestCode(client, QStringLiteral("13100000001")).ok());
        QVERIFY(requestCode(client, QStringLiteral("13100000002")).ok());
        store.advanceClock(61);
        QVERIFY(requestCode(client, QStringLiteral("13100000001")).ok());

        const QJsonArray mine = client.get(QStringLiteral("/sandbox/outbox.json"),
                                           {{QStringLiteral("to"), QStringLiteral("13100000001")}})
                                        .array();
        QCOMPARE(mine.size(), 2);
        QVERIFY(mine.at(0).toObject().value("id").toInteger()
                > mine.at(1).toObject().value("id").toInteger());
        for (const QJsonValue &value : mine) {
            const QJsonObject sms = value.toObject();
            QCOMPARE(sms.value("channel").toString(), QStringLiteral("sms"));
            QCOMPARE(sms.value("to").toString(), QStringLiteral("13100000001"));
            QVERIFY(sms.value("body").toString().contains(sms.value("code").toString()));
        }
        QCOMPARE(client.get(QStringLiteral("/sandbox/outbox.json")).array().size(), 3);
    }

    void captchaAnswerBelongsToTheSession()
    {
        InProcessStore store;
        StoreClient first(store.baseUrl());
        StoreClient second(store.baseUrl());
        QCOMPARE(first.get(QStringLiteral("/sandbox/captcha.json")).status, 404);
        const QString a = first.captcha();
        const QString b = second.captcha();
        QVERIFY(QRegularExpression(QStringLiteral("^[A-Z2-9]{4}$")).match(a).hasMatch());
        QCOMPARE(first.get(QStringLiteral("/sandbox/captcha.json"))
                         .object()
                         .value("captcha")
                         .toString(),
                 a);
        QCOMPARE(second.get(QStringLiteral("/sandbox/captcha.json"))
                         .object()
                         .value("captcha")
                         .toString(),
                 b);
    }

    void pushReachesTheRightClients()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString early = registerDevice(client, QStringLiteral("device-early"));
        QVERIFY(!early.isEmpty());
        QCOMPARE(send(store, {"--title", "开服公告", "--content", "欢迎"}), 0);
        const QString late = registerDevice(client, QStringLiteral("device-late"));
        QVERIFY(poll(client, late).isEmpty()); // nothing from before the registration

        QCOMPARE(send(store, {"--title", "夏日特惠", "--content", "全场五折", "--date",
                              "2024-07-01 10:00", "--url", "/products/12"}),
                 0);
        QCOMPARE(send(store, {"--title", "私信", "--content", "只给你", "--client-id", early}), 0);
        const QJsonArray earlyMessages = poll(client, early);
        QCOMPARE(earlyMessages.size(), 3);
        QCOMPARE(poll(client, late).size(), 1);
        const qint64 lastSeen = earlyMessages.at(1).toObject().value("id").toInteger();
        QCOMPARE(poll(client, early, lastSeen).size(), 1);

        const qint64 broadcast = earlyMessages.at(1).toObject().value("id").toInteger();
        const qint64 direct = earlyMessages.at(2).toObject().value("id").toInteger();
        QCOMPARE(payload(client, broadcast, late).json, (QJsonObject{{"title", "夏日特惠"},
                                                                     {"content", "全场五折"},
                                                                     {"date", "2024-07-01 10:00"},
                                                                     {"url", "/products/12"}}));
        const QJsonObject withoutUrl = payload(client, direct, early).json;
        QVERIFY(!withoutUrl.contains("url"));
        QVERIFY(QRegularExpression(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d$"))
                        .match(withoutUrl.value("date").toString())
                        .hasMatch());

        // Registering again gives the device a new id and keeps what was sent to it; the old id
        // is forgotten.
        const QString again = registerDevice(client, QStringLiteral("device-early"));
        QVERIFY(!again.isEmpty() && again != early);
        QCOMPARE(poll(client, again).size(), 3);
        QCOMPARE(client.get(QStringLiteral("/sandbox/push/poll"),
                            {{QStringLiteral("client_id"), early}})
                         .status,
                 404);
        QCOMPARE(payload(client, direct, again).status, 200);
    }

    void heldPollAnswersItsOwnMessage_data()
    {
        QTest::addColumn<bool>("forThisDevice");
        QTest::addColumn<int>("wait");
        QTest::newRow("a message for it ends the wait") << true << 25;
        QTest::newRow("one for another device does not") << false << 1;
    }

    void heldPollAnswersItsOwnMessage()
    {
        QFETCH(bool, forThisDevice);
        QFETCH(int, wait);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString device = registerDevice(client, QStringLiteral("device-held"));
        const QString other = registerDevice(client, QStringLiteral("device-other"));
        // Sends once the store holds the poll (the command writes from its own connection).
        bool sent = false;
        QTimer sender;
        sender.setInterval(5);
        connect(&sender, &QTimer::timeout, [&] {
            if (sent || store.context().pushBell().waiting() != 1)
                return;
            sent = true;
            send(store, {"--title", "到货通知", "--content", "马上来看", "--client-id",
                         forThisDevice ? device : other});
        });
        sender.start();
        // Held for 25 s unless the message wakes it: the answer would come empty.
        const QJsonArray answer = client.get(QStringLiteral("/sandbox/push/poll"),
                                             {{QStringLiteral("client_id"), device},
                                              {QStringLiteral("after"), QStringLiteral("0")},
                                              {QStringLiteral("wait"), QString::number(wait)}})
                                          .array();
        QVERIFY(sent);
        QCOMPARE(answer.size(), forThisDevice ? 1 : 0);
        if (forThisDevice)
            QCOMPARE(answer.first().toObject().value("title").toString(),
                     QStringLiteral("到货通知"));
        QCOMPARE(store.context().pushBell().waiting(), 0);
    }

    void pushRefusals_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Form>("fields");
        QTest::addColumn<int>("status");
        QTest::newRow("poll unknown client")
                << "/sandbox/push/poll?client_id=nobody" << Form() << 404;
        QTest::newRow("unknown payload")
                << "/sandbox/push/payload/999?client_id=nobody" << Form() << 404;
        QTest::newRow("register without token")
                << "/sandbox/push/register" << Form{{"device_token", ""}} << 422;
        QTest::newRow("sending is not an address")
                << "/sandbox/push/send" << Form{{"title", "t"}, {"content", "c"}} << 404;
    }
    void pushRefusals()
    {
        QFETCH(QString, path);
        QFETCH(Form, fields);
        QFETCH(int, status);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer answer = fields.isEmpty() ? client.get(path) : client.post(path, fields);
        QCOMPARE(answer.status, status);
        QCOMPARE(answer.envelopeStatus(),
                 status == 422 ? QStringLiteral("fail") : QStringLiteral("error"));
    }

    void pushCommandBroadcasts()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString device = registerDevice(client, QStringLiteral("device-cli"));
        QCOMPARE(send(store,
                      {"--title", "新游上架", "--content", "快来看看", "--url", "/products/3"}),
                 0);
        const QJsonObject message = poll(client, device).first().toObject();
        QCOMPARE(message.value("title").toString(), QStringLiteral("新游上架"));
        QCOMPARE(message.value("url").toString(), QStringLiteral("/products/3"));
        QCOMPARE(send(store, {"--title", "x"}), 2);
        QCOMPARE(send(store, {"--title", "x", "--content", "y", "--client-id", "nobody"}), 1);
        QCOMPARE(PushCommand::run({QStringLiteral("tarvel-store"), QStringLiteral("--title"),
                                   QStringLiteral("x"), QStringLiteral("--content"),
                                   QStringLiteral("y"), QStringLiteral("--db"),
                                   store.directory() + QStringLiteral("/missing.sqlite")}),
                 1);
        QCOMPARE(poll(client, device).size(), 1);
    }

    void noSandboxSwitchesThePartiesOff_data()
    {
        QTest::addColumn<QByteArray>("verb");
        QTest::addColumn<QString>("path");
        QTest::newRow("outbox") << QByteArray("GET") << "/sandbox/outbox.json";
        QTest::newRow("captcha answer") << QByteArray("GET") << "/sandbox/captcha.json";
        QTest::newRow("upload") << QByteArray("POST") << "/sandbox/qiniu/upload";
        QTest::newRow("wechat") << QByteArray("POST") << "/sandbox/wechat/confirm";
        QTest::newRow("push register") << QByteArray("POST") << "/sandbox/push/register";
    }
    void noSandboxSwitchesThePartiesOff()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QString, path);
        InProcessStore store({}, InProcessStore::Sandbox::Off);
        StoreClient client(store.baseUrl());
        const Answer answer = client.send(verb, path, "a=b", "application/x-www-form-urlencoded");
        QCOMPARE(answer.status, 404);
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("error"));
        QVERIFY(client.get(QStringLiteral("/store.json")).ok());
        QCOMPARE(client.get(QStringLiteral("/captcha")).status, 200); // the store's own parts stay
    }
};

TARVEL_TEST_MAIN(TestSandbox)
#include "tst_sandbox.moc"
