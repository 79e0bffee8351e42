#pragma once

#include "platform/emulator/devices/presets.h"

#include <array>
#include <cstdint>
#include <optional>

namespace emulator
{

/// The order of frames in time: a cycle that repeats for ever. In each cycle every preset has one turn, in the order of
/// the presets, with a number of frames of the same width. Frames count from 0 at the start of the first cycle. Widths
/// and offsets are in units, which are clocks of a sensor or pulses of a signal. Results above `farthest` are
/// `farthest`.
class FramePattern
{
public:
    static constexpr uint64_t farthest = INT64_MAX;

    struct Turn {
        uint32_t repeats = 0; ///< Frames of the preset in a cycle.
        uint32_t width = 0; ///< Of one frame, at least 1.
        bool operator==(const Turn &) const = default;
    };
    using Turns = std::array<Turn, maximumPresets>;

    struct Place {
        int preset;
        uint64_t offset; ///< From the start of the first cycle to the beginning of the frame.
    };

    /// A pattern without frames.
    FramePattern() = default;
    /// A cycle takes `cycleWidth`, but not less than its turns. If it is longer, it ends without a frame.
    explicit FramePattern(const Turns &turns, uint64_t cycleWidth = 0);

    uint64_t framesInCycle() const { return m_frames; }
    uint64_t cycleWidth() const { return m_cycleWidth; }
    const Turns &turns() const { return m_turns; }

    /// The number of frames that have begun `units` after the start. A frame that begins at `units` counts. `units` is
    /// at most `farthest`.
    uint64_t begun(uint64_t units) const;
    /// Preset and beginning of a frame. The pattern must have frames.
    Place place(uint64_t frame) const;
    /// The last frame of a preset among the first `count` frames.
    std::optional<uint64_t> newest(int preset, uint64_t count) const;

    bool operator==(const FramePattern &) const = default;

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_turns, self.m_cycleWidth, self.m_frames);
        archive.require([&self] { return self == FramePattern(self.m_turns, self.m_cycleWidth); });
    }

private:
    Turns m_turns;
    uint64_t m_cycleWidth = 0;
    uint64_t m_frames = 0;
};

} // namespace emulator
