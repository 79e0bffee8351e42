#pragma once

#include "tests/page/SetupPage.h"

/// A page of sections of a connected camera, and the actions of an operator.
struct SectionPage : SetupPage {
    using SetupPage::SetupPage;

    emulator::Gate &gate() { return rig().gate(); }

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
