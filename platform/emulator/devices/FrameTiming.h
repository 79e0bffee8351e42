#pragma once

#include "platform/emulator/devices/FramePattern.h"
#include "platform/emulator/devices/PulseTrain.h"
#include "platform/emulator/devices/SensorTiming.h"

#include <array>
#include <cstdint>
#include <optional>

namespace emulator
{

/// When frames begin, relative to the first one: the timing of a sensor together with the signal that starts frames.
struct FrameTiming {
    enum Kind {
        Free, ///< Frames follow each other by the clock of the sensor. The pattern counts ticks.
        FrameByPulse, ///< Each frame begins with a pulse. The pattern counts pulses.
        CycleByPulse, ///< The first frame of each cycle begins with a pulse. The pattern counts ticks in a cycle.
    };

    /// No frames.
    FrameTiming() = default;
    /// Without `signal` the frames are free. A signal that does not exist starts no frames.
    FrameTiming(const SensorTiming &sensor, const std::optional<PulseTrain> &signal);

    /// Frames per second, 0 without frames.
    double averageRate(uint32_t ticksPerSecond) const;

    bool operator==(const FrameTiming &) const = default;

    Kind kind = Free;
    FramePattern pattern;
    PulseTrain pulses;
    uint64_t cyclePulses = 0; ///< From one cycle to the next, for CycleByPulse.
    std::array<uint32_t, FramePattern::presets> durations{}; ///< Of a frame of each preset, in ticks.
};

} // namespace emulator
