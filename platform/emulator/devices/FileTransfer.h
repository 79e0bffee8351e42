#pragma once

#include "hlx/delegate.h"
#include "platform/emulator/Device.h"

class QIODevice;

namespace emulator
{

/// Transfers files between a camera and the computer, in some fifty blocks that take their time. A transfer ends early
/// if its progress delegate asks for it and when the camera is disconnected; nothing of the file is kept then.
class FileTransfer : public Device
{
public:
    /// Called as (done, total) in bytes after every block, with the camera's lock released. The total is above 0: an
    /// empty file needs no block. Any result but 0 ends the transfer with Stopped. May be empty.
    using Progress = hlx::delegate<int(unsigned int, unsigned int)>;

    /// Profile key and setting: "bytesPerSecond", from 1000. A transfer under way keeps the old speed.
    FileTransfer(Camera &camera, Section &section);

    /// Reads a local file of at most `largest` bytes into `content`, as a transfer to the camera.
    Status upload(const QString &localPath, qint64 largest, QByteArray &content, const Progress &progress);

    /// Transfers `content` to a local file, which is written or replaced at the end of the transfer.
    Status download(const QByteArray &content, const QString &localPath, const Progress &progress);

    /// The same with a file in the camera's folder; the path is relative to it. Refuses a path that leads out of it.
    Status downloadFile(const QString &cameraPath, const QString &localPath, const Progress &progress);

private:
    Status copy(QIODevice &from, QIODevice &to, const Progress &progress);
    Status copyInto(const QString &localPath, QIODevice &from, const Progress &progress);
    Status report(const Progress &progress, qint64 done, qint64 total);

    qint64 m_bytesPerSecond = 1'000'000;
};

} // namespace emulator
