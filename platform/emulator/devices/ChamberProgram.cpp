#include "platform/emulator/devices/ChamberProgram.h"

#include <QStringList>

#include <cmath>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr Between secondsRange{0, 1e9};

/// Sets `point` from a text like "600:60".
Refusal parsePoint(const QString &pair, ChamberProgram::Point &point)
{
    const QStringList numbers = pair.split(u':');
    bool hasSeconds = false;
    bool hasCelsius = false;
    const double seconds = numbers.first().toDouble(&hasSeconds);
    const double celsius = numbers.last().toDouble(&hasCelsius);
    if (numbers.size() != 2 || !hasSeconds || !hasCelsius)
        return u"must be pairs of seconds and Celsius like \"0:23,600:60\""_s;
    if (!secondsRange.holds(seconds))
        return u"must have seconds between %1 and %2"_s.arg(values::toText(secondsRange.minimum),
                                                            values::toText(secondsRange.maximum));
    const Between range = ChamberProgram::celsiusRange;
    if (!range.holds(celsius))
        return u"must have temperatures between %1 and %2"_s.arg(values::toText(range.minimum),
                                                                 values::toText(range.maximum));
    point = {std::llround(seconds * 1000), celsius};
    return {};
}

} // namespace

Refusal ChamberProgram::parse(const QString &text, ChamberProgram &program)
{
    if (text.count(u',') >= maximumPoints)
        return u"must have at most %1 pairs"_s.arg(maximumPoints);
    ChamberProgram parsed;
    for (const QString &pair : text.isEmpty() ? QStringList() : text.split(u',')) {
        Point point{};
        if (Refusal refusal = parsePoint(pair, point); !refusal.isEmpty())
            return refusal;
        if (!parsed.points.empty() && point.milliseconds <= parsed.points.back().milliseconds)
            return u"must have ascending seconds"_s;
        parsed.points.push_back(point);
    }
    program = std::move(parsed);
    return {};
}

} // namespace emulator
