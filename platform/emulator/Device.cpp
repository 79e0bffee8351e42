#include "platform/emulator/Device.h"

#include "platform/emulator/Camera.h"

namespace emulator
{

Device::~Device() = default;

QJsonObject Device::save() const { return {}; }

void Device::restore(const QJsonObject &) { }

void Device::connectionChanged(bool) { }

bool Device::set(const QString &, const QVariant &) { return false; }

void Device::remember() const { m_camera.remember(); }

} // namespace emulator
