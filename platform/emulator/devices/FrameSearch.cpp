#include "platform/emulator/devices/FrameSearch.h"

#include "platform/emulator/devices/Recording.h"

#include <algorithm>
#include <chrono>
#include <ranges>

namespace emulator
{

namespace
{

using std::chrono::microseconds;

std::chrono::year yearOf(int64_t time)
{
    const std::chrono::sys_time<microseconds> moment{microseconds(time)};
    return std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(moment)).year();
}

/// The beginning of a year, in microseconds since 1970.
int64_t beginningOf(std::chrono::year year)
{
    return microseconds(std::chrono::sys_days(year / std::chrono::January / 1).time_since_epoch()).count();
}

class Search
{
public:
    Search(const Recording &recording, int64_t start, int64_t end) : m_recording(recording), m_start(start), m_end(end)
    {
    }

    std::optional<std::pair<uint64_t, uint64_t>> result()
    {
        for (uint64_t frame = 0; frame < m_recording.frames();) {
            const uint64_t next = m_recording.nextIrigSetting(frame);
            addSetting(frame, next);
            frame = next;
        }
        if (!m_first || !m_last || *m_first > *m_last)
            return std::nullopt;
        return std::pair(*m_first, *m_last);
    }

private:
    /// The first of the frames from `from` to before `to`, with the same setting of the clock, whose time is `time` or
    /// later.
    uint64_t firstFrom(int64_t time, uint64_t from, uint64_t to) const
    {
        const auto frames = std::views::iota(from, to);
        const auto isBefore = [this, time](uint64_t frame) { return m_recording.irigTime(frame) < time; };
        return from + static_cast<uint64_t>(std::ranges::partition_point(frames, isBefore) - frames.begin());
    }

    /// Looks at the frames with the same setting of the clock, one year after the other.
    void addSetting(uint64_t from, uint64_t to)
    {
        while (from < to) {
            const auto year = yearOf(m_recording.irigTime(from));
            const uint64_t next = firstFrom(beginningOf(year + std::chrono::years(1)), from, to);
            const int64_t beginning = beginningOf(year);
            if (const uint64_t first = firstFrom(beginning + m_start, from, next); !m_first && first < next)
                m_first = first;
            if (const uint64_t after = firstFrom(beginning + m_end + 1, from, next); after > from)
                m_last = after - 1;
            from = next;
        }
    }

    const Recording &m_recording;
    int64_t m_start;
    int64_t m_end;
    std::optional<uint64_t> m_first;
    std::optional<uint64_t> m_last;
};

} // namespace

std::optional<std::pair<uint64_t, uint64_t>> findFrames(const Recording &recording, int64_t start, int64_t end)
{
    return Search(recording, start, end).result();
}

} // namespace emulator
