#include "platform/emulator/devices/HourMeter.h"

#include "platform/emulator/Clock.h"

#include <algorithm>
#include <limits>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

const QString millisecondsKey = u"milliseconds"_s;
constexpr int64_t millisecondsPerMinute = 60'000;
constexpr int64_t maximumMinutes = std::numeric_limits<uint32_t>::max();

} // namespace

HourMeter::HourMeter(Camera &camera, Section &section)
    : Device(camera),
      m_milliseconds(static_cast<int64_t>(section.number(u"minutes"_s, 0, 0, maximumMinutes)) * millisecondsPerMinute)
{
}

uint32_t HourMeter::minutes() const
{
    return static_cast<uint32_t>(std::min(totalMilliseconds() / millisecondsPerMinute, maximumMinutes));
}

QJsonObject HourMeter::save() const { return {{millisecondsKey, static_cast<qint64>(totalMilliseconds())}}; }

QStringList HourMeter::restore(const QJsonObject &values)
{
    const QJsonValue saved = values.value(millisecondsKey);
    const Refusal refusal = parse(saved, m_milliseconds, {0, double(maximumMinutes * millisecondsPerMinute)});
    m_countedUntil = Clock::now();
    if (refusal.isEmpty() || saved.isUndefined())
        return {};
    // The nearest valid time is more useful than that of a new camera.
    m_milliseconds = std::clamp<int64_t>(saved.toInteger(m_milliseconds), 0, maximumMinutes * millisecondsPerMinute);
    return {millisecondsKey + u": "_s + refusal};
}

void HourMeter::connectionChanged(bool connected)
{
    m_milliseconds = totalMilliseconds();
    m_countedUntil = Clock::now();
    m_running = connected;
}

int64_t HourMeter::totalMilliseconds() const
{
    // Setting the clock back does not reduce the time in use.
    return m_milliseconds + (m_running ? std::max<int64_t>(0, Clock::now() - m_countedUntil) : 0);
}

} // namespace emulator
