#include "setup/SetupTabModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/setters.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "zvt/zvtsdk.h"

// Part of SetupTabModel: focus, zoom, field of view and lens cover. One-shot moves are in SetupTabModelMoves.cpp.

namespace
{

constexpr int positionMilliseconds = 300; // Between two reads of the position of a moving lens.

constexpr std::array<uint16_t, 6> afRoiPixelSizes{16, 32, 64, 128, 256, 512};
constexpr int defaultAFRoiSizeIndex = 3;

int afRoiSizeIndex(uint16_t pixels)
{
    const auto found = std::ranges::find(afRoiPixelSizes, pixels);
    return found == afRoiPixelSizes.end() ? defaultAFRoiSizeIndex : static_cast<int>(found - afRoiPixelSizes.begin());
}

uint16_t afRoiPixels(int index)
{
    const bool known = index >= 0 && index < static_cast<int>(afRoiPixelSizes.size());
    return afRoiPixelSizes.at(static_cast<size_t>(known ? index : defaultAFRoiSizeIndex));
}

/// When the region is shown: 0 always, 1 only while focusing, 2 never.
int afRoiShowWhenIndex(bool overlay, bool whenFocusing)
{
    if (overlay)
        return 0;
    return whenFocusing ? 1 : 2;
}

/// The nearest distance in metres, rounded down to whole millimetres.
float startingDistance(float minimum)
{
    constexpr float millimetres = 1000.0F;
    return std::floor(minimum * millimetres) / millimetres;
}

} // namespace

void SetupTabModel::connectLensTimers()
{
    m_focusPositionTimer.setObjectName(QStringLiteral("focusPositionTimer"));
    m_slowFocusTimer.setObjectName(QStringLiteral("slowFocusTimer"));
    m_zoomPositionTimer.setObjectName(QStringLiteral("zoomPositionTimer"));
    m_zoomSettleTimer.setObjectName(QStringLiteral("zoomSettleTimer"));
    QObject::connect(&m_focusPositionTimer, SIGNAL(timeout()), this, SLOT(updateFocusPosition()));
    QObject::connect(&m_slowFocusTimer, SIGNAL(timeout()), this, SLOT(slowPositionalIncrementer()));
    QObject::connect(&m_zoomPositionTimer, SIGNAL(timeout()), this, SLOT(updateZoomPosition()));
    QObject::connect(&m_zoomSettleTimer, SIGNAL(timeout()), this, SLOT(checkZooming()));
}

void SetupTabModel::publishLens(const SetupSettingsResult &result)
{
    publishPair(this, result.zoomMinimum, m_fullRangeZoomMinimum, result.zoomMaximum, m_fullRangeZoomMaximum,
                &Self::fullRangeZoomValuesChanged);
    publish(this, result.zoomPosition, m_selectedZoomPosition, &Self::selectedZoomPositionChanged);
    publish(this, result.lensCover, m_selectedLensCoverStateIndex, &Self::selectedLensCoverStateIndexChanged);
    if (result.regionSize.set())
        announce(this, afRoiSizeIndex(result.regionSize.get()), m_selectedAFRoiSizeIndex,
                 &Self::selectedAFRoiSizeIndexChanged);
    publish(this, result.regionPosition, m_selectedAFRoiPositionIndex, &Self::selectedAFRoiPositionIndexChanged);
    if (result.overlayShowsFocusRegion.set() && result.regionShownWhenFocusing.set())
        announce(this, afRoiShowWhenIndex(result.overlayShowsFocusRegion.get(), result.regionShownWhenFocusing.get()),
                 m_selectedAFRoiShowWhenIndex, &Self::selectedAFRoiShowWhenIndexChanged);
    publish(this, result.distanceMinimum, m_distanceMinimum, &Self::distanceRangeValuesChanged);
    if (result.distanceMinimum.set())
        announce(this, startingDistance(result.distanceMinimum.get()), *m_distanceToFocus,
                 &Self::distanceToFocusChanged);
    publish(this, result.distanceMaximum, m_distanceMaximum, &Self::distanceRangeValuesChanged);
}

// The lock of the lens controls. Two conditions lock them: one-shot moves or the page's editors, and manual focus.

void SetupTabModel::setLensBasedControlsEnabled(bool unlocked) { changeLock(m_lensControlsUnlocked, unlocked); }

void SetupTabModel::setFocusManualMode(bool manual) { changeLock(m_focusManualMode, manual); }

void SetupTabModel::changeLock(bool &flag, bool value)
{
    const bool enabled = lensBasedControlsEnabled();
    flag = value;
    if (lensBasedControlsEnabled() != enabled)
        emit lensBasedControlsEnabledChanged();
}

// Continuous moves

/// Reads the position repeatedly while the lens moves, else once. Returns whether the camera accepted the move
/// (`status` is 0).
bool SetupTabModel::followMove(bool moves, int status, QTimer &timer, void (Self::*update)())
{
    if (moves && status == 0) {
        timer.start(positionMilliseconds);
    } else {
        timer.stop();
        (this->*update)();
    }
    return status == 0;
}

bool SetupTabModel::attemptMoveFocus(int speed)
{
    const bool slowOrStop = speed == m_slowSpeedStep || speed == -m_slowSpeedStep || speed == 0;
    if (!m_slowPositionalFocus || !slowOrStop)
        return followMove(speed != 0, zvtFocusMove(handle(), speed), m_focusPositionTimer, &Self::updateFocusPosition);

    // A stop only ends the steps: this kind of lens gets no zero speed, not even after a faster move.
    constexpr int stepMilliseconds = 90;
    m_focusMoveDirection = speed;
    if (speed != 0) {
        slowPositionalIncrementer();
        m_slowFocusTimer.start(stepMilliseconds);
    } else {
        m_slowFocusTimer.stop();
    }
    return followMove(speed != 0, 0, m_focusPositionTimer, &Self::updateFocusPosition);
}

// Steps from the position that was read last, which is read less often: several steps may have the same target.
void SetupTabModel::slowPositionalIncrementer()
{
    if (m_focusMoveDirection != 1 && m_focusMoveDirection != -1)
        return;
    const bool towardsFar = m_focusMoveDirection == 1;
    const uint limit = towardsFar ? m_farFocusPosition : m_nearFocusPosition;
    uint position = m_selectedFocusPosition;
    if (m_nearFocusPosition != m_farFocusPosition) {
        const bool ascends = (m_nearFocusPosition < m_farFocusPosition) == towardsFar;
        position = ascends ? std::min(position + m_focusPositionIncrement, limit)
                           : std::max(position - m_focusPositionIncrement, limit);
    }
    zvtSetFocusPos(handle(), position);
}

bool SetupTabModel::attemptMoveFocusPercent(float speed)
{
    const float percent = std::abs(speed) < 1.0F ? 0.0F : speed;
    return followMove(percent != 0.0F, zvtFocusMovePercent(handle(), percent), m_focusPositionTimer,
                      &Self::updateFocusPosition);
}

bool SetupTabModel::attemptMoveZoom(int speed)
{
    const uint position = m_selectedZoomPosition;
    if ((position == m_fullRangeZoomMinimum && speed < 0) || (position == m_fullRangeZoomMaximum && speed > 0))
        return false;
    const bool below = position < m_fullRangeZoomMinimum && speed < 0;
    const bool above = position > m_fullRangeZoomMaximum && speed > 0;
    if (below || above) {
        // The lens has coasted past its limit: move it back to the limit.
        setSelectedZoomPosition(below ? m_fullRangeZoomMinimum : m_fullRangeZoomMaximum);
        m_zoomPositionTimer.start(positionMilliseconds);
        return true;
    }
    return followMove(speed != 0, zvtFOVMove(handle(), speed), m_zoomPositionTimer, &Self::updateZoomPosition);
}

// Unlike the focus, the zoom has no smallest percentage.
bool SetupTabModel::attemptMoveZoomPercent(float speed)
{
    return followMove(speed != 0.0F, zvtFOVMovePercent(handle(), speed), m_zoomPositionTimer,
                      &Self::updateZoomPosition);
}

// The position of the lens

void SetupTabModel::updateFocusPosition()
{
    Nullable<uint> position;
    fetch(position, zvtGetFocusCurrentPos, handle());
    publish(this, position, m_selectedFocusPosition, &Self::selectedFocusPositionChanged);
}

void SetupTabModel::updateZoomPosition()
{
    Nullable<uint> position;
    fetch(position, zvtGetFOVCurrentPos, handle());
    publish(this, position, m_selectedZoomPosition, &Self::selectedZoomPositionChanged);
    // A zoom also changes the focus position and the range of distances.
    updateFocusPosition();
    updateFocusToDistanceRange();
}

void SetupTabModel::updateFocusToDistanceRange()
{
    if (!readOr(false, zvtGetFocusToDistanceAvailable, handle()))
        return;
    m_distanceMinimum = readOr(m_distanceMinimum, zvtGetFocusToDistanceMin, handle());
    m_distanceMaximum = readOr(m_distanceMaximum, zvtGetFocusToDistanceMax, handle());
    emit distanceRangeValuesChanged();
}

// Sliders

void SetupTabModel::focusMoveTo(uint value)
{
    writeAccepted(this, value, m_selectedFocusPosition, &Self::selectedFocusPositionChanged, zvtFocusMoveTo);
}

void SetupTabModel::zoomMoveTo(uint value)
{
    constexpr int settleMilliseconds = 250;
    if (!writeAccepted(this, value, m_selectedZoomPosition, &Self::selectedZoomPositionChanged, zvtFOVMoveTo))
        return;
    m_lastZoomPosition = 0;
    m_zoomSettleTimer.start(settleMilliseconds);
}

// Reads the range of distances once, after the zoom has stopped.
void SetupTabModel::checkZooming()
{
    Nullable<uint> position;
    if (!fetch(position, zvtGetFOVCurrentPos, handle())) {
        m_zoomSettleTimer.stop();
        return;
    }
    if (position.get() == m_lastZoomPosition) {
        m_zoomSettleTimer.stop();
        updateFocusToDistanceRange();
    }
    m_lastZoomPosition = position.get();
}

// The field of view and the focus limits

int SetupTabModel::selectedDiscontinuousFieldOfViewIndex()
{
    Nullable<uint8_t> fov;
    if (fetch(fov, zvtGetFOV, handle())) {
        m_selectedDiscontinuousFieldOfViewIndex = fov.get();
        loadPositionMetaForDiscontinuousFov(fov.get(), false);
    }
    return m_selectedDiscontinuousFieldOfViewIndex;
}

void SetupTabModel::setSelectedDiscontinuousFieldOfViewIndex(int index)
{
    if (writeStandard(this, index, m_selectedDiscontinuousFieldOfViewIndex,
                      &Self::selectedDiscontinuousFieldOfViewIndexChanged, zvtSetFOV))
        setComponentsModified(true);
}

void SetupTabModel::loadPositionMetaForDiscontinuousFov(unsigned char fov, bool loadLensStates)
{
    watchIfNewest(DiscontinuousFovPositionMetaRead::start(CameraAccess::of(this), fov, loadLensStates));
}

// Publishes `read` when it ends, unless a newer one has been started: while a refresh ran, the operator may have
// switched the field of view. Returns false if it was dropped.
bool SetupTabModel::watchIfNewest(const DiscontinuousFovPositionMetaRead &read)
{
    if (read.startTime < m_metaReadStart)
        return false;
    m_metaReadStart = read.startTime;
    m_discontinuousMeta.watch(read.result);
    return true;
}

void SetupTabModel::finishedDiscontinuousFovPositionMetaWatcher()
{
    const DiscontinuousFovPositionMetaResult result = m_discontinuousMeta.result();
    publish(this, result.nearPosition, m_nearFocusPosition, &Self::nearFocusPositionChanged);
    publish(this, result.farPosition, m_farFocusPosition, &Self::farFocusPositionChanged);
    publish(this, result.currentPosition, m_selectedFocusPosition, &Self::selectedFocusPositionChanged);
    publishSpeedSteps();
    if (result.focusSlowControl.set() && result.focusSlowControl.get() == 0) {
        m_slowPositionalFocus = true;
        if (result.positionIncrement.set())
            m_focusPositionIncrement = result.positionIncrement.get();
    }
    publishPair(this, result.fullRangeMinimum, m_fullRangeFocusMinimum, result.fullRangeMaximum,
                m_fullRangeFocusMaximum, &Self::fullRangeFocusValuesChanged);
    publish(this, result.narrowNear, m_narrowNearFocusPosition, &Self::narrowNearFocusPositionChanged);
    publish(this, result.narrowFar, m_narrowFarFocusPosition, &Self::narrowFarFocusPositionChanged);
    publish(this, result.wideNear, m_wideNearFocusPosition, &Self::wideNearFocusPositionChanged);
    publish(this, result.wideFar, m_wideFarFocusPosition, &Self::wideFarFocusPositionChanged);
    finishPositionMeta(result.loadLensStates);
    m_discontinuousMeta.finish();
}

void SetupTabModel::finishedContinuousFovPositionMetaWatcher()
{
    const ContinuousFovPositionMetaResult result = m_continuousMeta.result();
    publishPair(this, result.fullRangeMinimum, m_fullRangeFocusMinimum, result.fullRangeMaximum,
                m_fullRangeFocusMaximum, &Self::fullRangeFocusValuesChanged);
    publish(this, result.nearPosition, m_nearFocusPosition, &Self::nearFocusPositionChanged);
    publish(this, result.farPosition, m_farFocusPosition, &Self::farFocusPositionChanged);
    publish(this, result.currentPosition, m_selectedFocusPosition, &Self::selectedFocusPositionChanged);
    publishSpeedSteps();
    finishPositionMeta(true);
    m_continuousMeta.finish();
}

void SetupTabModel::publishSpeedSteps()
{
    m_slowSpeedStep = 1;
    m_mediumSpeedStep = 2;
    m_fastSpeedStep = 3;
    emit speedStepValuesChanged();
}

void SetupTabModel::finishPositionMeta(bool loadLensStates)
{
    emit minimumFocusPositionChanged();
    emit maximumFocusPositionChanged();
    if (loadLensStates)
        loadLensStateNamesAsync();
    // Without a signal: the page updates its mark with the next change of the list.
    m_selectedLensStateComponentsModifiedNotSaved = false;
    announce(this, m_nearFocusPosition < m_farFocusPosition, m_focusEncoderHasAscendingValuesNearToFar,
             &Self::focusEncoderHasAscendingValuesNearToFarChanged);
}

uint SetupTabModel::minimumFocusPosition() const
{
    return capabilities()->hasDiscontinuousOpticalZoom() ? std::min(m_nearFocusPosition, m_farFocusPosition)
                                                         : m_fullRangeFocusMinimum;
}

uint SetupTabModel::maximumFocusPosition() const
{
    return capabilities()->hasDiscontinuousOpticalZoom() ? std::max(m_nearFocusPosition, m_farFocusPosition)
                                                         : m_fullRangeFocusMaximum;
}

void SetupTabModel::setNearFocusPosition(uint position)
{
    if (!storeOnly(this, position, m_nearFocusPosition, &Self::nearFocusPositionChanged))
        return;
    emit minimumFocusPositionChanged();
    emit maximumFocusPositionChanged();
}

void SetupTabModel::setFarFocusPosition(uint position)
{
    if (!storeOnly(this, position, m_farFocusPosition, &Self::farFocusPositionChanged))
        return;
    emit minimumFocusPositionChanged();
    emit maximumFocusPositionChanged();
}

// Values that the camera refuses are replaced by the next read.
void SetupTabModel::setNarrowWideNearFarPositions(uint narrowNear, uint narrowFar, uint wideNear, uint wideFar)
{
    const uint64_t camera = handle();
    announce(this, narrowNear, m_narrowNearFocusPosition, &Self::narrowNearFocusPositionChanged);
    zvtSetFocusNearPos(camera, NarrowFieldOfView, narrowNear);
    announce(this, narrowFar, m_narrowFarFocusPosition, &Self::narrowFarFocusPositionChanged);
    zvtSetFocusFarPos(camera, NarrowFieldOfView, narrowFar);
    announce(this, wideNear, m_wideNearFocusPosition, &Self::wideNearFocusPositionChanged);
    zvtSetFocusNearPos(camera, WideFieldOfView, wideNear);
    announce(this, wideFar, m_wideFarFocusPosition, &Self::wideFarFocusPositionChanged);
    zvtSetFocusFarPos(camera, WideFieldOfView, wideFar);
    // Not by the getter of the property, which would start a read of the limits and replace these values.
    if (m_selectedDiscontinuousFieldOfViewIndex == NarrowFieldOfView) {
        setNearFocusPosition(narrowNear);
        setFarFocusPosition(narrowFar);
    } else if (m_selectedDiscontinuousFieldOfViewIndex == WideFieldOfView) {
        setNearFocusPosition(wideNear);
        setFarFocusPosition(wideFar);
    }
}

// The region of the auto focus, the distance and the athermalization

void SetupTabModel::setSelectedAFRoiSizeIndex(int index)
{
    if (index != m_selectedAFRoiSizeIndex && zvtSetAutoFocusROISize(handle(), afRoiPixels(index)) == 0)
        announce(this, index, m_selectedAFRoiSizeIndex, &Self::selectedAFRoiSizeIndexChanged);
}

void SetupTabModel::setSelectedAFRoiPositionIndex(int index)
{
    if (storeOnly(this, index, m_selectedAFRoiPositionIndex, &Self::selectedAFRoiPositionIndexChanged))
        zvtSetAutoFocusROIPosition(handle(), static_cast<uint8_t>(index));
}

void SetupTabModel::setSelectedAFRoiShowWhenIndex(int index)
{
    if (storeOnly(this, index, m_selectedAFRoiShowWhenIndex, &Self::selectedAFRoiShowWhenIndexChanged)
        && zvtSetVideoOverlayShowFocusROI(handle(), index == 0) == 0)
        zvtSetAutoFocusROIShowWhenFocusing(handle(), index == 1);
}

void SetupTabModel::setDistanceToFocus(float metres)
{
    storeOnly(this, metres, *m_distanceToFocus, &Self::distanceToFocusChanged);
}

void SetupTabModel::setAthermalizationEnabled(bool enabled)
{
    writeAccepted(this, enabled, m_athermalizationEnabled, &Self::athermalizationEnabledChanged,
                  zvtSetLensAthermalizationEnabled);
}
