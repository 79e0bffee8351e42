#include "recording/SsdTabModel.h"

#include "common/reading.h"
#include "common/setters.h"

#include <algorithm>

#include "zvt/zvtsdk.h"

// Part of SsdTabModel: the playback of the recording in memory or of a loaded movie.

void SsdTabModel::setLoopPlayback(bool loop)
{
    writeStandard(this, loop, m_loopPlayback, &Self::loopPlaybackChanged, zvtSetSsdLoopPlayback);
}

void SsdTabModel::setPlaybackRateInHertz(float rate)
{
    writeStandard(this, rate, m_playbackRateInHertz, &Self::playbackRateInHertzChanged, zvtSetSsdPlaybackRate);
}

/// Reads how fast the camera can play: as fast as it can record frames of this size, and for a movie not above the
/// speed of the drive. Pool task.
void SsdTabModel::Settings::readPlaybackRates(uint64_t handle, uint16_t width, uint16_t height)
{
    constexpr double driveSpeed = 262'144'000.0; // Bytes per second.
    constexpr double bytesPerPixel = 2.0;
    uint32_t clocks = 0;
    double hertz = 0.0;
    if (zvtCalcMinFrameWidth(handle, &clocks, width, height) != 0 || zvtClocksToHertz(handle, clocks, &hertz) != 0)
        return;
    maxLivePlaybackRate = static_cast<float>(hertz);
    // A frame on the drive has one row more than its image.
    if (windowWidth.set())
        maxMoviePlaybackRate
            = static_cast<float>(std::min(hertz, driveSpeed / (bytesPerPixel * width * (height + 1.0))));
}

bool SsdTabModel::ramContainsVideo() const
{
    const SsdState present = state();
    return present == COMPLETE || present == PLAYING || present == PAUSED || present == MOVIE_LOADED;
}

void SsdTabModel::play()
{
    command(m_cameraState == PAUSED ? zvtSsdResumeBuffer : zvtSsdPlayBuffer);
    setState(PLAYING);
}

void SsdTabModel::pause() { pauseBy(zvtSsdPauseBuffer); }

void SsdTabModel::stop()
{
    command(zvtSsdStopBuffer);
    if (m_movieLoaded) {
        command(zvtSsdUnload);
        setState(DISARMED);
    } else {
        setState(COMPLETE);
    }
    setMovieLoaded(false);
    updatePlaybackInfo();
    m_keptWindow.restore(CameraAccess::of(this).controller);
}

void SsdTabModel::skipForwardToNextFrame() { pauseBy(zvtSsdSkipForward); }

void SsdTabModel::skipBackwardToPreviousFrame() { pauseBy(zvtSsdSkipBackward); }

void SsdTabModel::skipToFrame(uint frameNumber)
{
    setters::write(this, zvtSsdSkipToFrame, frameNumber);
    finishPause();
}

void SsdTabModel::pauseBy(int (*call)(uint64_t handle))
{
    command(call);
    finishPause();
}

void SsdTabModel::finishPause()
{
    setState(PAUSED);
    updatePlaybackInfo();
}

/// Reads the frame that is shown; 0 if the read fails.
void SsdTabModel::updatePlaybackInfo()
{
    if (m_cameraState == ARMED)
        return;
    announce(this, readOr(0U, zvtGetSsdPlaybackFrame, CameraAccess::of(this).handle), m_currentFrame,
             &Self::currentFrameChanged);
}

void SsdTabModel::setCurrentFrame(uint frame)
{
    if (frame == m_currentFrame)
        return;
    const uint target = frame < m_totalFramesInFile ? frame : m_endFrame;
    skipToFrame(target);
    announce(this, target, m_currentFrame, &Self::currentFrameChanged);
}

void SsdTabModel::setStartFrame(uint frame)
{
    writeStandard(this, frame, m_startFrame, &Self::startFrameChanged, zvtSetSsdStartFrame);
}

void SsdTabModel::setEndFrame(uint frame)
{
    writeStandard(this, frame, m_endFrame, &Self::endFrameChanged, zvtSetSsdEndFrame);
}

void SsdTabModel::setFromDisk(bool fromDisk) { storeOnly(this, fromDisk, m_fromDisk, &Self::fromDiskChanged); }

void SsdTabModel::setMovieLoaded(bool loaded)
{
    if (storeOnly(this, loaded, m_movieLoaded, &Self::movieLoadedChanged))
        emit maxPlaybackRateInHertzChanged();
}
