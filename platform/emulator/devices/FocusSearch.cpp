#include "platform/emulator/devices/FocusSearch.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace emulator
{

namespace
{

constexpr uint32_t stepsOfRange = 10;
constexpr uint32_t finestGap = 8;

bool isClearlySharper(double sharpness, double other)
{
    constexpr double contrast = 1.5;
    return sharpness > 0 && sharpness >= contrast * other;
}

} // namespace

FocusSearch::FocusSearch(uint32_t minimum, uint32_t maximum, Measure measure)
    : m_minimum(minimum), m_maximum(maximum), m_step(std::max((maximum - minimum) / stepsOfRange, 1U)),
      m_measure(std::move(measure)), m_sharpest(m_places.end())
{
}

Status FocusSearch::climb(uint32_t start)
{
    const uint32_t above = next(start, Up);
    const uint32_t below = next(start, Down);
    Status status = measure(start);
    if (status == Ok)
        status = measure(above);
    if (status == Ok && m_sharpest->first == start)
        status = measure(below);
    if (status != Ok)
        return status;
    const bool down = m_places.contains(below) && m_places.at(below) > m_places.at(above);
    status = walk(start, down ? Down : Up);
    if (status != Ok || isClearlySharper(m_sharpest->second, m_places.at(start)))
        return status;
    return walk(start, down ? Up : Down);
}

Status FocusSearch::scan(Direction direction)
{
    uint32_t place = direction == Up ? m_minimum : m_maximum;
    const uint32_t end = direction == Up ? m_maximum : m_minimum;
    Status status = measure(place);
    while (status == Ok && place != end) {
        place = next(place, direction);
        status = measure(place);
    }
    return status;
}

Status FocusSearch::refine()
{
    for (;;) {
        const uint32_t place = sharpest();
        const uint32_t below = place - (m_sharpest == m_places.begin() ? place : std::prev(m_sharpest)->first);
        const uint32_t above = (std::next(m_sharpest) == m_places.end() ? place : std::next(m_sharpest)->first) - place;
        if (std::max(below, above) <= finestGap)
            return Ok;
        // Of two equal gaps, the one on the side of the present place is nearer.
        const bool down = below != above ? below > above : m_present < place;
        if (const Status status = measure(down ? place - below / 2 : place + above / 2); status != Ok)
            return status;
    }
}

bool FocusSearch::hasContrast() const
{
    const auto isDull
        = [this](const Places::value_type &place) { return isClearlySharper(m_sharpest->second, place.second); };
    return std::ranges::any_of(m_places, isDull);
}

/// The next place of a walk: the end of the range where it is nearer than a step.
uint32_t FocusSearch::next(uint32_t place, Direction direction) const
{
    return direction == Up ? place + std::min(m_step, m_maximum - place) : place - std::min(m_step, place - m_minimum);
}

Status FocusSearch::measure(uint32_t place)
{
    if (m_places.contains(place))
        return Ok;
    double sharpness = 0;
    const Status status = m_measure(place, sharpness);
    if (status == Ok) {
        m_present = place;
        const auto measured = m_places.emplace(place, sharpness).first;
        if (m_sharpest == m_places.end() || sharpness > m_sharpest->second)
            m_sharpest = measured;
    }
    return status;
}

/// Measures from a place on until it is clearly less sharp than in the sharpest place, or to the end of the range.
Status FocusSearch::walk(uint32_t start, Direction direction)
{
    for (uint32_t place = start; place != next(place, direction);) {
        place = next(place, direction);
        if (const Status status = measure(place); status != Ok)
            return status;
        if (isClearlySharper(m_sharpest->second, m_places.at(place)))
            return Ok;
    }
    return Ok;
}

} // namespace emulator
