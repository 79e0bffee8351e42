#pragma once

#include "platform/emulator/dispatch.h"

#include <type_traits>

namespace emulator
{

// Short forms of dispatch.h, for functions of the SDK and operations of the controller that only call functions of a
// device. call() calls one function, which takes the arguments of the SDK function except the handle. An output is a
// pointer in the SDK and a reference in the device:
//
//     int zvtSetFocusPos(uint64_t handle, uint32_t position)
//     {
//         return call<&Focus::goTo>(__func__, handle, position);
//     }
//
// get() calls one or more functions of a device that each return a value. It has one output for each of them, in their
// order:
//
//     int zvtGetFocusRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
//     {
//         return get<&Focus::minimum, &Focus::maximum>(__func__, handle, minimum, maximum);
//     }
//
// An output for a text is a Text:
//
//     int zvtGetCameraSN(uint64_t handle, char *buffer, uint32_t size)
//     {
//         return get<&Identity::serial>(__func__, handle, Text(buffer, size));
//     }

/// For a member function of a device: the device's class, and invoke(), which calls the function with the arguments of
/// a call to the camera. `Function` is the type of the member function.
template <class Function> struct DeviceFunction;
template <class D, class Result, class... Parameters> struct DeviceFunction<Result (D::*)(Parameters...)> {
    static_assert(!std::is_same_v<D, emulator::Device>, "name the function in the class of the device");
    using Device = D;

    template <class Function, class... Args> static Result invoke(Function function, D &device, Args &...arguments)
    {
        static_assert(sizeof...(Parameters) == sizeof...(Args), "the device's function takes other arguments");
        return (device.*function)(pass<Parameters>(arguments)...);
    }

private:
    template <class Parameter, class Argument> static decltype(auto) pass(Argument &argument)
    {
        constexpr bool isOutput
            = std::is_lvalue_reference_v<Parameter> && !std::is_const_v<std::remove_reference_t<Parameter>>;
        static_assert(isOutput == (isTextOutput<Argument> || isPointerOutput<Argument>),
                      "an output is a pointer or a Text in the call, and a reference in the device");
        static_assert(!std::is_arithmetic_v<Argument> || sizeof(Argument) <= sizeof(std::decay_t<Parameter>),
                      "the device's function would get a part of the number");
        if constexpr (isTextOutput<Argument>)
            return (argument.value);
        else if constexpr (isOutput)
            return *argument;
        else
            return (argument);
    }
};
template <class D, class Result, class... Parameters>
struct DeviceFunction<Result (D::*)(Parameters...) const> : DeviceFunction<Result (D::*)(Parameters...)> {
};

template <auto Function> using DeviceOf = typename DeviceFunction<decltype(Function)>::Device;

/// Writes a value, which a function of a device has returned, to an output of a call.
template <class Output, class Value> void writeOutput(Output &output, const Value &value)
{
    static_assert(!std::is_same_v<Value, Status>, "a function that returns a status is used by call()");
    static_assert(isTextOutput<Output> == std::is_convertible_v<Value, std::string>,
                  "only texts are written to a Text");
    if constexpr (isTextOutput<Output>)
        output.value = value;
    else
        *output = static_cast<std::remove_pointer_t<Output>>(value);
}

/// Returns a body, as dispatch.h describes it, that calls `Function` of a device.
template <auto Function, class... Args> auto callBody(Args &...arguments)
{
    return [&](DeviceOf<Function> &device) {
        return DeviceFunction<decltype(Function)>::invoke(Function, device, arguments...);
    };
}

/// Returns a body that writes the results of `Getters` to the outputs, in their order.
template <auto... Getters, class... Outputs> auto getBody(Outputs &...outputs)
{
    static_assert(sizeof...(Getters) == sizeof...(Outputs), "one output for each function of the device");
    return [&](auto &device) { (writeOutput(outputs, (device.*Getters)()), ...); };
}

// The functions below take their arguments by value, so that a text literal becomes a pointer that the gate can check.

/// Implements a function of the SDK that calls `Function` of a device. Returns the status of the call.
template <auto Function, class... Args> int call(const char *name, uint64_t handle, Args... arguments)
{
    return onDevice<DeviceOf<Function>>(name, handle, callBody<Function>(arguments...), arguments...);
}

/// Implements a function of the SDK that reads values of a device. Returns the status of the call.
template <auto Getter, auto... Getters, class... Outputs> int get(const char *name, uint64_t handle, Outputs... outputs)
{
    return onDevice<DeviceOf<Getter>>(name, handle, getBody<Getter, Getters...>(outputs...), outputs...);
}

/// Implements an operation of the controller that calls `Function` of a device. Returns true on success.
template <auto Function, class... Args>
bool controllerCall(const std::shared_ptr<Camera> &camera, const char *name, Args... arguments)
{
    return controllerOnDevice<DeviceOf<Function>>(camera, name, callBody<Function>(arguments...), arguments...);
}

/// Implements an operation of the controller that reads values of a device. Returns true on success.
template <auto Getter, auto... Getters, class... Outputs>
bool controllerGet(const std::shared_ptr<Camera> &camera, const char *name, Outputs... outputs)
{
    return controllerOnDevice<DeviceOf<Getter>>(camera, name, getBody<Getter, Getters...>(outputs...), outputs...);
}

} // namespace emulator
