#include "platform/emulator/devices/EventQueue.h"

namespace emulator
{

void EventQueue::push(zvtEEventType event)
{
    if (m_events.size() == capacity)
        m_events.pop_front();
    m_events.push_back(event);
}

zvtEEventType EventQueue::take()
{
    if (m_events.empty())
        return ZVT_EVENT_NONE;
    const auto oldest = m_events.front();
    m_events.pop_front();
    return oldest;
}

} // namespace emulator
