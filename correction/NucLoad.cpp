#include "correction/NucLoad.h"

#include "common/presets.h"
#include "common/reading.h"
#include "correction/biasKind.h"

#include <algorithm>
#include <utility>

#include "zvt/zvtsdk.h"

namespace
{

constexpr uint8_t secondBias = 1;

} // namespace

NucLoad::NucLoad(uint8_t preset, QByteArray name, const LoadNucOptions &options)
    : m_preset(preset), m_name(std::move(name)), m_options(options)
{
}

Nullable<QString> NucLoad::run(const CameraAccess &camera)
{
    const bool restores = m_options.loadSettings && zvtQueryNUCInfo(camera.handle, m_name.constData(), &m_record) == 0;
    // A correction can be loaded only into a window that it covers.
    if (restores)
        restoreWindow(camera);
    Nullable<QString> loaded;
    if (zvtLoadNUC(camera.handle, m_preset, m_name.constData()) == 0)
        readText<nucNameSize>(loaded, zvtGetNUCName, camera.handle, m_preset);
    if (restores)
        restoreSettings(camera.handle);
    return loaded;
}

void NucLoad::restoreWindow(const CameraAccess &camera)
{
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    zvtGetWindow(camera.handle, m_preset, &x, &y, &width, &height);
    const bool differs = x != m_record.x || y != m_record.y || width != m_record.width || height != m_record.height;
    const bool changes = m_options.useWindowSize && differs;
    if (!m_options.useWindowSize) {
        m_record.x = x;
        m_record.y = y;
        m_record.width = width;
        m_record.height = height;
    }
    if (changes)
        zvtUnloadNUC(camera.handle, m_preset);
    if (m_options.useInvertRevert) {
        zvtSetInvertEnabled(camera.handle, m_record.invert);
        zvtSetRevertEnabled(camera.handle, m_record.revert);
    }
    if (changes)
        reading::callController(camera.controller, &hlx::cam::IZVTController::SetWindow, m_record.x, m_record.y,
                                m_record.width, m_record.height);
}

void NucLoad::restoreSettings(uint64_t handle)
{
    uint8_t sequencingMode = 0;
    zvtGetPresetSequencingMode(handle, &sequencingMode);
    restoreAnalogSettings(handle);
    if (m_options.useDigitalGainOffset) {
        zvtSetDigitalGain(handle, m_preset, m_record.digitalGain);
        zvtSetDigitalOffset(handle, m_preset, m_record.digitalOffset);
    }
    if (m_options.useFilter) {
        uint8_t filter = 0;
        zvtGetCurrentFilterID(handle, &filter);
        if (filter != m_record.filterID)
            zvtSetCurrentFilterID(handle, m_record.filterID);
    }
    restoreTiming(handle, sequencingMode);
    restoreSkimmingAndColor(handle);
}

void NucLoad::restoreAnalogSettings(uint64_t handle) const
{
    if (m_options.useFPAGainLevel)
        zvtSetGainLevel(handle, m_record.gainLevel);
    if (m_options.useAnalogOffset)
        zvtSetGlobalOffsetVoltage(handle, m_record.analogOffset);
    if (m_options.useDetectorBias) {
        zvtSetFPABias(handle, m_record.detectorBias);
        if (m_record.biasKind == twoBiases)
            zvtSetFPABiasEx(handle, secondBias, m_record.secondDetectorBias);
    }
}

// The frame period must not be shorter than the integration time and the window in use allow, whether or not they come
// from the correction.
void NucLoad::restoreTiming(uint64_t handle, uint8_t sequencingMode)
{
    if (m_options.useIntTime)
        zvtSetIntegrationWidth(handle, m_preset, m_record.integrationWidth);
    else
        zvtGetIntegrationWidth(handle, m_preset, &m_record.integrationWidth);
    if (m_options.useFrameSyncMode)
        zvtSetFrameSyncMode(handle, m_record.frameSyncMode);
    else
        zvtGetFrameSyncMode(handle, &m_record.frameSyncMode);
    const bool sequencing = m_record.frameSyncMode == 0 && sequencingMode != 0;

    uint32_t frameWidth = 0;
    if (!m_options.useFrameRate)
        zvtGetFrameWidth(handle, m_preset, &frameWidth);
    uint32_t minimum = 0;
    zvtCalcMinFrameWidthEx(handle, &minimum, m_record.width, m_record.height, m_record.integrationWidth, sequencing);
    if (m_options.useFrameRate)
        zvtSetFrameWidth(handle, m_preset, std::max(m_record.frameWidth, minimum));
    else if (frameWidth < minimum)
        zvtSetFrameWidth(handle, m_preset, minimum);
}

void NucLoad::restoreSkimmingAndColor(uint64_t handle) const
{
    if (m_options.useSkimming && readOr(false, zvtGetSkimmingAvailable, handle)) {
        zvtSetSkimmingEnabled(handle, m_record.skimmingEnabled);
        zvtSetSkimmingVoltage(handle, m_record.skimmingVoltage);
    }
    constexpr int fewestToChoose = 2;
    if (m_options.useColor && readOr(0, zvtGetNumColors, handle) >= fewestToChoose)
        zvtSetColor(handle, m_preset, m_record.color);
}
