#include "platform/emulator/devices/Flag.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/devices/noise.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double maximumNoise = 1e6;
constexpr uint64_t noiseSeed = 20;

} // namespace

Flag::Flag(Camera &camera, Section &section)
    : Device(camera), m_environment(*camera.device<Environment>()), m_temperatures(camera.device<Temperatures>()),
      m_noise(section.number(u"noise"_s, 0.02, 0, maximumNoise))
{
    addSettings({{u"state"_s, [this] { return m_state; }, [this](State state) { return setState(state); },
                  Between{Stowed, InView}, OtherClient}});
    if (section.flag(u"controlled"_s, false)) {
        constexpr Between range{-10, 60};
        constexpr double setpoint = 20;
        m_cooler = std::make_unique<ThermoelectricCooler>(
            section, range, setpoint, [this](int64_t time) { return airGap(time); }, [this] { remember(); });
        addSettings(section, m_cooler->settings());
        addSettings({{u"stuck"_s, [this] { return m_cooler->stuck(); },
                      [this](bool stuck) {
                          m_cooler->setStuck(stuck);
                          return Ok;
                      },
                      OtherClient}});
        camera.device<Environment>()->beforeChange([this] { celsius(Clock::now()); });
    }
}

Status Flag::setState(uint8_t state)
{
    if (state > InView)
        return Refused;
    m_startCover = cover();
    m_startTime = Clock::now();
    m_state = static_cast<State>(state);
    return Ok;
}

float Flag::temperatureAt(int64_t time) const
{
    return static_cast<float>(celsius(time) + m_noise * noise(noiseSeed, time));
}

Status Flag::desiredTemperature(float &celsius) const
{
    if (!m_cooler)
        return Absent;
    celsius = m_cooler->setpoint();
    return Ok;
}

Status Flag::setDesiredTemperature(float celsius) { return m_cooler ? m_cooler->setSetpoint(celsius) : Absent; }

Status Flag::coolerEnabled(bool &on) const
{
    if (!m_cooler)
        return Absent;
    on = m_cooler->power();
    return Ok;
}

void Flag::connectionChanged(bool connected)
{
    if (connected && m_cooler)
        m_cooler->switchOn();
}

void Flag::expose(int, image::Exposure &exposure) const
{
    exposure.optics.flagCover = cover();
    exposure.optics.flagCelsius = celsius(Clock::now());
}

double Flag::airGap(int64_t time) const
{
    return m_temperatures ? m_temperatures->airGap(time) : m_environment.laggedAmbient(time);
}

double Flag::celsius(int64_t time) const { return m_cooler ? m_cooler->temperature(time) : airGap(time); }

double Flag::cover() const
{
    const int64_t remaining = Clock::remaining(m_startTime + moveMilliseconds, moveMilliseconds);
    const double moved = 1 - static_cast<double>(remaining) / static_cast<double>(moveMilliseconds);
    return m_state == InView ? std::min(m_startCover + moved, 1.0) : std::max(m_startCover - moved, 0.0);
}

} // namespace emulator
