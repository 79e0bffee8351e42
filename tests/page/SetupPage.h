#pragma once

#include "tests/support/PageDriver.h"

#include <QTest>
#include <QTimer>

#include <chrono>

/// The Setup page of a connected camera in a window with room for all of it, and the actions of an operator.
class SetupPage : public PageDriver
{
public:
    using Prepare = std::function<void(emulator::Camera &)>;

    explicit SetupPage(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : PageDriver({.profile = profile, .size = {900, 1700}, .prepare = prepare})
    {
        // Tests fire the polls of the sections.
        for (auto *timer : cameraModel()->findChildren<QTimer *>(QStringLiteral("temperatureTimer")))
            timer->setInterval(std::chrono::hours(1));
        click("Setup");
        settle();
    }

    /// Shows another tab without a click.
    void showTab(int index)
    {
        QQuickItem *bar = &item("Setup");
        while (!bar->inherits("QQuickTabBar"))
            bar = bar->parentItem();
        bar->setProperty("currentIndex", index);
        settle();
    }

    /// Waits until a read of the lens is complete, with the reads that follow it: limits, lens states, field of view.
    void settle()
    {
        PageDriver::settle();
        PageDriver::settle();
    }

    QObject *tab() const { return tabModel("setupTabModel"); }
    QObject *general() const { return tabModel("setupGeneralModel"); }
    bool lensUnlocked() const { return tab()->property("lensBasedControlsEnabled").toBool(); }
    QTimer *timer(const char *name) const { return tab()->findChild<QTimer *>(QString::fromLatin1(name)); }

    /// The commands that `action` sends to the camera, up to the end of the reads that follow.
    template <class Action> QStringList commandsOf(Action action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        return commands(mark);
    }

    /// How often `action` makes the plug-in read the field of view from the camera.
    template <class Action> qsizetype fieldOfViewReads(Action action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        settle();
        return rig().callsSince(mark).count("zvtGetFOV");
    }

    QString shown(const QString &name) const { return item(name).property("displayText").toString(); }
    QPoint middle(const QString &name) const
    {
        const QQuickItem &found = item(name);
        return found.mapToScene({found.width() / 2, found.height() / 2}).toPoint();
    }
    void hold(const QString &name) { QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, middle(name)); }
    void release(const QString &name) { QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, middle(name)); }

    /// Chooses a row of a combo box by mouse.
    void choose(const QString &box, const QString &row)
    {
        QQuickItem *before = findText(row);
        click(box);
        QTRY_VERIFY2(findText(row) && findText(row) != before, qPrintable(row));
        settle();
        click(findText(row));
        settle();
    }

    /// Replaces the text of a field, key by key.
    void type(const QString &field, const QString &text)
    {
        item(field).forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_A, Qt::ControlModifier);
        PageDriver::type(text);
    }
};
