#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

#include "hlx/CZVTController.h"
#include "hlx/TSharedPtr.h"
#include "platform/emulator/control.h"

/// A connected emulated camera of a profile with its controller, on a stopped clock, with storage of its own.
class CameraRig
{
public:
    explicit CameraRig(const QString &profile = QStringLiteral("everything"), bool connected = true);
    CameraRig(const CameraRig &) = delete;
    CameraRig &operator=(const CameraRig &) = delete;
    /// Releases every held call, waits for the pool, and lets the clock run again.
    ~CameraRig();

    emulator::Gate &gate() { return m_camera->gate(); }
    emulator::Camera &camera() { return *m_camera; }
    hlx::TSharedPtr<hlx::cam::CZVTController> controller() const { return m_controller; }

    /// The names of the calls that reached the camera since `mark`, in order; those of controller.IsConnected,
    /// controller.GetHandle and controller.capabilities, which say nothing, are left out.
    QStringList callsSince(size_t mark) const;

    /// Waits until no task of the pool runs, all that tasks have posted is delivered, and what was to be deleted later
    /// is gone. Workers with a thread of their own are waited for by QTRY_ macros.
    static void settle();

private:
    QTemporaryDir m_storage;
    std::shared_ptr<emulator::Camera> m_camera;
    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
};
