#pragma once

#include <algorithm>
#include <cmath>

namespace hlx::cam::ui
{

/// The multiple of `step` from `least` to `most` that is nearest to `value`. A step below 1 means 1. If the range
/// contains no multiple, returns a value inside the range.
inline int snapped(double value, int least, int most, int step)
{
    step = std::max(step, 1);
    const double first = std::ceil(static_cast<double>(least) / step) * step;
    const double last = std::floor(static_cast<double>(most) / step) * step;
    if (first > last)
        return static_cast<int>(std::max<double>(least, std::min<double>(std::round(value), most)));
    return static_cast<int>(std::clamp(std::round(value / step) * step, first, last));
}

} // namespace hlx::cam::ui
