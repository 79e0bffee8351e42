#include "platform/emulator/devices/Saturation.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/frame.h"

#include <algorithm>
#include <optional>

namespace emulator
{

namespace
{

/// Returns about the highest count of a pixel without faults.
double highestCount(const image::Exposure &exposure, const image::Detector::Properties &properties)
{
    constexpr double highestGain = 1.15;
    const image::Readout &readout = exposure.readout;
    const double celsius = exposure.optics.blocked ? exposure.optics.lensCelsius : exposure.scene.hottestCelsius();
    const double signal = highestGain * readout.gain() * readout.integrationTime / readout.saturatingTime
        * image::Light::of(celsius, exposure.band);
    // A signal at which the curve of a pixel is at its top is far above all counts.
    const double curved = signal * (1 - std::min(properties.curvature * signal, 0.5));
    return properties.offset + readout.dark() + image::Light::fullSignal * curved;
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
    const bool mayBe = highestCount(exposure, sensor.array().properties()) >= countThreshold;
    flag = mayBe && (!exposure.detector || isSaturated(exposure)) ? 1 : 0;
    return Ok;
}

/// Returns the newest frame of the preset in use with the longest integration. It decides, since all presets see the
/// same light.
std::optional<FrameStart> Saturation::longestFrame() const
{
    const Sensor &sensor = *camera().device<Sensor>();
    auto *const clock = camera().device<FrameClock>();
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

bool Saturation::isSaturated(const image::Exposure &exposure) const
{
    const Camera::Unlocked unlocked(camera());
    return double(image::countAtLeast(exposure, countThreshold)) > pixelShare * double(exposure.window.pixels());
}

} // namespace emulator
