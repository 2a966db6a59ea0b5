#include "util/TTIFormatValidate.h"

#include "platform/TextHolder.h"
#include "util/NSStringTools.h"
#include "util/NSStringUtils.h"

#include <QObject>
#include <QRegularExpression>

#include <array>

namespace {

// Unicode properties on: \d matches every decimal digit, as in ICU patterns.
QRegularExpression wholeText(const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::UseUnicodePropertiesOption);
}

bool matches(const QRegularExpression &expression, const QString &text)
{
    return expression.match(text).hasMatch();
}

int asciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9') ? c.unicode() - '0' : 0;
}

} // namespace

bool TTIFormatValidate::isValidateMobilePhone(const QString &text)
{
    static const QRegularExpression pattern = wholeText(QStringLiteral("(1)\\d{10}"));
    return matches(pattern, text);
}

bool TTIFormatValidate::isValidateMobilePhoneTextFiled(const QObject *field)
{
    const QString text = trimmedFieldText(field);
    return !text.isEmpty() && isValidateMobilePhone(text);
}

bool TTIFormatValidate::isValidateEmail(const QString &text)
{
    static const QRegularExpression pattern
            = wholeText(QStringLiteral("[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\\.[A-Za-z]{2,4}"));
    return matches(pattern, text);
}

bool TTIFormatValidate::isValidateEmailTextFiled(const QObject *field)
{
    const QString text = trimmedFieldText(field);
    return !text.isEmpty() && isValidateEmail(text);
}

bool TTIFormatValidate::isValidateNumber(const QString &text)
{
    static const QRegularExpression pattern = wholeText(QStringLiteral("[0-9]*"));
    return matches(pattern, text);
}

bool TTIFormatValidate::isValidateTelephone(const QString &text)
{
    static const QRegularExpression pattern = wholeText(QStringLiteral("^[\\d+-]*$"));
    return matches(pattern, text);
}

bool TTIFormatValidate::isTextFiledValidate(const QObject *field)
{
    return isTextFiledValidate(field, 0, 16);
}

bool TTIFormatValidate::isTextFiledValidate(const QObject *field, int minLenght, int maxLenght)
{
    const QString text = trimmedFieldText(field);
    return !text.isEmpty() && minLenght <= text.size() && text.size() <= maxLenght;
}

bool TTIFormatValidate::validateIDCardNumber(const QString &text)
{
    static constexpr std::array<int, 17> weights{7, 9, 10, 5,  8, 4, 2, 1, 6,
                                                 3, 7, 9,  10, 5, 8, 4, 2};
    static const QString checkCharacters = QStringLiteral("10X98765432");
    if (text.size() != 18)
        return false;
    const QString body = text.left(17);
    if (!NSStringTools::isInt(body))
        return false;
    int sum = 0;
    for (int i = 0; i < 17; ++i)
        sum += asciiDigit(body.at(i)) * weights[i];
    return text.at(17).toUpper() == checkCharacters.at(sum % 11);
}

bool TTIFormatValidate::validateNickname(const QString &text)
{
    // Chinese characters only: Latin letters, digits and spaces fail, as intended.
    static const QRegularExpression pattern = wholeText(QStringLiteral("^[一-龥]{4,8}$"));
    return matches(pattern, text);
}

bool TTIFormatValidate::validatePassword(const QString &text)
{
    // The possessive "+" after {6,20} is redundant and kept as the pattern was given.
    static const QRegularExpression pattern = wholeText(QStringLiteral("^[a-zA-Z0-9]{6,20}+$"));
    return matches(pattern, text);
}

bool TTIFormatValidate::validatefloatString(const QString &text)
{
    static const QRegularExpression pattern = wholeText(QStringLiteral("^[0-9.]+$"));
    const QLatin1Char dot('.');
    // Several dots inside ("1..5") pass: intended, only a leading or trailing dot fails.
    return !text.startsWith(dot) && !text.endsWith(dot) && matches(pattern, text);
}

QString TTIFormatValidate::trimmedFieldText(const QObject *field)
{
    const auto *holder = qobject_cast<const platform::TextHolder *>(field);
    if (!holder || holder->text().isEmpty())
        return QString();
    return NSStringUtils::trim(holder->text());
}
