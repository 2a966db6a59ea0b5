#include "TestEnvironment.h"

#include "screens/account/FailureMessage.h"
#include "service/NetWorkHelper.h"

// How refusal texts read on the account screens. The texts come out of the request pipeline's
// own envelope parser, so a change in how it prints a refused field shows up here.
class TestSignInFailureText : public QObject
{
    Q_OBJECT

private:
    // The message the pipeline hands to FailureFn for the answer `body`.
    static QString pipelineMessage(const QByteArray &body)
    {
        QString message;
        NetWorkHelper::parseResponse(body, {},
                                     [&message](const QVariant &, const QString &text,
                                                const QVariant &) { message = text; });
        return message;
    }

private slots:
    void readableText_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("isDescription");
        QTest::addColumn<QString>("readable");

        QTest::newRow("refused field") << QByteArray(
                "{\"status\":\"fail\",\"data\":{\"login_name\":[{\"message\":\"请输入\","
                "\"human_name\":\"账号\"}]},\"message\":\"请输入账号\"}")
                                       << true << QStringLiteral("请输入账号");
        QTest::newRow("refused field, human name first in the text")
                << QByteArray("{\"status\":\"fail\",\"data\":{\"phone_number\":[{\"human_name\":"
                              "\"手机号\",\"message\":\"请输入正确的\"}]}}")
                << true << QStringLiteral("请输入正确的手机号");
        QTest::newRow("message only")
                << QByteArray("{\"status\":\"fail\",\"data\":{\"captcha\":[{\"message\":"
                              "\"图片验证码错误\"}]}}")
                << true << QStringLiteral("图片验证码错误");
        QTest::newRow("plain refusal") << QByteArray(
                "{\"status\":\"fail\",\"data\":{\"password\":[\"密码太短 (至少8位)\"]}}")
                                       << false << QStringLiteral("密码太短 (至少8位)");
        QTest::newRow("error sentence")
                << QByteArray("{\"status\":\"error\",\"data\":null,\"message\":"
                              "\"账号或密码错误，再输错2次账号将被锁定\"}")
                << false << QStringLiteral("账号或密码错误，再输错2次账号将被锁定");
        QTest::newRow("sentence naming a message")
                << QByteArray("{\"status\":\"error\",\"message\":\"message; 请稍后再试\"}") << false
                << QStringLiteral("message; 请稍后再试");
        QTest::newRow("unreadable answer") << QByteArray("<html>502</html>") << false
                                           << QStringLiteral("网络通信错误，数据异常");
    }

    void readableText()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, isDescription);
        QFETCH(QString, readable);
        const QString message = pipelineMessage(answer);
        QVERIFY(!message.isEmpty());
        QCOMPARE(FailureMessage::isFieldDescription(message), isDescription);
        QCOMPARE(FailureMessage::readable(message), readable);
    }

    void piecesJoinMessageThenHumanName_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("joined");
        QTest::newRow("both") << "message = \"\\U8bf7\\U8f93\\U5165\"; human_name = 账号"
                              << "请输入账号";
        QTest::newRow("later pieces win")
                << "message = a; message = b; human_name = c; human_name = d"
                << "bd";
        QTest::newRow("neither") << "网络通信错误"
                                 << "";
        QTest::newRow("blanks and brackets go") << "{ message = \"请 输入 (必填)\"; }"
                                                << "请输入必填";
    }

    void piecesJoinMessageThenHumanName()
    {
        QFETCH(QString, text);
        QFETCH(QString, joined);
        QCOMPARE(FailureMessage::messageAndHumanName(text), joined);
    }
};

TARVEL_TEST_MAIN(TestSignInFailureText)
#include "tst_signin_failuretext.moc"
