#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <optional>

namespace emulator
{

class Environment;

/// The temperature sensors in the camera's case and its lens, in Celsius. Two boards measure in the case: the sensor
/// controller (SC) at the front panel, in the air gap and inside, the readout electronics (RS) inside, with another
/// sensor. Every sensor follows the ambient temperature with the lag of Environment::laggedAmbient(), and warms up
/// after the camera is switched on: each has its own distance from the ambient temperature and its own rise.
class Temperatures : public Device
{
public:
    /// Profile keys: "frontPanel", "airGap", "internal", "rsInternal" and "lens" (whether the camera has the sensor);
    /// "noise" (degrees); "scFails", "rsFails", "lensFails" (the sensors exist but cannot be read). The environment
    /// must exist before.
    Temperatures(Camera &camera, Section &section);

    /// The temperatures in Celsius. A missing sensor of the SC reads exactly 0, other missing sensors are Absent.
    /// Refused if a sensor cannot be read.
    Status scTemperatures(float &frontPanel, float &airGap, float &internal) const;
    bool hasFrontPanelSensor() const { return m_hasFrontPanel; }
    bool hasAirGapSensor() const { return m_hasAirGap; }
    bool hasInternalSensor() const { return m_hasInternal; }
    Status rsTemperature(float &internal) const;
    bool hasLensSensor() const { return m_hasLens; }
    Status lensTemperature(float &celsius) const;
    /// The temperature of the air gap at a time of Clock since the last change of the ambient temperature, without
    /// noise, also if the camera lacks the sensor.
    double airGap(int64_t time) const { return celsius(AirGap, time); }
    /// The present temperature of the front panel of a camera, in the same way. A camera without sensors has that of
    /// its environment.
    static double frontPanelOf(const Camera &camera);

    void connectionChanged(bool connected) override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    enum Sensor : uint8_t { FrontPanel, AirGap, Internal, RsInternal, Lens };
    /// The temperature at the place of a sensor in Celsius at a time of Clock, also if the camera lacks the sensor.
    double celsius(Sensor sensor, int64_t time) const;
    /// The same with the noise of the sensor.
    float measure(Sensor sensor) const;

    const Environment &m_environment;
    bool m_hasFrontPanel;
    bool m_hasAirGap;
    bool m_hasInternal;
    bool m_hasRsInternal;
    bool m_hasLens;
    double m_noise;
    bool m_scFails;
    bool m_rsFails;
    bool m_lensFails;
    std::optional<int64_t> m_switchedOn; ///< A time of Clock.
};

} // namespace emulator
