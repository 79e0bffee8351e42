#include "platform/emulator/devices/EmulatorProperties.h"

namespace emulator
{

EmulatorProperties::EmulatorProperties(Camera &camera, Section &section) : Device(camera)
{
    addProperty<bool>(section, QStringLiteral("RecordStart"), false);
    addProperty<bool>(section, QStringLiteral("SSDTransfer"), false);
    addProperty<int>(section, QStringLiteral("Pattern"), 0);
    addProperty<float>(section, QStringLiteral("BlackbodyTemp1"), 20);
    addProperty<float>(section, QStringLiteral("BlackbodyTemp2"), 35);
    addProperty<QString>(section, QStringLiteral("ChamberProfile"), {});
}

template <class T> void EmulatorProperties::addProperty(Section &section, const QString &key, const T &value)
{
    const QString path = QLatin1Char('/') + key;
    QVariant &property = m_values[path];
    property = value;
    const auto get = [&property] { return property.value<T>(); };
    const auto set = [&property](const T &changed) {
        property = changed;
        return Ok;
    };
    addSettings(section, {{key, get, set, Setting::Profile}, {path, get, set, Setting::OtherClient}});
}

bool EmulatorProperties::get(const QString &path, QVariant &value) const
{
    const auto found = m_values.find(path);
    if (found == m_values.end())
        return false;
    value = found->second;
    return true;
}

bool EmulatorProperties::set(const QString &path, const QVariant &value)
{
    const auto found = m_values.find(path);
    if (found == m_values.end() || found->second.typeId() != value.typeId())
        return change(path, fromVariant(value)).isEmpty();
    // The value has the type of the property. JSON may lack this type.
    found->second = value;
    return true;
}

} // namespace emulator
