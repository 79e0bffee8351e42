#include "video/AgcRoiSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

// The read

void AgcRoiSettingsModel::refresh() { m_refresh.start(&AgcRoiSettingsWatcherResult::read); }

AgcRoiSettingsModel::AgcRoiSettingsWatcherResult
AgcRoiSettingsModel::AgcRoiSettingsWatcherResult::read(const CameraAccess &camera)
{
    AgcRoiSettingsWatcherResult result;
    fetch(result.enableAgcRoi, zvtGetVideoAGCROIEnabled, camera.handle);
    fetch(result.showWhenEnabled, zvtGetVideoAGCROIShowWhenEnabled, camera.handle);
    result.readWindow(camera.handle);
    result.readLimits(camera.handle);
    return result;
}

void AgcRoiSettingsModel::AgcRoiSettingsWatcherResult::readWindow(uint64_t handle)
{
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (zvtGetVideoAGCROI(handle, &x, &y, &width, &height) == 0)
        window = QRect(x, y, width, height);
}

void AgcRoiSettingsModel::AgcRoiSettingsWatcherResult::readLimits(uint64_t handle)
{
    uint8_t preset = 0;
    if (zvtGetVideoPreset(handle, &preset) != 0)
        return;
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
    if (zvtGetWindow(handle, preset, &x, &y, &width, &height) != 0)
        return;
    uint16_t maxWidth = 0;
    uint16_t maxHeight = 0;
    uint16_t unused = 0;
    if (zvtGetWindowLimits(handle, &unused, &maxWidth, &unused, &maxHeight, &unused, &unused) != 0)
        return;
    windowMinSize = QSize(1, 1);
    windowMaxSize = QSize(width, height);
    subWindowPosition = QPoint(x, y);
    fpaSize = QSize(maxWidth, maxHeight);
}

void AgcRoiSettingsModel::finishedWatcher()
{
    const AgcRoiSettingsWatcherResult result = m_refresh.result();
    publish(this, result.enableAgcRoi, m_enableAgcRoi, &Self::enableAgcRoiChanged);
    publish(this, result.showWhenEnabled, m_showWhenEnabled, &Self::showWhenEnabledChanged);
    publishIfChanged(this, result.window, m_window, &Self::windowChanged);
    announce(this, false, m_windowSizeHasUnsavedValues, &Self::windowSizeHasUnsavedValuesChanged);
    publishIfChanged(this, result.windowMinSize, m_windowMinSize, &Self::windowMinSizeChanged);
    publishIfChanged(this, result.windowMaxSize, m_windowMaxSize, &Self::windowMaxSizeChanged);
    publishIfChanged(this, result.fpaSize, m_fpaSize, &Self::fpaSizeChanged);
    publishIfChanged(this, result.subWindowPosition, m_subWindowPosition, &Self::subWindowPositionChanged);
    m_refresh.finish();
}

// Setters

void AgcRoiSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

void AgcRoiSettingsModel::setEnableAgcRoi(bool enable)
{
    writeStandard(this, enable, m_enableAgcRoi, &Self::enableAgcRoiChanged, zvtSetVideoAGCROIEnabled);
}

// The SDK reads this setting as one of the gain control, and writes it as one of the overlay.
void AgcRoiSettingsModel::setShowWhenEnabled(bool show)
{
    writeStandard(this, show, m_showWhenEnabled, &Self::showWhenEnabledChanged, zvtSetVideoOverlayShowAGCROI);
}

void AgcRoiSettingsModel::setWindow(const QRect &window)
{
    if (window == m_window)
        return;
    const auto cut = [](int number) { return static_cast<uint16_t>(number); };
    if (zvtSetVideoAGCROI(CameraAccess::of(this).handle, cut(window.x()), cut(window.y()), cut(window.width()),
                          cut(window.height()))
        == 0)
        announce(this, window, m_window, &Self::windowChanged);
}

void AgcRoiSettingsModel::setWindowSizeHasUnsavedValues(bool unsaved)
{
    storeOnly(this, unsaved, m_windowSizeHasUnsavedValues, &Self::windowSizeHasUnsavedValuesChanged);
}
