#include "platform/emulator/devices/SensorReadout.h"

#include "platform/emulator/Section.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int maximumPixelsPerClock = 1024;
constexpr int maximumDeadRows = 10'000;
constexpr int maximumDeadClocks = 1'000'000;
constexpr double lowestMaximumRate = 0.1;
constexpr double highestMaximumRate = 1e6;

uint32_t readClocks(Section &section, const QString &key, int fallback, int minimum, int maximum)
{
    return static_cast<uint32_t>(section.integer(key, fallback, minimum, maximum));
}

} // namespace

SensorReadout::SensorReadout(Section &section, uint32_t clockFrequency)
    : m_pixelsPerClock(readClocks(section, u"pixelsPerClock"_s, 4, 1, maximumPixelsPerClock)),
      m_deadClocksPerRow(readClocks(section, u"deadClocksPerRow"_s, 20, 0, maximumDeadClocks)),
      m_deadRows(readClocks(section, u"deadRows"_s, 2, 0, maximumDeadRows)),
      // At least 1: a period is never 0.
      m_deadClocksPerFrame(readClocks(section, u"deadClocksPerFrame"_s, 500, 1, maximumDeadClocks)),
      m_presetSwitchClocks(readClocks(section, u"presetSwitchClocks"_s, 400, 1, maximumDeadClocks)),
      m_shortestWidth(static_cast<uint32_t>(
          std::ceil(clockFrequency
                    / section.number(u"maximumFrameRate"_s, std::numeric_limits<double>::infinity(), lowestMaximumRate,
                                     highestMaximumRate))))
{
}

uint32_t SensorReadout::shortestFrameWidth(const FrameSettings &frame) const
{
    const uint64_t readout
        = uint64_t(frame.size.height + m_deadRows) * (frame.size.width / m_pixelsPerClock + m_deadClocksPerRow);
    // With reduced noise the readout follows the integration; otherwise both run at the same time.
    const uint64_t activeClocks
        = frame.reducedNoise ? readout + frame.integration : std::max<uint64_t>(readout, frame.integration);
    const uint64_t width = activeClocks + m_deadClocksPerFrame + (frame.sequencing ? m_presetSwitchClocks : 0);
    return static_cast<uint32_t>(std::clamp<uint64_t>(width, m_shortestWidth, UINT32_MAX));
}

} // namespace emulator
