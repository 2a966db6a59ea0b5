// The account operations' own rules: the SMS resend guard and the captcha picture.
#include "NetWorkReplies.h"
#include "tst_networkhelper_support.h"

#include "TestEnvironment.h"
#include "platform/UserDefaults.h"

using namespace tarvel::test;

namespace {

Operation smsCode()
{
    return [](NetWorkHelper *h, CallbackRecorder &r) {
        h->getAuthCodeWithPhone_number("13800138000", "c", r.start(), r.end(), r.success(),
                                       r.failure());
    };
}

Operation recoveryCode()
{
    return [](NetWorkHelper *h, CallbackRecorder &r) {
        h->getAuthCodeForForgetPasswordWithPhone_number("13800138000", "c", "1", r.start(), r.end(),
                                                        r.success(), r.failure());
    };
}

const QByteArray PngBytes = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");

} // namespace

class TestNetWorkHelperAccount : public QObject
{
    Q_OBJECT

private:
    PlainApplicationState state;

private slots:
    void initTestCase() { ApplicationState::install(&state); }
    void cleanupTestCase()
    {
        ApplicationState::install(nullptr);
        NetWorkHelper::shareInstance()->setClock(
                [] { return QDateTime::currentMSecsSinceEpoch() / 1000.0; });
    }

    void smsCodeWaitsForTheCountdown_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QVariant>("isCountdown");
        QTest::addColumn<int>("countdown");
        QTest::addColumn<QString>("refusal"); // null: the request goes out

        QTest::newRow("sign-up code while counting")
                << smsCode() << QVariant(true) << 42 << "42S后才能再次获取验证码";
        QTest::newRow("recovery code while counting")
                << recoveryCode() << QVariant(true) << 7 << "7S后才能再次获取验证码";
        QTest::newRow("sign-up code after the countdown")
                << smsCode() << QVariant(false) << 0 << QString();
        QTest::newRow("recovery code, flag never set")
                << recoveryCode() << QVariant() << 60 << QString();
    }

    void smsCodeWaitsForTheCountdown()
    {
        QFETCH(Operation, operation);
        QFETCH(QVariant, isCountdown);
        QFETCH(int, countdown);
        QFETCH(QString, refusal);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\",\"data\":{}}"));
        platform::UserDefaults::standard().setObject(isCountdown, QStringLiteral("isCountdown"));
        state.setCountdown(countdown);

        CallbackRecorder recorder;
        callWith(operation, recorder);
        if (refusal.isNull()) {
            QVERIFY(recorder.waitForEnd());
            QCOMPARE(recorder.order, (QStringList{"start", "end", "success"}));
            QCOMPARE(store.server.requestCount(), 1);
            return;
        }
        // Refused at once, before anything else happens.
        QCOMPARE(recorder.order, QStringList{"failure"});
        QCOMPARE(recorder.lastMessage(), refusal);
        QVERIFY(!recorder.failures.first().error.isValid());
        QVERIFY(!recorder.failures.first().response.isValid());
        // No request was made at all, so nothing can follow.
        QCOMPARE(repliesAlive(), 0);
        QCOMPARE(recorder.order, QStringList{"failure"});
        QCOMPARE(store.server.requestCount(), 0);
    }

    void captchaAddressCarriesTheTime_data()
    {
        QTest::addColumn<QList<double>>("clock");
        QTest::addColumn<QStringList>("targets");
        QTest::newRow("same second, two addresses")
                << QList<double>{1700000000.1, 1700000000.4}
                << QStringList{"/captcha?_=1700000000100", "/captcha?_=1700000000400"};
        QTest::newRow("rounded to the nearest millisecond")
                << QList<double>{1700000000.0006, 1700000000.0014}
                << QStringList{"/captcha?_=1700000000001", "/captcha?_=1700000000001"};
        QTest::newRow("a later second")
                << QList<double>{1700000000.0, 1700000002.0}
                << QStringList{"/captcha?_=1700000000000", "/captcha?_=1700000002000"};
    }

    void captchaAddressCarriesTheTime()
    {
        QFETCH(QList<double>, clock);
        QFETCH(QStringList, targets);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::text(PngBytes, "image/png"));
        auto *helper = NetWorkHelper::shareInstance();
        for (const double now : clock) {
            helper->setClock([now] { return now; });
            CallbackRecorder recorder;
            helper->getImageCodeWithStartFn(recorder.start(), recorder.end(), recorder.success(),
                                            recorder.failure());
            QCOMPARE(recorder.startParams, QVariantMap());
            QVERIFY(recorder.waitForEnd());
        }
        QStringList sent;
        for (const RecordedRequest &request : store.server.requests())
            sent.append(QString::fromLatin1(request.method + ' ' + request.target));
        QCOMPARE(sent, QStringList({"GET " + targets[0], "GET " + targets[1]}));
    }

    void captchaIsAPictureNotAnEnvelope_data()
    {
        QTest::addColumn<ScriptedResponse>("response");
        QTest::addColumn<bool>("succeeds");
        QTest::addColumn<QVariant>("body");

        QTest::newRow("picture") << ScriptedResponse::text(PngBytes, "image/png") << true
                                 << QVariant(PngBytes);
        QTest::newRow("an envelope is just bytes here")
                << ScriptedResponse::json("{\"status\":\"error\"}") << true
                << QVariant(QByteArray("{\"status\":\"error\"}"));
        QTest::newRow("server error") << ScriptedResponse::text("oops", "text/plain", 500) << false
                                      << QVariant(QByteArray("oops"));
        QTest::newRow("cut off") << ScriptedResponse::closeMidBody(PngBytes) << false
                                 << QVariant(PngBytes.left(PngBytes.size() / 2));
    }

    void captchaIsAPictureNotAnEnvelope()
    {
        QFETCH(ScriptedResponse, response);
        QFETCH(bool, succeeds);
        QFETCH(QVariant, body);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(response);

        CallbackRecorder recorder;
        NetWorkHelper::shareInstance()->getImageCodeWithStartFn(
                recorder.start(), recorder.end(), recorder.success(), recorder.failure());
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(recorder.endBody, body);
        if (succeeds) {
            QCOMPARE(recorder.order, (QStringList{"start", "end", "success"}));
            QCOMPARE(recorder.successData, body);
            QCOMPARE(recorder.successWhole, body);
        } else {
            QCOMPARE(recorder.order, (QStringList{"start", "end", "failure"}));
            QCOMPARE(recorder.lastMessage(), QStringLiteral("网络通信错误"));
            QVERIFY(!recorder.failures.first().error.isValid());
            QCOMPARE(recorder.failures.first().response, body);
        }
    }
};

TARVEL_TEST_MAIN(TestNetWorkHelperAccount)
#include "tst_networkhelper_account.moc"
