#pragma once

#include "tests/unit/TabRig.h"

#include "recording/BatchDownloadEntry.h"
#include "recording/BatchDownloadModel.h"
#include "recording/SsdMovieFileInfoModel.h"
#include "recording/SsdTabModel.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstring>

/// A movie on the drive, as the camera describes it. The time of its first frame is 12:30:15.250 of day 60, that of its
/// last frame 200 ms later.
inline zvtSSsdMovieInfo driveMovie(uint32_t number, const QByteArray &name = "Kiln", uint32_t frames = 100,
                                   uint16_t width = 640, uint16_t height = 512)
{
    zvtSSsdMovieInfo info{};
    std::memcpy(info.name, name.constData(), std::min<size_t>(name.size(), sizeof(info.name)));
    info.number = number;
    info.width = width;
    info.height = static_cast<uint16_t>(height + 1);
    info.numFrames = frames;
    info.startTime = {60, 12, 30, 15, 250, 900};
    info.endTime = {60, 12, 30, 15, 450, 900};
    return info;
}

/// Adds a movie. Its place in the list of the drive is 10 more than its row in the batch.
inline BatchDownloadEntry *addTo(BatchDownloadModel &batch, const zvtSSsdMovieInfo &info)
{
    constexpr int firstPlace = 10;
    SsdMovieFileInfoModel movie(batch.entries()->size() + firstPlace, info, nullptr);
    return batch.add(&movie);
}

/// The log of the last run.
inline QStringList linesOf(BatchDownloadModel &batch)
{
    QStringList all;
    for (int row = 0; row < batch.log()->rowCount(); ++row)
        all << batch.log()->data(batch.log()->index(row), Qt::DisplayRole).toString();
    return all;
}

/// The batch download of the SSD tab, with helpers for tests.
struct Batch : TabRig<SsdTabModel> {
    explicit Batch(const QString &profile = QStringLiteral("everything"))
        : TabRig(profile, &ZvtCameraModel::ssdTabModel)
    {
        CameraRig::settle(); // The root reads the general setup.
        batch.setOutputDir(folder.path());
        QObject::connect(batch.log(), &QAbstractItemModel::rowsInserted, &context,
                         [this](const QModelIndex &, int row) { journal << "log " + lines().at(row); });
        QObject::connect(&batch, &BatchDownloadModel::currentEntryChanged, &context, [this] {
            journal << QStringLiteral("current %1").arg(batch.entries()->indexOf(batch.currentEntry()));
        });
        QObject::connect(&batch, &BatchDownloadModel::progressChanged, &context,
                         [this] { journal << QStringLiteral("progress %1").arg(batch.progress()); });
    }

    /// A test that has failed may have left a held run, for which the model would wait.
    ~Batch() { gate().release("*"); }

    /// The calls of a run succeed, and the camera need not have the movies. The window is a real one.
    void scriptMovies()
    {
        gate().script("zvtGetSsdState", SsdTabModel::DISARMED);
        for (const char *name : {"zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload", "controller.DownloadMovie"})
            gate().script(name, true);
        gate().script("controller.FindFrameRange", QVariantList{3U, 7U});
        gate().script("controller.GetWindow", QVariantList{0, 0, 640, 512});
    }

    BatchDownloadEntry *add(const zvtSSsdMovieInfo &info) { return addTo(batch, info); }

    /// Adds a movie and records its status and its progress, with its row, in the journal.
    BatchDownloadEntry *addWatched(const zvtSSsdMovieInfo &info)
    {
        const int row = batch.entries()->size();
        BatchDownloadEntry *entry = add(info);
        QObject::connect(entry, &BatchDownloadEntry::statusChanged, &context, [this, entry, row] {
            journal << QStringLiteral("%1 status %2").arg(row).arg(entry->status());
        });
        QObject::connect(entry, &BatchDownloadEntry::progressChanged, &context, [this, entry, row] {
            journal << QStringLiteral("%1 progress %2").arg(row).arg(entry->progress());
        });
        return entry;
    }

    BatchDownloadEntry *entry(int row) { return qobject_cast<BatchDownloadEntry *>(batch.entries()->at(row)); }

    /// Downloads all entries. Returns the calls of the run with their arguments.
    QStringList run()
    {
        const size_t since = gate().mark();
        batch.start();
        CameraRig::settle();
        return calls(since, false);
    }

    /// Starts a run and waits until it makes this call, where it is held.
    bool runUntil(const char *call)
    {
        gate().hold(call);
        batch.start();
        return gate().waitHeld(call);
    }

    /// Lets a held run go on, and waits for its end.
    void finishRun()
    {
        gate().release("*");
        CameraRig::settle();
    }

    QStringList lines() { return linesOf(batch); }

    QList<int> statuses()
    {
        QList<int> all;
        for (int row = 0; row < batch.entries()->size(); ++row)
            all << entry(row)->status();
        return all;
    }

    QString pathOf(const QString &name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    BatchDownloadModel &batch = *model.batchDownload();
    QStringList journal; ///< What the model, its log and its watched entries have signalled.
    QObject context; ///< Ends the connections before the journal is destroyed.
};
