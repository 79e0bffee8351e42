// The SDK's functions of the recorder, its playback and its drive, which emulated cameras do not have.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"

using namespace emulator;

// Recorder.

int zvtGetSsdState(uint64_t handle, uint8_t *state) { return absent(__func__, handle, state); }

int zvtSsdArm(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdDisarm(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdTrigger(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdRecordPause(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdRecordResume(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdRecordStop(uint64_t handle) { return absent(__func__, handle); }

int zvtGetSsdNumFrames(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdNumFrames(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetSsdMaxNumFrames(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdMaxNumFramesDisk(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdPretriggerFrames(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdPretriggerFrames(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetSsdNumFramesAcquired(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdRecordModeAvailable(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdRecordMode(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdRecordMode(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdRecordType(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdRecordType(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdRecordDuration(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdRecordDuration(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetSsdRecordGated(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdRecordGated(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdAutoRearm(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdAutoRearm(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdAutoSave(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdAutoSave(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdAutoPlay(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdAutoPlay(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdAutoDownload(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdAutoDownload(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtSsdAutoDownloadStart(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdAutoDownloadDone(uint64_t handle) { return absent(__func__, handle); }

// Playback.

int zvtSsdPlayBuffer(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdPauseBuffer(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdResumeBuffer(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdStopBuffer(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdSkipToFrame(uint64_t handle, uint32_t frame) { return absent(__func__, handle, frame); }

int zvtSsdSkipForward(uint64_t handle) { return absent(__func__, handle); }

int zvtSsdSkipBackward(uint64_t handle) { return absent(__func__, handle); }

int zvtGetSsdPlaybackFrame(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdPlaybackRate(uint64_t handle, float *out) { return absent(__func__, handle, out); }

int zvtSetSsdPlaybackRate(uint64_t handle, float value) { return absent(__func__, handle, value); }

int zvtGetSsdLoopPlayback(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdLoopPlayback(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetSsdStartFrame(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdStartFrame(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

int zvtGetSsdEndFrame(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtSetSsdEndFrame(uint64_t handle, uint32_t value) { return absent(__func__, handle, value); }

// Drive.

int zvtGetSsdDrivePresent(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdDriveRecognized(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdDriveSpaceTotal(uint64_t handle, int64_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdDriveSpaceUsed(uint64_t handle, int64_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdDriveSpaceFree(uint64_t handle, int64_t *out) { return absent(__func__, handle, out); }

int zvtSsdFormatDrive(uint64_t handle) { return absent(__func__, handle); }

int zvtGetSsdSaveName(uint64_t handle, char *buf, uint32_t size) { return absent(__func__, handle, Text(buf, size)); }

int zvtSetSsdSaveName(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtSsdSaveBuffer(uint64_t handle) { return absent(__func__, handle); }

int zvtGetSsdMovieCount(uint64_t handle, uint32_t *out) { return absent(__func__, handle, out); }

int zvtGetSsdMovieInfo(uint64_t handle, uint32_t index, zvtSSsdMovieInfo *out)
{
    return absent(__func__, handle, index, out);
}

int zvtSsdLoadMovie(uint64_t handle, uint32_t index) { return absent(__func__, handle, index); }

int zvtGetSsdMovieLoaded(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSsdUnload(uint64_t handle) { return absent(__func__, handle); }
