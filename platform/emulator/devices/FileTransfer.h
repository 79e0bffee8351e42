#pragma once

#include "hlx/delegate.h"
#include "platform/emulator/Device.h"

#include <QByteArray>

#include <optional>

class QIODevice;

namespace emulator
{

/// Transfers files between a camera and the computer, in about fifty blocks for a file of usual size. A transfer ends
/// early if its progress delegate stops it or the camera is disconnected. The received part of the file is then
/// dropped, unless a function says otherwise.
class FileTransfer : public Device
{
public:
    /// Called as (done, total) in bytes after every block, with the camera's lock released. Not called for an empty
    /// file. Any result other than 0 ends the transfer with Stopped. May be empty.
    using Progress = hlx::delegate<int(unsigned int, unsigned int)>;

    /// Profile keys and settings: "bytesPerSecond", at least 1000. A running transfer keeps its speed.
    FileTransfer(Camera &camera, Section &section);

    /// Reads a local file into `content`, as a transfer to the camera. Refuses a file of more than `maximumSize` bytes.
    /// `bytesPerSecond` replaces the setting.
    Status upload(const QString &localPath, qint64 maximumSize, QByteArray &content, const Progress &progress,
                  std::optional<qint64> bytesPerSecond = {});

    /// Transfers `content` to a local file, which is written or replaced at the end of the transfer. Refused if the
    /// file cannot be written.
    Status download(const QByteArray &content, const QString &localPath, const Progress &progress);

    /// The same with a speed of its own. The local file grows during the transfer; a transfer that ends early leaves
    /// the part that it has written.
    Status downloadInPlace(const QByteArray &content, const QString &localPath, const Progress &progress,
                           qint64 bytesPerSecond);

    /// The same for a file in the camera's folder. The path is relative to the folder; a path outside of it is refused.
    Status downloadFile(const QString &cameraPath, const QString &localPath, const Progress &progress);

private:
    /// Copies all bytes block by block, lets the time of the transfer pass, and reports the progress.
    Status copy(QIODevice &from, QIODevice &to, const Progress &progress, qint64 bytesPerSecond);
    Status copyInto(const QString &localPath, QIODevice &from, const Progress &progress);
    Status reportProgress(const Progress &progress, qint64 done, qint64 total);

    qint64 m_bytesPerSecond = 1'000'000;
};

} // namespace emulator
