#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

// Whether the catalogue on screen came from kept answers because the store could not be reached.
// While it did, a cheap probe asks whether the store is back, waiting longer after each miss (up to
// a limit); the first request that reaches the store, probe or not, ends the state and announces
// that the network returned.
class OfflineState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool answeredFromCache READ answeredFromCache NOTIFY answeredFromCacheChanged)
public:
    static constexpr int DefaultFirstProbeMs = 3000;
    static constexpr int DefaultLongestProbeMs = 60000;

    // Sends one probe and calls `done(reached)` when it is over, whether the store answered.
    using Probe = std::function<void(std::function<void(bool reached)> done)>;

    explicit OfflineState(QObject *parent = nullptr);

    bool answeredFromCache() const { return m_answeredFromCache; }

    void setProbe(Probe probe) { m_probe = std::move(probe); }
    void setProbeIntervals(int firstMs, int longestMs);
    int nextProbeInterval() const { return m_interval; }
    bool isProbing() const { return m_timer.isActive() || m_probeInFlight; }

    // A request could not reach the store and was answered from a kept answer.
    void noteAnsweredFromCache();
    // A request got an answer from the store (any HTTP status).
    void noteStoreReached();

signals:
    void answeredFromCacheChanged();
    // The store answered again after the screens were shown kept answers.
    void networkReturned();

private:
    void probeNow();
    void probeMissed();

    bool m_answeredFromCache = false;
    bool m_probeInFlight = false;
    int m_firstInterval = DefaultFirstProbeMs;
    int m_longestInterval = DefaultLongestProbeMs;
    int m_interval = DefaultFirstProbeMs;
    QTimer m_timer;
    Probe m_probe;
};
