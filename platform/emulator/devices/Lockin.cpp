#include "platform/emulator/devices/Lockin.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/FrameClock.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uint8_t lastFilter = 7;
constexpr double highestFrequency = 1e6;
/// The share of the estimate by which the frequency of the signal may differ from it.
constexpr double tolerance = 0.1;

} // namespace

Lockin::Lockin(Camera &camera, Section &section) : Device(camera), m_frames(*camera.device<FrameClock>())
{
    constexpr Between frequencies{0, highestFrequency};
    addSettings(section,
                {
                    {u"coupling"_s, m_coupling, Between{0, 1}, Everywhere},
                    {u"filter"_s, m_filter, Between{0, lastFilter}, Everywhere},
                    {u"estimatedFrequency"_s, m_estimatedFrequency, frequencies, Everywhere},
                    {u"inputFrequency"_s, m_inputFrequency, frequencies, Profile | OtherClient},
                });
}

Status Lockin::setFilter(uint8_t filter) { return assign(m_filter, std::min(filter, lastFilter)); }

Status Lockin::setEstimatedFrequency(float hertz)
{
    if (!std::isfinite(hertz))
        return Refused;
    const auto highest = static_cast<float>(std::min(m_frames.averageRate() / 2, highestFrequency));
    return assign(m_estimatedFrequency, std::clamp(hertz, 0.0f, highest));
}

Status Lockin::sampleFrequency(float &hertz) const
{
    const double estimate = m_estimatedFrequency;
    const double rate = m_frames.averageRate();
    if (m_inputFrequency == 0 || rate == 0 || std::abs(m_inputFrequency - estimate) > tolerance * estimate)
        return Refused;
    hertz = static_cast<float>(rate);
    return Ok;
}

} // namespace emulator
