#include "TestEnvironment.h"

#include "platform/TextHolder.h"
#include "util/TTIFormatValidate.h"

#include <QTest>

#include <functional>

// A text field as the checks see it.
class FieldDouble : public QObject, public platform::TextHolder
{
    Q_OBJECT
    Q_INTERFACES(platform::TextHolder)
public:
    explicit FieldDouble(const QString &text)
        : m_text(text)
    { }
    QString text() const override { return m_text; }
    void setText(const QString &text) override { m_text = text; }

private:
    QString m_text;
};

using TextCheck = std::function<bool(const QString &)>;
Q_DECLARE_METATYPE(TextCheck)

class TestFormatValidate : public QObject
{
    Q_OBJECT

private slots:
    void checksText_data();
    void checksText();
    void checksFields_data();
    void checksFields();
    void refusesObjectsWithoutText();
};

void TestFormatValidate::checksText_data()
{
    QTest::addColumn<TextCheck>("check");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("passes");

    const TextCheck phone = &TTIFormatValidate::isValidateMobilePhone;
    QTest::newRow("phone 11 digits from 1") << phone << "13800138000" << true;
    QTest::newRow("phone from 2") << phone << "23800138000" << false;
    QTest::newRow("phone 12 digits") << phone << "138001380001" << false;
    QTest::newRow("phone 10 digits") << phone << "1380013800" << false;
    QTest::newRow("phone inside text") << phone << "tel 13800138000" << false;
    QTest::newRow("phone trailing newline") << phone << "13800138000\n" << false;

    const TextCheck email = &TTIFormatValidate::isValidateEmail;
    QTest::newRow("email") << email << "li.lei+shop@mail-1.example.cn" << true;
    QTest::newRow("email 5-letter domain end") << email << "a@b.games" << false;
    QTest::newRow("email no at") << email << "a.example.cn" << false;
    QTest::newRow("email underscore domain") << email << "a@b_c.cn" << false;
    QTest::newRow("email with blank") << email << "a b@c.cn" << false;

    const TextCheck number = &TTIFormatValidate::isValidateNumber;
    QTest::newRow("number digits") << number << "0123" << true;
    QTest::newRow("number empty") << number << "" << true;
    QTest::newRow("number sign") << number << "-1" << false;

    const TextCheck telephone = &TTIFormatValidate::isValidateTelephone;
    QTest::newRow("telephone") << telephone << "+86-10-12345678" << true;
    QTest::newRow("telephone empty") << telephone << "" << true;
    QTest::newRow("telephone letters") << telephone << "010-CALL" << false;

    const TextCheck id = &TTIFormatValidate::validateIDCardNumber;
    QTest::newRow("id with X") << id << "11010519491231002X" << true;
    QTest::newRow("id with lower-case x") << id << "11010519491231002x" << true;
    QTest::newRow("id digit check") << id << "440524188001010014" << true;
    QTest::newRow("id wrong check") << id << "440524188001010015" << false;
    QTest::newRow("id X where a digit is expected") << id << "44052418800101001X" << false;
    QTest::newRow("id 17 characters") << id << "44052418800101001" << false;
    QTest::newRow("id 19 characters") << id << "4405241880010100140" << false;
    QTest::newRow("id letter in body") << id << "4405241880A1010014" << false;

    const TextCheck nickname = &TTIFormatValidate::validateNickname;
    QTest::newRow("nickname four") << nickname << QStringLiteral("快乐玩家") << true;
    QTest::newRow("nickname eight") << nickname << QStringLiteral("一二三四五六七八") << true;
    QTest::newRow("nickname three") << nickname << QStringLiteral("小玩家") << false;
    QTest::newRow("nickname nine") << nickname << QStringLiteral("一二三四五六七八九") << false;
    QTest::newRow("nickname latin letter") << nickname << QStringLiteral("快乐玩家A") << false;
    QTest::newRow("nickname space") << nickname << QStringLiteral("快乐 玩家") << false;
    QTest::newRow("nickname beyond U+9FA5") << nickname << QStringLiteral("快乐玩\u9FB0") << false;

    const TextCheck password = &TTIFormatValidate::validatePassword;
    QTest::newRow("password six") << password << "abc123" << true;
    QTest::newRow("password twenty") << password << "abcdefghij0123456789" << true;
    QTest::newRow("password five") << password << "abc12" << false;
    QTest::newRow("password twenty-one") << password << "abcdefghij0123456789x" << false;
    QTest::newRow("password symbol") << password << "abc123!" << false;

    const TextCheck decimal = &TTIFormatValidate::validatefloatString;
    QTest::newRow("float 0.5") << decimal << "0.5" << true;
    QTest::newRow("float .5") << decimal << ".5" << false;
    QTest::newRow("float 5.") << decimal << "5." << false;
    QTest::newRow("float two dots inside") << decimal << "1..2" << true;
    QTest::newRow("float empty") << decimal << "" << false;
    QTest::newRow("float letter") << decimal << "1e5" << false;
}

void TestFormatValidate::checksText()
{
    QFETCH(TextCheck, check);
    QFETCH(QString, text);
    QFETCH(bool, passes);
    QCOMPARE(check(text), passes);
}

void TestFormatValidate::checksFields_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("phone");
    QTest::addColumn<bool>("email");
    QTest::addColumn<bool>("upTo16");
    QTest::addColumn<bool>("sixToEleven");

    QTest::newRow("empty") << "" << false << false << false << false;
    QTest::newRow("only blanks") << "    " << false << false << false << false;
    QTest::newRow("phone with blanks") << "  13800138000 " << true << false << true << true;
    QTest::newRow("email with newline") << "a@b.cn\n" << false << true << true << true;
    QTest::newRow("16 after trimming") << "  abcdefghijklmnop  " << false << false << true << false;
    QTest::newRow("17 after trimming") << "abcdefghijklmnopq" << false << false << false << false;
    QTest::newRow("16 Chinese characters") << QStringLiteral("一二三四五六七八九十一二三四五六")
                                           << false << false << true << false;
    QTest::newRow("five after trimming") << " abcde " << false << false << true << false;
}

void TestFormatValidate::checksFields()
{
    QFETCH(QString, text);
    QFETCH(bool, phone);
    QFETCH(bool, email);
    QFETCH(bool, upTo16);
    QFETCH(bool, sixToEleven);

    const FieldDouble field(text);
    QCOMPARE(TTIFormatValidate::isValidateMobilePhoneTextFiled(&field), phone);
    QCOMPARE(TTIFormatValidate::isValidateEmailTextFiled(&field), email);
    QCOMPARE(TTIFormatValidate::isTextFiledValidate(&field), upTo16);
    QCOMPARE(TTIFormatValidate::isTextFiledValidate(&field, 6, 11), sixToEleven);
}

void TestFormatValidate::refusesObjectsWithoutText()
{
    const QObject plain;
    QVERIFY(!TTIFormatValidate::isValidateMobilePhoneTextFiled(&plain));
    QVERIFY(!TTIFormatValidate::isTextFiledValidate(&plain));
    QVERIFY(!TTIFormatValidate::isValidateEmailTextFiled(nullptr));
}

TARVEL_TEST_MAIN(TestFormatValidate)
#include "tst_formatvalidate.moc"
