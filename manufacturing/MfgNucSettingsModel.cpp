#include "manufacturing/MfgNucSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

void MfgNucSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The read

void MfgNucSettingsModel::refresh() { m_refresh.start(&NucSettingsResult::read); }

MfgNucSettingsModel::NucSettingsResult MfgNucSettingsModel::NucSettingsResult::read(const CameraAccess &camera)
{
    NucSettingsResult result;
    fetch(result.type, zvtGetNUCType, camera.handle);
    fetch(result.source, zvtGetNUCSource, camera.handle);
    result.setup = NucSetup::read(camera.handle);
    fetch(result.numFrames, zvtGetNUCNumFrames, camera.handle);
    result.twinkler = TwinklerSetup::read(camera.handle);
    result.flag = FlagSetup::read(camera.handle);
    fetch(result.useFactoryBadPixels, zvtGetNUCUseFactoryBadPixels, camera.handle);
    fetch(result.showBadPixels, zvtGetShowBadPixels, camera.handle);
    fetch(result.digitalData, zvtGetDigitalOutputNUCEnabled, camera.handle);
    fetch(result.videoOutput, zvtGetVideoOutputNUCEnabled, camera.handle);
    return result;
}

Nullable<MfgNucSettingsModel::NucSetup> MfgNucSettingsModel::NucSetup::read(uint64_t handle)
{
    NucSetup setup;
    uint16_t adMin = 0;
    uint16_t adMax = 0;
    if (zvtGetNUCSetup(handle, &setup.gainMin, &setup.gainMax, &adMin, &adMax, &setup.detectBadPixels) != 0)
        return {};
    setup.adMin = adMin;
    setup.adMax = adMax;
    return setup;
}

Nullable<MfgNucSettingsModel::TwinklerSetup> MfgNucSettingsModel::TwinklerSetup::read(uint64_t handle)
{
    TwinklerSetup setup;
    uint32_t numFrames = 0;
    uint16_t delta = 0;
    if (zvtGetTwinklerSetup(handle, &setup.detect, &numFrames, &delta) != 0)
        return {};
    setup.numFrames = static_cast<int>(numFrames);
    setup.delta = delta;
    return setup;
}

Nullable<MfgNucSettingsModel::FlagSetup> MfgNucSettingsModel::FlagSetup::read(uint64_t handle)
{
    FlagSetup setup;
    if (zvtGetNUCFlagConfig(handle, &setup.maxTemp, &setup.stableDelta, &setup.stableCount, &setup.timeout) != 0)
        return {};
    return setup;
}

void MfgNucSettingsModel::finishedWatcher()
{
    const NucSettingsResult result = m_refresh.result();
    publish(this, result.type, m_type, &Self::selectedNucTypeIndexChanged);
    publish(this, result.source, m_source, &Self::selectedNucSourceIndexChanged);
    publish(this, result.setup, m_setup, &Self::nucSetupChanged);
    publish(this, result.numFrames, m_numFrames, &Self::nucNumFramesChanged);
    publish(this, result.twinkler, m_twinkler, &Self::twinklerSetupChanged);
    publish(this, result.flag, m_flag, &Self::flagSetupChanged);
    publish(this, result.useFactoryBadPixels, m_useFactoryBadPixels, &Self::useFactoryBadPixelsChanged);
    publish(this, result.showBadPixels, m_showBadPixels, &Self::showBadPixelsChanged);
    publish(this, result.digitalData, m_digitalData, &Self::nucDigitalDataChanged);
    publish(this, result.videoOutput, m_videoOutput, &Self::nucVideoOutputChanged);
    m_refresh.finish();
}

// The settings

void MfgNucSettingsModel::setSelectedNucTypeIndex(int type)
{
    storeOnly(this, type, m_type, &Self::selectedNucTypeIndexChanged);
}

void MfgNucSettingsModel::setSelectedNucSourceIndex(int source)
{
    storeOnly(this, source, m_source, &Self::selectedNucSourceIndexChanged);
}

void MfgNucSettingsModel::setDetectBadPixels(bool detect)
{
    storeOnly(this, detect, m_setup.detectBadPixels, &Self::nucSetupChanged);
}

void MfgNucSettingsModel::setAdMin(int counts) { storeOnly(this, counts, m_setup.adMin, &Self::nucSetupChanged); }

void MfgNucSettingsModel::setAdMax(int counts) { storeOnly(this, counts, m_setup.adMax, &Self::nucSetupChanged); }

void MfgNucSettingsModel::setGainMin(float limit) { storeOnly(this, limit, m_setup.gainMin, &Self::nucSetupChanged); }

void MfgNucSettingsModel::setGainMax(float limit) { storeOnly(this, limit, m_setup.gainMax, &Self::nucSetupChanged); }

void MfgNucSettingsModel::setNucNumFrames(int count)
{
    storeOnly(this, count, m_numFrames, &Self::nucNumFramesChanged);
}

void MfgNucSettingsModel::setUseTwinklerDetection(bool detect)
{
    storeOnly(this, detect, m_twinkler.detect, &Self::twinklerSetupChanged);
}

void MfgNucSettingsModel::setTwinklerNumFrames(int count)
{
    storeOnly(this, count, m_twinkler.numFrames, &Self::twinklerSetupChanged);
}

void MfgNucSettingsModel::setTwinklerDelta(int counts)
{
    storeOnly(this, counts, m_twinkler.delta, &Self::twinklerSetupChanged);
}

void MfgNucSettingsModel::setFlagMaxTemp(float celsius)
{
    storeOnly(this, celsius, m_flag.maxTemp, &Self::flagSetupChanged);
}

void MfgNucSettingsModel::setStableDelta(float celsius)
{
    storeOnly(this, celsius, m_flag.stableDelta, &Self::flagSetupChanged);
}

void MfgNucSettingsModel::setStableCount(uint count)
{
    storeOnly(this, count, m_flag.stableCount, &Self::flagSetupChanged);
}

void MfgNucSettingsModel::setTimeout(uint milliseconds)
{
    storeOnly(this, milliseconds, m_flag.timeout, &Self::flagSetupChanged);
}

void MfgNucSettingsModel::setUseFactoryBadPixels(bool use)
{
    storeOnly(this, use, m_useFactoryBadPixels, &Self::useFactoryBadPixelsChanged);
}

void MfgNucSettingsModel::setShowBadPixels(bool show)
{
    storeOnly(this, show, m_showBadPixels, &Self::showBadPixelsChanged);
}

void MfgNucSettingsModel::setNucVideoOutput(bool corrected)
{
    storeOnly(this, corrected, m_videoOutput, &Self::nucVideoOutputChanged);
}

void MfgNucSettingsModel::setNucDigitalData(bool corrected)
{
    storeOnly(this, corrected, m_digitalData, &Self::nucDigitalDataChanged);
}

// The numbers of the camera are narrower than int: it gets the low bits.
void MfgNucSettingsModel::applySettings()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    zvtSetNUCType(handle, static_cast<uint8_t>(m_type));
    zvtSetNUCSource(handle, static_cast<uint8_t>(m_source));
    zvtSetNUCSetup(handle, m_setup.gainMin, m_setup.gainMax, static_cast<uint16_t>(m_setup.adMin),
                   static_cast<uint16_t>(m_setup.adMax), m_setup.detectBadPixels);
    zvtSetNUCNumFrames(handle, static_cast<uint8_t>(m_numFrames));
    zvtSetTwinklerSetup(handle, m_twinkler.detect, static_cast<uint32_t>(m_twinkler.numFrames),
                        static_cast<uint16_t>(m_twinkler.delta));
    zvtSetNUCFlagConfig(handle, m_flag.maxTemp, m_flag.stableDelta, m_flag.stableCount, m_flag.timeout);
    zvtSetNUCUseFactoryBadPixels(handle, m_useFactoryBadPixels);
    zvtSetShowBadPixels(handle, m_showBadPixels);
    zvtSetDigitalOutputNUCEnabled(handle, m_digitalData);
    zvtSetVideoOutputNUCEnabled(handle, m_videoOutput);
}
