#pragma once

#include "tests/unit/BatchRig.h"
#include "tests/unit/MovieController.h"

#include <QSemaphore>

#include <memory>

/// The batch download of an SSD tab whose controller is a MovieController. The SDK calls of a run are scripted.
struct BatchTransfer {
    BatchTransfer()
        : root(std::make_unique<ZvtCameraModel>(controller, nullptr)), batch(*root->ssdTabModel()->batchDownload())
    {
        CameraRig::settle(); // The root reads the general setup.
        rig.gate().script("zvtGetSsdState", SsdTabModel::DISARMED);
        for (const char *name : {"zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload"})
            rig.gate().script(name, true);
    }
    /// A test that has failed may have left a run, for which the model would wait.
    ~BatchTransfer() { proceed.release(1000); }

    BatchDownloadEntry *add(const zvtSSsdMovieInfo &info) { return addTo(batch, info); }
    BatchDownloadEntry *entry(int row) { return qobject_cast<BatchDownloadEntry *>(batch.entries()->at(row)); }
    QStringList lines() { return linesOf(batch); }

    /// Starts a run whose transfers report once, wait for proceed, and report a second time, with the answers of the
    /// model in `answers`. Waits for the first report.
    void startWaiting()
    {
        controller->download = [this](const MovieController::Progress &progress, auto...) {
            answers << progress(0, 1, 4);
            reported.release();
            proceed.acquire();
            answers << progress(0, 2, 4);
            return answers.last() == 0;
        };
        batch.start();
        reported.acquire();
    }

    CameraRig rig;
    hlx::TSharedPtr<MovieController> controller = hlx::TSharedPtr<MovieController>::make(rig.camera().handle());
    QSemaphore reported;
    QSemaphore proceed;
    QList<int> answers; ///< Of the run; to be read when it has ended.
    std::unique_ptr<ZvtCameraModel> root;
    BatchDownloadModel &batch;
};
