#pragma once

#include <QJsonArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>
#include <utility>

namespace emulator
{

// The one way in which values of JSON become values of devices, and back. A profile, a file of the camera's storage and
// another client all pass through here, so that they are refused for the same reasons in the same words. Any thread.

/// Why a value is refused, as it follows the path of its key in a message: "must be a whole number". Empty if the value
/// was taken.
using Refusal = QString;

/// Numbers from `minimum` to `maximum`, both included.
struct Between {
    double minimum;
    double maximum;

    bool holds(double number) const { return number >= minimum && number <= maximum; } ///< False for NaN.
};

/// A container of numbers: std::vector, or std::array for a fixed number of them.
template <class T>
concept NumberList = std::is_arithmetic_v<typename T::value_type>;

namespace values
{

template <class T> struct NumberOf {
    using Type = T;
};
template <class T>
requires std::is_enum_v<T>
struct NumberOf<T> {
    using Type = std::underlying_type_t<T>;
};
template <NumberList T> struct NumberOf<T> {
    using Type = typename T::value_type;
};

Refusal outside(Between range);
/// Takes over what is a list whose entries are all of `kind`; refuses anything else with `why`.
Refusal parseList(const QJsonValue &json, QJsonValue::Type kind, const QString &why, QJsonArray &entries);
/// What is wrong with an entry of a list of numbers.
Refusal checkEntry(double number, Between range, bool whole);

} // namespace values

/// All numbers that T can hold; of a list, that an entry can hold.
template <class T> constexpr Between rangeOf()
{
    using Number = typename values::NumberOf<T>::Type;
    if constexpr (std::is_arithmetic_v<Number>)
        return {static_cast<double>(std::numeric_limits<Number>::lowest()),
                static_cast<double>(std::numeric_limits<Number>::max())};
    else
        return {0, 0};
}

/// Takes a value of JSON over into `value`. Refuses one of another kind, numbers outside `range`, fractions where T
/// counts, and lists of another length where T has a fixed one; `value` is then as before.
///
/// T is bool, a number, an enumeration (as its number), a QString, a QStringList, or a NumberList.
template <class T> Refusal parse(const QJsonValue &json, T &value, Between range = rangeOf<T>())
{
    using namespace Qt::StringLiterals;
    if constexpr (std::same_as<T, bool>) {
        if (!json.isBool())
            return u"must be true or false"_s;
        value = json.toBool();
    } else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        if (!json.isDouble())
            return u"must be a number"_s;
        if (!range.holds(json.toDouble()))
            return values::outside(range);
        if (!std::floating_point<T> && std::trunc(json.toDouble()) != json.toDouble())
            return u"must be a whole number"_s;
        value = static_cast<T>(json.toDouble());
    } else if constexpr (std::same_as<T, QString>) {
        if (!json.isString())
            return u"must be a text"_s;
        value = json.toString();
    } else if constexpr (std::same_as<T, QStringList>) {
        QJsonArray entries;
        if (Refusal refusal = values::parseList(json, QJsonValue::String, u"must be a list of texts"_s, entries);
            !refusal.isEmpty())
            return refusal;
        value.clear();
        for (const auto &entry : entries)
            value.append(entry.toString());
    } else {
        static_assert(NumberList<T>);
        using Number = typename T::value_type;
        QJsonArray entries;
        if (Refusal refusal = values::parseList(json, QJsonValue::Double, u"must be a list of numbers"_s, entries);
            !refusal.isEmpty())
            return refusal;
        T taken{};
        const auto size = static_cast<typename T::size_type>(entries.size());
        if constexpr (requires { taken.resize(size); })
            taken.resize(size);
        if (taken.size() != size)
            return u"must have %1 entries"_s.arg(taken.size());
        auto place = taken.begin();
        for (const auto &entry : std::as_const(entries)) {
            if (Refusal refusal = values::checkEntry(entry.toDouble(), range, std::integral<Number>);
                !refusal.isEmpty())
                return refusal;
            *place++ = static_cast<Number>(entry.toDouble());
        }
        value = taken;
    }
    return {};
}

/// The value as JSON: what parse() takes back. Numbers above 2^53 lose their last digits.
template <class T> QJsonValue toJson(const T &value)
{
    if constexpr (std::same_as<T, bool> || std::same_as<T, QString>) {
        return value;
    } else if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        return static_cast<double>(value);
    } else if constexpr (std::same_as<T, QStringList>) {
        return QJsonArray::fromStringList(value);
    } else {
        QJsonArray entries;
        for (const auto number : value)
            entries.append(static_cast<double>(number));
        return entries;
    }
}

} // namespace emulator
