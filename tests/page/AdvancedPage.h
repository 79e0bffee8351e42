#pragma once

#include "tests/page/SetupPage.h"

/// The Advanced page of a connected camera, and the actions of an operator.
struct AdvancedPage : SetupPage {
    explicit AdvancedPage(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("everything"))
        : SetupPage(profile, prepare)
    {
        // Tests fire the timer of the live count.
        timer()->setInterval(std::chrono::hours(1));
        click("Advanced");
        settle();
    }

    emulator::Gate &gate() { return rig().gate(); }
    QObject *digital() const { return tabModel("advancedTabModel"); }
    QObject *analog() const { return tabModel("advancedAnalogSettingsModel"); }
    QObject *saturation() const { return tabModel("advancedSaturationSettingsModel"); }
    QObject *lockin() const { return tabModel("advancedLockinSettingsModel"); }
    QObject *misc() const { return tabModel("advancedMiscSettingsModel"); }
    QTimer *timer() const { return saturation()->findChild<QTimer *>(QStringLiteral("saturatedPixelsUpdateTimer")); }

    /// Sets a value of the camera as another client does.
    bool set(const char *name, const QVariant &value)
    {
        return rig().camera().otherClient().set(QLatin1String(name), value);
    }
    /// Expands or collapses a section.
    void toggle(const QString &section)
    {
        click(section);
        settle();
    }
    void refresh(const QString &section)
    {
        click("Refresh " + section);
        settle();
    }
    /// Collapses the first section, and expands another one.
    void openOnly(const QString &section)
    {
        toggle("Digital Settings");
        toggle(section);
    }
    /// How often `action` makes the plug-in call a function of the camera.
    template <class Action> qsizetype calls(const char *name, Action action)
    {
        const size_t mark = gate().mark();
        action();
        settle();
        return rig().callsSince(mark).count(QLatin1String(name));
    }
    /// Chooses the row of a combo box by the keys.
    void step(const QString &box, Qt::Key key)
    {
        item(box).forceActiveFocus(Qt::TabFocusReason);
        press(key);
        settle();
    }
    QStringList rowsOf(const QString &box) const { return item(box).property("model").toStringList(); }
    QString fault(const QString &field) const { return item(field).property("fault").toString(); }
};

inline const QStringList &advancedSections()
{
    static const QStringList names{"Digital Settings", "Analog Settings", "Saturation Settings", "Lockin Settings",
                                   "Miscellaneous Settings"};
    return names;
}
