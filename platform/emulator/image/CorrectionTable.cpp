#include "platform/emulator/image/CorrectionTable.h"

#include <algorithm>

namespace emulator::image
{

namespace
{

/// Copies some pixels of a frame.
template <class T>
std::vector<T> copyPart(const std::vector<T> &values, const Place &first, const Window &whole, const Window &part)
{
    std::vector<T> copy;
    copy.reserve(static_cast<size_t>(part.pixels()));
    for (int y = 0; y < part.height; ++y) {
        const auto row = values.begin() + static_cast<std::ptrdiff_t>(Place{first.x, first.y + y}.indexIn(whole.width));
        copy.insert(copy.end(), row, row + part.width);
    }
    return copy;
}

} // namespace

bool CorrectionTable::isComplete() const
{
    const auto pixels = static_cast<size_t>(window.pixels());
    return window.hasFrames() && gains.size() == pixels && offsets.size() == pixels && flags.size() == pixels;
}

std::optional<Place> CorrectionTable::placeOf(const Window &part, const Optics &optics) const
{
    if (!window.contains(part))
        return std::nullopt;
    return placeIn(window, optics, optics.mirrored ? part.x + part.width - 1 : part.x,
                   optics.inverted ? part.y + part.height - 1 : part.y);
}

CorrectionTable CorrectionTable::partFor(const Window &part, const Optics &optics) const
{
    const auto first = isComplete() && part.hasFrames() ? placeOf(part, optics) : std::nullopt;
    if (!first)
        return {};
    return {part, copyPart(gains.values(), *first, window, part), copyPart(offsets.values(), *first, window, part),
            copyPart(flags, *first, window, part)};
}

} // namespace emulator::image
