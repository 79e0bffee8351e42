#include "manufacturing/MfgMiscSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

void MfgMiscSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The read

void MfgMiscSettingsModel::refresh() { m_refresh.start(&MfgMiscSettingsResult::read); }

MfgMiscSettingsModel::MfgMiscSettingsResult
MfgMiscSettingsModel::MfgMiscSettingsResult::read(const CameraAccess &camera)
{
    MfgMiscSettingsResult result;
    fetch(result.ddeThreshold, zvtGetVideoAGCDDEThreshold, camera.handle);
    fetch(result.fpaClockPhaseShift, zvtMfgGetClockPhaseShift, camera.handle);
    return result;
}

void MfgMiscSettingsModel::finishedWatcher()
{
    const MfgMiscSettingsResult result = m_refresh.result();
    publish(this, result.ddeThreshold, m_ddeThreshold, &Self::ddeThresholdChanged);
    publish(this, result.fpaClockPhaseShift, m_fpaClockPhaseShift, &Self::fpaClockPhaseShiftChanged);
    m_refresh.finish();
}

// The settings

void MfgMiscSettingsModel::setDdeThreshold(int threshold)
{
    storeOnly(this, threshold, m_ddeThreshold, &Self::ddeThresholdChanged);
}

void MfgMiscSettingsModel::setFpaClockPhaseShift(int shift)
{
    storeOnly(this, shift, m_fpaClockPhaseShift, &Self::fpaClockPhaseShiftChanged);
}

void MfgMiscSettingsModel::applySettings()
{
    const uint64_t handle = CameraAccess::of(this).handle;
    zvtSetVideoAGCDDEThreshold(handle, static_cast<uint32_t>(m_ddeThreshold));
    zvtMfgSetClockPhaseShift(handle, static_cast<uint32_t>(m_fpaClockPhaseShift));
}
