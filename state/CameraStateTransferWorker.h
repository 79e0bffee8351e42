#pragma once

#include "common/TransferWorker.h"

/// Copies one state file between the camera and the computer.
class CameraStateTransferWorker : public TransferWorker
{
    Q_OBJECT

public:
    /// `file` is a path on the computer, `name` the name of the state on the camera. An upload ignores `name`: the
    /// camera names the state after the file.
    CameraStateTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name);

    /// The SDK calls this after each block, on the thread of the transfer, with the part done and the total in the same
    /// unit. Returns 0 to continue, -1 to stop.
    int progress(unsigned int sent, unsigned int total);

protected:
    void run() override;
};
