#include "platform/emulator/devices/ImageMode.h"

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

} // namespace emulator
