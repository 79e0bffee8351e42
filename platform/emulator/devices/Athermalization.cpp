#include "platform/emulator/devices/Athermalization.h"

namespace emulator
{

using namespace Qt::StringLiterals;

Athermalization::Athermalization(Camera &camera, Section &section) : Device(camera)
{
    addSettings(section,
                {
                    {u"available"_s, m_available, Profile | OtherClient},
                    Setting(u"enabled"_s, m_enabled, Everywhere).onlyIf(m_available),
                });
}

} // namespace emulator
