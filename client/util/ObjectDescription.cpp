#include "util/ObjectDescription.h"

#include <QLocale>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <algorithm>
#include <cmath>

namespace {

constexpr int IndentWidth = 4;

QString indentation(int level)
{
    return QString(level * IndentWidth, QLatin1Char(' '));
}

// Whole numbers below 1e21 print all their digits, as JSON numbers do; anything else prints in the
// shortest form that reads back as the same double ("58.5", "1e+21").
QString doubleDescription(double number)
{
    if (std::isnan(number))
        return QStringLiteral("nan");
    if (std::isinf(number))
        return number > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    if (number == std::trunc(number) && std::fabs(number) < 1e21) {
        if (number == 0)
            return QStringLiteral("0");
        return QString::number(number, 'f', 0);
    }
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

bool isBareWord(const QString &text)
{
    if (text.isEmpty())
        return false;
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == QLatin1Char('_'));
    });
}

QString escapedCharacter(QChar c)
{
    switch (c.unicode()) {
    case '"':
        return QStringLiteral("\\\"");
    case '\\':
        return QStringLiteral("\\\\");
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    if (c.unicode() < 0x20)
        return QStringLiteral("\\%1").arg(c.unicode(), 3, 8, QLatin1Char('0'));
    if (c.unicode() >= 0x80)
        return QStringLiteral("\\U%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    return QString(c);
}

QString quotedText(const QString &text)
{
    if (isBareWord(text))
        return text;
    QString quoted;
    quoted.reserve(text.size() + 2);
    quoted += QLatin1Char('"');
    for (QChar c : text)
        quoted += escapedCharacter(c);
    quoted += QLatin1Char('"');
    return quoted;
}

QString byteArrayDescription(const QByteArray &bytes)
{
    QString hex = QString::fromLatin1(bytes.toHex());
    QStringList groups;
    for (qsizetype i = 0; i < hex.size(); i += 8)
        groups << hex.mid(i, 8);
    return QLatin1Char('<') + groups.join(QLatin1Char(' ')) + QLatin1Char('>');
}

QString describe(const QVariant &value, int level);

// A nested container starts with its own indentation even after "key = ", which is how the
// platform prints it ("data =     {").
QString dictionaryDescription(const QVariantMap &dictionary, int level)
{
    const QString outer = indentation(level);
    const QString inner = indentation(level + 1);
    QString text = outer + QStringLiteral("{\n");
    // QVariantMap iterates in key order, which is the sorted order the description wants.
    for (auto it = dictionary.cbegin(); it != dictionary.cend(); ++it) {
        text += inner + quotedText(it.key()) + QStringLiteral(" = ")
                + describe(it.value(), level + 1) + QStringLiteral(";\n");
    }
    return text + outer + QLatin1Char('}');
}

QString arrayDescription(const QVariantList &array, int level)
{
    const QString outer = indentation(level);
    const QString inner = indentation(level + 1);
    QString text = outer + QStringLiteral("(\n");
    for (qsizetype i = 0; i < array.size(); ++i) {
        text += inner + describe(array.at(i), level + 1);
        text += i + 1 < array.size() ? QStringLiteral(",\n") : QStringLiteral("\n");
    }
    return text + outer + QLatin1Char(')');
}

QString scalarDescription(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Nullptr:
        return QStringLiteral("<null>");
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
    case QMetaType::Float:
        return doubleDescription(value.toDouble());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Long:
    case QMetaType::Short:
        return QString::number(value.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
    case QMetaType::UShort:
        return QString::number(value.toULongLong());
    default:
        return value.toString();
    }
}

QString describe(const QVariant &value, int level)
{
    if (!value.isValid())
        return QStringLiteral("(null)");
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return dictionaryDescription(value.toMap(), level);
    case QMetaType::QVariantList:
        return arrayDescription(value.toList(), level);
    case QMetaType::QStringList:
        return arrayDescription(QVariant(value.toStringList()).toList(), level);
    case QMetaType::QString:
        return level == 0 ? value.toString() : quotedText(value.toString());
    case QMetaType::QByteArray:
        return byteArrayDescription(value.toByteArray());
    default:
        // Inside a container every scalar follows the quoting rule of text: 58 stays bare,
        // "58.5" and "<null>" are quoted.
        return level == 0 ? scalarDescription(value) : quotedText(scalarDescription(value));
    }
}

} // namespace

QString objectDescription(const QVariant &value)
{
    return describe(value, 0);
}
