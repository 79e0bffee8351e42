#pragma once

#include <QString>
#include <QThread>

#include <atomic>
#include <cstdint>

#include "hlx/CDateTime.h"
#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

/// Downloads one movie to a file on its own thread: the recording in the camera's memory, or a movie of the drive that
/// it loads before and unloads afterwards. Created, started, queried and deleted on the GUI thread. It needs no event
/// loop: the GUI thread may wait() for it. The shared controller keeps the camera's handle valid during the download.
class DownloadWorker : public QThread
{
    Q_OBJECT

public:
    using Controller = hlx::TSharedPtr<hlx::cam::IZVTController>;

    static constexpr uint32_t none = 0xFFFFFFFF; ///< As a place in the camera's list: no movie.
    static constexpr uint32_t toTheEnd = 0xFFFFFFFF; ///< As a last frame: the end of the movie.

    // `file` is a path on the computer. Without a controller every call fails. Frames are counted from 0, the last one
    // is included.

    /// Loads the movie with this place in the camera's list, or none for -1. With `autoDownload` it reports to the
    /// camera at the end that the requested download is done, also after a failure.
    DownloadWorker(QObject *parent, Controller controller, QString file, int movieIndex, uint startFrame, uint endFrame,
                   bool autoDownload);
    /// Downloads frames of the memory.
    DownloadWorker(QObject *parent, Controller controller, QString file, uint startFrame, uint endFrame);
    /// Downloads the frames of the memory between two IRIG times.
    DownloadWorker(QObject *parent, Controller controller, QString file, hlx::CDateTime start, hlx::CDateTime end);

    /// Whether the movie was downloaded. An exception of the controller is logged and counts as a failure. Valid only
    /// after the thread has finished.
    bool ok() const { return m_ok; }

    /// Stops the transfer at its next call of progress(). Any thread.
    void abort() { m_aborted = true; }

    /// The controller calls this during the transfer, on the thread of the worker. Frames lost on the way are fetched
    /// again in stage 1. Returns 0 to continue, -1 to stop.
    int progress(int stage, uint current, uint total);

signals:
    // Emitted on the thread of the worker.
    /// Percent, truncated; 0 without frames. Above 100 if the controller reports more frames than it announced.
    void progressChanged(int value);
    void findingFrameLimitsChanged(bool value); ///< No false follows if the frames were not found.
    void grabbingDroppedFramesChanged(bool value);

protected:
    void run() override;

private:
    bool transfer();
    bool findFrames();
    bool downloadMovie();

    const Controller m_controller;
    const QString m_file;
    const uint32_t m_movieIndex = none;
    uint32_t m_startFrame = 0;
    uint32_t m_endFrame = 0;
    const bool m_autoDownload = false;
    const bool m_useTimeRange = false;
    const hlx::CDateTime m_startTime;
    const hlx::CDateTime m_endTime;
    bool m_ok = false;
    int m_lastStage = 0;
    std::atomic<bool> m_aborted{false};
};
