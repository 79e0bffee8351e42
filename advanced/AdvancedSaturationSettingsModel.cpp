#include "advanced/AdvancedSaturationSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <chrono>

#include "zvt/zvtsdk.h"

namespace
{

using Signals = PerPreset<void (AdvancedSaturationSettingsModel::*)()>;

constexpr Signals countThresholdChanged{&AdvancedSaturationSettingsModel::presetZeroCountThresholdChanged,
                                        &AdvancedSaturationSettingsModel::presetOneCountThresholdChanged,
                                        &AdvancedSaturationSettingsModel::presetTwoCountThresholdChanged,
                                        &AdvancedSaturationSettingsModel::presetThreeCountThresholdChanged};
constexpr Signals pixelThresholdChanged{&AdvancedSaturationSettingsModel::presetZeroPixelThresholdChanged,
                                        &AdvancedSaturationSettingsModel::presetOnePixelThresholdChanged,
                                        &AdvancedSaturationSettingsModel::presetTwoPixelThresholdChanged,
                                        &AdvancedSaturationSettingsModel::presetThreePixelThresholdChanged};
constexpr Signals saturatedPixelsChanged{&AdvancedSaturationSettingsModel::presetZeroSaturatedPixelsChanged,
                                         &AdvancedSaturationSettingsModel::presetOneSaturatedPixelsChanged,
                                         &AdvancedSaturationSettingsModel::presetTwoSaturatedPixelsChanged,
                                         &AdvancedSaturationSettingsModel::presetThreeSaturatedPixelsChanged};

} // namespace

AdvancedSaturationSettingsModel::AdvancedSaturationSettingsModel(QObject *parent) : QObject(parent)
{
    m_saturatedPixelsUpdateTimer.setObjectName(QStringLiteral("saturatedPixelsUpdateTimer"));
    m_saturatedPixelsUpdateTimer.setInterval(std::chrono::seconds(1));
    QObject::connect(&m_saturatedPixelsUpdateTimer, &QTimer::timeout, this, &Self::startSaturatedPixelUpdate);
}

// The read

void AdvancedSaturationSettingsModel::refresh() { m_refresh.start(&Settings::read); }

AdvancedSaturationSettingsModel::Settings AdvancedSaturationSettingsModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    fetchPresets(settings.countThresholds, zvtGetSaturationCountThreshold, camera.handle);
    fetchPresets(settings.pixelThresholds, zvtGetSaturationPixelThreshold, camera.handle);
    settings.saturatedPixels = readSaturatedPixels(camera);
    return settings;
}

void AdvancedSaturationSettingsModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publishPresets(this, settings.countThresholds, m_countThresholds, countThresholdChanged);
    publishPresets(this, settings.pixelThresholds, m_pixelThresholds, pixelThresholdChanged);
    publishPresets(this, settings.saturatedPixels, m_saturatedPixels, saturatedPixelsChanged);
    m_refresh.finish();
}

// The live count

void AdvancedSaturationSettingsModel::setVisible(bool visible)
{
    if (storeOnly(this, visible, m_visible, &Self::visibleChanged))
        saturatedPixelsUpdateActiveIfVisible(true);
}

void AdvancedSaturationSettingsModel::saturatedPixelsUpdateActiveIfVisible(bool updatePixelValues)
{
    if (updatePixelValues && m_visible)
        m_saturatedPixelsUpdateTimer.start();
    else
        m_saturatedPixelsUpdateTimer.stop();
}

// Starts a read also while an older one runs.
void AdvancedSaturationSettingsModel::startSaturatedPixelUpdate()
{
    m_saturatedPixelsUpdate.start(&Self::readSaturatedPixels);
}

PerPreset<Nullable<int>> AdvancedSaturationSettingsModel::readSaturatedPixels(const CameraAccess &camera)
{
    PerPreset<Nullable<int>> pixels;
    fetchPresets(pixels, zvtGetSaturatedPixels, camera.handle);
    return pixels;
}

void AdvancedSaturationSettingsModel::finishedSaturatedPixelsUpdateWatcher()
{
    publishPresets(this, m_saturatedPixelsUpdate.result(), m_saturatedPixels, saturatedPixelsChanged);
}

void AdvancedSaturationSettingsModel::updateAllSaturatedPixels()
{
    for (int preset = 0; preset < presetCount; ++preset)
        updateSaturationPixels(preset);
}

void AdvancedSaturationSettingsModel::updateSaturationPixels(int preset)
{
    const auto index = static_cast<uint32_t>(preset); // A negative number is too large.
    if (index >= presetCount)
        return;
    Nullable<int> pixels;
    fetch(pixels, zvtGetSaturatedPixels, CameraAccess::of(this).handle, static_cast<uint8_t>(index));
    publish(this, pixels, m_saturatedPixels[index], saturatedPixelsChanged[index]);
}

// The thresholds

void AdvancedSaturationSettingsModel::setCountThreshold(uint8_t preset, int counts)
{
    if (writeStandard(this, counts, m_countThresholds[preset], countThresholdChanged[preset],
                      zvtSetSaturationCountThreshold, preset))
        updateSaturationPixels(preset);
}

void AdvancedSaturationSettingsModel::setPixelThreshold(uint8_t preset, int pixels)
{
    if (writeStandard(this, pixels, m_pixelThresholds[preset], pixelThresholdChanged[preset],
                      zvtSetSaturationPixelThreshold, preset))
        updateSaturationPixels(preset);
}
