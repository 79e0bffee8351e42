#pragma once

#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <concepts>
#include <limits>
#include <string>
#include <type_traits>

namespace emulator
{

// The conversion of JSON into values of devices, and back. Values from profiles, from files in the camera's storage and
// from other clients are all converted here, so that each source refuses a wrong value in the same words. Any thread.

/// The reason why a value is refused, such as "must be a whole number". Messages show it after the path of the key.
/// Empty if the value is accepted.
using Refusal = QString;

/// The range of numbers from `minimum` to `maximum`, both included.
struct Between {
    double minimum;
    double maximum;

    bool holds(double number) const { return number >= minimum && number <= maximum; } ///< False for NaN.
};

/// The types of numbers (not bool), and enumerations, which are converted as their numbers.
template <class T>
concept NumberType = std::is_enum_v<T> ||(std::is_arithmetic_v<T> && !std::same_as<T, bool>);

/// A container of numbers: std::vector or QList, or std::array for a fixed number of them.
template <class T>
concept NumberList = !std::same_as<T, std::string> && std::is_arithmetic_v<typename T::value_type>;

/// The types that have a range.
template <class T>
concept RangedType = NumberType<T> || NumberList<T>;

/// The range of all numbers that T, or an entry of the list T, can hold. Integers of 64 bits are limited to those that
/// JSON holds exactly, -2^53 to 2^53.
template <class T> constexpr Between rangeOf()
{
    using Limits = std::numeric_limits<T>;
    constexpr double exact = 9007199254740992;
    if constexpr (std::integral<T> && Limits::digits > std::numeric_limits<double>::digits)
        return {Limits::is_signed ? -exact : 0, exact};
    else
        return {static_cast<double>(Limits::lowest()), static_cast<double>(Limits::max())};
}
template <class T>
requires std::is_enum_v<T>
constexpr Between rangeOf() { return rangeOf<std::underlying_type_t<T>>(); }
template <NumberList T> constexpr Between rangeOf() { return rangeOf<typename T::value_type>(); }

namespace values
{

/// How numbers of a type are read.
struct NumberFormat {
    Between own; ///< The range of the type.
    bool whole; ///< Fractions are refused.
    bool single; ///< The type is float: a number is rounded to float before it is compared with a range.
};
template <class T> constexpr NumberFormat formatOf()
{
    return {rangeOf<T>(), !std::floating_point<T>, std::same_as<T, float>};
}

/// A number as messages show it.
QString toText(double number);
Refusal parseNumber(const QJsonValue &json, double &number, const NumberFormat &format, Between range);
Refusal parseNumbers(const QJsonValue &json, QList<double> &numbers, const NumberFormat &format, Between range);
/// Refuses a list with `size` entries unless `size` equals `wanted`.
Refusal checkSize(qsizetype size, qsizetype wanted);
QJsonValue fromNumbers(const QList<double> &numbers);

} // namespace values

// Each parse() sets `value` from JSON. It refuses JSON of another type, a number outside the range, a fraction for an
// integer, and a list of another length for a std::array; `value` is then unchanged.

Refusal parse(const QJsonValue &json, bool &value);
Refusal parse(const QJsonValue &json, QString &value);
Refusal parse(const QJsonValue &json, std::string &value); ///< UTF-8.
Refusal parse(const QJsonValue &json, QStringList &value);

template <NumberType T> Refusal parse(const QJsonValue &json, T &value, Between range = rangeOf<T>())
{
    double number = 0;
    Refusal refusal = values::parseNumber(json, number, values::formatOf<T>(), range);
    if (refusal.isEmpty())
        value = static_cast<T>(number);
    return refusal;
}

template <NumberList T> Refusal parse(const QJsonValue &json, T &value, Between range = rangeOf<T>())
{
    using Number = typename T::value_type;
    QList<double> numbers;
    Refusal refusal = values::parseNumbers(json, numbers, values::formatOf<Number>(), range);
    T taken{};
    if constexpr (requires { taken.resize(numbers.size()); })
        taken.resize(static_cast<typename T::size_type>(numbers.size()));
    else if (refusal.isEmpty())
        refusal = values::checkSize(numbers.size(), static_cast<qsizetype>(taken.size()));
    if (!refusal.isEmpty())
        return refusal;
    auto place = taken.begin();
    for (const double number : numbers)
        *place++ = static_cast<Number>(number);
    value = taken;
    return {};
}

// Each toJson() returns JSON from which parse() restores the value.

inline QJsonValue toJson(bool value) { return value; }
inline QJsonValue toJson(const QString &value) { return value; }
QJsonValue toJson(const std::string &value); ///< Null if it is not UTF-8.
QJsonValue toJson(const QStringList &value);
template <NumberType T> QJsonValue toJson(const T &value) { return static_cast<double>(value); }
template <NumberList T> QJsonValue toJson(const T &value)
{
    return values::fromNumbers(QList<double>(value.begin(), value.end()));
}

/// Returns a value from another client as JSON: a bool, a number of any type, a text, or a list of these. Null for any
/// other value.
QJsonValue fromVariant(const QVariant &value);

} // namespace emulator
