#include "platform/emulator/devices/FrameSync.h"

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

// Not above the lowest clock frequency of a sensor: each pulse of the signal has a clock of its own.
constexpr double maximumRate = 1e6;

} // namespace

FrameSync::FrameSync(Camera &camera, Section &section) : Device(camera), m_triLevel(section.flag(u"triLevel"_s, false))
{
    addSettings(section,
                {
                    {u"source"_s, m_source, Between{Internal, double(m_triLevel ? TriLevel : Video)}, Everywhere},
                    {u"externalRate"_s, m_externalRate, Between{0, maximumRate}, Profile | OtherClient},
                });
}

} // namespace emulator
