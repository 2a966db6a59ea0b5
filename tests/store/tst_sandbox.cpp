#include "InProcessStore.h"
#include "PushCommand.h"
#include "StoreClient.h"
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

    static Answer send(StoreClient &client, const Form &fields)
    {
        return client.post(QStringLiteral("/sandbox/push/send"), fields);
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
        QCOMPARE(registerDevice(client, QStringLiteral("device-early")),
                 early); // one id per device
        QVERIFY(send(client, {{QStringLiteral("title"), QStringLiteral("开服公告")},
                              {QStringLiteral("content"), QStringLiteral("欢迎")}})
                        .ok());
        const QString late = registerDevice(client, QStringLiteral("device-late"));
        QVERIFY(poll(client, late).isEmpty()); // nothing from before the registration

        const Answer broadcast
                = send(client, {{QStringLiteral("title"), QStringLiteral("夏日特惠")},
                                {QStringLiteral("content"), QStringLiteral("全场五折")},
                                {QStringLiteral("date"), QStringLiteral("2024-07-01 10:00")},
                                {QStringLiteral("url"), QStringLiteral("/products/12")}});
        QVERIFY(broadcast.ok());
        const Answer direct = send(client, {{QStringLiteral("title"), QStringLiteral("私信")},
                                            {QStringLiteral("content"), QStringLiteral("只给你")},
                                            {QStringLiteral("client_id"), early}});
        QVERIFY(direct.ok());
        QCOMPARE(poll(client, early).size(), 3);
        QCOMPARE(poll(client, late).size(), 1);
        const qint64 lastSeen = poll(client, early).at(1).toObject().value("id").toInteger();
        QCOMPARE(poll(client, early, lastSeen).size(), 1);

        const Answer payload = client.get(QStringLiteral("/sandbox/push/payload/%1")
                                                  .arg(broadcast.object().value("id").toInteger()));
        QCOMPARE(payload.json, (QJsonObject{{"title", "夏日特惠"},
                                            {"content", "全场五折"},
                                            {"date", "2024-07-01 10:00"},
                                            {"url", "/products/12"}}));
        const QJsonObject withoutUrl
                = client.get(QStringLiteral("/sandbox/push/payload/%1")
                                     .arg(direct.object().value("id").toInteger()))
                          .json;
        QVERIFY(!withoutUrl.contains("url"));
        QVERIFY(QRegularExpression(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d$"))
                        .match(withoutUrl.value("date").toString())
                        .hasMatch());
    }

    void pushRefusals_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Form>("fields");
        QTest::addColumn<int>("status");
        QTest::newRow("poll unknown client")
                << "/sandbox/push/poll?client_id=nobody" << Form() << 404;
        QTest::newRow("unknown payload") << "/sandbox/push/payload/999" << Form() << 404;
        QTest::newRow("send without title")
                << "/sandbox/push/send" << Form{{"content", "x"}} << 422;
        QTest::newRow("send to unknown client")
                << "/sandbox/push/send"
                << Form{{"title", "t"}, {"content", "c"}, {"client_id", "nobody"}} << 404;
        QTest::newRow("register without token")
                << "/sandbox/push/register" << Form{{"device_token", ""}} << 422;
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
        const int sent = PushCommand::run({QStringLiteral("tarvel-store"),
                                           QStringLiteral("--title"), QStringLiteral("新游上架"),
                                           QStringLiteral("--content"), QStringLiteral("快来看看"),
                                           QStringLiteral("--url"), QStringLiteral("/products/3"),
                                           QStringLiteral("--server"), store.baseUrl()});
        QCOMPARE(sent, 0);
        const QJsonObject message = poll(client, device).first().toObject();
        QCOMPARE(message.value("title").toString(), QStringLiteral("新游上架"));
        QCOMPARE(message.value("url").toString(), QStringLiteral("/products/3"));
        QCOMPARE(PushCommand::run({QStringLiteral("tarvel-store"), QStringLiteral("--title"),
                                   QStringLiteral("x"), QStringLiteral("--server"),
                                   store.baseUrl()}),
                 2);
        QCOMPARE(PushCommand::run({QStringLiteral("tarvel-store"), QStringLiteral("--title"),
                                   QStringLiteral("x"), QStringLiteral("--content"),
                                   QStringLiteral("y"), QStringLiteral("--server"),
                                   QStringLiteral("http://127.0.0.1:1")}),
                 1);
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
        QTest::newRow("push send") << QByteArray("POST") << "/sandbox/push/send";
    }
    void noSandboxSwitchesThePartiesOff()
    {
        QFETCH(QByteArray, verb);
        QFETCH(QString, path);
        StoreOptions options;
        options.sandbox = false;
        InProcessStore store(options);
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
