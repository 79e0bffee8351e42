#include "platform/emulator/devices/Temperatures.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/noise.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr double maximumCelsius = std::numeric_limits<float>::max();
constexpr double heatingSeconds = 600;
constexpr uint64_t firstNoiseSeed = 10; // Each sensor has its own noise.

/// The temperature at a sensor relative to the ambient temperature, in degrees.
struct Place {
    double atStart; ///< When the camera is switched on.
    double selfHeating; ///< The final rise.
};

/// In the order of Temperatures::Sensor.
constexpr std::array places{Place{1, 3}, Place{4.5, 4}, Place{8, 6}, Place{10.5, 6}, Place{-0.5, 1}};

} // namespace

Temperatures::Temperatures(Camera &camera, Section &section)
    : Device(camera), m_environment(*camera.device<Environment>()),
      m_hasFrontPanel(section.flag(u"frontPanel"_s, false)), m_hasAirGap(section.flag(u"airGap"_s, false)),
      m_hasInternal(section.flag(u"internal"_s, false)), m_hasRsInternal(section.flag(u"rsInternal"_s, false)),
      m_hasLens(section.flag(u"lens"_s, false)), m_noise(section.number(u"noise"_s, 0.05, 0, maximumCelsius)),
      m_scFails(section.flag(u"scFails"_s, false)), m_rsFails(section.flag(u"rsFails"_s, false)),
      m_lensFails(section.flag(u"lensFails"_s, false))
{
}

Status Temperatures::scTemperatures(float &frontPanel, float &airGap, float &internal) const
{
    if (m_scFails)
        return Refused;
    frontPanel = m_hasFrontPanel ? measure(FrontPanel) : 0;
    airGap = m_hasAirGap ? measure(AirGap) : 0;
    internal = m_hasInternal ? measure(Internal) : 0;
    return Ok;
}

Status Temperatures::rsTemperature(float &internal) const
{
    if (!m_hasRsInternal)
        return Absent;
    if (m_rsFails)
        return Refused;
    internal = measure(RsInternal);
    return Ok;
}

Status Temperatures::lensTemperature(float &celsius) const
{
    if (!m_hasLens)
        return Absent;
    if (m_lensFails)
        return Refused;
    celsius = measure(Lens);
    return Ok;
}

double Temperatures::frontPanelOf(const Camera &camera)
{
    const auto *const temperatures = camera.device<Temperatures>();
    return temperatures ? temperatures->celsius(FrontPanel, Clock::now())
                        : camera.device<Environment>()->laggedAmbient();
}

void Temperatures::connectionChanged(bool connected)
{
    if (connected && !m_switchedOn)
        m_switchedOn = Clock::now();
}

void Temperatures::expose(int, image::Exposure &exposure) const
{
    exposure.readout.caseCelsius = celsius(Internal, Clock::now());
    exposure.optics.lensCelsius = celsius(Lens, Clock::now());
}

double Temperatures::celsius(Sensor sensor, int64_t time) const
{
    const double seconds = static_cast<double>(std::max<int64_t>(0, time - m_switchedOn.value_or(time))) / 1000;
    const Place place = places.at(sensor);
    const double aboveAmbient = place.atStart + place.selfHeating * (1 - std::exp(-seconds / heatingSeconds));
    return m_environment.laggedAmbient(time) + aboveAmbient;
}

float Temperatures::measure(Sensor sensor) const
{
    const int64_t now = Clock::now();
    const double error = m_noise * noise(firstNoiseSeed + sensor, now);
    return static_cast<float>(std::clamp(celsius(sensor, now) + error, -maximumCelsius, maximumCelsius));
}

} // namespace emulator
