#pragma once

#include "tests/support/RecorderPoll.h"
#include "tests/support/SignalLog.h"
#include "tests/unit/scriptRecorder.h"

#include "recording/SsdTabModel.h"

#include <thread>

/// The signals of a change of the state.
inline const QStringList stateSignals{"canInteractChanged", "stateChanged"};

/// The signals of a change of the limits of a recording, after the signal of the limit itself.
inline const QStringList limitSignals{"maxFramesToRecordChanged", "pretriggerMaxFramesToRecordChanged",
                                      "maxRecordDurationChanged"};

/// The SSD tab below a root, with helpers for tests. The camera's values are scripted.
struct Ssd {
    explicit Ssd(const QString &profile = QStringLiteral("everything"))
        : rig(profile), root(rig.controller(), nullptr), model(*root.ssdTabModel())
    {
        scriptRecorder(gate());
        CameraRig::settle(); // The root reads the general setup.
        log.watch(&model);
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// Whether `action` starts the running timer again.
    template <class Action> bool restartsTimer(Action action) const
    {
        bool restarted = false;
        const auto handler = pollTimer(model).bindableActive().onValueChanged([&restarted] { restarted = true; });
        action();
        return restarted;
    }

    /// The camera reports this state from now on.
    void setCameraState(int state) { gate().script("zvtGetSsdState", state); }

    /// The calls since a mark with their arguments, as "zvtSsdSkipToFrame 5", without those of every access.
    QStringList calls(size_t since, bool onGuiThread)
    {
        static const QStringList silent{"controller.GetHandle", "controller.IsConnected", "controller.capabilities"};
        QStringList list;
        for (const auto &call : gate().callsSince(since)) {
            const QString name = QString::fromStdString(call.name);
            if (!silent.contains(name) && (call.thread == std::this_thread::get_id()) == onGuiThread)
                list << (name + u' ' + QString::fromStdString(call.arguments)).trimmed();
        }
        return list;
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

    /// Lets the poll start and waits for its end. Returns the calls of the task.
    QStringList poll()
    {
        const size_t since = gate().mark();
        startPoll(model);
        CameraRig::settle();
        return calls(since, false);
    }

    /// Starts a poll and waits until it reads the state, where it is held until release("*").
    bool holdPoll()
    {
        gate().hold("zvtGetSsdState");
        startPoll(model);
        return gate().waitHeld("zvtGetSsdState");
    }

    /// Lets all held calls pass and waits for the ends of their tasks.
    void release()
    {
        gate().release("*");
        CameraRig::settle();
    }

    /// The camera reports a state, and a poll shows it.
    void enter(int state)
    {
        setCameraState(state);
        poll();
        log.take();
    }

    /// Does something on the GUI thread. Returns the calls that it made there.
    template <class Action> QStringList callsOf(Action action)
    {
        const size_t since = gate().mark();
        log.take();
        action();
        return calls(since, true);
    }

    /// As callsOf(), with "stateChanged" between the calls where it was signalled.
    template <class Action> QStringList orderOf(Action action)
    {
        QList<qsizetype> changes;
        const QObject context;
        const size_t since = gate().mark();
        QObject::connect(&model, &SsdTabModel::stateChanged, &context,
                         [&] { changes << calls(since, true).size() + changes.size(); });
        QStringList order = callsOf(action);
        for (const qsizetype change : changes)
            order.insert(change, "stateChanged");
        return order;
    }

    /// Writes a property. Returns the calls.
    QStringList write(const char *property, const QVariant &value)
    {
        return callsOf([&] { model.setProperty(property, value); });
    }

    CameraRig rig;
    ZvtCameraModel root;
    SsdTabModel &model;
    SignalLog log;
};
