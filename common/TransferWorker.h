#pragma once

#include <QString>
#include <QThread>

#include <atomic>
#include <cstdint>

/// Copies one file between the camera and the computer on its own thread: the base of the workers of each kind of file.
/// Created, started, queried and deleted on the GUI thread. A transfer needs no event loop: the GUI thread may wait()
/// for it.
class TransferWorker : public QThread
{
    Q_OBJECT

public:
    /// Whether the transfer succeeded. Valid only after the thread has finished.
    bool ok() const { return m_ok; }

    /// Stops the transfer at its next block. Any thread.
    void abort() { m_aborted = true; }

signals:
    void progressChanged(int value); ///< 0 to 100 percent. Emitted on the thread of the transfer.

protected:
    /// `file` is a path on the computer, `name` the name of the file on the camera.
    TransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name);

    /// The part `done` of `total` in whole percent, rounded down: 0 to 100. 0 if `total` is 0.
    static int percentOf(unsigned int done, unsigned int total);
    /// Signals the progress. Returns the answer to the SDK: 0 to continue, -1 to stop.
    int report(int percent);

    const uint64_t m_handle;
    const bool m_upload;
    const QString m_file;
    const QString m_name;
    bool m_ok = false;

private:
    std::atomic<bool> m_aborted{false};
};
