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
// them passes its arguments (but the handle) in their order, which are logged and checked. memberCalls.h has the short
// forms for those that only call a function of a device; here are the forms with a body:
//
//     int zvtAutoFocusFull(uint64_t handle, int flag)
//     {
//         return onDevice<AutoFocus>(
//             __func__, handle, [&](AutoFocus &d) { return flag == 0 ? d.focusFull() : Refused; }, flag);
//     }
//
// A body runs with the camera's lock held and with outputs and texts that are not null. It returns a status, true or
// false, or nothing. A slow operation lets its time pass by Camera::letTimePass(), which releases the lock, and ends
// when the camera is disconnected meanwhile. It calls a delegate of its caller within a Camera::Unlocked.

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
        static_assert(std::is_same_v<Result, Status> || std::is_same_v<Result, int>,
                      "a body returns a status, true or false, or nothing; values are read by get()");
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
        camera->catchUp();
        const int status = statusOf(body, *camera);
        camera->catchUp();
        return status;
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

/// An operation of the controller, named "controller.X", with a body that takes a Camera&. Returns true on success, and
/// false for a null camera.
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
