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

/// Whether a condition holds for a preset with frames, by its number and its settings at a time.
template <class Condition> bool Recording::anyUsed(const Condition &condition) const
{
    for (size_t place = 0; place < m_segments.size(); ++place) {
        const Segment &segment = m_segments[place];
        const uint64_t first = std::max(segment.firstNumber, m_numbers.first());
        const bool isLast = place + 1 == m_segments.size();
        const uint64_t last = isLast ? m_numbers.last() : m_segments[place + 1].firstNumber - 1;
        for (int preset = 0; segment.settings && preset < maximumPresets; ++preset)
            if (condition(preset, segment.settings->presets[static_cast<size_t>(preset)])
                && m_log.uses(preset, first, last))
                return true;
    }
    return false;
}

/// Whether its parts belong together.
bool Recording::isValid() const
{
    if (m_size.width <= 0 || m_size.height <= 0 || m_size.width > UINT16_MAX || m_size.height >= UINT16_MAX)
        return false;
    if (m_numbers.empty())
        return m_segments.empty();
    const auto isNotLater = [](const Segment &a, const Segment &b) { return a.firstNumber >= b.firstNumber; };
    const auto hasOtherSize = [this](int, const RecordedSettings::Preset &preset) {
        const image::Window &window = preset.exposure.window;
        return image::Size{window.width, window.height} != m_size;
    };
    return m_log.reaches(m_numbers.first()) && !m_segments.empty()
        && std::ranges::all_of(m_segments, [](const Segment &segment) { return segment.settings != nullptr; })
        && std::ranges::adjacent_find(m_segments, isNotLater) == m_segments.end() && !anyUsed(hasOtherSize);
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

bool Recording::abated() const
{
    return anyUsed([](int, const RecordedSettings::Preset &preset) {
        return preset.correction && preset.exposure.digitalCorrected;
    });
}

bool Recording::isPossibleWith(const image::Size &array, int presets) const
{
    const image::Window whole{0, 0, array.width, array.height};
    return whole.contains({0, 0, m_size.width, m_size.height})
        && !anyUsed([&whole, presets](int preset, const RecordedSettings::Preset &settings) {
               return preset >= presets || !whole.contains(settings.exposure.window);
           });
}

const Recording::Segment &Recording::segment(uint64_t frame) const
{
    const auto next = std::ranges::upper_bound(m_segments, m_numbers.number(frame), {}, &Segment::firstNumber);
    return next == m_segments.begin() ? m_segments.front() : *std::prev(next);
}

int64_t Recording::irigTime(uint64_t frame) const
{
    const FrameStart start = this->start(frame);
    return start.microseconds + segment(frame).settings->irigShift + latchDelay(frame, start);
}

/// From the beginning of a frame until its time is latched, in microseconds.
int64_t Recording::latchDelay(uint64_t frame, const FrameStart &start) const
{
    const RecordedSettings &settings = *segment(frame).settings;
    if (settings.irigLatch == RecordedSettings::FrameStarts)
        return 0;
    const auto preset = static_cast<size_t>(start.preset);
    const FrameTiming timing = this->timing(frame);
    double delay = timing.signal.startsReadout ? 0 : settings.integrationDelay;
    if (settings.irigLatch == RecordedSettings::IntegrationEnds)
        delay += settings.presets[preset].exposure.readout.integrationTime * 1000;
    // The settings of a stored recording may not fit its frames.
    return static_cast<int64_t>(std::min(delay, timing.durations[preset] * 1e6 / ticksPerSecond()));
}

uint64_t Recording::nextIrigSetting(uint64_t frame) const
{
    const int64_t shift = segment(frame).settings->irigShift;
    const auto later = std::ranges::upper_bound(m_segments, m_numbers.number(frame), {}, &Segment::firstNumber);
    const auto next = std::find_if(later, m_segments.end(),
                                   [shift](const Segment &other) { return other.settings->irigShift != shift; });
    return next == m_segments.end() ? frames() : m_numbers.placeFrom(next->firstNumber);
}

} // namespace emulator
