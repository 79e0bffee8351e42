#pragma once

#include "platform/emulator/devices/FrameSegment.h"
#include "platform/emulator/devices/PulseTrain.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace emulator
{

/// A periodic trigger that makes the next preset in use the active one. Times are in ticks.
struct PresetAdvance {
    /// The frames of an active preset, until the next preset is active.
    struct Turn {
        int64_t start = 0;
        uint64_t firstNumber = 0;
        size_t timing = 0; ///< A place in `timings`.
        uint64_t pulse = 0; ///< The last one before the next turn that has no effect on this turn.
    };

    std::vector<FrameTiming> timings; ///< Of the presets in use, in the order of their turns.
    PulseTrain pulses; ///< Exists.
    int64_t delay = 0; ///< From a pulse to its effect.

    FrameSegment segmentOf(const Turn &turn) const { return {timings[turn.timing], turn.start}; }
    /// The turn that follows, if its trigger takes effect until this tick. Turns without frames are left out.
    std::optional<Turn> after(Turn turn, int64_t until) const;

    bool operator==(const PresetAdvance &) const = default;
};

} // namespace emulator
