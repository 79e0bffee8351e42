#pragma once

#include "platform/emulator/values.h"

#include <QList>

#include <functional>
#include <type_traits>
#include <utility>

namespace emulator
{

/// The only numbers that a setting takes.
struct OneOf {
    QList<double> numbers;

    /// Refuses any other number.
    Refusal check(const QJsonValue &json) const;
};

/// Restricts the values that a setting takes to a range (of a list: for each entry), to a few numbers, or by a check of
/// the device, which returns why it refuses a value.
template <class T> struct Rule {
    Rule() = default;
    Rule(Between numbers) : range(numbers) { }
    Rule(OneOf numbers) : choices(std::move(numbers)), hasChoices(true) { }
    template <class Check>
    requires std::is_invocable_r_v<Refusal, Check, const T &> Rule(Check device) : check(std::move(device)) { }
    template <class Check> Rule(Between numbers, Check device) : range(numbers), check(std::move(device)) { }

    /// Sets `value` from JSON if it follows the rule.
    Refusal parse(const QJsonValue &json, T &value) const
    {
        T parsed{};
        Refusal refusal = hasChoices ? choices.check(json) : Refusal();
        if (!refusal.isEmpty())
            return refusal;
        if constexpr (RangedType<T>)
            refusal = emulator::parse(json, parsed, range);
        else
            refusal = emulator::parse(json, parsed);
        if (refusal.isEmpty() && check)
            refusal = check(parsed);
        if (refusal.isEmpty())
            value = parsed;
        return refusal;
    }

    static constexpr Between wholeRange()
    {
        if constexpr (RangedType<T>)
            return rangeOf<T>();
        else
            return {0, 0};
    }

    Between range = wholeRange();
    OneOf choices;
    bool hasChoices = false;
    std::function<Refusal(const T &)> check;
};

} // namespace emulator
