#include "common/CameraCapabilitiesModel.h"

#include "common/CameraRoot.h"
#include "hlx/path.h"

#include <QString>

#include <tuple>

namespace
{

using Block = CapabilityBlock;
using Source = hlx::cam::CameraCapabilities;

// One capability: its field in the block and the framework's getter.
template <class T> struct CapabilityRow {
    Capability<T> Block::*field;
    T (Source::*getter)() const;

    void update(Block &block, const Source &source) const { (block.*field).set((source.*getter)()); }
};

template <class T> CapabilityRow(Capability<T> Block::*, T (Source::*)() const) -> CapabilityRow<T>;

// All but the internal temperature, which is read only from cameras without a chassis sensor.
constexpr std::tuple rows{
    CapabilityRow{&Block::hasFrontPanelTemperature, &Source::hasFrontPanelTemperature},
    CapabilityRow{&Block::hasAirGapTemperature, &Source::hasAirGapTemperature},
    CapabilityRow{&Block::hasChassisTemperature, &Source::hasChassisTemperature},
    CapabilityRow{&Block::hasFPAGain, &Source::hasFPAGain},
    CapabilityRow{&Block::numFPAGainLevels, &Source::numFPAGainLevels},
    CapabilityRow{&Block::hasReplaceableFilters, &Source::hasReplaceableFilters},
    CapabilityRow{&Block::hasGigEPreset, &Source::hasGigEPreset},
    CapabilityRow{&Block::hasVideoOutputSettings, &Source::hasVideoOutputSettings},
    CapabilityRow{&Block::hasLensStatesFunctionality, &Source::hasLensStatesFunctionality},
    CapabilityRow{&Block::hasContinuousOpticalZoom, &Source::hasContinuousOpticalZoom},
    CapabilityRow{&Block::hasDiscontinuousOpticalZoom, &Source::hasDiscontinuousOpticalZoom},
    CapabilityRow{&Block::hasFocus, &Source::hasFocus},
    CapabilityRow{&Block::hasFocusToDistance, &Source::hasFocusToDistance},
    CapabilityRow{&Block::hasFovMovePercent, &Source::hasFovMovePercent},
    CapabilityRow{&Block::hasFocusMovePercent, &Source::hasFocusMovePercent},
    CapabilityRow{&Block::hasWindowSettings, &Source::hasWindowSettings},
    CapabilityRow{&Block::hasWindowDimensionsThatCanBeArbitrary, &Source::hasWindowDimensionsThatCanBeArbitrary},
    CapabilityRow{&Block::hasBilinearZoom, &Source::hasBilinearZoom},
    CapabilityRow{&Block::hasFilterWheel, &Source::hasFilterWheel},
    CapabilityRow{&Block::hasFlag, &Source::hasFlag},
    CapabilityRow{&Block::hasFlagCooler, &Source::hasFlagCooler},
    CapabilityRow{&Block::hasLensCover, &Source::hasLensCover},
    CapabilityRow{&Block::hasBadPixelCorrection, &Source::hasBadPixelCorrection},
    CapabilityRow{&Block::hasUpdateRate, &Source::hasUpdateRate},
    CapabilityRow{&Block::hasTemporalFilter, &Source::hasTemporalFilter},
    CapabilityRow{&Block::hasOverlayCustomization, &Source::hasOverlayCustomization},
    CapabilityRow{&Block::hasVideoAgcRoi, &Source::hasVideoAgcRoi},
    CapabilityRow{&Block::hasCameraLinkMode, &Source::hasCameraLinkMode},
    CapabilityRow{&Block::hasCoaXPressLinksToUse, &Source::hasCoaXPressLinksToUse},
    CapabilityRow{&Block::hasSkimming, &Source::hasSkimming},
    CapabilityRow{&Block::hasLockin, &Source::hasLockin},
    CapabilityRow{&Block::hasAdvancedMiscSettings, &Source::hasAdvancedMiscSettings},
    CapabilityRow{&Block::hasSsd, &Source::hasSsd},
    CapabilityRow{&Block::hasTeCooler, &Source::hasTeCooler},
};

constexpr CapabilityRow internalTemperature{&Block::hasInternalTemperature, &Source::hasInternalTemperature};

} // namespace

CameraCapabilitiesModel::CameraCapabilitiesModel(QObject *parent) : QObject(parent)
{
    const CameraRoot *const root = CameraRoot::of(this);
    m_block = root ? root->capabilities() : std::make_shared<CapabilityBlock>();
}

void CameraCapabilitiesModel::configure()
{
    const CameraRoot *const root = CameraRoot::of(this);
    if (const auto controller = root ? root->controller() : hlx::TSharedPtr<hlx::cam::IZVTController>()) {
        const Source &source = controller->capabilities;
        std::apply([&](const auto &...row) { (row.update(*m_block, source), ...); }, rows);
        // Not read from a camera with a chassis sensor: the last value stays.
        if (!m_block->hasChassisTemperature())
            internalTemperature.update(*m_block, source);
    }
    emit cameraCapabilitiesChanged();
}

bool CameraCapabilitiesModel::wildcardMatch(const hlx::CString &pattern, const QString &text)
{
    return hlx::path::WildcardMatch(pattern, hlx::CString::FromFormat("%s", text.toUtf8().constData()));
}
