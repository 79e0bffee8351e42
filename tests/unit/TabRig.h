#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"
#include "tests/unit/threadCalls.h"

/// A model of a tab page or of a section below a root, with its signals and the calls that it makes: the base of the
/// rigs of such models. The derived rig scripts the camera's values and calls start().
template <class Model> struct TabRig {
    /// `getter` is the one of the root that returns the model.
    template <class Getter>
    TabRig(const QString &profile, Getter getter)
        : rig(profile), root(rig.controller(), nullptr), model(*(root.*getter)())
    {
    }

    /// With a model of its own, beside that of the root.
    explicit TabRig(const QString &profile)
        : rig(profile), root(rig.controller(), nullptr), model(*new Model(&root)) { }

    /// Waits until the root has read the general setup, and records the signals of the model from now on.
    void start()
    {
        CameraRig::settle();
        log.watch(&model);
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// Lets the camera have some equipment or lack it, and the root read this.
    void setEquipment(const QString &capability, bool has)
    {
        rig.camera().changeMakeUp(capability, has);
        rig.controller()->capabilities.configure(rig.controller().get());
        root.cameraCapabilitiesModel()->configure();
    }

    /// See threadCalls().
    QStringList calls(size_t since, bool onGuiThread)
    {
        return threadCalls(gate(), since, onGuiThread ? CallPlace::OnGui : CallPlace::OnPool);
    }

    /// Reads the model. Returns the calls of the task.
    QStringList read()
    {
        const size_t since = gate().mark();
        model.refresh();
        CameraRig::settle();
        return calls(since, false);
    }

    /// Reads the model. Returns the signals between those of the flags.
    QStringList refresh()
    {
        log.take();
        read();
        const QStringList all = log.take();
        return all.size() < 4 ? all : all.mid(2, all.size() - 4);
    }

    /// Does something on the GUI thread. Returns the calls that it made there. The log then has only its signals.
    template <class Action> QStringList callsOf(Action action)
    {
        const size_t since = gate().mark();
        log.take();
        action();
        return calls(since, true);
    }

    /// Writes a property. Returns the calls.
    QStringList write(const char *property, const QVariant &value)
    {
        return callsOf([&] { model.setProperty(property, value); });
    }

    CameraRig rig;
    ZvtCameraModel root;
    Model &model;
    SignalLog log;
};
