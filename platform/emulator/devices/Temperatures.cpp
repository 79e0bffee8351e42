#include "platform/emulator/devices/Temperatures.h"

#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/noise.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace emulator
{

namespace
{

constexpr double maximumCelsius = std::numeric_limits<float>::max();
constexpr double heatingSeconds = 600;

// Each sensor has its own noise.
enum Seed : uint64_t { FrontPanel = 10, AirGap, Internal, RsInternal, Lens };

double read(Section &section, const QString &key) { return section.number(key, 0, -maximumCelsius, maximumCelsius); }

std::optional<double> readOptional(Section &section, const QString &key)
{
    return section.contains(key) ? std::optional(read(section, key)) : std::nullopt;
}

} // namespace

Temperatures::Temperatures(Camera &camera, Section &section)
    : Device(camera), m_frontPanel(read(section, QStringLiteral("frontPanel"))),
      m_airGap(read(section, QStringLiteral("airGap"))), m_internal(read(section, QStringLiteral("internal"))),
      m_rsInternal(readOptional(section, QStringLiteral("rsInternal"))),
      m_lens(readOptional(section, QStringLiteral("lens"))),
      m_selfHeating(section.number(QStringLiteral("selfHeating"), 6, 0, 100)),
      m_noise(section.number(QStringLiteral("noise"), 0.05, 0, 100)),
      m_scFails(section.flag(QStringLiteral("scFails"), false)),
      m_rsFails(section.flag(QStringLiteral("rsFails"), false)),
      m_lensFails(section.flag(QStringLiteral("lensFails"), false))
{
}

Status Temperatures::scTemperatures(float &frontPanel, float &airGap, float &internal) const
{
    if (m_scFails)
        return Refused;
    frontPanel = measure(m_frontPanel, FrontPanel);
    airGap = measure(m_airGap, AirGap);
    internal = measure(m_internal, Internal);
    return Ok;
}

Status Temperatures::rsTemperature(float &internal) const
{
    if (!m_rsInternal)
        return Absent;
    if (m_rsFails)
        return Refused;
    internal = measure(*m_rsInternal, RsInternal);
    return Ok;
}

Status Temperatures::lensTemperature(float &celsius) const
{
    if (!m_lens)
        return Absent;
    if (m_lensFails)
        return Refused;
    celsius = measure(*m_lens, Lens);
    return Ok;
}

void Temperatures::connectionChanged(bool connected)
{
    if (connected && !m_switchedOn)
        m_switchedOn = Clock::now();
}

float Temperatures::measure(double startTemperature, uint64_t seed) const
{
    const int64_t now = Clock::now();
    const double seconds = static_cast<double>(std::max<int64_t>(0, now - m_switchedOn.value_or(now))) / 1000;
    const double heating = m_selfHeating * (1 - std::exp(-seconds / heatingSeconds));
    return static_cast<float>(
        std::clamp(startTemperature + heating + m_noise * noise(seed, now), -maximumCelsius, maximumCelsius));
}

} // namespace emulator
