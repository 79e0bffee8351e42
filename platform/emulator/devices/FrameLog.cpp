#include "platform/emulator/devices/FrameLog.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace emulator
{

namespace
{

// Products of a time of years, a frequency and a million do not fit into 64 bits.
__extension__ using Wide = __int128;

constexpr int64_t million = 1'000'000;

} // namespace

uint64_t FrameLog::firstNumberOf(const Run &run)
{
    return std::visit([](const auto &any) { return any.firstNumber(); }, run);
}

int64_t FrameLog::startOf(const Run &run)
{
    return std::visit([](const auto &any) { return any.start(); }, run);
}

/// Whether each entry has another first frame than the one before.
bool FrameLog::runsAreOrdered() const
{
    const auto isNotLater = [](const Run &run, const Run &next) { return firstNumberOf(run) >= firstNumberOf(next); };
    return std::ranges::adjacent_find(m_runs, isNotLater) == m_runs.end();
}

void FrameLog::start(uint32_t ticksPerSecond, int64_t zero)
{
    m_runs.clear();
    m_frequency = ticksPerSecond;
    m_zero = zero;
    m_shortest = 0;
}

/// An entry follows whose frames count from `firstNumber`.
void FrameLog::prepare(const FrameTiming &timing, uint64_t firstNumber)
{
    for (const uint32_t duration : timing.durations)
        if (duration > 0)
            m_shortest = m_shortest > 0 ? std::min<int64_t>(m_shortest, duration) : duration;
    // No frame has begun in the last entry.
    if (!m_runs.empty() && firstNumberOf(m_runs.back()) == firstNumber)
        m_runs.pop_back();
}

void FrameLog::begin(const FrameSegment &segment, uint64_t firstNumber, const SequenceRun::Trigger &trigger)
{
    prepare(segment.timing(), firstNumber);
    SequenceRun run(share(segment.timing()), segment.start(), firstNumber, trigger);
    auto *const last = m_runs.empty() ? nullptr : std::get_if<SequenceRun>(&m_runs.back());
    if (!last || !last->add(run))
        m_runs.emplace_back(std::move(run));
}

void FrameLog::begin(const FrameSegment &segment, const std::shared_ptr<const PresetAdvance> &advance,
                     const PresetAdvance::Turn &turn)
{
    prepare(segment.timing(), turn.firstNumber);
    // The last entry is final now: one of its frames has begun.
    if (m_runs.size() > 1) {
        auto *const before = std::get_if<PresetTurns>(&m_runs[m_runs.size() - 2]);
        const auto *const last = std::get_if<PresetTurns>(&m_runs.back());
        if (before && last && before->add(*last))
            m_runs.pop_back();
    }
    m_runs.emplace_back(PresetTurns(advance, turn));
}

void FrameLog::repeat(uint64_t count, uint64_t pulses)
{
    auto &last = std::get<SequenceRun>(m_runs.back());
    if (last.repeat(count, pulses))
        return;
    SequenceRun repeated = last.takeLast();
    repeated.repeat(count, pulses);
    m_runs.emplace_back(std::move(repeated));
}

/// Returns this timing, the same object as for a recent entry if possible.
std::shared_ptr<const FrameTiming> FrameLog::share(const FrameTiming &timing)
{
    for (const auto &known : m_timings)
        if (known && *known == timing)
            return known;
    auto &place = m_timings[m_oldestTiming++ % m_timings.size()];
    return place = std::make_shared<const FrameTiming>(timing);
}

int64_t FrameLog::timeOf(int64_t tick) const
{
    return m_zero + static_cast<int64_t>(Wide(tick) * million / m_frequency);
}

size_t FrameLog::placeOf(uint64_t number) const
{
    const auto later = std::ranges::upper_bound(m_runs, number, {}, &FrameLog::firstNumberOf);
    return static_cast<size_t>(later - m_runs.begin()) - 1;
}

RunPart FrameLog::partOf(size_t place, uint64_t number) const
{
    RunPart part = std::visit([number](const auto &run) { return run.partOf(number); }, m_runs[place]);
    if (place + 1 < m_runs.size())
        part.end = std::min(part.end, firstNumberOf(m_runs[place + 1]));
    return part;
}

uint64_t FrameLog::firstAfter(int64_t microseconds) const
{
    // The last tick whose time, rounded down, is not later.
    const Wide end = Wide(microseconds - m_zero + 1) * m_frequency;
    const auto tick = static_cast<int64_t>((end + million - 1) / million - 1);
    const auto next = std::ranges::upper_bound(m_runs, tick, {}, &FrameLog::startOf);
    if (microseconds < m_zero || next == m_runs.begin())
        return firstNumberOf(m_runs.front());
    const uint64_t number = std::visit([tick](const auto &run) { return run.firstAfter(tick); }, *std::prev(next));
    return next == m_runs.end() ? number : std::min(number, firstNumberOf(*next));
}

FrameStart FrameLog::frame(uint64_t number) const
{
    const RunPart part = partOf(placeOf(number), number);
    const uint64_t index = number - part.firstNumber;
    const int64_t tick = part.segment.tickOf(index);
    return {number, part.segment.presetOf(index), tick, timeOf(tick)};
}

bool FrameLog::uses(int preset, uint64_t first, uint64_t last) const
{
    for (size_t place = placeOf(first); place < m_runs.size() && firstNumberOf(m_runs[place]) <= last; ++place)
        if (std::visit([preset](const auto &run) { return run.uses(preset); }, m_runs[place]))
            return true;
    return false;
}

void FrameLog::beginnings(uint64_t first, std::span<int64_t> times) const
{
    for (size_t done = 0; done < times.size();) {
        const RunPart part = partOf(placeOf(first + done), first + done);
        const uint64_t count = std::min<uint64_t>(times.size() - done, part.end - (first + done));
        for (const uint64_t end = done + count; done < end; ++done)
            times[done] = timeOf(part.segment.tickOf(first + done - part.firstNumber));
    }
}

int64_t FrameLog::shortestFrame() const { return static_cast<int64_t>(Wide(m_shortest) * million / m_frequency); }

void FrameLog::forgetBefore(uint64_t number)
{
    if (m_runs.empty())
        return;
    const auto later = std::ranges::upper_bound(m_runs, number, {}, &FrameLog::firstNumberOf);
    if (later != m_runs.begin())
        m_runs.erase(m_runs.begin(), std::prev(later));
    if (auto *const turns = std::get_if<PresetTurns>(&m_runs.front()))
        turns->forgetBefore(number);
}

size_t FrameLog::bytes() const
{
    std::set<const FrameTiming *> timings;
    size_t bytes = m_runs.size() * sizeof(Run);
    for (const Run &run : m_runs) {
        if (const auto *const turns = std::get_if<PresetTurns>(&run))
            bytes += turns->stored() * sizeof(PresetAdvance::Turn);
        else
            timings.insert(std::get<SequenceRun>(run).timing().get());
    }
    return bytes + timings.size() * sizeof(FrameTiming);
}

} // namespace emulator
