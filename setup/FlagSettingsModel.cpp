#include "setup/FlagSettingsModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

FlagSettingsModel::FlagSettingsModel(QObject *parent) : QObject(parent)
{
    m_temperatureTimer.setObjectName(QStringLiteral("temperatureTimer"));
    QObject::connect(&m_temperatureTimer, &QTimer::timeout, this, &Self::timeoutTemperatureUpdateTimer);
}

// Reading

void FlagSettingsModel::refresh() { m_refresh.start(&Settings::read); }

FlagSettingsModel::Settings FlagSettingsModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    if (!camera.capabilities->hasFlag())
        return settings;
    settings.state = readOr(0, zvtGetFlagState, camera.handle);
    if (camera.capabilities->hasFlagCooler()) {
        settings.coolerEnabled = readOr(false, zvtGetFlagCoolerEnabled, camera.handle);
        settings.currentTemperature = readOr(0.0F, zvtGetFlagTemperature, camera.handle);
        settings.desiredTemperature = readOr(0.0F, zvtGetFlagDesiredTemperature, camera.handle);
    }
    return settings;
}

void FlagSettingsModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    announce(this, settings.state, m_selectedFlagStateIndex, &Self::selectedFlagStateIndexChanged);
    announce(this, settings.coolerEnabled, m_coolerEnabled, &Self::coolerEnabledChanged);
    announce(this, settings.currentTemperature, m_currentFlagTemperature, &Self::currentFlagTemperatureChanged);
    announce(this, settings.desiredTemperature, m_desiredFlagTemperature, &Self::desiredFlagTemperatureChanged);
    m_refresh.finish();
}

// The poll

// Starts a read also while an older one runs, and also for a flag without a cooler.
void FlagSettingsModel::timeoutTemperatureUpdateTimer()
{
    m_temperature.start([](const CameraAccess &camera) {
        Nullable<float> temperature;
        fetch(temperature, zvtGetFlagTemperature, camera.handle);
        return temperature;
    });
}

void FlagSettingsModel::finishedTemperatureUpdate()
{
    publish(this, m_temperature.result(), m_currentFlagTemperature, &Self::currentFlagTemperatureChanged);
}

void FlagSettingsModel::setVisible(bool visible)
{
    if (storeOnly(this, visible, m_visible, &Self::visibleChanged))
        m_temperatureTimer.setExpanded(m_visible);
}

// The settings

void FlagSettingsModel::setSelectedFlagStateIndex(int index)
{
    writeStandard(this, index, m_selectedFlagStateIndex, &Self::selectedFlagStateIndexChanged, zvtSetFlagState);
}

void FlagSettingsModel::setCoolerEnabled(bool enabled)
{
    storeOnly(this, enabled, m_coolerEnabled, &Self::coolerEnabledChanged);
}

void FlagSettingsModel::setCurrentFlagTemperature(float celsius)
{
    storeOnly(this, celsius, m_currentFlagTemperature, &Self::currentFlagTemperatureChanged);
}

void FlagSettingsModel::setDesiredFlagTemperature(float celsius)
{
    storeOnly(this, celsius, m_desiredFlagTemperature, &Self::desiredFlagTemperatureChanged);
}

void FlagSettingsModel::setDesiredSetWasValid(bool valid)
{
    storeOnly(this, valid, m_desiredSetWasValid, &Self::desiredSetWasValidChanged);
}

void FlagSettingsModel::applyDesiredFlagTemperature()
{
    const int status = zvtSetFlagDesiredTemperature(CameraAccess::of(this).handle, m_desiredFlagTemperature);
    announce(this, status == 0, m_desiredSetWasValid, &Self::desiredSetWasValidChanged);
}
