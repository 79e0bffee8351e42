#pragma once

#include "tests/support/PageDriver.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimer>

/// The Setup page of a connected camera, in a window that has room for all of it, and an operator before it.
class SetupPage : public PageDriver
{
public:
    using Prepare = std::function<void(emulator::Camera &)>;

    explicit SetupPage(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : PageDriver({.profile = profile, .size = {900, 1700}, .prepare = prepare})
    {
        click("Setup");
        settle();
    }

    /// Shows another tab, without the pointer.
    void showTab(int index)
    {
        QQuickItem *bar = &item("Setup");
        while (!bar->inherits("QQuickTabBar"))
            bar = bar->parentItem();
        bar->setProperty("currentIndex", index);
        settle();
    }

    /// Waits until all is done that a read of the lens chains: limits, lens states, field of view.
    void settle()
    {
        PageDriver::settle();
        PageDriver::settle();
    }

    QObject *tab() const { return tabModel("setupTabModel"); }
    QObject *general() const { return tabModel("setupGeneralModel"); }
    bool lensUnlocked() const { return tab()->property("lensBasedControlsEnabled").toBool(); }
    QTimer *timer(const char *name) const { return tab()->findChild<QTimer *>(QString::fromLatin1(name)); }

    /// What the camera was told since `mark`, as "zvtFocusMove 2"; what it was only asked is left out.
    QStringList commands(size_t mark)
    {
        static const QRegularExpression asking("^(controller\\.|zvt)(Mfg)?(Get|Is|Has|List|Read|capabilities)");
        QStringList list;
        for (const auto &call : rig().gate().callsSince(mark)) {
            const QString name = QString::fromStdString(call.name);
            if (!asking.match(name).hasMatch())
                list << (name + u' ' + QString::fromStdString(call.arguments)).trimmed();
        }
        return list;
    }
    /// What an action tells the camera, to its end.
    template <class Action> QStringList commandsOf(Action action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        return commands(mark);
    }

    bool enabled(const QString &name) const { return item(name).isEnabled(); }
    QString shown(const QString &name) const { return item(name).property("displayText").toString(); }
    /// The visible item of this name; a test that asks for one that is not there ends.
    QQuickItem &item(const QString &name) const
    {
        QQuickItem *found = find(name);
        if (found == nullptr)
            qFatal("\"%s\" is not shown", qPrintable(name));
        return *found;
    }

    QPoint middle(const QString &name) const
    {
        const QQuickItem &found = item(name);
        return found.mapToScene({found.width() / 2, found.height() / 2}).toPoint();
    }
    void hold(const QString &name) { QTest::mousePress(&window(), Qt::LeftButton, Qt::NoModifier, middle(name)); }
    void release(const QString &name) { QTest::mouseRelease(&window(), Qt::LeftButton, Qt::NoModifier, middle(name)); }

    /// Takes a row of a combo box by the mouse.
    void choose(const QString &box, const QString &row)
    {
        QQuickItem *before = findText(row);
        click(box);
        QTRY_VERIFY2(findText(row) && findText(row) != before, qPrintable(row));
        settle();
        click(findText(row));
        settle();
    }

    /// Puts a text in place of that in a field, key by key.
    void type(const QString &field, const QString &text)
    {
        item(field).forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_A, Qt::ControlModifier);
        PageDriver::type(text);
    }
};
