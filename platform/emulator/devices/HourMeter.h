#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// Counts the time in use: the time during which the camera is connected. Outlives the process.
class HourMeter : public Device
{
public:
    /// Profile key: "minutes", the time in use of a new camera.
    HourMeter(Camera &camera, Section &section);

    uint32_t minutes() const;

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;

private:
    int64_t total() const;

    int64_t m_milliseconds; ///< Up to m_since.
    int64_t m_since = 0;
    bool m_running = false;
};

} // namespace emulator
