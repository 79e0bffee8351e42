#pragma once

#include "tests/support/PageDriver.h"

#include <QMap>
#include <QStringList>

#include <stdexcept>

#include "zvt/zvtsdk.h"

inline const QString invalidStateName
    = QStringLiteral("State name is not valid. They cannot contain these characters:\n\n / \\ : \" * ? < > | \n\n"
                     "They must have at least one nonspace character and cannot start with a space character.");

/// The page of a camera with some saved states, and the actions of an operator in the dialog for states.
class StateDialog
{
public:
    explicit StateDialog(const QStringList &states, const PageSetup &setup = {}) : driver(setup)
    {
        for (const QString &name : states)
            if (zvtSaveStateAs(handle(), name.toUtf8().constData()) != 0)
                throw std::runtime_error("the camera keeps no states");
    }

    uint64_t handle() { return driver.rig().camera().handle(); }
    QObject *model() { return driver.tabModel("cameraState"); }
    emulator::Gate &gate() { return driver.rig().gate(); }

    /// Opens the dialog by an action of the configuration menu.
    void open(const QString &action)
    {
        driver.choose(action);
        driver.settle();
    }

    bool isOpen() { return driver.find("Upload") != nullptr; }

    /// The names in the list, from the top.
    QStringList names()
    {
        QMap<double, QString> rows;
        for (const QQuickItem *row : list()->property("contentItem").value<QQuickItem *>()->childItems())
            if (row->isVisible() && row->inherits("QQuickItemDelegate"))
                rows.insert(row->y(), row->property("name").toString());
        return rows.values();
    }

    /// The names that are shown as selected.
    QStringList selected()
    {
        QStringList marked;
        for (const QString &name : names())
            if (driver.find(name, list())->property("highlighted").toBool())
                marked += name;
        return marked;
    }

    QQuickItem *list() { return driver.find("States"); }
    void click(const QString &state) { driver.click(driver.find(state, list())); }
    bool isEnabled(const QString &button) { return driver.find(button)->isEnabled(); }

    /// The calls of this name since `mark`, with their arguments.
    QStringList calls(const char *name, size_t mark)
    {
        QStringList found;
        for (const auto &call : gate().callsSince(mark))
            if (call.name == name)
                found << QString::fromStdString(call.arguments);
        return found;
    }

    PageDriver driver;
};
