#include "recording/SsdTabModel.h"

#include "common/conversions.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"
#include "recording/DownloadWorker.h"

#include <QFile>
#include <QUrl>

#include "hlx/CDateTime.h"
#include "zvt/zvtsdk.h"

// Part of SsdTabModel: the downloads of the recording in memory or of a movie to a file.

namespace
{

QString localFile(const QString &url) { return QUrl(url).toLocalFile(); }

hlx::CDateTime dateTimeOf(const QString &time) { return hlx::CDateTime(toCString(time)); }

} // namespace

SsdTabModel::~SsdTabModel()
{
    if (!m_downloadWorker)
        return;
    m_downloadWorker->abort();
    m_downloadWorker->wait();
}

// The downloads of the operator

void SsdTabModel::download(const QString &fname) { startDownload(fname, m_startFrame, m_endFrame); }

void SsdTabModel::downloadFrameRange(const QString &fname, uint startFrame, uint endFrame)
{
    startDownload(fname, startFrame, endFrame);
}

void SsdTabModel::downloadTimeRange(const QString &fname, const QString &startTime, const QString &endTime)
{
    startDownload(fname, dateTimeOf(startTime), dateTimeOf(endTime));
}

void SsdTabModel::downloadEntireMovie(const QString &fname) { startDownload(fname, 0U, DownloadWorker::toTheEnd); }

template <class... Range> void SsdTabModel::startDownload(const QString &fname, Range... range)
{
    DoDownload(new DownloadWorker(this, CameraAccess::of(this).controller, localFile(fname), range...));
}

void SsdTabModel::abortDownload()
{
    if (m_downloadWorker)
        m_downloadWorker->abort();
}

/// Starts the worker, or throws it away while another one runs.
void SsdTabModel::DoDownload(DownloadWorker *worker)
{
    if (m_downloading) {
        worker->deleteLater();
        return;
    }
    announce(this, 0, m_progress, &Self::progressChanged);
    announce(this, true, m_downloading, &Self::downloadingChanged);
    storeOnly(this, false, m_findingFrameLimits, &Self::findingFrameLimitsChanged);
    storeOnly(this, false, m_grabbingDroppedFrames, &Self::grabbingDroppedFramesChanged);
    m_downloadWorker = worker;
    QObject::connect(worker, &DownloadWorker::progressChanged, this, &Self::progressChangedDownloadWorker);
    QObject::connect(worker, &DownloadWorker::findingFrameLimitsChanged, this,
                     &Self::findingFrameLimitsChangedDownloadWorker);
    QObject::connect(worker, &DownloadWorker::grabbingDroppedFramesChanged, this,
                     &Self::grabbingDroppedFramesChangedDownloadWorker);
    QObject::connect(worker, &QThread::finished, this, &Self::finishedDownloadWorker);
    worker->start();
}

void SsdTabModel::progressChangedDownloadWorker(int value)
{
    storeOnly(this, value, m_progress, &Self::progressChanged);
}

void SsdTabModel::findingFrameLimitsChangedDownloadWorker(bool value)
{
    announce(this, value, m_findingFrameLimits, &Self::findingFrameLimitsChanged);
}

void SsdTabModel::grabbingDroppedFramesChangedDownloadWorker(bool value)
{
    announce(this, value, m_grabbingDroppedFrames, &Self::grabbingDroppedFramesChanged);
}

void SsdTabModel::finishedDownloadWorker()
{
    m_downloadOk = m_downloadWorker->ok();
    m_downloadWorker->deleteLater();
    m_downloadWorker = nullptr;
    m_autoDownloadRunning = false;
    // A listener may start the next download.
    announce(this, false, m_downloading, &Self::downloadingChanged);
}

// The download that the camera asks for

void SsdTabModel::startAutoDownload()
{
    constexpr uint32_t saveNameSize = 128;
    if (m_autoDownloadRunning)
        return;
    const CameraAccess camera = CameraAccess::of(this);
    if (zvtSsdAutoDownloadStart(camera.handle) != 0)
        return;
    const bool fromDrive = m_recordMode == MODE_TO_DISK;
    Nullable<uint32_t> count;
    if (fromDrive)
        fetch(count, zvtGetSsdMovieCount, camera.handle);
    if (m_filename.isEmpty()) {
        Nullable<QString> name;
        if (!readText<saveNameSize>(name, zvtGetSsdSaveName, camera.handle))
            return;
        m_filename = name.get(); // Required: without its signal.
    }
    if (fromDrive && !count.set())
        return;
    // The newest movie. Without movies, the number is that of none.
    const uint32_t movieIndex = fromDrive ? count.get() - 1 : DownloadWorker::none;
    m_autoDownloadRunning = true;
    const QString file = autoDownloadFile();
    announce(this, m_autoDownloadCount + 1, m_autoDownloadCount, &Self::autoDownloadCountChanged);
    DoDownload(new DownloadWorker(this, camera.controller, file, static_cast<int>(movieIndex), 0,
                                  DownloadWorker::toTheEnd, true));
}

/// The file of the next automatic download. If it exists, a number is added, unless that changes nothing: a URL ends at
/// a "#" or "?" in the name.
QString SsdTabModel::autoDownloadFile() const
{
    const QString count = QString::number(m_autoDownloadCount);
    QString file = localFile(QStringLiteral("%1/%2-%3.rqs").arg(m_autoDownloadDirectoryUrl, m_filename, count));
    for (int copy = 1; QFile::exists(file); ++copy) {
        const QString next = localFile(QStringLiteral("%1/%2-%3 (%4).rqs")
                                           .arg(m_autoDownloadDirectoryUrl, m_filename, count, QString::number(copy)));
        if (next == file)
            break;
        file = next;
    }
    return file;
}
