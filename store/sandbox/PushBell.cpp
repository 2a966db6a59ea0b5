#include "sandbox/PushBell.h"

#include <algorithm>
#include <exception>

PushBell::PushBell(std::function<qint64()> newestMessageId, std::chrono::milliseconds tick)
    : m_newestMessageId(std::move(newestMessageId))
    , m_tick(tick)
{ }

std::optional<qint64> PushBell::waitPast(qint64 seen, Clock::time_point deadline)
{
    std::unique_lock lock(m_mutex);
    ++m_waiting;
    std::optional<qint64> result;
    while (!m_closed) {
        if (m_newest > seen) {
            result = m_newest;
            break;
        }
        const Clock::time_point now = Clock::now();
        if (now >= deadline)
            break;
        if (m_probing) // another waiter is looking; it wakes everyone when done
            m_changed.wait_until(lock, deadline);
        else if (now - m_lastProbe >= m_tick)
            probe(lock);
        else
            m_changed.wait_until(lock, std::min(deadline, m_lastProbe + m_tick));
    }
    --m_waiting;
    return result;
}

void PushBell::probe(std::unique_lock<std::mutex> &lock)
{
    m_probing = true;
    lock.unlock();
    qint64 newest = 0;
    try {
        newest = m_newestMessageId();
    } catch (const std::exception &) {
        newest = 0; // the database is busy or going away: the next tick asks again
    }
    lock.lock();
    m_probing = false;
    m_lastProbe = Clock::now();
    m_newest = std::max(m_newest, newest);
    m_changed.notify_all();
}

void PushBell::close()
{
    const std::lock_guard lock(m_mutex);
    m_closed = true;
    m_changed.notify_all();
}

int PushBell::waiting() const
{
    const std::lock_guard lock(m_mutex);
    return m_waiting;
}
