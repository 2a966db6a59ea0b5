#include "core/Clock.h"

#include <QDateTime>

qint64 Clock::now() const
{
    return QDateTime::currentSecsSinceEpoch() + m_offset.load();
}
