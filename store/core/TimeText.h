#pragma once

#include <QString>

// Times as the shop shows them to its customers: China Standard Time (UTC+8, no daylight saving).
namespace TimeText {
QString dateTime(qint64 unixSeconds); // "2024-05-01 20:30:00"
QString minutes(qint64 unixSeconds); // "2024-05-01 20:30"
QString logStamp(qint64 unixSeconds); // "2024-05-01T12:30:00Z"
} // namespace TimeText
