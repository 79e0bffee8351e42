#include "platform/emulator/devices/CorrectionFlag.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/Temperatures.h"

#include <cmath>

namespace emulator
{

namespace
{

constexpr int64_t lookInterval = 250;

} // namespace

Flag *CorrectionFlag::flag() const { return m_camera.device<Flag>(); }

bool CorrectionFlag::controlled() const { return exists() && flag()->temperatureControlled(); }

void CorrectionFlag::begin(const CorrectionSetup::Values &setup, bool second)
{
    m_setup = setup;
    const size_t index = second ? 1 : 0;
    if (!controlled())
        begin(std::nullopt);
    else if (setup.setpointType == CorrectionSetup::Temperatures)
        begin(setup.temperatures.at(index));
    else
        begin(static_cast<float>(Temperatures::frontPanelOf(m_camera) + setup.deltas.at(index)));
}

void CorrectionFlag::beginAsItIs(const CorrectionSetup::Values &setup)
{
    m_setup = setup;
    begin(std::nullopt);
}

void CorrectionFlag::begin(std::optional<float> target)
{
    m_target = target;
    m_start = Clock::now();
    m_nextLook = m_start + (m_inUse && m_target ? 0 : Flag::moveMilliseconds);
    m_stableLooks = 0;
    m_inUse = true;
    flag()->setState(Flag::InView);
    if (m_target)
        flag()->cooler()->holdAt(m_target);
}

CorrectionFlag::State CorrectionFlag::look(int64_t now, int64_t &end)
{
    if (now < m_start) // The computer's clock has been set back.
        m_start = m_nextLook = now;
    for (; m_nextLook <= now; m_nextLook += lookInterval) {
        end = m_nextLook;
        if (!m_target)
            return Settled;
        const float celsius = flag()->temperatureAt(m_nextLook);
        if (celsius > m_setup.flagMaximum)
            return TooHot;
        const bool stable = std::abs(celsius - *m_target) <= m_setup.stableDelta;
        m_stableLooks = stable ? m_stableLooks + 1 : 0;
        if (m_stableLooks >= m_setup.stableCount)
            return Settled;
        if (m_nextLook - m_start >= m_setup.timeout)
            return TimedOut;
    }
    return Settling;
}

bool CorrectionFlag::tooHot() const { return m_inUse && controlled() && flag()->temperature() > m_setup.flagMaximum; }

void CorrectionFlag::release()
{
    if (!m_inUse)
        return;
    m_inUse = false;
    flag()->setState(Flag::Stowed);
    if (controlled())
        flag()->cooler()->holdAt(std::nullopt);
}

void CorrectionFlag::switchPowerOff() { flag()->cooler()->setPower(false); }

std::string CorrectionFlag::text() const
{
    const auto celsius = [](double value) { return QString::number(value, 'f', 1) + QStringLiteral(" \u00b0C"); };
    QString text = QStringLiteral("Waiting for the flag: ") + celsius(flag()->temperature());
    if (m_target)
        text += QStringLiteral(" of ") + celsius(*m_target);
    return text.toStdString();
}

} // namespace emulator
