#pragma once

#include "platform/emulator/devices/FrameLog.h"
#include "platform/emulator/devices/FrameRanges.h"
#include "platform/emulator/devices/RecordedSettings.h"

#include <cstdint>
#include <deque>
#include <memory>

namespace emulator
{

/// Frames that the recorder has kept. It has no pixels: they follow from the times of the frames and from the settings
/// at these times, so the memory that it takes depends on the number of changes only. Frames count from 0.
class Recording
{
public:
    /// The settings of all frames from a number on, until the next segment.
    struct Segment {
        uint64_t firstNumber = 0;
        std::shared_ptr<const RecordedSettings> settings;
        RecordedMotion motion;
    };

    /// The size of a frame of a window in the memory and on the drive, in bytes. The header is a line more.
    static constexpr uint64_t frameBytes(uint64_t width, uint64_t height) { return 2 * width * (height + 1); }

    /// The log must contain the frames of these numbers, and the segments their settings, if there are frames.
    Recording(image::Size size, FrameRanges numbers, FrameLog log, std::deque<Segment> segments);

    image::Size size() const { return m_size; }
    uint64_t frames() const { return m_numbers.size(); }
    uint64_t bytes() const
    {
        return frames() * frameBytes(static_cast<uint64_t>(m_size.width), static_cast<uint64_t>(m_size.height));
    }
    size_t segments() const { return m_segments.size(); }
    /// The memory of the process that the recording takes, in bytes, without the tables of corrections: the camera has
    /// them, too, while they are in use.
    size_t memoryUse() const;

    // The frame must exist.

    FrameStart start(uint64_t frame) const { return m_log.frame(m_numbers.number(frame)); }
    const Segment &segment(uint64_t frame) const;

private:
    image::Size m_size;
    FrameRanges m_numbers;
    FrameLog m_log;
    std::deque<Segment> m_segments;
};

} // namespace emulator
