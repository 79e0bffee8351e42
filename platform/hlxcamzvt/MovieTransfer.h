#pragma once

#include "hlx/CString.h"
#include "hlx/delegate.h"
#include "platform/emulator/Status.h"
#include "platform/emulator/devices/RecordedFrame.h"
#include "platform/hlxfile/CRQSWriter.h"

#include <QElapsedTimer>

#include <cstdint>
#include <memory>
#include <vector>

namespace emulator
{
class Camera;
class Link;
class Recorder;
class Recording;
} // namespace emulator

namespace hlx::cam
{

/// One transfer of frames from the recorder of an emulated camera to a raw movie on the computer, at the speed of the
/// camera's link in the time of Clock. In stage 0 the frames come in their order. In stage 1 those come again that the
/// link has lost, in at most five passes. The transfer keeps the recording, so it may be replaced in the recorder
/// meanwhile. It has the pixels of one frame at a time.
class MovieTransfer
{
public:
    /// Called as (stage, done, total) in frames, with the camera's lock released: after the first frame of a stage,
    /// after its last one, and otherwise at most each 50 ms of real time, also while a frame comes. In stage 1, `total`
    /// is the number of the lost frames. Any result other than 0 stops the transfer. May be empty.
    using Progress = hlx::delegate<int(int, unsigned int, unsigned int)>;

    /// Transfers the frames `first` to `last` of the memory to a file, which is replaced; a higher `last` means the
    /// last frame. Absent if the camera cannot transfer frames. Refused without such frames, if the file cannot be
    /// written, or if frames are still lost after the last pass. Stopped by `progress`, NotConnected if the camera is
    /// disconnected meanwhile. If it ends early, the file is a movie of the frames so far; it is removed if the disk
    /// has no room for its head. The thread holds the camera's lock exactly once; frames are rendered and written
    /// without it.
    static emulator::Status run(emulator::Camera &camera, const hlx::CString &path, const Progress &progress,
                                uint32_t first, uint32_t last);

private:
    /// The progress in a stage.
    struct Stage {
        int number = 0;
        size_t done = 0; ///< Frames.
        size_t total = 0;
    };

    MovieTransfer(emulator::Camera &camera, emulator::Recorder &recorder,
                  std::shared_ptr<const emulator::Recording> recording, const Progress &progress, uint32_t first,
                  uint32_t last);

    bool create(const hlx::CString &path);
    emulator::Status fetchAll();
    emulator::Status fetchLost();
    emulator::Status fetch(uint32_t place, uint32_t pass);
    emulator::Status waitForLink();
    bool write(uint32_t place, uint32_t pass, const emulator::RecordedFrame &frame);
    emulator::Status report();
    emulator::Status reportSometimes();

    emulator::Camera &m_camera;
    emulator::Recorder &m_recorder;
    const emulator::Link &m_link;
    const std::shared_ptr<const emulator::Recording> m_recording;
    const Progress &m_progress;
    const uint32_t m_first; ///< The frame at place 0 of the movie.
    const uint32_t m_frames;
    const int64_t m_begin; ///< A time of Clock.
    const int64_t m_bytesPerSecond;
    int64_t m_sent = 0; ///< Frames, also those that were lost.
    std::vector<uint32_t> m_lost; ///< Their places.
    std::vector<uint16_t> m_counts; ///< Of the frame that is written.
    file::CRQSWriter m_writer;
    Stage m_stage;
    QElapsedTimer m_sinceReport; ///< Or since the begin.
};

} // namespace hlx::cam
