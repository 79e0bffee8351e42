#pragma once

#include "tests/unit/MiscRig.h"

#include "platform/emulator/devices/Sensor.h"

#include <functional>
#include <thread>

/// The settings with the stream of the camera and the listeners of the controller. Everything that happens is noted in
/// `events` in order: the calls that reach the camera on the GUI thread, and signals and listeners as a test adds them.
struct HeaderModes : Misc {
    using Listener = hlx::delegate<void()>;

    static inline const QStringList properties{"gigeHeaderModeIndex", "clHeaderModeIndex", "cxpHeaderModeIndex"};
    /// In the order of the properties.
    static inline const QStringList setters{"zvtSetGigEHeaderMode", "zvtSetCameraLinkHeaderMode",
                                            "zvtSetCoaXPressHeaderMode"};
    // The other calls of a change of a mode.
    static inline const QString getSource = QStringLiteral("controller.GetVideoSource");
    static inline const QString getAvailable = QStringLiteral("zvtGetDeviceTLTypeAvailable");
    static inline const QString getType = QStringLiteral("zvtGetDeviceTLType");
    static inline const QString stopStream = QStringLiteral("controller.StopStream");
    static inline const QString startStream = QStringLiteral("controller.StartStream");

    explicit HeaderModes(bool scripted = true) : Misc(scripted)
    {
        gate().onCall([this, gui = std::this_thread::get_id()](const emulator::CallEvent &event) {
            const QString name = QString::fromStdString(event.call.name);
            if (event.call.thread == gui && (name.startsWith("zvtSet") || name == stopStream || name == startStream))
                events << name;
        });
    }

    void listen(const std::function<void()> &listener)
    {
        rig.controller()->listeners.add(Listener::FromLamda(listener));
    }
    /// Adds a listener that only notes its name.
    void listen(const QString &name)
    {
        listen([this, name] { events << name; });
    }
    bool set(const char *name, const QVariant &value)
    {
        return rig.camera().otherClient().set(QLatin1String(name), value);
    }
    bool streaming() { return rig.camera().device<emulator::Sensor>()->streaming(); }

    /// The rows of a test of each mode: the property is the tag.
    static void addRows()
    {
        QTest::addColumn<QString>("setter");
        for (int mode = 0; mode < setters.size(); ++mode)
            QTest::newRow(qPrintable(properties.at(mode))) << setters.at(mode);
    }

    QStringList events;
};
