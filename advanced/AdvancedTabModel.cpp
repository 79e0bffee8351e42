#include "advanced/AdvancedTabModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

namespace
{

using Signals = PerPreset<void (AdvancedTabModel::*)()>;

constexpr Signals gainChanged{&AdvancedTabModel::presetZeroGainChanged, &AdvancedTabModel::presetOneGainChanged,
                              &AdvancedTabModel::presetTwoGainChanged, &AdvancedTabModel::presetThreeGainChanged};
constexpr Signals offsetChanged{&AdvancedTabModel::presetZeroOffsetChanged, &AdvancedTabModel::presetOneOffsetChanged,
                                &AdvancedTabModel::presetTwoOffsetChanged, &AdvancedTabModel::presetThreeOffsetChanged};

} // namespace

// The read

void AdvancedTabModel::refresh() { m_refresh.start(&Settings::read); }

AdvancedTabModel::Settings AdvancedTabModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    fetchPresets(settings.gains, zvtGetDigitalGain, camera.handle);
    fetchPresets(settings.offsets, zvtGetDigitalOffset, camera.handle);
    if (camera.capabilities->hasCameraLinkMode()) {
        fetch(settings.cameraLinkType, zvtGetCameraLinkType, camera.handle);
        fetch(settings.cameraLinkTypeWritable, zvtGetCameraLinkTypeWritable, camera.handle);
    }
    if (camera.capabilities->hasCoaXPressLinksToUse()) {
        fetch(settings.coaXPressLinkCount, zvtGetCoaXPressLinkCount, camera.handle);
        fetch(settings.coaXPressLinkCountWritable, zvtGetCoaXPressLinkCountWritable, camera.handle);
    }
    if (fetch(settings.blackHotAvailable, zvtGetBlackHotAvailable, camera.handle) && settings.blackHotAvailable.get())
        fetch(settings.blackHotEnabled, zvtGetBlackHotEnabled, camera.handle);
    return settings;
}

void AdvancedTabModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publishPresets(this, settings.gains, m_gains, gainChanged);
    publishPresets(this, settings.offsets, m_offsets, offsetChanged);
    publish(this, settings.cameraLinkType, m_cameraLinkModeIndex, &Self::selectedCameraLinkModeIndexChanged);
    publish(this, settings.cameraLinkTypeWritable, m_cameraLinkModeCanBeModified,
            &Self::cameraLinkModeCanBeModifiedChanged);
    if (settings.coaXPressLinkCount.set())
        publishCoaXPressLinks(settings.coaXPressLinkCount.get());
    publish(this, settings.coaXPressLinkCountWritable, m_coaXPressLinksCanBeModified,
            &Self::coaXPressLinksCanBeModifiedChanged);
    publishIfChanged(this, settings.blackHotAvailable, m_blackHotAvailable, &Self::blackHotAvailableChanged);
    publishIfChanged(this, settings.blackHotEnabled, m_blackHotEnabled, &Self::blackHotEnabledChanged);
    m_refresh.finish();
}

void AdvancedTabModel::publishCoaXPressLinks(uint8_t count)
{
    m_coaXPressLinksList.removeAll();
    //: The number of links of a digital output
    m_coaXPressLinksList.append(tr("Single"), 1);
    //: The number of links of a digital output
    m_coaXPressLinksList.append(tr("Dual"), 2);
    emit coaXPressLinksListChanged();
    // Required: the number of links is the row, although the first row is one link.
    announce(this, count, m_coaXPressLinksIndex, &Self::selectedCoaXPressLinksIndexChanged);
}

// Writes

void AdvancedTabModel::setGain(uint8_t preset, float gain)
{
    writeStandard(this, gain, m_gains[preset], gainChanged[preset], zvtSetDigitalGain, preset);
}

void AdvancedTabModel::setOffset(uint8_t preset, float counts)
{
    writeStandard(this, counts, m_offsets[preset], offsetChanged[preset], zvtSetDigitalOffset, preset);
}

void AdvancedTabModel::setSelectedCameraLinkModeIndex(int index)
{
    storeOnly(this, index, m_cameraLinkModeIndex, &Self::selectedCameraLinkModeIndexChanged);
}

void AdvancedTabModel::setSelectedCoaXPressLinksIndex(int index)
{
    storeOnly(this, index, m_coaXPressLinksIndex, &Self::selectedCoaXPressLinksIndexChanged);
}

void AdvancedTabModel::setBlackHotEnabled(bool enabled)
{
    writeAccepted(this, enabled, m_blackHotEnabled, &Self::blackHotEnabledChanged, zvtSetBlackHotEnabled);
}
