#include "manufacturing/MfgCoolerSettingsModel.h"

#include "common/coolers.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

void MfgCoolerSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The read

void MfgCoolerSettingsModel::refresh() { m_refresh.start(&CoolerSettingsResult::read); }

MfgCoolerSettingsModel::CoolerSettingsResult
MfgCoolerSettingsModel::CoolerSettingsResult::read(const CameraAccess &camera)
{
    CoolerSettingsResult result;
    Nullable<uint8_t> type;
    if (fetch(type, zvtMfgGetCoolerType, camera.handle))
        result.coolerType = coolerTypeText(type.get());
    fetch(result.coolerEnabled, zvtMfgGetCoolerPowerEnabled, camera.handle);
    const bool ofDetector = type.set() && type.get() == thermoelectricCooler;
    fetchCoolerTemperatures(result.actualTemp, result.internalTemp, ofDetector, camera.handle);
    result.readTerms(camera.handle);
    fetch(result.setpoint, zvtMfgGetCoolerSetpoint, camera.handle);
    return result;
}

void MfgCoolerSettingsModel::CoolerSettingsResult::readTerms(uint64_t handle)
{
    float p = 0;
    float i = 0;
    float d = 0;
    float off = 0;
    if (zvtMfgGetCoolerSetup(handle, &p, &i, &d, &off) != 0)
        return;
    kP = p;
    kI = i;
    kD = d;
    kOff = off;
}

void MfgCoolerSettingsModel::finishedWatcher()
{
    const CoolerSettingsResult result = m_refresh.result();
    publish(this, result.coolerType, m_coolerType, &Self::coolerTypeChanged);
    publish(this, result.coolerEnabled, m_coolerEnabled, &Self::coolerEnabledChanged);
    publish(this, result.actualTemp, m_actualTemp, &Self::actualTempChanged);
    publish(this, result.internalTemp, m_internalTemp, &Self::internalTempChanged);
    publish(this, result.kP, m_kP, &Self::kPChanged);
    publish(this, result.kI, m_kI, &Self::kIChanged);
    publish(this, result.kD, m_kD, &Self::kDChanged);
    publish(this, result.kOff, m_kOff, &Self::kOffChanged);
    publish(this, result.setpoint, m_setpoint, &Self::setpointChanged);
    m_refresh.finish();
}

// The settings

void MfgCoolerSettingsModel::setCoolerEnabled(bool enabled)
{
    storeOnly(this, enabled, m_coolerEnabled, &Self::coolerEnabledChanged);
}

void MfgCoolerSettingsModel::setKP(float term) { storeOnly(this, term, m_kP, &Self::kPChanged); }

void MfgCoolerSettingsModel::setKOff(float term) { storeOnly(this, term, m_kOff, &Self::kOffChanged); }

void MfgCoolerSettingsModel::setKI(float term) { storeOnly(this, term, m_kI, &Self::kIChanged); }

void MfgCoolerSettingsModel::setKD(float term) { storeOnly(this, term, m_kD, &Self::kDChanged); }

void MfgCoolerSettingsModel::setSetpoint(float temperature)
{
    storeOnly(this, temperature, m_setpoint, &Self::setpointChanged);
}

void MfgCoolerSettingsModel::applySettings()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    zvtMfgSetCoolerPowerEnabled(handle, m_coolerEnabled);
    zvtMfgSetCoolerSetup(handle, m_kP, m_kI, m_kD, m_kOff);
    zvtMfgSetCoolerSetpoint(handle, m_setpoint);
}
