#pragma once

#include "hlx/CString.h"

namespace hlx
{

/// A time as the camera counts it: year and day of the year, without a time zone. A time without a year has the year 0,
/// which is a leap year, so that day 366 exists. The ranges of the fields are not checked.
class CDateTime
{
public:
    /// No time: all fields are 0, the day of the year too.
    CDateTime() = default;

    /// From "DDD:HH:MM:SS.ffffff" or "YYYY:DDD:HH:MM:SS.ffffff". In a shorter text the leading fields are missing and
    /// are 0. The digits after the point are a decimal fraction of a second. A field that is not a number is 0. A text
    /// of more than five fields makes the default value.
    explicit CDateTime(const CString &text);

    /// A time without a year.
    static CDateTime NewYDHMS(int dayOfYear, int hour, int minute, int second, int millisecond, int microsecond);
    static CDateTime NewYYDHMS(int year, int dayOfYear, int hour, int minute, int second, int millisecond,
                               int microsecond);

    /// The month (1 to 12) and day (1 to 31) of a day of the year (1 to 366). A day below 1 is 1 January, a day after
    /// the end of the year 31 December.
    static void GetDayInMonth(int &month, int &day, int year, int dayOfYear);

    int year() const { return m_year; }
    int month() const;
    int day() const; ///< Of the month, 1 to 31.
    int dayOfYear() const { return m_dayOfYear; }
    int hour() const { return m_hour; }
    int minute() const { return m_minute; }
    int second() const { return m_second; }
    int millisecond() const { return m_millisecond; }
    int microsecond() const { return m_microsecond; } ///< Within the millisecond, 0 to 999.

    friend auto operator<=>(const CDateTime &, const CDateTime &) = default;

private:
    // From the greatest unit to the least: the comparison uses this order.
    int m_year = 0;
    int m_dayOfYear = 0;
    int m_hour = 0;
    int m_minute = 0;
    int m_second = 0;
    int m_millisecond = 0;
    int m_microsecond = 0;
};

} // namespace hlx
