#include "platform/emulator/devices/EmulatorProperties.h"

#include <cmath>
#include <limits>

namespace emulator
{

namespace
{

constexpr double largestFloat = std::numeric_limits<float>::max();

bool isNumber(const QVariant &value)
{
    const int kind = value.typeId();
    return kind == QMetaType::Int || kind == QMetaType::Float || kind == QMetaType::Double;
}

/// The value as the kind that the property has, invalid if it is none.
QVariant asKind(int kind, const QVariant &value)
{
    if (value.typeId() == kind)
        return value;
    const double number = isNumber(value) ? value.toDouble() : std::nan("");
    if (kind == QMetaType::Float && std::abs(number) <= largestFloat)
        return static_cast<float>(number);
    if (kind == QMetaType::Int && std::trunc(number) == number && std::abs(number) <= std::numeric_limits<int>::max())
        return static_cast<int>(number);
    return {};
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
    const auto found = m_values.find(path);
    const QVariant taken = found == m_values.end() ? QVariant() : asKind(found->typeId(), value);
    if (!taken.isValid())
        return false;
    *found = taken;
    return true;
}

} // namespace emulator
