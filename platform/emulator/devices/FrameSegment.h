#pragma once

#include "platform/emulator/devices/FrameTiming.h"

#include <cstdint>
#include <optional>

namespace emulator
{

/// Frames with the same timing. They count from 0 in a segment. Each frame has a slot of its own, in which it begins;
/// the slots do not overlap. A frame whose integration a pulse ends has the slot before this pulse; all other frames
/// begin with their slots.
class FrameSegment
{
public:
    FrameSegment() = default;
    /// The first slot begins at `start` or, if a signal starts frames, at the first pulse from then on. Ticks are not
    /// negative.
    FrameSegment(const FrameTiming &timing, int64_t start);

    const FrameTiming &timing() const { return m_timing; }
    int64_t start() const { return m_start; }
    /// The number of frames that have begun at a tick.
    uint64_t begun(int64_t tick) const;
    /// The last frame of a preset among the first `count` frames.
    std::optional<uint64_t> newest(int preset, uint64_t count) const { return m_timing.pattern.newest(preset, count); }
    // The following two need a frame that exists.
    int presetOf(uint64_t frame) const { return m_timing.pattern.place(frame).preset; }
    int64_t tickOf(uint64_t frame) const;
    /// The tick from which another timing may begin, after the first `count` frames.
    int64_t end(uint64_t count) const;
    /// Whether the frames from tick `from` + `ticks` on repeat those of `earlier` from tick `from` on exactly.
    bool repeats(const FrameSegment &earlier, int64_t from, int64_t ticks) const;

private:
    uint64_t slotsBegun(int64_t tick) const;
    int64_t pulseTick(uint64_t pulse) const;
    int64_t cycleTick(uint64_t cycle) const;
    bool cycleRepeatsAfter(uint64_t ticks) const;

    FrameTiming m_timing;
    int64_t m_start = 0;
    int64_t m_lead = 0; ///< Ticks from the beginning of a cycle to its pulse, for CycleByPulse.
    uint64_t m_firstPulse = 0;
};

} // namespace emulator
