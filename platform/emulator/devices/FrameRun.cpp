#include "platform/emulator/devices/FrameRun.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace emulator
{

SequenceRun::SequenceRun(std::shared_ptr<const FrameTiming> timing, int64_t start, uint64_t firstNumber,
                         const Trigger &trigger)
    : m_timing(std::move(timing)), m_start(start), m_firstNumber(firstNumber)
{
    if (!trigger.pulses.exists() || start < trigger.delay)
        return;
    m_trigger = trigger;
    m_pulse = trigger.pulses.pulseAt(start - trigger.delay);
}

FrameSegment SequenceRun::sequence(uint64_t index) const
{
    if (m_sequences == 1)
        return {*m_timing, m_start};
    return {*m_timing, m_trigger.pulses.tickOf(m_pulse + index * m_distance) + m_trigger.delay};
}

RunPart SequenceRun::partOf(uint64_t number) const
{
    if (m_sequences == 1)
        return {sequence(0), m_firstNumber};
    const uint64_t index = std::min((number - m_firstNumber) / m_timing->frames, m_sequences - 1);
    const uint64_t first = m_firstNumber + index * m_timing->frames;
    return {sequence(index), first, first + m_timing->frames};
}

uint64_t SequenceRun::firstAfter(int64_t tick) const
{
    uint64_t last = 0;
    if (m_sequences > 1 && tick >= m_trigger.delay) {
        const uint64_t present = m_trigger.pulses.pulseAt(tick - m_trigger.delay);
        last = present < m_pulse ? 0 : std::min((present - m_pulse) / m_distance, m_sequences - 1);
    }
    return m_firstNumber + (last > 0 ? last * m_timing->frames : 0) + sequence(last).begun(tick);
}

bool SequenceRun::add(const SequenceRun &next)
{
    if (m_timing != next.m_timing || !m_trigger.pulses.exists() || m_trigger.pulses != next.m_trigger.pulses
        || m_trigger.delay != next.m_trigger.delay
        || next.m_firstNumber != m_firstNumber + m_sequences * m_timing->frames)
        return false;
    SequenceRun longer = *this;
    if (!longer.repeat(1, m_sequences > 1 ? m_distance : next.m_pulse - m_pulse))
        return false;
    // A sequence that waits for the end of a frame begins after its pulse.
    if (longer.sequence(0).start() != m_start || longer.sequence(m_sequences).start() != next.m_start)
        return false;
    *this = std::move(longer);
    return true;
}

bool SequenceRun::repeat(uint64_t count, uint64_t distance)
{
    if (m_sequences > 1 && distance != m_distance)
        return false;
    m_distance = distance;
    m_sequences += count;
    return true;
}

SequenceRun SequenceRun::takeLast()
{
    --m_sequences;
    SequenceRun last = *this;
    last.m_pulse = m_pulse + m_sequences * m_distance;
    last.m_start = m_trigger.pulses.tickOf(last.m_pulse) + m_trigger.delay;
    last.m_firstNumber = m_firstNumber + m_sequences * m_timing->frames;
    last.m_sequences = 1;
    return last;
}

bool SequenceRun::isValid() const
{
    if (!m_timing || m_start < 0 || m_sequences == 0)
        return false;
    const bool repeats = m_timing->hasFrames() && m_timing->frames != FrameTiming::endless && m_distance > 0
        && m_trigger.pulses.exists();
    return m_sequences == 1 || repeats;
}

PresetTurns::PresetTurns(std::shared_ptr<const PresetAdvance> advance, const PresetAdvance::Turn &first)
    : m_advance(std::move(advance)), m_stored{first}, m_last(first)
{
}

bool PresetTurns::isValid() const
{
    const auto exists = [this](const PresetAdvance::Turn &turn) {
        return turn.start >= 0 && turn.timing < m_advance->timings.size();
    };
    return m_advance && !m_stored.empty() && m_spacing > 0 && exists(m_last) && std::ranges::all_of(m_stored, exists)
        && std::ranges::is_sorted(m_stored, {}, &PresetAdvance::Turn::firstNumber)
        && m_stored.back().firstNumber <= m_last.firstNumber;
}

bool PresetTurns::uses(int preset) const
{
    return std::ranges::any_of(m_advance->timings, [preset](const FrameTiming &timing) { return timing.uses(preset); });
}

template <class Value> RunPart PresetTurns::find(Value value, Value PresetAdvance::Turn::*member) const
{
    if (value >= m_last.*member)
        return {m_advance->segmentOf(m_last), m_last.firstNumber};
    const auto later = std::ranges::upper_bound(m_stored, value, {}, member);
    PresetAdvance::Turn turn = later == m_stored.begin() ? m_stored.front() : *std::prev(later);
    for (;;) {
        // It exists, since the last turn is later.
        const PresetAdvance::Turn next = m_advance->after(turn, m_last.start).value_or(m_last);
        if (next.*member > value)
            return {m_advance->segmentOf(turn), turn.firstNumber, next.firstNumber};
        turn = next;
    }
}

RunPart PresetTurns::partOf(uint64_t number) const { return find(number, &PresetAdvance::Turn::firstNumber); }

uint64_t PresetTurns::firstAfter(int64_t tick) const
{
    const RunPart part = find(tick, &PresetAdvance::Turn::start);
    return std::min(part.firstNumber + part.segment.begun(tick), part.end);
}

bool PresetTurns::add(const PresetTurns &next)
{
    const PresetAdvance::Turn &wanted = next.m_stored.front();
    const auto found = m_advance == next.m_advance ? m_advance->after(m_last, wanted.start) : std::nullopt;
    if (!found || found->start != wanted.start || found->firstNumber != wanted.firstNumber
        || found->timing != wanted.timing)
        return false;
    m_last = *found;
    if (++m_sinceStored < m_spacing)
        return true;
    if (m_stored.size() == mostStored) {
        // Every second one is kept. The last one is not among them.
        for (size_t place = 0; place < mostStored / 2; ++place)
            m_stored[place] = m_stored[2 * place];
        m_stored.resize(mostStored / 2);
        m_spacing *= 2;
    }
    m_stored.push_back(m_last);
    m_sinceStored = 0;
    return true;
}

void PresetTurns::forgetBefore(uint64_t number)
{
    const auto later = std::ranges::upper_bound(m_stored, number, {}, &PresetAdvance::Turn::firstNumber);
    if (later != m_stored.begin())
        m_stored.erase(m_stored.begin(), std::prev(later));
}

} // namespace emulator
