#include "util/OldStylePlistString.h"

namespace {

int digitValue(QChar c, int base)
{
    const char16_t u = c.unicode();
    int value = -1;
    if (u >= '0' && u <= '9')
        value = u - '0';
    else if (u >= 'a' && u <= 'f')
        value = u - 'a' + 10;
    else if (u >= 'A' && u <= 'F')
        value = u - 'A' + 10;
    return value < base ? value : -1;
}

QChar controlCharacter(QChar letter)
{
    switch (letter.unicode()) {
    case 'a':
        return QChar(0x07);
    case 'b':
        return QChar(0x08);
    case 'f':
        return QChar(0x0c);
    case 'n':
        return QChar(0x0a);
    case 'r':
        return QChar(0x0d);
    case 't':
        return QChar(0x09);
    case 'v':
        return QChar(0x0b);
    default:
        return letter;
    }
}

} // namespace

QString OldStylePlistString::decode(QStringView escaped)
{
    QString out;
    out.reserve(escaped.size());
    qsizetype i = 0;
    while (i < escaped.size()) {
        const qsizetype slash = escaped.indexOf(QLatin1Char('\\'), i);
        if (slash < 0) {
            out += escaped.mid(i);
            break;
        }
        out += escaped.mid(i, slash - i);
        i = decodeEscape(escaped, slash, out);
    }
    return out;
}

// Appends the character the escape at `at` (a backslash) stands for; returns the index after it.
qsizetype OldStylePlistString::decodeEscape(QStringView escaped, qsizetype at, QString &out)
{
    if (at + 1 >= escaped.size()) {
        out += QLatin1Char('\\');
        return at + 1;
    }
    const QChar letter = escaped.at(at + 1);
    char32_t value = 0;
    if (letter == QLatin1Char('U') || letter == QLatin1Char('u')) {
        const qsizetype next = decodeNumber(escaped, at + 2, 16, 4, value);
        if (next == at + 2) {
            out += escaped.mid(at, 2);
            return next;
        }
        out += QChar(char16_t(value));
        return next;
    }
    if (digitValue(letter, 8) >= 0) {
        const qsizetype next = decodeNumber(escaped, at + 1, 8, 3, value);
        out += QChar(char16_t(value));
        return next;
    }
    out += controlCharacter(letter);
    return at + 2;
}

// Reads up to `maxDigits` digits of `base` from `at` into `value`; returns the index after them.
qsizetype OldStylePlistString::decodeNumber(QStringView escaped, qsizetype at, int base,
                                            int maxDigits, char32_t &value)
{
    value = 0;
    qsizetype i = at;
    while (i < escaped.size() && i - at < maxDigits) {
        const int digit = digitValue(escaped.at(i), base);
        if (digit < 0)
            break;
        value = value * base + digit;
        ++i;
    }
    return i;
}
