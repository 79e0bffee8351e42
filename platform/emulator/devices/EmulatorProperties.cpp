#include "platform/emulator/devices/EmulatorProperties.h"

#include <limits>

namespace emulator
{

namespace
{

constexpr double largestFloat = std::numeric_limits<float>::max();

/// Takes a value over into a property that is a T.
template <class T> Refusal takeAs(QVariant &property, const QJsonValue &value)
{
    T taken{};
    Refusal refusal = parse(value, taken);
    if (refusal.isEmpty())
        property = taken;
    return refusal;
}

} // namespace

EmulatorProperties::EmulatorProperties(Camera &camera, Section &section) : Device(camera)
{
    const auto temperature = [&section](const QString &key, double fallback) {
        return static_cast<float>(section.number(key, fallback, -largestFloat, largestFloat));
    };
    m_values = {
        {QStringLiteral("/RecordStart"), section.flag(QStringLiteral("RecordStart"), false)},
        {QStringLiteral("/SSDTransfer"), section.flag(QStringLiteral("SSDTransfer"), false)},
        {QStringLiteral("/Pattern"), section.integer(QStringLiteral("Pattern"), 0, INT32_MIN, INT32_MAX)},
        {QStringLiteral("/BlackbodyTemp1"), temperature(QStringLiteral("BlackbodyTemp1"), 20)},
        {QStringLiteral("/BlackbodyTemp2"), temperature(QStringLiteral("BlackbodyTemp2"), 35)},
        {QStringLiteral("/ChamberProfile"), section.text(QStringLiteral("ChamberProfile"), {})},
    };
}

bool EmulatorProperties::get(const QString &path, QVariant &value) const
{
    const auto found = m_values.find(path);
    if (found == m_values.end())
        return false;
    value = *found;
    return true;
}

bool EmulatorProperties::set(const QString &path, const QVariant &value)
{
    return change(path, QJsonValue::fromVariant(value)).isEmpty();
}

Refusal EmulatorProperties::change(const QString &name, const QJsonValue &value)
{
    const auto found = m_values.find(name);
    if (found == m_values.end())
        return noSuchSetting();
    switch (found->typeId()) {
    case QMetaType::Bool:
        return takeAs<bool>(*found, value);
    case QMetaType::Int:
        return takeAs<int>(*found, value);
    case QMetaType::Float:
        return takeAs<float>(*found, value);
    default:
        return takeAs<QString>(*found, value);
    }
}

} // namespace emulator
