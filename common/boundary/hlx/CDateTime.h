#pragma once

#include "hlx/CString.h"

namespace hlx
{

/// A time of a year as the camera counts it, without a zone. A time without a year stands in the year 0, which is a
/// leap year, so that the day 366 has its place. Fields are kept as given, without a check of their ranges.
class CDateTime
{
public:
    /// The start of the year 0, with the day of the year 0: no time at all.
    CDateTime() = default;

    /// From "DDD:HH:MM:SS.ffffff" or "YYYY:DDD:HH:MM:SS.ffffff". In a shorter text the leading fields are missing and
    /// 0; the digits behind the point are a decimal fraction; what is no number counts as 0. More than five fields give
    /// the default value.
    explicit CDateTime(const CString &text);

    static CDateTime NewYDHMS(int dayOfYear, int hour, int minute, int second, int millisecond, int microsecond);
    static CDateTime NewYYDHMS(int year, int dayOfYear, int hour, int minute, int second, int millisecond,
                               int microsecond);

    /// The month (1..12) and day (1..31) of a day of the year (1..366). A day below 1 gives 1 January, a day beyond the
    /// end of the year 31 December.
    static void GetDayInMonth(int &month, int &day, int year, int dayOfYear);

    int year() const { return m_year; }
    int month() const;
    int day() const; ///< Of the month.
    int dayOfYear() const { return m_dayOfYear; }
    int hour() const { return m_hour; }
    int minute() const { return m_minute; }
    int second() const { return m_second; }
    int millisecond() const { return m_millisecond; }
    int microsecond() const { return m_microsecond; } ///< Of the millisecond, 0..999.

    friend auto operator<=>(const CDateTime &, const CDateTime &) = default;

private:
    // In the order of their weight, which the comparison follows.
    int m_year = 0;
    int m_dayOfYear = 0;
    int m_hour = 0;
    int m_minute = 0;
    int m_second = 0;
    int m_millisecond = 0;
    int m_microsecond = 0;
};

} // namespace hlx
