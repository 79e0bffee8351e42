#pragma once

#include "platform/emulator/Setting.h"

#include <QFutureWatcher>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>
#include <QVariant>

#include <memory>
#include <vector>

namespace emulator
{
class Camera;
}

class StandaloneModel;

/// Reads and changes the settings and the capabilities of the present camera of a StandaloneModel, as another client
/// does. A capability is a setting with a name like "capabilities.hasFocus". One task at a time does this on the global
/// thread pool, since an operation of the camera may hold the camera's lock. GUI thread only.
class CameraSettings : public QObject
{
    Q_OBJECT

public:
    using Settings = std::vector<emulator::SettingInfo>;

    /// The settings of a camera and its capabilities, in this order. Waits for the camera's lock. Any thread.
    static Settings settingsOf(const emulator::Camera &camera);

    /// `model` must outlive this object.
    explicit CameraSettings(StandaloneModel &model, QObject *parent = nullptr);

    /// Reads now and twice a second from now on, or no longer.
    void setPolling(bool on);
    bool polling() const { return m_timer.isActive(); }
    /// Reads once.
    void read();
    /// Changes a setting, after all earlier changes, and then reads.
    void change(const QString &name, const QVariant &value);

    /// The settings as they were read last. A setting with a change that is not carried out yet has its new value.
    /// Empty until the settings of the present camera have been read.
    Settings settings() const;
    /// The same without these changes.
    const Settings &lastRead() const { return m_settings; }

signals:
    /// The model has another camera: the changes that have not begun are lost.
    void cameraChanged();
    /// settings() may have changed.
    void updated();
    /// A change has been carried out, or refused: then `why` is the reason, such as "must lie between 60 and 120".
    void changed(const QString &name, const QString &why);

private:
    struct Change {
        QString name;
        QVariant value;
        QString why; ///< Of a result: the reason why the change was refused, empty if it was not.
    };
    struct Result {
        QList<Change> changes;
        Settings settings;
    };

    static Result run(const std::shared_ptr<emulator::Camera> &camera, QList<Change> changes);
    void start();
    void finished();
    void followCamera();

    StandaloneModel &m_model;
    QTimer m_timer{this};
    Settings m_settings;
    QList<Change> m_sent; ///< The changes of the running task.
    QList<Change> m_waiting; ///< The changes after them.
    bool m_needsRead = false;
    bool m_running = false;
    bool m_ofFormerCamera = false; ///< The running task reads a camera that the model no longer has.
    QFutureWatcher<Result> m_task;
};
