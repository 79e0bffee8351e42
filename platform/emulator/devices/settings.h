#pragma once

#include <QVariant>

#include <cmath>
#include <concepts>
#include <limits>
#include <optional>

namespace emulator
{

/// A setting that comes from another client or from a snapshot, as the kind that the device keeps. Nothing if it is of
/// another kind, broken where the device counts, or out of the kind's range.
template <class T> std::optional<T> settingAs(const QVariant &value)
{
    if constexpr (std::same_as<T, bool>) {
        if (value.typeId() == QMetaType::Bool)
            return value.toBool();
        return std::nullopt;
    } else {
        bool isNumber = value.typeId() != QMetaType::Bool && value.typeId() != QMetaType::QString;
        const double number = isNumber ? value.toDouble(&isNumber) : 0;
        // Written so that a NaN is refused too.
        if (!isNumber || !(number >= std::numeric_limits<T>::lowest() && number <= std::numeric_limits<T>::max()))
            return std::nullopt;
        if (std::integral<T> && std::trunc(number) != number)
            return std::nullopt;
        return static_cast<T>(number);
    }
}

/// Takes a setting over as it is. False if it is of another kind.
template <class T> bool takeSetting(T &member, const QVariant &value)
{
    const auto taken = settingAs<T>(value);
    if (taken)
        member = *taken;
    return taken.has_value();
}

} // namespace emulator
