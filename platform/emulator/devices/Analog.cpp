#include "platform/emulator/devices/Analog.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/image/Exposure.h"

namespace emulator
{

using namespace Qt::StringLiterals;

Analog::Analog(Camera &camera, Section &section) : Device(camera), m_biases(camera.device<Color>()->number())
{
    constexpr Between offsets{-image::Voltages::maximumOffset, image::Voltages::maximumOffset};
    constexpr Between biases{0, image::Voltages::maximumBias};
    constexpr Between skimmings{0, static_cast<float>(image::Voltages::maximumSkimming)};
    addSettings(section,
                {
                    {u"globalOffset"_s, m_globalOffset, offsets, Everywhere},
                    {u"bias"_s, m_bias, biases, Everywhere},
                    {u"skimmingAvailable"_s, m_skimmingAvailable, Profile | OtherClient},
                    Setting(u"skimmingEnabled"_s, m_skimmingEnabled, Everywhere).onlyIf(m_skimmingAvailable),
                    Setting(u"skimmingVoltage"_s, m_skimmingVoltage, skimmings, Everywhere).onlyIf(m_skimmingAvailable),
                });
    if (m_biases > 1)
        addSettings(section, {{u"secondBias"_s, m_secondBias, biases, Everywhere}});
}

Status Analog::setBiasOf(uint8_t index, float millivolts)
{
    if (index >= m_biases)
        return Refused;
    return assign(index == 0 ? m_bias : m_secondBias, millivolts);
}

Status Analog::skimmingLimits(float &minimum, float &maximum) const
{
    if (!m_skimmingAvailable)
        return Refused;
    minimum = 0;
    maximum = static_cast<float>(image::Voltages::maximumSkimming);
    return Ok;
}

void Analog::expose(int, image::Exposure &exposure) const
{
    const bool second = m_biases > 1 && exposure.readout.color > 0;
    exposure.readout.voltages = {
        .globalOffset = m_globalOffset,
        .bias = second ? m_secondBias : m_bias,
        .skimming = m_skimmingAvailable && m_skimmingEnabled ? m_skimmingVoltage : 0,
    };
}

} // namespace emulator
