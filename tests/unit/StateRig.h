#pragma once

#include "tests/support/modelOf.h"

#include "state/CameraStateEntry.h"
#include "state/CameraStateModel.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include "zvt/zvtsdk.h"

/// The camera states below a root, with helpers for tests.
struct State {
    explicit State(bool connected = true, const QString &profile = QStringLiteral("everything"))
        : rig(profile, connected), root(rig.controller(), nullptr), model(*root.cameraState())
    {
        CameraRig::settle();
    }

    /// Calls an operation of the model and waits for its end.
    template <class... Parameters, class... Arguments>
    void run(void (CameraStateModel::*operation)(Parameters...), Arguments... arguments)
    {
        (model.*operation)(arguments...);
        CameraRig::settle();
    }

    void save(const QString &name) { run(&CameraStateModel::saveStateAs, name); }

    /// The names of the entries that the model shows.
    QStringList names() const
    {
        QStringList result;
        for (int row = 0; row < model.entries()->size(); ++row)
            result << entry(row)->name();
        return result;
    }

    CameraStateEntry *entry(int row) const { return qobject_cast<CameraStateEntry *>(model.entries()->at(row)); }

    /// The state files in the camera's own storage, also unfinished ones.
    QStringList files()
    {
        return QDir(rig.camera().folder() + "/states").entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// Records these signals of the model in order.
    QStringList &note(std::initializer_list<std::pair<void (CameraStateModel::*)(), const char *>> which)
    {
        for (const auto &[signal, name] : which)
            QObject::connect(&model, signal, &model, [this, text = name] { order << QLatin1String(text); });
        return order;
    }

    CameraRig rig;
    ZvtCameraModel root;
    CameraStateModel &model;
    QStringList order;
};
