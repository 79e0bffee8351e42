#include "platform/emulator/devices/DetectorGain.h"

#include "platform/emulator/devices/settings.h"

namespace emulator
{

namespace
{

const auto levelKey = QStringLiteral("level");
const auto namedKey = QStringLiteral("named");

} // namespace

DetectorGain::DetectorGain(Camera &camera, Section &section)
    : Device(camera), m_levels(section.integer(QStringLiteral("levels"), 3, 1, UINT8_MAX)),
      m_level(static_cast<uint8_t>(section.integer(levelKey, 0, 0, m_levels - 1))),
      m_named(section.flag(namedKey, true)), m_names(section.texts(QStringLiteral("names"), {}))
{
}

Status DetectorGain::setLevel(uint8_t level)
{
    if (level >= m_levels)
        return Refused;
    m_level = level;
    return Ok;
}

Status DetectorGain::name(uint8_t level, std::string &text) const
{
    if (level >= m_levels || level >= m_names.size())
        return Refused;
    text = m_names.at(level).toStdString();
    return Ok;
}

QJsonObject DetectorGain::save() const { return {{levelKey, m_level}}; }

void DetectorGain::restore(const QJsonObject &values) { set(levelKey, values.value(levelKey).toVariant()); }

bool DetectorGain::set(const QString &name, const QVariant &value)
{
    if (name == namedKey)
        return takeSetting(m_named, value);
    const auto level = settingAs<uint8_t>(value);
    return name == levelKey && level && setLevel(*level) == Ok;
}

} // namespace emulator
