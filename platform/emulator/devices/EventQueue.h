#pragma once

#include "platform/emulator/Device.h"
#include "zvt/zvttypes.h"

#include <cstddef>
#include <deque>

namespace emulator
{

/// The events of the camera, which clients read one after another.
class EventQueue : public Device
{
public:
    using Device::Device;

    /// The largest number of events in the queue.
    static constexpr size_t capacity = 64;

    /// Adds an event. Removes the oldest one if the queue is full.
    void push(zvtEEventType event);

    /// Removes the oldest event and returns it. Returns ZVT_EVENT_NONE if the queue is empty.
    zvtEEventType take();

private:
    std::deque<zvtEEventType> m_events;
};

} // namespace emulator
