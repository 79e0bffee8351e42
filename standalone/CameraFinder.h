#pragma once

#include "hlxui/ObjectListModel.h"

#include <QObject>

class CameraEntry;

/// The list of cameras to choose from: one for each built-in profile. GUI thread only.
class CameraFinder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ObjectListModel *cameras READ cameras CONSTANT FINAL)

public:
    /// The camera of `first`, a built-in profile or a profile's file, is the first row. `storage` is the folder of the
    /// cameras' files, empty for the user's application data. Throws emulator::SetupError.
    CameraFinder(const QString &first, const QString &storage, QObject *parent = nullptr);

    ObjectListModel *cameras() { return &m_cameras; }

    /// The camera with this key, null if there is none.
    CameraEntry *find(const QString &key) const;

private:
    void add(const QString &profile, const QString &storage);

    ObjectListModel m_cameras{true, this};
};
