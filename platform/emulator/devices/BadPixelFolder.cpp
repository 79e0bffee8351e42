#include "platform/emulator/devices/BadPixelFolder.h"

#include "platform/emulator/image/geometry.h"
#include "platform/emulator/replaceFile.h"
#include "platform/hlx/BadPixelFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>
#include <vector>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

std::vector<uint8_t> bytesOf(const image::BadPixelMap &map)
{
    const auto width = static_cast<size_t>(map.window.width);
    hlx::BadPixelFile file{static_cast<uint16_t>(map.window.width), static_cast<uint16_t>(map.window.height), {}};
    for (size_t i = 0; i < map.isBad.size(); ++i)
        if (map.isBad[i] != 0)
            file.pixels.push_back({static_cast<uint16_t>(i % width), static_cast<uint16_t>(i / width)});
    return file.bytes();
}

BadPixelFolder::Map readFile(const QString &path)
{
    const auto file = hlx::BadPixelFile::load(hlx::fileSystem(), hlx::CString(path.toUtf8().constData()));
    const image::Window window{0, 0, file ? file->width : 0, file ? file->height : 0};
    if (!window.hasFrames())
        return nullptr;
    const auto map = std::make_shared<image::BadPixelMap>(image::BadPixelMap{window});
    for (const auto &pixel : file->pixels)
        map->isBad[image::Place{pixel.x, pixel.y}.indexIn(window.width)] = 1;
    return map;
}

/// Makes the folders of a file in a camera's folder. If this has been removed, also meanwhile, it is not made again.
bool makeFolders(const QString &folder, const QString &path)
{
    QDir place(folder);
    QStringList names = path.split(u'/', Qt::SkipEmptyParts);
    names.removeLast();
    for (const QString &name : std::as_const(names)) {
        place.mkdir(name);
        if (!place.cd(name))
            return false;
    }
    return true;
}

} // namespace

const QString BadPixelFolder::factoryPath = u"/flashfs/system/factoryConfig/factory.bpl"_s;

BadPixelFolder::BadPixelFolder(QString folder, std::function<Map()> makeFactoryList)
    : m_folder(std::move(folder)), m_makeFactoryList(std::move(makeFactoryList))
{
}

void BadPixelFolder::replace(const QString &path, Map list)
{
    const std::lock_guard lock(m_mutex);
    m_unwritten[path].list = std::move(list);
}

void BadPixelFolder::provideFactoryList()
{
    const std::lock_guard lock(m_mutex);
    m_unwritten.try_emplace(factoryPath);
}

bool BadPixelFolder::hasFactoryFile() const { return QFileInfo(m_folder + factoryPath).isFile(); }

BadPixelFolder::Map BadPixelFolder::read(const QString &path) const
{
    const Map list = listWithoutFile(path);
    return list ? list : readFile(m_folder + path);
}

QString BadPixelFolder::cleanPath(const QString &path) const
{
    const QString file = QDir::cleanPath(m_folder + u'/' + path);
    return file.startsWith(m_folder + u'/') ? file.mid(m_folder.size()) : QString();
}

std::optional<QByteArray> BadPixelFolder::unwritten(const QString &path) const
{
    const Map list = listWithoutFile(path);
    return list ? std::optional(QByteArrayView(bytesOf(*list)).toByteArray()) : std::nullopt;
}

bool BadPixelFolder::isWritten() const
{
    const std::lock_guard lock(m_mutex);
    return m_unwritten.empty();
}

void BadPixelFolder::write()
{
    const std::lock_guard writing(m_writing);
    std::unique_lock lock(m_mutex);
    const auto lists = m_unwritten;
    for (const auto &[path, unwritten] : lists) {
        lock.unlock();
        const bool written = writeFile(path, unwritten.list);
        const bool report = !written && !unwritten.isReported && QFile::exists(m_folder);
        if (report)
            qWarning("storage %s%s: cannot be written", qUtf8Printable(m_folder), qUtf8Printable(path));
        lock.lock();
        const auto entry = m_unwritten.find(path);
        // A newer list may have come meanwhile.
        if (written && entry->second.list == unwritten.list)
            m_unwritten.erase(entry);
        else
            entry->second.isReported = !written && (report || unwritten.isReported);
    }
}

/// Returns the list that replace() has given for a file. Null if it has been written, and for the list of a new camera.
BadPixelFolder::Map BadPixelFolder::unwrittenList(const QString &path) const
{
    const std::lock_guard lock(m_mutex);
    const auto entry = m_unwritten.find(path);
    return entry == m_unwritten.end() ? nullptr : entry->second.list;
}

/// Returns a list that has no file; null if the file has the contents.
BadPixelFolder::Map BadPixelFolder::listWithoutFile(const QString &path) const
{
    const Map list = unwrittenList(path);
    return !list && path == factoryPath && !hasFactoryFile() ? m_makeFactoryList() : list;
}

/// Returns false if the file must be written again.
bool BadPixelFolder::writeFile(const QString &path, const Map &list) const
{
    if (!list && hasFactoryFile())
        return true;
    const Map written = list ? list : m_makeFactoryList();
    return !written || (makeFolders(m_folder, path) && replaceFile(m_folder + path, bytesOf(*written)));
}

} // namespace emulator
