#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"

#include "setup/SetupTabModel.h"

#include <QTimer>

#include <chrono>
#include <thread>

/// A root whose sections poll the camera, with helpers for tests. No poll fires by itself.
struct PollRig {
    explicit PollRig(bool connected = true)
        : rig(QStringLiteral("everything"), connected), root(rig.controller(), nullptr)
    {
        for (auto *timer : root.findChildren<QTimer *>(QStringLiteral("temperatureTimer")))
            timer->setInterval(std::chrono::hours(1));
        CameraRig::settle(); // The root reads the general setup.
    }

    emulator::Gate &gate() { return rig.gate(); }

    static QTimer *timerOf(const QObject &model) { return model.findChild<QTimer *>("temperatureTimer"); }
    /// Lets the timer of a model fire once, also if it is stopped.
    static void fire(const QObject &model) { QMetaObject::invokeMethod(timerOf(model), "timeout"); }

    /// Starts `action` and waits for its end. Returns the calls that it made.
    template <class Action> QStringList callsOf(Action action)
    {
        const size_t mark = gate().mark();
        action();
        CameraRig::settle();
        return rig.callsSince(mark);
    }
    QStringList tick(const QObject &model)
    {
        return callsOf([&] { fire(model); });
    }

    void setCapability(const QString &name, bool value)
    {
        rig.camera().changeMakeUp(name, value);
        rig.controller()->capabilities.configure(rig.controller().get());
        root.cameraCapabilitiesModel()->configure();
    }

    /// The calls of the GUI thread since `mark`, with their arguments.
    QStringList guiCalls(size_t mark)
    {
        QStringList list;
        for (const auto &call : gate().callsSince(mark))
            if (call.thread == std::this_thread::get_id() && call.name.starts_with("zvt"))
                list << (QString::fromStdString(call.name) + u' ' + QString::fromStdString(call.arguments)).trimmed();
        return list;
    }
    /// Whether the GUI thread has made no SDK call since `mark`.
    bool allOnPool(size_t mark) { return guiCalls(mark).isEmpty(); }

    CameraRig rig;
    ZvtCameraModel root;
};
