#include "util/NSDateTools.h"

int NSDateTools::getDaysToDate(const QDateTime &date, const QDateTime &other)
{
    const QDateTime from = date.toLocalTime();
    const QDateTime to = other.toLocalTime();
    qint64 days = from.date().daysTo(to.date());
    const QTime fromTime = from.time();
    const QTime toTime = to.time();
    if (days > 0 && toTime < fromTime)
        --days;
    else if (days < 0 && toTime > fromTime)
        ++days;
    return int(days);
}
