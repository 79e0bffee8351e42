#include "platform/emulator/devices/DigitalGain.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/presetValues.h"
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

Status DigitalGain::gain(uint8_t preset, float &factor) const { return fetchOf(m_gains, m_numPresets, preset, factor); }

Status DigitalGain::setGain(uint8_t preset, float factor)
{
    return assignOf(m_gains, m_numPresets, preset, factor, [this](const Values &all) { return assign(m_gains, all); });
}

Status DigitalGain::offset(uint8_t preset, float &counts) const
{
    return fetchOf(m_offsets, m_numPresets, preset, counts);
}

Status DigitalGain::setOffset(uint8_t preset, float counts)
{
    return assignOf(m_offsets, m_numPresets, preset, counts,
                    [this](const Values &all) { return assign(m_offsets, all); });
}

void DigitalGain::expose(int preset, image::Exposure &exposure) const
{
    const auto i = static_cast<size_t>(preset);
    exposure.digitalGain = m_gains[i];
    exposure.digitalOffset = m_offsets[i];
}

} // namespace emulator
