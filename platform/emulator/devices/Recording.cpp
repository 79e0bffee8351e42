#include "platform/emulator/devices/Recording.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace emulator
{

Recording::Recording(image::Size size, FrameRanges numbers, FrameLog log, std::deque<Segment> segments)
    : m_size(size), m_numbers(std::move(numbers))
{
    if (m_numbers.empty())
        return;
    m_log = std::move(log);
    m_log.forgetBefore(m_numbers.first());
    const auto after = [&segments](uint64_t number) {
        return std::ranges::upper_bound(segments, number, {}, &Segment::firstNumber);
    };
    segments.erase(after(m_numbers.last()), segments.end());
    if (const auto second = after(m_numbers.first()); second != segments.begin())
        segments.erase(segments.begin(), std::prev(second));
    m_segments = std::move(segments);
}

size_t Recording::memoryUse() const
{
    size_t settings = 0;
    const RecordedSettings *last = nullptr;
    for (const Segment &segment : m_segments)
        if (const auto *const present = segment.settings.get(); present != std::exchange(last, present))
            ++settings;
    return sizeof *this + m_numbers.bytes() + m_log.bytes() + m_segments.size() * sizeof(Segment)
        + settings * sizeof(RecordedSettings);
}

const Recording::Segment &Recording::segment(uint64_t frame) const
{
    const auto next = std::ranges::upper_bound(m_segments, m_numbers.number(frame), {}, &Segment::firstNumber);
    return next == m_segments.begin() ? m_segments.front() : *std::prev(next);
}

} // namespace emulator
