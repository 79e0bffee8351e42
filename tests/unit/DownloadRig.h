#pragma once

#include "tests/unit/SsdRig.h"
#include "tests/unit/download.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

/// The call of a transfer.
inline const QString transferCall = QStringLiteral("controller.DownloadMovie");

/// The SSD tab with a folder for downloads. The camera's answers are scripted: it transfers nothing and writes no file.
struct DownloadRig : Ssd {
    DownloadRig()
    {
        gate().script(transferCall.toStdString(), true);
        gate().script("controller.FindFrameRange", QVariantList{20U, 30U});
        gate().script("zvtGetSsdMovieCount", 5U);
    }

    QString path(const QString &name) const { return folder.filePath(name); }
    QString url(const QString &name) const { return QUrl::fromLocalFile(path(name)).toString(); }

    bool finish() { return finishDownload(model); }
    /// Starts something, waits for the end of its download, and returns the calls of other threads with their
    /// arguments.
    template <class Action> QStringList downloadOf(Action action)
    {
        const size_t since = gate().mark();
        action();
        return finish() ? calls(since, false) : QStringList("does not end");
    }
    /// Starts a download of the whole movie and waits until it calls `call`, where it is held until release("*").
    bool holdDownload(const QString &call = transferCall)
    {
        gate().hold(call.toStdString());
        if (call == transferCall)
            model.downloadEntireMovie(url("held.rqs"));
        else
            model.downloadTimeRange(url("held.rqs"), "001:00:00:00.000000", "002:00:00:00.000000");
        return gate().waitHeld(call.toStdString());
    }
    bool releaseDownload()
    {
        gate().release("*");
        return finish();
    }
    qsizetype workers() const { return model.findChildren<DownloadWorker *>().size(); }

    /// The call of a transfer to a file of the folder, as the log shows it.
    QString transfer(const QString &name, uint first, uint last) const
    {
        return QStringLiteral("%1 \"%2\", delegate, %3, %4")
            .arg(transferCall, path(name), QString::number(first), QString::number(last));
    }
    /// The same for the whole movie.
    QString transfer(const QString &name) const { return transfer(name, 0, DownloadWorker::toTheEnd); }

    QTemporaryDir folder;
};
