#pragma once

#include <QObject>

/// One camera in the list of cameras to choose from. GUI thread only.
class CameraEntry : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString key READ key CONSTANT FINAL)
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    Q_PROPERTY(QString profile READ profile CONSTANT FINAL)
    Q_PROPERTY(QString folder READ folder CONSTANT FINAL)

public:
    CameraEntry(const QString &profile, const QString &name, const QString &folder, QObject *parent = nullptr);

    /// The argument of StandaloneModel::connect() for this camera.
    const QString &key() const { return m_profile; }
    /// The name that lists show.
    const QString &name() const { return m_name; }
    /// The name of a built-in profile, or the path of a profile's file.
    const QString &profile() const { return m_profile; }
    /// The folder in which the camera keeps its files.
    const QString &folder() const { return m_folder; }

private:
    QString m_profile;
    QString m_name;
    QString m_folder;
};
