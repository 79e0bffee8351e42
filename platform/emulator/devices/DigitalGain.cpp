#include "platform/emulator/devices/DigitalGain.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Exposure.h"

namespace emulator
{

using namespace Qt::StringLiterals;

DigitalGain::DigitalGain(Camera &camera, Section &section)
    : Device(camera), m_numPresets(camera.device<Sensor>()->numPresets())
{
    // The limit as the SDK passes it, which is a little above 3.999.
    constexpr Between gains{0, 3.999f};
    constexpr Between offsets{-16383.5, 16383.5};
    m_gains.fill(1);
    addSettings(section,
                {
                    {u"gains"_s, m_gains, gains, Everywhere},
                    {u"offsets"_s, m_offsets, offsets, Everywhere},
                });
}

Status DigitalGain::gain(uint8_t preset, float &factor) const { return fetchOf(m_gains, preset, factor); }

Status DigitalGain::setGain(uint8_t preset, float factor) { return assignTo(m_gains, preset, factor); }

Status DigitalGain::offset(uint8_t preset, float &counts) const { return fetchOf(m_offsets, preset, counts); }

Status DigitalGain::setOffset(uint8_t preset, float counts) { return assignTo(m_offsets, preset, counts); }

Status DigitalGain::fetchOf(const Values &values, uint8_t preset, float &value) const
{
    if (preset >= m_numPresets)
        return Refused;
    value = values[preset];
    return Ok;
}

Status DigitalGain::assignTo(Values &values, uint8_t preset, float value)
{
    if (preset >= m_numPresets)
        return Refused;
    Values changed = values;
    changed[preset] = value;
    return assign(values, changed);
}

void DigitalGain::expose(int preset, image::Exposure &exposure) const
{
    const auto i = static_cast<size_t>(preset);
    exposure.digitalGain = m_gains[i];
    exposure.digitalOffset = m_offsets[i];
}

} // namespace emulator
