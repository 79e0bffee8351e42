#include "platform/emulator/devices/FrameClock.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/FrameLog.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Trigger.h"

#include <algorithm>
#include <bit>

namespace emulator
{

namespace
{

// About 300 years in milliseconds. The ticks of this time fit into 64 bits.
constexpr int64_t longestRun = 10'000'000'000'000;

/// value * multiplier / divisor, rounded down, without a product of value and multiplier.
constexpr int64_t scaled(int64_t value, int64_t multiplier, int64_t divisor)
{
    return value / divisor * multiplier + value % divisor * multiplier / divisor;
}

} // namespace

FrameClock::FrameClock(Camera &camera, Section &)
    : Device(camera), m_sensor(*camera.device<Sensor>()), m_sync(*camera.device<FrameSync>()),
      m_trigger(*camera.device<Trigger>())
{
}

std::optional<FrameStart> FrameClock::newest(int preset, int64_t microsecondsAgo)
{
    updateFrameTiming();
    const int64_t tick = m_now - scaled(microsecondsAgo, m_sensor.clockFrequency(), 1'000'000);
    if (const auto index = m_segment.newest(preset, m_segment.begun(tick)))
        return frameAt(*index);
    const bool exists = preset >= 0 && preset < maximumPresets;
    return exists ? m_before[static_cast<size_t>(preset)] : std::nullopt;
}

std::optional<FrameStart> FrameClock::frame(uint64_t number)
{
    updateFrameTiming();
    if (number >= m_firstNumber) {
        const uint64_t index = number - m_firstNumber;
        return index < m_segment.begun(m_now) ? std::optional(frameAt(index)) : std::nullopt;
    }
    const auto found = std::ranges::find_if(
        m_before, [number](const std::optional<FrameStart> &known) { return known && known->number == number; });
    return found == m_before.end() ? std::nullopt : *found;
}

double FrameClock::averageRate()
{
    updateFrameTiming();
    const uint32_t frequency = m_sensor.clockFrequency();
    if (!m_start) {
        const uint8_t mode = m_trigger.mode();
        return mode == Trigger::FreeRun || mode == Trigger::PresetAdvance ? timing().averageRate(frequency) : 0;
    }
    const FrameTiming &present = m_segment.timing();
    if (present.frames == FrameTiming::endless || !present.hasFrames())
        return present.averageRate(frequency);
    const int64_t end = m_segment.end(present.frames);
    const auto endOf = [&present](int64_t tick) { return FrameSegment(present, tick).end(present.frames); };
    if (const auto sequences = m_triggers.rate(end, endOf))
        return *sequences * static_cast<double>(present.frames);
    return m_now < end ? present.averageRate(frequency) : 0;
}

double FrameClock::cycleSeconds()
{
    const double rate = averageRate();
    const FrameTiming &present = m_segment.timing();
    const uint64_t frames = present.frames == FrameTiming::endless ? present.pattern.framesInCycle() : present.frames;
    return rate > 0 ? static_cast<double>(frames) / rate : 0;
}

void FrameClock::updateFrameTiming()
{
    if (!m_start)
        return;
    m_time = std::max(m_time, Clock::now());
    m_now = std::max(m_now, tickAt(m_time));
    runTriggers();
    takeSettings();
}

void FrameClock::trigger()
{
    updateFrameTiming();
    if (!m_start)
        return;
    m_triggers.add(m_now);
    runTriggers();
}

/// Begins a segment at a tick, or after the frame in progress.
void FrameClock::begin(const FrameTiming &timing, int64_t tick)
{
    const uint64_t count = m_segment.begun(tick);
    for (size_t preset = 0; preset < m_before.size(); ++preset)
        if (const auto index = m_segment.newest(static_cast<int>(preset), count))
            m_before[preset] = frameAt(*index);
    m_firstNumber += count;
    m_segment = FrameSegment(timing, std::max(tick, m_segment.end(count)));
    writeSegment();
}

std::optional<int64_t> FrameClock::time() const { return m_start ? std::optional(m_time) : std::nullopt; }

void FrameClock::writeTo(FrameLog *log)
{
    m_log = log;
    if (!log)
        return;
    log->start(m_sensor.clockFrequency(), *m_start * 1000);
    updateAdvance();
    writeSegment();
}

void FrameClock::writeSegment()
{
    if (!m_log)
        return;
    if (m_advance) {
        const auto found = std::ranges::find(m_advance->timings, m_segment.timing());
        if (found != m_advance->timings.end()) {
            const auto place = static_cast<size_t>(found - m_advance->timings.begin());
            m_log->begin(m_segment, m_advance, {m_segment.start(), m_firstNumber, place, m_triggers.nextPulse() - 1});
            return;
        }
    }
    const TriggerSignal &signal = m_triggers.signal();
    const bool isSequence = m_mode == Trigger::TriggeredSequence;
    m_log->begin(m_segment, m_firstNumber,
                 isSequence ? SequenceRun::Trigger{signal.pulses, signal.delay} : SequenceRun::Trigger());
}

/// Describes the present turns of the presets for the log.
void FrameClock::updateAdvance()
{
    const TriggerSignal &signal = m_triggers.signal();
    if (!m_log || m_mode != Trigger::PresetAdvance || !signal.pulses.exists()) {
        m_advance.reset();
        return;
    }
    PresetAdvance present{{}, signal.pulses, signal.delay};
    for (int preset = 0; preset < m_sensor.numPresets(); ++preset)
        if (uint32_t count = 0; m_sensor.dwellCount(preset, count) == Ok && count > 0)
            present.timings.push_back(timing(m_sensor.timingOf(preset)));
    if (!m_advance || *m_advance != present)
        m_advance = std::make_shared<const PresetAdvance>(std::move(present));
}

void FrameClock::runTriggers()
{
    std::optional<Effects> earlier;
    uint64_t count = 0;
    for (auto tick = m_triggers.next(); tick && *tick <= m_now; tick = m_triggers.next()) {
        if (m_triggers.hasSingle()) {
            // The effects of a single trigger do not repeat.
            earlier.reset();
            count = 0;
        } else if (earlier && skipPeriods(*earlier, *tick)) {
            continue;
        } else if (std::has_single_bit(++count)) {
            // Kept for longer and longer, so that a period of any length is found.
            earlier = Effects{*tick, m_sensor.activePreset(), m_segment, m_firstNumber, m_advances, m_before};
        }
        runTrigger(*tick);
    }
    // The queue keeps no more events.
    for (; m_advances > 0; m_advances = std::min<uint64_t>(m_advances, EventQueue::capacity) - 1)
        camera().device<EventQueue>()->push(ZVT_EVENT_SETTINGS_CHANGED);
}

void FrameClock::runTrigger(int64_t tick)
{
    switch (m_mode) {
    case Trigger::TriggeredSequence:
        startSequence(tick);
        break;
    case Trigger::PresetAdvance:
        advancePreset(tick);
        break;
    default:
        if (m_waiting) {
            m_waiting = false;
            begin(timing(), tick);
        }
        m_triggers.takeUntil(m_now);
    }
}

/// Skips whole periods if everything repeats since an earlier trigger. `tick` is that of the next trigger. Returns
/// whether it has skipped any.
bool FrameClock::skipPeriods(const Effects &earlier, int64_t tick)
{
    const int64_t period = tick - earlier.tick;
    const int64_t count = (m_now - tick) / period;
    if (count == 0 || m_log || m_sensor.activePreset() != earlier.preset || !m_triggers.repeatsAfter(period)
        || !m_segment.repeats(earlier.segment, earlier.tick, period))
        return false;
    const int64_t ticks = count * period;
    const auto periods = static_cast<uint64_t>(count);
    const uint64_t frames = periods * (m_firstNumber - earlier.firstNumber);
    for (size_t preset = 0; preset < m_before.size(); ++preset)
        if (auto &frame = m_before[preset]; frame != earlier.before[preset])
            frame = frameStart(frame->number + frames, frame->preset, frame->tick + ticks);
    if (m_segment.start() != earlier.segment.start())
        m_segment = FrameSegment(m_segment.timing(), m_segment.start() + ticks);
    m_firstNumber += frames;
    m_advances += periods * (m_advances - earlier.advances);
    m_triggers.takeUntil(tick + ticks - 1);
    return true;
}

void FrameClock::startSequence(int64_t tick)
{
    const int64_t busyUntil = m_waiting ? tick : m_segment.end(m_segment.timing().frames);
    if (tick < busyUntil) {
        m_triggers.takeUntil(std::min(busyUntil - 1, m_now));
        return;
    }
    m_waiting = false;
    const FrameTiming sequence = timing();
    begin(sequence, tick);
    if (!sequence.hasFrames()) {
        m_triggers.takeUntil(m_now);
        return;
    }
    m_triggers.takeUntil(tick);
    // Many sequences that follow each other in the same way need no loop.
    const int64_t length = m_segment.end(sequence.frames) - m_segment.start();
    const uint64_t repeats
        = sequence.kind == FrameTiming::Free && m_segment.start() == tick ? m_triggers.repeats(tick, length, m_now) : 0;
    if (repeats > 1) {
        if (m_log)
            m_log->repeat(repeats - 1, m_triggers.signal().pulses.pulsesIn(static_cast<uint64_t>(length)));
        // The last one begins by the loop, so that the newest frames before it are known.
        m_segment = FrameSegment(sequence, m_triggers.takeRepeats(tick, length, repeats - 1));
        m_firstNumber += (repeats - 1) * sequence.frames;
    }
}

void FrameClock::advancePreset(int64_t tick)
{
    const int64_t start = std::max(tick, m_segment.end(m_segment.begun(tick)));
    // Only the last of the triggers before the next frame matters.
    const int64_t last = m_segment.timing().hasFrames() ? std::max(tick, std::min(start - 1, m_now)) : m_now;
    const uint64_t count = m_triggers.takeUntil(last);
    if (m_sensor.advanceActivePreset(count))
        m_advances += count;
    if (const FrameTiming present = timing(); present != m_segment.timing())
        begin(present, tick);
}

void FrameClock::takeSettings()
{
    m_mode = m_trigger.mode();
    if (m_triggers.update(m_trigger.signal(*m_start), m_now))
        m_waiting = m_mode == Trigger::TriggeredFreeRun || m_mode == Trigger::TriggeredSequence;
    updateAdvance();
    FrameTiming present = m_waiting ? FrameTiming() : timing();
    if (present != m_segment.timing()) {
        if (m_mode == Trigger::TriggeredSequence) {
            m_waiting = true;
            present = FrameTiming();
        }
        if (present != m_segment.timing())
            begin(present, m_now);
    }
    runTriggers();
}

void FrameClock::connectionChanged(bool connected)
{
    if (!connected || m_start)
        return;
    m_start = Clock::now();
    m_time = *m_start;
    updateFrameTiming();
}

/// The timing of frames that need no trigger or have been triggered.
FrameTiming FrameClock::timing() const
{
    return timing(m_trigger.mode() == Trigger::PresetAdvance ? m_sensor.timingOf(m_sensor.activePreset())
                                                             : m_sensor.timing());
}

FrameTiming FrameClock::timing(const SensorTiming &sensor) const
{
    std::optional<FrameSignal> signal;
    if (m_sync.source() != FrameSync::Internal)
        signal = FrameSignal{{m_sync.externalRate(), m_sensor.clockFrequency()},
                             m_sync.delayClocks(),
                             m_sync.mode() == FrameSync::StartsReadout};
    return {sensor, signal,
            m_trigger.mode() == Trigger::TriggeredSequence ? m_trigger.sequenceCount() : FrameTiming::endless};
}

int64_t FrameClock::tickAt(int64_t time) const
{
    const int64_t milliseconds = std::clamp<int64_t>(time - *m_start, 0, longestRun);
    return scaled(milliseconds, m_sensor.clockFrequency(), 1000);
}

FrameStart FrameClock::frameAt(uint64_t index) const
{
    return frameStart(m_firstNumber + index, m_segment.presetOf(index), m_segment.tickOf(index));
}

FrameStart FrameClock::frameStart(uint64_t number, int preset, int64_t tick) const
{
    return {number, preset, tick, *m_start * 1000 + scaled(tick, 1'000'000, m_sensor.clockFrequency())};
}

} // namespace emulator
