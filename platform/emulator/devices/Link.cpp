#include "platform/emulator/devices/Link.h"

#include "platform/emulator/image/hashes.h"

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uint32_t million = 1'000'000;
constexpr double mostBytesPerSecond = 1e12;

} // namespace

Link::Link(Camera &camera, Section &section) : Device(camera)
{
    addSettings(section,
                {
                    {u"bytesPerSecond"_s, m_bytesPerSecond, Between{1000, mostBytesPerSecond}, Profile | OtherClient},
                    {u"lossPerMillion"_s, m_lossPerMillion, Between{0, million}, Profile | OtherClient},
                });
}

bool Link::loses(uint64_t number, uint32_t pass) const
{
    // From 1, because the random bits of 0 are 0: the first pass would lose the number 0 at every share above 0.
    const uint64_t bits = image::mixed(image::mixed((number + 1) * image::hashStep) + pass * image::hashStep);
    return bits % million < m_lossPerMillion;
}

} // namespace emulator
