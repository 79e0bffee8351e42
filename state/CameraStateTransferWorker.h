#pragma once

#include <QString>
#include <QThread>

#include <atomic>
#include <cstdint>

/// Copies one state file between the camera and the computer on a thread of its own. It is made, started, asked and
/// deleted on the GUI thread; it needs no event loop there to come to its end.
class CameraStateTransferWorker : public QThread
{
    Q_OBJECT

public:
    /// `file` is a path on the computer; `name` is that of the state on the camera, of which an upload takes no notice:
    /// there the file names the state.
    CameraStateTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name);

    /// Whether the transfer succeeded. To be asked when the thread has finished.
    bool ok() const { return m_ok; }

    /// Stops the transfer at its next block. Any thread.
    void abort() { m_aborted = true; }

    /// What the SDK calls for each block, on the thread of the transfer; anything but 0 stops it.
    int progress(unsigned int sent, unsigned int total);

signals:
    void progressChanged(int value); ///< Percent. Emitted on the thread of the transfer.

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
