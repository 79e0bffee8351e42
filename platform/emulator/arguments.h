#pragma once

#include "hlx/CString.h"
#include "hlx/delegate.h"

#include <QVariant>

#include <charconv>
#include <cstdint>
#include <string>
#include <type_traits>

namespace emulator
{

/// A text that a function gives back in a buffer of its caller. The device writes `value`; the gate copies it into the
/// buffer once the call has succeeded.
class Text
{
public:
    Text(char *buffer, uint32_t size) : m_buffer(buffer), m_size(size) { }

    std::string value; ///< UTF-8.

    /// A null buffer and an empty one hold no text.
    bool usable() const { return m_buffer && m_size > 0; }

    /// Writes `value` with a zero at its end, cut between two characters where it does not fit. With `fill` every byte
    /// of the buffer belongs to the text, and no zero ends it.
    void copyToBuffer(bool fill) const;

private:
    char *m_buffer;
    uint32_t m_size;
};

// What the gate has to know about the arguments of a function: which of them are inputs, which outputs.

template <class T> struct IsDelegate : std::false_type {
};
template <class Signature> struct IsDelegate<hlx::delegate<Signature>> : std::true_type {
};

template <class T> constexpr bool isTextOutput = std::is_same_v<T, Text>;

/// What a function may change through a pointer. A delegate is an input though it comes by pointer, and may be null.
template <class T> constexpr bool isWritable = !(IsDelegate<T>::value || std::is_const_v<T>);

template <class T> constexpr bool isPointerOutput = isWritable<std::remove_pointer_t<T>> && (std::is_pointer_v<T>);

template <class T> constexpr bool isScalar = std::is_arithmetic_v<T> || std::is_enum_v<T>;

/// An output that a script can give a value.
template <class T>
constexpr bool isScriptable = isTextOutput<T> || (isPointerOutput<T> && isScalar<std::remove_pointer_t<T>>);

/// Whether a call can be made with this argument: outputs and texts must not be null.
template <class T> bool usable(const T &argument)
{
    if constexpr (isTextOutput<T>)
        return argument.usable();
    else if constexpr (isPointerOutput<T> || std::is_same_v<T, const char *>)
        return argument != nullptr;
    else
        return true;
}

void appendQuoted(std::string &list, const char *text);

/// An input as the call log shows it.
template <class T> void appendInput(std::string &list, const T &argument)
{
    if constexpr (std::is_convertible_v<const T &, const char *>) {
        appendQuoted(list, argument);
    } else if constexpr (std::is_same_v<T, hlx::CString>) {
        appendQuoted(list, argument.c_str());
    } else if constexpr (std::is_same_v<T, bool>) {
        list += argument ? "true" : "false";
    } else if constexpr (std::is_enum_v<T>) {
        list += std::to_string(static_cast<std::underlying_type_t<T>>(argument));
    } else if constexpr (std::is_arithmetic_v<T>) {
        char digits[40];
        list.append(digits, std::to_chars(digits, digits + sizeof digits, argument).ptr);
    } else if constexpr (IsDelegate<std::remove_pointer_t<T>>::value) {
        list += "delegate";
    } else {
        list += "object";
    }
}

/// Adds an argument to the inputs in a call log, if it is one.
template <class T> void appendArgument(std::string &list, const T &argument)
{
    if constexpr (!isTextOutput<T> && !isPointerOutput<T>) {
        if (!list.empty())
            list += ", ";
        appendInput(list, argument);
    }
}

/// The inputs of a call as the call log shows them, separated by ", ".
template <class... Args> std::string describe(const Args &...arguments)
{
    std::string list;
    (appendArgument(list, arguments), ...);
    return list;
}

/// Takes the first of the scripted values for an argument, if that is an output and a value is left.
template <class T> void takeScripted(QVariantList &values, T &argument)
{
    if constexpr (isScriptable<T>) {
        if (values.isEmpty())
            return;
        const QVariant scripted = values.takeFirst();
        using Value = std::remove_pointer_t<T>;
        if constexpr (isTextOutput<T>)
            argument.value = scripted.toString().toStdString();
        else if constexpr (std::is_same_v<Value, bool>)
            *argument = scripted.toBool();
        else if constexpr (std::is_floating_point_v<Value>)
            *argument = static_cast<Value>(scripted.toDouble());
        else if constexpr (std::is_same_v<Value, uint64_t>)
            *argument = scripted.toULongLong();
        else
            *argument = static_cast<Value>(scripted.toLongLong());
    }
}

/// Gives the outputs of a call the values of a script, in their order. Outputs without a value stay as they are.
template <class... Args> void writeScript(const QVariant &script, Args &...arguments)
{
    QVariantList values = script.typeId() == QMetaType::QVariantList ? script.toList() : QVariantList{script};
    (takeScripted(values, arguments), ...);
}

} // namespace emulator
