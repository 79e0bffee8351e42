#include "platform/emulator/devices/FileTransfer.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/BadPixelLists.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <limits>

namespace emulator
{

namespace
{

constexpr qint64 typicalBlockCount = 50;
constexpr qint64 minimumBlockSize = 64;
constexpr qint64 maximumBlockSize = 65536;
constexpr qint64 maximumTransferSize = std::numeric_limits<unsigned int>::max();

} // namespace

FileTransfer::FileTransfer(Camera &camera, Section &section) : Device(camera)
{
    addSettings(section,
                {{QStringLiteral("bytesPerSecond"), m_bytesPerSecond, Between{1000, 1e9}, Profile | OtherClient}});
}

Status FileTransfer::upload(const QString &localPath, qint64 maximumSize, QByteArray &content, const Progress &progress,
                            std::optional<qint64> bytesPerSecond)
{
    // Only regular files: a read of a device file may never end.
    if (const QFileInfo info(localPath); !info.isFile() || info.size() > maximumSize)
        return Refused;
    QFile file(localPath);
    QBuffer received;
    if (!file.open(QIODevice::ReadOnly) || !received.open(QIODevice::WriteOnly))
        return Refused;
    const Status status = copy(file, received, progress, bytesPerSecond.value_or(m_bytesPerSecond));
    if (status == Ok)
        content = received.data();
    return status;
}

Status FileTransfer::download(const QByteArray &content, const QString &localPath, const Progress &progress)
{
    QBuffer buffer;
    buffer.setData(content);
    return copyInto(localPath, buffer, progress);
}

Status FileTransfer::downloadInPlace(const QByteArray &content, const QString &localPath, const Progress &progress,
                                     qint64 bytesPerSecond)
{
    QBuffer buffer;
    buffer.setData(content);
    QFile file(localPath);
    if (localPath.isEmpty() || !buffer.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly))
        return Refused;
    const Status status = copy(buffer, file, progress, bytesPerSecond);
    return status == Ok && !file.flush() ? Refused : status;
}

Status FileTransfer::downloadFile(const QString &cameraPath, const QString &localPath, const Progress &progress)
{
    if (const auto *const lists = camera().device<BadPixelLists>())
        if (const auto content = lists->unwritten(cameraPath))
            return download(*content, localPath, progress);
    // Canonical paths, so that neither ".." nor links lead out of the folder.
    const QString folder = QFileInfo(camera().folder()).canonicalFilePath() + QLatin1Char('/');
    const QFileInfo source(folder + cameraPath);
    if (!source.isFile() || !source.canonicalFilePath().startsWith(folder))
        return Refused;
    QFile file(source.canonicalFilePath());
    return copyInto(localPath, file, progress);
}

Status FileTransfer::copy(QIODevice &from, QIODevice &to, const Progress &progress, qint64 bytesPerSecond)
{
    const qint64 total = from.size();
    if (total > maximumTransferSize)
        return Refused;
    const qint64 block = std::clamp(total / typicalBlockCount, minimumBlockSize, maximumBlockSize);
    const auto timeFor = [bytesPerSecond](qint64 bytes) { return bytes * 1000 / bytesPerSecond; };
    for (qint64 done = 0; done < total;) {
        const QByteArray bytes = from.read(std::min(block, total - done));
        if (bytes.isEmpty() || to.write(bytes) != bytes.size())
            return Refused;
        // The time is computed from the start of the file, so that the rounding errors of short blocks do not add up.
        const qint64 before = done;
        done += bytes.size();
        if (const Status status = camera().letTimePass(timeFor(done) - timeFor(before)); status != Ok)
            return status;
        if (const Status status = reportProgress(progress, done, total); status != Ok)
            return status;
    }
    return Ok;
}

Status FileTransfer::copyInto(const QString &localPath, QIODevice &from, const Progress &progress)
{
    QSaveFile file(localPath);
    // An empty path would otherwise be refused only at the end of the transfer.
    if (localPath.isEmpty() || !from.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly))
        return Refused;
    if (const Status status = copy(from, file, progress, m_bytesPerSecond); status != Ok)
        return status;
    return file.commit() ? Ok : Refused;
}

Status FileTransfer::reportProgress(const Progress &progress, qint64 done, qint64 total)
{
    int result = 0;
    {
        const Camera::Unlocked unlocked(camera());
        result = progress(static_cast<unsigned int>(done), static_cast<unsigned int>(total));
    }
    if (!camera().connected())
        return NotConnected;
    return result == 0 ? Ok : Stopped;
}

} // namespace emulator
