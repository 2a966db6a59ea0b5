#pragma once

#include <QtGlobal>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

// Wakes the push channel's held polls when a new message is in the database. Messages are
// written by the operator's command, usually another process, so the bell learns of them by
// probing the newest message id: one probe per tick, made by one of the waiters for all of them,
// and only while someone waits.
class PushBell
{
public:
    using Clock = std::chrono::steady_clock;
    // `newestMessageId` reads the channel's newest message id (0 when there is none).
    explicit PushBell(std::function<qint64()> newestMessageId,
                      std::chrono::milliseconds tick = std::chrono::milliseconds(50));

    // Blocks until a message newer than `seen` exists (its id is returned), `deadline` passes or
    // the bell is closed (both nullopt).
    std::optional<qint64> waitPast(qint64 seen, Clock::time_point deadline);
    // Wakes every waiter for good: the service is stopping and must not keep worker threads.
    void close();
    int waiting() const;

private:
    void probe(std::unique_lock<std::mutex> &lock);

    std::function<qint64()> m_newestMessageId;
    const std::chrono::milliseconds m_tick;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    qint64 m_newest = 0;
    Clock::time_point m_lastProbe;
    bool m_probing = false;
    bool m_closed = false;
    int m_waiting = 0;
};
