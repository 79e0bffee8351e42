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

    Recording() = default;
    /// The log must contain the frames of these numbers, and the segments their settings, if there are frames.
    Recording(image::Size size, FrameRanges numbers, FrameLog log, std::deque<Segment> segments);

    image::Size size() const { return m_size; }
    uint64_t frames() const { return m_numbers.size(); }
    uint64_t bytes() const
    {
        return frames() * frameBytes(static_cast<uint64_t>(m_size.width), static_cast<uint64_t>(m_size.height));
    }
    size_t segments() const { return m_segments.size(); }
    /// Whether a frame is corrected already: it was recorded with a correction while that of the digital output was on.
    bool abated() const;
    /// Whether a camera with this array and number of presets can have recorded it.
    bool isPossibleWith(const image::Size &array, int presets) const;
    /// The memory of the process that the recording takes, in bytes, without the tables of corrections: the camera has
    /// them, too, while they are in use.
    size_t memoryUse() const;

    // The frame must exist.

    FrameStart start(uint64_t frame) const { return m_log.frame(m_numbers.number(frame)); }
    /// The timing of the frame, in ticks of the sensor.
    FrameTiming timing(uint64_t frame) const { return m_log.timing(m_numbers.number(frame)); }
    uint32_t ticksPerSecond() const { return m_log.ticksPerSecond(); }
    /// Whether the timing of frames among these has frames of a preset.
    bool uses(int preset, uint64_t first, uint64_t last) const
    {
        return m_log.uses(preset, m_numbers.number(first), m_numbers.number(last));
    }
    const Segment &segment(uint64_t frame) const;
    /// The IRIG time of the frame, in microseconds since 1970. The latch of its time selects the beginning of the
    /// frame, or that or the end of its integration, which is at the latest the end of the frame. With the same setting
    /// of the IRIG clock, no later frame has an earlier time.
    int64_t irigTime(uint64_t frame) const;
    /// The first later frame before which the IRIG clock was set. frames() if there is none.
    uint64_t nextIrigSetting(uint64_t frame) const;

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_size, self.m_numbers, self.m_log, self.m_segments);
        archive.require([&self] { return self.isValid(); });
    }

private:
    bool isValid() const;
    int64_t latchDelay(uint64_t frame, const FrameStart &start) const;
    template <class Condition> bool anyUsed(const Condition &condition) const;

    image::Size m_size;
    FrameRanges m_numbers;
    FrameLog m_log;
    std::deque<Segment> m_segments;
};

} // namespace emulator
