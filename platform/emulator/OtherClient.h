#pragma once

#include "platform/emulator/Camera.h"

namespace emulator
{

/// Changes settings as another client of the camera does. Each change raises ZVT_EVENT_SETTINGS_CHANGED. Any thread.
class Camera::OtherClient
{
public:
    /// Changes the setting `name`, which has the form "device.setting". Returns false if the change is refused. It then
    /// sets `why` to one line for the user, for example "other client: cooler.setpoint: must lie between 60 and 120".
    bool set(const QString &name, const QVariant &value, QString *why = nullptr);

private:
    friend class Camera;
    explicit OtherClient(Camera &camera) : m_camera(camera) { }
    Camera &m_camera;
};

} // namespace emulator
