#include "platform/emulator/devices/Saturation.h"

#include "platform/emulator/Camera.h"
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
Extreme utmostExtreme(const image::Detector::Properties &properties, double caseCelsius)
{
    constexpr double deviations = 3.5; // image::standardNormal() returns no more.
    constexpr double referenceCelsius = 25;
    const double drift = std::abs(properties.drift) + deviations * properties.driftDeviation;
    return {1 + deviations * properties.gainDeviation,
            properties.offset + deviations * (properties.offsetDeviation + properties.columnDeviation)
                + drift * std::abs(caseCelsius - referenceCelsius),
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
    const double signal = pixel.gain * readout.gain() * readout.integrationTime / readout.saturatingTime * light;
    // A signal at which the curve of a pixel is at its top is far above all counts.
    const double curved = signal * (1 - std::min(pixel.curvature * signal, 0.5));
    return pixel.offset + readout.dark() + image::Light::fullSignal * curved;
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
    flag = sensor.saturationFlag() ? 1 : 0;
    const auto start = longestFrame();
    if (flag != 0 || !start)
        return Ok;
    const image::Exposure exposure = camera().exposure(*start);
    flag = isSaturated(exposure, sensor.array().properties()) ? 1 : 0;
    return Ok;
}

/// Returns the newest frame of the preset in use with the longest integration. It decides, since all presets see the
/// same light.
std::optional<FrameStart> Saturation::longestFrame() const
{
    const Sensor &sensor = *camera().device<Sensor>();
    auto *const clock = camera().device<FrameClock>();
    // A camera that makes no frames now still has its last one.
    if (clock->averageRate() == 0)
        return std::nullopt;
    std::optional<FrameStart> longest;
    uint32_t longestWidth = 0;
    for (int preset = 0; preset < sensor.numPresets(); ++preset) {
        uint32_t width = 0;
        sensor.integrationWidth(preset, width);
        const auto start = sensor.repeats(preset) > 0 && width > longestWidth ? clock->newest(preset) : std::nullopt;
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
    const bool mayReach = countOf(utmostExtreme(properties, exposure.readout.caseCelsius), exposure) >= countThreshold;
    if (!mayReach && double(brightFaults(exposure)) <= limit)
        return false;
    const Camera::Unlocked unlocked(camera());
    return double(image::countAtLeast(exposure, countThreshold)) > limit;
}

} // namespace emulator
