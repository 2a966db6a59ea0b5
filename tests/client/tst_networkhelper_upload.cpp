// The avatar upload: the multipart request, the storage answer's parser and the double failure
// report.
#include "tst_networkhelper_support.h"

#include "TestEnvironment.h"
#include "util/AppConfig.h"

#include <QImage>

using namespace tarvel::test;

namespace {

Object_QiNiu credential()
{
    Object_QiNiu qiNiu;
    qiNiu.token = QStringLiteral("up:tok+en/=");
    qiNiu.account_id = QStringLiteral("1001");
    qiNiu.timestamp = QStringLiteral("1700000000");
    qiNiu.tarvel_token = QStringLiteral("tt");
    qiNiu.bucket_name = QStringLiteral("avatars");
    return qiNiu;
}

QImage picture()
{
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(QColor(200, 30, 30));
    return image;
}

const QString UploadFailed = QStringLiteral("上传失败");
const QString NetworkError = QStringLiteral("网络错误，请检查网络情况");

} // namespace

class TestNetWorkHelperUpload : public QObject
{
    Q_OBJECT

private:
    PlainApplicationState state;

private slots:
    void initTestCase()
    {
        ApplicationState::install(&state);
        state.setUserLogin(userWithToken(QStringLiteral("tok")));
    }
    void cleanupTestCase() { ApplicationState::install(nullptr); }

    void parseQiNiuResponse_data()
    {
        QTest::addColumn<QVariant>("body");
        QTest::addColumn<bool>("succeeds");
        QTest::addColumn<bool>("decodedPassedOn"); // FailureFn gets the decoded answer

        QTest::newRow("address") << QVariant(QByteArray("{\"dest_url\":\"http://cdn/a.jpg\"}"))
                                 << true << true;
        QTest::newRow("JSON without the address")
                << QVariant(QByteArray("{\"key\":\"a.jpg\",\"hash\":\"x\"}")) << false << true;
        // Present counts, whatever it holds.
        QTest::newRow("address null, still present")
                << QVariant(QByteArray("{\"dest_url\":null}")) << true << true;
        QTest::newRow("a list") << QVariant(QByteArray("[{\"dest_url\":\"x\"}]")) << false << true;
        QTest::newRow("not JSON") << QVariant(QByteArray("<html>413</html>")) << false << false;
        QTest::newRow("no answer") << QVariant() << false << false;
    }

    void parseQiNiuResponse()
    {
        QFETCH(QVariant, body);
        QFETCH(bool, succeeds);
        QFETCH(bool, decodedPassedOn);
        CallbackRecorder recorder;
        const QVariant result
                = NetWorkHelper::parseQiNiuResponse(body, recorder.success(), recorder.failure());
        if (succeeds) {
            QCOMPARE(recorder.order, QStringList{"success"});
            const QVariant destUrl = recorder.successData.toMap().value("dest_url");
            QVERIFY(destUrl.isValid());
            if (!destUrl.isNull())
                QCOMPARE(destUrl, QVariant("http://cdn/a.jpg"));
            QCOMPARE(result, recorder.successData);
            return;
        }
        QCOMPARE(recorder.order, QStringList{"failure"});
        QCOMPARE(recorder.lastMessage(), UploadFailed);
        QCOMPARE(recorder.failures.first().response.isValid(), decodedPassedOn);
        QCOMPARE(result, QVariant(QVariantMap()));
    }

    void sendsTheCredentialAndOneJpegPart()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        const QUrl uploadUrl(tarvel::config::uploadUrl());
        if (!uploadUrl.toString().startsWith(store.server.baseUrl()))
            QSKIP("the upload address is configured to another host");
        store.server.setFallback(ScriptedResponse::json("{\"dest_url\":\"http://cdn/a.jpg\"}"));

        CallbackRecorder recorder;
        NetWorkHelper::shareInstance()->uploadImageWithHeadImage(
                picture(), credential(), recorder.start(), recorder.end(), recorder.success(),
                recorder.failure());
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(recorder.order, (QStringList{"start", "end", "success"}));

        const RecordedRequest request = store.server.lastRequest();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.path, uploadUrl.path());
        QVERIFY(request.header("Content-Type").startsWith("multipart/form-data"));
        const QList<MultipartPart> parts = request.multipartParts();
        QStringList fields;
        for (const MultipartPart &part : parts) {
            if (part.fileName.isNull())
                fields.append(part.name + '=' + QString::fromUtf8(part.body));
        }
        // No token and no other session field: only what the credential holds.
        QCOMPARE(fields,
                 (QStringList{"token=up:tok+en/=", "x:account_id=1001", "x:timestamp=1700000000",
                              "x:tarvel_token=tt", "x:bucket_name=avatars"}));
        QCOMPARE(parts.size(), 6);
        const MultipartPart file = parts.last();
        QCOMPARE(file.name, QStringLiteral("file"));
        QCOMPARE(file.fileName, QStringLiteral("jpg"));
        QCOMPARE(file.contentType, QByteArray("image/jpeg"));
        QVERIFY(file.body.startsWith("\xFF\xD8\xFF"));
        const QImage sent = QImage::fromData(file.body, "JPEG");
        QCOMPARE(sent.size(), picture().size());
        // Full quality keeps a flat colour within a step or two.
        QVERIFY(qAbs(qRed(sent.pixel(10, 10)) - 200) <= 3);
        QCOMPARE(recorder.startParams.value("x:bucket_name"), QVariant("avatars"));
    }

    void reportsEachOutcome_data()
    {
        QTest::addColumn<ScriptedResponse>("response");
        QTest::addColumn<QStringList>("order");
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<bool>("bodyExpected");

        QTest::newRow("stored") << ScriptedResponse::json("{\"dest_url\":\"http://cdn/a.jpg\"}")
                                << QStringList{"start", "end", "success"} << QStringList() << true;
        QTest::newRow("answer without address")
                << ScriptedResponse::json("{\"error\":\"bad token\"}")
                << QStringList{"start", "end", "failure"} << QStringList{UploadFailed} << true;
        QTest::newRow("refused: reported twice, network text last")
                << ScriptedResponse::json("{\"error\":\"expired\"}", 401)
                << QStringList{"start", "end", "failure", "failure"}
                << QStringList{UploadFailed, NetworkError} << true;
        QTest::newRow("refused with an address still ends in the network text")
                << ScriptedResponse::json("{\"dest_url\":\"http://cdn/a.jpg\"}", 500)
                << QStringList{"start", "end", "success", "failure"} << QStringList{NetworkError}
                << true;
        QTest::newRow("no answer")
                << ScriptedResponse::hang() << QStringList{"start", "end", "failure", "failure"}
                << QStringList{UploadFailed, NetworkError} << false;
    }

    void reportsEachOutcome()
    {
        QFETCH(ScriptedResponse, response);
        QFETCH(QStringList, order);
        QFETCH(QStringList, messages);
        QFETCH(bool, bodyExpected);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(response);

        QNetworkAccessManager *manager = NetWorkHelper::shareInstance()->networkManager();
        manager->setTransferTimeout(500);
        CallbackRecorder recorder;
        NetWorkHelper::shareInstance()->uploadImageWithHeadImage(
                picture(), credential(), recorder.start(), recorder.end(), recorder.success(),
                recorder.failure());
        const bool ended = recorder.waitForEnd();
        manager->setTransferTimeout(NetWorkHelper::DefaultTimeoutMs);
        QVERIFY(ended);
        QCOMPARE(recorder.order, order);
        QCOMPARE(recorder.endBody.isValid(), bodyExpected);
        QStringList received;
        for (const Failure &failure : recorder.failures)
            received.append(failure.message);
        QCOMPARE(received, messages);
        if (order.endsWith("failure") && messages.last() == NetworkError) {
            const Failure last = recorder.failures.last();
            QVERIFY(last.error.toMap().contains("code"));
            QVERIFY(!last.error.toMap().value("description").toString().isEmpty());
            QCOMPARE(last.response.isValid(), bodyExpected);
        }
    }

    // Without a picture there is no file part: an ordinary form POST judged as a store envelope.
    void withoutPictureFallsBackToAFormPost()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"dest_url\":\"http://cdn/a.jpg\"}"));
        CallbackRecorder recorder;
        NetWorkHelper::shareInstance()->uploadImageWithHeadImage(
                QImage(), credential(), recorder.start(), recorder.end(), recorder.success(),
                recorder.failure());
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(recorder.order, (QStringList{"start", "end", "failure"}));
        QCOMPARE(recorder.lastMessage(), QStringLiteral("网络通信错误，数据异常"));
        const RecordedRequest request = store.server.lastRequest();
        QVERIFY(request.header("Content-Type").startsWith("application/x-www-form-urlencoded"));
        QCOMPARE(request.formValue("x:bucket_name"), QStringLiteral("avatars"));
    }
};

TARVEL_TEST_MAIN(TestNetWorkHelperUpload)
#include "tst_networkhelper_upload.moc"
