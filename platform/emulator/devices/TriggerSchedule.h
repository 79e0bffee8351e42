#pragma once

#include "platform/emulator/devices/PulseTrain.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace emulator
{

/// Where triggers come from, in ticks.
struct TriggerSignal {
    PulseTrain pulses;
    std::optional<int64_t> moment; ///< The only trigger of a source that triggers once after it has been armed.
    uint32_t delay = 0; ///< From a trigger to its effect.
    uint32_t armings = 0; ///< How often the trigger has been armed.
    bool operator==(const TriggerSignal &) const = default;
};

/// The triggers that are still to come, in the order of their effects. All ticks are those of the effects.
class TriggerSchedule
{
public:
    /// Takes over a changed signal, for triggers after `now`. Returns whether the trigger has been armed since the last
    /// update; then it forgets all triggers before, and a trigger at `now` counts too.
    bool update(const TriggerSignal &signal, int64_t now);
    /// Adds a single trigger; `tick` is that of the trigger itself.
    void add(int64_t tick);

    const TriggerSignal &signal() const { return m_signal; }
    std::optional<int64_t> next() const;
    /// The number of the first pulse that has not been removed. For a periodic signal.
    uint64_t nextPulse() const { return m_nextPulse; }
    /// Removes the triggers up to a tick. Returns their number.
    uint64_t takeUntil(int64_t tick);
    /// How often a trigger at `tick` and a pause of `length` ticks repeat exactly until `end`: the number of further
    /// triggers, each the first one after the pause of the one before. 0 if the distance is not always the same.
    uint64_t repeats(int64_t tick, int64_t length, int64_t end) const;
    /// Returns the tick after this number of repetitions of repeats(), and removes the triggers up to it.
    int64_t takeRepeats(int64_t tick, int64_t length, uint64_t count);
    /// Whether single triggers are still to come.
    bool hasSingle() const { return !m_single.empty(); }
    /// Whether all triggers repeat exactly after this number of ticks. Returns false without a periodic signal and
    /// while a single trigger is pending.
    bool repeatsAfter(int64_t ticks) const;
    /// The mean rate in hertz, from `tick` on, of the triggers that are not lost: each is the first one at or after the
    /// end of what the one before has started. `endOf` returns this end for the tick of a trigger. Nothing without a
    /// periodic signal.
    std::optional<double> rate(int64_t tick, const std::function<int64_t(int64_t)> &endOf) const;

private:
    bool isPulse(int64_t tick) const;

    TriggerSignal m_signal;
    uint64_t m_nextPulse = 0;
    bool m_momentTaken = false;
    int64_t m_taken = -1; ///< All triggers up to this tick have been removed.
    std::vector<int64_t> m_single; ///< In order.
};

} // namespace emulator
