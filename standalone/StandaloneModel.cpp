#include "standalone/StandaloneModel.h"

#include "platform/emulator/control.h"
#include "platform/hlxcamzvt/makeController.h"
#include "standalone/CameraEntry.h"

#include <QtConcurrent>

#include <utility>

namespace
{

std::shared_ptr<emulator::Camera> makeCamera(const QString &profile, const QString &folder,
                                             const StandaloneModel::Line &line)
{
    auto camera = emulator::Camera::create(profile, folder);
    line.applyTo(camera->gate());
    return camera;
}

QString asSentence(const QString &reason) { return reason.left(1).toUpper() + reason.mid(1) + u'.'; }

} // namespace

StandaloneModel::StandaloneModel(const QString &first, const QString &storage, const Line &line, QObject *parent)
    : QObject(parent), m_cameraFinder(first, storage), m_folder(storage), m_line(line),
      m_camera(makeCamera(first, storage, line)), m_controller(hlx::cam::makeController(m_camera))
{
    m_configDir = m_camera->folder();
    pointAt(first, m_camera);
    m_controller->AddValueChanged(connectionListener());
    QObject::connect(&m_connection, &QFutureWatcherBase::finished, this, &StandaloneModel::finishedConnecting);
    QObject::connect(&m_disconnection, &QFutureWatcherBase::finished, this, &StandaloneModel::finishedDisconnecting);
}

StandaloneModel::~StandaloneModel()
{
    // A held call would never end.
    for (const auto &camera : std::as_const(m_cameras))
        camera->gate().release("*");
    m_connection.waitForFinished();
    m_disconnection.waitForFinished();
    m_controller->RemoveValueChanged(connectionListener());
    m_camera->disconnect();
}

QStringList StandaloneModel::controllerDisplayNames() const { return {tr("Emulated camera")}; }

void StandaloneModel::setControllerIndex(int index)
{
    if (index == m_controllerIndex || index < 0 || index >= controllerDisplayNames().size())
        return;
    m_controllerIndex = index;
    emit controllerIndexChanged();
}

void StandaloneModel::connect(const QString &camera)
{
    if (m_connected || m_connecting || m_disconnecting)
        return;
    m_connecting = true;
    setConnectError({});
    emit connectingChanged();
    Connection connection{camera, m_cameras.value(camera), {}};
    if (!m_cameraFinder.find(camera))
        connection.error = tr("there is no camera \"%1\"").arg(camera);
    // The connection of another camera is not held: until that camera is the present one, no function releases its
    // calls.
    Line line = m_line;
    line.held.clear();
    if (connection.camera && connection.camera != m_camera)
        line.applyTo(connection.camera->gate());
    m_connection.setFuture(QtConcurrent::run(&StandaloneModel::open, connection, m_folder, line, m_controller));
}

StandaloneModel::Connection StandaloneModel::open(Connection connection, const QString &folder, const Line &line,
                                                  const hlx::TSharedPtr<hlx::cam::CZVTController> &controller)
{
    if (!connection.error.isEmpty())
        return connection;
    // Replaced below if a more exact reason is known.
    connection.error = tr("the camera does not answer");
    try {
        if (!connection.camera)
            connection.camera = makeCamera(connection.key, folder, line);
        if (!hlx::cam::attach(*controller, connection.camera)) {
            // The present camera has been connected in the meantime and is kept.
            connection.camera.reset();
            return connection;
        }
        if (hlx::cam::connect(*controller) == emulator::Refused)
            connection.error = tr("the camera refuses the connection");
    } catch (const emulator::SetupError &error) {
        connection.error = QString::fromUtf8(error.what());
    }
    return connection;
}

void StandaloneModel::finishedConnecting()
{
    const Connection connection = m_connection.result();
    if (connection.camera)
        pointAt(connection.key, connection.camera);
    m_connecting = false;
    followConnection();
    if (!m_connected) {
        setConnectError(asSentence(connection.error));
        emit connectFailed(connection.error);
    }
    emit connectingChanged();
}

void StandaloneModel::disconnect()
{
    if (!m_connected || m_connecting || m_disconnecting)
        return;
    m_disconnecting = true;
    emit disconnectingChanged();
    m_disconnection.setFuture(QtConcurrent::run([camera = m_camera] { camera->disconnect(); }));
}

void StandaloneModel::finishedDisconnecting()
{
    m_disconnecting = false;
    followConnection();
    emit disconnectingChanged();
}

hlx::cam::IController::ValueChanged StandaloneModel::connectionListener()
{
    return hlx::cam::IController::ValueChanged::FromMember<StandaloneModel, &StandaloneModel::valueChanged>(this);
}

// Any thread: called on the thread on which the value has changed.
void StandaloneModel::valueChanged(hlx::CString name)
{
    if (name == "Connected")
        QMetaObject::invokeMethod(this, &StandaloneModel::followConnection, Qt::QueuedConnection);
}

void StandaloneModel::followConnection()
{
    // finishedConnecting() and finishedDisconnecting() call this again.
    if (m_connecting || m_disconnecting)
        return;
    const bool connected = m_controller->IsConnected();
    if (connected == m_connected)
        return;
    m_connected = connected;
    emit connectedChanged();
}

void StandaloneModel::setConnectError(const QString &error)
{
    if (error == m_connectError)
        return;
    m_connectError = error;
    emit connectErrorChanged();
}

void StandaloneModel::pointAt(const QString &key, const std::shared_ptr<emulator::Camera> &camera)
{
    const bool isAnother = camera != m_camera;
    m_camera = camera;
    m_cameras.insert(key, camera);
    const CameraEntry *entry = m_cameraFinder.find(key);
    if (entry && entry->name() != m_cameraName) {
        m_cameraName = entry->name();
        emit cameraNameChanged();
    }
    if (isAnother)
        emit cameraChanged();
}
