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

} // namespace emulator
