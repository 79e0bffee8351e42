#include "platform/emulator/devices/CameraClock.h"

#include "platform/emulator/Clock.h"

#include <QDateTime>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int firstYear = 2000;
// About 65 000 years in milliseconds: the range of a year of 16 bits.
constexpr int64_t maximumOffset = 2'100'000'000'000'000;

QDateTime timeWithOffset(int64_t offset) { return QDateTime::fromMSecsSinceEpoch(Clock::now() + offset, Qt::UTC); }

int64_t offsetOf(const QDate &date, const QTime &time)
{
    return QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch() - Clock::now();
}

} // namespace

CameraClock::CameraClock(Camera &camera, Section &section)
    : Device(camera), m_irigYear(section.flag(u"irigYear"_s, true))
{
    const double limit = maximumOffset;
    addSettings(section,
                {
                    {u"irigLocked"_s, m_irigLocked, Profile | OtherClient},
                    {u"realTimeOffset"_s, m_realTimeOffset, Between{-limit, limit}, Snapshot},
                    {u"irigOffset"_s, m_irigOffset, Between{-limit, limit}, Snapshot},
                    {u"irigMicrosecond"_s, m_irigMicrosecond, Between{0, 999}, Snapshot},
                });
}

CameraClock::RealTime CameraClock::realTime() const { return realTimeOf(Clock::now() + m_realTimeOffset); }

CameraClock::RealTime CameraClock::realTimeOf(int64_t milliseconds)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC);
    const auto byte = [](int value) { return static_cast<uint8_t>(value); };
    return {byte(time.date().year() - firstYear),
            byte(time.date().month()),
            byte(time.date().day()),
            byte(time.time().hour()),
            byte(time.time().minute()),
            byte(time.time().second())};
}

Status CameraClock::setRealTime(const RealTime &time)
{
    const QDate date(firstYear + time.year, time.month, time.day);
    const QTime timeOfDay(time.hour, time.minute, time.second);
    if (!date.isValid() || !timeOfDay.isValid())
        return Refused;
    m_realTimeOffset = offsetOf(date, timeOfDay);
    remember();
    return Ok;
}

CameraClock::IrigTime CameraClock::irigTime() const { return irigTimeAt(Clock::now() * 1000); }

CameraClock::IrigTime CameraClock::irigTimeAt(int64_t microseconds) const
{
    return irigTimeOf(microseconds + irigShift());
}

CameraClock::IrigTime CameraClock::irigTimeOf(int64_t microseconds) const
{
    // Rounded down, also before 1970.
    const int64_t microsecond = (microseconds % 1000 + 1000) % 1000;
    const QDateTime time = QDateTime::fromMSecsSinceEpoch((microseconds - microsecond) / 1000, Qt::UTC);
    const auto byte = [](int value) { return static_cast<uint8_t>(value); };
    const auto word = [](int value) { return static_cast<uint16_t>(value); };
    return {word(m_irigYear ? time.date().year() : 0),
            word(time.date().dayOfYear()),
            byte(time.time().hour()),
            byte(time.time().minute()),
            byte(time.time().second()),
            word(time.time().msec()),
            static_cast<uint16_t>(microsecond)};
}

int64_t CameraClock::nextIrigTime(const IrigTime &time, int64_t microseconds) const
{
    const int64_t offset = irigShift();
    const QTime timeOfDay(time.hour, time.minute, time.second, time.millisecond);
    // The 366th day exists in leap years only.
    for (int year = QDateTime::fromMSecsSinceEpoch((microseconds + offset) / 1000, Qt::UTC).date().year();; ++year) {
        const QDate date = QDate(year, 1, 1).addDays(time.day - 1);
        const int64_t moment = QDateTime(date, timeOfDay, Qt::UTC).toMSecsSinceEpoch() * 1000 + time.microsecond;
        if (date.year() == year && moment >= microseconds + offset)
            return moment - offset;
    }
}

Status CameraClock::setIrigTime(const IrigTime &time)
{
    int year = time.year != 0 ? time.year : timeWithOffset(m_irigOffset).date().year();
    // Without a year in the signal, day 366 is valid: a leap year is used for it.
    if (!m_irigYear && time.day == 366)
        year = firstYear;
    const QDate date = QDate(year, 1, 1).addDays(time.day - 1);
    const QTime timeOfDay(time.hour, time.minute, time.second, time.millisecond);
    if (date.year() != year || !timeOfDay.isValid() || time.microsecond > 999)
        return Refused;
    m_irigOffset = offsetOf(date, timeOfDay);
    m_irigMicrosecond = time.microsecond;
    remember();
    return Ok;
}

} // namespace emulator
