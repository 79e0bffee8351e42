#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/image/makeCorrection.h"

#include <array>
#include <cstdint>

namespace emulator
{

/// The settings of the next run that makes a correction, see CorrectionRun. Temperatures are Celsius. A run judges the
/// limits of counts, the numbers of frames and the delta of twinkling pixels; they are stored as they come.
class CorrectionSetup : public Device
{
public:
    enum Type : uint8_t { OnePoint = 0, TwoPoint = 1, OffsetUpdate = 2 };
    enum Source : uint8_t { External = 0, Internal = 1 };
    enum SetpointType : uint8_t { Deltas = 0, Temperatures = 1 };

    struct Values {
        uint8_t preset = 0; ///< That gets the correction.
        uint8_t type = TwoPoint;
        uint8_t source = External;
        uint8_t frames = 16; ///< Of each source.
        image::BadPixelLimits limits;
        uint32_t twinklerFrames = 32;
        bool useFactoryBadPixels = true;
        uint8_t setpointType = Deltas;
        std::array<float, 2> deltas{0, 15}; ///< Low and high, above the front panel.
        std::array<float, 2> temperatures{20, 35}; ///< Low and high.
        float flagMaximum = 70; ///< A run ends above this temperature of the flag.
        float stableDelta = 0.5F; ///< The flag is stable within this distance of its target.
        uint32_t stableCount = 8; ///< In so many looks after one another.
        uint32_t timeout = 60'000; ///< Milliseconds in which the flag must become stable.
    };

    /// No profile keys. Settings: "preset", "type", "source", "frames", "gainMin", "gainMax", "adMin", "adMax",
    /// "detectBadPixels", "detectTwinklers", "twinklerFrames", "twinklerDelta", "useFactoryBadPixels",
    /// "flagSetpointType", "flagDeltas" and "flagTemperatures" (lists of low and high), "flagMaximum", "stableDelta",
    /// "stableCount", "timeout" (ms).
    CorrectionSetup(Camera &camera, Section &section);

    const Values &values() const { return m_values; }

    /// Refuses a preset that the camera lacks.
    Status setPreset(uint8_t preset) { return assign(m_values.preset, preset); }
    uint8_t type() const { return m_values.type; }
    /// Refuses other numbers than those of a Type; the same for source and setpoint type.
    Status setType(uint8_t type) { return assign(m_values.type, type); }
    uint8_t source() const { return m_values.source; }
    Status setSource(uint8_t source) { return assign(m_values.source, source); }
    uint8_t frames() const { return m_values.frames; }
    Status setFrames(uint8_t frames) { return assign(m_values.frames, frames); }
    bool useFactoryBadPixels() const { return m_values.useFactoryBadPixels; }
    Status setUseFactoryBadPixels(bool use) { return assign(m_values.useFactoryBadPixels, use); }
    uint8_t flagSetpointType() const { return m_values.setpointType; }
    Status setFlagSetpointType(uint8_t type) { return assign(m_values.setpointType, type); }

    void limits(float &gainMin, float &gainMax, uint16_t &adMin, uint16_t &adMax, bool &detect) const;
    /// Refuses gains outside 0 to 10.
    Status setLimits(float gainMin, float gainMax, uint16_t adMin, uint16_t adMax, bool detect);
    void twinklers(bool &detect, uint32_t &frames, uint16_t &delta) const;
    void setTwinklers(bool detect, uint32_t frames, uint16_t delta);
    void flagDeltas(float &low, float &high) const;
    /// Refuses deltas and temperatures outside -40 to 100.
    Status setFlagDeltas(float low, float high) { return assign(m_values.deltas, {low, high}); }
    void flagTemperatures(float &low, float &high) const;
    Status setFlagTemperatures(float low, float high) { return assign(m_values.temperatures, {low, high}); }
    void flagConfig(float &maximum, float &stableDelta, uint32_t &stableCount, uint32_t &timeout) const;
    /// Refuses a maximum outside 40 to 100, a delta outside 0.01 to 10, a count outside 1 to 255, and a timeout outside
    /// 1000 to 600 000 ms.
    Status setFlagConfig(float maximum, float stableDelta, uint32_t stableCount, uint32_t timeout);

private:
    Values m_values;
};

} // namespace emulator
