#include "standalone/desk/FramePace.h"

#include <algorithm>

void FramePace::add(std::chrono::nanoseconds duration)
{
    if (2 * duration > m_period) {
        m_period = std::min(2 * m_period, longest);
        m_quick = 0;
        return;
    }
    m_quick = 4 * duration <= m_period ? m_quick + 1 : 0;
    if (m_quick < quickFrames)
        return;
    m_period = std::max(m_period / 2, shortest);
    m_quick = 0;
}
