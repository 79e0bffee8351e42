#include "setup/SetupTabModel.h"

#include "common/CameraCapabilitiesModel.h"
#include "common/CameraRoot.h"
#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/setters.h"
#include "setup/FlagSettingsModel.h"
#include "setup/SetupCoolerSettingsModel.h"
#include "setup/SetupGeneralModel.h"

#include "hlx/CZVTController.h"
#include "zvt/zvtsdk.h"

// Part of SetupTabModel: the refresh, the camera's events, and the settings of detector and image.

namespace
{

/// Returns the next event of the camera. After a change of the make-up it also updates the framework's capabilities,
/// not on the GUI thread, since this asks the camera. Pool task.
zvtEEventType readEvent(const CameraAccess &camera)
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
    if (auto *root = CameraRoot::of(this)) {
        root->onConnectedChanged(this, [this] { connectedChangedCameraModel(); });
        root->onCapabilitiesChanged(this, [this] { checkTimer(); });
    }
    connectLensTimers();
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

// Not by CameraAccess::of(), which asks the controller for its handle: bindings of the page call this often.
std::shared_ptr<const CapabilityBlock> SetupTabModel::capabilities() const
{
    const auto *root = CameraRoot::of(this);
    return root ? root->capabilities() : std::make_shared<const CapabilityBlock>();
}

void SetupTabModel::setVisible(bool visible)
{
    if (storeOnly(this, visible, m_visible, &Self::visibleChanged))
        checkTimer();
}

// The sections of the cooler and the flag poll the camera only while the page is shown, the camera is connected, and it
// has the equipment: the page hides the section of missing equipment.
void SetupTabModel::checkTimer()
{
    auto *root = CameraRoot::of(this);
    if (!root)
        return;
    const bool live = m_visible && root->connected();
    root->setupCoolerSettingsModel()->setSectionLive(live && root->capabilities()->hasTeCooler());
    root->flagSettings()->setSectionLive(live && root->capabilities()->hasFlag());
}

void SetupTabModel::connectedChangedCameraModel() { checkTimer(); }

// The refresh

void SetupTabModel::refresh()
{
    m_refresh.start([runningMeta = m_continuousMeta.lastRead()](const CameraAccess &camera) {
        return SetupSettingsResult::read(camera, runningMeta);
    });
}

void SetupTabModel::finishedWatcher()
{
    const SetupSettingsResult result = m_refresh.result();
    // The lens states are read after the limits; without them if newer limits have been read meanwhile.
    if (result.discontinuousMeta.set() && !watchIfNewest(result.discontinuousMeta.get()))
        loadLensStateNamesAsync();
    if (result.continuousMeta.set())
        m_continuousMeta.watch(result.continuousMeta.get());
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
    // Published after the names: a combo box with new rows selects the first one until the index is signalled.
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

// The camera's events

// Each tick reads one event. With a slow camera several such reads may run; each handles its own event.
void SetupTabModel::timeoutEventQueueTimer()
{
    if (!m_visible || !m_lensControlsUnlocked)
        return;
    auto *watcher = new QFutureWatcher<zvtEEventType>(this);
    QObject::connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        handleEvent(watcher->result());
    });
    watcher->setFuture(launchRead<zvtEEventType>(&readEvent, CameraAccess::of(this)));
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
    writeAccepted(this, enabled, m_hsmEnabled, &Self::hsmEnabledChanged, zvtSetHSMEnabled);
}

void SetupTabModel::setHflipImage(bool flip)
{
    writeAccepted(this, flip, m_hflipImage, &Self::hflipImageChanged, zvtSetRevertEnabled);
}

void SetupTabModel::setVflipImage(bool flip)
{
    writeAccepted(this, flip, m_vflipImage, &Self::vflipImageChanged, zvtSetInvertEnabled);
}

void SetupTabModel::setSyncSource(int source)
{
    writeAccepted(this, source, m_syncSource, &Self::syncSourceChanged, zvtSetFrameSyncSource);
}

void SetupTabModel::setSelectedFPAGainLevel(int level)
{
    writeAccepted(this, level, m_selectedFPAGainLevel, &Self::selectedFPAGainLevelChanged, zvtSetGainLevel);
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
