#include "platform/emulator/devices/FrameRanges.h"

#include <algorithm>
#include <iterator>

namespace emulator
{

void FrameRanges::add(uint64_t first, uint64_t count)
{
    if (count == 0)
        return;
    m_size += count;
    if (!empty() && last() + 1 == first)
        m_ranges.back().count += count;
    else
        m_ranges.push_back({first, count, empty() ? 0 : m_ranges.back().place + m_ranges.back().count});
}

void FrameRanges::keepLast(uint64_t count)
{
    while (m_size > count) {
        Range &oldest = m_ranges.front();
        const uint64_t dropped = std::min(m_size - count, oldest.count);
        m_size -= dropped;
        oldest.first += dropped;
        oldest.place += dropped;
        oldest.count -= dropped;
        if (oldest.count == 0)
            m_ranges.pop_front();
    }
}

uint64_t FrameRanges::number(uint64_t place) const
{
    const uint64_t wanted = m_ranges.front().place + place;
    const auto range = std::prev(std::ranges::upper_bound(m_ranges, wanted, {}, &Range::place));
    return range->first + wanted - range->place;
}

uint64_t FrameRanges::placeFrom(uint64_t number) const
{
    const auto later = std::ranges::upper_bound(m_ranges, number, {}, &Range::first);
    if (later == m_ranges.begin())
        return 0;
    const Range &range = *std::prev(later);
    return range.place + std::min(number - range.first, range.count) - m_ranges.front().place;
}

/// Whether the ranges follow each other, and the size is theirs.
bool FrameRanges::isValid() const
{
    uint64_t size = 0;
    for (size_t i = 0; i < m_ranges.size(); ++i) {
        const Range &range = m_ranges[i];
        if (range.count == 0 || range.count > UINT64_MAX - range.first || range.count > UINT64_MAX - range.place)
            return false;
        if (i > 0
            && (range.first < m_ranges[i - 1].first + m_ranges[i - 1].count
                || range.place != m_ranges[i - 1].place + m_ranges[i - 1].count))
            return false;
        size += range.count;
    }
    return size == m_size;
}

} // namespace emulator
