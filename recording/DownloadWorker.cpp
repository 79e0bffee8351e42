#include "recording/DownloadWorker.h"

#include "common/conversions.h"
#include "common/reading.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <utility>

#include "hlx/delegate.h"
#include "zvt/zvtsdk.h"

using hlx::cam::IZVTController;

DownloadWorker::DownloadWorker(QObject *parent, Controller controller, QString file, int movieIndex, uint startFrame,
                               uint endFrame, bool autoDownload)
    : QThread(parent), m_controller(std::move(controller)), m_file(std::move(file)),
      m_movieIndex(static_cast<uint32_t>(movieIndex)), m_startFrame(startFrame), m_endFrame(endFrame),
      m_autoDownload(autoDownload)
{
}

DownloadWorker::DownloadWorker(QObject *parent, Controller controller, QString file, uint startFrame, uint endFrame)
    : QThread(parent), m_controller(std::move(controller)), m_file(std::move(file)), m_startFrame(startFrame),
      m_endFrame(endFrame)
{
}

DownloadWorker::DownloadWorker(QObject *parent, Controller controller, QString file, hlx::CDateTime start,
                               hlx::CDateTime end)
    : QThread(parent), m_controller(std::move(controller)), m_file(std::move(file)), m_useTimeRange(true),
      m_startTime(start), m_endTime(end)
{
}

void DownloadWorker::run()
{
    const uint64_t handle = m_controller ? m_controller->GetHandle() : 0;
    const bool fromDrive = m_movieIndex != none;
    const bool loaded = !fromDrive || zvtSsdLoadMovie(handle, m_movieIndex) == 0;
    m_ok = loaded && transfer();
    if (fromDrive && loaded) {
        zvtSsdStopBuffer(handle);
        zvtSsdUnload(handle);
    }
    if (m_autoDownload)
        zvtSsdAutoDownloadDone(handle);
}

// An exception that leaves a thread ends the program.
bool DownloadWorker::transfer()
{
    try {
        return (!m_useTimeRange || findFrames()) && downloadMovie();
    } catch (const std::exception &error) {
        qWarning("a download ended early: %s", error.what());
        return false;
    }
}

bool DownloadWorker::findFrames()
{
    emit findingFrameLimitsChanged(true);
    if (reading::callController(m_controller, &IZVTController::FindFrameRange, m_startTime, m_endTime, &m_startFrame,
                                &m_endFrame)
        != 0)
        return false;
    emit findingFrameLimitsChanged(false);
    return true;
}

bool DownloadWorker::downloadMovie()
{
    using Self = DownloadWorker;
    const auto delegate = hlx::delegate<int(int, uint, uint)>::FromMember<Self, &Self::progress>(this);
    return reading::callController(m_controller, &IZVTController::DownloadMovie, toCString(m_file), delegate,
                                   m_startFrame, m_endFrame)
        == 0;
}

int DownloadWorker::progress(int stage, uint current, uint total)
{
    constexpr int droppedFrames = 1;
    constexpr double most = std::numeric_limits<int>::max();
    if (stage != m_lastStage) {
        m_lastStage = stage;
        emit grabbingDroppedFramesChanged(stage == droppedFrames);
    }
    const double percent = total == 0 ? 0.0 : static_cast<double>(current) / total * 100.0;
    emit progressChanged(static_cast<int>(std::min(percent, most)));
    return m_aborted ? -1 : 0;
}
