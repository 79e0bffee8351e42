#include "platform/emulator/devices/RecorderFifo.h"

#include <algorithm>

namespace emulator
{

namespace
{

constexpr int64_t million = 1'000'000;

} // namespace

RecorderFifo::RecorderFifo(int64_t capacity, int64_t speed, int64_t frame)
    : m_capacity(capacity * million), m_speed(speed), m_frame(frame * million)
{
}

void RecorderFifo::drain(int64_t time)
{
    const int64_t passed = std::max<int64_t>(time - m_time, 0);
    m_content = passed > m_content / m_speed ? 0 : m_content - passed * m_speed;
    m_time = std::max(m_time, time);
}

bool RecorderFifo::put(int64_t time)
{
    drain(time);
    if (m_content + m_frame > m_capacity)
        return false;
    m_content += m_frame;
    return true;
}

bool RecorderFifo::keepsUpWith(int64_t distance) const
{
    return m_frame <= m_capacity && m_content <= m_frame && distance >= (m_frame + m_speed - 1) / m_speed;
}

void RecorderFifo::putAll(int64_t time)
{
    m_content = m_frame;
    m_time = time;
}

int64_t RecorderFifo::microsecondsToEmpty(int64_t time)
{
    drain(time);
    return (m_content + m_speed - 1) / m_speed;
}

} // namespace emulator
