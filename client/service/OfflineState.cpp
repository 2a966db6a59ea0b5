#include "service/OfflineState.h"

#include <QPointer>

#include <algorithm>

OfflineState::OfflineState(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &OfflineState::probeNow);
}

void OfflineState::setProbeIntervals(int firstMs, int longestMs)
{
    m_firstInterval = std::max(1, firstMs);
    m_longestInterval = std::max(m_firstInterval, longestMs);
    m_interval = m_firstInterval;
    if (m_timer.isActive())
        m_timer.start(m_interval);
}

void OfflineState::noteAnsweredFromCache()
{
    if (!m_answeredFromCache) {
        m_answeredFromCache = true;
        m_interval = m_firstInterval;
        emit answeredFromCacheChanged();
    }
    if (!m_timer.isActive() && !m_probeInFlight)
        m_timer.start(m_interval);
}

void OfflineState::noteStoreReached()
{
    m_timer.stop();
    m_interval = m_firstInterval;
    if (!m_answeredFromCache)
        return;
    m_answeredFromCache = false;
    emit answeredFromCacheChanged();
    emit networkReturned();
}

void OfflineState::probeNow()
{
    if (!m_answeredFromCache || !m_probe)
        return;
    m_probeInFlight = true;
    QPointer<OfflineState> self(this);
    m_probe([self](bool reached) {
        if (!self)
            return;
        self->m_probeInFlight = false;
        if (reached)
            self->noteStoreReached();
        else
            self->probeMissed();
    });
}

void OfflineState::probeMissed()
{
    if (!m_answeredFromCache)
        return;
    m_interval = std::min(m_interval * 2, m_longestInterval);
    m_timer.start(m_interval);
}
