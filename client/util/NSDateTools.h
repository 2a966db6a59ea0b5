#pragma once

#include <QDateTime>

class NSDateTools
{
public:
    // Whole days from `date` to `other` in local time, counted as a Sunday-first Gregorian
    // calendar does: a day counts only once its time of day has been reached again, so 10:00 to
    // 09:00 the next day is 0. Negative when `other` is earlier.
    static int getDaysToDate(const QDateTime &date, const QDateTime &other);
};
