#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <vector>

namespace emulator
{

class CorrectionRun;
class Corrections;

/// The automatic correction: it updates the offsets of the corrections in use by the flag, after a time and when the
/// temperature of the front panel has changed since the last accepted correction. It raises ZVT_EVENT_SETTINGS_CHANGED
/// at its end. It waits while a run is on, a correction is pending or frames are recorded, and starts with a call to
/// the camera.
class AutomaticCorrection : public Device
{
public:
    /// Profile keys and settings: "enabled", "useDeltaTemp", "deltaTemp" (degrees), "useDeltaTime", "deltaTime"
    /// (minutes). The devices Corrections and CorrectionRun must exist before.
    AutomaticCorrection(Camera &camera, Section &section);

    void setup(bool &enabled, bool &useDeltaTemp, float &deltaTemp, bool &useDeltaTime, uint32_t &deltaTime) const;
    /// Refuses `enabled` in a camera without a flag, and a temperature that is not finite. A temperature outside 0.1 to
    /// 2000 counts as 1 degree, a time outside 1 to 604800 as 1 minute.
    Status setSetup(bool enabled, bool useDeltaTemp, float deltaTemp, bool useDeltaTime, uint32_t deltaTime);

    /// Starts a correction now. Refused as CorrectionRun::startAutomatic(), and without a correction in a preset in
    /// use.
    Status start();

    /// A correction has been accepted: the temperature and the time count from now.
    void corrected() { startAgain(); }
    /// An automatic run has ended, with any result. They count from now, too, and an event is raised.
    void runEnded();

    void catchUp() override;

private:
    bool hasFlag() const;
    bool recorderNeedsFrames() const;
    bool due() const;
    std::vector<int> presets() const;
    /// The temperature and the time of now are those of the last correction.
    void startAgain();

    const Corrections &m_corrections;
    CorrectionRun &m_run;
    bool m_enabled = false;
    bool m_useDeltaTemp = false;
    float m_deltaTemp = 1;
    bool m_useDeltaTime = false;
    uint32_t m_deltaTime = 1;
    double m_frontPanel = 0; ///< Celsius, at the last correction.
    int64_t m_time = 0; ///< The same, a time of Clock.
};

} // namespace emulator
