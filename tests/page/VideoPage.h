#pragma once

#include "tests/page/SetupPage.h"

/// The Video page of a connected camera, and the actions of an operator. The manufacturing mode is off.
struct VideoPage : SetupPage {
    explicit VideoPage(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("everything"))
        : SetupPage(profile, prepare)
    {
        setMode(false);
        click("Video");
        settle();
    }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *video() const { return tabModel("videoTabModel"); }
    int value(const char *property) const { return video()->property(property).toInt(); }
    void setMode(bool manufacturing)
    {
        cameraModel()->setProperty("manufacturingMode", manufacturing);
        settle();
    }
    /// Sets a value of the camera as another client does.
    bool set(const char *name, const QVariant &value)
    {
        return rig().camera().otherClient().set(QLatin1String(name), value);
    }
    void refresh()
    {
        click("Refresh General Video Settings");
        settle();
    }
    /// How often `action` reads the Video tab.
    template <class Action> qsizetype reads(Action action)
    {
        const size_t mark = gate().mark();
        action();
        settle();
        return rig().callsSince(mark).count("zvtGetVideoAGCMethod");
    }
    /// Chooses the row of a combo box by the keys.
    void step(const QString &box, Qt::Key key)
    {
        item(box).forceActiveFocus(Qt::TabFocusReason);
        press(key);
        settle();
    }
};
