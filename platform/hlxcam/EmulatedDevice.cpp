#include "platform/hlxcam/EmulatedDevice.h"

#include "platform/emulator/devices/EmulatorProperties.h"
#include "platform/emulator/dispatch.h"

#include <charconv>
#include <string_view>

namespace hlx::cam
{

namespace
{

constexpr std::string_view keyPrefix = "emulator:";

/// The value, converted to the type that the property has already.
QVariant inKindOf(const QVariant &present, const hlx::CVariant &value)
{
    switch (present.typeId()) {
    case QMetaType::Bool:
        return value.ToBool();
    case QMetaType::Int:
        return value.ToInt32();
    case QMetaType::Float:
        return value.ToFlt32();
    default:
        return QString::fromUtf8(value.ToString().c_str());
    }
}

hlx::CVariant toFramework(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
        return value.toInt();
    case QMetaType::Float:
        return value.toFloat();
    default:
        return hlx::CString(value.toString().toUtf8().constData());
    }
}

template <class Body>
bool withProperties(const std::shared_ptr<emulator::Camera> &camera, const char *name, const hlx::CString &key,
                    Body body)
{
    const auto answer = [&]() -> int {
        auto *const properties = camera->device<emulator::EmulatorProperties>();
        if (!properties)
            return emulator::Absent;
        return body(*properties, QString::fromUtf8(key.c_str())) ? emulator::Ok : emulator::Refused;
    };
    return emulator::passGate(camera, name, answer, key);
}

} // namespace

EmulatedDevice::EmulatedDevice(const std::shared_ptr<emulator::Camera> &camera)
    : m_key(std::string(keyPrefix).append(std::to_string(camera->handle())).c_str())
{
    m_properties.camera = camera;
}

std::shared_ptr<emulator::Camera> EmulatedDevice::cameraOf(const hlx::CString &key)
{
    std::string_view text(key.c_str());
    if (!text.starts_with(keyPrefix))
        return nullptr;
    text.remove_prefix(keyPrefix.size());
    uint64_t handle = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), handle);
    const bool valid = error == std::errc() && end == text.data() + text.size();
    return valid ? emulator::Camera::find(handle) : nullptr;
}

bool EmulatedDevice::Properties::get(const hlx::CString &key, hlx::CVariant &value) const
{
    const auto body = [&](emulator::EmulatorProperties &properties, const QString &path) {
        QVariant present;
        if (!properties.get(path, present))
            return false;
        value = toFramework(present);
        return true;
    };
    return withProperties(camera.lock(), "controller.properties.get", key, body);
}

bool EmulatedDevice::Properties::set(const hlx::CString &key, hlx::CVariant value)
{
    const auto target = camera.lock();
    const auto body = [&](emulator::EmulatorProperties &properties, const QString &path) {
        QVariant present;
        if (!properties.get(path, present))
            return false;
        target->catchUp();
        const bool set = properties.set(path, inKindOf(present, value));
        target->catchUp();
        return set;
    };
    return withProperties(target, "controller.properties.set", key, body);
}

} // namespace hlx::cam
