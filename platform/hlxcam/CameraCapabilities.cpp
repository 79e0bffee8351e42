#include "hlx/CameraCapabilities.h"

#include "hlx/CZVTController.h"
#include "platform/emulator/Camera.h"
#include "platform/hlxcam/EmulatedDevice.h"

#include <QJsonObject>

namespace hlx::cam
{

void CameraCapabilities::configure(IZVTController *controller)
{
    // The table makes this function long. It is inside the function because the fields are private.
    struct Flag {
        const char *name;
        std::atomic<bool> CameraCapabilities::*value;
    };
    static constexpr Flag flags[] = {
        {"hasFrontPanelTemperature", &CameraCapabilities::m_hasFrontPanelTemperature},
        {"hasAirGapTemperature", &CameraCapabilities::m_hasAirGapTemperature},
        {"hasInternalTemperature", &CameraCapabilities::m_hasInternalTemperature},
        {"hasChassisTemperature", &CameraCapabilities::m_hasChassisTemperature},
        {"hasFPAGain", &CameraCapabilities::m_hasFPAGain},
        {"hasReplaceableFilters", &CameraCapabilities::m_hasReplaceableFilters},
        {"hasGigEPreset", &CameraCapabilities::m_hasGigEPreset},
        {"hasVideoOutputSettings", &CameraCapabilities::m_hasVideoOutputSettings},
        {"hasLensStatesFunctionality", &CameraCapabilities::m_hasLensStatesFunctionality},
        {"hasContinuousOpticalZoom", &CameraCapabilities::m_hasContinuousOpticalZoom},
        {"hasDiscontinuousOpticalZoom", &CameraCapabilities::m_hasDiscontinuousOpticalZoom},
        {"hasFocus", &CameraCapabilities::m_hasFocus},
        {"hasFocusToDistance", &CameraCapabilities::m_hasFocusToDistance},
        {"hasFovMovePercent", &CameraCapabilities::m_hasFovMovePercent},
        {"hasFocusMovePercent", &CameraCapabilities::m_hasFocusMovePercent},
        {"hasWindowSettings", &CameraCapabilities::m_hasWindowSettings},
        {"hasWindowDimensionsThatCanBeArbitrary", &CameraCapabilities::m_hasWindowDimensionsThatCanBeArbitrary},
        {"hasBilinearZoom", &CameraCapabilities::m_hasBilinearZoom},
        {"hasFilterWheel", &CameraCapabilities::m_hasFilterWheel},
        {"hasFlag", &CameraCapabilities::m_hasFlag},
        {"hasFlagCooler", &CameraCapabilities::m_hasFlagCooler},
        {"hasLensCover", &CameraCapabilities::m_hasLensCover},
        {"hasBadPixelCorrection", &CameraCapabilities::m_hasBadPixelCorrection},
        {"hasUpdateRate", &CameraCapabilities::m_hasUpdateRate},
        {"hasTemporalFilter", &CameraCapabilities::m_hasTemporalFilter},
        {"hasOverlayCustomization", &CameraCapabilities::m_hasOverlayCustomization},
        {"hasVideoAgcRoi", &CameraCapabilities::m_hasVideoAgcRoi},
        {"hasCameraLinkMode", &CameraCapabilities::m_hasCameraLinkMode},
        {"hasCoaXPressLinksToUse", &CameraCapabilities::m_hasCoaXPressLinksToUse},
        {"hasSkimming", &CameraCapabilities::m_hasSkimming},
        {"hasLockin", &CameraCapabilities::m_hasLockin},
        {"hasAdvancedMiscSettings", &CameraCapabilities::m_hasAdvancedMiscSettings},
        {"hasSsd", &CameraCapabilities::m_hasSsd},
        {"hasTeCooler", &CameraCapabilities::m_hasTeCooler},
    };

    auto *const known = dynamic_cast<CZVTController *>(controller);
    const auto device = known ? known->device().dynamicCast<EmulatedDevice>() : TSharedPtr<EmulatedDevice>();
    const auto camera = device ? device->camera() : nullptr;
    if (!camera || !camera->connected())
        return;
    const QJsonObject capabilities = camera->capabilities();
    for (const Flag &flag : flags)
        this->*flag.value = capabilities.value(QLatin1String(flag.name)).toBool();
    m_numFPAGainLevels = capabilities.value(QLatin1String("numFPAGainLevels")).toInt();
}

} // namespace hlx::cam
