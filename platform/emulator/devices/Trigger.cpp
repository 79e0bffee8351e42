#include "platform/emulator/devices/Trigger.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/delays.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double lowestRate = 0.01;
constexpr double highestRate = 100'000;
constexpr uint32_t mostSequences = 1'000'000;

constexpr std::array<uint16_t, 6> firstTime{1, 0, 0, 0, 0, 0};
constexpr std::array<uint16_t, 6> lastTime{366, 23, 59, 59, 999, 999};

Refusal checkTime(const std::array<uint16_t, 6> &time)
{
    for (size_t part = 0; part < time.size(); ++part)
        if (time[part] < firstTime[part] || time[part] > lastTime[part])
            return u"must be a day of the year, hour, minute, second, millisecond and microsecond"_s;
    return {};
}

} // namespace

Trigger::Trigger(Camera &camera, Section &section)
    : Device(camera), m_sensor(*camera.device<Sensor>()), m_sync(*camera.device<FrameSync>()),
      m_clock(*camera.device<CameraClock>())
{
    const auto arm = [this] { rearm(); };
    const auto modeIsPossible = [this](uint8_t mode) { return checkMode(mode); };
    addSettings(section,
                {
                    Setting(u"mode"_s, m_mode, {Between{FreeRun, PresetAdvance}, modeIsPossible}, Everywhere).then(arm),
                    Setting(u"source"_s, m_source, Between{Internal, Time}, Everywhere).then(arm),
                    delaySetting(u"delay"_s, m_delay, m_sensor.clockFrequency()),
                    {u"polarity"_s, m_polarity, Between{0, 1}, Everywhere},
                    {u"internalRate"_s, m_internalRate, Between{lowestRate, highestRate}, Everywhere},
                    {u"sequenceCount"_s, m_sequenceCount, Between{1, mostSequences}, Everywhere},
                    {u"time"_s, m_time, checkTime, Everywhere},
                });
    rearm();
}

Refusal Trigger::checkMode(uint8_t mode) const
{
    const bool possible = mode != PresetAdvance || m_sensor.sequencingMode() == Sensor::PresetSequencing;
    return possible ? Refusal() : u"needs preset sequencing"_s;
}

float Trigger::delay() const { return static_cast<float>(delayOf(m_delay, m_sensor.clockFrequency())); }

Status Trigger::setDelay(float microseconds) { return storeDelay(microseconds, m_sensor.clockFrequency(), m_delay); }

CameraClock::IrigTime Trigger::time() const
{
    const auto byte = [this](size_t part) { return static_cast<uint8_t>(m_time[part]); };
    return {0, m_time[0], byte(1), byte(2), byte(3), m_time[4], m_time[5]};
}

Status Trigger::setTime(const CameraClock::IrigTime &time)
{
    return assign(m_time, {time.day, time.hour, time.minute, time.second, time.millisecond, time.microsecond});
}

Status Trigger::softwareTrigger()
{
    if (m_mode == FreeRun || m_source != Software)
        return Refused;
    camera().device<FrameClock>()->trigger();
    return Ok;
}

void Trigger::inputPulse()
{
    if (m_mode != FreeRun && m_source == External)
        camera().device<FrameClock>()->trigger();
}

void Trigger::rearm()
{
    ++m_armings;
    m_armedAt = Clock::now();
}

void Trigger::sequencingChanged()
{
    if (!checkMode(m_mode).isEmpty())
        setMode(FreeRun);
}

TriggerSignal Trigger::signal(int64_t start) const
{
    TriggerSignal signal{{}, std::nullopt, m_delay, m_armings};
    if (m_mode == FreeRun)
        return signal;
    const uint32_t frequency = m_sensor.clockFrequency();
    if (m_source == Internal)
        signal.pulses = PulseTrain::every(static_cast<uint64_t>(std::llround(frequency / m_internalRate)), frequency);
    else if (m_source == External)
        signal.pulses = PulseTrain(m_sync.triggerRate(), frequency);
    else if (m_source == Time)
        signal.moment = momentTick(start);
    return signal;
}

/// The first tick from which the IRIG time is the time of the trigger or later.
int64_t Trigger::momentTick(int64_t start) const
{
    const int64_t moment = m_clock.nextIrigTime(time(), m_armedAt * 1000) - start * 1000;
    // Products of a time of years and the frequency do not fit into 64 bits.
    const int64_t seconds = moment / 1'000'000;
    const int64_t rest = std::max<int64_t>(moment % 1'000'000, 0);
    const int64_t frequency = m_sensor.clockFrequency();
    return std::max<int64_t>(seconds * frequency + (rest * frequency + 999'999) / 1'000'000, 0);
}

} // namespace emulator
