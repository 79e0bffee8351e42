#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <optional>

namespace emulator
{

/// The temperature sensors in the camera's case and its lens, all in Celsius. Two boards measure inside the case: the
/// SC board knows front panel, air gap and inside, the RS board the inside alone, with another sensor. The case warms
/// up after the camera is switched on.
class Temperatures : public Device
{
public:
    /// Knows in the profile the temperatures of a camera that has just been switched on: "frontPanel", "airGap",
    /// "internal" (0 without the sensor), "rsInternal", "lens" (absent without it); "selfHeating" (degrees after a long
    /// time); "noise" (degrees); "scFails", "rsFails", "lensFails" (the sensor is there but cannot be read).
    Temperatures(Camera &camera, Section &section);

    Status sc(float &frontPanel, float &airGap, float &internal) const;
    Status rs(float &internal) const;
    bool hasLens() const { return m_lens.has_value(); }
    Status lens(float &value) const;

    void connectionChanged(bool connected) override;

private:
    float measure(double whenNew, uint64_t seed) const;

    double m_frontPanel;
    double m_airGap;
    double m_internal;
    std::optional<double> m_rsInternal;
    std::optional<double> m_lens;
    double m_selfHeating;
    double m_noise;
    bool m_scFails;
    bool m_rsFails;
    bool m_lensFails;
    std::optional<int64_t> m_switchedOn;
};

} // namespace emulator
