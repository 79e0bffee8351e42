#include "setup/SetupTabModel.h"

#include "common/publishing.h"
#include "common/reading.h"

#include <QThread>

#include <algorithm>
#include <functional>

#include "zvt/zvtsdk.h"

// Part of SetupTabModel: the one-shot moves of the lens.

namespace
{

/// A move that is a single SDK call.
template <class Set, class... Arguments> auto sdkMove(Set set, Arguments... arguments)
{
    return [=](const CameraAccess &camera) -> int { return set(camera.handle, arguments...); };
}

/// A rectangle of the image window, in pixels.
struct Region {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// The region of the auto focus: a square of `size` pixels in the middle of the image window or of one of its
/// quadrants, clipped to the window.
Region focusRegion(uint8_t position, int size, int windowWidth, int windowHeight)
{
    const auto start = [half = size / 2](int extent, bool quarter, bool farSide) {
        return (quarter ? extent / 4 * (farSide ? 3 : 1) : extent / 2) - half;
    };
    const bool quarter = position >= ZVT_AF_ROI_TOP_LEFT && position <= ZVT_AF_ROI_BOTTOM_RIGHT;
    const bool right = position == ZVT_AF_ROI_TOP_RIGHT || position == ZVT_AF_ROI_BOTTOM_RIGHT;
    const bool bottom = position == ZVT_AF_ROI_BOTTOM_LEFT || position == ZVT_AF_ROI_BOTTOM_RIGHT;
    const int x = start(windowWidth, quarter, right);
    const int y = start(windowHeight, quarter, bottom);
    const int left = std::max(x, 0);
    const int top = std::max(y, 0);
    return {left, top, std::min(x + size, windowWidth) - left, std::min(y + size, windowHeight) - top};
}

/// Calls the host's listeners with the region of the auto focus, unless a read of it fails. Pool task.
void announceFocusRegion(const CameraAccess &camera)
{
    const uint64_t handle = camera.handle;
    Nullable<uint8_t> position;
    Nullable<uint16_t> size;
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (!fetch(position, zvtGetAutoFocusROIPosition, handle) || !fetch(size, zvtGetAutoFocusROISize, handle)
        || zvtGetWindow(handle, 0, &x, &y, &width, &height) != 0)
        return;
    const Region region = focusRegion(position.get(), size.get(), width, height);
    camera.controller->autoFocusStartedListeners.Call(region.x, region.y, region.width, region.height);
}

/// Waits until two reads 100 ms apart return the same position, or a read fails. Returns the status of the last read.
/// Pool task.
int waitForFocus(uint64_t handle)
{
    constexpr unsigned long pollMilliseconds = 100;
    uint32_t last = 0;
    for (;;) {
        QThread::msleep(pollMilliseconds);
        uint32_t position = 0;
        const int status = zvtGetFocusCurrentPos(handle, &position);
        if (status != 0 || position == last)
            return status;
        last = position;
    }
}

} // namespace

/// Locks the lens controls and runs `move`, an int(const CameraAccess &), on a pool thread. After it, on the GUI
/// thread, calls `onSuccess` with the model if the status is 0, then `onEnd` in any case, and unlocks the controls. A
/// second move replaces the first one, whose end is then ignored; the lock on the page prevents this.
template <class Move, class OnSuccess, class OnEnd>
void SetupTabModel::moveOnce(Move move, OnSuccess onSuccess, OnEnd onEnd)
{
    setLensBasedControlsEnabled(false);
    m_oneShot.start([move, onSuccess, onEnd](const CameraAccess &camera) {
        const int status = move(camera);
        return Completion::FromLamda([status, onSuccess, onEnd](Self &model) {
            if (status == 0)
                std::invoke(onSuccess, model);
            onEnd();
        });
    });
}

template <class Move, class OnSuccess> void SetupTabModel::moveOnce(Move move, OnSuccess onSuccess)
{
    moveOnce(move, onSuccess, [] {});
}

void SetupTabModel::finishedDelegateWatcher()
{
    const Completion complete = m_oneShot.result();
    complete(*this);
    setLensBasedControlsEnabled(true);
    m_oneShot.finish();
}

void SetupTabModel::setSelectedFocusPosition(int position)
{
    const auto target = static_cast<uint>(position);
    if (target == m_selectedFocusPosition)
        return;
    moveOnce(sdkMove(zvtSetFocusPos, target), [target](Self &model) {
        announce(&model, target, model.m_selectedFocusPosition, &Self::selectedFocusPositionChanged);
    });
}

void SetupTabModel::setSelectedZoomPosition(uint position)
{
    if (position == m_selectedZoomPosition)
        return;
    moveOnce(sdkMove(zvtSetFOVPos, position), [position](Self &model) {
        announce(&model, position, model.m_selectedZoomPosition, &Self::selectedZoomPositionChanged);
        model.updateFocusPosition();
        model.updateFocusToDistanceRange();
    });
}

void SetupTabModel::setSelectedLensCoverStateIndex(int index)
{
    if (index == m_selectedLensCoverStateIndex)
        return;
    moveOnce(sdkMove(zvtSetLensCoverState, static_cast<uint8_t>(index)), [index](Self &model) {
        announce(&model, index, model.m_selectedLensCoverStateIndex, &Self::selectedLensCoverStateIndexChanged);
    });
}

void SetupTabModel::focusMinimum()
{
    const auto stop = m_focusEncoderHasAscendingValuesNearToFar ? zvtFocusNear : zvtFocusFar;
    moveOnce(sdkMove(stop), &Self::updateFocusPosition);
}

void SetupTabModel::focusMaximum()
{
    const auto stop = m_focusEncoderHasAscendingValuesNearToFar ? zvtFocusFar : zvtFocusNear;
    moveOnce(sdkMove(stop), &Self::updateFocusPosition);
}

void SetupTabModel::zoomWidest() { moveOnce(sdkMove(zvtFOVMin), &Self::updateAfterZoom); }

void SetupTabModel::zoomNarrowest() { moveOnce(sdkMove(zvtFOVMax), &Self::updateAfterZoom); }

// updateZoomPosition() also reads focus and distances. They are read once more, since a move between the stops is long.
void SetupTabModel::updateAfterZoom()
{
    updateZoomPosition();
    updateFocusPosition();
    updateFocusToDistanceRange();
}

void SetupTabModel::autoFocus()
{
    const auto focus = [](const CameraAccess &camera) {
        constexpr int mode = 1;
        announceFocusRegion(camera);
        return zvtAutoFocusFast(camera.handle, mode);
    };
    const auto controller = CameraAccess::of(this).controller;
    moveOnce(focus, &Self::updateFocusPosition, [controller] {
        if (controller)
            controller->autoFocusEndedListeners.Call();
    });
}

void SetupTabModel::focusToDistance()
{
    moveOnce(
        [distance = m_distanceToFocus](const CameraAccess &camera) {
            const int status = zvtFocusToDistance(camera.handle, *distance);
            return status == 0 ? waitForFocus(camera.handle) : status;
        },
        &Self::updateFocusPosition);
}
