#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

namespace emulator
{

/// The lens keeps its focus over temperature, where it can.
class Athermalization : public Device
{
public:
    /// Knows in the profile: "available", "enabled".
    Athermalization(Camera &camera, Section &section);

    bool available() const { return m_available; }
    /// Refused while it is not available, as is setting it.
    Status enabled(bool &enabled) const;
    Status setEnabled(bool enabled);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// "available", "enabled".
    bool set(const QString &name, const QVariant &value) override;

private:
    bool m_available;
    bool m_enabled;
};

} // namespace emulator
