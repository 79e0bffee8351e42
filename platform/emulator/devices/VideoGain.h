#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/image/Agc.h"

#include <array>
#include <cstdint>

namespace emulator
{

class Sensor;

/// The settings of the gain control of the video output, which turns counts into levels of grey. It fits them to the
/// part of the picture in its region, if that is enabled, otherwise to the whole picture.
class VideoGain : public Device
{
public:
    /// X, Y, width and height in pixels of the picture, which shows the window of the sensor with its flips.
    using Region = std::array<uint16_t, 4>;

    /// Profile keys and settings: "method" (0 to 3), "plateau" (1 to 16383), "sharpness" (1 to 7), "threshold",
    /// "manualLow", "manualHigh" (counts), "filterRate" (0 to 20), "filterRateEnabled", "dampening" (0 to 1),
    /// "dampeningEnabled", "region" (x, y, width, height; the whole picture without the key), "regionEnabled",
    /// "blackHotAvailable" and "blackHotEnabled".
    VideoGain(Camera &camera, Section &section);

    image::AgcMethod method() const { return m_settings.method; }
    /// Refuses the number of no method, and Detail on a board that cannot enhance details.
    Status setMethod(uint8_t number) { return assign(m_settings.method, static_cast<image::AgcMethod>(number)); }

    uint32_t plateau() const { return m_settings.plateau; }
    /// Refused outside of 1 to 16383.
    Status setPlateau(uint32_t pixels) { return assign(m_settings.plateau, pixels); }
    uint8_t sharpness() const { return m_settings.sharpness; }
    /// Refused outside of 1 to 7.
    Status setSharpness(uint8_t sharpness) { return assign(m_settings.sharpness, sharpness); }
    uint32_t threshold() const { return m_settings.threshold; }
    /// Refused above 16383.
    Status setThreshold(uint32_t counts) { return assign(m_settings.threshold, counts); }
    uint16_t manualLow() const { return m_settings.manualLow; }
    /// Refused above 16383.
    Status setManualLow(uint16_t count) { return assign(m_settings.manualLow, count); }
    uint16_t manualHigh() const { return m_settings.manualHigh; }
    /// Refused above 16383.
    Status setManualHigh(uint16_t count) { return assign(m_settings.manualHigh, count); }

    /// How fast the gain control follows the picture, in 1/s.
    double filterRate() const { return m_filterRate; }
    /// Refused outside of 0 to 20.
    Status setFilterRate(double rate) { return assign(m_filterRate, rate); }
    bool filterRateEnabled() const { return m_filterRateEnabled; }
    Status setFilterRateEnabled(bool enabled) { return assign(m_filterRateEnabled, enabled); }
    /// The share of the way to the new gain that each frame of the video takes. 0: the gain stays as it is.
    float dampening() const { return m_dampening; }
    /// Refused outside of 0 to 1.
    Status setDampening(float share) { return assign(m_dampening, share); }
    bool dampeningEnabled() const { return m_dampeningEnabled; }
    Status setDampeningEnabled(bool enabled) { return assign(m_dampeningEnabled, enabled); }

    bool regionEnabled() const { return m_regionEnabled; }
    Status setRegionEnabled(bool enabled) { return assign(m_regionEnabled, enabled); }
    uint16_t regionX() const { return m_region[0]; }
    uint16_t regionY() const { return m_region[1]; }
    uint16_t regionWidth() const { return m_region[2]; }
    uint16_t regionHeight() const { return m_region[3]; }
    /// Refuses an empty region, and one that is not inside the picture. A change of the window cuts the region to the
    /// new picture. If nothing is left, the region becomes the whole picture.
    Status setRegion(uint16_t x, uint16_t y, uint16_t width, uint16_t height)
    {
        return assign(m_region, {x, y, width, height});
    }

    bool blackHotAvailable() const { return m_blackHotAvailable; }
    /// Whether hot is black. Reading and setting are refused while it is not available.
    Status blackHotEnabled(bool &enabled) const { return fetch(m_blackHotEnabled, enabled); }
    Status setBlackHotEnabled(bool enabled) { return assign(m_blackHotEnabled, enabled); }

    // For the video path.

    const image::AgcSettings &agcSettings() const { return m_settings; }
    /// The region by pixels of the picture, also while it is not enabled.
    image::Window region() const;
    /// The whole picture, by its own pixels.
    image::Window picture() const;
    /// The same for the picture of the video output: a frame that the recorder plays may have another window.
    image::Window shownPicture() const;
    /// The part of shownPicture() to which the gain fits: the region if it is enabled, otherwise all of it.
    image::Window effectiveRegion() const { return m_regionEnabled ? region() : shownPicture(); }
    /// The share of the way to the fitting gain, 0 to 1, for a frame of the video that lasts so long.
    double step(double seconds) const;
    /// The share of the way, 0 to 1, that successive frames of the video go together if each of them goes `step` of the
    /// rest. `frames` may have a fraction; a negative number counts as 0. With a step of 1 the whole way takes no time.
    static double stepOfFrames(double step, double frames);
    /// Whether the picture shows hot as black.
    bool blackHot() const { return m_blackHotAvailable && m_blackHotEnabled; }

    void catchUp() override;

private:
    const Sensor &m_sensor;
    const bool m_enhancesDetails;
    image::AgcSettings m_settings;
    double m_filterRate = 1;
    bool m_filterRateEnabled = false;
    float m_dampening = 0.5;
    bool m_dampeningEnabled = false;
    Region m_region{};
    bool m_regionEnabled = false;
    bool m_blackHotAvailable = false;
    bool m_blackHotEnabled = false;
};

} // namespace emulator
