#include "platform/emulator/devices/CorrectionStore.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/RecordedSettings.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/fileNames.h"
#include "platform/emulator/replaceFile.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr std::string_view suffix = ".nuc";
const auto deletedKey = u"deletedFactory"_s;
/// No correction that can be read is larger.
constexpr auto maximumFileSize
    = static_cast<qint64>(correctionFileSize(static_cast<uint64_t>(image::Window::maximumPixels), 1));

int64_t nanoseconds(const timespec &time) { return int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec; }

std::span<const uint8_t> bytesOf(const QByteArray &content)
{
    return {reinterpret_cast<const uint8_t *>(content.constData()), static_cast<size_t>(content.size())};
}

} // namespace

CorrectionStore::CorrectionStore(Camera &camera, Section &section) : Device(camera), m_factory(camera)
{
    constexpr double largest = 1e15;
    addSettings(section, {{u"capacity"_s, m_capacity, Between{0, largest}, Profile | OtherClient}});
}

std::vector<CorrectionStore::Entry> CorrectionStore::list() const
{
    std::vector<std::string> factory = m_factory.names();
    std::erase_if(factory, [this](const std::string &name) { return !hasFactory(name); });
    const Camera::Unlocked unlocked(camera());
    std::vector<Entry> entries;
    forEachFile([&entries](Entry entry) { entries.push_back(std::move(entry)); });
    for (const std::string &name : factory)
        if (std::ranges::find(entries, name, &Entry::name) == entries.end())
            entries.push_back({name, m_factory.size(), FactoryCorrections::written});
    std::ranges::sort(entries, {}, &Entry::name);
    return entries;
}

bool CorrectionStore::exists(const std::string &name) const { return hasFile(name) || hasFactory(name); }

Status CorrectionStore::findWhetherFactory(const std::string &name, bool &factory) const
{
    if (!exists(name))
        return Refused;
    factory = isFactory(name);
    return Ok;
}

Status CorrectionStore::fileInfo(const std::string &name, Entry &entry) const
{
    auto found = fileEntry(name);
    if (!found && hasFactory(name))
        found = Entry{name, m_factory.size(), FactoryCorrections::written};
    if (!found)
        return Refused;
    entry = *std::move(found);
    return Ok;
}

Status CorrectionStore::basicInfo(const std::string &name, CorrectionInfo &info) const
{
    const auto found = isFactory(name) ? m_factory.basicInfo(name) : headOf(name);
    if (!found)
        return Refused;
    info = *found;
    return Ok;
}

Status CorrectionStore::info(const std::string &name, CorrectionInfo &info) const
{
    if (!isFactory(name))
        return basicInfo(name, info);
    const Camera::Unlocked unlocked(camera());
    auto made = m_factory.info(name);
    if (!made)
        return Refused;
    info = *std::move(made);
    return Ok;
}

std::optional<Correction> CorrectionStore::read(const std::string &name) const
{
    const auto isMade = [this, &name] {
        const std::lock_guard lock(camera().mutex());
        return isFactory(name);
    };
    return isMade() ? m_factory.make(name) : fromCorrectionFile(bytesOf(contentOf(name)));
}

std::shared_ptr<RecordedCorrection> CorrectionStore::toRecord(const std::string &name)
{
    const bool made = isFactory(name);
    if (!made && !hasFile(name))
        return std::make_shared<RecordedCorrection>([] { return std::optional<Correction>(); });
    const Contents contents = made ? Contents() : contentsOf(name);
    std::erase_if(m_recorded, [](const auto &entry) { return entry.second.correction.expired(); });
    const auto [first, last] = m_recorded.equal_range(name);
    for (auto entry = first; entry != last; ++entry)
        if (auto known = entry->second.correction.lock(); known && entry->second.contents == contents)
            return known;
    std::function<std::optional<Correction>()> read = [this, name] { return m_factory.make(name); };
    if (!made) {
        const auto file = std::make_shared<QFile>(qtPathOf(name));
        if (!file->open(QIODevice::ReadOnly))
            qWarning("cannot open %s: %s", qUtf8Printable(file->fileName()), qUtf8Printable(file->errorString()));
        read = [file]() -> std::optional<Correction> {
            return file->isOpen() ? fromCorrectionFile(bytesOf(file->read(maximumFileSize + 1))) : std::nullopt;
        };
    }
    const auto recorded = std::make_shared<RecordedCorrection>(std::move(read));
    m_recorded.emplace(name, Recorded{contents, recorded});
    return recorded;
}

std::shared_ptr<RecordedCorrection> CorrectionStore::recordFactory(const std::string &name) const
{
    return m_factory.contains(name)
        ? std::make_shared<RecordedCorrection>([this, name] { return m_factory.make(name); })
        : nullptr;
}

Status CorrectionStore::write(const std::string &name, const CorrectionInfo &info, const image::CorrectionTable &table)
{
    if (!isCorrectionName(name) || !table.isComplete())
        return Refused;
    return store(name, toCorrectionFile(info, table));
}

Status CorrectionStore::remove(const std::string &name)
{
    if (!exists(name) || (hasFile(name) && !removeFile(name)))
        return Refused;
    forgetFactory(name);
    return Ok;
}

Status CorrectionStore::rename(const std::string &oldName, const std::string &newName)
{
    const bool allowed = hasFile(oldName) && isCorrectionName(newName) && !exists(newName);
    if (!allowed || !QFile::rename(qtPathOf(oldName), qtPathOf(newName)))
        return Refused;
    forgetFactory(oldName);
    return Ok;
}

Status CorrectionStore::upload(std::string name, const QString &localPath, const FileTransfer::Progress &progress)
{
    if (name.ends_with(suffix))
        name.resize(name.size() - suffix.size());
    const auto space = static_cast<qint64>(spaceFor(name));
    if (!isCorrectionName(name) || isFactory(name))
        return Refused;
    QByteArray content;
    auto *const transfer = camera().device<FileTransfer>();
    const Status status
        = transfer->upload(localPath, std::min(space, maximumFileSize), content, progress, bytesPerSecond());
    if (status != Ok)
        return status;
    const auto array = camera().device<Sensor>()->array().size();
    const Camera::Unlocked unlocked(camera());
    const auto correction = fromCorrectionFile(bytesOf(content));
    const bool valid = correction && image::Window{0, 0, array.width, array.height}.contains(correction->table->window);
    return valid ? store(name, content) : Refused;
}

Status CorrectionStore::download(const std::string &name, const QString &localPath,
                                 const FileTransfer::Progress &progress) const
{
    QByteArray content;
    const bool made = isFactory(name);
    {
        const Camera::Unlocked unlocked(camera());
        content = made ? madeContentOf(name) : contentOf(name);
        if (!fromCorrectionFile(bytesOf(content)))
            return Refused;
    }
    return camera().device<FileTransfer>()->downloadInPlace(content, localPath, progress, bytesPerSecond());
}

uint64_t CorrectionStore::freeSpace() const
{
    uint64_t files = 0;
    {
        const Camera::Unlocked unlocked(camera());
        files = sizeOfFiles();
    }
    return m_capacity - std::min(m_capacity, files + sizeOfFactory());
}

Status CorrectionStore::guessSize(uint16_t width, uint16_t height, uint32_t &bytes) const
{
    if (width == 0 || height == 0)
        return Refused;
    constexpr uint64_t largest = std::numeric_limits<uint32_t>::max();
    bytes = static_cast<uint32_t>(std::min(largest, correctionFileSize(width, height)));
    return Ok;
}

QJsonObject CorrectionStore::save() const
{
    QJsonObject deleted;
    for (const std::string &name : m_deletedFactory)
        deleted[QString::fromStdString(name)] = true;
    return {{deletedKey, deleted}};
}

QStringList CorrectionStore::restore(const QJsonObject &values)
{
    m_deletedFactory.clear();
    for (const QString &name : values.value(deletedKey).toObject().keys())
        if (m_factory.contains(name.toStdString()))
            m_deletedFactory.insert(name.toStdString());
    return {};
}

std::string CorrectionStore::folder() const { return (camera().folder() + u"/nucs/"_s).toStdString(); }

std::string CorrectionStore::pathOf(const std::string &name) const { return folder() + name + std::string(suffix); }

QString CorrectionStore::qtPathOf(const std::string &name) const { return QString::fromStdString(pathOf(name)); }

/// Returns the entry of a file, nothing if there is none. With one call to the system, since there may be thousands of
/// files.
std::optional<CorrectionStore::Entry> CorrectionStore::fileEntry(const std::string &name) const
{
    struct stat status;
    if (!isCorrectionName(name) || stat(pathOf(name).c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const int64_t written = int64_t{status.st_mtim.tv_sec} * 1000 + status.st_mtim.tv_nsec / 1'000'000;
    return Entry{name, static_cast<uint64_t>(status.st_size), written};
}

CorrectionStore::Contents CorrectionStore::contentsOf(const std::string &name) const
{
    struct stat status;
    if (stat(pathOf(name).c_str(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino, nanoseconds(status.st_mtim), status.st_size};
}

bool CorrectionStore::hasFactory(const std::string &name) const
{
    return m_factory.contains(name) && !m_deletedFactory.contains(name);
}

void CorrectionStore::forgetFactory(const std::string &name)
{
    if (hasFactory(name)) {
        m_deletedFactory.insert(name);
        remember();
    }
}

uint64_t CorrectionStore::spaceFor(const std::string &name) const
{
    Entry replaced{{}, 0, 0};
    fileInfo(name, replaced);
    const uint64_t all = sizeOfFiles() + sizeOfFactory();
    return m_capacity - std::min(m_capacity, all - std::min(all, replaced.size));
}

/// Calls `visit` with the entry of each file. Any thread.
void CorrectionStore::forEachFile(const std::function<void(Entry)> &visit) const
{
    std::error_code error;
    using Files = std::filesystem::directory_iterator;
    for (Files file(folder(), error); file != Files(); file.increment(error))
        if (std::string name = file->path().filename(); name.ends_with(suffix))
            if (auto entry = fileEntry(name.substr(0, name.size() - suffix.size())))
                visit(*std::move(entry));
}

/// The time of the last change of the folder in nanoseconds since the epoch; 0 if there is no folder. Any thread.
int64_t CorrectionStore::folderTime() const
{
    struct stat status {
    };
    return stat(folder().c_str(), &status) == 0 ? nanoseconds(status.st_mtim) : 0;
}

/// Removes a file. A listing that is valid remains so, since clients ask for the free space after each removal.
bool CorrectionStore::removeFile(const std::string &name)
{
    const std::lock_guard lock(m_listingMutex);
    const auto entry = fileEntry(name);
    const bool valid = m_listing && m_listing->folderTime == folderTime();
    if (!QFile::remove(qtPathOf(name)))
        return false;
    if (valid && entry)
        m_listing = Listing{folderTime(), m_listing->size - entry->size};
    return true;
}

/// Returns the size of all files together. Lists them only if the folder has changed since the last time: files are
/// always replaced by renames, which change the time of the folder. Any thread.
uint64_t CorrectionStore::sizeOfFiles() const
{
    // Two changes within a tick of the system's clock have the same time.
    constexpr int64_t longestTick = 100'000'000;
    const std::lock_guard lock(m_listingMutex);
    const int64_t changed = folderTime();
    if (m_listing && m_listing->folderTime == changed)
        return m_listing->size;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    uint64_t size = 0;
    forEachFile([&size](const Entry &entry) { size += entry.size; });
    m_listing.reset();
    if (changed != 0 && nanoseconds(now) - changed > longestTick)
        m_listing = Listing{changed, size};
    return size;
}

/// Returns the size of the factory corrections that no file replaces, together.
uint64_t CorrectionStore::sizeOfFactory() const
{
    const auto names = m_factory.names();
    return m_factory.size()
        * static_cast<uint64_t>(std::ranges::count_if(names, [this](const auto &name) { return isFactory(name); }));
}

/// Reads the head of a file. Empty if the file does not exist, if the head is damaged, or if the file has another size
/// than its window needs.
std::optional<CorrectionInfo> CorrectionStore::headOf(const std::string &name) const
{
    const auto entry = fileEntry(name);
    if (!entry)
        return std::nullopt;
    std::array<uint8_t, correctionHeadSize> bytes{};
    std::filebuf file;
    file.pubsetbuf(nullptr, 0);
    if (!file.open(pathOf(name), std::ios::in | std::ios::binary))
        return std::nullopt;
    const auto count = file.sgetn(reinterpret_cast<char *>(bytes.data()), bytes.size());
    auto info = readCorrectionHead(std::span(bytes).first(static_cast<size_t>(count)));
    return info && entry->size == correctionFileSize(info->width, info->height) ? info : std::nullopt;
}

/// Returns the contents of a file, empty if it cannot be read.
QByteArray CorrectionStore::contentOf(const std::string &name) const
{
    QFile file(qtPathOf(name));
    return hasFile(name) && file.open(QIODevice::ReadOnly) ? file.read(maximumFileSize + 1) : QByteArray();
}

/// Returns the contents that the file of a factory correction would have, empty if it cannot be made.
QByteArray CorrectionStore::madeContentOf(const std::string &name) const
{
    const auto correction = m_factory.make(name);
    if (!correction)
        return {};
    return QByteArrayView(toCorrectionFile(correction->info, *correction->table)).toByteArray();
}

/// Called without the camera's lock, which would be held for the time of the disk.
Status CorrectionStore::store(const std::string &name, QByteArrayView content)
{
    const auto fits = [&] { return static_cast<uint64_t>(content.size()) <= spaceFor(name); };
    std::unique_lock lock(camera().mutex());
    if (!fits())
        return Refused;
    lock.unlock();
    FileReplacement file(qtPathOf(name), content);
    lock.lock();
    // Another correction may have taken the space meanwhile.
    if (!fits() || !file.commit())
        return Refused;
    {
        // The folder may have the same time as after a removal just before.
        const std::lock_guard listing(m_listingMutex);
        m_listing.reset();
    }
    forgetFactory(name);
    return Ok;
}

qint64 CorrectionStore::bytesPerSecond() const { return camera().device<Corrections>()->bytesPerSecond(); }

} // namespace emulator
