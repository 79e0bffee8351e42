#include "platform/emulator/replaceFile.h"

#include "platform/emulator/Clock.h"

#include <QDateTime>

#include <unistd.h>

namespace emulator
{

FileReplacement::FileReplacement(const QString &path, QByteArrayView content) : m_file(path)
{
    const auto now = QDateTime::fromMSecsSinceEpoch(Clock::now(), Qt::UTC);
    m_written = m_file.open(QIODevice::WriteOnly) && m_file.write(content.data(), content.size()) == content.size()
        && m_file.flush() && m_file.setFileTime(now, QFileDevice::FileModificationTime) && fsync(m_file.handle()) == 0;
}

bool replaceFile(const QString &path, QByteArrayView content) { return FileReplacement(path, content).commit(); }

} // namespace emulator
