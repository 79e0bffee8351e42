#include "setup/SetupCoolerSettingsModel.h"

#include "common/coolers.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

SetupCoolerSettingsModel::SetupCoolerSettingsModel(QObject *parent) : QObject(parent)
{
    m_temperatureTimer.setObjectName(QStringLiteral("temperatureTimer"));
    QObject::connect(&m_temperatureTimer, &QTimer::timeout, this, &Self::timeoutTemperaturesUpdateTimer);
}

// Reading

void SetupCoolerSettingsModel::refresh() { m_refresh.start(&Settings::read); }

SetupCoolerSettingsModel::Temperatures SetupCoolerSettingsModel::Temperatures::read(uint64_t handle, bool ofDetector)
{
    Temperatures temperatures;
    fetchCoolerTemperatures(temperatures.actual, temperatures.internal, ofDetector, handle);
    return temperatures;
}

SetupCoolerSettingsModel::Settings SetupCoolerSettingsModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    settings.coolerType = QStringLiteral("N/A");
    Nullable<uint8_t> type;
    if (fetch(type, zvtMfgGetCoolerType, camera.handle))
        settings.coolerType = coolerTypeText(type.get());
    fetch(settings.coolerEnabled, zvtMfgGetCoolerPowerEnabled, camera.handle);
    settings.temperatures = Temperatures::read(camera.handle, type.set() && type.get() == thermoelectricCooler);
    fetch(settings.setpoint, zvtMfgGetCoolerSetpoint, camera.handle);
    return settings;
}

void SetupCoolerSettingsModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    announce(this, settings.coolerType, m_coolerType, &Self::coolerTypeChanged);
    publish(this, settings.coolerEnabled, m_coolerEnabled, &Self::coolerEnabledChanged);
    publishTemperatures(settings.temperatures);
    publish(this, settings.setpoint, m_setpoint, &Self::setpointChanged);
    m_refresh.finish();
}

void SetupCoolerSettingsModel::publishTemperatures(const Temperatures &temperatures)
{
    publish(this, temperatures.actual, m_actualTemp, &Self::actualTempChanged);
    publish(this, temperatures.internal, m_internalTemp, &Self::internalTempChanged);
}

// The poll

// Starts a read also while an older one runs. Unlike a refresh, it has only the text of the type.
void SetupCoolerSettingsModel::timeoutTemperaturesUpdateTimer()
{
    m_temperatures.start([type = m_coolerType](const CameraAccess &camera) {
        const bool ofDetector = !type.isNull() && type == coolerTypeText(thermoelectricCooler);
        return Temperatures::read(camera.handle, ofDetector);
    });
}

void SetupCoolerSettingsModel::finishedTemperatureUpdate() { publishTemperatures(m_temperatures.result()); }

void SetupCoolerSettingsModel::setVisible(bool visible)
{
    if (storeOnly(this, visible, m_visible, &Self::visibleChanged))
        m_temperatureTimer.setExpanded(m_visible);
}

// The settings

void SetupCoolerSettingsModel::setCoolerEnabled(bool enabled)
{
    storeOnly(this, enabled, m_coolerEnabled, &Self::coolerEnabledChanged);
}

void SetupCoolerSettingsModel::setSetpoint(float celsius)
{
    storeOnly(this, celsius, m_setpoint, &Self::setpointChanged);
}

void SetupCoolerSettingsModel::applySettings()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    zvtMfgSetCoolerPowerEnabled(handle, m_coolerEnabled);
    zvtMfgSetCoolerSetpoint(handle, m_setpoint);
}
