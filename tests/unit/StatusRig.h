#pragma once

#include "tests/support/modelOf.h"

#include "status/StatusTabModel.h"

#include <QLocale>
#include <QTimer>

/// A Status tab below a root, with helpers for tests.
struct Status {
    explicit Status(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(rig.controller(), nullptr), model(root.statusTabModel())
    {
        timer = model->findChild<QTimer *>(QStringLiteral("updateTimeTimer"));
        CameraRig::settle(); // The root reads the general setup.
    }

    /// Triggers the timer once and waits for the end. Returns the calls of the task.
    QStringList poll()
    {
        const size_t mark = rig.gate().mark();
        QMetaObject::invokeMethod(timer, "timeout");
        CameraRig::settle();
        return taskCalls(mark);
    }

    /// Shows the page, which polls at once. Returns the calls of the task.
    QStringList show()
    {
        const size_t mark = rig.gate().mark();
        model->setVisible(true);
        CameraRig::settle();
        return taskCalls(mark);
    }

    QStringList refresh()
    {
        const size_t mark = rig.gate().mark();
        model->refresh();
        CameraRig::settle();
        return taskCalls(mark);
    }

    QStringList taskCalls(size_t mark) { return calls(mark, false); }
    QStringList guiCalls(size_t mark) { return calls(mark, true); }

    QStringList calls(size_t mark, bool gui)
    {
        QStringList names;
        for (const auto &call : rig.gate().callsSince(mark))
            if ((call.thread == std::this_thread::get_id()) == gui && call.name != "controller.GetHandle"
                && call.name != "controller.IsConnected")
                names << QString::fromStdString(call.name);
        return names;
    }

    CameraRig rig;
    ZvtCameraModel root;
    StatusTabModel *model;
    QTimer *timer;
};

inline const QStringList clockCalls{"zvtGetSaturatedFlag", "controller.HasRealTimeClock", "zvtGetRealTimeClock"};
inline const QStringList temperatureCalls{
    "zvtGetFPATemperature",  "zvtMfgGetCoolerType",  "zvtGetFPAColdTemperature", "zvtGetHasLensTemperature",
    "zvtGetLensTemperature", "zvtGetSCTemperatures", "zvtGetRSTemperatures"};

inline QString systemNumber(double number, int decimals)
{
    QLocale locale = QLocale::system();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(number, 'f', decimals);
}
