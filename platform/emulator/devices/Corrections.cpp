#include "platform/emulator/devices/Corrections.h"

namespace emulator
{

Corrections::Corrections(Camera &camera, Section &section)
    : Device(camera), m_names(section.texts(QStringLiteral("names"), QStringList(4)))
{
}

Status Corrections::name(uint8_t preset, std::string &text) const
{
    if (preset >= m_names.size())
        return Refused;
    text = m_names.at(preset).toStdString();
    return Ok;
}

Status Corrections::load(uint8_t preset, const QString &name)
{
    if (preset >= m_names.size())
        return Refused;
    m_names[preset] = name;
    return Ok;
}

} // namespace emulator
