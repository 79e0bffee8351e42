#include "platform/emulator/devices/HourMeter.h"

#include "platform/emulator/Clock.h"

#include <algorithm>
#include <limits>

namespace emulator
{

namespace
{

constexpr int64_t minute = 60'000;
constexpr int64_t mostMinutes = std::numeric_limits<uint32_t>::max();

} // namespace

HourMeter::HourMeter(Camera &camera, Section &section)
    : Device(camera),
      m_milliseconds(static_cast<int64_t>(section.number(QStringLiteral("minutes"), 0, 0, mostMinutes)) * minute)
{
}

uint32_t HourMeter::minutes() const { return static_cast<uint32_t>(std::min(total() / minute, mostMinutes)); }

QJsonObject HourMeter::save() const { return {{QStringLiteral("milliseconds"), static_cast<qint64>(total())}}; }

void HourMeter::restore(const QJsonObject &values)
{
    m_milliseconds = std::clamp<int64_t>(values.value(QStringLiteral("milliseconds")).toInteger(m_milliseconds), 0,
                                         mostMinutes * minute);
    m_since = Clock::now();
}

void HourMeter::connectionChanged(bool connected)
{
    m_milliseconds = total();
    m_since = Clock::now();
    m_running = connected;
}

int64_t HourMeter::total() const
{
    // A clock that was set back does not take hours away.
    return m_milliseconds + (m_running ? std::max<int64_t>(0, Clock::now() - m_since) : 0);
}

} // namespace emulator
