#include "platform/emulator/devices/DetectorGain.h"

#include "platform/emulator/image/Exposure.h"

namespace emulator
{

using namespace Qt::StringLiterals;

DetectorGain::DetectorGain(Camera &camera, Section &section)
    : Device(camera), m_levels(section.integer(u"levels"_s, 3, 1, UINT8_MAX)), m_names(section.texts(u"names"_s, {}))
{
    addSettings(section,
                {
                    {u"level"_s, m_level, Between{0, m_levels - 1.0}, Everywhere},
                    {u"named"_s, m_named, Profile | OtherClient},
                });
}

Status DetectorGain::name(uint8_t level, std::string &text) const
{
    if (level >= m_levels || level >= m_names.size())
        return Refused;
    text = m_names.at(level).toStdString();
    return Ok;
}

void DetectorGain::expose(int, image::Exposure &exposure) const { exposure.readout.gainLevel = m_level; }

} // namespace emulator
