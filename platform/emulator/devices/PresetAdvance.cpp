#include "platform/emulator/devices/PresetAdvance.h"

#include <algorithm>

namespace emulator
{

std::optional<PresetAdvance::Turn> PresetAdvance::after(Turn turn, int64_t until) const
{
    FrameSegment segment = segmentOf(turn);
    for (bool isNext = false;;) {
        const int64_t tick = pulses.tickOf(turn.pulse + 1) + delay;
        const uint64_t begun = segment.begun(tick);
        if (tick > until || (isNext && begun > 0))
            return isNext ? std::optional(turn) : std::nullopt;
        // The frame in progress ends as it began. All triggers before its end count.
        const int64_t start = std::max(tick, segment.end(begun));
        const uint64_t pulse = pulses.pulseAt(std::max(tick, start - 1) - delay);
        const size_t timing = (turn.timing + pulse - turn.pulse) % timings.size();
        if (timing == turn.timing) {
            turn.pulse = pulse;
            continue;
        }
        turn = {start, turn.firstNumber + begun, timing, pulse};
        segment = segmentOf(turn);
        isNext = true;
    }
}

} // namespace emulator
