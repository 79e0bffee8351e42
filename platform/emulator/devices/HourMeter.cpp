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
constexpr int64_t minute = 60'000;
constexpr int64_t mostMinutes = std::numeric_limits<uint32_t>::max();

} // namespace

HourMeter::HourMeter(Camera &camera, Section &section)
    : Device(camera), m_milliseconds(static_cast<int64_t>(section.number(u"minutes"_s, 0, 0, mostMinutes)) * minute)
{
}

uint32_t HourMeter::minutes() const { return static_cast<uint32_t>(std::min(total() / minute, mostMinutes)); }

QJsonObject HourMeter::save() const { return {{millisecondsKey, static_cast<qint64>(total())}}; }

QStringList HourMeter::restore(const QJsonObject &values)
{
    const QJsonValue saved = values.value(millisecondsKey);
    const Refusal refusal = parse(saved, m_milliseconds, {0, double(mostMinutes * minute)});
    m_since = Clock::now();
    if (refusal.isEmpty() || saved.isUndefined())
        return {};
    // The nearest possible time is closer to the truth than that of a new camera.
    m_milliseconds = std::clamp<int64_t>(saved.toInteger(m_milliseconds), 0, mostMinutes * minute);
    return {millisecondsKey + u": "_s + refusal};
}

void HourMeter::connectionChanged(bool connected)
{
    m_milliseconds = total();
    m_since = Clock::now();
    m_running = connected;
}

int64_t HourMeter::total() const
{
    // A clock that is set back does not reduce the time in use.
    return m_milliseconds + (m_running ? std::max<int64_t>(0, Clock::now() - m_since) : 0);
}

} // namespace emulator
