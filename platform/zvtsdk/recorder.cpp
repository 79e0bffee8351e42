// The SDK's functions of the recorder, its playback and its drive.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

namespace
{

zvtSIRIG irigTimeOf(const Recorder &recorder, const Recording &recording, uint64_t frame)
{
    const CameraClock::IrigTime time = recorder.recorded(recording, frame).irigTime;
    return {time.day, time.hour, time.minute, time.second, time.millisecond, time.microsecond};
}

zvtSSsdMovieInfo recordOf(const Recorder &recorder, const Drive::Movie &movie)
{
    const Recording &recording = *movie.recording;
    zvtSSsdMovieInfo info{};
    Text name(info.name, sizeof info.name);
    name.value = movie.name;
    name.copyToBuffer(false);
    info.number = movie.number;
    info.width = static_cast<uint16_t>(recording.size().width);
    info.height = static_cast<uint16_t>(recording.size().height + 1);
    info.numFrames = static_cast<uint32_t>(recording.frames());
    if (info.numFrames > 0) {
        info.startTime = irigTimeOf(recorder, recording, 0);
        info.endTime = irigTimeOf(recorder, recording, info.numFrames - 1);
    }
    return info;
}

} // namespace

// Recorder.

int zvtGetSsdState(uint64_t handle, uint8_t *state) { return get<&Recorder::state>(__func__, handle, state); }

int zvtSsdArm(uint64_t handle) { return call<&Recorder::arm>(__func__, handle); }

int zvtSsdDisarm(uint64_t handle) { return call<&Recorder::disarm>(__func__, handle); }

int zvtSsdTrigger(uint64_t handle) { return call<&Recorder::trigger>(__func__, handle); }

int zvtSsdRecordPause(uint64_t handle) { return call<&Recorder::pauseRecording>(__func__, handle); }

int zvtSsdRecordResume(uint64_t handle) { return call<&Recorder::resumeRecording>(__func__, handle); }

int zvtSsdRecordStop(uint64_t handle) { return call<&Recorder::stopRecording>(__func__, handle); }

int zvtGetSsdNumFrames(uint64_t handle, uint32_t *out) { return get<&Recorder::frames>(__func__, handle, out); }

int zvtSetSsdNumFrames(uint64_t handle, uint32_t value) { return call<&Recorder::setFrames>(__func__, handle, value); }

int zvtGetSsdMaxNumFrames(uint64_t handle, uint32_t *out) { return get<&Recorder::memoryLimit>(__func__, handle, out); }

int zvtGetSsdMaxNumFramesDisk(uint64_t handle, uint32_t *out)
{
    return call<&Recorder::diskLimit>(__func__, handle, out);
}

int zvtGetSsdPretriggerFrames(uint64_t handle, uint32_t *out)
{
    return get<&Recorder::pretrigger>(__func__, handle, out);
}

int zvtSetSsdPretriggerFrames(uint64_t handle, uint32_t value)
{
    return call<&Recorder::setPretrigger>(__func__, handle, value);
}

int zvtGetSsdNumFramesAcquired(uint64_t handle, uint32_t *out)
{
    return call<&Recorder::framesAcquired>(__func__, handle, out);
}

int zvtGetSsdRecordModeAvailable(uint64_t handle, uint8_t *out)
{
    return get<&Recorder::hasRecordModes>(__func__, handle, out);
}

int zvtGetSsdRecordMode(uint64_t handle, uint8_t *out) { return call<&Recorder::mode>(__func__, handle, out); }

int zvtSetSsdRecordMode(uint64_t handle, uint8_t value) { return call<&Recorder::setMode>(__func__, handle, value); }

int zvtGetSsdRecordType(uint64_t handle, uint8_t *out) { return call<&Recorder::type>(__func__, handle, out); }

int zvtSetSsdRecordType(uint64_t handle, uint8_t value) { return call<&Recorder::setType>(__func__, handle, value); }

int zvtGetSsdRecordDuration(uint64_t handle, uint32_t *out) { return call<&Recorder::duration>(__func__, handle, out); }

int zvtSetSsdRecordDuration(uint64_t handle, uint32_t value)
{
    return call<&Recorder::setDuration>(__func__, handle, value);
}

int zvtGetSsdRecordGated(uint64_t handle, uint8_t *out) { return call<&Recorder::gated>(__func__, handle, out); }

int zvtSetSsdRecordGated(uint64_t handle, uint8_t value) { return call<&Recorder::setGated>(__func__, handle, value); }

int zvtGetSsdAutoRearm(uint64_t handle, uint8_t *out) { return call<&Recorder::autoRearm>(__func__, handle, out); }

int zvtSetSsdAutoRearm(uint64_t handle, uint8_t value)
{
    return call<&Recorder::setAutoRearm>(__func__, handle, value);
}

int zvtGetSsdAutoSave(uint64_t handle, uint8_t *out) { return get<&Recorder::autoSave>(__func__, handle, out); }

int zvtSetSsdAutoSave(uint64_t handle, uint8_t value) { return call<&Recorder::setAutoSave>(__func__, handle, value); }

int zvtGetSsdAutoPlay(uint64_t handle, uint8_t *out) { return get<&Recorder::autoPlay>(__func__, handle, out); }

int zvtSetSsdAutoPlay(uint64_t handle, uint8_t value) { return call<&Recorder::setAutoPlay>(__func__, handle, value); }

int zvtGetSsdAutoDownload(uint64_t handle, uint8_t *out)
{
    return call<&Recorder::autoDownload>(__func__, handle, out);
}

int zvtSetSsdAutoDownload(uint64_t handle, uint8_t value)
{
    return call<&Recorder::setAutoDownload>(__func__, handle, value);
}

int zvtSsdAutoDownloadStart(uint64_t handle) { return call<&Recorder::downloadStarts>(__func__, handle); }

int zvtSsdAutoDownloadDone(uint64_t handle) { return call<&Recorder::downloadIsDone>(__func__, handle); }

// Playback.

int zvtSsdPlayBuffer(uint64_t handle) { return call<&Recorder::play>(__func__, handle); }

int zvtSsdPauseBuffer(uint64_t handle) { return call<&Recorder::pause>(__func__, handle); }

int zvtSsdResumeBuffer(uint64_t handle) { return call<&Recorder::resume>(__func__, handle); }

int zvtSsdStopBuffer(uint64_t handle) { return call<&Recorder::stop>(__func__, handle); }

int zvtSsdSkipToFrame(uint64_t handle, uint32_t frame) { return call<&Recorder::skipTo>(__func__, handle, frame); }

int zvtSsdSkipForward(uint64_t handle) { return call<&Recorder::skipForward>(__func__, handle); }

int zvtSsdSkipBackward(uint64_t handle) { return call<&Recorder::skipBackward>(__func__, handle); }

int zvtGetSsdPlaybackFrame(uint64_t handle, uint32_t *out)
{
    return get<&Recorder::playbackFrame>(__func__, handle, out);
}

int zvtGetSsdPlaybackRate(uint64_t handle, float *out) { return get<&Recorder::rate>(__func__, handle, out); }

int zvtSetSsdPlaybackRate(uint64_t handle, float value) { return call<&Recorder::setRate>(__func__, handle, value); }

int zvtGetSsdLoopPlayback(uint64_t handle, uint8_t *out) { return get<&Recorder::loop>(__func__, handle, out); }

int zvtSetSsdLoopPlayback(uint64_t handle, uint8_t value) { return call<&Recorder::setLoop>(__func__, handle, value); }

int zvtGetSsdStartFrame(uint64_t handle, uint32_t *out) { return get<&Recorder::startFrame>(__func__, handle, out); }

int zvtSetSsdStartFrame(uint64_t handle, uint32_t value)
{
    return call<&Recorder::setStartFrame>(__func__, handle, value);
}

int zvtGetSsdEndFrame(uint64_t handle, uint32_t *out) { return get<&Recorder::endFrame>(__func__, handle, out); }

int zvtSetSsdEndFrame(uint64_t handle, uint32_t value) { return call<&Recorder::setEndFrame>(__func__, handle, value); }

// Drive.

int zvtGetSsdDrivePresent(uint64_t handle, uint8_t *out) { return get<&Recorder::drivePresent>(__func__, handle, out); }

int zvtGetSsdDriveRecognized(uint64_t handle, uint8_t *out)
{
    return get<&Recorder::recognized>(__func__, handle, out);
}

int zvtGetSsdDriveSpaceTotal(uint64_t handle, int64_t *out)
{
    return call<&Recorder::driveTotal>(__func__, handle, out);
}

int zvtGetSsdDriveSpaceUsed(uint64_t handle, int64_t *out) { return call<&Recorder::driveUsed>(__func__, handle, out); }

int zvtGetSsdDriveSpaceFree(uint64_t handle, int64_t *out) { return call<&Recorder::driveFree>(__func__, handle, out); }

int zvtSsdFormatDrive(uint64_t handle) { return call<&Recorder::format>(__func__, handle); }

int zvtGetSsdSaveName(uint64_t handle, char *buf, uint32_t size)
{
    return get<&Recorder::name>(__func__, handle, Text(buf, size));
}

int zvtSetSsdSaveName(uint64_t handle, const char *name) { return call<&Recorder::setName>(__func__, handle, name); }

int zvtSsdSaveBuffer(uint64_t handle) { return call<&Recorder::saveMovie>(__func__, handle); }

int zvtGetSsdMovieCount(uint64_t handle, uint32_t *out) { return call<&Recorder::movieCount>(__func__, handle, out); }

int zvtGetSsdMovieInfo(uint64_t handle, uint32_t index, zvtSSsdMovieInfo *out)
{
    const auto body = [&](Recorder &recorder) {
        const Drive::Movie *movie = nullptr;
        const Status status = recorder.movie(index, movie);
        if (status == Ok)
            *out = recordOf(recorder, *movie);
        return status;
    };
    return onDevice<Recorder>(__func__, handle, body, index, out);
}

int zvtSsdLoadMovie(uint64_t handle, uint32_t index) { return call<&Recorder::load>(__func__, handle, index); }

int zvtGetSsdMovieLoaded(uint64_t handle, uint8_t *out) { return call<&Recorder::movieLoaded>(__func__, handle, out); }

int zvtSsdUnload(uint64_t handle) { return call<&Recorder::unload>(__func__, handle); }
