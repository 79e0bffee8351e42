#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// The two clocks of a camera: the real-time clock and the IRIG time. Every camera has both, and both run while the
/// camera is off. They have no time zone. Times that do not exist are refused.
class CameraClock : public Device
{
public:
    struct RealTime {
        uint8_t year; ///< Years since 2000.
        uint8_t month; ///< From 1.
        uint8_t day; ///< Day of the month, from 1.
        uint8_t hour;
        uint8_t minute;
        uint8_t second;
    };

    struct IrigTime {
        uint16_t year; ///< All digits; 0 if it is unknown.
        uint16_t day; ///< Day of the year, from 1.
        uint8_t hour;
        uint8_t minute;
        uint8_t second;
        uint16_t millisecond;
        uint16_t microsecond;
    };

    /// Profile keys: "irigYear" (whether the signal contains the year), "irigLocked". Setting: "irigLocked".
    CameraClock(Camera &camera, Section &section);

    RealTime realTime() const;
    /// Milliseconds by which the real-time clock is ahead of Clock.
    int64_t realTimeShift() const { return m_realTimeOffset; }
    /// The date and time of day of milliseconds since 1970: a time of Clock plus realTimeShift().
    static RealTime realTimeOf(int64_t milliseconds);
    /// Sets the real-time clock.
    Status setRealTime(const RealTime &time);

    IrigTime irigTime() const;
    /// The IRIG time at a time of Clock in microseconds since 1970, by the present setting of the IRIG clock.
    IrigTime irigTimeAt(int64_t microseconds) const;
    /// Microseconds by which the IRIG clock is ahead of Clock.
    int64_t irigShift() const { return m_irigOffset * 1000 + m_irigMicrosecond; }
    /// The IRIG time of microseconds since 1970: a time of Clock plus irigShift().
    IrigTime irigTimeOf(int64_t microseconds) const;
    /// When the IRIG clock next shows this day and time of day, at `microseconds` or later; both are times of Clock in
    /// microseconds since 1970. The year of `time` is ignored. A year must have this day, the 366th or less.
    int64_t nextIrigTime(const IrigTime &time, int64_t microseconds) const;
    /// Sets the IRIG time. A year of 0 keeps the present year.
    Status setIrigTime(const IrigTime &time);

    /// Whether the IRIG time is synchronised with an external signal.
    bool irigLocked() const { return m_irigLocked; }

private:
    bool m_irigYear;
    bool m_irigLocked = false;
    // The difference of each clock from Clock, in milliseconds.
    int64_t m_realTimeOffset = 0;
    int64_t m_irigOffset = 0;
    uint16_t m_irigMicrosecond = 0;
};

} // namespace emulator
