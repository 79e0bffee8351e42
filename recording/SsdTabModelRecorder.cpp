#include "recording/SsdTabModel.h"

#include "common/CameraRoot.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

// Part of SsdTabModel: the state of the recorder, its commands and the poll.

namespace
{

bool isRecording(int state)
{
    return state == SsdTabModel::ARMED || state == SsdTabModel::TRIGGERED || state == SsdTabModel::RECORD_PAUSED;
}

/// Reads what follows the end of a recording. The whole recording becomes the range of the playback, also in the
/// camera. Without frames the range ends at 4294967295, which the camera takes as its last frame.
void readEndOfRecording(const SsdUIState &input, SsdUpdateState &output)
{
    if (input.fromDisk) {
        fetch(output.maxFramesDisk, zvtGetSsdMaxNumFramesDisk, input.handle);
        return;
    }
    const auto countFrames = input.recordModeAvailable ? zvtGetSsdNumFramesAcquired : zvtGetSsdNumFrames;
    if (!fetch(output.totalFrames, countFrames, input.handle))
        return;
    output.startFrame = 0U;
    output.endFrame = output.totalFrames.get() - 1;
    zvtSetSsdStartFrame(input.handle, output.startFrame.get());
    zvtSetSsdEndFrame(input.handle, output.endFrame.get());
}

/// Reads whether there is a drive, at every fifth poll.
void readDrive(const SsdUIState &input, SsdUpdateState &output)
{
    constexpr int pollsPerDriveRead = 5;
    output.tick = input.tick + 1;
    if (output.tick < pollsPerDriveRead)
        return;
    output.tick = 0;
    Nullable<uint8_t> present;
    Nullable<uint8_t> recognized;
    if (!fetch(present, zvtGetSsdDrivePresent, input.handle)
        || !fetch(recognized, zvtGetSsdDriveRecognized, input.handle))
        return;
    output.drivePresent = present;
    output.driveRecognized = recognized;
    if (recognized.get() == 1 && !input.driveRecognized)
        fetch(output.maxFramesDisk, zvtGetSsdMaxNumFramesDisk, input.handle);
}

} // namespace

// The state

void SsdTabModel::setState(SsdState state)
{
    if (this->state() == state)
        return;
    m_pendingState = state;
    updateCanInteractBasedOnState();
    emit stateChanged();
    // The camera gets a full second to carry out the command.
    if (m_updateTimer.isActive())
        m_updateTimer.start();
    ++m_sequence;
}

/// Stores a state that the camera reported. The caller signals it.
void SsdTabModel::setCameraState(SsdState state)
{
    m_pendingState = UNKNOWN_STATE_QML_ONLY_NOT_SDK;
    m_cameraState = state;
    updateCanInteractBasedOnState();
}

void SsdTabModel::updateCanInteractBasedOnState()
{
    const SsdState present = state();
    announce(this,
             present == DISARMED || present == ARMED || present == COMPLETE || present == PLAYING || present == PAUSED
                 || present == MOVIE_LOADED,
             m_canInteract, &Self::canInteractChanged);
}

// The poll

/// Whether the camera is connected and no download has it for itself.
bool SsdTabModel::mayPoll() const
{
    const CameraRoot *root = CameraRoot::of(this);
    return root && root->connected() && !m_batchDownload.downloading() && !m_downloading;
}

void SsdTabModel::updateTimerHandler()
{
    if (!mayPoll() || m_updateInFlight)
        return;
    m_updateInFlight = true;
    SsdUIState input;
    GetUIState(input);
    m_update.start([input](const CameraAccess &) {
        SsdUpdateState update;
        UpdateSsdState(input, update);
        return Completion::FromLamda([update](Self &model) { model.UpdateUI(update); });
    });
}

void SsdTabModel::finishedDelegateWatcher()
{
    // Empty if the task ended early.
    const Completion publishUpdate = m_update.result();
    publishUpdate(*this);
    m_updateInFlight = false;
    m_update.finish();
}

/// Polls on the GUI thread, after a command. A poll of the timer may run at the same time; it is void then.
void SsdTabModel::updateTimerHandlerDirect()
{
    if (!mayPoll())
        return;
    SsdUIState input;
    SsdUpdateState update;
    GetUIState(input);
    UpdateSsdState(input, update);
    UpdateUI(update);
}

void SsdTabModel::GetUIState(SsdUIState &input)
{
    input.handle = CameraAccess::of(this).handle;
    input.state = state();
    input.fromDisk = m_fromDisk;
    input.recordModeAvailable = m_recordModeAvailable;
    input.drivePresent = m_drivePresent;
    input.driveRecognized = m_driveRecognized;
    input.tick = m_tick;
    input.sequence = ++m_sequence;
}

void SsdTabModel::UpdateSsdState(const SsdUIState &input, SsdUpdateState &output)
{
    if (!fetch(output.state, zvtGetSsdState, input.handle))
        return;
    output.sequence = input.sequence;
    const int before = input.state;
    const int now = output.state.get();
    if (now == PLAYING || (now == PAUSED && before != PAUSED))
        fetch(output.currentFrame, zvtGetSsdPlaybackFrame, input.handle);
    if (isRecording(before) && !isRecording(now))
        readEndOfRecording(input, output);
    if ((before == FORMATTING || before == SAVING) && now != before)
        fetch(output.maxFramesDisk, zvtGetSsdMaxNumFramesDisk, input.handle);
    readDrive(input, output);
}

void SsdTabModel::UpdateUI(const SsdUpdateState &update)
{
    if (!update.state.set() || update.sequence != m_sequence)
        return;
    m_tick = update.tick;
    const SsdState shown = state();
    setCameraState(static_cast<SsdState>(update.state.get()));
    if (m_cameraState != shown)
        emit stateChanged();
    publishIfChanged(this, update.currentFrame, m_currentFrame, &Self::currentFrameChanged);
    publishIfChanged(this, update.startFrame, m_startFrame, &Self::startFrameChanged);
    publishIfChanged(this, update.endFrame, m_endFrame, &Self::endFrameChanged);
    publishIfChanged(this, update.totalFrames, m_totalFramesInFile, &Self::totalFramesInFileChanged);
    publishIfChanged(this, update.maxFramesDisk, m_maxFramesToRecordToDisk, &Self::announceDiskLimit);
    publishIfChanged(this, update.drivePresent, m_drivePresent, &Self::drivePresentChanged);
    publishIfChanged(this, update.driveRecognized, m_driveRecognized, &Self::driveRecognizedChanged);
    if (m_cameraState == REQUEST_AUTO_DOWNLOAD)
        startAutoDownload();
}

// The commands

void SsdTabModel::command(int (*call)(uint64_t handle)) const { call(CameraAccess::of(this).handle); }

void SsdTabModel::arm()
{
    // Required: the camera's state, not the pending one.
    if (m_cameraState == PLAYING || m_cameraState == PAUSED)
        command(zvtSsdStopBuffer);
    setState(ARMING);
    const uint32_t lastFrame = m_framesToRecord - 1;
    setters::write(this, zvtSetSsdNumFrames, m_framesToRecord);
    setters::write(this, zvtSetSsdPretriggerFrames, m_pretriggerFramesToRecord);
    setters::write(this, zvtSetSsdSaveName, m_filename);
    setters::write(this, zvtSetSsdStartFrame, 0U);
    setters::write(this, zvtSetSsdEndFrame, lastFrame);
    command(zvtSsdArm);
    storeOnly(this, 0U, m_startFrame, &Self::startFrameChanged);
    storeOnly(this, lastFrame, m_endFrame, &Self::endFrameChanged);
    setFromDisk(m_recordMode == MODE_TO_DISK);
    updateTimerHandlerDirect();
}

void SsdTabModel::disarm()
{
    command(zvtSsdDisarm);
    setState(DISARMED);
}

void SsdTabModel::triggerRecording()
{
    command(zvtSsdTrigger);
    setState(TRIGGERED);
}

void SsdTabModel::pauseRecording()
{
    command(zvtSsdRecordPause);
    setState(RECORD_PAUSED);
}

void SsdTabModel::resumeRecording()
{
    command(zvtSsdRecordResume);
    setState(TRIGGERED);
}

void SsdTabModel::stopRecording()
{
    command(zvtSsdRecordStop);
    updateTimerHandlerDirect();
}

void SsdTabModel::save()
{
    setters::write(this, zvtSetSsdSaveName, m_filename);
    command(zvtSsdSaveBuffer);
    updateTimerHandlerDirect();
}

void SsdTabModel::format()
{
    command(zvtSsdFormatDrive);
    setState(FORMATTING);
}
