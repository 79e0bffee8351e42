#include "platform/emulator/devices/ImageMode.h"

#include "platform/emulator/devices/settings.h"

namespace emulator
{

namespace
{

const auto revertedKey = QStringLiteral("reverted");
const auto invertedKey = QStringLiteral("inverted");
const auto hsmAvailableKey = QStringLiteral("hsmAvailable");
const auto hsmEnabledKey = QStringLiteral("hsmEnabled");

} // namespace

ImageMode::ImageMode(Camera &camera, Section &section)
    : Device(camera), m_reverted(section.flag(revertedKey, false)), m_inverted(section.flag(invertedKey, false)),
      m_hsmAvailable(section.flag(hsmAvailableKey, false)), m_hsmEnabled(section.flag(hsmEnabledKey, false))
{
}

void ImageMode::setReverted(bool reverted) { m_reverted = reverted; }

void ImageMode::setInverted(bool inverted) { m_inverted = inverted; }

Status ImageMode::hsmEnabled(bool &enabled) const
{
    if (!m_hsmAvailable)
        return Refused;
    enabled = m_hsmEnabled;
    return Ok;
}

Status ImageMode::setHsmEnabled(bool enabled)
{
    if (!m_hsmAvailable)
        return Refused;
    m_hsmEnabled = enabled;
    return Ok;
}

QJsonObject ImageMode::save() const
{
    return {{revertedKey, m_reverted}, {invertedKey, m_inverted}, {hsmEnabledKey, m_hsmEnabled}};
}

void ImageMode::restore(const QJsonObject &values)
{
    for (const QString &key : {revertedKey, invertedKey, hsmEnabledKey})
        set(key, values.value(key).toVariant());
}

bool ImageMode::set(const QString &name, const QVariant &value)
{
    if (name == revertedKey)
        return takeSetting(m_reverted, value);
    if (name == invertedKey)
        return takeSetting(m_inverted, value);
    if (name == hsmAvailableKey)
        return takeSetting(m_hsmAvailable, value);
    const auto enabled = settingAs<bool>(value);
    return name == hsmEnabledKey && enabled && setHsmEnabled(*enabled) == Ok;
}

} // namespace emulator
