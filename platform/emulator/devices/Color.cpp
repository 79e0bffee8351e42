#include "platform/emulator/devices/Color.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Exposure.h"

namespace emulator
{

using namespace Qt::StringLiterals;

Color::Color(Camera &camera, Section &section)
    : Device(camera), m_numPresets(camera.device<Sensor>()->numPresets()),
      m_number(static_cast<uint8_t>(section.integer(u"number"_s, 1, 1, 2)))
{
    addSettings(section, {{u"selected"_s, m_selected, Between{0, m_number - 1.0}, Everywhere}});
}

Status Color::select(uint8_t preset, uint8_t color)
{
    if (m_number == 1 || preset >= m_numPresets)
        return Refused;
    auto selected = m_selected;
    selected[preset] = color;
    return assign(m_selected, selected);
}

Status Color::selected(uint8_t preset, uint8_t &color) const
{
    if (preset >= m_numPresets)
        return Refused;
    color = static_cast<uint8_t>(m_selected[preset]);
    return Ok;
}

void Color::expose(int preset, image::Exposure &exposure) const
{
    exposure.readout.color = m_selected[static_cast<size_t>(preset)];
    if (exposure.readout.color > 0)
        exposure.band = image::Light::SecondColor;
}

} // namespace emulator
