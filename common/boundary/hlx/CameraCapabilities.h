#pragma once

#include <atomic>
#include <cstdint>

namespace hlx::cam
{

class IZVTController;

/// The capabilities of a controller's camera. The values change only in configure(). Any thread may call any operation,
/// also while configure() runs on another one.
class CameraCapabilities
{
public:
    /// Sets every value from the camera of `controller`. Does nothing if `controller` is null or its camera is not
    /// connected. A controller calls it when its camera is connected.
    void configure(IZVTController *controller);

    bool hasFrontPanelTemperature() const { return m_hasFrontPanelTemperature; }
    bool hasAirGapTemperature() const { return m_hasAirGapTemperature; }
    bool hasInternalTemperature() const { return m_hasInternalTemperature; }
    bool hasChassisTemperature() const { return m_hasChassisTemperature; }
    bool hasFPAGain() const { return m_hasFPAGain; }
    int numFPAGainLevels() const { return m_numFPAGainLevels; }
    bool hasReplaceableFilters() const { return m_hasReplaceableFilters; }
    bool hasGigEPreset() const { return m_hasGigEPreset; }
    bool hasVideoOutputSettings() const { return m_hasVideoOutputSettings; }
    bool hasLensStatesFunctionality() const { return m_hasLensStatesFunctionality; }
    bool hasContinuousOpticalZoom() const { return m_hasContinuousOpticalZoom; }
    bool hasDiscontinuousOpticalZoom() const { return m_hasDiscontinuousOpticalZoom; }
    bool hasFocus() const { return m_hasFocus; }
    bool hasFocusToDistance() const { return m_hasFocusToDistance; }
    bool hasFovMovePercent() const { return m_hasFovMovePercent; }
    bool hasFocusMovePercent() const { return m_hasFocusMovePercent; }
    bool hasWindowSettings() const { return m_hasWindowSettings; }
    bool hasWindowDimensionsThatCanBeArbitrary() const { return m_hasWindowDimensionsThatCanBeArbitrary; }
    bool hasBilinearZoom() const { return m_hasBilinearZoom; }
    bool hasFilterWheel() const { return m_hasFilterWheel; }
    bool hasFlag() const { return m_hasFlag; }
    bool hasFlagCooler() const { return m_hasFlagCooler; }
    bool hasLensCover() const { return m_hasLensCover; }
    bool hasBadPixelCorrection() const { return m_hasBadPixelCorrection; }
    bool hasUpdateRate() const { return m_hasUpdateRate; }
    bool hasTemporalFilter() const { return m_hasTemporalFilter; }
    bool hasOverlayCustomization() const { return m_hasOverlayCustomization; }
    bool hasVideoAgcRoi() const { return m_hasVideoAgcRoi; }
    bool hasCameraLinkMode() const { return m_hasCameraLinkMode; }
    bool hasCoaXPressLinksToUse() const { return m_hasCoaXPressLinksToUse; }
    bool hasSkimming() const { return m_hasSkimming; }
    bool hasLockin() const { return m_hasLockin; }
    bool hasAdvancedMiscSettings() const { return m_hasAdvancedMiscSettings; }
    bool hasSsd() const { return m_hasSsd; }
    bool hasTeCooler() const { return m_hasTeCooler; }

private:
    std::atomic<bool> m_hasFrontPanelTemperature{false};
    std::atomic<bool> m_hasAirGapTemperature{false};
    std::atomic<bool> m_hasInternalTemperature{false};
    std::atomic<bool> m_hasChassisTemperature{false};
    std::atomic<bool> m_hasFPAGain{false};
    std::atomic<int> m_numFPAGainLevels{0};
    std::atomic<bool> m_hasReplaceableFilters{false};
    std::atomic<bool> m_hasGigEPreset{false};
    std::atomic<bool> m_hasVideoOutputSettings{false};
    std::atomic<bool> m_hasLensStatesFunctionality{false};
    std::atomic<bool> m_hasContinuousOpticalZoom{false};
    std::atomic<bool> m_hasDiscontinuousOpticalZoom{false};
    std::atomic<bool> m_hasFocus{false};
    std::atomic<bool> m_hasFocusToDistance{false};
    std::atomic<bool> m_hasFovMovePercent{false};
    std::atomic<bool> m_hasFocusMovePercent{false};
    std::atomic<bool> m_hasWindowSettings{false};
    std::atomic<bool> m_hasWindowDimensionsThatCanBeArbitrary{false};
    std::atomic<bool> m_hasBilinearZoom{false};
    std::atomic<bool> m_hasFilterWheel{false};
    std::atomic<bool> m_hasFlag{false};
    std::atomic<bool> m_hasFlagCooler{false};
    std::atomic<bool> m_hasLensCover{false};
    std::atomic<bool> m_hasBadPixelCorrection{false};
    std::atomic<bool> m_hasUpdateRate{false};
    std::atomic<bool> m_hasTemporalFilter{false};
    std::atomic<bool> m_hasOverlayCustomization{false};
    std::atomic<bool> m_hasVideoAgcRoi{false};
    std::atomic<bool> m_hasCameraLinkMode{false};
    std::atomic<bool> m_hasCoaXPressLinksToUse{false};
    std::atomic<bool> m_hasSkimming{false};
    std::atomic<bool> m_hasLockin{false};
    std::atomic<bool> m_hasAdvancedMiscSettings{false};
    std::atomic<bool> m_hasSsd{false};
    std::atomic<bool> m_hasTeCooler{false};
};

} // namespace hlx::cam
