#pragma once

#include <cstdint>
#include <string>

namespace emulator::image
{
struct BadPixelCounts;
}

namespace emulator
{

class Camera;

/// The description of a non-uniformity correction: the camera and the settings that it was made with, and the results
/// of the search for bad pixels. The fields are in the order of the file.
struct CorrectionInfo {
    std::string cameraModel; ///< UTF-8. A file contains the first 64 bytes.
    std::string cameraSerial; ///< The same.
    uint16_t x = 0; ///< The window in array coordinates.
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    bool invert = false; ///< Flipped top to bottom.
    bool revert = false; ///< Flipped left to right.
    uint8_t frameSyncMode = 0; ///< A pulse starts 0 the integration, 1 the readout.
    uint32_t integrationWidth = 0; ///< Clocks.
    uint32_t frameWidth = 0; ///< Clocks.
    uint8_t filterID = 0;
    uint8_t biasKind = 0; ///< 2 for a detector with two biases.
    float detectorBias = 0; ///< Millivolts.
    float secondDetectorBias = 0; ///< Millivolts.
    uint8_t gainLevel = 0; ///< From 0.
    float digitalOffset = 0; ///< Counts.
    float digitalGain = 1;
    float analogOffset = 0; ///< Volts.
    bool skimmingEnabled = false;
    float skimmingVoltage = 0; ///< Volts.
    uint8_t color = 0;
    uint8_t nucType = 0; ///< 0 one-point, 1 two-point, 2 offset update.
    uint8_t nucSource = 0; ///< 0 external, 1 internal.
    uint32_t numFrames = 0; ///< Averaged for each source.
    bool detectBadPixels = false;
    bool detectTwinklers = false;
    uint32_t twinklerFrames = 0;
    uint16_t twinklerDelta = 0; ///< Counts.
    uint16_t adMinimum = 0; ///< Counts.
    uint16_t adMaximum = 0;
    float gainMinimum = 0;
    float gainMaximum = 0;
    uint32_t totalBadPixels = 0; ///< Numbers of pixels, here and below.
    uint32_t twinklingPixels = 0;
    uint32_t factoryBadPixels = 0;
    uint32_t aboveGainMaximum = 0;
    uint32_t belowGainMinimum = 0;
    uint32_t aboveAdMaximumSource1 = 0;
    uint32_t belowAdMinimumSource1 = 0;
    uint32_t aboveAdMaximumSource2 = 0;
    uint32_t belowAdMinimumSource2 = 0;
    uint32_t newBadPixels = 0;

    bool operator==(const CorrectionInfo &) const = default;
};

/// Returns a description with the camera and the present settings of a preset. The rest has its first values. Called
/// with the camera's lock.
CorrectionInfo presentSettings(const Camera &camera, int preset);

/// Sets and returns the numbers of bad pixels.
void setCounts(CorrectionInfo &info, const image::BadPixelCounts &counts);
image::BadPixelCounts countsOf(const CorrectionInfo &info);

/// Calls `visit` for each field but the two texts, in the order of the file, with this field of all `records`. A record
/// is a CorrectionInfo or has the same names.
template <class Visit, class... Records> void forEachNumber(Visit visit, Records &...records)
{
    visit(records.x...);
    visit(records.y...);
    visit(records.width...);
    visit(records.height...);
    visit(records.invert...);
    visit(records.revert...);
    visit(records.frameSyncMode...);
    visit(records.integrationWidth...);
    visit(records.frameWidth...);
    visit(records.filterID...);
    visit(records.biasKind...);
    visit(records.detectorBias...);
    visit(records.secondDetectorBias...);
    visit(records.gainLevel...);
    visit(records.digitalOffset...);
    visit(records.digitalGain...);
    visit(records.analogOffset...);
    visit(records.skimmingEnabled...);
    visit(records.skimmingVoltage...);
    visit(records.color...);
    visit(records.nucType...);
    visit(records.nucSource...);
    visit(records.numFrames...);
    visit(records.detectBadPixels...);
    visit(records.detectTwinklers...);
    visit(records.twinklerFrames...);
    visit(records.twinklerDelta...);
    visit(records.adMinimum...);
    visit(records.adMaximum...);
    visit(records.gainMinimum...);
    visit(records.gainMaximum...);
    visit(records.totalBadPixels...);
    visit(records.twinklingPixels...);
    visit(records.factoryBadPixels...);
    visit(records.aboveGainMaximum...);
    visit(records.belowGainMinimum...);
    visit(records.aboveAdMaximumSource1...);
    visit(records.belowAdMinimumSource1...);
    visit(records.aboveAdMaximumSource2...);
    visit(records.belowAdMinimumSource2...);
    visit(records.newBadPixels...);
}

} // namespace emulator
