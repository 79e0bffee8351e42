#include "platform/emulator/image/output.h"

#include "platform/emulator/image/frame.h"
#include "platform/emulator/image/limits.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

namespace emulator::image
{

namespace
{

using Flags = std::span<const uint8_t>;

bool isBad(uint8_t flags) { return (flags & CorrectionTable::Bad) != 0; }

/// Returns the first pixel from `i` that is bad, or that is good; the number of pixels if there is none.
size_t nextBad(Flags flags, size_t i)
{
    // Bad pixels are rare: look at eight pixels at a time.
    uint64_t eight = 0;
    constexpr uint64_t bad = CorrectionTable::Bad * 0x0101'0101'0101'0101u;
    for (; i + sizeof(eight) <= flags.size(); i += sizeof(eight)) {
        std::memcpy(&eight, flags.data() + i, sizeof(eight));
        if ((eight & bad) != 0)
            break;
    }
    while (i < flags.size() && !isBad(flags[i]))
        ++i;
    return i;
}

size_t nextGood(Flags flags, size_t i)
{
    while (i < flags.size() && isBad(flags[i]))
        ++i;
    return i;
}

/// Replaces the bad pixels from `first` to before `end`, which are all of a group.
void repairGroup(std::span<uint16_t> row, size_t first, size_t end, Repair repair)
{
    const bool hasLeft = first > 0;
    const bool hasRight = end < row.size();
    if (!hasLeft && !hasRight)
        return;
    const uint32_t left = row[hasLeft ? first - 1 : end];
    const uint32_t right = row[hasRight ? end : first - 1];
    for (size_t i = first; i < end; ++i) {
        const auto toLeft = static_cast<uint32_t>(i + 1 - first);
        const auto toRight = static_cast<uint32_t>(end - i);
        const uint32_t distances = toLeft + toRight;
        uint32_t count = (left * toRight + right * toLeft + distances / 2) / distances;
        if (repair == Repair::Nearest)
            count = toLeft <= toRight ? left : right;
        row[i] = static_cast<uint16_t>(count);
    }
}

/// Calls `use` with the first and the end of each group of bad pixels beside each other.
template <class Use> void forBadPixels(Flags flags, const Use &use)
{
    for (size_t first = nextBad(flags, 0); first < flags.size();) {
        const size_t end = nextGood(flags, first);
        use(first, end);
        first = nextBad(flags, end);
    }
}

/// Corrects a row of a frame, whose first pixel is the one with this index in the table.
void correctRow(const Exposure &exposure, size_t index, std::span<uint16_t> row)
{
    const CorrectionTable &table = *exposure.correction;
    const float *const gains = table.gains.data() + index;
    const float *const offsets = table.offsets.data() + index;
    for (size_t i = 0; i < row.size(); ++i)
        row[i] = toCount(static_cast<float>(row[i]) * gains[i] + offsets[i]);
    if (exposure.repair == Repair::None || exposure.showBadPixels)
        return;
    forBadPixels({table.flags.data() + index, row.size()},
                 [&](size_t first, size_t end) { repairGroup(row, first, end, exposure.repair); });
}

void showBadPixels(Flags flags, std::span<uint16_t> row)
{
    forBadPixels(flags,
                 [row](size_t first, size_t end) { std::ranges::fill(row.subspan(first, end - first), maximumCount); });
}

/// Returns the pixel of the table for the first pixel of the frame, if a table contains the window.
std::optional<Place> firstInTable(const Exposure &exposure)
{
    if (!exposure.correction || !exposure.correction->isComplete())
        return std::nullopt;
    return exposure.correction->placeOf(exposure.window, exposure.optics);
}

} // namespace

bool renderOutput(const Exposure &exposure, Output output, std::vector<uint16_t> &counts)
{
    if (!renderFrame(exposure, counts))
        return false;
    const auto first = firstInTable(exposure);
    const bool on = output == Output::Video ? exposure.videoCorrected : exposure.digitalCorrected;
    const float gain = exposure.digitalGain;
    const float offset = exposure.digitalOffset;
    const auto width = static_cast<size_t>(exposure.window.width);
    for (int y = 0; y < exposure.window.height; ++y) {
        const std::span row(counts.data() + static_cast<size_t>(y) * width, width);
        const size_t index = first ? Place{first->x, first->y + y}.indexIn(exposure.correction->window.width) : 0;
        if (first && on)
            correctRow(exposure, index, row);
        if (gain != 1 || offset != 0)
            for (uint16_t &count : row)
                count = toCount(static_cast<float>(count) * gain + offset);
        if (first && exposure.showBadPixels)
            showBadPixels({exposure.correction->flags.data() + index, width}, row);
    }
    return true;
}

} // namespace emulator::image
