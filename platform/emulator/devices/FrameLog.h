#pragma once

#include "platform/emulator/Frame.h"
#include "platform/emulator/devices/FrameRun.h"
#include "platform/emulator/devices/FrameSegment.h"
#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>
#include <deque>
#include <memory>
#include <span>
#include <variant>

namespace emulator
{

/// The beginnings of all frames from a time on, without a limit to their number. Frames with the same timing are one
/// entry, and so are sequences that a periodic trigger starts at the same distance, and turns of presets that a
/// periodic trigger advances. A single trigger needs an entry of its own.
class FrameLog
{
public:
    /// Forgets everything. Tick 0 is at `zero`, a time of Clock in microseconds.
    void start(uint32_t ticksPerSecond, int64_t zero);
    /// Frames of another timing follow: all frames from `firstNumber` on. `trigger` is the periodic one if a trigger
    /// has started them.
    void begin(const FrameSegment &segment, uint64_t firstNumber, const SequenceRun::Trigger &trigger = {});
    /// A turn of an advance follows. Its frames are those of `segment`.
    void begin(const FrameSegment &segment, const std::shared_ptr<const PresetAdvance> &advance,
               const PresetAdvance::Turn &turn);
    /// The last sequence, which has a trigger, is repeated so often, with this number of pulses between two sequences.
    void repeat(uint64_t count, uint64_t pulses);

    // The following need a begin().

    /// The number of the first frame that begins after a time of Clock in microseconds.
    uint64_t firstAfter(int64_t microseconds) const;
    /// A frame that the log contains.
    FrameStart frame(uint64_t number) const;
    /// The timing of such a frame, in ticks.
    FrameTiming timing(uint64_t number) const { return partOf(placeOf(number), number).segment.timing(); }
    uint32_t ticksPerSecond() const { return m_frequency; }
    /// Whether the timing of frames among these, which the log contains, has frames of a preset.
    bool uses(int preset, uint64_t first, uint64_t last) const;
    /// The beginnings of frames from the number `first` on, in microseconds. Faster than frame().
    void beginnings(uint64_t first, std::span<int64_t> microseconds) const;
    /// The duration of the shortest frame since start(), in microseconds, rounded down.
    int64_t shortestFrame() const;
    /// Forgets frames before this number. Keeps the newest entry.
    void forgetBefore(uint64_t number);
    /// The number of entries.
    size_t size() const { return m_runs.size(); }
    /// The memory of the entries and their timings. Other logs may share the timings.
    size_t bytes() const;

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_runs, self.m_frequency, self.m_zero, self.m_shortest);
        archive.require([&self] { return self.m_frequency > 0 && self.runsAreOrdered(); });
    }
    /// Whether it has an entry, and none before this number is missing.
    bool reaches(uint64_t number) const { return !m_runs.empty() && firstNumberOf(m_runs.front()) <= number; }

private:
    using Run = std::variant<SequenceRun, PresetTurns>;

    static uint64_t firstNumberOf(const Run &run);
    static int64_t startOf(const Run &run);
    bool runsAreOrdered() const;
    /// The place of the entry with a frame.
    size_t placeOf(uint64_t number) const;
    RunPart partOf(size_t place, uint64_t number) const;
    std::shared_ptr<const FrameTiming> share(const FrameTiming &timing);
    void prepare(const FrameTiming &timing, uint64_t firstNumber);
    int64_t timeOf(int64_t tick) const;

    std::deque<Run> m_runs;
    std::array<std::shared_ptr<const FrameTiming>, maximumPresets> m_timings; ///< The newest ones.
    size_t m_oldestTiming = 0;
    uint32_t m_frequency = 1;
    int64_t m_zero = 0;
    int64_t m_shortest = 0; ///< Ticks, 0 before the first frame.
};

} // namespace emulator
