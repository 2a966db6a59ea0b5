#include "TestEnvironment.h"

#include "models/Object_QiNiu.h"
#include "models/Object_UpFile.h"
#include "models/Object_User.h"
#include "models/Object_WeChatInfo.h"

#include <QJsonDocument>
#include <QTest>

namespace {

QVariant json(const char *text)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(text));
    Q_ASSERT(!document.isNull());
    return document.toVariant();
}

} // namespace

// The mapping rules every record shares, shown on the account records.
class TestModels : public QObject
{
    Q_OBJECT

private slots:
    void mapsUserFields_data();
    void mapsUserFields();
    void refusesNonDictionaries_data();
    void refusesNonDictionaries();
    void mapsQiNiuThroughItsKeyMapper_data();
    void mapsQiNiuThroughItsKeyMapper();
    void roundTripsThroughDictionary();
    void upFileKeepsBytes();
    void mapsWeChatPaymentParameters();
};

void TestModels::mapsUserFields_data()
{
    QTest::addColumn<QVariant>("dictionary");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("absent");

    QTest::newRow("text") << json(R"({"nick_name":"小明"})") << "nick_name"
                          << "小明" << false;
    QTest::newRow("whole number to text") << json(R"({"account_id":58})") << "account_id"
                                          << "58" << false;
    QTest::newRow("fraction to text") << json(R"({"account_id":58.5})") << "account_id"
                                      << "58.5" << false;
    QTest::newRow("boolean to text") << json(R"({"token":true})") << "token"
                                     << "1" << false;
    QTest::newRow("missing token") << json(R"({"nick_name":"a"})") << "token" << QString() << true;
    QTest::newRow("null") << json(R"({"email":null})") << "email" << QString() << true;
    QTest::newRow("dictionary where text is expected")
            << json(R"({"avatar":{"url":"x"}})") << "avatar" << QString() << true;
    QTest::newRow("array where text is expected")
            << json(R"({"phone_number":["138"]})") << "phone_number" << QString() << true;
    QTest::newRow("unknown keys ignored")
            << json(R"({"zzz":1,"aaa":2,"email":"a@b.cn","extra":{}})") << "email"
            << "a@b.cn" << false;
}

void TestModels::mapsUserFields()
{
    QFETCH(QVariant, dictionary);
    QFETCH(QString, field);
    QFETCH(QString, expected);
    QFETCH(bool, absent);

    const std::optional<Object_User> user = JSONModel::initWithDictionary<Object_User>(dictionary);
    QVERIFY(user.has_value());
    const int index = Object_User::staticMetaObject.indexOfProperty(field.toLatin1());
    QVERIFY(index >= 0);
    const QString value
            = Object_User::staticMetaObject.property(index).readOnGadget(&*user).toString();
    QCOMPARE(value, expected);
    QCOMPARE(value.isNull(), absent);
}

void TestModels::refusesNonDictionaries_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("nil") << QVariant();
    QTest::newRow("null") << QVariant::fromValue(nullptr);
    QTest::newRow("array") << json(R"([{"token":"t"}])");
    QTest::newRow("text") << QVariant(QStringLiteral("{\"token\":\"t\"}"));
}

void TestModels::refusesNonDictionaries()
{
    QFETCH(QVariant, value);
    QVERIFY(!JSONModel::initWithDictionary<Object_User>(value).has_value());
}

void TestModels::mapsQiNiuThroughItsKeyMapper_data()
{
    QTest::addColumn<QVariant>("dictionary");
    QTest::addColumn<QStringList>("expected"); // token, account_id, timestamp, tarvel_token, bucket

    QTest::newRow("mapped keys") << json(
            R"({"token":"up","x:account_id":7,"x:timestamp":"1700000000",
                        "x:tarvel_token":"tt","x:bucket_name":"avatars"})")
                                 << QStringList{"up", "7", "1700000000", "tt", "avatars"};
    QTest::newRow("property names are not keys")
            << json(R"({"token":"up","account_id":"7","timestamp":"1","bucket_name":"b"})")
            << QStringList{"up", QString(), QString(), QString(), QString()};
}

void TestModels::mapsQiNiuThroughItsKeyMapper()
{
    QFETCH(QVariant, dictionary);
    QFETCH(QStringList, expected);
    const std::optional<Object_QiNiu> qiniu
            = JSONModel::initWithDictionary<Object_QiNiu>(dictionary);
    QVERIFY(qiniu.has_value());
    QCOMPARE(QStringList({qiniu->token, qiniu->account_id, qiniu->timestamp, qiniu->tarvel_token,
                          qiniu->bucket_name}),
             expected);
    QCOMPARE(qiniu->account_id.isNull(), expected.at(1).isNull());
}

void TestModels::roundTripsThroughDictionary()
{
    Object_User user;
    user.nick_name = QStringLiteral("玩家");
    user.account_id = QStringLiteral("12");
    user.token = QString(); // absent fields stay out of the dictionary
    user.email = QStringLiteral("");
    const QVariantMap dictionary = JSONModel::toDictionary(user);
    QCOMPARE(dictionary.keys(), QStringList({"account_id", "email", "nick_name"}));

    const std::optional<Object_User> back = JSONModel::initWithDictionary<Object_User>(dictionary);
    QVERIFY(back.has_value());
    QCOMPARE(back->nick_name, user.nick_name);
    QCOMPARE(back->account_id, user.account_id);
    QVERIFY(back->token.isNull());

    Object_QiNiu qiniu;
    qiniu.account_id = QStringLiteral("5");
    QCOMPARE(JSONModel::toDictionary(qiniu), QVariantMap({{"x:account_id", "5"}}));
}

void TestModels::upFileKeepsBytes()
{
    const QByteArray png("\x89PNG\r\n\x1a\n\0\0", 10);
    const QVariantMap dictionary{{"uploadFile", png},
                                 {"uploadName", "file"},
                                 {"fileName", "avatar.png"},
                                 {"mimeType", "image/png"}};
    const std::optional<Object_UpFile> file
            = JSONModel::initWithDictionary<Object_UpFile>(dictionary);
    QVERIFY(file.has_value());
    QCOMPARE(file->uploadFile, png);
    QCOMPARE(file->fileName, QStringLiteral("avatar.png"));
    QCOMPARE(JSONModel::toDictionary(*file), dictionary);
}

void TestModels::mapsWeChatPaymentParameters()
{
    const QVariant answer
            = json(R"({"params_info":{"appid":"wx1","noncestr":"abc","package":"Sign=WXPay",
        "partnerid":12345,"prepayid":"wx2024","sign":"F00D","timestamp":1700000000}})");
    const auto info
            = JSONModel::initWithDictionary<Object_WeChatInfo>(answer.toMap().value("params_info"));
    QVERIFY(info.has_value());
    QCOMPARE(QStringList({info->appid, info->noncestr, info->package, info->partnerid,
                          info->prepayid, info->sign, info->timestamp}),
             QStringList({"wx1", "abc", "Sign=WXPay", "12345", "wx2024", "F00D", "1700000000"}));
}

TARVEL_TEST_MAIN(TestModels)
#include "tst_models.moc"
