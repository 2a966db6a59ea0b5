#include "core/TimeText.h"

#include <QDateTime>
#include <QTimeZone>

namespace TimeText {

namespace {
QDateTime inChina(qint64 unixSeconds)
{
    static const QTimeZone china(8 * 3600);
    return QDateTime::fromSecsSinceEpoch(unixSeconds, china);
}
} // namespace

QString dateTime(qint64 unixSeconds)
{
    return inChina(unixSeconds).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString minutes(qint64 unixSeconds)
{
    return inChina(unixSeconds).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

QString logStamp(qint64 unixSeconds)
{
    return QDateTime::fromSecsSinceEpoch(unixSeconds, QTimeZone::utc())
            .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
}

} // namespace TimeText
