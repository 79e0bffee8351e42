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
    /// The place of the first frame with this number or a higher one; size() if there is none.
    uint64_t placeFrom(uint64_t number) const;

    /// See RecipeArchive.h.
    template <class Archive, class Self> static void archive(Archive &archive, Self &self)
    {
        archive(self.m_ranges, self.m_size);
        archive.require([&self] { return self.isValid(); });
    }

private:
    struct Range {
        uint64_t first = 0;
        uint64_t count = 0;
        uint64_t place = 0; ///< Of the first frame, if no frame had been dropped.

        template <class Archive, class Self> static void archive(Archive &archive, Self &self)
        {
            archive(self.first, self.count, self.place);
        }
    };

    bool isValid() const;

    std::deque<Range> m_ranges;
    uint64_t m_size = 0;
};

} // namespace emulator
