#include "core/Money.h"

#include <QRegularExpression>

namespace Money {

QString text(qint64 fen)
{
    const bool negative = fen < 0;
    const qint64 absolute = negative ? -fen : fen;
    QString result = QString::number(absolute / 100);
    const qint64 cents = absolute % 100;
    if (cents != 0) {
        QString fraction = QString::number(cents).rightJustified(2, QLatin1Char('0'));
        if (fraction.endsWith(QLatin1Char('0')))
            fraction.chop(1);
        result += QLatin1Char('.') + fraction;
    }
    return negative ? QLatin1Char('-') + result : result;
}

qint64 parse(const QString &yuan)
{
    static const QRegularExpression amount(QStringLiteral("^(\\d{1,9})(?:\\.(\\d{1,2}))?$"));
    const QRegularExpressionMatch match = amount.match(yuan.trimmed());
    if (!match.hasMatch())
        return -1;
    const QString fraction = match.captured(2).leftJustified(2, QLatin1Char('0'));
    return match.captured(1).toLongLong() * 100 + fraction.toLongLong();
}

} // namespace Money
