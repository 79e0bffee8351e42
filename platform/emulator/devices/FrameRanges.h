#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

namespace emulator
{

/// The numbers of the frames of a recording, in order. Numbers that follow each other are one entry.
class FrameRanges
{
public:
    /// Appends `count` frames from the number `first` on, which is above all numbers so far.
    void add(uint64_t first, uint64_t count);
    /// Drops all but the last `count` frames.
    void keepLast(uint64_t count);

    bool empty() const { return m_ranges.empty(); }
    uint64_t size() const { return m_size; }
    /// The memory of the entries.
    size_t bytes() const { return m_ranges.size() * sizeof(Range); }
    // These need frames.
    uint64_t first() const { return m_ranges.front().first; }
    uint64_t last() const { return m_ranges.back().first + m_ranges.back().count - 1; }
    /// The number of the frame with this place, from 0.
    uint64_t number(uint64_t place) const;

private:
    struct Range {
        uint64_t first;
        uint64_t count;
        uint64_t place; ///< Of the first frame, if no frame had been dropped.
    };

    std::deque<Range> m_ranges;
    uint64_t m_size = 0;
};

} // namespace emulator
