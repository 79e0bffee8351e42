#pragma once

#include "platform/emulator/Status.h"

#include <cstdint>
#include <functional>
#include <map>

namespace emulator
{

/// A search for the place of the focus with the sharpest picture. It moves by a tenth of the range of the focus, and
/// then halves the gaps beside the sharpest place. Places are encoder counts.
class FocusSearch
{
public:
    enum Direction { Up, Down };

    /// Moves the focus to a place and sets how sharp the picture is there, 0 or more. It must return the same value for
    /// the same place. Any status but Ok ends the search.
    using Measure = std::function<Status(uint32_t place, double &sharpness)>;

    /// The search does not leave `minimum` to `maximum`.
    FocusSearch(uint32_t minimum, uint32_t maximum, Measure measure);

    /// Climbs from a place, which must be in the range, in the direction in which the picture becomes sharper, until it
    /// is clearly less sharp. A small change does not end the climb, since the picture hardly changes while it is far
    /// from sharp: without a clear change, the climb goes on to the end of the range and then in the other direction.
    Status climb(uint32_t start);
    /// Measures over the whole range in one direction.
    Status scan(Direction direction);
    /// Measures between the sharpest place and the places beside it until they are at most 8 counts away.
    Status refine();

    /// The sharpest place so far. At least one place must have been measured.
    uint32_t sharpest() const { return m_sharpest->first; }
    /// Whether the picture was clearly sharper in the sharpest place than in the dullest one: at least 1.5 times.
    bool hasContrast() const;

private:
    using Places = std::map<uint32_t, double>;

    uint32_t next(uint32_t place, Direction direction) const;
    Status measure(uint32_t place);
    Status walk(uint32_t start, Direction direction);

    uint32_t m_minimum;
    uint32_t m_maximum;
    uint32_t m_step;
    Measure m_measure;
    Places m_places; ///< The sharpness in each place so far.
    Places::const_iterator m_sharpest;
    uint32_t m_present = 0; ///< The place of the last measure.
};

} // namespace emulator
