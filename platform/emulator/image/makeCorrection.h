#pragma once

#include "platform/emulator/image/BadPixelMap.h"
#include "platform/emulator/image/CorrectionTable.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Exposure.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

// Corrections from frames of flat fields. Any thread; some milliseconds for a frame of 640x512.
//
// An external source: the operator places an area blackbody before the lens. For a camera this is the pattern 3 of
// "emulator./Pattern" with "/BlackbodyTemp1" (both by other clients); image::Scene::secondSource selects
// "/BlackbodyTemp2" instead. The device that runs a correction sets it in its expose(), from the moment that the run
// waits for the second source until the run ends. EmulatorProperties comes before it in DeviceKind::all().

namespace emulator::image
{

class FrameCollector;

/// Which pixels a correction calls bad.
struct BadPixelLimits {
    bool detect = true; ///< By their response and by their counts, with the following four limits.
    float gainMin = 0.75f; ///< The least response of a good pixel, relative to the mean response.
    float gainMax = 1.5f;
    uint16_t adMin = 1000; ///< The least mean count of a good pixel at each source.
    uint16_t adMax = 15'000;
    bool twinklers = true; ///< By the frames for twinkling pixels.
    uint16_t twinklerDelta = 200; ///< The largest difference between two counts of a good pixel at the same source.
};

/// The numbers of bad pixels, in the order of zvtGetNUCResults(). A pixel in several classes counts in each of them,
/// and once in the total.
struct BadPixelCounts {
    uint32_t total = 0;
    uint32_t factory = 0; ///< Those that are bad because the factory's list is used.
    uint32_t newlyBad = 0; ///< Those that are not in the factory's list.
    uint32_t twinkling = 0;
    uint32_t aboveGainMax = 0;
    uint32_t belowGainMin = 0;
    uint32_t aboveAdMaxSource1 = 0;
    uint32_t belowAdMinSource1 = 0;
    uint32_t aboveAdMaxSource2 = 0;
    uint32_t belowAdMinSource2 = 0;

    bool operator==(const BadPixelCounts &) const = default;
};

/// The numbers that the flags of a correction contain: all bad pixels, and which of them are in the factory's list, are
/// not, and twinkle. The others are those of `counts`.
BadPixelCounts countFlags(const std::vector<uint8_t> &flags, BadPixelCounts counts = {});

/// The pixels of a frame that are in the factory's list of bad pixels, nonzero for each of them, in the order of the
/// frame: four of five faults of a new detector. Empty if the exposure has no frame.
std::vector<uint8_t> factoryList(const Exposure &exposure);

/// The same list for a window with frames, from the faults in it.
BadPixelMap factoryList(std::span<const Detector::Fault> faults, const Window &window);

/// How a correction judges its pixels.
struct Judgement {
    BadPixelLimits limits = {};
    /// The factory's list for the frames, see factoryList().
    std::vector<uint8_t> factoryList = {};
    bool useFactoryList = false;
};

struct MadeCorrection {
    CorrectionTable table;
    BadPixelCounts counts;
};

/// The mean counts of two sources must differ by this for a two-point correction.
inline constexpr double leastSourceDifference = 50;

// Each returns nothing if a collector is empty, if collectors have other windows or flips, or if all pixels are bad.

/// gain = 1, offset = mean - own mean. Does not judge the response and twinkling.
std::optional<MadeCorrection> makeOnePoint(const FrameCollector &source, const Judgement &judgement);

/// gain = mean response / response, offset = mean - gain * own mean, with the counts of the first source; the means are
/// those of the good pixels. `twinkling` may be null: then twinkling is not judged. A bad pixel without a response gets
/// gain 1 and offset 0. Also returns nothing if the sources differ by less than leastSourceDifference.
std::optional<MadeCorrection> makeTwoPoint(const FrameCollector &first, const FrameCollector &second,
                                           const FrameCollector *twinkling, const Judgement &judgement);

/// New offsets for the pixels of the frames, which may be a part of the correction; its gains, flags and other offsets
/// stay. They flatten the frames, and keep the mean of their good pixels as the old offsets show it. The counts are
/// those that the flags of the whole table contain. Returns nothing, too, if the frames are not inside the table.
std::optional<MadeCorrection> updateOffsets(const CorrectionTable &old, const FrameCollector &source);

/// Returns the exposure of an area blackbody before the lens of a new camera: nothing hides it, no noise, no twinkling,
/// start values of the voltages, a cold detector and a case of 25 C. Factory corrections are made from such frames.
Exposure flatField(Exposure exposure, double celsius);

} // namespace emulator::image
