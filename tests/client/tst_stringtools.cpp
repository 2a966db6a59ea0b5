#include "TestEnvironment.h"

#include "util/NSStringTools.h"
#include "util/NSStringUtils.h"
#include "util/ObjectDescription.h"

#include <QFontMetricsF>
#include <QJsonDocument>
#include <QTest>

#include <climits>

Q_DECLARE_METATYPE(NSStringUtils::CompareOptions)

class TestStringTools : public QObject
{
    Q_OBJECT

private slots:
    void replacesUnicode_data();
    void replacesUnicode();
    void replacesString_data();
    void replacesString();
    void readsFailureTextPieces();
    void scansInt_data();
    void scansInt();
    void readsNumbers_data();
    void readsNumbers();
    void trims_data();
    void trims();
    void searches_data();
    void searches();
    void makesUrls_data();
    void makesUrls();
    void measuresText();
};

void TestStringTools::replacesUnicode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("lower-case escapes") << "\\u5bc6\\u7801" << QStringLiteral("密码");
    QTest::newRow("upper-case escapes") << "\\U5BC6\\U7801" << QStringLiteral("密码");
    QTest::newRow("mixed with text") << "\\u4ef7\\u683c: 58" << QStringLiteral("价格: 58");
    QTest::newRow("surrogate pair") << "\\ud83d\\ude00" << QStringLiteral("😀");
    QTest::newRow("double quotes stay") << "say \"hi\""
                                        << "say \"hi\"";
    QTest::newRow("escaped quote") << "say \\\"hi\\\""
                                   << "say \"hi\"";
    QTest::newRow("escaped backslash") << "a\\\\b"
                                       << "a\\b";
    QTest::newRow("octal") << "\\101\\102C"
                           << "ABC";
    QTest::newRow("control escapes") << "a\\nb\\tc"
                                     << "a\nb\tc";
    QTest::newRow("literal \\r\\n becomes a line end") << "a\\\\r\\\\nb"
                                                       << "a\nb";
    QTest::newRow("other escaped letter") << "\\q"
                                          << "q";
    QTest::newRow("truncated \\U12 at the end") << "ab\\U12" << QStringLiteral("ab\u0012");
    QTest::newRow("escape without hex digits") << "\\Uzz and \\u"
                                               << "\\Uzz and \\u";
    QTest::newRow("lone backslash at the end") << "abc\\"
                                               << "abc\\";
    QTest::newRow("only a backslash") << "\\"
                                      << "\\";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("plain Chinese") << QStringLiteral("已完成") << QStringLiteral("已完成");
}

void TestStringTools::replacesUnicode()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(NSStringTools::replaceUnicode(text), expected);
}

void TestStringTools::replacesString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("message piece")
            << "{\n    message = \"\\U5bc6\\U7801\\U9519\\U8bef\"" << QStringLiteral("密码错误");
    QTest::newRow("list value")
            << "\n    password =     (\n        \"\\U4e0d\\U80fd\\U4e3a\\U7a7a\"\n    )"
            << QStringLiteral("不能为空");
    QTest::newRow("after the last equals sign") << "a = b = c d"
                                                << "cd";
    QTest::newRow("no equals sign") << "(a \"b\")"
                                    << "ab";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("equals sign last") << "key ="
                                      << "";
}

void TestStringTools::replacesString()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(NSStringTools::replaceString(text), expected);
}

// A validation answer's field dictionary, printed and taken apart at ";" as the screens do.
void TestStringTools::readsFailureTextPieces()
{
    const QVariant data
            = QJsonDocument::fromJson(
                      R"json({"message":"手机号已被使用 (请换一个)","human_name":"手机号"})json")
                      .toVariant();
    QString message;
    QString humanName;
    for (const QString &piece : objectDescription(data).split(QLatin1Char(';'))) {
        if (piece.contains(QStringLiteral("message")))
            message = NSStringTools::replaceString(piece);
        if (piece.contains(QStringLiteral("human_name")))
            humanName = NSStringTools::replaceString(piece);
    }
    QCOMPARE(message, QStringLiteral("手机号已被使用请换一个"));
    QCOMPARE(humanName, QStringLiteral("手机号"));
}

void TestStringTools::scansInt_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isInt");

    QTest::newRow("digits") << "12" << true;
    QTest::newRow("leading blanks and minus") << " \t-12" << true;
    QTest::newRow("plus") << "+5" << true;
    QTest::newRow("too large for 32 bits") << "99999999999999999999" << true;
    QTest::newRow("trailing blank") << "12 " << false;
    QTest::newRow("trailing letter") << "12a" << false;
    QTest::newRow("fraction") << "1.5" << false;
    QTest::newRow("sign only") << "-" << false;
    QTest::newRow("empty") << "" << false;
}

void TestStringTools::scansInt()
{
    QFETCH(QString, text);
    QFETCH(bool, isInt);
    QCOMPARE(NSStringTools::isInt(text), isInt);
}

void TestStringTools::readsNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("intValue");
    QTest::addColumn<double>("doubleValue");

    QTest::newRow("price") << "58.5" << 58 << 58.5;
    QTest::newRow("leading blanks, trailing text") << "  -7.25元" << -7 << -7.25;
    QTest::newRow("plus sign") << "+2.5" << 2 << 2.5;
    QTest::newRow("exponent") << "1e3" << 1 << 1000.0;
    QTest::newRow("not a number") << "free" << 0 << 0.0;
    QTest::newRow("empty") << "" << 0 << 0.0;
    QTest::newRow("above 32 bits") << "2147483648" << INT_MAX << 2147483648.0;
    QTest::newRow("below 32 bits") << "-2147483649" << INT_MIN << -2147483649.0;
}

void TestStringTools::readsNumbers()
{
    QFETCH(QString, text);
    QFETCH(int, intValue);
    QFETCH(double, doubleValue);
    QCOMPARE(NSStringUtils::intValue(text), intValue);
    QCOMPARE(NSStringUtils::doubleValue(text), doubleValue);
}

void TestStringTools::trims_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("blanks and line ends") << "  a b \r\n"
                                          << "a b";
    QTest::newRow("ideographic space")
            << QStringLiteral("\u3000文字\u3000") << QStringLiteral("文字");
    QTest::newRow("only blanks") << " \t\n"
                                 << "";
}

void TestStringTools::trims()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(NSStringUtils::trim(text), expected);
}

void TestStringTools::searches_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("other");
    QTest::addColumn<NSStringUtils::CompareOptions>("options");
    QTest::addColumn<bool>("found");

    using S = NSStringUtils;
    QTest::newRow("case-insensitive")
            << "Hello World"
            << "wORLD" << S::CompareOptions(S::CaseInsensitiveSearch) << true;
    QTest::newRow("case-sensitive") << "Hello World"
                                    << "world" << S::CompareOptions() << false;
    QTest::newRow("empty never found") << "abc"
                                       << "" << S::CompareOptions() << false;
    QTest::newRow("longer than the text") << "abc"
                                          << "abcd" << S::CompareOptions() << false;
    QTest::newRow("diacritics ignored")
            << QStringLiteral("Café") << "cafe"
            << (S::DiacriticInsensitiveSearch | S::CaseInsensitiveSearch) << true;
    QTest::newRow("diacritics count")
            << QStringLiteral("Café") << "Cafe" << S::CompareOptions() << false;
    QTest::newRow("full width ignored")
            << QStringLiteral("ＡＢＣ游戏") << "abc"
            << (S::WidthInsensitiveSearch | S::CaseInsensitiveSearch) << true;
    QTest::newRow("anchored at the start")
            << "prefix-body"
            << "prefix" << S::CompareOptions(S::AnchoredSearch) << true;
    QTest::newRow("anchored elsewhere") << "prefix-body"
                                        << "body" << S::CompareOptions(S::AnchoredSearch) << false;
    QTest::newRow("anchored at the end")
            << "prefix-body"
            << "body" << (S::AnchoredSearch | S::BackwardsSearch) << true;
    QTest::newRow("composed equals decomposed")
            << QStringLiteral("e\u0301") << QStringLiteral("é") << S::CompareOptions() << true;
    QTest::newRow("literal keeps them apart") << QStringLiteral("e\u0301") << QStringLiteral("é")
                                              << S::CompareOptions(S::LiteralSearch) << false;
}

void TestStringTools::searches()
{
    QFETCH(QString, text);
    QFETCH(QString, other);
    QFETCH(NSStringUtils::CompareOptions, options);
    QFETCH(bool, found);
    QCOMPARE(NSStringUtils::containsString(text, other, options), found);
    if (options == NSStringUtils::CaseInsensitiveSearch)
        QCOMPARE(NSStringUtils::containsString(text, other), found);
}

void TestStringTools::makesUrls_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("address") << "http://127.0.0.1:8080/products/5.json?x=1" << true;
    QTest::newRow("blanks") << "not an address" << false;
    QTest::newRow("empty") << "" << false;
}

void TestStringTools::makesUrls()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    const QUrl url = NSStringUtils::url(text);
    QCOMPARE(url.isValid(), valid);
    if (valid)
        QCOMPARE(url.toString(), text);
}

void TestStringTools::measuresText()
{
    QFont font;
    font.setPixelSize(14);
    const qreal lineHeight = QFontMetricsF(font).height();
    const QString longText
            = QStringLiteral("这是一段很长的游戏介绍，需要在窄的标签里折成好几行才能放下。")
                      .repeated(3);

    const QSizeF wrapped = NSStringUtils::tti_sizeWithFont(longText, font, QSizeF(100, 10000),
                                                           NSStringUtils::ByWordWrapping);
    QVERIFY(wrapped.width() <= 100);
    QVERIFY(wrapped.height() >= 3 * lineHeight);

    const QSizeF clipped = NSStringUtils::tti_sizeWithFont(longText, font, QSizeF(100, 40),
                                                           NSStringUtils::ByTruncatingTail);
    QCOMPARE(clipped.height(), 40.0);

    const QSizeF oneLine = NSStringUtils::tti_sizeWithFont(
            QStringLiteral("短"), font, QSizeF(100, 10000), NSStringUtils::ByCharWrapping);
    QVERIFY(oneLine.width() < 100);
    QVERIFY(oneLine.height() < 2 * lineHeight);
}

TARVEL_TEST_MAIN(TestStringTools)
#include "tst_stringtools.moc"
