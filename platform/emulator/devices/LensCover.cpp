#include "platform/emulator/devices/LensCover.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/settings.h"

#include <algorithm>

namespace emulator
{

namespace
{

// A move looks this often whether its camera has gone.
constexpr int64_t lookMilliseconds = 50;
const auto stateKey = QStringLiteral("state");

} // namespace

LensCover::LensCover(Camera &camera, Section &section)
    : Device(camera), m_target(static_cast<State>(section.integer(stateKey, Open, Open, Unknown))),
      m_moveMilliseconds(static_cast<int64_t>(section.number(QStringLiteral("moveSeconds"), 1, 0, 60) * 1000))
{
}

LensCover::State LensCover::state() const { return Clock::now() < m_arrival ? Unknown : m_target; }

Status LensCover::moveTo(uint8_t state)
{
    if (state >= Unknown)
        return Refused;
    if (state != m_target)
        start(static_cast<State>(state));
    const int64_t arrival = m_arrival;
    while (Clock::now() < arrival) {
        const Status status = camera().takeTime(std::min(arrival - Clock::now(), lookMilliseconds));
        if (status != Ok)
            return status;
        if (m_target != state)
            return Refused;
    }
    return Ok;
}

QJsonObject LensCover::save() const { return {{stateKey, m_target}}; }

void LensCover::restore(const QJsonObject &values)
{
    set(stateKey, values.value(stateKey).toVariant());
    // While the camera is off, the cover is where it was left.
    if (!camera().connected())
        m_arrival = 0;
}

void LensCover::connectionChanged(bool connected)
{
    if (!connected && state() == Unknown)
        m_target = Unknown;
}

bool LensCover::set(const QString &name, const QVariant &value)
{
    const auto state = settingAs<uint8_t>(value);
    if (name != stateKey || !state || *state > Unknown)
        return false;
    if (*state != m_target)
        start(static_cast<State>(*state));
    return true;
}

void LensCover::start(State state)
{
    m_target = state;
    m_arrival = Clock::now() + m_moveMilliseconds;
}

} // namespace emulator
