#pragma once

#include "tests/support/RecorderPoll.h"
#include "tests/unit/TabRig.h"
#include "tests/unit/scriptRecorder.h"

#include "recording/SsdTabModel.h"

/// The signals of a change of the state.
inline const QStringList stateSignals{"canInteractChanged", "stateChanged"};

/// The signals of a change of the limits of a recording, after the signal of the limit itself.
inline const QStringList limitSignals{"maxFramesToRecordChanged", "pretriggerMaxFramesToRecordChanged",
                                      "maxRecordDurationChanged"};

/// The SSD tab below a root, with helpers for tests. The camera's values are scripted.
struct Ssd : TabRig<SsdTabModel> {
    explicit Ssd(const QString &profile = QStringLiteral("everything")) : TabRig(profile, &ZvtCameraModel::ssdTabModel)
    {
        scriptRecorder(gate());
        start();
    }

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
};
