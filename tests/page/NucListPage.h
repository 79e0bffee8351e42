#pragma once

#include "tests/support/PageDriver.h"
#include "tests/support/correctionFiles.h"

#include <QMap>
#include <QStringList>
#include <QTest>

#include <thread>

/// The Correction page of a camera that holds only the corrections `names`, and the actions of an operator in the
/// dialog with the list of corrections. Every preset has the correction "Bravo".
class NucListPage : public PageDriver
{
public:
    explicit NucListPage(const QStringList &names, QSize size = {800, 600})
        : PageDriver({.size = size, .prepare = [&names](emulator::Camera &camera) {
                          camera.connect();
                          deleteCorrections(camera.handle());
                          storeCorrections(camera, names);
                          camera.gate().script("zvtGetNUCName", "Bravo");
                          for (const char *call : {"zvtLoadNUC", "zvtSaveNUCAs"})
                              camera.gate().script(call, true);
                      }})
    {
        click("Correction");
        settle();
    }

    uint64_t handle() { return rig().camera().handle(); }
    QObject *model() const { return tabModel("nucList"); }
    emulator::Gate &gate() { return rig().gate(); }

    /// Opens the dialog: "Manage NUCs", "Save Current NUC 2" or "Load Existing NUC 2".
    void open(const QString &button)
    {
        click(button);
        settle();
        settle();
    }

    bool isOpen() const { return find("NUCs") != nullptr; }
    QQuickItem *list() const { return find("NUCs"); }
    QQuickItem *nameField() const { return fieldIn(list()->parentItem()->parentItem()); }
    QString name() const { return nameField()->property("text").toString(); }

    /// The names in the list, from the top.
    QStringList names() const
    {
        QMap<double, QString> rows;
        for (const QQuickItem *row : list()->property("contentItem").value<QQuickItem *>()->childItems())
            if (row->isVisible() && row->inherits("QQuickItemDelegate"))
                rows.insert(row->y(), row->property("name").toString());
        return rows.values();
    }

    /// The names that are shown as selected.
    QStringList selected() const
    {
        QStringList marked;
        for (const QString &name : names())
            if (find(name, list())->property("highlighted").toBool())
                marked += name;
        return marked;
    }

    void choose(const QString &nuc) { click(find(nuc, list())); }
    void doubleClick(const QString &nuc)
    {
        const QQuickItem *row = find(nuc, list());
        QTest::mouseDClick(&window(), Qt::LeftButton, Qt::NoModifier,
                           row->mapToScene({row->width() / 2, row->height() / 2}).toPoint());
        settle();
    }
    bool enabled(const QString &button) const { return find(button)->isEnabled(); }

    /// The calls since `mark` that the page made on the GUI thread or that change something, with their arguments,
    /// without the reads of the list.
    QStringList calls(size_t mark)
    {
        static const QStringList reads{"zvtQueryNUCBasicInfo", "zvtClocksToMilliseconds", "zvtListNUCs"};
        QStringList list;
        for (const auto &call : gate().callsSince(mark)) {
            const QString called = QString::fromStdString(call.name);
            if (called.startsWith("zvt") && called.contains("NUC") && !reads.contains(called))
                list << (called + u' ' + QString::fromStdString(call.arguments)).trimmed();
        }
        return list;
    }

private:
    /// The text field for the name, visible or not, below an item.
    static QQuickItem *fieldIn(const QQuickItem *item)
    {
        for (QQuickItem *child : item->childItems()) {
            if (child->inherits("QQuickTextField"))
                return child;
            if (QQuickItem *field = fieldIn(child))
                return field;
        }
        return nullptr;
    }
};

inline const QString invalidNucName
    = QStringLiteral("NUC name is not valid. NUC names cannot contain:\n   / \\ : \" * ? < > |\nmust have at least one "
                     "nonspace character and cannot start with a space character.");
inline const QString noSpaceForNuc
    = QStringLiteral("There is not enough free space on the camera to save the NUC.\nPlease backup and/or delete "
                     "existing NUCs to free up space.");
inline const QString overwriteNuc = QStringLiteral("That NUC already exists.\n\nDo you want to overwrite it?");
inline const QString overwriteFactoryNuc
    = QStringLiteral("That NUC already exists and is a factory NUC.\n\nDo you want to overwrite it?");
