#pragma once

#include "platform/emulator/arguments.h"
#include "platform/emulator/resultValues.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonValue>

#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

namespace emulator
{

// The outputs of a call as a list of values as in resultValues.h, and back. Any thread.

namespace results
{

/// Appends an output of a call. Does nothing for an input.
template <class T> void append(QJsonArray &results, const T &argument)
{
    if constexpr (isTextOutput<T>)
        results.append(fromText(argument.value));
    else if constexpr (isBlock<T>)
        results.append(fromBytes(argument.data, argument.size));
    else if constexpr (isPointerOutput<T>)
        results.append(toJson(*argument));
}

/// Takes the first result for an output of a call, and sets the output if `write` is true. Does nothing for an input,
/// and after a refusal.
template <class T> void take(QJsonArray &results, T &argument, bool write, Refusal &refusal)
{
    if constexpr (isOutput<T>) {
        if (!refusal.isEmpty())
            return;
        const QJsonValue json = results.takeAt(0);
        if constexpr (isTextOutput<T>) {
            std::string text;
            refusal = parseText(json, text);
            if (write)
                argument.value = std::move(text);
        } else if constexpr (isBlock<T>) {
            QByteArray bytes;
            refusal = parseBytes(json, argument.size, bytes);
            if (write)
                std::memcpy(argument.data, bytes.constData(), argument.size);
        } else {
            std::remove_pointer_t<T> value{};
            refusal = parse(json, value);
            if (write)
                *argument = std::move(value);
        }
    }
}

} // namespace results

/// Returns the outputs of a successful call, in their order.
template <class... Args> QJsonArray describeResults(const Args &...arguments)
{
    QJsonArray results;
    (results::append(results, arguments), ...);
    return results;
}

/// Writes the results of describeResults() to the outputs of a call. Returns why they are refused; no output is then
/// changed.
template <class... Args> Refusal writeResults(const QJsonArray &results, Args &...arguments)
{
    Refusal refusal = results::checkCount(results.size(), (qsizetype{isOutput<Args>} + ...));
    for (const bool write : {false, true}) {
        QJsonArray left = results;
        (results::take(left, arguments, write && refusal.isEmpty(), refusal), ...);
    }
    return refusal;
}

} // namespace emulator
