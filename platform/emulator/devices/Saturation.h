#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Frame.h"
#include "platform/emulator/devices/presets.h"
#include "platform/emulator/image/Detector.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace emulator
{

/// The saturation of the sensor's frames: the flag, and the saturated pixels of each preset. Functions with a preset
/// refuse one that the camera lacks.
class Saturation : public Device
{
public:
    /// The count from which on a pixel is saturated, if no client has set another threshold.
    static constexpr uint16_t startCountThreshold = 16'000;
    /// The share of the pixels of a window that may be saturated without raising the flag, if no client has set a
    /// number. It is larger than the share of the pixels that are always at the maximum.
    static constexpr double pixelShare = 0.001;

    /// Profile keys and settings: "countThresholds" (counts, 0 to 65535) and "pixelThresholds" (0 to 1048576), lists
    /// for four presets.
    Saturation(Camera &camera, Section &section);

    /// Sets 1 if frames of a preset in use have more saturated pixels than its pixel threshold or another client has
    /// raised the flag, otherwise 0. Until the detector has made its first frame, the hottest place of the scene
    /// decides. The thread must hold the camera's lock exactly once; the pixels are counted without it.
    Status raised(uint8_t &flag) const;

    /// The count from which on a pixel is saturated. With a threshold above the highest count none is.
    Status countThreshold(uint8_t preset, uint16_t &counts) const;
    Status setCountThreshold(uint8_t preset, uint16_t counts);
    /// More saturated pixels than this raise the flag. 0 means the pixelShare.
    Status pixelThreshold(uint8_t preset, uint32_t &pixels) const;
    /// Refused above 1048576.
    Status setPixelThreshold(uint8_t preset, uint32_t pixels);

    /// The saturated pixels of the newest frame of a preset in use. For another preset it is what this preset would
    /// have seen in place of the newest frame of all. 0 before the first frame. Noise and twinkling pixels do not
    /// count. The result is kept for 100 ms, or until the count threshold changes. The thread must hold the camera's
    /// lock exactly once; the pixels are counted without it. The first count of a detector that has made no frame also
    /// makes its maps, see DetectorArray::mapsFor().
    Status pixels(uint8_t preset, uint32_t &pixels);

private:
    struct Count {
        int64_t time; ///< Of Clock.
        uint16_t threshold;
        uint32_t pixels;
    };

    std::vector<FrameStart> decisiveFrames() const;
    bool areAlike(int preset, int other) const;
    bool isSaturated(const image::Exposure &exposure, int preset, const image::Detector::Properties &properties) const;
    std::optional<FrameStart> newestFrame(int preset) const;
    uint32_t countPixels(int preset, uint16_t threshold) const;

    const int m_numPresets;
    std::array<uint16_t, maximumPresets> m_countThresholds;
    std::array<uint32_t, maximumPresets> m_pixelThresholds{};
    std::array<std::optional<Count>, maximumPresets> m_counts; ///< The newest ones.
};

} // namespace emulator
