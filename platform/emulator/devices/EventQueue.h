#pragma once

#include "platform/emulator/Device.h"
#include "zvt/zvttypes.h"

#include <cstddef>
#include <deque>

namespace emulator
{

/// What the camera has to say by itself, taken out one by one.
class EventQueue : public Device
{
public:
    using Device::Device;

    /// The queue holds so many events; one more pushes the oldest out.
    static constexpr size_t capacity = 64;

    void push(zvtEEventType event);

    /// The oldest event, or ZVT_EVENT_NONE.
    zvtEEventType take();

private:
    std::deque<zvtEEventType> m_events;
};

} // namespace emulator
