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

} // namespace

const QString BadPixelFolder::factoryPath = u"/flashfs/system/factoryConfig/factory.bpl"_s;

BadPixelFolder::BadPixelFolder(QString folder, std::function<Map()> makeFactoryList)
    : m_folder(std::move(folder)), m_makeFactoryList(std::move(makeFactoryList))
{
}

void BadPixelFolder::replace(const QString &path, Map list)
{
    const std::lock_guard lock(m_mutex);
    m_unwritten.insert_or_assign(path, std::move(list));
}

void BadPixelFolder::provideFactoryList()
{
    const std::lock_guard lock(m_mutex);
    m_unwritten.try_emplace(factoryPath);
}

bool BadPixelFolder::hasFactoryFile() const { return QFile::exists(m_folder + factoryPath); }

BadPixelFolder::Map BadPixelFolder::read(const QString &path) const
{
    const auto list = unwrittenList(path);
    if (list && *list)
        return *list;
    return list && !hasFactoryFile() ? m_makeFactoryList() : readFile(m_folder + path);
}

std::optional<QByteArray> BadPixelFolder::unwritten(const QString &path) const
{
    const QString file = QDir::cleanPath(m_folder + u'/' + path);
    if (!file.startsWith(m_folder + u'/'))
        return std::nullopt;
    const QString cleanPath = file.mid(m_folder.size());
    const auto list = unwrittenList(cleanPath);
    if (!list || (!*list && hasFactoryFile()))
        return std::nullopt;
    const Map map = read(cleanPath);
    return map ? std::optional(QByteArrayView(bytesOf(*map)).toByteArray()) : std::nullopt;
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
    for (const auto &[path, list] : lists) {
        lock.unlock();
        const bool written = writeFile(path, list);
        lock.lock();
        // A newer list may have come meanwhile.
        if (const auto entry = m_unwritten.find(path); written && entry->second == list)
            m_unwritten.erase(entry);
    }
}

std::optional<BadPixelFolder::Map> BadPixelFolder::unwrittenList(const QString &path) const
{
    const std::lock_guard lock(m_mutex);
    const auto entry = m_unwritten.find(path);
    return entry == m_unwritten.end() ? std::nullopt : std::optional(entry->second);
}

/// Returns false if the file must be written again.
bool BadPixelFolder::writeFile(const QString &path, const Map &list) const
{
    const QString file = m_folder + path;
    const Map written = list || hasFactoryFile() ? list : m_makeFactoryList();
    // A folder that has been removed while the camera exists is not made again.
    if (!written || !QFile::exists(m_folder))
        return true;
    if (QDir().mkpath(QFileInfo(file).path()) && replaceFile(file, bytesOf(*written)))
        return true;
    qWarning("storage %s: cannot be written", qUtf8Printable(file));
    return false;
}

} // namespace emulator
