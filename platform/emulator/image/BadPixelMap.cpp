#include "platform/emulator/image/BadPixelMap.h"

#include "platform/emulator/image/CorrectionTable.h"

#include <algorithm>

namespace emulator::image
{

namespace
{

Window commonPart(const Window &one, const Window &other)
{
    const int x = std::max(one.x, other.x);
    const int y = std::max(one.y, other.y);
    return {x, y, std::max(std::min(one.x + one.width, other.x + other.width) - x, 0),
            std::max(std::min(one.y + one.height, other.y + other.height) - y, 0)};
}

/// Calls `visit` for each pixel of a part of the array: with its index in frames of a window with these flips, and with
/// its index in a map of another one. Both windows contain the part.
template <class Visit>
void forEachPixel(const Window &part, const Window &frames, const Optics &flips, const Window &map, Visit visit)
{
    const auto width = static_cast<size_t>(part.width);
    for (int y = part.y; y < part.y + part.height; ++y) {
        const size_t inFrame = placeIn(frames, flips, part.x, y).indexIn(frames.width);
        const size_t inMap = Place{part.x - map.x, y - map.y}.indexIn(map.width);
        // Two loops, so that the compiler vectorizes them.
        if (flips.mirrored)
            for (size_t i = 0; i < width; ++i)
                visit(inFrame - i, inMap + i);
        else
            for (size_t i = 0; i < width; ++i)
                visit(inFrame + i, inMap + i);
    }
}

} // namespace

void BadPixelMap::add(const CorrectionTable &table, const Optics &flips, const Window &part)
{
    static_assert(CorrectionTable::Bad == 1);
    const uint8_t *const flags = table.flags.data();
    uint8_t *const bad = isBad.data();
    forEachPixel(commonPart(commonPart(table.window, part), window), table.window, flips, window,
                 [flags, bad](size_t inTable, size_t inMap) { bad[inMap] |= flags[inTable] & CorrectionTable::Bad; });
}

std::vector<uint8_t> BadPixelMap::forFrames(const Window &frames, const Optics &flips) const
{
    std::vector<uint8_t> list(static_cast<size_t>(frames.pixels()));
    forEachPixel(commonPart(frames, window), frames, flips, window,
                 [this, &list](size_t inFrame, size_t inMap) { list[inFrame] = isBad[inMap]; });
    return list;
}

CorrectionTable BadPixelMap::appliedTo(CorrectionTable table, const Optics &flips) const
{
    constexpr uint8_t added = CorrectionTable::Bad | CorrectionTable::Factory;
    uint8_t *const flags = table.flags.data();
    const uint8_t *const bad = isBad.data();
    forEachPixel(
        commonPart(table.window, window), table.window, flips, window,
        [flags, bad](size_t inTable, size_t inMap) { flags[inTable] |= static_cast<uint8_t>(bad[inMap] * added); });
    return table;
}

} // namespace emulator::image
