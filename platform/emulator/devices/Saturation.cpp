#include "platform/emulator/devices/Saturation.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/Color.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/presetValues.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/UsualPixel.h"
#include "platform/emulator/image/frame.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double mostPixels = 1'048'576;
constexpr int64_t countIsKept = 100; // Milliseconds.

/// About the pixel with the highest count of a detector that has made no frame yet.
image::UsualPixel highestGuess(const image::Detector::Properties &properties)
{
    return {1.15, properties.offset, properties.curvature};
}

/// No pixel without faults is higher.
image::UsualPixel highestPossible(const image::Detector::Properties &properties, const image::Readout &readout)
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
double hottestCountOf(const image::UsualPixel &pixel, const image::Exposure &exposure)
{
    const image::Optics &optics = exposure.optics;
    double light = optics.flagCover > 0 ? image::Light::of(optics.flagCelsius, exposure.band) : 0;
    if (optics.flagCover < 1) {
        const double celsius = optics.blocked ? optics.lensCelsius : exposure.scene.hottestCelsius();
        light = std::max(light, image::Light::of(celsius, exposure.band));
    }
    return pixel.countOf(light * optics.transmission + optics.glow(exposure.band), exposure.readout);
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

Saturation::Saturation(Camera &camera, Section &section)
    : Device(camera), m_numPresets(camera.device<Sensor>()->numPresets())
{
    m_countThresholds.fill(startCountThreshold);
    addSettings(section,
                {
                    {u"countThresholds"_s, m_countThresholds, Everywhere},
                    {u"pixelThresholds"_s, m_pixelThresholds, Between{0, mostPixels}, Everywhere},
                });
}

Status Saturation::countThreshold(uint8_t preset, uint16_t &counts) const
{
    return fetchOf(m_countThresholds, m_numPresets, preset, counts);
}

Status Saturation::setCountThreshold(uint8_t preset, uint16_t counts)
{
    return assignOf(m_countThresholds, m_numPresets, preset, counts,
                    [this](const auto &all) { return assign(m_countThresholds, all); });
}

Status Saturation::pixelThreshold(uint8_t preset, uint32_t &pixels) const
{
    return fetchOf(m_pixelThresholds, m_numPresets, preset, pixels);
}

Status Saturation::setPixelThreshold(uint8_t preset, uint32_t pixels)
{
    return assignOf(m_pixelThresholds, m_numPresets, preset, pixels,
                    [this](const auto &all) { return assign(m_pixelThresholds, all); });
}

Status Saturation::raised(uint8_t &flag) const
{
    const Sensor &sensor = *camera().device<Sensor>();
    const auto isRaisedBy = [&](const FrameStart &start) {
        return isSaturated(camera().exposure(start), start.preset, sensor.array().properties());
    };
    flag = sensor.saturationFlag() || std::ranges::any_of(decisiveFrames(), isRaisedBy) ? 1 : 0;
    return Ok;
}

/// Returns the newest frames of those presets in use that decide for the others: of presets that are alike, the one
/// with the longest integration.
std::vector<FrameStart> Saturation::decisiveFrames() const
{
    const Sensor &sensor = *camera().device<Sensor>();
    auto *const clock = camera().device<FrameClock>();
    // A camera that makes no frames now still has its last one.
    if (clock->averageRate() == 0)
        return {};
    const auto integrationOf = [&sensor](int preset) {
        uint32_t clocks = 0;
        sensor.integrationWidth(preset, clocks);
        return clocks;
    };
    std::vector<FrameStart> frames;
    for (int preset = 0; preset < m_numPresets; ++preset) {
        const auto start = sensor.repeats(preset) > 0 ? clock->newest(preset) : std::nullopt;
        if (!start)
            continue;
        const auto alike
            = std::ranges::find_if(frames, [&](const FrameStart &frame) { return areAlike(frame.preset, preset); });
        if (alike == frames.end())
            frames.push_back(*start);
        else if (integrationOf(preset) > integrationOf(alike->preset))
            *alike = *start;
    }
    return frames;
}

/// Whether only the integration decides which of two presets has more saturated pixels. Presets of the same colour see
/// the same light by the same voltages.
bool Saturation::areAlike(int preset, int other) const
{
    const auto a = static_cast<uint8_t>(preset);
    const auto b = static_cast<uint8_t>(other);
    const Color &colors = *camera().device<Color>();
    uint8_t color = 0;
    uint8_t otherColor = 0;
    colors.selected(a, color);
    colors.selected(b, otherColor);
    return color == otherColor && m_countThresholds[a] == m_countThresholds[b]
        && m_pixelThresholds[a] == m_pixelThresholds[b];
}

bool Saturation::isSaturated(const image::Exposure &exposure, int preset,
                             const image::Detector::Properties &properties) const
{
    const uint16_t threshold = m_countThresholds[static_cast<size_t>(preset)];
    if (threshold > image::Detector::maximumCount)
        return false;
    const uint32_t allowed = m_pixelThresholds[static_cast<size_t>(preset)];
    const auto all = double(exposure.window.pixels());
    const double limit = allowed > 0 ? allowed : pixelShare * all;
    if (!exposure.detector)
        return limit < all && hottestCountOf(highestGuess(properties), exposure) >= threshold;
    const bool mayReach = hottestCountOf(highestPossible(properties, exposure.readout), exposure) >= threshold;
    if (!mayReach && double(brightFaults(exposure)) <= limit)
        return false;
    const Camera::Unlocked unlocked(camera());
    const auto enough = static_cast<size_t>(limit) + 1;
    return image::countAtLeast(exposure, threshold, enough) >= enough;
}

Status Saturation::pixels(uint8_t preset, uint32_t &pixels)
{
    uint16_t threshold = 0;
    if (const Status status = countThreshold(preset, threshold); status != Ok)
        return status;
    const int64_t now = Clock::now();
    const auto isNew = [&](const Count &count) {
        return count.threshold == threshold && now >= count.time && now < count.time + countIsKept;
    };
    if (const auto &kept = m_counts[preset]; kept && isNew(*kept)) {
        pixels = kept->pixels;
        return Ok;
    }
    pixels = countPixels(preset, threshold);
    m_counts[preset] = {now, threshold, pixels};
    return Ok;
}

std::optional<FrameStart> Saturation::newestFrame(int preset) const
{
    auto *const clock = camera().device<FrameClock>();
    const bool isUsed = camera().device<Sensor>()->repeats(preset) > 0;
    if (const auto own = isUsed ? clock->newest(preset) : std::nullopt)
        return own;
    std::optional<FrameStart> newest;
    for (int other = 0; other < m_numPresets; ++other)
        if (const auto start = clock->newest(other); start && (!newest || start->number > newest->number))
            newest = start;
    if (newest)
        newest->preset = preset;
    return newest;
}

uint32_t Saturation::countPixels(int preset, uint16_t threshold) const
{
    const auto frame = newestFrame(preset);
    if (!frame)
        return 0;
    image::Exposure exposure = camera().exposure(*frame);
    DetectorArray &array = camera().device<Sensor>()->array();
    const Camera::Unlocked unlocked(camera());
    exposure.detector = array.mapsFor(exposure.window);
    return static_cast<uint32_t>(image::countAtLeast(exposure, threshold));
}

} // namespace emulator
