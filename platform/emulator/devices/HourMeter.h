#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// Counts the time in use, which is the time during which the camera is connected. It outlives the process.
class HourMeter : public Device
{
public:
    /// Profile key: "minutes", the time in use of a new camera.
    HourMeter(Camera &camera, Section &section);

    /// The time in use in whole minutes.
    uint32_t minutes() const;

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;

private:
    int64_t totalMilliseconds() const;

    int64_t m_milliseconds; ///< The time in use until m_countedUntil.
    int64_t m_countedUntil = 0;
    bool m_running = false;
};

} // namespace emulator
