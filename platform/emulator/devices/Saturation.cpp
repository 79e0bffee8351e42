#include "platform/emulator/devices/Saturation.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/frame.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace emulator
{

namespace
{

/// The pixel with the highest count.
struct Extreme {
    double gain;
    double offset; ///< Counts, with the drift.
    double curvature;
};

/// About the highest of a detector that has made no frame yet.
Extreme usualExtreme(const image::Detector::Properties &properties)
{
    return {1.15, properties.offset, properties.curvature};
}

/// No pixel without faults is higher.
Extreme utmostExtreme(const image::Detector::Properties &properties, const image::Readout &readout)
{
    constexpr double deviations = 3.5; // image::standardNormal() returns no more.
    constexpr double referenceCelsius = 25;
    const double drift = std::abs(properties.drift) + deviations * properties.driftDeviation;
    const image::Voltages &voltages = readout.voltages;
    const double offsetDeviation = properties.offsetDeviation + properties.columnDeviation
        + properties.voltageDeviation * std::abs(voltages.addedVolts());
    return {(1 + deviations * properties.gainDeviation)
                * (1 + deviations * properties.biasDeviation * std::abs(voltages.excess())),
            properties.offset + deviations * offsetDeviation + drift * std::abs(readout.caseCelsius - referenceCelsius),
            std::max(0.0, properties.curvature - deviations * properties.curvatureDeviation)};
}

/// Returns the count of this pixel at the hottest place of the scene or the flag.
double countOf(const Extreme &pixel, const image::Exposure &exposure)
{
    const image::Readout &readout = exposure.readout;
    const image::Optics &optics = exposure.optics;
    double light = optics.flagCover > 0 ? image::Light::of(optics.flagCelsius, exposure.band) : 0;
    if (optics.flagCover < 1) {
        const double celsius = optics.blocked ? optics.lensCelsius : exposure.scene.hottestCelsius();
        light = std::max(light, image::Light::of(celsius, exposure.band));
    }
    light = light * optics.transmission + optics.glow(exposure.band);
    const image::Voltages &voltages = readout.voltages;
    const double exposed = readout.integrationTime / readout.saturatingTime * readout.gain() * voltages.response();
    const double skimmed = voltages.skimmedCounts(readout.integrationTime) / image::Light::fullSignal;
    const double signal = std::max(0.0, pixel.gain * exposed * light - skimmed);
    // A signal at which the curve of a pixel is at its top is far above all counts.
    const double curved = signal * (1 - std::min(pixel.curvature * signal, 0.5));
    return pixel.offset + readout.addedCounts() + readout.dark() + image::Light::fullSignal * curved;
}

/// The faulty pixels of the window that may have more counts than others.
size_t brightFaults(const image::Exposure &exposure)
{
    return static_cast<size_t>(std::ranges::count_if(exposure.detector->faults(), [&](const auto &fault) {
        return fault.kind != image::Detector::Fault::Dead && fault.kind != image::Detector::Fault::Weak
            && exposure.window.contains({fault.x, fault.y, 1, 1});
    }));
}

} // namespace

Saturation::Saturation(Camera &camera, Section &) : Device(camera) { }

Status Saturation::raised(uint8_t &flag) const
{
    const Sensor &sensor = *camera().device<Sensor>();
    const uint8_t colors = camera().device<Color>()->number();
    bool saturated = sensor.saturationFlag();
    for (uint8_t color = 0; color < colors && !saturated; ++color)
        if (const auto start = longestFrame(color))
            saturated = isSaturated(camera().exposure(*start), sensor.array().properties());
    flag = saturated ? 1 : 0;
    return Ok;
}

/// Returns the newest frame of the preset in use with the longest integration among those of this colour. It decides
/// for the colour, since presets of the same colour see the same light by the same voltages.
std::optional<FrameStart> Saturation::longestFrame(uint8_t color) const
{
    const Sensor &sensor = *camera().device<Sensor>();
    const Color &colors = *camera().device<Color>();
    auto *const clock = camera().device<FrameClock>();
    // A camera that makes no frames now still has its last one.
    if (clock->averageRate() == 0)
        return std::nullopt;
    std::optional<FrameStart> longest;
    uint32_t longestWidth = 0;
    for (int preset = 0; preset < sensor.numPresets(); ++preset) {
        uint8_t selected = 0;
        colors.selected(static_cast<uint8_t>(preset), selected);
        uint32_t width = 0;
        sensor.integrationWidth(preset, width);
        const bool isLonger = selected == color && sensor.repeats(preset) > 0 && width > longestWidth;
        const auto start = isLonger ? clock->newest(preset) : std::nullopt;
        if (start) {
            longest = start;
            longestWidth = width;
        }
    }
    return longest;
}

bool Saturation::isSaturated(const image::Exposure &exposure, const image::Detector::Properties &properties) const
{
    if (!exposure.detector)
        return countOf(usualExtreme(properties), exposure) >= countThreshold;
    const double limit = pixelShare * double(exposure.window.pixels());
    const bool mayReach = countOf(utmostExtreme(properties, exposure.readout), exposure) >= countThreshold;
    if (!mayReach && double(brightFaults(exposure)) <= limit)
        return false;
    const Camera::Unlocked unlocked(camera());
    const auto enough = static_cast<size_t>(limit) + 1;
    return image::countAtLeast(exposure, countThreshold, enough) >= enough;
}

} // namespace emulator
