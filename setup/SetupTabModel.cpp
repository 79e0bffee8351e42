#include "setup/SetupTabModel.h"

#include "common/CameraCapabilitiesModel.h"
#include "common/CameraRoot.h"
#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/setters.h"
#include "setup/SetupGeneralModel.h"

#include "hlx/CZVTController.h"
#include "zvt/zvtsdk.h"

// The frame of the Setup tab: its refresh, the camera's events, and the settings of detector and image.

namespace
{

/// The next event of the camera. The framework learns of a changed make-up here, off the GUI thread. Pool task.
zvtEEventType takeEvent(const CameraAccess &camera)
{
    zvtEEventType type = ZVT_EVENT_NONE;
    const bool taken = zvtReadEventQueue(camera.handle, &type) == 0;
    const auto concrete = camera.controller.dynamicCast<hlx::cam::CZVTController>();
    if (taken && type == ZVT_EVENT_MAKE_UP_CHANGED && concrete)
        concrete->capabilities.configure(concrete.get());
    return type;
}

} // namespace

SetupTabModel::SetupTabModel(QObject *parent) : BaseTabModel(parent)
{
    makeConnections();
    m_eventQueueTimer.setObjectName(QStringLiteral("eventQueueTimer"));
    m_eventQueueTimer.setInterval(std::chrono::seconds(5));
    QObject::connect(&m_eventQueueTimer, &QTimer::timeout, this, &Self::timeoutEventQueueTimer);
    m_eventQueueTimer.start();
}

ZvtCameraModel *SetupTabModel::cameraModel() const
{
    auto *root = CameraRoot::of(this);
    return root ? root->cameraModel() : nullptr;
}

uint64_t SetupTabModel::handle() const { return CameraAccess::of(this).handle; }

// Without the rest of a CameraAccess: bindings of the page ask for them, and would ask the controller for its handle.
std::shared_ptr<const CapabilityBlock> SetupTabModel::capabilities() const
{
    const auto *root = CameraRoot::of(this);
    return root ? root->capabilities() : std::make_shared<const CapabilityBlock>();
}

void SetupTabModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The refresh

void SetupTabModel::refresh()
{
    m_refresh.start([runningMeta = m_continuousMeta.last()](const CameraAccess &camera) {
        return SetupSettingsResult::read(camera, runningMeta);
    });
}

void SetupTabModel::finishedWatcher()
{
    const SetupSettingsResult result = m_refresh.result();
    // The list of lens states comes behind the limits, or alone where these have been read anew meanwhile.
    if (result.discontinuousMeta.set() && !follow(result.discontinuousMeta.get()))
        loadLensStateNamesAsync();
    if (result.continuousMeta.set())
        m_continuousMeta.follow(result.continuousMeta.get());
    publishGain(result);
    publishLens(result);
    publishImage(result);
    if (result.focusManualMode.set())
        setFocusManualMode(result.focusManualMode.get());
    publishIfChanged(this, Nullable<bool>(result.athermalizationAvailable), m_athermalizationEnabledAvailable,
                     &Self::athermalizationEnabledAvailableChanged);
    publishIfChanged(this, result.athermalizationEnabled, m_athermalizationEnabled,
                     &Self::athermalizationEnabledChanged);
    m_refresh.finish();
}

void SetupTabModel::publishGain(const SetupSettingsResult &result)
{
    if (!capabilities()->hasFPAGain() || result.gainNames.isEmpty())
        return;
    announce(this, result.gainNames, m_fpaGainLevels, &Self::fpaGainLevelsChanged);
    // Behind the names: a combo box that gets new rows falls back to the first one until it is told.
    announce(this, result.gainLevel.set() ? result.gainLevel.get() : 0, m_selectedFPAGainLevel,
             &Self::selectedFPAGainLevelChanged);
}

void SetupTabModel::publishImage(const SetupSettingsResult &result)
{
    publishIfChanged(this, result.hsmAvailable, m_hsmAvailable, &Self::hsmAvailableChanged);
    publishIfChanged(this, result.hsmEnabled, m_hsmEnabled, &Self::hsmEnabledChanged);
    publishIfChanged(this, result.flipHorizontally, m_hflipImage, &Self::hflipImageChanged);
    publishIfChanged(this, result.flipVertically, m_vflipImage, &Self::vflipImageChanged);
    publishIfChanged(this, result.frameSyncSource, m_syncSource, &Self::syncSourceChanged);
}

// What the camera tells of itself

// One tick takes one event. A slow camera may have several such reads under way; each acts on its own answer.
void SetupTabModel::timeoutEventQueueTimer()
{
    if (!m_visible || !m_lensControlsUnlocked)
        return;
    auto *watcher = new QFutureWatcher<zvtEEventType>(this);
    QObject::connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        handleEvent(watcher->result());
    });
    watcher->setFuture(launchRead<zvtEEventType>(&takeEvent, CameraAccess::of(this)));
}

void SetupTabModel::handleEvent(zvtEEventType type)
{
    auto *root = CameraRoot::of(this);
    if (type == ZVT_EVENT_MAKE_UP_CHANGED && root)
        root->cameraCapabilitiesModel()->configure();
    if (type == ZVT_EVENT_MAKE_UP_CHANGED || type == ZVT_EVENT_SETTINGS_CHANGED)
        refresh();
}

// The settings of detector and image

void SetupTabModel::setHsmEnabled(bool enabled)
{
    accepted(this, enabled, m_hsmEnabled, &Self::hsmEnabledChanged, zvtSetHSMEnabled);
}

void SetupTabModel::setHflipImage(bool flip)
{
    accepted(this, flip, m_hflipImage, &Self::hflipImageChanged, zvtSetRevertEnabled);
}

void SetupTabModel::setVflipImage(bool flip)
{
    accepted(this, flip, m_vflipImage, &Self::vflipImageChanged, zvtSetInvertEnabled);
}

void SetupTabModel::setSyncSource(int source)
{
    accepted(this, source, m_syncSource, &Self::syncSourceChanged, zvtSetFrameSyncSource);
}

void SetupTabModel::setSelectedFPAGainLevel(int level)
{
    accepted(this, level, m_selectedFPAGainLevel, &Self::selectedFPAGainLevelChanged, zvtSetGainLevel);
}

bool SetupTabModel::reduceNoise() const
{
    const auto controller = CameraAccess::of(this).controller;
    return controller && controller->GetReduceNoise();
}

void SetupTabModel::setReduceNoise(bool reduce)
{
    const auto controller = CameraAccess::of(this).controller;
    if (!controller || controller->GetReduceNoise() == reduce)
        return;
    controller->SetReduceNoise(reduce);
    emit reduceNoiseChanged();
    CameraRoot::of(this)->setupGeneralModel()->partialRefreshAllPresets();
}

void SetupTabModel::setFpaWindowSizeHasUnsavedValues(bool unsaved)
{
    storeOnly(this, unsaved, m_fpaWindowSizeHasUnsavedValues, &Self::fpaWindowSizeHasUnsavedValuesChanged);
}
