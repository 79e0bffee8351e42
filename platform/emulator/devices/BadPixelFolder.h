#pragma once

#include "platform/emulator/image/BadPixelMap.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace emulator
{

/// The files of the lists of bad pixels in a camera's folder. write() writes new contents later than replace() takes
/// them, since the disk may be slow; all functions have them at once, also if they can never be written. A file is
/// replaced as a whole. A folder that has been removed is not made again: the lists wait until it is there. Any thread.
class BadPixelFolder
{
public:
    using Map = std::shared_ptr<const image::BadPixelMap>;

    static const QString factoryPath;

    /// `makeFactoryList` makes the list of a new camera. It may be called on any thread, and return null if there is
    /// none.
    BadPixelFolder(QString folder, std::function<Map()> makeFactoryList);

    // Paths are those on the camera, as "/Temp/ps0.bpl".

    /// Makes a list the contents of a file.
    void replace(const QString &path, Map list);
    /// After this, write() writes the factory's list of a new camera if the factory's list has no file.
    void provideFactoryList();
    bool hasFactoryFile() const;

    /// Returns a list, null if it does not exist, is damaged or has more pixels than a frame. A factory's list that
    /// does not exist is that of a new camera. The window of a list begins at 0, 0 if it is read from the file, which
    /// does not contain its place.
    Map read(const QString &path) const;

    /// Returns another spelling of a path, with "." and ".." or without the first slash, in the form above. Empty if it
    /// leads out of the folder. Looks at no file, so it does not know links, and accepts ".." after a missing folder.
    QString cleanPath(const QString &path) const;

    /// Returns the contents of a file that write() has not written yet.
    std::optional<QByteArray> unwritten(const QString &path) const;
    bool isWritten() const;

    /// Brings the files up to date. A file that cannot be written is left as it is, and is tried again in the next
    /// call. There is one warning for each path, and another one only if it has been written in between.
    void write();

private:
    struct Unwritten {
        Map list; ///< Null means the list of a new camera, which does not replace an existing file.
        bool isReported = false; ///< There was a warning.
    };

    Map unwrittenList(const QString &path) const;
    Map listWithoutFile(const QString &path) const;
    bool writeFile(const QString &path, const Map &list) const;

    const QString m_folder;
    const std::function<Map()> m_makeFactoryList;
    std::mutex m_writing;
    mutable std::mutex m_mutex; ///< For the member below.
    std::map<QString, Unwritten> m_unwritten; ///< By path.
};

} // namespace emulator
