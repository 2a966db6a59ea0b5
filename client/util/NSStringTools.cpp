#include "util/NSStringTools.h"

#include "util/OldStylePlistString.h"

#include <algorithm>

namespace {

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isRemovedFromValue(QChar c)
{
    switch (c.unicode()) {
    case ' ':
    case '\n':
    case '\r':
    case '(':
    case ')':
    case '"':
        return true;
    default:
        return false;
    }
}

} // namespace

bool NSStringTools::isInt(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    if (i < text.size() && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        ++i;
    const qsizetype digitsStart = i;
    while (i < text.size() && isAsciiDigit(text.at(i)))
        ++i;
    return i > digitsStart && i == text.size();
}

QString NSStringTools::replaceUnicode(const QString &text)
{
    QString decoded = OldStylePlistString::decode(text);
    decoded.replace(QStringLiteral("\\r\\n"), QStringLiteral("\n"));
    return decoded;
}

QString NSStringTools::replaceString(const QString &text)
{
    const qsizetype equals = text.lastIndexOf(QLatin1Char('='));
    QString value = replaceUnicode(text.mid(equals + 1));
    value.erase(std::remove_if(value.begin(), value.end(), isRemovedFromValue), value.end());
    return value;
}
