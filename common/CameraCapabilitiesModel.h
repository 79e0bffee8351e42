#pragma once

#include <QObject>

#include <memory>

#include "common/CapabilityBlock.h"
#include "hlx/CString.h"

/// The capabilities of this camera, copied from the framework for pages and models. Field comments in CapabilityBlock
/// describe each one. The values change in configure() only and stay after a disconnect. GUI thread only; pool tasks
/// read block().
class CameraCapabilitiesModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool hasFrontPanelTemperature READ hasFrontPanelTemperature NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasAirGapTemperature READ hasAirGapTemperature NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasInternalTemperature READ hasInternalTemperature NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasChassisTemperature READ hasChassisTemperature NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFPAGain READ hasFPAGain NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(int numFPAGainLevels READ numFPAGainLevels NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasReplaceableFilters READ hasReplaceableFilters NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasGigEPreset READ hasGigEPreset NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasVideoOutputSettings READ hasVideoOutputSettings NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasLensStatesFunctionality READ hasLensStatesFunctionality NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasContinuousOpticalZoom READ hasContinuousOpticalZoom NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasDiscontinuousOpticalZoom READ hasDiscontinuousOpticalZoom NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFocus READ hasFocus NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFocusToDistance READ hasFocusToDistance NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFovMovePercent READ hasFovMovePercent NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFocusMovePercent READ hasFocusMovePercent NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasWindowSettings READ hasWindowSettings NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasWindowDimensionsThatCanBeArbitrary READ hasWindowDimensionsThatCanBeArbitrary NOTIFY
                   cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasBilinearZoom READ hasBilinearZoom NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFilterWheel READ hasFilterWheel NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFlag READ hasFlag NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasFlagCooler READ hasFlagCooler NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasLensCover READ hasLensCover NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasBadPixelCorrection READ hasBadPixelCorrection NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasUpdateRate READ hasUpdateRate NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasTemporalFilter READ hasTemporalFilter NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasOverlayCustomization READ hasOverlayCustomization NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasVideoAgcRoi READ hasVideoAgcRoi NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasCameraLinkMode READ hasCameraLinkMode NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasCoaXPressLinksToUse READ hasCoaXPressLinksToUse NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasSkimming READ hasSkimming NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasLockin READ hasLockin NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasAdvancedMiscSettings READ hasAdvancedMiscSettings NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasSsd READ hasSsd NOTIFY cameraCapabilitiesChanged FINAL)
    Q_PROPERTY(bool hasTeCooler READ hasTeCooler NOTIFY cameraCapabilitiesChanged FINAL)

public:
    explicit CameraCapabilitiesModel(QObject *parent = nullptr);

    /// Copies the present values of the framework if the root has a controller. Emits the signal in any case.
    void configure();

    /// The live values, which pool tasks share. Never null.
    std::shared_ptr<const CapabilityBlock> block() const { return m_block; }

    bool hasFrontPanelTemperature() const { return m_block->hasFrontPanelTemperature(); }
    bool hasAirGapTemperature() const { return m_block->hasAirGapTemperature(); }
    bool hasInternalTemperature() const { return m_block->hasInternalTemperature(); }
    bool hasChassisTemperature() const { return m_block->hasChassisTemperature(); }
    bool hasFPAGain() const { return m_block->hasFPAGain(); }
    int numFPAGainLevels() const { return m_block->numFPAGainLevels(); }
    bool hasReplaceableFilters() const { return m_block->hasReplaceableFilters(); }
    bool hasGigEPreset() const { return m_block->hasGigEPreset(); }
    bool hasVideoOutputSettings() const { return m_block->hasVideoOutputSettings(); }
    bool hasLensStatesFunctionality() const { return m_block->hasLensStatesFunctionality(); }
    bool hasContinuousOpticalZoom() const { return m_block->hasContinuousOpticalZoom(); }
    bool hasDiscontinuousOpticalZoom() const { return m_block->hasDiscontinuousOpticalZoom(); }
    bool hasFocus() const { return m_block->hasFocus(); }
    bool hasFocusToDistance() const { return m_block->hasFocusToDistance(); }
    bool hasFovMovePercent() const { return m_block->hasFovMovePercent(); }
    bool hasFocusMovePercent() const { return m_block->hasFocusMovePercent(); }
    bool hasWindowSettings() const { return m_block->hasWindowSettings(); }
    bool hasWindowDimensionsThatCanBeArbitrary() const { return m_block->hasWindowDimensionsThatCanBeArbitrary(); }
    bool hasBilinearZoom() const { return m_block->hasBilinearZoom(); }
    bool hasFilterWheel() const { return m_block->hasFilterWheel(); }
    bool hasFlag() const { return m_block->hasFlag(); }
    bool hasFlagCooler() const { return m_block->hasFlagCooler(); }
    bool hasLensCover() const { return m_block->hasLensCover(); }
    bool hasBadPixelCorrection() const { return m_block->hasBadPixelCorrection(); }
    bool hasUpdateRate() const { return m_block->hasUpdateRate(); }
    bool hasTemporalFilter() const { return m_block->hasTemporalFilter(); }
    bool hasOverlayCustomization() const { return m_block->hasOverlayCustomization(); }
    bool hasVideoAgcRoi() const { return m_block->hasVideoAgcRoi(); }
    bool hasCameraLinkMode() const { return m_block->hasCameraLinkMode(); }
    bool hasCoaXPressLinksToUse() const { return m_block->hasCoaXPressLinksToUse(); }
    bool hasSkimming() const { return m_block->hasSkimming(); }
    bool hasLockin() const { return m_block->hasLockin(); }
    bool hasAdvancedMiscSettings() const { return m_block->hasAdvancedMiscSettings(); }
    bool hasSsd() const { return m_block->hasSsd(); }
    bool hasTeCooler() const { return m_block->hasTeCooler(); }

signals:
    void cameraCapabilitiesChanged();

private:
    static bool wildcardMatch(const hlx::CString &pattern, const QString &text);

    std::shared_ptr<CapabilityBlock> m_block; ///< The root's block; the model's own block if it has no root.
};
