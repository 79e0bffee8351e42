#include "platform/emulator/devices/LensCover.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

// The interval of the checks whether the camera is still connected.
constexpr int64_t checkIntervalMilliseconds = 50;

} // namespace

LensCover::LensCover(Camera &camera, Section &section)
    : Device(camera), m_moveMilliseconds(static_cast<int64_t>(section.number(u"moveSeconds"_s, 1, 0, 60) * 1000))
{
    const QString key = u"state"_s;
    addSettings(section,
                {
                    {key, m_target, Between{Open, Unknown}, Profile},
                    {key, [this] { return m_target; }, [this](State state) { return start(state); },
                     Between{Open, Unknown}, Snapshot | OtherClient},
                });
}

LensCover::State LensCover::state() const
{
    return Clock::remaining(m_arrival, m_moveMilliseconds) > 0 ? Unknown : m_target;
}

Status LensCover::moveTo(uint8_t state)
{
    if (state >= Unknown)
        return Refused;
    start(static_cast<State>(state));
    const int64_t arrival = m_arrival;
    while (const int64_t remaining = Clock::remaining(arrival, m_moveMilliseconds)) {
        const Status status = camera().letTimePass(std::min(remaining, checkIntervalMilliseconds));
        if (status != Ok)
            return status;
        if (m_target != state)
            return Refused;
    }
    return Ok;
}

QStringList LensCover::restore(const QJsonObject &values)
{
    const QStringList refused = Device::restore(values);
    // The cover does not move while the camera is off.
    if (!camera().connected())
        m_arrival = 0;
    return refused;
}

void LensCover::connectionChanged(bool connected)
{
    if (!connected && state() == Unknown)
        m_target = Unknown;
}

void LensCover::expose(int, image::Exposure &exposure) const { exposure.optics.blocked |= state() != Open; }

Status LensCover::start(State state)
{
    if (state != m_target) {
        m_target = state;
        m_arrival = Clock::now() + m_moveMilliseconds;
    }
    return Ok;
}

} // namespace emulator
