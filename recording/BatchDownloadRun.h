#pragma once

#include "common/CameraAccess.h"
#include "recording/BatchDownloadEntry.h"
#include "recording/KeptWindow.h"

#include <QList>
#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>

#include "hlx/CString.h"
#include "hlx/delegate.h"

class BatchDownloadModel;

/// The pool task of BatchDownloadModel. It has copies of everything that it reads. The model and the entries are only
/// the receivers of its events: the model waits for the task before it is destroyed, and keeps its entries during the
/// run.
class BatchDownloadRun
{
public:
    /// One movie to download: the values of its entry.
    struct Movie {
        explicit Movie(BatchDownloadEntry *entry);

        BatchDownloadEntry *receiver;
        int index;
        QString file;
        hlx::CString outFile;
        uint width;
        uint height;
        BatchDownloadEntry::ERANGE_TYPE rangeType;
        qulonglong startFrame;
        qulonglong endFrame;
        QDateTime startTime;
        QDateTime endTime;
    };

    /// What a run does.
    struct Order {
        BatchDownloadModel *receiver;
        QList<Movie> movies;
        hlx::CString folder; ///< A local path.
        bool convertToQdseq;
        bool keepRqsFile;
        hlx::CString calFile; ///< A local path; empty to keep the calibrations of the movies.
        std::shared_ptr<const std::atomic<bool>> cancelled;
    };

    BatchDownloadRun(const Order &order, const CameraAccess &camera) : m_order(order), m_camera(camera) { }

    void run();

private:
    using Reporter = hlx::delegate<int(int, unsigned int, unsigned int)>;

    void endPlayback() const;
    void download(const Movie &movie);
    bool extract(const Movie &movie);
    bool prepareWindow(const Movie &movie);
    bool load(const Movie &movie) const;
    bool transfer(const Movie &movie);
    bool transferTimes(const Movie &movie);
    bool transferFrames(const Movie &movie, unsigned int first, unsigned int last);
    bool unload() const;
    bool convert(const Movie &movie);
    hlx::CString pathOf(const Movie &movie, const char *extension) const;
    void log(const QString &line) const;
    Reporter reporter() const;
    int progress(int stage, uint32_t current, uint32_t total) const;

    const Order &m_order;
    const CameraAccess &m_camera;
    /// The movie in work. The model's currentEntry may still be an earlier one: the GUI thread sets it by an event.
    BatchDownloadEntry *m_current = nullptr;
    KeptWindow m_firstWindow; ///< The window from before the first change.
};
