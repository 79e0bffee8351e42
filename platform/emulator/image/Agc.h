#pragma once

#include "platform/emulator/image/Window.h"
#include "platform/emulator/image/limits.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace emulator::image
{

/// How counts become levels of grey, by the numbers of the SDK.
enum class AgcMethod : uint8_t {
    Plateau, ///< The histogram, with each entry cut to the plateau, is equalised.
    Detail, ///< The same for frames whose details have been enhanced, see enhanceDetail().
    Linear, ///< The counts at 0.5 % and 99.5 % of the histogram become black and white.
    Manual, ///< Two given counts become black and white.
};

/// The settings of the gain control that belong to the methods.
struct AgcSettings {
    static constexpr uint32_t defaultPlateau = 250;
    static constexpr uint8_t defaultSharpness = 3;
    static constexpr uint32_t defaultThreshold = 8;

    AgcMethod method = AgcMethod::Plateau;
    uint32_t plateau = defaultPlateau; ///< Pixels, from 1.
    uint16_t manualLow = 0; ///< Counts. Not below manualHigh: a step at manualLow.
    uint16_t manualHigh = maximumCount;
    uint8_t sharpness = defaultSharpness; ///< Of the details, 1 to 7.
    uint32_t threshold = defaultThreshold; ///< Counts. Smaller differences are noise, not details.
};

/// The automatic gain control of the video: the table that turns counts into levels of grey, 0 black to 255 white. The
/// table follows the frames with a delay, which is its memory. Used by one thread.
class Agc
{
public:
    /// The ends of a table.
    struct Limits {
        uint16_t black = 0; ///< The highest count that becomes black, 0 if none does.
        uint16_t white = maximumCount; ///< The lowest count that becomes white, maximumCount if none does.
        bool operator==(const Limits &) const = default;
    };

    /// Moves the table towards the one that fits a frame of this size, by a share `step` of the way, 0 to 1. The first
    /// call goes the whole way. `region` is the part of the frame whose histogram counts, by pixels of the frame; what
    /// is outside of the frame is left out. If nothing is left, and if the frame has not the size, only Manual moves
    /// the table.
    void update(std::span<const uint16_t> counts, Size size, const Window &region, const AgcSettings &settings,
                double step);

    /// Turns counts, at most maximumCount, into levels. All are black before the first update().
    void apply(std::span<const uint16_t> counts, std::vector<uint8_t> &levels) const;

    /// The level of a count, 0 to maximumCount.
    uint8_t level(uint16_t count) const { return m_levels.at(count); }

    /// The ends of the present table.
    Limits limits() const;

private:
    std::vector<float> m_table; ///< The level of each count with its fraction. Empty before the first update().
    std::array<uint8_t, maximumCount + 1> m_levels{}; ///< The table, rounded.
};

} // namespace emulator::image
