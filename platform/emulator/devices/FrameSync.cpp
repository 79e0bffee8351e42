#include "platform/emulator/devices/FrameSync.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Trigger.h"
#include "platform/emulator/devices/delays.h"

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

// Not above the lowest clock frequency of a sensor: each pulse of the signal has a clock of its own.
constexpr double maximumRate = 1e6;

} // namespace

FrameSync::FrameSync(Camera &camera, Section &section)
    : Device(camera), m_sensor(*camera.device<Sensor>()), m_triLevel(section.flag(u"triLevel"_s, false))
{
    addSettings(
        section,
        {
            Setting(u"source"_s, m_source, Between{Internal, double(m_triLevel ? TriLevel : Video)}, Everywhere)
                .onlyIf([this] { return !m_sensor.framesAreHeld(); }),
            {u"mode"_s, [this] { return mode(); }, [this](uint8_t mode) { return setMode(mode); },
             Between{StartsIntegration, StartsReadout}, Profile | OtherClient},
            delaySetting(u"delay"_s, m_delay, m_sensor.clockFrequency()),
            {u"polarity"_s, m_polarity, Between{0, 1}, Everywhere},
            {u"externalRate"_s, m_externalRate, Between{0, maximumRate}, Profile | OtherClient},
            {u"triggerRate"_s, m_triggerRate, Between{0, maximumRate}, Profile | OtherClient},
            {u"trigger"_s, [] { return false; }, [this](bool pulse) { return pulseTriggerInput(pulse); }, OtherClient},
        });
}

uint8_t FrameSync::mode() const { return m_sensor.syncStartsReadout() ? StartsReadout : StartsIntegration; }

Status FrameSync::setMode(uint8_t mode)
{
    if (mode > StartsReadout || m_sensor.framesAreHeld())
        return Refused;
    m_sensor.setSyncStartsReadout(mode == StartsReadout);
    return Ok;
}

float FrameSync::delay() const { return static_cast<float>(delayOf(m_delay, m_sensor.clockFrequency())); }

Status FrameSync::setDelay(float microseconds) { return storeDelay(microseconds, m_sensor.clockFrequency(), m_delay); }

Status FrameSync::pulseTriggerInput(bool pulse)
{
    if (pulse)
        camera().device<Trigger>()->inputPulse();
    return Ok;
}

} // namespace emulator
