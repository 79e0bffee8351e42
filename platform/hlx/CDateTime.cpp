#include "hlx/CDateTime.h"

#include <charconv>
#include <string_view>
#include <vector>

namespace hlx
{

namespace
{

bool isLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

int toInt(std::string_view text)
{
    int number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && rest == text.data() + text.size() ? number : 0;
}

std::vector<std::string_view> split(std::string_view text)
{
    std::vector<std::string_view> parts;
    for (std::size_t at = text.find(':'); at != std::string_view::npos; at = text.find(':')) {
        parts.push_back(text.substr(0, at));
        text.remove_prefix(at + 1);
    }
    parts.push_back(text);
    return parts;
}

int microseconds(std::string_view fraction)
{
    std::string digits(fraction.substr(0, 6));
    digits.resize(6, '0');
    const int number = toInt(digits);
    return number < 0 ? 0 : number;
}

} // namespace

CDateTime::CDateTime(const CString &text)
{
    const std::vector<std::string_view> parts = split(text.c_str());
    int *const fields[] = {&m_second, &m_minute, &m_hour, &m_dayOfYear, &m_year};
    if (parts.size() > std::size(fields))
        return;
    const std::string_view seconds = parts.back();
    const std::size_t point = seconds.find('.');
    m_second = toInt(seconds.substr(0, point));
    if (point != std::string_view::npos) {
        const int fraction = microseconds(seconds.substr(point + 1));
        m_millisecond = fraction / 1000;
        m_microsecond = fraction % 1000;
    }
    for (std::size_t i = 1; i < parts.size(); ++i)
        *fields[i] = toInt(parts[parts.size() - 1 - i]);
}

CDateTime CDateTime::NewYDHMS(int dayOfYear, int hour, int minute, int second, int millisecond, int microsecond)
{
    return NewYYDHMS(0, dayOfYear, hour, minute, second, millisecond, microsecond);
}

CDateTime CDateTime::NewYYDHMS(int year, int dayOfYear, int hour, int minute, int second, int millisecond,
                               int microsecond)
{
    CDateTime time;
    time.m_year = year;
    time.m_dayOfYear = dayOfYear;
    time.m_hour = hour;
    time.m_minute = minute;
    time.m_second = second;
    time.m_millisecond = millisecond;
    time.m_microsecond = microsecond;
    return time;
}

void CDateTime::GetDayInMonth(int &month, int &day, int year, int dayOfYear)
{
    const int lengths[] = {31, isLeapYear(year) ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    month = 1;
    day = dayOfYear < 1 ? 1 : dayOfYear;
    while (month < 12 && day > lengths[month - 1])
        day -= lengths[month++ - 1];
    if (day > 31)
        day = 31;
}

int CDateTime::month() const
{
    int month = 0;
    int day = 0;
    GetDayInMonth(month, day, m_year, m_dayOfYear);
    return month;
}

int CDateTime::day() const
{
    int month = 0;
    int day = 0;
    GetDayInMonth(month, day, m_year, m_dayOfYear);
    return day;
}

} // namespace hlx
