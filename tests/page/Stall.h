#pragma once

#include "tests/support/computedMicroseconds.h"

#include <QTimer>

#include <algorithm>

/// The longest permitted stall in milliseconds. Only an optimised build is fast.
#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__)
inline constexpr qint64 longestStall = 50;
#else
inline constexpr qint64 longestStall = 1000;
#endif

/// The longest uninterrupted computation of the event loop since construction, in processor time.
class Stall
{
public:
    Stall()
    {
        m_ticks.setTimerType(Qt::PreciseTimer);
        m_ticks.setInterval(1);
        QObject::connect(&m_ticks, &QTimer::timeout, &m_ticks, [this] { tick(); });
        m_ticks.start();
        m_before = computedMicroseconds();
    }

    qint64 milliseconds()
    {
        tick();
        return m_longest / 1000;
    }

private:
    void tick()
    {
        const qint64 now = computedMicroseconds();
        m_longest = std::max(m_longest, now - m_before);
        m_before = now;
    }

    QTimer m_ticks;
    qint64 m_before = 0;
    qint64 m_longest = 0;
};
