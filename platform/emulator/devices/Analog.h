#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/image/Voltages.h"

#include <cstdint>

namespace emulator
{

/// The adjustable voltages of the detector, which change every count: see image::Voltages. Values outside the limits
/// and values that are not finite are refused.
class Analog : public Device
{
public:
    /// Profile keys and settings: "globalOffset" (volts), "bias" (millivolts), "skimmingAvailable", "skimmingEnabled"
    /// and "skimmingVoltage" (volts), and "secondBias" (millivolts) if the detector has two colours. The device Color
    /// must exist before.
    Analog(Camera &camera, Section &section);

    float globalOffset() const { return m_globalOffset; }
    Status setGlobalOffset(float volts) { return assign(m_globalOffset, volts); }
    float minimumGlobalOffset() const { return -maximumGlobalOffset(); }
    float maximumGlobalOffset() const { return static_cast<float>(image::Voltages::maximumOffset); }

    /// The number of biases: 2 for a detector with two colours, which has one for each of them.
    uint8_t biases() const { return m_biases; }
    /// The bias of the first colour, in millivolts.
    float bias() const { return m_bias; }
    Status setBias(float millivolts) { return assign(m_bias, millivolts); }
    /// The bias of the second colour; the start value if the detector has one bias.
    float secondBias() const { return m_secondBias; }
    /// Sets the bias with this index. Refuses an index that the detector lacks.
    Status setBiasOf(uint8_t index, float millivolts);
    float minimumBias() const { return 0; }
    float maximumBias() const { return static_cast<float>(image::Voltages::maximumBias); }

    bool skimmingAvailable() const { return m_skimmingAvailable; }
    // All of the following are refused while skimming is not available.

    Status skimmingEnabled(bool &enabled) const { return fetch(m_skimmingEnabled, enabled); }
    Status setSkimmingEnabled(bool enabled) { return assign(m_skimmingEnabled, enabled); }
    Status skimmingVoltage(float &volts) const { return fetch(m_skimmingVoltage, volts); }
    Status setSkimmingVoltage(float volts) { return assign(m_skimmingVoltage, volts); }
    Status skimmingLimits(float &minimum, float &maximum) const;

    void expose(int preset, image::Exposure &exposure) const override;

private:
    const uint8_t m_biases;
    float m_globalOffset = 0;
    float m_bias = static_cast<float>(image::Voltages::startBias);
    float m_secondBias = static_cast<float>(image::Voltages::startBias);
    bool m_skimmingAvailable = false;
    bool m_skimmingEnabled = false;
    float m_skimmingVoltage = 1.2f;
};

} // namespace emulator
