#pragma once

#include "platform/emulator/values.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace emulator
{

/// The program of a climate chamber, in which a camera is tested: temperatures at times after its start. The
/// temperature changes linearly between two points.
struct ChamberProgram {
    struct Point {
        int64_t milliseconds; ///< Since the start.
        double celsius;
    };

    static constexpr int maximumPoints = 64;
    static constexpr Between celsiusRange{-60, 80};

    /// Sets `program` from pairs "seconds:Celsius" with commas between them, such as "0:23,600:60". Seconds may have
    /// fractions down to a millisecond. An empty text is a program without points. Returns why a text is refused, and
    /// then leaves `program` unchanged: it has other parts than pairs, more than maximumPoints, seconds that do not
    /// ascend or are below 0 or above 1e9, or a temperature outside celsiusRange.
    static Refusal parse(const QString &text, ChamberProgram &program);

    std::vector<Point> points; ///< In ascending order of their times, which differ.
};

} // namespace emulator
