#pragma once

#include <QString>
#include <QThread>

#include <atomic>
#include <cstdint>

/// Copies one state file between the camera and the computer on its own thread. Created, started, queried and deleted
/// on the GUI thread. The transfer ends without an event loop on the GUI thread.
class CameraStateTransferWorker : public QThread
{
    Q_OBJECT

public:
    /// `file` is a path on the computer, `name` the name of the state on the camera. An upload ignores `name`: the
    /// camera names the state after the file.
    CameraStateTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name);

    /// Whether the transfer succeeded. Valid only after the thread has finished.
    bool ok() const { return m_ok; }

    /// Stops the transfer at its next block. Any thread.
    void abort() { m_aborted = true; }

    /// The SDK calls this after each block, on the thread of the transfer, with the part done and the total in the same
    /// unit. Returns 0 to continue, -1 to stop.
    int progress(unsigned int sent, unsigned int total);

signals:
    void progressChanged(int value); ///< 0 to 100 percent. Emitted on the thread of the transfer.

protected:
    void run() override;

private:
    const uint64_t m_handle;
    const bool m_upload;
    const QString m_file;
    const QString m_name;
    bool m_ok = false;
    std::atomic<bool> m_aborted{false};
};
