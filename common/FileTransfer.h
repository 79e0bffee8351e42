#pragma once

#include "common/CameraAccess.h"
#include "common/TransferWorker.h"
#include "common/publishing.h"
#include "common/setters.h"

#include <QUrl>

/// Runs the transfers of files between the camera and the computer for a model, one at a time. Each transfer is a
/// Worker, a TransferWorker with a thread of its own. Emits the model's signals `progressChanged` and
/// `transferringChanged`, the latter at the start and at the end of each transfer. Calls the model's refresh() after a
/// successful upload. The model has one slot for each signal of the worker, which only calls storeProgress() or
/// finish(). GUI thread only.
template <class Model, class Worker> class FileTransfer
{
public:
    /// `progressChanged` and `finished` are the slots of the model.
    FileTransfer(Model *model, void (Model::*progressChanged)(int), void (Model::*finished)())
        : m_model(model), m_progressChanged(progressChanged), m_finished(finished)
    {
    }
    FileTransfer(const FileTransfer &) = delete;
    FileTransfer &operator=(const FileTransfer &) = delete;

    /// Waits for a running transfer without aborting it.
    ~FileTransfer()
    {
        if (m_worker)
            m_worker->wait();
    }

    int progress() const { return m_progress; } ///< 0 to 100 percent.
    bool running() const { return m_running; }
    bool ok() const { return m_ok; } ///< Whether the last transfer that has ended succeeded.
    bool isUpload() const { return m_isUpload; } ///< Whether the last transfer that was started was an upload.

    /// Starts a transfer between the local file of `url` and the file `name` on the camera. Does nothing while another
    /// transfer runs.
    void start(bool upload, const QString &url, const QString &name)
    {
        if (m_running)
            return;
        announce(m_model, 0, m_progress, &Model::progressChanged);
        m_isUpload = upload;
        announce(m_model, true, m_running, &Model::transferringChanged);
        m_worker = new Worker(m_model, CameraAccess::of(m_model).handle, upload, QUrl(url).toLocalFile(), name);
        QObject::connect(m_worker, &TransferWorker::progressChanged, m_model, m_progressChanged);
        QObject::connect(m_worker, &QThread::finished, m_model, m_finished);
        m_worker->start();
    }

    /// Stops the transfer at its next block. Does nothing if none runs.
    void abort()
    {
        if (m_worker)
            m_worker->abort();
    }

    /// Stores and signals the progress of the running transfer.
    void storeProgress(int percent) { storeOnly(m_model, percent, m_progress, &Model::progressChanged); }

    /// Ends the transfer: takes the worker's result, deletes the worker and signals. Only after a started worker has
    /// finished.
    void finish()
    {
        m_ok = m_worker->ok();
        m_worker->deleteLater();
        m_worker = nullptr;
        // A listener may start the next transfer.
        const bool addedFile = m_ok && m_isUpload;
        announce(m_model, false, m_running, &Model::transferringChanged);
        if (addedFile)
            m_model->refresh();
    }

private:
    Model *m_model;
    void (Model::*m_progressChanged)(int);
    void (Model::*m_finished)();
    TransferWorker *m_worker = nullptr;
    int m_progress = 0;
    bool m_running = false;
    bool m_ok = false;
    bool m_isUpload = false;
};
