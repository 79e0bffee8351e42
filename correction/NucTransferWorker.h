#pragma once

#include "common/TransferWorker.h"

/// Copies one correction file between the camera and the computer.
class NucTransferWorker : public TransferWorker
{
    Q_OBJECT

public:
    /// `file` is a path on the computer, `name` the name of the correction on the camera.
    NucTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name);

    /// The space left for corrections after an upload, in bytes. Valid if freeSpaceValid(), after the thread has
    /// finished.
    uint64_t freeSpace() const { return m_freeSpace; }
    bool freeSpaceValid() const { return m_freeSpaceValid; }

    /// The SDK calls this after each block, on the thread of the transfer, with the part done and the total in the same
    /// unit. Returns 0 to continue, -1 to stop.
    int progress(unsigned int done, unsigned int total);

protected:
    void run() override;

private:
    uint64_t m_freeSpace = 0;
    bool m_freeSpaceValid = false;
};
