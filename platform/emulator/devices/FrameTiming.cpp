#include "platform/emulator/devices/FrameTiming.h"

namespace emulator
{

FrameTiming::FrameTiming(const SensorTiming &sensor, const std::optional<PulseTrain> &signal)
{
    if (signal && !signal->exists())
        return;
    if (signal) {
        kind = sensor.superframing ? CycleByPulse : FrameByPulse;
        pulses = *signal;
    }
    FramePattern::Turns turns;
    for (size_t preset = 0; preset < turns.size(); ++preset) {
        const SensorTiming::Preset &values = sensor.presets[preset];
        if (values.repeats == 0)
            continue;
        durations[preset] = signal ? values.shortestWidth : values.width;
        // A pulse period takes at least a tick.
        const auto pulsesOfFrame = [&] { return static_cast<uint32_t>(pulses.pulsesIn(values.shortestWidth)); };
        turns[preset] = {values.repeats, kind == FrameByPulse ? pulsesOfFrame() : durations[preset]};
    }
    pattern = FramePattern(turns, kind == Free && sensor.superframing ? sensor.superframeWidth : 0);
    if (kind == CycleByPulse)
        cyclePulses = pulses.pulsesIn(pattern.cycleWidth());
}

double FrameTiming::averageRate(uint32_t ticksPerSecond) const
{
    const auto frames = static_cast<double>(pattern.framesInCycle());
    if (frames == 0)
        return 0;
    const auto width = static_cast<double>(pattern.cycleWidth());
    switch (kind) {
    case FrameByPulse:
        return pulses.hertz() * frames / width;
    case CycleByPulse:
        return pulses.hertz() * frames / static_cast<double>(cyclePulses);
    default:
        return ticksPerSecond * frames / width;
    }
}

} // namespace emulator
