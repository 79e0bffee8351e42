#pragma once

#include "platform/emulator/Device.h"

#include <QString>
#include <QVariantMap>

namespace emulator
{

/// The properties that only an emulated camera has, by their paths: "/RecordStart" and "/SSDTransfer" (bool),
/// "/Pattern" (int), "/BlackbodyTemp1" and "/BlackbodyTemp2" (float, Celsius) and "/ChamberProfile" (text).
class EmulatorProperties : public Device
{
public:
    /// Profile keys: the names without the slash. Settings: the paths.
    EmulatorProperties(Camera &camera, Section &section);

    /// False and `value` untouched: there is no such property.
    bool get(const QString &path, QVariant &value) const;

    /// False: there is no such property, or the value is not of its kind. A number of another kind is taken if it fits.
    bool set(const QString &path, const QVariant &value);

    Refusal change(const QString &name, const QJsonValue &value) override;

private:
    QVariantMap m_values;
};

} // namespace emulator
