#pragma once

#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "hlx/delegate.h"
#include "platform/emulator/textArguments.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace emulator
{

// The gate distinguishes the inputs of a function from its outputs by the types of its arguments.

template <class T> struct IsDelegate : std::false_type {
};
template <class Signature> struct IsDelegate<hlx::delegate<Signature>> : std::true_type {
};

template <class T> constexpr bool isTextOutput = std::is_same_v<T, Text>;
template <class T> constexpr bool isTextField = std::is_same_v<T, TextField>;

/// A block of bytes that a function writes, such as a table of colors.
struct Block {
    void *data;
    size_t size;
};
template <class T> constexpr bool isBlock = std::is_same_v<T, Block>;

/// Whether a function may write to a T through a pointer. A pointer to a delegate is an input, which may be null.
template <class T> constexpr bool isWritable = !(IsDelegate<T>::value || std::is_const_v<T>);

template <class T> constexpr bool isPointerOutput = isWritable<std::remove_pointer_t<T>> && (std::is_pointer_v<T>);

template <class T> constexpr bool isScalar = std::is_arithmetic_v<T> || std::is_enum_v<T>;

/// Whether this argument is an output. A TextField is a part of another output.
template <class T> constexpr bool isOutput = isTextOutput<T> || isBlock<T> || isPointerOutput<T>;

/// A plain structure, such as the description of a correction.
template <class T> constexpr bool isRecord = std::is_class_v<T> &&std::is_trivially_copyable_v<T>;

template <class T> struct IsList : std::false_type {
};
template <class Item> struct IsList<hlx::TArray<Item>> : std::true_type {
    using Value = Item;
};
template <class T> constexpr bool isList = IsList<T>::value;

/// Returns whether a call can be made with this argument: outputs and texts must not be null.
template <class T> bool usable(const T &argument)
{
    if constexpr (isTextOutput<T> || isTextField<T>)
        return argument.usable();
    else if constexpr (isBlock<T>)
        return argument.data != nullptr;
    else if constexpr (isPointerOutput<T> || std::is_same_v<T, const char *>)
        return argument != nullptr;
    else
        return true;
}

/// Appends a text in double quotes, or "null".
void appendQuoted(std::string &list, const char *text);

/// Appends an input as the call log shows it.
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

/// Appends an argument to the inputs in the call log. Does nothing for an output.
template <class T> void appendArgument(std::string &list, const T &argument)
{
    if constexpr (!isOutput<T> && !isTextField<T>) {
        if (!list.empty())
            list += ", ";
        appendInput(list, argument);
    }
}

/// Returns the inputs of a call as the call log shows them, separated by ", ".
template <class... Args> std::string describe(const Args &...arguments)
{
    std::string list;
    (appendArgument(list, arguments), ...);
    return list;
}

} // namespace emulator
