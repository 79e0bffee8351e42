#include "platform/emulator/devices/ImageMode.h"

#include "platform/emulator/image/Exposure.h"

namespace emulator
{

using namespace Qt::StringLiterals;

ImageMode::ImageMode(Camera &camera, Section &section) : Device(camera)
{
    addSettings(section,
                {
                    {u"reverted"_s, m_reverted, Everywhere},
                    {u"inverted"_s, m_inverted, Everywhere},
                    {u"hsmAvailable"_s, m_hsmAvailable, Profile | OtherClient},
                    Setting(u"hsmEnabled"_s, m_hsmEnabled, Everywhere).onlyIf(m_hsmAvailable),
                });
}

void ImageMode::expose(int, image::Exposure &exposure) const
{
    exposure.optics.mirrored = m_reverted;
    exposure.optics.inverted = m_inverted;
    exposure.readout.highSensitivity = m_hsmAvailable && m_hsmEnabled;
}

} // namespace emulator
