#include "platform/emulator/devices/CorrectionSetup.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Sensor.h"

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr Between gains{0, 10};
constexpr Between celsius{-40, 100};
constexpr Between flagMaxima{40, 100};
constexpr Between stableDeltas{0.01F, 10}; // The least one is a float too.
constexpr Between stableCounts{1, 255};
constexpr Between timeouts{1000, 600'000};

} // namespace

CorrectionSetup::CorrectionSetup(Camera &camera, Section &) : Device(camera)
{
    image::BadPixelLimits &limits = m_values.limits;
    addSettings({
        {u"preset"_s, m_values.preset, Between{0, camera.device<Sensor>()->numPresets() - 1.0}, OtherClient},
        {u"type"_s, m_values.type, Between{OnePoint, OffsetUpdate}, OtherClient},
        {u"source"_s, m_values.source, Between{External, Internal}, OtherClient},
        {u"frames"_s, m_values.frames, OtherClient},
        {u"gainMin"_s, limits.gainMin, gains, OtherClient},
        {u"gainMax"_s, limits.gainMax, gains, OtherClient},
        {u"adMin"_s, limits.adMin, OtherClient},
        {u"adMax"_s, limits.adMax, OtherClient},
        {u"detectBadPixels"_s, limits.detect, OtherClient},
        {u"detectTwinklers"_s, limits.twinklers, OtherClient},
        {u"twinklerFrames"_s, m_values.twinklerFrames, OtherClient},
        {u"twinklerDelta"_s, limits.twinklerDelta, OtherClient},
        {u"useFactoryBadPixels"_s, m_values.useFactoryBadPixels, OtherClient},
        {u"flagSetpointType"_s, m_values.setpointType, Between{Deltas, Temperatures}, OtherClient},
        {u"flagDeltas"_s, m_values.deltas, celsius, OtherClient},
        {u"flagTemperatures"_s, m_values.temperatures, celsius, OtherClient},
        {u"flagMaximum"_s, m_values.flagMaximum, flagMaxima, OtherClient},
        {u"stableDelta"_s, m_values.stableDelta, stableDeltas, OtherClient},
        {u"stableCount"_s, m_values.stableCount, stableCounts, OtherClient},
        {u"timeout"_s, m_values.timeout, timeouts, OtherClient},
    });
}

void CorrectionSetup::limits(float &gainMin, float &gainMax, uint16_t &adMin, uint16_t &adMax, bool &detect) const
{
    gainMin = m_values.limits.gainMin;
    gainMax = m_values.limits.gainMax;
    adMin = m_values.limits.adMin;
    adMax = m_values.limits.adMax;
    detect = m_values.limits.detect;
}

Status CorrectionSetup::setLimits(float gainMin, float gainMax, uint16_t adMin, uint16_t adMax, bool detect)
{
    if (!gains.holds(gainMin) || !gains.holds(gainMax))
        return Refused;
    image::BadPixelLimits &limits = m_values.limits;
    limits.gainMin = gainMin;
    limits.gainMax = gainMax;
    limits.adMin = adMin;
    limits.adMax = adMax;
    limits.detect = detect;
    return Ok;
}

void CorrectionSetup::twinklers(bool &detect, uint32_t &frames, uint16_t &delta) const
{
    detect = m_values.limits.twinklers;
    frames = m_values.twinklerFrames;
    delta = m_values.limits.twinklerDelta;
}

void CorrectionSetup::setTwinklers(bool detect, uint32_t frames, uint16_t delta)
{
    m_values.limits.twinklers = detect;
    m_values.twinklerFrames = frames;
    m_values.limits.twinklerDelta = delta;
}

void CorrectionSetup::flagDeltas(float &low, float &high) const
{
    low = m_values.deltas[0];
    high = m_values.deltas[1];
}

void CorrectionSetup::flagTemperatures(float &low, float &high) const
{
    low = m_values.temperatures[0];
    high = m_values.temperatures[1];
}

void CorrectionSetup::flagConfig(float &maximum, float &stableDelta, uint32_t &stableCount, uint32_t &timeout) const
{
    maximum = m_values.flagMaximum;
    stableDelta = m_values.stableDelta;
    stableCount = m_values.stableCount;
    timeout = m_values.timeout;
}

Status CorrectionSetup::setFlagConfig(float maximum, float stableDelta, uint32_t stableCount, uint32_t timeout)
{
    if (!flagMaxima.holds(maximum) || !stableDeltas.holds(stableDelta) || !stableCounts.holds(stableCount)
        || !timeouts.holds(timeout))
        return Refused;
    m_values.flagMaximum = maximum;
    m_values.stableDelta = stableDelta;
    m_values.stableCount = stableCount;
    m_values.timeout = timeout;
    return Ok;
}

} // namespace emulator
