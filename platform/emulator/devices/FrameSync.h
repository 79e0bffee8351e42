#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <cstdint>

namespace emulator
{

/// What starts a frame.
class FrameSync : public Device
{
public:
    enum Source : uint8_t { Internal = 0, External = 1, Video = 2, TriLevel = 3 };

    /// Knows in the profile: "source", "triLevel" (the camera has such an input).
    FrameSync(Camera &camera, Section &section);

    uint8_t source() const { return m_source; }
    /// Refuses an input that the camera lacks.
    Status setSource(uint8_t source);
    bool hasTriLevel() const { return m_triLevel; }

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// "source".
    bool set(const QString &name, const QVariant &value) override;

private:
    bool m_triLevel;
    uint8_t m_source;
};

} // namespace emulator
