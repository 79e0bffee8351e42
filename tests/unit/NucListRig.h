#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/correctionFiles.h"
#include "tests/support/modelOf.h"

#include "correction/NucListModel.h"

/// The list of corrections of a camera that holds only the corrections `names`, with helpers for tests.
struct NucListRig {
    explicit NucListRig(const QStringList &names = {}) : root(rig.controller(), nullptr), model(*root.nucList())
    {
        CameraRig::settle();
        deleteCorrections(handle());
        storeCorrections(rig.camera(), names);
    }

    uint64_t handle() { return rig.camera().handle(); }
    emulator::Gate &gate() { return rig.gate(); }

    void refresh()
    {
        model.refresh();
        CameraRig::settle();
    }

    QVariant value(int row, int role) const { return model.data(model.index(row), role); }
    /// The names in the list.
    QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names << model.nameAt(row);
        return names;
    }

    /// The files in the camera's own storage, also unfinished ones.
    QStringList files() const
    {
        return QDir(correctionFolder(rig.camera())).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// The calls since `mark`, with their arguments.
    QStringList calls(size_t mark)
    {
        QStringList list;
        for (const auto &call : gate().callsSince(mark))
            if (call.name.starts_with("zvt"))
                list << (QString::fromStdString(call.name) + u' ' + QString::fromStdString(call.arguments)).trimmed();
        return list;
    }

    mutable CameraRig rig;
    ZvtCameraModel root;
    NucListModel &model;
};
