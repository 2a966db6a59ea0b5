// The request pipeline: envelope parsing, callback order, and every way an answer can go wrong.
#include "NetWorkReplies.h"
#include "tst_networkhelper_support.h"

#include "TestEnvironment.h"
#include "util/ObjectDescription.h"

#include <QTcpServer>

using namespace tarvel::test;

namespace {

const QString Unreadable = QStringLiteral("网络通信错误，数据异常");

QByteArray nested(int depth, const QByteArray &inner = "1")
{
    return QByteArray(depth, '[') + inner + QByteArray(depth, ']');
}

// An envelope with status "success" whose "data" is a string of `size` bytes.
QByteArray hugeEnvelope(qsizetype size)
{
    return "{\"status\":\"success\",\"data\":\"" + QByteArray(size, 'x') + "\"}";
}

} // namespace

class TestNetWorkHelperPipeline : public QObject
{
    Q_OBJECT

private slots:
    void init() { clearSharedCookies(); }

    void parseResponse_data()
    {
        QTest::addColumn<QVariant>("body");
        QTest::addColumn<QString>("outcome"); // "success", "failure" or "silent"
        QTest::addColumn<QVariant>("data"); // for success
        QTest::addColumn<QString>("message"); // for failure; null for an absent message
        QTest::addColumn<QString>("returned"); // "envelope", "empty" or "nothing"

        const auto bytes = [](const QByteArray &b) { return QVariant(b); };
        QTest::newRow("success") << bytes("{\"status\":\"success\",\"data\":{\"n\":1}}")
                                 << "success" << QVariant(QVariantMap{{"n", 1}}) << QString()
                                 << "envelope";
        QTest::newRow("success without data") << bytes("{\"status\":\"success\"}") << "success"
                                              << QVariant() << QString() << "envelope";
        QTest::newRow("success with data a string")
                << bytes("{\"status\":\"success\",\"data\":\"ok\",\"url\":\"/orders/1\"}")
                << "success" << QVariant("ok") << QString() << "envelope";
        QTest::newRow("fail: first of two texts") << bytes(
                "{\"status\":\"fail\",\"data\":{\"phone_number\":[\"已被占用\",\"格式不对\"]}}")
                                                  << "failure" << QVariant() << "已被占用"
                                                  << "empty";
        QTest::newRow("fail: a single text")
                << bytes("{\"status\":\"fail\",\"data\":{\"captcha\":\"验证码错误\"}}") << "failure"
                << QVariant() << "验证码错误"
                << "empty";
        QTest::newRow("fail: first field in dictionary order")
                << bytes("{\"status\":\"fail\",\"data\":{\"zeta\":[\"后\"],\"alpha\":[\"先\"]}}")
                << "failure" << QVariant() << "先"
                << "empty";
        QTest::newRow("fail: a number") << bytes("{\"status\":\"fail\",\"data\":{\"code\":601}}")
                                        << "failure" << QVariant() << "601"
                                        << "empty";
        QTest::newRow("fail: a dictionary")
                << bytes("{\"status\":\"fail\",\"data\":{\"base\":{\"message\":\"m\"}}}")
                << "failure" << QVariant() << "{\n    message = m;\n}"
                << "empty";
        QTest::newRow("fail: an empty list") << bytes("{\"status\":\"fail\",\"data\":{\"f\":[]}}")
                                             << "failure" << QVariant() << QString() << "empty";
        QTest::newRow("fail: data a list") << bytes("{\"status\":\"fail\",\"data\":[\"x\"]}")
                                           << "silent" << QVariant() << QString() << "empty";
        QTest::newRow("fail: data a string") << bytes("{\"status\":\"fail\",\"data\":\"x\"}")
                                             << "silent" << QVariant() << QString() << "empty";
        QTest::newRow("fail: data empty") << bytes("{\"status\":\"fail\",\"data\":{}}") << "silent"
                                          << QVariant() << QString() << "empty";
        QTest::newRow("fail: no data") << bytes("{\"status\":\"fail\",\"message\":\"m\"}")
                                       << "silent" << QVariant() << QString() << "empty";
        QTest::newRow("error with message")
                << bytes("{\"status\":\"error\",\"message\":\"请先登录\",\"code\":401}")
                << "failure" << QVariant() << "请先登录"
                << "empty";
        QTest::newRow("error without message") << bytes("{\"status\":\"error\"}") << "failure"
                                               << QVariant() << QString() << "empty";
        QTest::newRow("status a number")
                << bytes("{\"status\":1,\"message\":\"m\"}") << "failure" << QVariant() << "m"
                << "empty";
        QTest::newRow("status null, message a number")
                << bytes("{\"status\":null,\"message\":5}") << "failure" << QVariant() << "5"
                << "empty";
        QTest::newRow("no status")
                << bytes("{\"data\":{}}") << "failure" << QVariant() << Unreadable << "nothing";
        QTest::newRow("top-level array") << bytes("[{\"status\":\"success\"}]") << "failure"
                                         << QVariant() << Unreadable << "nothing";
        QTest::newRow("top-level string")
                << bytes("\"success\"") << "failure" << QVariant() << Unreadable << "nothing";
        QTest::newRow("empty body")
                << bytes("") << "failure" << QVariant() << Unreadable << "nothing";
        QTest::newRow("no body") << QVariant() << "failure" << QVariant() << Unreadable
                                 << "nothing";
        QTest::newRow("html page") << bytes("<html><body>502 Bad Gateway</body></html>")
                                   << "failure" << QVariant() << Unreadable << "nothing";
        QTest::newRow("truncated") << bytes("{\"status\":\"success\",\"da") << "failure"
                                   << QVariant() << Unreadable << "nothing";
        QTest::newRow("nested 10000 deep")
                << bytes(nested(10000)) << "failure" << QVariant() << Unreadable << "nothing";
        QTest::newRow("data nested 10000 deep")
                << bytes("{\"status\":\"success\",\"data\":" + nested(10000) + "}") << "failure"
                << QVariant() << Unreadable << "nothing";
    }

    void parseResponse()
    {
        QFETCH(QVariant, body);
        QFETCH(QString, outcome);
        QFETCH(QVariant, data);
        QFETCH(QString, message);
        QFETCH(QString, returned);
        CallbackRecorder recorder;

        const QVariant result
                = NetWorkHelper::parseResponse(body, recorder.success(), recorder.failure());

        if (outcome == "success") {
            QCOMPARE(recorder.order, QStringList{"success"});
            QCOMPARE(recorder.successData, data);
            QCOMPARE(recorder.successWhole, result);
        } else if (outcome == "failure") {
            QCOMPARE(recorder.order, QStringList{"failure"});
            const Failure failure = recorder.failures.first();
            QVERIFY(!failure.error.isValid());
            QCOMPARE(failure.message, message);
            QCOMPARE(failure.message.isNull(), message.isNull());
            QCOMPARE(failure.response.isValid(), returned == "empty");
        } else {
            QVERIFY(recorder.order.isEmpty());
        }
        if (returned == "envelope")
            QCOMPARE(result.toMap().value("status"), QVariant("success"));
        else if (returned == "empty")
            QCOMPARE(result, QVariant(QVariantMap()));
        else
            QVERIFY(!result.isValid());
    }

    void parsersToleratesMissingCallbacks()
    {
        QVERIFY(!NetWorkHelper::parseResponse(QByteArray("x"), {}, {}).isValid());
        QCOMPARE(NetWorkHelper::parseResponse(QByteArray("{\"status\":\"e\"}"), {}, {}),
                 QVariant(QVariantMap()));
        QCOMPARE(NetWorkHelper::parseQiNiuResponse(QByteArray("x"), {}, {}),
                 QVariant(QVariantMap()));
    }

    void answersOfEveryKind_data()
    {
        QTest::addColumn<ScriptedResponse>("response");
        QTest::addColumn<QString>("outcome"); // "success", "failure" or "silent"
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("bodyExpected"); // EndFn gets bytes, not nothing

        QTest::newRow("200 success")
                << ScriptedResponse::json("{\"status\":\"success\",\"data\":1}") << "success"
                << QString() << true;
        QTest::newRow("500 with a success envelope")
                << ScriptedResponse::json("{\"status\":\"success\",\"data\":1}", 500) << "success"
                << QString() << true;
        QTest::newRow("404 with a failure envelope") << ScriptedResponse::json(
                "{\"status\":\"error\",\"message\":\"没有这个游戏\"}", 404)
                                                     << "failure"
                                                     << "没有这个游戏" << true;
        QTest::newRow("422 with a validation envelope")
                << ScriptedResponse::json("{\"status\":\"fail\",\"data\":{\"q\":[\"太短\"]}}", 422)
                << "failure"
                << "太短" << true;
        QTest::newRow("fail with data a string")
                << ScriptedResponse::json("{\"status\":\"fail\",\"data\":\"x\"}") << "silent"
                << QString() << true;
        QTest::newRow("404 empty")
                << ScriptedResponse::json("", 404) << "failure" << Unreadable << true;
        QTest::newRow("200 empty") << ScriptedResponse::json("") << "failure" << Unreadable << true;
        QTest::newRow("502 html page")
                << ScriptedResponse::text("<html><body>Bad Gateway</body></html>", "text/html", 502)
                << "failure" << Unreadable << true;
        QTest::newRow("connection closed mid-body")
                << ScriptedResponse::closeMidBody("{\"status\":\"success\",\"data\":[1,2,3,4]}")
                << "failure" << Unreadable << true;
        QTest::newRow("20 MB envelope")
                << ScriptedResponse::json(hugeEnvelope(20 << 20)) << "success" << QString() << true;
        QTest::newRow("20 MB of garbage")
                << ScriptedResponse::text(QByteArray(20 << 20, '<'), "text/html") << "failure"
                << Unreadable << true;
        QTest::newRow("nested 10000 deep")
                << ScriptedResponse::json(nested(10000)) << "failure" << Unreadable << true;
    }

    // Through a GET and a form POST alike: StartFn, then EndFn once, then at most one outcome.
    void answersOfEveryKind()
    {
        QFETCH(ScriptedResponse, response);
        QFETCH(QString, outcome);
        QFETCH(QString, message);
        QFETCH(bool, bodyExpected);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(response);

        CallbackRecorder get(&store.server);
        NetWorkHelper::shareInstance()->getGameListWithType("latest", "1", get.start(), get.end(),
                                                            get.success(), get.failure());
        CallbackRecorder post(&store.server);
        NetWorkHelper::shareInstance()->createOrderOneKeyWithGameId("7", post.start(), post.end(),
                                                                    post.success(), post.failure());
        QVERIFY(get.waitForEnd(30000));
        QVERIFY(post.waitForEnd(30000));
        QTRY_COMPARE(repliesAlive(), 0); // both handled: nothing may follow the outcome

        for (CallbackRecorder *recorder : {&get, &post}) {
            QStringList expected{"start", "end"};
            if (outcome != "silent")
                expected.append(outcome);
            QCOMPARE(recorder->order, expected);
            QCOMPARE(recorder->endBody.isValid(), bodyExpected);
            if (outcome == "failure")
                QCOMPARE(recorder->lastMessage(), message);
            if (outcome == "success")
                QCOMPARE(recorder->successWhole.toMap().value("status"), QVariant("success"));
        }
    }

    void bigAnswerArrivesWhole()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json(hugeEnvelope(20 << 20)));
        CallbackRecorder recorder;
        NetWorkHelper::shareInstance()->getHomepageDataWithStartFn(
                {}, recorder.end(), recorder.success(), recorder.failure());
        QVERIFY(recorder.waitForEnd(30000));
        QCOMPARE(recorder.successData.toString().size(), 20 << 20);
    }

    void timesOutAfterTheTransferTimeout()
    {
        QNetworkAccessManager *manager = NetWorkHelper::shareInstance()->networkManager();
        QCOMPARE(manager->transferTimeout(), NetWorkHelper::DefaultTimeoutMs);
        QCOMPARE(NetWorkHelper::DefaultTimeoutMs, 15000);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::hang());

        manager->setTransferTimeout(300);
        CallbackRecorder recorder(&store.server);
        NetWorkHelper::shareInstance()->getCartDataWithStartFn(
                recorder.start(), recorder.end(), recorder.success(), recorder.failure());
        const bool ended = recorder.waitForEnd();
        manager->setTransferTimeout(NetWorkHelper::DefaultTimeoutMs);
        QVERIFY(ended);
        QCOMPARE(recorder.order, (QStringList{"start", "end", "failure"}));
        QVERIFY(!recorder.endBody.isValid());
        QCOMPARE(recorder.lastMessage(), Unreadable);
    }

    void startsBeforeAnyNetworkActivity_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::newRow("GET") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->searchGameWithQ("q", "1", r.start(), r.end(), r.success(), r.failure());
        });
        QTest::newRow("POST") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->signInWithAccountEmail("a", "b", r.start(), r.end(), r.success(), r.failure());
        });
        QTest::newRow("PUT") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->bindingEmailWithEmail("a@b.cn", "pw", r.start(), r.end(), r.success(), r.failure());
        });
        QTest::newRow("captcha") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getImageCodeWithStartFn(r.start(), r.end(), r.success(), r.failure());
        });
        QTest::newRow("multipart") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            QImage image(2, 2, QImage::Format_RGB32);
            image.fill(Qt::red);
            h->uploadImageWithHeadImage(image, Object_QiNiu(), r.start(), r.end(), r.success(),
                                        r.failure());
        });
    }

    void startsBeforeAnyNetworkActivity()
    {
        QFETCH(Operation, operation);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\"}"));
        CallbackRecorder recorder(&store.server);
        callWith(operation, recorder);
        QCOMPARE(recorder.order, QStringList{"start"}); // synchronously, inside the call
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(recorder.requestsSeenAtStart, 0);
        QCOMPARE(store.server.requestCount(), 1);
    }

    // Nothing listens: the request fails at once, still after StartFn and EndFn.
    void refusedConnectionEndsInTheUnreadableBranch()
    {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QByteArray base = "http://127.0.0.1:" + QByteArray::number(closed.serverPort());
        closed.close();
        qputenv("TARVEL_API_BASE_URL", base);

        CallbackRecorder recorder;
        NetWorkHelper::shareInstance()->getGameDetailWithGameId(
                "1", "1", recorder.start(), recorder.end(), recorder.success(), recorder.failure());
        QCOMPARE(recorder.order, QStringList{"start"});
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(recorder.order, (QStringList{"start", "end", "failure"}));
        QVERIFY(!recorder.endBody.isValid());
        QCOMPARE(recorder.lastMessage(), Unreadable);
        QVERIFY(!recorder.failures.first().error.isValid());
    }

    // Answers arriving in another order than the requests each reach their own callbacks.
    void concurrentRequestsKeepTheirOwnCallbacks()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        for (int id = 1; id <= 3; ++id) {
            store.server.route(QStringLiteral("/products/%1.json").arg(id),
                               ScriptedResponse::json("{\"status\":\"success\",\"data\":"
                                                      + QByteArray::number(id) + "}")
                                       .withDelay(400 - id * 100));
        }
        CallbackRecorder recorders[3];
        for (int id = 1; id <= 3; ++id) {
            CallbackRecorder &recorder = recorders[id - 1];
            NetWorkHelper::shareInstance()->getGameDetailWithGameId(
                    QString::number(id), "1", recorder.start(), recorder.end(), recorder.success(),
                    recorder.failure());
        }
        for (int id = 1; id <= 3; ++id) {
            CallbackRecorder &recorder = recorders[id - 1];
            QVERIFY(recorder.waitForEnd());
            QCOMPARE(recorder.order, (QStringList{"start", "end", "success"}));
            QCOMPARE(recorder.successData.toInt(), id);
        }
    }

    void homePageSendsNoQueryWhateverStartFnDoes()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\",\"data\":{}}"));
        CallbackRecorder recorder;
        const StartFn meddling = [](const QVariantMap &params) {
            // The map handed over is the helper's own, not const: writing to it is allowed and
            // must still change nothing on the wire.
            const_cast<QVariantMap &>(params).insert("page", "2");
        };
        NetWorkHelper::shareInstance()->getHomepageDataWithStartFn(
                meddling, recorder.end(), recorder.success(), recorder.failure());
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(store.server.lastRequest().target, QByteArray("/store.json"));
    }

    void encodingString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("address unchanged") << "http://h:8080/a/b.json?x=1&y=2#top"
                                           << "http://h:8080/a/b.json?x=1&y=2#top";
        QTest::newRow("space and quotes") << "a b\"c'"
                                          << "a%20b%22c'";
        QTest::newRow("angle brackets and braces") << "<a>{b}|"
                                                   << "%3Ca%3E%7Bb%7D%7C";
        QTest::newRow("non-ASCII") << "游戏"
                                   << "%E6%B8%B8%E6%88%8F";
        QTest::newRow("percent sign") << "100%"
                                      << "100%25";
        QTest::newRow("control character") << "a\nb"
                                           << "a%0Ab";
    }

    void encodingString()
    {
        QFETCH(QString, text);
        QFETCH(QString, encoded);
        QCOMPARE(NetWorkHelper::encodingString(text), encoded);
    }
};

TARVEL_TEST_MAIN(TestNetWorkHelperPipeline)
#include "tst_networkhelper_pipeline.moc"
