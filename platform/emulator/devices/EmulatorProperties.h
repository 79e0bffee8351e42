#pragma once

#include "platform/emulator/Device.h"

#include <QString>
#include <QVariant>

#include <map>

namespace emulator
{

/// The properties that only emulated cameras have, by their paths: "/RecordStart" and "/SSDTransfer" (bool),
/// "/Pattern" (int), "/BlackbodyTemp1" and "/BlackbodyTemp2" (float, Celsius) and "/ChamberProfile" (text).
class EmulatorProperties : public Device
{
public:
    /// Profile keys: the paths without the slash. Settings: the paths.
    EmulatorProperties(Camera &camera, Section &section);

    /// Reads a property. Returns false, and does not change `value`, if the property does not exist.
    bool get(const QString &path, QVariant &value) const;

    /// Sets a property. Returns false if the property does not exist, or if its type cannot hold the value.
    bool set(const QString &path, const QVariant &value);

private:
    template <class T> void addProperty(Section &section, const QString &key, const T &value);

    std::map<QString, QVariant> m_values; ///< By path.
};

} // namespace emulator
