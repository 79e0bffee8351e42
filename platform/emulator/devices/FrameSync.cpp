#include "platform/emulator/devices/FrameSync.h"

#include "platform/emulator/devices/settings.h"

namespace emulator
{

namespace
{

const auto sourceKey = QStringLiteral("source");

} // namespace

FrameSync::FrameSync(Camera &camera, Section &section)
    : Device(camera), m_triLevel(section.flag(QStringLiteral("triLevel"), false)),
      m_source(static_cast<uint8_t>(section.integer(sourceKey, Internal, Internal, m_triLevel ? TriLevel : Video)))
{
}

Status FrameSync::setSource(uint8_t source)
{
    if (source > (m_triLevel ? TriLevel : Video))
        return Refused;
    m_source = source;
    return Ok;
}

QJsonObject FrameSync::save() const { return {{sourceKey, m_source}}; }

void FrameSync::restore(const QJsonObject &values) { set(sourceKey, values.value(sourceKey).toVariant()); }

bool FrameSync::set(const QString &name, const QVariant &value)
{
    const auto source = settingAs<uint8_t>(value);
    return name == sourceKey && source && setSource(*source) == Ok;
}

} // namespace emulator
