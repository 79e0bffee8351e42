#include "advanced/AdvancedAnalogSettingsModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

void AdvancedAnalogSettingsModel::setVisible(bool visible)
{
    storeOnly(this, visible, m_visible, &Self::visibleChanged);
}

// The read

void AdvancedAnalogSettingsModel::refresh() { m_refresh.start(&Settings::read); }

AdvancedAnalogSettingsModel::Settings AdvancedAnalogSettingsModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    fetch(settings.globalOffset, zvtGetGlobalOffsetVoltage, camera.handle);
    readPair(settings.globalOffsetMin, settings.globalOffsetMax, zvtGetGlobalOffsetVoltageLimits, camera.handle);
    fetch(settings.detectorBias, zvtGetFPABias, camera.handle);
    readPair(settings.detectorBiasMin, settings.detectorBiasMax, zvtGetFPABiasLimits, camera.handle);
    if (camera.capabilities->hasSkimming()) {
        fetch(settings.skimming, zvtGetSkimmingVoltage, camera.handle);
        readPair(settings.skimmingMin, settings.skimmingMax, zvtGetSkimmingVoltageLimits, camera.handle);
        fetch(settings.skimmingEnabled, zvtGetSkimmingEnabled, camera.handle);
    }
    return settings;
}

void AdvancedAnalogSettingsModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publish(this, settings.globalOffset, m_globalOffset, &Self::globalOffsetValueChanged);
    publishPair(this, settings.globalOffsetMin, m_globalOffsetMin, settings.globalOffsetMax, m_globalOffsetMax,
                &Self::globalOffsetLimitsChanged);
    publish(this, settings.detectorBias, m_detectorBias, &Self::detectorBiasValueChanged);
    publishPair(this, settings.detectorBiasMin, m_detectorBiasMin, settings.detectorBiasMax, m_detectorBiasMax,
                &Self::detectorBiasLimitsChanged);
    publish(this, settings.skimming, m_skimming, &Self::skimmingValueChanged);
    publishPair(this, settings.skimmingMin, m_skimmingMin, settings.skimmingMax, m_skimmingMax,
                &Self::skimmingLimitsChanged);
    publish(this, settings.skimmingEnabled, m_skimmingEnabled, &Self::skimmingEnabledChanged);
    m_refresh.finish();
}

// Writes

void AdvancedAnalogSettingsModel::setGlobalOffsetValue(float volts)
{
    writeStandard(this, volts, m_globalOffset, &Self::globalOffsetValueChanged, zvtSetGlobalOffsetVoltage);
}

void AdvancedAnalogSettingsModel::setDetectorBiasValue(float millivolts)
{
    writeStandard(this, millivolts, m_detectorBias, &Self::detectorBiasValueChanged, zvtSetFPABias);
}

void AdvancedAnalogSettingsModel::setSkimmingValue(float volts)
{
    writeStandard(this, volts, m_skimming, &Self::skimmingValueChanged, zvtSetSkimmingVoltage);
}

void AdvancedAnalogSettingsModel::setSkimmingEnabled(bool enabled)
{
    writeStandard(this, enabled, m_skimmingEnabled, &Self::skimmingEnabledChanged, zvtSetSkimmingEnabled);
}
