#include "platform/emulator/devices/FrameSync.h"

namespace emulator
{

using namespace Qt::StringLiterals;

FrameSync::FrameSync(Camera &camera, Section &section) : Device(camera), m_triLevel(section.flag(u"triLevel"_s, false))
{
    addSettings(section,
                {{u"source"_s, m_source, Between{Internal, double(m_triLevel ? TriLevel : Video)}, Everywhere}});
}

} // namespace emulator
