#include "platform/emulator/devices/SyncOut.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/delays.h"

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uint8_t lastSource = 2;

} // namespace

SyncOut::SyncOut(Camera &camera, Section &section)
    : Device(camera), m_clockFrequency(camera.device<Sensor>()->clockFrequency())
{
    const auto setDelays = [this](const Delays &microseconds) {
        for (size_t preset = 0; preset < maximumPresets; ++preset)
            storeDelay(microseconds[preset], m_clockFrequency, m_delays[preset]);
        return Ok;
    };
    addSettings(section,
                {
                    {u"source"_s, m_source, Between{0, lastSource}, Everywhere},
                    {u"polarity"_s, m_polarity, Between{0, 1}, Everywhere},
                    {u"delays"_s, [this] { return delays(); }, setDelays, delayRange, Everywhere},
                });
}

SyncOut::Delays SyncOut::delays() const
{
    Delays microseconds{};
    std::ranges::transform(m_delays, microseconds.begin(),
                           [this](uint32_t clocks) { return delayOf(clocks, m_clockFrequency); });
    return microseconds;
}

Status SyncOut::delay(uint8_t preset, float &microseconds) const
{
    if (preset >= maximumPresets)
        return Refused;
    microseconds = static_cast<float>(delays()[preset]);
    return Ok;
}

Status SyncOut::setDelay(uint8_t preset, float microseconds)
{
    return preset < maximumPresets ? storeDelay(microseconds, m_clockFrequency, m_delays[preset]) : Refused;
}

} // namespace emulator
