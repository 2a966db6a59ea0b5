#include "TestEnvironment.h"

#include "util/ObjectDescription.h"

#include <QJsonDocument>
#include <QTest>

class TestObjectDescription : public QObject
{
    Q_OBJECT

private slots:
    void describesValues_data();
    void describesValues();
    void describesDecodedJson_data();
    void describesDecodedJson();
};

void TestObjectDescription::describesValues_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nil") << QVariant() << "(null)";
    QTest::newRow("null") << QVariant::fromValue(nullptr) << "<null>";
    QTest::newRow("text as it is") << QVariant(QStringLiteral("a \"b\" 手机")) << "a \"b\" 手机";
    QTest::newRow("whole double") << QVariant(58.0) << "58";
    QTest::newRow("fraction") << QVariant(58.5) << "58.5";
    QTest::newRow("shortest fraction") << QVariant(0.1) << "0.1";
    QTest::newRow("negative") << QVariant(-3.25) << "-3.25";
    QTest::newRow("large whole below 1e21") << QVariant(1e20) << "100000000000000000000";
    QTest::newRow("1e21") << QVariant(1e21) << "1e+21";
    QTest::newRow("tiny") << QVariant(1e-7) << "1e-07";
    QTest::newRow("integer") << QVariant(qlonglong(1234567890123)) << "1234567890123";
    QTest::newRow("true") << QVariant(true) << "1";
    QTest::newRow("bytes") << QVariant(QByteArray("Hello")) << "<48656c6c 6f>";
    QTest::newRow("empty dictionary") << QVariant(QVariantMap()) << "{\n}";
    QTest::newRow("empty array") << QVariant(QVariantList()) << "(\n)";
    QTest::newRow("keys sorted, bare and quoted")
            << QVariant(QVariantMap{{"zeta", "plain_word9"},
                                    {"alpha", "two words"},
                                    {"human_name", QString()},
                                    {"x:key", ""}})
            << "{\n    alpha = \"two words\";\n    human_name = \"\";\n"
               "    \"x:key\" = \"\";\n    zeta = plain_word9;\n}";
    QTest::newRow("scalars inside a dictionary") << QVariant(QVariantMap{
            {"a", 58}, {"b", 58.5}, {"c", QVariant::fromValue(nullptr)}, {"d", -1}, {"e", true}})
                                                 << "{\n    a = 58;\n    b = \"58.5\";\n    c = "
                                                    "\"<null>\";\n    d = \"-1\";\n    e = 1;\n}";
    QTest::newRow("escapes inside quotes")
            << QVariant(QVariantList{"say \"hi\"\n", "back\\slash", "tab\there", "\x01"})
            << "(\n    \"say \\\"hi\\\"\\n\",\n    \"back\\\\slash\",\n    \"tab\\there\",\n"
               "    \"\\001\"\n)";
    QTest::newRow("chinese as \\U escapes")
            << QVariant(QVariantMap{{"message", QStringLiteral("手机号已存在")}})
            << "{\n    message = \"\\U624b\\U673a\\U53f7\\U5df2\\U5b58\\U5728\";\n}";
    QTest::newRow("array of arrays")
            << QVariant(QVariantList{QVariantList{1, 2}, QVariantList{}})
            << "(\n        (\n        1,\n        2\n    ),\n        (\n    )\n)";
}

void TestObjectDescription::describesValues()
{
    QFETCH(QVariant, value);
    QFETCH(QString, expected);
    QCOMPARE(objectDescription(value), expected);
}

void TestObjectDescription::describesDecodedJson_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("expected");

    QTest::newRow("validation envelope data")
            << QByteArray(R"({"phone_number":{"message":"已被使用","human_name":"手机号"}})")
            << "{\n    phone_number =     {\n        human_name = \"\\U624b\\U673a\\U53f7\";\n"
               "        message = \"\\U5df2\\U88ab\\U4f7f\\U7528\";\n    };\n}";
    QTest::newRow("nested list of dictionaries")
            << QByteArray(R"({"data":{"list":[{"id":1,"price":9.9},2]},"status":"ok"})")
            << "{\n    data =     {\n        list =         (\n                        {\n"
               "                id = 1;\n                price = \"9.9\";\n            },\n"
               "            2\n        );\n    };\n    status = ok;\n}";
    QTest::newRow("numbers from json") << QByteArray(R"([58, 58.5, 1e21, 58.0, null])")
                                       << "(\n    58,\n    \"58.5\",\n    \"1e+21\",\n    58,\n"
                                          "    \"<null>\"\n)";
}

void TestObjectDescription::describesDecodedJson()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, expected);
    const QJsonDocument document = QJsonDocument::fromJson(json);
    QVERIFY(!document.isNull());
    QCOMPARE(objectDescription(document.toVariant()), expected);
}

TARVEL_TEST_MAIN(TestObjectDescription)
#include "tst_objectdescription.moc"
