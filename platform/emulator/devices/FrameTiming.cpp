#include "platform/emulator/devices/FrameTiming.h"

#include <algorithm>

namespace emulator
{

FrameTiming::FrameTiming(const SensorTiming &sensor, const std::optional<FrameSignal> &frameSignal, uint64_t cycles)
{
    if (frameSignal && !frameSignal->pulses.exists())
        return;
    if (frameSignal) {
        kind = sensor.superframing ? CycleByPulse : FrameByPulse;
        signal = *frameSignal;
    }
    FramePattern::Turns turns;
    for (size_t preset = 0; preset < turns.size(); ++preset) {
        const SensorTiming::Preset &values = sensor.presets[preset];
        if (values.repeats == 0)
            continue;
        durations[preset] = frameSignal ? values.shortestWidth : values.width;
        // The integration matters only where a pulse ends it.
        integrations[preset] = signal.startsReadout ? values.integration : 0;
        const uint64_t width = kind == FrameByPulse ? signal.pulses.pulsesIn(values.shortestWidth) : durations[preset];
        turns[preset] = {values.repeats, static_cast<uint32_t>(std::min<uint64_t>(width, UINT32_MAX))};
    }
    pattern = FramePattern(turns, kind == Free && sensor.superframing ? sensor.superframeWidth : 0);
    if (kind == CycleByPulse)
        cyclePulses = signal.pulses.pulsesIn(pattern.cycleWidth());
    if (pattern.framesInCycle() > 0)
        frames = cycles == endless ? endless : cycles * pattern.framesInCycle();
}

double FrameTiming::averageRate(uint32_t ticksPerSecond) const
{
    if (!hasFrames())
        return 0;
    const auto inCycle = static_cast<double>(pattern.framesInCycle());
    const auto width = static_cast<double>(pattern.cycleWidth());
    switch (kind) {
    case FrameByPulse:
        return signal.pulses.hertz() * inCycle / width;
    case CycleByPulse:
        return signal.pulses.hertz() * inCycle / static_cast<double>(cyclePulses);
    default:
        return ticksPerSecond * inCycle / width;
    }
}

} // namespace emulator
