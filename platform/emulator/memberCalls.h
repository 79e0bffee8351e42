#pragma once

#include "platform/emulator/dispatch.h"

#include <type_traits>

namespace emulator
{

// The forms of dispatch.h for functions of the SDK, and operations of the controller, that only call one function of a
// device. Its arguments are those of the call. An output is a pointer in the call and a reference in the device:
//
//     int zvtSetFocusPos(uint64_t handle, uint32_t position)
//     {
//         return call<&Focus::goTo>(__func__, handle, position);
//     }
//
// For functions of a device that return a value there is one output for each of them:
//
//     int zvtGetFocusRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
//     {
//         return get<&Focus::minimum, &Focus::maximum>(__func__, handle, minimum, maximum);
//     }
//
// An output of text is a Text:
//
//     int zvtGetCameraSN(uint64_t handle, char *buffer, uint32_t size)
//     {
//         return get<&Identity::serial>(__func__, handle, Text(buffer, size));
//     }

/// The class of a member function of a device, and a call of it with the arguments of a call to the camera.
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

/// Writes a value that a device returns into an output of a call.
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

/// The body that calls a function of a device.
template <auto Function, class... Args> auto callBody(Args &...arguments)
{
    return [&](DeviceOf<Function> &device) {
        return DeviceFunction<decltype(Function)>::invoke(Function, device, arguments...);
    };
}

/// The body that writes the values that a device returns into the outputs.
template <auto... Getters, class... Outputs> auto getBody(Outputs &...outputs)
{
    static_assert(sizeof...(Getters) == sizeof...(Outputs), "one output for each function of the device");
    return [&](auto &device) { (writeOutput(outputs, (device.*Getters)()), ...); };
}

// The arguments are copied, so that a text literal is a pointer that can be checked.

/// A function of the SDK that calls this function of a device.
template <auto Function, class... Args> int call(const char *name, uint64_t handle, Args... arguments)
{
    return onDevice<DeviceOf<Function>>(name, handle, callBody<Function>(arguments...), arguments...);
}

/// A function of the SDK that reads these values of a device.
template <auto Getter, auto... Getters, class... Outputs> int get(const char *name, uint64_t handle, Outputs... outputs)
{
    return onDevice<DeviceOf<Getter>>(name, handle, getBody<Getter, Getters...>(outputs...), outputs...);
}

/// An operation of the controller that calls this function of a device.
template <auto Function, class... Args>
bool controllerCall(const std::shared_ptr<Camera> &camera, const char *name, Args... arguments)
{
    return controllerOnDevice<DeviceOf<Function>>(camera, name, callBody<Function>(arguments...), arguments...);
}

/// An operation of the controller that reads these values of a device.
template <auto Getter, auto... Getters, class... Outputs>
bool controllerGet(const std::shared_ptr<Camera> &camera, const char *name, Outputs... outputs)
{
    return controllerOnDevice<DeviceOf<Getter>>(camera, name, getBody<Getter, Getters...>(outputs...), outputs...);
}

} // namespace emulator
