#pragma once

#include "tests/support/PageDriver.h"
#include "tests/support/computedMicroseconds.h"

#include <QQuickItem>
#include <QTest>
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

/// Waits until the contents of the hidden pages exist, so that a Stall does not include their creation.
inline bool awaitHiddenPages(const PageDriver &page)
{
    constexpr int loading = 2; // Loader.Loading
    return QTest::qWaitFor([&page] {
        const auto items = page.page()->findChildren<QQuickItem *>();
        return page.page()->property("_preload").toBool() && std::ranges::none_of(items, [](const QQuickItem *item) {
                   return item->inherits("QQuickLoader") && item->property("status").toInt() == loading;
               });
    });
}
