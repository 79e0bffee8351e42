#pragma once

#include "platform/emulator/Camera.h"
#include "platform/emulator/GatePass.h"
#include "platform/emulator/arguments.h"

#include <memory>
#include <mutex>
#include <string>
#include <type_traits>

namespace emulator
{

// The ways in which the functions of the SDK and the operations of the controller reach an emulated camera. Each of
// them is one line through a template of this file, with its arguments (but the handle) in their order: they are
// logged, checked and passed on.
//
// A function that is one function of a device names it. Outputs are pointers here and references there:
//
//     int zvtSetFocusPos(uint64_t handle, uint32_t position)
//     {
//         return call<&Focus::goTo>(__func__, handle, position);
//     }
//
// A function that reads values which a device returns names their getters, one for each output:
//
//     int zvtGetFocusRange(uint64_t handle, uint32_t *minimum, uint32_t *maximum)
//     {
//         return get<&Focus::minimum, &Focus::maximum>(__func__, handle, minimum, maximum);
//     }
//
// A text output is a Text:
//
//     int zvtGetCameraSN(uint64_t handle, char *buffer, uint32_t size)
//     {
//         return get<&Identity::serial>(__func__, handle, Text(buffer, size));
//     }
//
// All others have a body, which takes the device (onDevice) or the camera (dispatch).
//
// Bodies and functions of devices run with the camera's lock held and with outputs and texts that are not null. They
// return a status, true or false, or nothing. A slow operation releases the lock while it takes its time, and ends when
// the camera is disconnected meanwhile; it calls a delegate of its caller within a Camera::Unlocked:
//
//     Status Wheel::turnTo(uint8_t slot)
//     {
//         if (const Status status = camera().letTimePass(turnMilliseconds); status != Ok)
//             return status;
//         m_slot = slot;
//         return Ok;
//     }

/// A function of a device: its class, and how it is called with the arguments of a call.
template <class Function> struct DeviceFunction;
template <class D, class Result, class... Parameters> struct DeviceFunction<Result (D::*)(Parameters...)> {
    using Device = D;

    template <class Function, class... Args> static Result invoke(Function function, D &device, Args &...arguments)
    {
        static_assert(sizeof...(Parameters) == sizeof...(Args));
        return (device.*function)(pass<Parameters>(arguments)...);
    }

private:
    /// An output of a call is a reference to the device.
    template <class Parameter, class Argument> static decltype(auto) pass(Argument &argument)
    {
        constexpr bool isOutput
            = std::is_lvalue_reference_v<Parameter> && !std::is_const_v<std::remove_reference_t<Parameter>>;
        if constexpr (isOutput && isTextOutput<Argument>)
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
    if constexpr (isTextOutput<Output>)
        output.value = value;
    else
        *output = static_cast<std::remove_pointer_t<Output>>(value);
}

/// The status for the result of a body: the status that it returns, Ok or Refused for true or false, Ok for nothing.
template <class Body, class Subject> int statusOf(Body &body, Subject &subject)
{
    using Result = std::invoke_result_t<Body &, Subject &>;
    if constexpr (std::is_void_v<Result>) {
        body(subject);
        return Ok;
    } else if constexpr (std::is_same_v<Result, bool>) {
        return body(subject) ? Ok : Refused;
    } else {
        return body(subject);
    }
}

/// A call to a camera that may be null, with a body that takes a Camera&. A held call does not keep the camera alive.
template <class Body, class... Args>
int callCamera(std::shared_ptr<Camera> camera, const char *name, bool resultIsScripted, Body &&body, Args &...arguments)
{
    GatePass pass(camera ? camera->gate() : Sdk::gate(), name, describe(arguments...));
    if (!camera)
        return pass.end(InvalidHandle);
    const std::weak_ptr<Camera> waiting = camera;
    camera.reset();
    pass.wait();
    camera = waiting.lock();
    if (!camera)
        return pass.end(InvalidHandle);
    if (!camera->connected())
        return pass.end(NotConnected);
    const auto answer = [&]() -> int {
        const std::lock_guard lock(camera->mutex());
        return statusOf(body, *camera);
    };
    return pass.answer(resultIsScripted, answer, arguments...);
}

/// A body that takes a Camera&, made from one that takes a D&: Absent if the camera has no such device.
template <class D, class Body> auto withDevice(Body &body)
{
    return [&body](Camera &camera) -> int {
        D *device = camera.device<D>();
        return device ? statusOf(body, *device) : Absent;
    };
}

/// Reads a value for each output by its getter.
template <auto... Getters, class D, class... Outputs> void readValues(D &device, Outputs &...outputs)
{
    static_assert(sizeof...(Getters) == sizeof...(Outputs));
    (writeOutput(outputs, (device.*Getters)()), ...);
}

/// A function of the SDK whose body takes a Camera&.
template <class Body, class... Args> int dispatch(const char *name, uint64_t handle, Body body, Args &&...arguments)
{
    return callCamera(Camera::find(handle), name, false, body, arguments...);
}

/// A function of the SDK whose body takes a D&.
template <class D, class Body, class... Args>
int onDevice(const char *name, uint64_t handle, Body body, Args &&...arguments)
{
    return callCamera(Camera::find(handle), name, false, withDevice<D>(body), arguments...);
}

/// A function of the SDK that is this function of a device.
template <auto Function, class... Args> int call(const char *name, uint64_t handle, Args... arguments)
{
    const auto body = [&](DeviceOf<Function> &device) {
        return DeviceFunction<decltype(Function)>::invoke(Function, device, arguments...);
    };
    return onDevice<DeviceOf<Function>>(name, handle, body, arguments...);
}

/// A function of the SDK that reads these values of a device, one for each output.
template <auto Getter, auto... Getters, class... Outputs> int get(const char *name, uint64_t handle, Outputs... outputs)
{
    const auto body = [&](DeviceOf<Getter> &device) { readValues<Getter, Getters...>(device, outputs...); };
    return onDevice<DeviceOf<Getter>>(name, handle, body, outputs...);
}

/// A function of the SDK for equipment that no emulated camera has: it fails as on a camera that lacks it.
template <class... Args> int absent(const char *name, uint64_t handle, Args &&...arguments)
{
    return callCamera(
        Camera::find(handle), name, false, [](Camera &) { return Absent; }, arguments...);
}

/// A function of the SDK that takes no handle and returns a status. Its body takes nothing.
template <class Body, class... Args> int withoutHandle(const char *name, Body body, Args &&...arguments)
{
    GatePass pass(Sdk::gate(), name, describe(arguments...));
    pass.wait();
    return pass.answer(
        false, [&]() -> int { return body(); }, arguments...);
}

/// A function of the SDK that takes no handle and returns a pointer, null for what it does not know. Its body takes
/// nothing and returns the pointer.
template <class Body, class... Args> auto lookUp(const char *name, Body body, Args &&...arguments)
{
    using Found = std::invoke_result_t<Body>;
    Found found = nullptr;
    GatePass pass(Sdk::gate(), name, describe(arguments...));
    pass.wait();
    const auto answer = [&]() -> int { return (found = body()) ? Ok : Refused; };
    const int status = pass.answer(false, answer, arguments...);
    if constexpr (std::is_same_v<Found, const char *>)
        if (status == Ok && !found)
            found = GatePass::staticText(pass.script());
    return found;
}

/// An operation of the controller, named "controller.X", with a body that takes a Camera&. A null camera fails. The
/// result is that of the operation.
template <class Body, class... Args>
bool dispatchController(const std::shared_ptr<Camera> &camera, const char *name, Body body, Args &&...arguments)
{
    return callCamera(camera, name, true, body, arguments...) == Ok;
}

/// The same with a body that takes a D&.
template <class D, class Body, class... Args>
bool controllerOnDevice(const std::shared_ptr<Camera> &camera, const char *name, Body body, Args &&...arguments)
{
    return callCamera(camera, name, true, withDevice<D>(body), arguments...) == Ok;
}

/// An operation of the controller that is this function of a device.
template <auto Function, class... Args>
bool controllerCall(const std::shared_ptr<Camera> &camera, const char *name, Args... arguments)
{
    const auto body = [&](DeviceOf<Function> &device) {
        return DeviceFunction<decltype(Function)>::invoke(Function, device, arguments...);
    };
    return controllerOnDevice<DeviceOf<Function>>(camera, name, body, arguments...);
}

/// An operation of the controller that reads these values of a device, one for each output.
template <auto Getter, auto... Getters, class... Outputs>
bool controllerGet(const std::shared_ptr<Camera> &camera, const char *name, Outputs... outputs)
{
    const auto body = [&](DeviceOf<Getter> &device) { readValues<Getter, Getters...>(device, outputs...); };
    return controllerOnDevice<DeviceOf<Getter>>(camera, name, body, outputs...);
}

/// A call that the framework answers itself, whether or not the camera is connected; a null camera fails. `answer`
/// takes nothing, runs with the camera's lock held and returns a status. True on success.
template <class Answer, class... Args>
bool passGate(const std::shared_ptr<Camera> &camera, const char *name, Answer answer, Args &&...arguments)
{
    GatePass pass(camera ? camera->gate() : Sdk::gate(), name, describe(arguments...), AnsweredBy::Framework);
    pass.wait();
    const auto locked = [&]() -> int {
        if (!camera)
            return InvalidHandle;
        const std::lock_guard lock(camera->mutex());
        return answer();
    };
    return pass.answer(true, locked, arguments...) == Ok;
}

} // namespace emulator
