#include "platform/emulator/devices/AutomaticCorrection.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/devices/Temperatures.h"

#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr Between temperatures{0.1F, 2000};
constexpr Between minutes{1, 604'800};
constexpr int64_t millisecondsPerMinute = 60'000;

} // namespace

AutomaticCorrection::AutomaticCorrection(Camera &camera, Section &section)
    : Device(camera), m_corrections(*camera.device<Corrections>()), m_run(*camera.device<CorrectionRun>())
{
    const auto needsFlag = [this](bool enabled) { return enabled && !hasFlag() ? u"needs a flag"_s : Refusal(); };
    addSettings(section,
                {
                    Setting(u"enabled"_s, m_enabled, needsFlag, Everywhere).then([this] { startAgain(); }),
                    {u"useDeltaTemp"_s, m_useDeltaTemp, Everywhere},
                    {u"deltaTemp"_s, m_deltaTemp, Everywhere},
                    {u"useDeltaTime"_s, m_useDeltaTime, Everywhere},
                    {u"deltaTime"_s, m_deltaTime, Everywhere},
                });
    startAgain();
}

void AutomaticCorrection::setup(bool &enabled, bool &useDeltaTemp, float &deltaTemp, bool &useDeltaTime,
                                uint32_t &deltaTime) const
{
    enabled = m_enabled;
    useDeltaTemp = m_useDeltaTemp;
    deltaTemp = m_deltaTemp;
    useDeltaTime = m_useDeltaTime;
    deltaTime = m_deltaTime;
}

Status AutomaticCorrection::setSetup(bool enabled, bool useDeltaTemp, float deltaTemp, bool useDeltaTime,
                                     uint32_t deltaTime)
{
    if ((enabled && !hasFlag()) || !std::isfinite(deltaTemp))
        return Refused;
    if (enabled && !m_enabled)
        startAgain();
    m_enabled = enabled;
    m_useDeltaTemp = useDeltaTemp;
    m_deltaTemp = deltaTemp;
    m_useDeltaTime = useDeltaTime;
    m_deltaTime = deltaTime;
    return Ok;
}

Status AutomaticCorrection::start() { return m_run.startAutomatic(presets()); }

void AutomaticCorrection::runEnded()
{
    startAgain();
    camera().device<EventQueue>()->push(ZVT_EVENT_SETTINGS_CHANGED);
}

void AutomaticCorrection::catchUp()
{
    if (m_enabled && !m_run.running() && !m_corrections.hasPending() && due() && !recorderNeedsFrames())
        start();
}

bool AutomaticCorrection::hasFlag() const { return camera().device<Flag>() != nullptr; }

bool AutomaticCorrection::recorderNeedsFrames() const
{
    const auto *const recorder = camera().device<Recorder>();
    return recorder && recorder->watchesFrames();
}

bool AutomaticCorrection::due() const
{
    const double degrees = temperatures.holds(m_deltaTemp) ? m_deltaTemp : 1;
    if (m_useDeltaTemp && std::abs(Temperatures::frontPanelOf(camera()) - m_frontPanel) >= degrees)
        return true;
    const int64_t duration = (minutes.holds(m_deltaTime) ? m_deltaTime : 1) * millisecondsPerMinute;
    return m_useDeltaTime && Clock::remaining(m_time + duration, duration) == 0;
}

/// The presets in use that have a correction.
std::vector<int> AutomaticCorrection::presets() const
{
    const Sensor &sensor = *camera().device<Sensor>();
    std::vector<int> presets;
    for (int preset = 0; preset < sensor.numPresets(); ++preset)
        if (sensor.repeats(preset) > 0 && m_corrections.isLoaded(preset))
            presets.push_back(preset);
    return presets;
}

void AutomaticCorrection::startAgain()
{
    m_frontPanel = Temperatures::frontPanelOf(camera());
    m_time = Clock::now();
}

} // namespace emulator
