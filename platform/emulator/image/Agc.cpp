#include "platform/emulator/image/Agc.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace emulator::image
{

namespace
{

constexpr float white = 255;

/// The number of pixels of each count.
using Histogram = std::vector<uint32_t>;
/// A level for each count, with its fraction.
using Table = std::vector<float>;

Window clipped(const Window &region, Size size)
{
    const int x = std::clamp(region.x, 0, size.width);
    const int y = std::clamp(region.y, 0, size.height);
    const auto length = [](int start, int first, int extent, int limit) {
        const int64_t end = std::min(int64_t(start) + extent, int64_t(limit));
        return static_cast<int>(std::max(end - first, int64_t(0)));
    };
    return {x, y, length(region.x, x, region.width, size.width), length(region.y, y, region.height, size.height)};
}

bool fits(std::span<const uint16_t> counts, Size size)
{
    return size.width > 0 && size.height > 0
        && counts.size() == static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
}

Histogram histogramOf(std::span<const uint16_t> counts, Size size, const Window &region)
{
    Histogram histogram(maximumCount + 1);
    if (!fits(counts, size))
        return histogram;
    const Window part = clipped(region, size);
    for (int y = part.y; y < part.y + part.height; ++y) {
        const auto first = static_cast<size_t>(y) * static_cast<size_t>(size.width) + static_cast<size_t>(part.x);
        for (const uint16_t count : counts.subspan(first, static_cast<size_t>(part.width)))
            ++histogram[count];
    }
    return histogram;
}

uint64_t sumOf(const Histogram &histogram) { return std::accumulate(histogram.begin(), histogram.end(), uint64_t(0)); }

/// A level is the share of the pixels that are not brighter, each entry of the histogram counting up to the plateau.
Table equalised(Histogram histogram, uint32_t plateau)
{
    for (uint32_t &pixels : histogram)
        pixels = std::min(pixels, plateau);
    const float perPixel = white / static_cast<float>(sumOf(histogram));
    Table table(histogram.size());
    uint32_t sum = 0;
    for (size_t count = 0; count < table.size(); ++count) {
        sum += histogram[count];
        table[count] = static_cast<float>(sum) * perPixel;
    }
    return table;
}

/// Black up to `low`, white from `high`, and a straight line between them. A step at `low` if `high` is not above it.
Table ramp(int low, int high)
{
    const float perCount = white / static_cast<float>(std::max(high - low, 1));
    // For a step the line passes through `low - 1` and `low`.
    const int start = low < high ? low : low - 1;
    Table table(maximumCount + 1);
    for (size_t count = 0; count < table.size(); ++count)
        table[count] = std::clamp(static_cast<float>(static_cast<int>(count) - start) * perCount, 0.0f, white);
    return table;
}

/// A ramp between the counts below and above which 0.5 % of the pixels are.
Table stretched(const Histogram &histogram)
{
    constexpr uint64_t parts = 1000;
    constexpr uint64_t darkParts = 5;
    const uint64_t pixels = sumOf(histogram);
    int count = 0;
    uint64_t sum = histogram[0];
    const auto countAt = [&](uint64_t part) {
        while (sum * parts < pixels * part)
            sum += histogram[static_cast<size_t>(++count)];
        return count;
    };
    const int low = countAt(darkParts);
    return ramp(low, countAt(parts - darkParts));
}

} // namespace

void Agc::update(std::span<const uint16_t> counts, Size size, const Window &region, const AgcSettings &settings,
                 double step)
{
    Table goal;
    if (settings.method == AgcMethod::Manual) {
        goal = ramp(settings.manualLow, settings.manualHigh);
    } else {
        Histogram histogram = histogramOf(counts, size, region);
        if (sumOf(histogram) == 0)
            return;
        goal = settings.method == AgcMethod::Linear ? stretched(histogram)
                                                    : equalised(std::move(histogram), settings.plateau);
    }
    const float share = m_table.empty() ? 1 : static_cast<float>(within(0, step, 1));
    m_table.resize(goal.size());
    for (size_t count = 0; count < goal.size(); ++count) {
        // Exact for 0 and 1.
        m_table[count] = goal[count] * share + m_table[count] * (1 - share);
        m_levels[count] = static_cast<uint8_t>(m_table[count] + 0.5f);
    }
}

void Agc::apply(std::span<const uint16_t> counts, std::vector<uint8_t> &levels) const
{
    levels.resize(counts.size());
    for (size_t i = 0; i < counts.size(); ++i)
        levels[i] = m_levels[counts[i]];
}

Agc::Limits Agc::limits() const
{
    // More counts never become a darker level.
    const auto indexOf = [this](auto found) { return static_cast<int>(found - m_levels.begin()); };
    const int black = indexOf(std::ranges::upper_bound(m_levels, 0)) - 1;
    const int whiteFrom = indexOf(std::ranges::lower_bound(m_levels, static_cast<uint8_t>(white)));
    return {static_cast<uint16_t>(std::max(black, 0)), static_cast<uint16_t>(std::min(whiteFrom, int(maximumCount)))};
}

} // namespace emulator::image
