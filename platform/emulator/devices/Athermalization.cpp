#include "platform/emulator/devices/Athermalization.h"

#include "platform/emulator/devices/settings.h"

namespace emulator
{

namespace
{

const auto availableKey = QStringLiteral("available");
const auto enabledKey = QStringLiteral("enabled");

} // namespace

Athermalization::Athermalization(Camera &camera, Section &section)
    : Device(camera), m_available(section.flag(availableKey, true)), m_enabled(section.flag(enabledKey, false))
{
}

Status Athermalization::enabled(bool &enabled) const
{
    if (!m_available)
        return Refused;
    enabled = m_enabled;
    return Ok;
}

Status Athermalization::setEnabled(bool enabled)
{
    if (!m_available)
        return Refused;
    m_enabled = enabled;
    return Ok;
}

QJsonObject Athermalization::save() const { return {{enabledKey, m_enabled}}; }

void Athermalization::restore(const QJsonObject &values) { set(enabledKey, values.value(enabledKey).toVariant()); }

bool Athermalization::set(const QString &name, const QVariant &value)
{
    if (name == availableKey)
        return takeSetting(m_available, value);
    const auto enabled = settingAs<bool>(value);
    return name == enabledKey && enabled && setEnabled(*enabled) == Ok;
}

} // namespace emulator
