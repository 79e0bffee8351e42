#pragma once

#include "platform/emulator/devices/FrameSegment.h"
#include "platform/emulator/devices/PresetAdvance.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace emulator
{

/// A part of a run, whose frames are those of one segment.
struct RunPart {
    FrameSegment segment;
    uint64_t firstNumber = 0;
    uint64_t end = UINT64_MAX; ///< The number after the last frame of the segment, if another part of the run follows.
};

/// Frames of the same timing: one segment, or sequences that a periodic trigger starts at the same distance.
class SequenceRun
{
public:
    /// The trigger of a sequence.
    struct Trigger {
        PulseTrain pulses;
        int64_t delay = 0; ///< Ticks from a pulse to its effect.
    };

    SequenceRun() = default;
    SequenceRun(std::shared_ptr<const FrameTiming> timing, int64_t start, uint64_t firstNumber, const Trigger &trigger);

    int64_t start() const { return m_start; }
    uint64_t firstNumber() const { return m_firstNumber; }
    const std::shared_ptr<const FrameTiming> &timing() const { return m_timing; }
    bool uses(int preset) const { return m_timing->uses(preset); }
    /// The part with a frame of the run.
    RunPart partOf(uint64_t number) const;
    /// The number of the first frame that begins after a tick, if the run does not end.
    uint64_t firstAfter(int64_t tick) const;

    /// Adds a run of one sequence. Returns false if it does not follow as the sequences of this run do.
    bool add(const SequenceRun &next);
    /// Adds sequences, with this number of pulses from one to the next. Returns false if the sequences of this run have
    /// another distance. Needs a trigger.
    bool repeat(uint64_t count, uint64_t distance);
    /// Removes the last sequence and returns it. Needs more than one.
    SequenceRun takeLast();

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_timing, self.m_start, self.m_firstNumber, self.m_trigger, self.m_pulse, self.m_distance,
                self.m_sequences);
        archive.require([&self] { return self.isValid(); });
    }

private:
    FrameSegment sequence(uint64_t index) const;
    bool isValid() const;

    std::shared_ptr<const FrameTiming> m_timing;
    int64_t m_start = 0;
    uint64_t m_firstNumber = 0;
    Trigger m_trigger;
    // The pulse that has started the first sequence, and the pulses from one sequence to the next.
    uint64_t m_pulse = 0;
    uint64_t m_distance = 0;
    uint64_t m_sequences = 1;
};

/// The turns of presets that follow each other by a PresetAdvance. The size has a limit for any number of turns: only
/// some of them are stored, from which the others are computed.
class PresetTurns
{
public:
    static constexpr size_t mostStored = 8192;

    PresetTurns() = default;
    PresetTurns(std::shared_ptr<const PresetAdvance> advance, const PresetAdvance::Turn &first);

    int64_t start() const { return m_stored.front().start; }
    uint64_t firstNumber() const { return m_stored.front().firstNumber; }
    bool uses(int preset) const;
    /// The part with a frame of the run. Takes up to 0.2 us for each turn between two stored ones.
    RunPart partOf(uint64_t number) const;
    /// The number of the first frame that begins after a tick, if the last turn does not end. As partOf().
    uint64_t firstAfter(int64_t tick) const;

    /// Adds a run of one turn. Returns false if it does not follow from the last turn of this run.
    bool add(const PresetTurns &next);
    /// Forgets turns whose frames are all before this number.
    void forgetBefore(uint64_t number);
    /// The number of stored turns.
    size_t stored() const { return m_stored.size(); }

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_advance, self.m_stored, self.m_spacing, self.m_sinceStored, self.m_last);
        archive.require([&self] { return self.isValid(); });
    }

private:
    bool isValid() const;
    template <class Value> RunPart find(Value value, Value PresetAdvance::Turn::*member) const;

    std::shared_ptr<const PresetAdvance> m_advance;
    std::vector<PresetAdvance::Turn> m_stored;
    uint64_t m_spacing = 1; ///< From one stored turn to the next.
    uint64_t m_sinceStored = 0; ///< Turns after the last stored one.
    PresetAdvance::Turn m_last;
};

} // namespace emulator
