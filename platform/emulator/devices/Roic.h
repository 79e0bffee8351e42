#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/SensorReadout.h"

#include <cstdint>

namespace emulator
{

class Sensor;

/// The factory's adjustment of the readout circuit: the constants of its timing, and the phase of the detector clock.
/// They outlive the process and are not in snapshots.
class Roic : public Device
{
public:
    static constexpr uint32_t maximumPhaseShift = 100'000'000;

    /// Profile keys: "bestClockPhaseShift" (the phase with the least noise, 40 without the key) and "clockPhaseShift"
    /// (the phase at the start, the best one without the key), both 0 to maximumPhaseShift.
    ///
    /// Settings: "override", the constants "lineDeadWidth", "preIntDeadWidth", "postIntDeadWidth", "preDeadRows",
    /// "postDeadRows" and "hasExtraLineSync", and "clockPhaseShift". The device Sensor must exist before.
    Roic(Camera &camera, Section &section);

    // While a recorder needs the frames as they are, changes of the timing are refused.

    /// Whether the constants are those that have been set, and not those of the profile. Refuses a number above 1.
    uint8_t overridden() const { return m_override ? 1 : 0; }
    Status setOverride(uint8_t value);

    // The constants in force. The setters are refused without the override, and outside the ranges of SensorReadout.
    // What has been set comes back with the override.

    uint32_t lineDeadWidth() const { return m_constants.lineDeadWidth; }
    Status setLineDeadWidth(uint32_t clocks) { return assign(m_constants.lineDeadWidth, clocks); }
    uint32_t preIntDeadWidth() const { return m_constants.preIntDeadWidth; }
    Status setPreIntDeadWidth(uint32_t clocks) { return assign(m_constants.preIntDeadWidth, clocks); }
    uint32_t postIntDeadWidth() const { return m_constants.postIntDeadWidth; }
    Status setPostIntDeadWidth(uint32_t clocks) { return assign(m_constants.postIntDeadWidth, clocks); }
    uint32_t preDeadRows() const { return m_constants.preDeadRows; }
    Status setPreDeadRows(uint32_t rows) { return assign(m_constants.preDeadRows, rows); }
    uint32_t postDeadRows() const { return m_constants.postDeadRows; }
    Status setPostDeadRows(uint32_t rows) { return assign(m_constants.postDeadRows, rows); }
    uint8_t hasExtraLineSync() const { return m_constants.hasExtraLineSync ? 1 : 0; }
    /// Refuses a number above 1.
    Status setHasExtraLineSync(uint8_t value);

    uint32_t clockPhaseShift() const { return m_phaseShift; }
    Status setClockPhaseShift(uint32_t shift) { return assign(m_phaseShift, shift); }

    /// Only the values that differ from the profile, so that the others follow a changed profile.
    QJsonObject save() const override;

    void expose(int preset, image::Exposure &exposure) const override;

private:
    void addConstants();
    template <class T> void addConstant(const QString &key, T SensorReadout::Constants::*constant, const Rule<T> &rule);
    void useConstants();

    Sensor &m_sensor;
    const SensorReadout::Constants m_default;
    SensorReadout::Constants m_constants; ///< In force.
    SensorReadout::Constants m_set; ///< For the override.
    bool m_override = false;
    const uint32_t m_bestPhaseShift;
    uint32_t m_phaseShift;
    QJsonObject m_valuesOfProfile;
};

} // namespace emulator
