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
/// them, since the disk may be slow; all functions have them at once. A file is replaced as a whole. Any thread.
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
    /// Makes the list of a new camera that of the factory, if this has no file.
    void provideFactoryList();
    bool hasFactoryFile() const;

    /// Returns a list, null if it does not exist, is damaged or has more pixels than a frame. Its window begins at 0, 0
    /// if it is read from the file, which does not contain its place.
    Map read(const QString &path) const;

    /// Returns the contents of a file that write() has not written yet. Any path that leads to the file.
    std::optional<QByteArray> unwritten(const QString &path) const;
    bool isWritten() const;

    /// Brings the files up to date. A file that cannot be written is left as it is with a warning, and is tried again
    /// in the next call.
    void write();

private:
    /// A null pointer is the list of a new camera, for which an existing file is left as it is.
    std::optional<Map> unwrittenList(const QString &path) const;
    bool writeFile(const QString &path, const Map &list) const;

    const QString m_folder;
    const std::function<Map()> m_makeFactoryList;
    std::mutex m_writing;
    mutable std::mutex m_mutex; ///< For the lists below.
    std::map<QString, Map> m_unwritten; ///< By path.
};

} // namespace emulator
