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
constexpr int maximumSwitchClocks = 1'000'000;
constexpr double lowestMaximumRate = 0.1;
constexpr double highestMaximumRate = 1e6;

uint32_t readClocks(Section &section, const QString &key, uint32_t fallback, const Between &range)
{
    return static_cast<uint32_t>(section.integer(key, static_cast<int>(fallback), static_cast<int>(range.minimum),
                                                 static_cast<int>(range.maximum)));
}

SensorReadout::Constants readConstants(Section &section)
{
    const SensorReadout::Constants usual;
    return {
        .lineDeadWidth = readClocks(section, u"lineDeadWidth"_s, usual.lineDeadWidth, SensorReadout::lineDeadWidths),
        .preIntDeadWidth
        = readClocks(section, u"preIntDeadWidth"_s, usual.preIntDeadWidth, SensorReadout::integrationDeadWidths),
        .postIntDeadWidth
        = readClocks(section, u"postIntDeadWidth"_s, usual.postIntDeadWidth, SensorReadout::integrationDeadWidths),
        .preDeadRows = readClocks(section, u"preDeadRows"_s, usual.preDeadRows, SensorReadout::deadRows),
        .postDeadRows = readClocks(section, u"postDeadRows"_s, usual.postDeadRows, SensorReadout::deadRows),
        .hasExtraLineSync = section.flag(u"hasExtraLineSync"_s, usual.hasExtraLineSync),
    };
}

} // namespace

SensorReadout::SensorReadout(Section &section, uint32_t clockFrequency)
    : m_pixelsPerClock(readClocks(section, u"pixelsPerClock"_s, 4, {1, maximumPixelsPerClock})),
      m_constants(readConstants(section)),
      m_presetSwitchClocks(readClocks(section, u"presetSwitchClocks"_s, 400, {1, maximumSwitchClocks})),
      m_shortestWidth(static_cast<uint32_t>(
          std::ceil(clockFrequency
                    / section.number(u"maximumFrameRate"_s, std::numeric_limits<double>::infinity(), lowestMaximumRate,
                                     highestMaximumRate))))
{
}

uint32_t SensorReadout::shortestFrameWidth(const FrameSettings &frame) const
{
    const uint64_t rows = uint64_t(frame.size.height) + m_constants.preDeadRows + m_constants.postDeadRows
        + (m_constants.hasExtraLineSync ? 1 : 0);
    const uint64_t readout = rows * (frame.size.width / m_pixelsPerClock + m_constants.lineDeadWidth);
    // With reduced noise the readout follows the integration; otherwise both run at the same time.
    const uint64_t activeClocks
        = frame.reducedNoise ? readout + frame.integration : std::max<uint64_t>(readout, frame.integration);
    const uint64_t width = activeClocks + m_constants.preIntDeadWidth + m_constants.postIntDeadWidth
        + (frame.sequencing ? m_presetSwitchClocks : 0);
    return static_cast<uint32_t>(std::clamp<uint64_t>(width, m_shortestWidth, UINT32_MAX));
}

} // namespace emulator
