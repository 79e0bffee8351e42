#include "advanced/AdvancedMiscSettingsModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <QDebug>
#include <QScopeGuard>

#include <algorithm>
#include <exception>

#include "hlx/IVideoSource.h"
#include "zvt/zvtsdk.h"

namespace
{

/// Reads whether a header mode can be set, and only then the mode.
template <class Get>
void fetchHeaderMode(Nullable<bool> &available, Nullable<int> &mode, Get getAvailable, Get getMode, uint64_t handle)
{
    if (fetch(available, getAvailable, handle) && available.get())
        fetch(mode, getMode, handle);
}

/// Whether the camera has the transport whose stream must be stopped for a header mode. Unset if the camera does not
/// tell.
Nullable<bool> mustStopStream(uint64_t handle)
{
    constexpr uint8_t restarted = 0;
    Nullable<bool> available;
    Nullable<uint8_t> type;
    if (!fetch(available, zvtGetDeviceTLTypeAvailable, handle))
        return {};
    if (!available.get())
        return false;
    if (!fetch(type, zvtGetDeviceTLType, handle))
        return {};
    return type.get() == restarted;
}

/// Starts the stream again. Logs a failure: an exception from a scope guard would end the program.
void restartStream(hlx::cam::IVideoSource &source)
{
    try {
        source.StartStream();
    } catch (const std::exception &error) {
        qWarning("the stream did not start after a change of a header mode: %s", error.what());
    } catch (...) {
        qWarning("the stream did not start after a change of a header mode");
    }
}

/// Calls the listeners for a header mode that has changed. A listener may add and remove listeners; one that was
/// removed by another is not called.
void callListeners(const hlx::cam::IZVTController &controller)
{
    const auto listeners = controller.listeners;
    for (const auto &listener : listeners) {
        const auto &present = controller.listeners;
        if (std::find(present.begin(), present.end(), listener) != present.end())
            listener();
    }
}

} // namespace

void AdvancedMiscSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The read

// The flags change also on a camera without these settings. A later refresh is not blocked: only a running read blocks.
void AdvancedMiscSettingsModel::refresh()
{
    if (m_refresh.begin() && CameraAccess::of(this).capabilities->hasAdvancedMiscSettings())
        m_refresh.run(&Settings::read);
}

AdvancedMiscSettingsModel::Settings AdvancedMiscSettingsModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    fetch(settings.integratePolarity, zvtGetIntegrateOutPolarity, camera.handle);
    fetch(settings.irigLatch, zvtGetIRIGLatchSource, camera.handle);
    fetchHeaderMode(settings.gigeAvailable, settings.gigeMode, zvtGetGigEHeaderModeAvailable, zvtGetGigEHeaderMode,
                    camera.handle);
    fetchHeaderMode(settings.clAvailable, settings.clMode, zvtGetCameraLinkHeaderModeAvailable,
                    zvtGetCameraLinkHeaderMode, camera.handle);
    fetchHeaderMode(settings.cxpAvailable, settings.cxpMode, zvtGetCoaXPressHeaderModeAvailable,
                    zvtGetCoaXPressHeaderMode, camera.handle);
    return settings;
}

void AdvancedMiscSettingsModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publish(this, settings.integratePolarity, m_integratePolarity, &Self::selectedIntegrateActivePolarityIndexChanged);
    publish(this, settings.irigLatch, m_irigLatch, &Self::selectedIrigLatchIndexChanged);
    publish(this, settings.gigeAvailable, m_gigeAvailable, &Self::gigeHeaderModeAvailableChanged);
    publish(this, settings.gigeMode, m_gigeMode, &Self::gigeHeaderModeIndexChanged);
    publish(this, settings.clAvailable, m_clAvailable, &Self::clHeaderModeAvailableChanged);
    publish(this, settings.clMode, m_clMode, &Self::clHeaderModeIndexChanged);
    publish(this, settings.cxpAvailable, m_cxpAvailable, &Self::cxpHeaderModeAvailableChanged);
    publish(this, settings.cxpMode, m_cxpMode, &Self::cxpHeaderModeIndexChanged);
    m_refresh.finish();
}

// The signal options

void AdvancedMiscSettingsModel::setSelectedIntegrateActivePolarityIndex(int index)
{
    writeConfirmed(this, index, m_integratePolarity, &Self::selectedIntegrateActivePolarityIndexChanged,
                   zvtSetIntegrateOutPolarity);
}

void AdvancedMiscSettingsModel::setSelectedIrigLatchIndex(int index)
{
    writeConfirmed(this, index, m_irigLatch, &Self::selectedIrigLatchIndexChanged, zvtSetIRIGLatchSource);
}

// The header modes

void AdvancedMiscSettingsModel::setGigeHeaderModeIndex(int index)
{
    setHeaderMode(index, m_gigeMode, &Self::gigeHeaderModeIndexChanged, zvtSetGigEHeaderMode);
}

void AdvancedMiscSettingsModel::setClHeaderModeIndex(int index)
{
    setHeaderMode(index, m_clMode, &Self::clHeaderModeIndexChanged, zvtSetCameraLinkHeaderMode);
}

void AdvancedMiscSettingsModel::setCxpHeaderModeIndex(int index)
{
    setHeaderMode(index, m_cxpMode, &Self::cxpHeaderModeIndexChanged, zvtSetCoaXPressHeaderMode);
}

// A slot of the signal or a listener may delete this model: nothing of it is used after the signal.
void AdvancedMiscSettingsModel::setHeaderMode(int mode, int &member, void (Self::*changed)(),
                                              int (*set)(uint64_t handle, uint8_t mode))
{
    if (mode == member || mode == -1)
        return;
    const CameraAccess camera = CameraAccess::of(this);
    hlx::TSharedPtr<hlx::cam::IVideoSource> source;
    if (camera.controller)
        source = camera.controller->GetVideoSource();
    const Nullable<bool> mustStop = source ? mustStopStream(camera.handle) : false;
    if (!mustStop.set())
        return;
    if (!mustStop.get()) {
        writeAccepted(this, mode, member, changed, set);
        return;
    }
    // The stream starts again whatever happens, also if a listener throws.
    const auto restart = qScopeGuard([&source] { restartStream(*source); });
    source->StopStream();
    if (set(camera.handle, static_cast<uint8_t>(mode)) != 0)
        return;
    announce(this, mode, member, changed);
    callListeners(*camera.controller);
}
