#pragma once

#include "standalone/CameraFinder.h"
#include "standalone/LineFaults.h"

#include "hlx/CZVTController.h"
#include "hlx/TSharedPtr.h"

#include <QFutureWatcher>
#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>

namespace emulator
{
class Camera;
}

/// The `standaloneModel` of the page: the list of cameras, and the connection to one of them. GUI thread only.
///
/// The model has one controller during its whole life. Connecting points it at the chosen camera. Connecting and
/// disconnecting run on the global thread pool, since a camera may answer slowly.
class StandaloneModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(CameraFinder *cameraFinder READ cameraFinder CONSTANT FINAL)
    Q_PROPERTY(QString configDir READ configDir CONSTANT FINAL)
    Q_PROPERTY(QString cameraName READ cameraName NOTIFY cameraNameChanged FINAL)

    Q_PROPERTY(bool connected READ connected NOTIFY connectedChanged FINAL)
    Q_PROPERTY(bool connecting READ connecting NOTIFY connectingChanged FINAL)
    Q_PROPERTY(bool disconnecting READ disconnecting NOTIFY disconnectingChanged FINAL)
    Q_PROPERTY(QString connectError READ connectError NOTIFY connectErrorChanged FINAL)

    Q_PROPERTY(bool canSelectController READ canSelectController CONSTANT FINAL)
    Q_PROPERTY(QStringList controllerDisplayNames READ controllerDisplayNames CONSTANT FINAL)
    Q_PROPERTY(int controllerIndex READ controllerIndex WRITE setControllerIndex NOTIFY controllerIndexChanged FINAL)

public:
    using Line = LineFaults;

    /// Makes the camera of the profile `first` (a name or a file) and its controller, not connected. `storage` is the
    /// folder of the cameras' files, empty for the user's application data. Throws emulator::SetupError.
    StandaloneModel(const QString &first, const QString &storage, const Line &line, QObject *parent = nullptr);
    /// Releases the held calls of all cameras, and waits until the camera is connected or disconnected.
    ~StandaloneModel() override;

    CameraFinder *cameraFinder() { return &m_cameraFinder; }
    /// The folder in which the cameras keep their files.
    const QString &configDir() const { return m_configDir; }
    /// The name of the camera that the controller points at.
    const QString &cameraName() const { return m_cameraName; }

    /// Follows the controller, so that it becomes false when the cable is pulled. It does not change while `connecting`
    /// or `disconnecting` is true.
    bool connected() const { return m_connected; }
    bool connecting() const { return m_connecting; }
    bool disconnecting() const { return m_disconnecting; }
    /// The reason why the last attempt to connect failed, as a sentence for the operator. Empty after a success and
    /// while `connecting` is true.
    const QString &connectError() const { return m_connectError; }

    bool canSelectController() const { return controllerDisplayNames().size() > 1; }
    QStringList controllerDisplayNames() const;
    int controllerIndex() const { return m_controllerIndex; }
    /// An index without a controller is passed over.
    void setControllerIndex(int index);

    hlx::TSharedPtr<hlx::cam::CZVTController> controller() const { return m_controller; }
    /// The camera that the controller points at.
    emulator::Camera &camera() const { return *m_camera; }

    /// The faults that another camera gets before it connects, without `held`: its connection is not held. A change of
    /// them does not change the present camera's.
    const Line &line() const { return m_line; }
    void setLine(const Line &line) { m_line = line; }

    /// Connects the camera with this key of an entry of the finder. Passed over unless disconnected and at rest. Ends
    /// with `connecting` false; `connected` tells whether it worked.
    Q_INVOKABLE void connect(const QString &camera);

    /// Passed over unless connected and at rest.
    Q_INVOKABLE void disconnect();

signals:
    void cameraNameChanged();
    /// The controller points at another camera. `camera()` is the new one; the former camera still exists.
    void cameraChanged();
    void connectedChanged();
    void connectingChanged();
    void disconnectingChanged();
    void connectErrorChanged();
    void controllerIndexChanged();
    /// A camera could not be connected. `reason` is one line.
    void connectFailed(const QString &reason);

private slots:
    void finishedConnecting();
    void finishedDisconnecting();

private:
    struct Connection {
        QString key;
        std::shared_ptr<emulator::Camera> camera; ///< Null if it could not be made.
        QString error; ///< The reason why it is not connected; empty if it is.
    };

    static Connection open(Connection connection, const QString &folder, const Line &line,
                           const hlx::TSharedPtr<hlx::cam::CZVTController> &controller);
    void pointAt(const QString &key, const std::shared_ptr<emulator::Camera> &camera);
    hlx::cam::IController::ValueChanged connectionListener();
    void valueChanged(hlx::CString name);
    void followConnection();
    void setConnectError(const QString &error);

    CameraFinder m_cameraFinder;
    QString m_folder;
    Line m_line;
    QString m_configDir;
    QString m_cameraName;
    bool m_connected = false;
    bool m_connecting = false;
    bool m_disconnecting = false;
    QString m_connectError;
    int m_controllerIndex = 0;
    std::shared_ptr<emulator::Camera> m_camera;
    /// All cameras made so far. A camera that is chosen again continues in the state in which it was left.
    QHash<QString, std::shared_ptr<emulator::Camera>> m_cameras;
    hlx::TSharedPtr<hlx::cam::CZVTController> m_controller;
    QFutureWatcher<Connection> m_connection;
    QFutureWatcher<void> m_disconnection;
};
