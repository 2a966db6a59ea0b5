#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QUrlQuery>

using namespace tarvel::test;

// The harness every HTTP test stands on: each answer mode must reach a real Qt client exactly as
// scripted, and each request must be recorded exactly as sent.
class TestScriptedHttpServer : public QObject
{
    Q_OBJECT

private:
    QNetworkAccessManager manager;

    QNetworkReply *finished(QNetworkReply *reply)
    {
        if (!reply->isFinished()) {
            QSignalSpy spy(reply, &QNetworkReply::finished);
            spy.wait(10000);
        }
        return reply;
    }

    QNetworkReply *get(const ScriptedHttpServer &server, const QString &pathAndQuery,
                       int transferTimeoutMs = 10000)
    {
        QNetworkRequest request(QUrl(server.baseUrl() + pathAndQuery));
        request.setTransferTimeout(transferTimeoutMs);
        return finished(manager.get(request));
    }

private slots:
    void answersAsScripted_data()
    {
        QTest::addColumn<ScriptedResponse>("response");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("reason");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("contentType");

        QTest::newRow("json 200") << ScriptedResponse::json(R"({"status":"success"})") << 200
                                  << QByteArray("OK") << QByteArray(R"({"status":"success"})")
                                  << QByteArray("application/json; charset=utf-8");
        QTest::newRow("json envelope with 500")
                << ScriptedResponse::json(R"({"status":"error","message":"坏了"})", 500) << 500
                << QByteArray("Internal Server Error")
                << QByteArray(R"({"status":"error","message":"坏了"})")
                << QByteArray("application/json; charset=utf-8");
        QTest::newRow("html error page")
                << ScriptedResponse::text("<html><body>502</body></html>", "text/html", 502) << 502
                << QByteArray("Bad Gateway") << QByteArray("<html><body>502</body></html>")
                << QByteArray("text/html");
        ScriptedResponse custom;
        custom.statusLine = "HTTP/1.1 299 Quite Fine";
        custom.body = "x";
        QTest::newRow("own status line")
                << custom << 299 << QByteArray("Quite Fine") << QByteArray("x") << QByteArray();
        QTest::newRow("empty body")
                << ScriptedResponse::json("") << 200 << QByteArray("OK") << QByteArray()
                << QByteArray("application/json; charset=utf-8");
    }

    void answersAsScripted()
    {
        QFETCH(ScriptedResponse, response);
        QFETCH(int, status);
        QFETCH(QByteArray, reason);
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, contentType);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.enqueue(response);

        QScopedPointer<QNetworkReply> reply(get(server, "/store.json"));
        QVERIFY(reply->isFinished());
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), status);
        QCOMPARE(reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toByteArray(),
                 reason);
        QCOMPARE(reply->rawHeader("Content-Type"), contentType);
        QCOMPARE(reply->readAll(), body);
    }

    void sendsExtraHeadersAndCookies()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.enqueue(ScriptedResponse::json("{}").withHeader("Set-Cookie",
                                                               "cart_num=3; path=/; HttpOnly"));
        QScopedPointer<QNetworkReply> reply(get(server, "/cart.json"));
        QCOMPARE(reply->error(), QNetworkReply::NoError);
        const auto cookies = manager.cookieJar()->cookiesForUrl(QUrl(server.baseUrl() + "/"));
        QCOMPARE(cookies.size(), 1);
        QCOMPARE(cookies.first().name(), QByteArray("cart_num"));
        QCOMPARE(cookies.first().value(), QByteArray("3"));

        // The next request carries the cookie back, and the server records it.
        server.enqueue(ScriptedResponse::json("{}"));
        QScopedPointer<QNetworkReply> second(get(server, "/cart.json"));
        QCOMPARE(server.lastRequest().cookies().value(0),
                 (std::pair<QByteArray, QByteArray>("cart_num", "3")));
    }

    void delayedAnswerArrivesAfterItsDelay_data()
    {
        QTest::addColumn<int>("delayMs");
        QTest::addColumn<int>("clientTimeoutMs");
        QTest::addColumn<bool>("answered");
        QTest::newRow("delay shorter than the client's patience") << 300 << 10000 << true;
        QTest::newRow("delay longer than the client's patience") << 3000 << 300 << false;
    }

    void delayedAnswerArrivesAfterItsDelay()
    {
        QFETCH(int, delayMs);
        QFETCH(int, clientTimeoutMs);
        QFETCH(bool, answered);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.enqueue(ScriptedResponse::json("late").withDelay(delayMs));

        QScopedPointer<QNetworkReply> reply(get(server, "/slow", clientTimeoutMs));
        QCOMPARE(server.requestCount(), 1);
        if (answered) {
            QCOMPARE(reply->error(), QNetworkReply::NoError);
            QCOMPARE(reply->readAll(), QByteArray("late"));
        } else {
            QVERIFY(reply->error() != QNetworkReply::NoError);
            QVERIFY(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isNull());
        }
    }

    void hangNeverAnswers()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.enqueue(ScriptedResponse::hang());
        QScopedPointer<QNetworkReply> reply(get(server, "/hang", 500));
        QCOMPARE(server.requestCount(), 1);
        QVERIFY(reply->error() != QNetworkReply::NoError);
        QVERIFY(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isNull());
        QVERIFY(reply->readAll().isEmpty());
    }

    void closeMidBodyTruncatesTheAnswer()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        const QByteArray body = R"({"status":"success","data":{"title":"很长的一段内容"}})";
        server.enqueue(ScriptedResponse::closeMidBody(body));
        QScopedPointer<QNetworkReply> reply(get(server, "/cut"));
        QVERIFY(reply->error() != QNetworkReply::NoError);
        QVERIFY(reply->readAll().size() < body.size());
    }

    void queueThenRoutesThenFallback()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.route("/store.json", ScriptedResponse::json("route"));
        server.enqueue(ScriptedResponse::json("queued"));
        server.setFallback(ScriptedResponse::json("fallback", 410));

        QCOMPARE(QScopedPointer<QNetworkReply>(get(server, "/store.json"))->readAll(),
                 QByteArray("queued"));
        QCOMPARE(QScopedPointer<QNetworkReply>(get(server, "/store.json?x=1"))->readAll(),
                 QByteArray("route"));
        QScopedPointer<QNetworkReply> other(get(server, "/other"));
        QCOMPARE(other->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 410);
        QCOMPARE(other->readAll(), QByteArray("fallback"));
        QCOMPARE(server.requestCount(), 3);
    }

    void unscriptedRequestGets404()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        QScopedPointer<QNetworkReply> reply(get(server, "/nothing"));
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 404);
    }

    void recordsGetQuery()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        QScopedPointer<QNetworkReply> reply(
                get(server, "/store/search.json?q=%E5%8F%A4%E5%A2%93&page=2"));
        const RecordedRequest request = server.lastRequest();
        QCOMPARE(request.method, QByteArray("GET"));
        QCOMPARE(request.path, QString("/store/search.json"));
        QCOMPARE(request.target, QByteArray("/store/search.json?q=%E5%8F%A4%E5%A2%93&page=2"));
        QCOMPARE(request.query.queryItemValue("q", QUrl::FullyDecoded), QString("古墓"));
        QCOMPARE(request.query.queryItemValue("page"), QString("2"));
        QVERIFY(request.body.isEmpty());
    }

    void recordsFormPostInOrder()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.enqueue(ScriptedResponse::json("{}"));
        QNetworkRequest request(QUrl(server.baseUrl() + "/sign_in.json"));
        request.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
        request.setRawHeader("X-Extra", "yes");
        QScopedPointer<QNetworkReply> reply(finished(manager.post(
                request, "account%5Blogin_name%5D=13800138000&account%5Bpassword%5D=a+b%26c")));

        const RecordedRequest recorded = server.lastRequest();
        QCOMPARE(recorded.method, QByteArray("POST"));
        QCOMPARE(recorded.header("x-extra"), QByteArray("yes"));
        QCOMPARE(recorded.header("content-type"), QByteArray("application/x-www-form-urlencoded"));
        const QList<std::pair<QString, QString>> expected{{"account[login_name]", "13800138000"},
                                                          {"account[password]", "a b&c"}};
        QCOMPARE(recorded.formFields(), expected);
        QCOMPARE(recorded.formValue("account[password]"), QString("a b&c"));
    }

    void recordsPutAndMultipart()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        server.enqueue(ScriptedResponse::json("{}"));
        QScopedPointer<QNetworkReply> put(finished(manager.put(
                QNetworkRequest(QUrl(server.baseUrl() + "/setting/info.json")), "a=1")));
        QCOMPARE(server.lastRequest().method, QByteArray("PUT"));
        QCOMPARE(server.lastRequest().body, QByteArray("a=1"));

        auto *multi = new QHttpMultiPart(QHttpMultiPart::FormDataType);
        QHttpPart field;
        field.setHeader(QNetworkRequest::ContentDispositionHeader, "form-data; name=\"token\"");
        field.setBody("t0k");
        QHttpPart file;
        file.setHeader(QNetworkRequest::ContentDispositionHeader,
                       "form-data; name=\"file\"; filename=\"jpg\"");
        file.setHeader(QNetworkRequest::ContentTypeHeader, "image/jpeg");
        file.setBody(QByteArray("\xff\xd8\r\n\r\nbinary", 12));
        multi->append(field);
        multi->append(file);
        server.enqueue(ScriptedResponse::json(R"({"dest_url":"x"})"));
        QScopedPointer<QNetworkReply> upload(
                finished(manager.post(QNetworkRequest(QUrl(server.baseUrl() + "/upload")), multi)));
        multi->setParent(upload.data());

        const QList<MultipartPart> parts = server.lastRequest().multipartParts();
        QCOMPARE(parts.size(), 2);
        QCOMPARE(parts[0].name, QString("token"));
        QVERIFY(parts[0].fileName.isNull());
        QCOMPARE(parts[0].body, QByteArray("t0k"));
        QCOMPARE(parts[1].name, QString("file"));
        QCOMPARE(parts[1].fileName, QString("jpg"));
        QCOMPARE(parts[1].contentType, QByteArray("image/jpeg"));
        QCOMPARE(parts[1].body, QByteArray("\xff\xd8\r\n\r\nbinary", 12));
    }

    void keepsConnectionAliveAcrossRequests()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        for (int i = 0; i < 3; ++i)
            server.enqueue(ScriptedResponse::json(QByteArray::number(i)));
        for (int i = 0; i < 3; ++i) {
            QScopedPointer<QNetworkReply> reply(get(server, "/n"));
            QCOMPARE(reply->readAll(), QByteArray::number(i));
        }
        QCOMPARE(server.openConnections(), 1);
    }

    void environmentIsDeterministic()
    {
        QCOMPARE(qgetenv("TZ"), QByteArray("UTC"));
        QVERIFY(!qEnvironmentVariableIsEmpty("TARVEL_HOME"));
        QVERIFY(QDir(qEnvironmentVariable("TARVEL_HOME")).exists());
        QCOMPARE(QLocale().name(), QLocale::c().name());
    }
};

TARVEL_TEST_MAIN(TestScriptedHttpServer)
#include "tst_scriptedhttpserver.moc"
