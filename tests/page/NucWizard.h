#pragma once

#include "tests/support/PageDriver.h"

#include <QTest>
#include <QTimer>

#include <chrono>
#include <functional>

/// The wizard that makes a correction, on the Correction page of a scripted camera, and the actions of an operator.
class NucWizard : public PageDriver
{
public:
    struct Setup {
        QString nucName = {}; ///< The name of the correction in use; empty without one.
        bool calibrated = false; ///< Whether the preset has a factory calibration.
        int type = 1;
        int source = 0;
        bool flag = true;
        bool controlledFlag = true;
        bool detectBadPixels = true;
        QSize size{640, 480};
    };

    NucWizard() : NucWizard(Setup{}) { }
    explicit NucWizard(const Setup &setup)
        : NucWizard([setup](emulator::Camera &camera) { prepare(camera.gate(), setup); }, setup.size)
    {
    }
    explicit NucWizard(const std::function<void(emulator::Camera &)> &prepare, const QSize &size = {640, 480})
        : PageDriver({.size = size, .prepare = prepare})
    {
        statusTimer()->setInterval(std::chrono::hours(1)); // Tests fire the polls.
        click("Correction");
        settle();
        open();
    }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *process() const { return tabModel("nucProcess"); }
    QTimer *statusTimer() const { return process()->findChild<QTimer *>(QStringLiteral("statusTimer")); }

    void open()
    {
        click("Perform New NUC 0");
        settle();
        settle();
    }
    bool isOpen() const { return findText("Perform NUC") != nullptr; }
    /// Whether the page behind the wizard is blocked, and the host may not close.
    bool pageBlocked() const { return object("fakeOverlay")->property("visible").toBool() && !page()->isEnabled(); }
    bool hostMayClose() const { return cameraModel()->property("allowedToCloseController").toBool(); }

    bool shows(const QString &name) const { return find(name) != nullptr; }
    QVariant setting(const char *name) const { return process()->property(name); }
    void focus(const QString &name) const { item(name).forceActiveFocus(Qt::TabFocusReason); }

    /// Clicks an item, or presses the space bar on it, and waits for the end of the tasks.
    void use(const QString &name, bool byKeyboard = false)
    {
        PageDriver::use(name, byKeyboard);
        settle();
        settle();
    }
    void enter(const QString &field, const QString &text)
    {
        PageDriver::enter(item(field), text);
        settle();
    }

    /// Walks to the page of the run. A correction gets the name "new".
    void start()
    {
        while (!shows("Abort")) {
            if (shows("Name") && setting("nucType").toInt() != 2)
                enter("Name", "new");
            use("Next");
        }
    }
    /// What the camera answers from now on, and a poll of it.
    void pollStatus(int status, const QString &text)
    {
        gate().script("zvtGetNUCStatus", QVariantList{status, text});
        QMetaObject::invokeMethod(statusTimer(), "timeout");
        settle();
    }
    /// Ends the run with a result.
    void end(int result = 0)
    {
        gate().script("zvtGetNUCResult", QVariantList{result, "text of the result"});
        pollStatus(0, "Ready");
        settle();
    }

    void setConnected(bool connected)
    {
        if (connected)
            rig().camera().connect();
        else
            rig().camera().disconnect();
        settle();
        settle();
    }

    /// Scripts the camera.
    static void prepare(emulator::Gate &gate, const Setup &setup);
};
