#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"
#include "tests/unit/threadCalls.h"

#include "setup/SetupTabModel.h"

#include <QTimer>

/// A Setup tab below a root, with helpers for tests.
struct SetupTab : CallPlace {
    explicit SetupTab(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(root.setupTabModel()), log(model)
    {
        CameraRig::settle(); // The root reads the general setup.
    }

    emulator::Gate &gate() { return rig.gate(); }
    size_t mark() { return rig.gate().mark(); }
    uint64_t handle() { return rig.camera().handle(); }

    /// See threadCalls().
    QStringList calls(size_t since, Where where = Anywhere) { return threadCalls(gate(), since, where); }

    /// The calls of an action until its tasks have ended.
    template <class Action> QStringList callsOf(Action action)
    {
        const size_t since = mark();
        action();
        CameraRig::settle();
        return calls(since);
    }

    /// The calls that an action makes before it returns.
    template <class Action> QStringList guiCallsOf(Action action)
    {
        const size_t since = mark();
        action();
        return calls(since, OnGui);
    }

    QStringList refresh()
    {
        const QStringList list = callsOf([this] { model->refresh(); });
        log.take();
        return list;
    }

    QTimer *timer(const char *name) { return model->findChild<QTimer *>(QLatin1String(name)); }

    QStringList tick(const char *name)
    {
        return callsOf([&] { QMetaObject::invokeMethod(timer(name), "timeout"); });
    }

    /// Scripts these limits and this position of the focus, and reads them.
    void readFocus(uint nearPosition, uint farPosition, uint position)
    {
        gate().script("zvtGetFocusNearPos", nearPosition);
        gate().script("zvtGetFocusFarPos", farPosition);
        gate().script("zvtGetFocusCurrentPos", position);
        refresh();
    }

    void readZoom(uint minimum, uint maximum, uint position)
    {
        gate().script("zvtGetFOVRange", QVariantList{minimum, maximum});
        gate().script("zvtGetFOVPos", position);
        refresh();
    }

    CameraRig rig;
    ZvtCameraModel root;
    SetupTabModel *model;
    SignalLog log;
};

/// The calls of a read of focus limits, which is a separate task.
inline QStringList limitCalls(const QStringList &calls)
{
    static const QRegularExpression limits(
        QStringLiteral("^zvt(GetFocus(Near|Far|Current)Pos|GetFocusRange|MfgGetFocus)"));
    return calls.filter(limits);
}

/// The calls of a refresh, without those of the tasks that it starts.
inline QStringList settingCalls(QStringList calls)
{
    for (const QString &call : limitCalls(calls) + calls.filter(QStringLiteral("zvtListLensStates")))
        calls.removeOne(call);
    return calls;
}

/// The calls after a zoom.
inline const QStringList focusAndDistances{"zvtGetFocusCurrentPos", "zvtGetFocusToDistanceAvailable",
                                           "zvtGetFocusToDistanceMin", "zvtGetFocusToDistanceMax"};
