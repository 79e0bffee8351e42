#pragma once

#include <QByteArrayView>
#include <QSaveFile>
#include <QString>

namespace emulator
{

/// New contents of a file. They are written to the disk beside it, so that commit() has only to rename them. Without
/// commit() they are removed.
class FileReplacement
{
public:
    FileReplacement(const QString &path, QByteArrayView content);
    /// Replaces the file. Returns false, and leaves it unchanged, if the contents could not be written. Call it once.
    bool commit() { return m_written && m_file.commit(); }

private:
    QSaveFile m_file;
    bool m_written;
};

/// Replaces a file completely, or leaves it unchanged and returns false. The time of the file is that of Clock.
bool replaceFile(const QString &path, QByteArrayView content);

} // namespace emulator
