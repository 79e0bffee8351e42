#pragma once

#include "common/Nullable.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <type_traits>

#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

// Reading helpers of pool tasks. Each makes one call of the SDK or the controller. Any thread.

namespace reading
{

/// The last parameter of an SDK function or of a controller operation.
template <class Function> struct LastParameter;

template <class Result, class First> struct LastParameter<Result (*)(First)> {
    using Type = First;
};

template <class Result, class First, class... Rest>
struct LastParameter<Result (*)(First, Rest...)> : LastParameter<Result (*)(Rest...)> {
};

template <class Result, class... Parameters>
struct LastParameter<Result (hlx::cam::IZVTController::*)(Parameters...)> : LastParameter<Result (*)(Parameters...)> {
};

template <class Function> using Out = std::remove_pointer_t<typename LastParameter<Function>::Type>;

/// Calls a controller operation. Returns 0 if it returned true or has no return value, -1 if it returned false or the
/// controller is null.
template <class Result, class... Parameters, class... Arguments>
int callController(const hlx::TSharedPtr<hlx::cam::IZVTController> &controller,
                   Result (hlx::cam::IZVTController::*operation)(Parameters...), Arguments... arguments)
{
    if (!controller)
        return -1;
    if constexpr (std::is_void_v<Result>)
        return ((controller.get()->*operation)(arguments...), 0);
    else
        return (controller.get()->*operation)(arguments...) ? 0 : -1;
}

} // namespace reading

/// The UTF-8 text in a buffer of `size` bytes, up to the first zero, or all of it if there is no zero.
inline QString fromBoundedUtf8(const char *text, size_t size)
{
    return QString::fromUtf8(text, static_cast<qsizetype>(qstrnlen(text, size)));
}

/// Calls `get(arguments..., &value)`. If the status is 0, sets `field` to the value, converted from the SDK's type (a
/// byte to a bool, 16 bits to an int), and returns true.
template <class T, class Get, class... Arguments> bool fetch(Nullable<T> &field, Get get, Arguments... arguments)
{
    reading::Out<Get> value{};
    if (get(arguments..., &value) != 0)
        return false;
    field = static_cast<T>(value);
    return true;
}

/// As above for an operation of the controller, called as get(arguments..., &value). Returns false for a null
/// controller.
template <class T, class Result, class... Parameters, class... Arguments>
bool fetch(Nullable<T> &field, Result (hlx::cam::IZVTController::*get)(Parameters...),
           const hlx::TSharedPtr<hlx::cam::IZVTController> &controller, Arguments... arguments)
{
    reading::Out<decltype(get)> value{};
    if (reading::callController(controller, get, arguments..., &value) != 0)
        return false;
    field = static_cast<T>(value);
    return true;
}

/// The value that `get` returns through its last parameter, or `fallback` if it fails. Arguments as of fetch().
template <class T, class Get, class... Arguments> T readOr(T fallback, Get get, Arguments... arguments)
{
    Nullable<T> value;
    return fetch(value, get, arguments...) ? value.get() : fallback;
}

/// Calls a function with two outputs. Sets both fields and returns true if the status is 0, else sets neither.
template <class T, class Get, class... Arguments>
bool readPair(Nullable<T> &first, Nullable<T> &second, Get get, Arguments... arguments)
{
    reading::Out<Get> firstValue{};
    reading::Out<Get> secondValue{};
    if (get(arguments..., &firstValue, &secondValue) != 0)
        return false;
    first = static_cast<T>(firstValue);
    second = static_cast<T>(secondValue);
    return true;
}

/// Calls `get(arguments..., buffer, Size)`. If the status is 0, sets `field` to the text and returns true.
template <uint32_t Size, class Get, class... Arguments>
bool readText(Nullable<QString> &field, Get get, Arguments... arguments)
{
    std::array<char, Size> buffer{};
    if (get(arguments..., buffer.data(), Size) != 0)
        return false;
    field = fromBoundedUtf8(buffer.data(), buffer.size());
    return true;
}

/// The text that `get(arguments..., buffer, Size)` writes, or `fallback` if it fails.
template <uint32_t Size, class Get, class... Arguments>
QString textOr(const QString &fallback, Get get, Arguments... arguments)
{
    Nullable<QString> text;
    return readText<Size>(text, get, arguments...) ? text.get() : fallback;
}
