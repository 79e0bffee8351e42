#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <optional>

namespace emulator
{

/// The temperature sensors in the camera's case and its lens, in Celsius. Two boards measure in the case: the sensor
/// controller (SC) at the front panel, in the air gap and inside, the readout electronics (RS) inside, with another
/// sensor. The case warms up after the camera is switched on.
class Temperatures : public Device
{
public:
    /// Profile keys: the temperatures of a camera that has just been switched on, "frontPanel", "airGap" and "internal"
    /// (0 without the key), "rsInternal" and "lens" (no sensor without the key); "selfHeating" (the final rise in
    /// degrees); "noise" (degrees); "scFails", "rsFails", "lensFails" (the sensors exist but cannot be read).
    Temperatures(Camera &camera, Section &section);

    /// The temperatures in Celsius. Absent without the sensor, Refused if it cannot be read.
    Status scTemperatures(float &frontPanel, float &airGap, float &internal) const;
    Status rsTemperature(float &internal) const;
    bool hasLensSensor() const { return m_lens.has_value(); }
    Status lensTemperature(float &celsius) const;

    void connectionChanged(bool connected) override;

private:
    /// Returns the present value of a sensor that had this temperature when the camera was switched on.
    float measure(double startTemperature, uint64_t seed) const;

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
    std::optional<int64_t> m_switchedOn; ///< A time of Clock.
};

} // namespace emulator
