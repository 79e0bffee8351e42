#pragma once

#include "platform/emulator/devices/FramePattern.h"
#include "platform/emulator/devices/PulseTrain.h"
#include "platform/emulator/devices/SensorTiming.h"

#include <array>
#include <cstdint>
#include <optional>

namespace emulator
{

/// A signal that starts frames.
struct FrameSignal {
    PulseTrain pulses;
    uint32_t delay = 0; ///< Ticks from a pulse to what it starts.
    /// A pulse ends the integration of a frame and starts its readout. If false, it starts the integration.
    bool startsReadout = false;
    bool operator==(const FrameSignal &) const = default;
};

/// When frames begin, relative to the first one: the timing of a sensor together with the signal that starts frames.
struct FrameTiming {
    enum Kind {
        Free, ///< Frames follow each other by the clock of the sensor. The pattern counts ticks.
        FrameByPulse, ///< Each frame has a pulse of its own. The pattern counts pulses.
        CycleByPulse, ///< The first frame of each cycle has a pulse. The pattern counts ticks in a cycle.
    };

    static constexpr uint64_t endless = UINT64_MAX;

    /// No frames.
    FrameTiming() = default;
    /// Without `signal` the frames are free. A signal that does not exist starts no frames. The frames end after this
    /// number of cycles, which must be above 0.
    FrameTiming(const SensorTiming &sensor, const std::optional<FrameSignal> &signal, uint64_t cycles = endless);

    bool hasFrames() const { return frames > 0; }
    bool uses(int preset) const { return pattern.turns()[static_cast<size_t>(preset)].repeats > 0; }
    /// Frames per second, 0 without frames.
    double averageRate(uint32_t ticksPerSecond) const;

    bool operator==(const FrameTiming &) const = default;

    Kind kind = Free;
    FramePattern pattern;
    uint64_t frames = 0; ///< All frames; `endless` if they do not end.
    FrameSignal signal; ///< Not for Free.
    uint64_t cyclePulses = 0; ///< From one cycle to the next, for CycleByPulse.
    std::array<uint32_t, maximumPresets> durations{}; ///< Of a frame of each preset, in ticks.
    std::array<uint32_t, maximumPresets> integrations{}; ///< Of a frame of each preset, in ticks.
};

} // namespace emulator
