#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Frame.h"
#include "platform/emulator/image/Detector.h"

#include <cstdint>
#include <optional>

namespace emulator
{

/// The saturation flag of the sensor.
class Saturation : public Device
{
public:
    static constexpr uint16_t countThreshold = 16'000;
    /// The share of the pixels of a window that must be above the threshold. It is larger than the share of the pixels
    /// that are always at the maximum.
    static constexpr double pixelShare = 0.001;

    /// No profile keys.
    Saturation(Camera &camera, Section &section);

    /// Sets 1 if pixels of a preset in use are saturated or another client has raised the flag, otherwise 0. Until the
    /// detector has made its first frame, the hottest place of the scene decides. The thread must hold the camera's
    /// lock exactly once; the pixels are counted without it.
    Status raised(uint8_t &flag) const;

private:
    std::optional<FrameStart> longestFrame(uint8_t color) const;
    bool isSaturated(const image::Exposure &exposure, const image::Detector::Properties &properties) const;
};

} // namespace emulator
