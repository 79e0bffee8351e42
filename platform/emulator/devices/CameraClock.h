#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The two clocks of a camera: a real-time clock and the IRIG time. Both run on while the camera is off, and every
/// camera has both, whichever of them its images carry. They have no time zone. A time that does not exist is refused.
class CameraClock : public Device
{
public:
    struct RealTime {
        uint8_t year; ///< From 2000.
        uint8_t month;
        uint8_t day;
        uint8_t hour;
        uint8_t minute;
        uint8_t second;
    };

    struct IrigTime {
        uint16_t year; ///< In full; 0: unknown.
        uint16_t day; ///< Of the year, from 1.
        uint8_t hour;
        uint8_t minute;
        uint8_t second;
        uint16_t millisecond;
        uint16_t microsecond;
    };

    /// Profile keys: "irigYear" (the signal contains the year), "irigLocked". Setting: "irigLocked".
    CameraClock(Camera &camera, Section &section);

    RealTime realTime() const;
    Status setRealTime(const RealTime &time);

    IrigTime irigTime() const;
    /// A year of 0 leaves the year as it is.
    Status setIrigTime(const IrigTime &time);

    /// The IRIG time follows a signal from outside.
    bool irigLocked() const { return m_irigLocked; }

private:
    bool m_irigYear;
    bool m_irigLocked = false;
    // Milliseconds by which the clocks are ahead of the Clock.
    int64_t m_realTimeOffset = 0;
    int64_t m_irigOffset = 0;
    uint16_t m_irigMicrosecond = 0;
};

} // namespace emulator
