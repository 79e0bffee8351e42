#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

namespace emulator
{

/// How the detector is read: mirrored or not, and with a high sensitivity where the camera can.
class ImageMode : public Device
{
public:
    /// Knows in the profile: "reverted" (left to right), "inverted" (top to bottom), "hsmAvailable", "hsmEnabled".
    ImageMode(Camera &camera, Section &section);

    bool reverted() const { return m_reverted; }
    void setReverted(bool reverted);
    bool inverted() const { return m_inverted; }
    void setInverted(bool inverted);

    bool hsmAvailable() const { return m_hsmAvailable; }
    /// Refused while there is no high sensitivity mode, as is setting it.
    Status hsmEnabled(bool &enabled) const;
    Status setHsmEnabled(bool enabled);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// As in the profile.
    bool set(const QString &name, const QVariant &value) override;

private:
    bool m_reverted;
    bool m_inverted;
    bool m_hsmAvailable;
    bool m_hsmEnabled;
};

} // namespace emulator
