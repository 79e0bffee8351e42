#include "platform/emulator/Device.h"

#include "platform/emulator/Camera.h"

namespace emulator
{

Device::~Device() = default;

QJsonObject Device::save() const { return m_table.save(); }

QStringList Device::restore(const QJsonObject &values) { return m_table.restore(values); }

void Device::connectionChanged(bool) { }

void Device::catchUp() { }

void Device::devicesExist() { }

std::function<void()> Device::filesToWrite() { return {}; }

void Device::expose(int, image::Exposure &) const { }

Refusal Device::change(const QString &name, const QJsonValue &value) { return m_table.change(name, value); }

std::vector<SettingInfo> Device::settings() const { return m_table.list(); }

void Device::remember() const { m_camera.remember(); }

} // namespace emulator
