#pragma once

#include "platform/emulator/devices/CorrectionSetup.h"

#include <cstdint>
#include <optional>
#include <string>

namespace emulator
{

class Camera;
class Flag;

/// The flag as the source of a correction: it is in view, at a temperature that it has reached and keeps. The flag
/// keeps its setpoint, to which it returns afterwards.
class CorrectionFlag
{
public:
    enum State { Settling, Settled, TooHot, TimedOut };

    explicit CorrectionFlag(Camera &camera) : m_camera(camera) { }

    /// Whether a flag with a cooler, or any flag, can be used.
    bool controlled() const;
    bool exists() const { return flag() != nullptr; }

    /// Moves the flag in and waits for a temperature of the setup: the first or the second one.
    void begin(const CorrectionSetup::Values &setup, bool second);
    /// Moves the flag in, and takes it at the temperature that it has, up to the maximum of the setup.
    void beginAsItIs(const CorrectionSetup::Values &setup);
    /// Looks at the flag every 250 ms of Clock up to now. `end` is the time of the look that has settled it.
    State look(int64_t now, int64_t &end);
    /// Whether a flag with a cooler is in use and above the maximum of the setup.
    bool tooHot() const;
    /// Moves the flag out and leaves its temperature to its setpoint. Does nothing without begin().
    void release();
    void switchPowerOff();

    /// The text for the operator during the wait, in UTF-8.
    std::string text() const;

private:
    Flag *flag() const;
    void begin(std::optional<float> target);

    Camera &m_camera;
    bool m_inUse = false;
    CorrectionSetup::Values m_setup;
    std::optional<float> m_target; ///< Celsius; nothing if the temperature does not matter.
    int64_t m_start = 0; ///< Of the wait, a time of Clock.
    int64_t m_nextLook = 0;
    uint32_t m_stableLooks = 0; ///< After one another.
};

} // namespace emulator
