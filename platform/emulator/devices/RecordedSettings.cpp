#include "platform/emulator/devices/RecordedSettings.h"

#include <cmath>
#include <utility>

namespace emulator
{

namespace
{

// Smaller differences change pixels by less than a tenth of a count.
constexpr double smallestKelvin = 0.02;
constexpr double smallestWarmth = 0.01; ///< Kelvin.
constexpr double smallestDefocus = 0.005; ///< Pixels.

bool differ(double a, double b, double smallest) { return std::abs(a - b) > smallest; }

bool sameNumber(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// The framework may have set the temperature of a blackbody to NaN, which does not equal itself.
bool sameScene(image::Scene a, image::Scene b)
{
    const bool sameSources = sameNumber(a.blackbody1, b.blackbody1) && sameNumber(a.blackbody2, b.blackbody2);
    a.blackbody1 = a.blackbody2 = b.blackbody1 = b.blackbody2 = 0;
    return sameSources && a == b;
}

bool sameExposure(const image::Exposure &a, const image::Exposure &b)
{
    return a.window == b.window && sameScene(a.scene, b.scene) && a.optics == b.optics && a.band == b.band
        && a.readout == b.readout && a.repair == b.repair && a.showBadPixels == b.showBadPixels
        && a.videoCorrected == b.videoCorrected && a.digitalCorrected == b.digitalCorrected
        && a.digitalGain == b.digitalGain && a.digitalOffset == b.digitalOffset;
}

} // namespace

std::optional<Correction> RecordedCorrection::correction()
{
    const std::lock_guard lock(m_mutex);
    if (auto table = m_table.lock())
        return Correction{m_info, std::move(table)};
    const Read read = m_source ? m_source : std::exchange(m_read, nullptr);
    auto correction = read ? read() : std::nullopt;
    m_lost = m_source && !correction;
    if (correction) {
        m_info = correction->info;
        m_table = correction->table;
        m_kept = m_source ? nullptr : correction->table;
    }
    return correction;
}

bool RecordedCorrection::isLost()
{
    const std::lock_guard lock(m_mutex);
    return m_lost;
}

void RecordedCorrection::readFrom(Read source)
{
    const std::lock_guard lock(m_mutex);
    m_source = std::move(source);
    m_read = nullptr;
    m_kept.reset();
}

RecordedMotion RecordedMotion::takeFrom(image::Exposure &exposure)
{
    const image::Optics &optics = exposure.optics;
    const RecordedMotion motion{optics.magnification, optics.defocus,          optics.lensCelsius,
                                optics.flagCover,     optics.flagCelsius,      optics.transmission,
                                optics.filterCelsius, exposure.readout.warmth, exposure.readout.caseCelsius,
                                optics.blocked};
    RecordedMotion().putInto(exposure);
    return motion;
}

void RecordedMotion::putInto(image::Exposure &exposure) const
{
    image::Optics &optics = exposure.optics;
    optics.magnification = magnification;
    optics.defocus = defocus;
    optics.lensCelsius = lensCelsius;
    optics.flagCover = flagCover;
    optics.flagCelsius = flagCelsius;
    optics.transmission = transmission;
    optics.filterCelsius = filterCelsius;
    optics.blocked = blocked;
    exposure.readout.warmth = warmth;
    exposure.readout.caseCelsius = caseCelsius;
}

bool RecordedMotion::differsFrom(const RecordedMotion &other) const
{
    const bool flagSeen = flagCover > 0 || other.flagCover > 0;
    return magnification != other.magnification || flagCover != other.flagCover || transmission != other.transmission
        || blocked != other.blocked || differ(defocus, other.defocus, smallestDefocus)
        || differ(warmth, other.warmth, smallestWarmth) || differ(lensCelsius, other.lensCelsius, smallestKelvin)
        || differ(filterCelsius, other.filterCelsius, smallestKelvin)
        || differ(caseCelsius, other.caseCelsius, smallestKelvin)
        || (flagSeen && differ(flagCelsius, other.flagCelsius, smallestKelvin));
}

bool RecordedSettings::equals(const RecordedSettings &other) const
{
    for (size_t i = 0; i < presets.size(); ++i) {
        const Preset &mine = presets[i];
        const Preset &others = other.presets[i];
        if (mine.correction != others.correction || !sameExposure(mine.exposure, others.exposure))
            return false;
    }
    return irigShift == other.irigShift && realTimeShift == other.realTimeShift && irigLatch == other.irigLatch
        && integrationDelay == other.integrationDelay;
}

} // namespace emulator
