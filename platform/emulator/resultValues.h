#pragma once

#include "hlx/IController.h"
#include "platform/emulator/arguments.h"
#include "platform/emulator/values.h"
#include "zvt/zvttypes.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonValue>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace emulator
{

// The values of outputs as JSON, from which they can be restored exactly:
//
//     bool, number                 true or false, a number
//     integer beyond 2^53          its digits as a text
//     number that is not finite    "nan", "inf" or "-inf"
//     text                         a text, or {"base64": ...} if it is not UTF-8
//     plain structure, block       {"base64": ...}, its bytes
//     list, structure of fields    an array of its items or fields
//
// Any thread.

namespace results
{

QJsonValue fromText(std::string_view text);
Refusal parseText(const QJsonValue &json, std::string &text);

QJsonValue fromBytes(const void *bytes, size_t size);
/// Refuses another number of bytes than `size`.
Refusal parseBytes(const QJsonValue &json, size_t size, QByteArray &bytes);

QJsonValue fromReal(double number);
Refusal parseSpecialReal(const QJsonValue &json, double &number);

/// The refusal of results that are not `wanted` outputs.
Refusal checkCount(qsizetype count, qsizetype wanted);

// The fields of structures that cannot be copied byte by byte.
template <class T, class Wanted> constexpr bool isOf = std::is_same_v<std::remove_const_t<T>, Wanted>;
template <class T>
requires isOf<T, zvtSDirEntry>
auto fieldsOf(T &entry) { return std::tie(entry.name, entry.kind, entry.size, entry.time100ns); }
template <class T>
requires isOf<T, zvtSInfoEntry>
auto fieldsOf(T &entry) { return std::tie(entry.name, entry.value); }
template <class T>
requires isOf<T, hlx::cam::IController::SWindowSize>
auto fieldsOf(T &size) { return std::tie(size.width, size.height); }
template <class T>
requires isOf<T, hlx::cam::IController::SFactoryCalibration>
auto fieldsOf(T &c) { return std::tie(c.name, c.low, c.high, c.lens, c.filter, c.comment); }

template <class T>
concept HasFields = requires(T &value)
{
    fieldsOf(value);
};

template <class T> QJsonValue toJson(const T &value)
{
    if constexpr (isList<T>) {
        QJsonArray items;
        for (const auto &item : value)
            items.append(toJson(item));
        return items;
    } else if constexpr (HasFields<T>) {
        return std::apply([](const auto &...fields) { return QJsonArray{toJson(fields)...}; }, fieldsOf(value));
    } else if constexpr (std::is_same_v<T, std::string>) {
        return fromText(value);
    } else if constexpr (std::is_same_v<T, hlx::CString>) {
        return fromText({value.c_str(), static_cast<size_t>(value.length())});
    } else if constexpr (std::is_same_v<T, bool>) {
        return value;
    } else if constexpr (std::is_enum_v<T>) {
        return toJson(static_cast<std::underlying_type_t<T>>(value));
    } else if constexpr (std::is_floating_point_v<T>) {
        return fromReal(value);
    } else if constexpr (std::is_integral_v<T>) {
        constexpr int64_t exact = int64_t{1} << 53;
        if (std::cmp_greater(value, exact) || std::cmp_less(value, -exact))
            return QString::number(value);
        return static_cast<qint64>(value);
    } else {
        static_assert(isRecord<T>, "results::fieldsOf() must list the fields");
        return fromBytes(&value, sizeof value);
    }
}

/// Sets `value` from the JSON of toJson(). Returns why the JSON is refused; `value` may then be changed.
template <class T> Refusal parse(const QJsonValue &json, T &value)
{
    if constexpr (isList<T>) {
        if (!json.isArray())
            return QStringLiteral("must be a list");
        Refusal refusal;
        for (const auto &entry : json.toArray()) {
            typename IsList<T>::Value item{};
            refusal = refusal.isEmpty() ? parse(entry, item) : refusal;
            value.add(std::move(item));
        }
        return refusal;
    } else if constexpr (HasFields<T>) {
        const QJsonArray entries = json.toArray();
        Refusal refusal = checkCount(entries.size(), std::tuple_size_v<decltype(fieldsOf(value))>);
        qsizetype index = 0;
        const auto parseField = [&](auto &field) {
            if (refusal.isEmpty())
                refusal = parse(entries.at(index++), field);
        };
        std::apply([&](auto &...fields) { (parseField(fields), ...); }, fieldsOf(value));
        return refusal;
    } else if constexpr (std::is_same_v<T, std::string>) {
        return parseText(json, value);
    } else if constexpr (std::is_same_v<T, hlx::CString>) {
        std::string text;
        Refusal refusal = parseText(json, text);
        value = hlx::CString(text.data(), static_cast<int>(text.size()));
        return refusal;
    } else if constexpr (std::is_floating_point_v<T>) {
        double special = 0;
        if (!json.isString())
            return emulator::parse(json, value);
        Refusal refusal = parseSpecialReal(json, special);
        value = static_cast<T>(special);
        return refusal;
    } else if constexpr (std::is_integral_v<T> && sizeof(T) == sizeof(uint64_t)) {
        if (!json.isString())
            return emulator::parse(json, value);
        bool valid = false;
        if constexpr (std::is_signed_v<T>)
            value = json.toString().toLongLong(&valid);
        else
            value = json.toString().toULongLong(&valid);
        return valid ? Refusal() : QStringLiteral("must be a whole number");
    } else if constexpr (isScalar<T>) {
        return emulator::parse(json, value);
    } else {
        QByteArray bytes;
        Refusal refusal = parseBytes(json, sizeof value, bytes);
        if (refusal.isEmpty())
            std::memcpy(&value, bytes.constData(), sizeof value);
        return refusal;
    }
}

} // namespace results

} // namespace emulator
