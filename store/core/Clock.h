#pragma once

#include <QtGlobal>

#include <atomic>

// Wall-clock seconds for everything that expires (sessions, SMS codes, upload credentials). Tests
// move it forward instead of waiting.
class Clock
{
public:
    qint64 now() const;
    void advance(qint64 seconds) { m_offset += seconds; }

private:
    std::atomic<qint64> m_offset{0};
};
