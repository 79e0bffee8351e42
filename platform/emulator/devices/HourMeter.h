#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Section.h"

#include <cstdint>

namespace emulator
{

/// Counts the time that the camera has been in use, which is while it is connected. Outlives the process.
class HourMeter : public Device
{
public:
    /// Knows in the profile: "minutes", what a new camera has behind it.
    HourMeter(Camera &camera, Section &section);

    uint32_t minutes() const;

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;

private:
    int64_t total() const;

    int64_t m_milliseconds; ///< Up to m_since.
    int64_t m_since = 0;
    bool m_running = false;
};

} // namespace emulator
