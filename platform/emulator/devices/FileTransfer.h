#pragma once

#include "hlx/delegate.h"
#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

class QIODevice;

namespace emulator
{

/// The road on which files travel between a camera and the computer. A file goes in some fifty blocks, which take their
/// time. A transfer ends by itself; it ends early if its progress asks for it and when the camera is disconnected, and
/// leaves nothing behind then.
class FileTransfer : public Device
{
public:
    /// Told (done, total) in bytes after every block, with the camera's lock given back. The total is above 0: a file
    /// without content needs no block. Any answer but 0 ends the transfer with Stopped. May be empty.
    using Progress = hlx::delegate<int(unsigned int, unsigned int)>;

    /// Knows in the profile: "bytesPerSecond".
    FileTransfer(Camera &camera, Section &section);

    /// Brings what a local file holds, at most `largest` bytes, to the camera.
    Status upload(const QString &localPath, qint64 largest, QByteArray &content, const Progress &progress);

    /// Brings the content into a local file, which is written or replaced when all of it has come.
    Status download(const QByteArray &content, const QString &localPath, const Progress &progress);

    /// The same with a file below the camera's folder, "/" being the folder itself. Refuses a path that leads out of
    /// it.
    Status downloadFile(const QString &cameraPath, const QString &localPath, const Progress &progress);

    /// "bytesPerSecond", from 1000 up; a transfer under way keeps the old speed.
    bool set(const QString &name, const QVariant &value) override;

private:
    Status copy(QIODevice &from, QIODevice &to, const Progress &progress);
    Status copyInto(const QString &localPath, QIODevice &from, const Progress &progress);
    Status tell(const Progress &progress, qint64 done, qint64 total);

    qint64 m_bytesPerSecond;
};

} // namespace emulator
