#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

#include "hlx/CZVTController.h"
#include "hlx/TSharedPtr.h"
#include "platform/emulator/control.h"

/// An emulated camera of a profile with its controller. The clock is stopped, and the camera has its own temporary
/// storage.
class CameraRig
{
public:
    explicit CameraRig(const QString &profile = QStringLiteral("everything"), bool connected = true);
    CameraRig(const CameraRig &) = delete;
    CameraRig &operator=(const CameraRig &) = delete;
    /// Releases every held call, settles, and starts the clock again.
    ~CameraRig();

    emulator::Gate &gate() { return m_camera->gate(); }
    emulator::Camera &camera() { return *m_camera; }
    hlx::TSharedPtr<hlx::cam::CZVTController> controller() const { return m_controller; }

    /// The names of the calls that reached the camera since `mark`, in order, without controller.IsConnected,
    /// controller.GetHandle and controller.capabilities, which every access makes.
    QStringList callsSince(size_t mark) const;

    /// Waits until no task of the pool runs, delivers all events that tasks have posted, and deletes the objects that
    /// were to be deleted later. It does not wait for workers with a thread of their own: use the QTRY_ macros for
    /// these.
    static void settle();

    /// Advances the clock by 120 s, after which the detector of a new camera is cold. Its frames are white before.
    static void coolDetector();

private:
    QTemporaryDir m_storage;
    std::shared_ptr<emulator::Camera> m_camera;
    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
};
