#pragma once

#include "tests/support/CameraRig.h"

#include "recording/DownloadWorker.h"
#include "recording/SsdTabModel.h"

#include <QDeadlineTimer>
#include <QSignalBlocker>
#include <QTest>

/// Waits for the end of the model's download and lets its worker be deleted. Returns false if it does not end.
inline bool finishDownload(const SsdTabModel &model)
{
    const bool ended = QTest::qWaitFor([&model] { return !model.downloading(); }, 60'000);
    CameraRig::settle();
    return ended;
}

/// Waits until the worker on whose thread it is called is aborted. Returns false if it is not.
inline bool waitForAbort()
{
    auto *const worker = qobject_cast<DownloadWorker *>(QThread::currentThread());
    const QSignalBlocker noEvents(worker); // Each would stay in memory until the end.
    const QDeadlineTimer limit(10'000);
    while (worker->progress(0, 1, 2) == 0) {
        if (limit.hasExpired())
            return false;
        QThread::yieldCurrentThread();
    }
    return true;
}
