#pragma once

#include "platform/emulator/Camera.h"

namespace emulator
{

/// Releases the camera's lock while this object exists. Use it for the slow part of an operation, and while a delegate
/// of the SDK's caller runs. The thread must hold the lock exactly once, as it does in a function of a device that a
/// call to the camera runs.
class Camera::Unlocked
{
public:
    explicit Unlocked(Camera &camera) : m_mutex(camera.m_mutex) { m_mutex.unlock(); }
    Unlocked(const Unlocked &) = delete;
    Unlocked &operator=(const Unlocked &) = delete;
    ~Unlocked() { m_mutex.lock(); }

private:
    std::recursive_mutex &m_mutex;
};

} // namespace emulator
