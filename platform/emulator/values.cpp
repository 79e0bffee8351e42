#include "platform/emulator/values.h"

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace values
{

Refusal outside(Between range)
{
    return u"must lie between %1 and %2"_s.arg(range.minimum, 0, 'g', 10).arg(range.maximum, 0, 'g', 10);
}

Refusal parseList(const QJsonValue &json, QJsonValue::Type kind, const QString &why, QJsonArray &entries)
{
    const QJsonArray list = json.toArray();
    const auto isKind = [kind](const QJsonValue &entry) { return entry.type() == kind; };
    if (!json.isArray() || !std::all_of(list.begin(), list.end(), isKind))
        return why;
    entries = list;
    return {};
}

Refusal checkEntry(double number, Between range, bool whole)
{
    const bool fits = range.holds(number) && (!whole || std::trunc(number) == number);
    if (fits)
        return {};
    return whole ? u"must hold whole numbers in the range"_s : u"must hold numbers in the range"_s;
}

} // namespace values

} // namespace emulator
