#pragma once

#include "platform/emulator/devices/FrameRanges.h"

#include <cstdint>
#include <memory>
#include <span>

namespace emulator
{

class Recording;

/// The camera as a RecorderMachine needs it. Times are in microseconds.
class RecorderWorld
{
public:
    virtual ~RecorderWorld() = default;
    /// The size of a frame in bytes. Does not change while a recorder is armed or records.
    virtual uint64_t frameBytes() const = 0;
    /// Ends an automatic correction, which would change the frames. Returns false while the operator makes one.
    virtual bool freeFrames() = 0;
    /// The frames are needed from now on.
    virtual void watchFrames() = 0;
    /// The number of the first frame that begins after a time.
    virtual uint64_t firstAfter(int64_t time) const = 0;
    /// The beginnings of the frames from the number `first` on, which have begun.
    virtual void beginnings(uint64_t first, std::span<int64_t> times) const = 0;
    /// At most the smallest distance between frames.
    virtual int64_t shortestFrame() const = 0;
    /// Returns the frames with these numbers and their settings.
    virtual std::shared_ptr<const Recording> record(FrameRanges numbers) = 0;
    /// The highest rate of a playback of the memory in hertz, above 0.
    virtual float highestRate() const = 0;
};

} // namespace emulator
