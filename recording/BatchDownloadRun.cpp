#include "recording/BatchDownloadRun.h"

#include "common/conversions.h"
#include "common/reading.h"
#include "recording/BatchDownloadModel.h"
#include "recording/DownloadWorker.h"
#include "recording/SsdTabModel.h"
#include "recording/convertToQdseq.h"

#include <QDebug>

#include <exception>
#include <utility>

#include "hlx/IFileSystem.h"
#include "hlx/path.h"
#include "zvt/zvtsdk.h"

using hlx::cam::IZVTController;
using reading::callController;

namespace
{

/// Calls `step` and returns its result. False if it throws, which is logged: the memory did not suffice for this movie,
/// but may suffice for the others.
template <class Step> bool succeeds(Step step)
{
    try {
        return step();
    } catch (const std::exception &error) {
        qWarning("a step of a batch download ended early: %s", error.what());
        return false;
    }
}

} // namespace

BatchDownloadRun::Movie::Movie(BatchDownloadEntry *entry)
    : receiver(entry), index(entry->index()), file(entry->file()), outFile(toCString(entry->outFile())),
      width(entry->width()), height(entry->height()), rangeType(entry->rangeType()), startFrame(entry->startFrame()),
      endFrame(entry->endFrame()), startTime(entry->startTime()), endTime(entry->endTime())
{
}

void BatchDownloadRun::run()
{
    endPlayback();
    qsizetype done = 0;
    for (const Movie &movie : m_order.movies) {
        download(movie);
        ++done;
        m_order.receiver->postProgress(static_cast<double>(done) / static_cast<double>(m_order.movies.size()));
        if (*m_order.cancelled) {
            log(QStringLiteral("Extract canceled"));
            break;
        }
    }
    m_firstWindow.restore(m_camera.controller);
}

// A run starts with an empty memory.
void BatchDownloadRun::endPlayback() const
{
    uint8_t state = 0;
    if (zvtGetSsdState(m_camera.handle, &state) != 0)
        return;
    if (state != SsdTabModel::PLAYING && state != SsdTabModel::PAUSED && state != SsdTabModel::MOVIE_LOADED)
        return;
    zvtSsdStopBuffer(m_camera.handle);
    zvtSsdUnload(m_camera.handle);
}

void BatchDownloadRun::download(const Movie &movie)
{
    m_current = movie.receiver;
    m_order.receiver->postCurrentEntry(movie.receiver);
    movie.receiver->postProgress(0.0);
    movie.receiver->postStatus(BatchDownloadEntry::STATUS_LOADING);
    log(QStringLiteral("Processing movie: %1").arg(movie.file));

    const bool extracted = extract(movie);
    if (!extracted && !*m_order.cancelled)
        log(QStringLiteral("Failed to extract file"));
    movie.receiver->postStatus(extracted ? BatchDownloadEntry::STATUS_SUCCEEDED : BatchDownloadEntry::STATUS_FAILED);
    movie.receiver->postProgress(1.0);
}

bool BatchDownloadRun::extract(const Movie &movie)
{
    if (!succeeds([&] { return prepareWindow(movie); }) || !load(movie))
        return false;
    const bool transferred = transfer(movie);
    if (!unload()) {
        log(QStringLiteral("Failed to unload movie."));
        return false;
    }
    return transferred && (!m_order.convertToQdseq || convert(movie));
}

// The window of a movie stays: the first one comes back at the end of the run.
bool BatchDownloadRun::prepareWindow(const Movie &movie)
{
    CameraWindow present;
    if (callController(m_camera.controller, &IZVTController::GetWindow, &present.x, &present.y, &present.width,
                       &present.height)
        != 0)
        return false;
    return m_firstWindow.fit(m_camera.controller, present, static_cast<uint16_t>(movie.width),
                             static_cast<uint16_t>(movie.height));
}

bool BatchDownloadRun::load(const Movie &movie) const
{
    if (zvtSsdLoadMovie(m_camera.handle, static_cast<uint32_t>(movie.index)) == 0)
        return true;
    log(QStringLiteral("Failed to load movie."));
    return false;
}

bool BatchDownloadRun::transfer(const Movie &movie)
{
    switch (movie.rangeType) {
    case BatchDownloadEntry::RANGE_FRAMES:
        return transferFrames(movie, static_cast<unsigned int>(movie.startFrame),
                              static_cast<unsigned int>(movie.endFrame));
    case BatchDownloadEntry::RANGE_IRIG:
        return transferTimes(movie);
    default:
        return transferFrames(movie, 0, DownloadWorker::toTheEnd);
    }
}

bool BatchDownloadRun::transferTimes(const Movie &movie)
{
    movie.receiver->postStatus(BatchDownloadEntry::STATUS_FINDING_FRAME_RANGE);
    log(QStringLiteral("Scanning movie for frames in irig time range %1 to %2")
            .arg(DateTimeToIrigString(movie.startTime), DateTimeToIrigString(movie.endTime)));
    unsigned int first = 0;
    unsigned int last = 0;
    const auto search = [&] {
        return callController(m_camera.controller, &IZVTController::FindFrameRange, IrigTimeToDateTime(movie.startTime),
                              IrigTimeToDateTime(movie.endTime), &first, &last)
            == 0;
    };
    if (!succeeds(search)) {
        log(QStringLiteral("Failed to find frame range."));
        return false;
    }
    return transferFrames(movie, first, last);
}

bool BatchDownloadRun::transferFrames(const Movie &movie, unsigned int first, unsigned int last)
{
    movie.receiver->postStatus(BatchDownloadEntry::STATUS_DOWNLOADING);
    const auto download = [&] {
        return callController(m_camera.controller, &IZVTController::DownloadMovie, pathOf(movie, ".rqs"), reporter(),
                              first, last)
            == 0;
    };
    if (succeeds(download))
        return true;
    log(QStringLiteral("Failed to download movie."));
    return false;
}

bool BatchDownloadRun::unload() const
{
    return zvtSsdStopBuffer(m_camera.handle) == 0 && zvtSsdUnload(m_camera.handle) == 0;
}

// A conversion that is cancelled ends with success: its shorter movie stays.
bool BatchDownloadRun::convert(const Movie &movie)
{
    movie.receiver->postStatus(BatchDownloadEntry::STATUS_CONVERTING);
    log(QStringLiteral("Converting to qdseq."));
    const hlx::CString rqsFile = pathOf(movie, ".rqs");
    const auto conversion
        = [&] { return ConvertToQdseq(rqsFile, pathOf(movie, ".qdseq"), m_order.calFile, reporter()) != 0; };
    if (!succeeds(conversion)) {
        log(QStringLiteral("Failed to convert to qdseq."));
        return false;
    }
    if (!m_order.keepRqsFile)
        hlx::fileSystem()->DeleteFile(rqsFile);
    return true;
}

hlx::CString BatchDownloadRun::pathOf(const Movie &movie, const char *extension) const
{
    return hlx::path::MakePath(m_order.folder, hlx::path::MakeFilename(movie.outFile, extension), '/');
}

void BatchDownloadRun::log(const QString &line) const { m_order.receiver->postLog(line); }

BatchDownloadRun::Reporter BatchDownloadRun::reporter() const
{
    return Reporter::FromMember<const BatchDownloadRun, &BatchDownloadRun::progress>(this);
}

// The answer to a transfer or a conversion: 0 to continue, -1 to stop.
int BatchDownloadRun::progress(int stage, uint32_t current, uint32_t total) const
{
    constexpr int fetchingAgain = 1;
    if (stage == fetchingAgain)
        m_current->postStatus(BatchDownloadEntry::STATUS_GRABBING_DROPPED_FRAMES);
    m_current->postLatestProgress(total == 0 ? 0.0 : static_cast<double>(current) / total);
    return *m_order.cancelled ? -1 : 0;
}
