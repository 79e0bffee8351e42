#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"

#include "correction/NucProcessModel.h"

#include <QTimer>

#include <chrono>

/// A model that makes corrections with a scripted camera, and the steps of a run.
struct NucRig {
    explicit NucRig(bool connected = true)
        : rig(QStringLiteral("everything"), connected), root(rig.controller(), nullptr), model(*root.nucProcess())
    {
        CameraRig::settle(); // The root reads the general setup.
        // Tests fire the polls.
        timer().setInterval(std::chrono::hours(1));
        for (const char *call :
             {"zvtSetNUCType", "zvtSetNUCSource", "zvtSetNUCNumFrames", "zvtSetNUCPreset", "zvtSetNUCFlagSetpointType",
              "zvtSetNUCFlagSetpointDeltas", "zvtSetNUCFlagSetpointTemps", "zvtSetNUCUseFactoryBadPixels",
              "zvtSetNUCSetup", "zvtSetTwinklerSetup", "zvtStartNUC", "zvtContinueNUC", "zvtAbortNUC", "zvtAcceptNUC",
              "zvtDiscardNUC"})
            gate().script(call, true);
        setResult(0, QStringLiteral("Done"));
        setCounts(0);
        setStatus(13, QStringLiteral("Starting"));
    }

    emulator::Gate &gate() { return rig.gate(); }
    QTimer &timer() const { return *model.findChild<QTimer *>(QStringLiteral("statusTimer")); }

    /// What the camera answers from now on.
    void setStatus(int status, const QString &text) { gate().script("zvtGetNUCStatus", QVariantList{status, text}); }
    void setResult(int result, const QString &text) { gate().script("zvtGetNUCResult", QVariantList{result, text}); }
    /// Ten counts: `first` and the next numbers.
    void setCounts(uint first)
    {
        QVariantList counts;
        for (uint count = first; count < first + 10; ++count)
            counts << count;
        gate().script("zvtGetNUCResults", counts);
    }

    /// Starts a run, up to the end of the first poll.
    void start()
    {
        model.start();
        settle();
    }
    /// Polls the camera once.
    void poll()
    {
        QMetaObject::invokeMethod(&timer(), "timeout");
        settle();
    }
    void pollStatus(int status, const QString &text = {})
    {
        setStatus(status, text);
        poll();
    }
    /// A task may start a second one, such as the poll after the start.
    static void settle()
    {
        CameraRig::settle();
        CameraRig::settle();
    }

    /// The calls since `mark`, with their arguments.
    QStringList callsSince(size_t mark)
    {
        QStringList list;
        for (const auto &call : gate().callsSince(mark))
            if (call.name.starts_with("zvt"))
                list << (QString::fromStdString(call.name) + u' ' + QString::fromStdString(call.arguments)).trimmed();
        return list;
    }

    CameraRig rig;
    ZvtCameraModel root;
    NucProcessModel &model;
};
