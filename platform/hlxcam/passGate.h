#pragma once

#include "platform/emulator/dispatch.h"

#include <memory>
#include <mutex>

namespace hlx::cam
{

/// A call that the framework answers from what it knows, whether or not the camera is connected; a null camera fails.
/// `answer` takes nothing, runs with the camera's lock held and returns a status. What follows are the call's
/// arguments, as for the other forms of dispatch. True on success.
template <class Answer, class... Args>
bool passGate(const std::shared_ptr<emulator::Camera> &camera, const char *name, Answer answer, Args &&...arguments)
{
    emulator::GatePass pass(camera ? camera->gate() : emulator::Sdk::gate(), name, emulator::describe(arguments...),
                            emulator::AnsweredBy::Framework);
    pass.wait();
    const auto locked = [&]() -> int {
        if (!camera)
            return emulator::InvalidHandle;
        const std::lock_guard lock(camera->mutex());
        return answer();
    };
    return pass.answer(true, locked, arguments...) == emulator::Ok;
}

} // namespace hlx::cam
