#pragma once

#include <QJsonObject>
#include <QString>
#include <QVariant>

namespace emulator
{

class Camera;

/// A piece of equipment inside an emulated camera: its cooler, its sensor, its clock. A device answers for itself,
/// keeps its own values and takes its time from the Clock. Its operations return a Status, and leave their outputs
/// alone unless it is Ok. They are called with the camera's lock held, from any thread; one that is slow lets the time
/// pass by Camera::takeTime(), so that the rest of the camera goes on answering.
class Device
{
public:
    explicit Device(Camera &camera) : m_camera(camera) { }
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;
    virtual ~Device();

    /// What the camera's memory and its snapshots hold of this device. Empty: nothing.
    virtual QJsonObject save() const;

    /// Takes over what save() gave. Values that the device does not know or would refuse are passed over.
    virtual void restore(const QJsonObject &values);

    /// The camera has been connected or disconnected. It is switched on by its first connection.
    virtual void connectionChanged(bool connected);

    /// Another client changes the setting `name`. False: there is no such setting, or it refuses the value.
    virtual bool set(const QString &name, const QVariant &value);

protected:
    Camera &camera() const { return m_camera; }

    /// Something that outlives the process has changed: the camera writes it to its folder.
    void remember() const;

private:
    Camera &m_camera;
};

} // namespace emulator
