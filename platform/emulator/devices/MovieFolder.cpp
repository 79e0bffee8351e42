#include "platform/emulator/devices/MovieFolder.h"

#include "platform/emulator/SetupError.h"
#include "platform/emulator/Storage.h"
#include "platform/emulator/crc32.h"
#include "platform/emulator/devices/Recording.h"
#include "platform/emulator/devices/RecordingRecipe.h"
#include "platform/emulator/devices/StoredCorrection.h"
#include "platform/emulator/replaceFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr auto driveMagic = "zvt-emulated-drive";
constexpr auto movieMagic = "zvt-emulated-movie";
/// Of a file. A recording of a lens that moves all the time takes less than 1 MB a minute.
constexpr qint64 mostMovieBytes = qint64{1024} * 1024 * 1024;
constexpr auto driveFile = "/drive.json";

[[noreturn]] void refuse(const QString &path, const QString &why)
{
    throw SetupError(u"storage %1: %2"_s.arg(path, why).toStdString());
}

/// Throws if it is not a number of 32 bits.
uint32_t numberIn(const QJsonObject &values, const QString &key, const QString &path)
{
    const qint64 number = values.value(key).toInteger(-1);
    if (number < 0 || number > UINT32_MAX)
        refuse(path, u"damaged"_s);
    return static_cast<uint32_t>(number);
}

std::span<const uint8_t> bytesOf(const QByteArray &content)
{
    return {reinterpret_cast<const uint8_t *>(content.constData()), static_cast<size_t>(content.size())};
}

QByteArrayView viewOf(const std::vector<uint8_t> &bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

/// The CRC-32 of all other values of a movie, as compact JSON.
qint64 checksumOf(QJsonObject values)
{
    values.remove(u"checksum"_s);
    return crc32(bytesOf(QJsonDocument(values).toJson(QJsonDocument::Compact)));
}

/// The IRIG time of a frame, for people who read the file.
QString timeOf(const Recording &recording, uint64_t frame)
{
    return QDateTime::fromMSecsSinceEpoch(recording.irigTime(frame) / 1000, Qt::UTC).toString(Qt::ISODateWithMs);
}

/// The numbers of the movies that have a file, in order.
std::vector<uint32_t> numbersIn(const QString &folder)
{
    std::vector<uint32_t> numbers;
    for (QString name : QDir(folder).entryList({u"*.json"_s}, QDir::Files)) {
        name.chop(5);
        const uint32_t number = name.toUInt();
        if (number > 0 && number <= Drive::highestNumber && QString::number(number) == name)
            numbers.push_back(number);
    }
    std::ranges::sort(numbers);
    return numbers;
}

} // namespace

MovieFolder::MovieFolder(QString folder) : m_folder(std::move(folder)), m_recent(std::make_shared<RecentTables>()) { }

Drive::Content MovieFolder::read()
{
    const bool formatsKnown = readDrive();
    std::vector<File> files;
    uint32_t highest = m_lastNumber;
    for (const uint32_t number : numbersIn(m_folder)) {
        try {
            File file = readMovie(number);
            if (formatsKnown && file.formats < m_formats) {
                m_left.push_back(number);
                continue;
            }
            files.push_back(std::move(file));
        } catch (const SetupError &error) {
            qInfo("%s", error.what());
        }
        highest = std::max(highest, number);
    }
    if (!formatsKnown)
        for (const File &file : files)
            m_formats = std::max(m_formats, file.formats);
    Drive::Content content{{}, highest, m_formats};
    for (File &file : files) {
        if (file.formats != m_formats) {
            qInfo("storage %s: from another format of the drive", qUtf8Printable(pathOf(file.movie.number)));
            continue;
        }
        m_files[file.movie.number] = file.movie.recording;
        content.movies.push_back(std::move(file.movie));
    }
    return content;
}

/// Returns false, and reports a damaged file, if it is not known how often the drive was formatted.
bool MovieFolder::readDrive()
{
    const QString path = m_folder + QLatin1String(driveFile);
    if (!QFile::exists(path))
        return false;
    try {
        const QJsonObject values = Storage::readFile(path, driveMagic);
        const uint32_t last = numberIn(values, u"lastNumber"_s, path);
        m_formats = numberIn(values, u"formats"_s, path);
        m_lastNumber = std::min(last, Drive::highestNumber);
        return true;
    } catch (const SetupError &error) {
        qInfo("%s", error.what());
        return false;
    }
}

/// Throws a SetupError if the file is not valid. A file from before the last format has no recording.
MovieFolder::File MovieFolder::readMovie(uint32_t number)
{
    const QString path = pathOf(number);
    const QJsonObject values = Storage::readFile(path, movieMagic, mostMovieBytes);
    const uint32_t formats = numberIn(values, u"formats"_s, path);
    if (formats < m_formats)
        return {{}, formats};
    if (numberIn(values, u"renderer"_s, path) != image::rendererVersion)
        refuse(path, u"its frames were rendered in another way"_s);
    if (numberIn(values, u"layout"_s, path) != RecordingRecipe::layout)
        refuse(path, u"its recipe has another layout"_s);
    if (checksumOf(values) != numberIn(values, u"checksum"_s, path))
        refuse(path, u"damaged"_s);
    const QByteArray content = QByteArray::fromBase64(values.value(u"recipe"_s).toString().toLatin1());
    const std::span<const uint8_t> bytes = bytesOf(content);
    RecordingRecipe recipe{{bytes.begin(), bytes.end()}, {}};
    for (const QJsonValue &hash : values.value(u"corrections"_s).toArray())
        recipe.corrections.push_back(correctionOf(path, hash.toString()));
    File file{{number, values.value(u"name"_s).toString().toStdString(), fromRecipe(recipe)}, formats};
    if (!file.movie.recording || file.movie.name.size() > Drive::longestName)
        refuse(path, u"damaged"_s);
    return file;
}

/// A correction in the folder. It stays readable when its file is removed. An empty hash is a correction that could
/// not be read when it was stored.
std::shared_ptr<RecordedCorrection> MovieFolder::correctionOf(const QString &path, const QString &hash)
{
    for (const Known &known : m_known)
        if (known.hash == hash)
            if (auto correction = known.correction.lock())
                return correction;
    auto correction = std::make_shared<RecordedCorrection>(RecordedCorrection::Read());
    if (hash.isEmpty())
        return correction;
    const auto file = fileOf(hash);
    if (const QString why = file->error(); !why.isEmpty())
        refuse(path, u"its correction %1 cannot be read: %2"_s.arg(hash, why));
    correction->readFrom([file] { return file->read(); });
    m_known.push_back({correction, hash, file});
    return correction;
}

/// The same object for the same file while anybody uses it.
std::shared_ptr<StoredCorrection> MovieFolder::fileOf(const QString &hash)
{
    std::erase_if(m_known, [](const Known &known) { return known.correction.expired(); });
    const auto known = std::ranges::find(m_known, hash, &Known::hash);
    if (known != m_known.end())
        return known->file;
    return std::make_shared<StoredCorrection>(u"%1/%2.nuc"_s.arg(correctionFolder(), hash), hash, m_recent);
}

void MovieFolder::write(const Drive::Content &content, uint64_t changes)
{
    const std::lock_guard lock(m_mutex);
    // A folder that has been removed while the camera exists is not made again.
    if (changes <= m_written || !QDir(m_folder).exists())
        return;
    try {
        const bool formatted = content.formats != m_formats;
        // The old movies do not count from now on, also if their removal is interrupted.
        if (formatted || content.lastNumber != m_lastNumber)
            writeDrive(content);
        if (formatted || !m_left.empty())
            removeFiles(formatted ? numbersIn(m_folder) : m_left);
        m_left.clear();
    } catch (const SetupError &error) {
        warn(error.what());
        return;
    }
    bool complete = true;
    for (const Drive::Movie &movie : content.movies) {
        if (movie.seeded || m_files.contains(movie.number))
            continue;
        try {
            writeMovie(movie);
        } catch (const SetupError &error) {
            complete = false;
            warn(error.what());
        }
    }
    if (complete)
        m_written = changes;
}

/// Warns once of each fault, since each change of a remembered value tries again. The folder may have been removed
/// meanwhile.
void MovieFolder::warn(const std::string &what)
{
    if (QDir(m_folder).exists() && m_warnings.insert(what).second)
        qWarning("%s", what.c_str());
}

void MovieFolder::writeDrive(const Drive::Content &content)
{
    Storage::writeFile(m_folder + QLatin1String(driveFile), driveMagic,
                       {{u"lastNumber"_s, qint64(content.lastNumber)}, {u"formats"_s, qint64(content.formats)}});
    m_lastNumber = content.lastNumber;
    if (content.formats != m_formats)
        m_files.clear();
    m_formats = content.formats;
}

void MovieFolder::writeMovie(const Drive::Movie &movie)
{
    const Recording &recording = *movie.recording;
    const RecordingRecipe recipe = toRecipe(recording);
    QJsonArray corrections;
    for (const auto &correction : recipe.corrections)
        corrections.append(store(correction));
    const auto frames = static_cast<qint64>(recording.frames());
    QJsonObject values{{u"number"_s, qint64(movie.number)},
                       {u"name"_s, QString::fromStdString(movie.name)},
                       {u"width"_s, recording.size().width},
                       {u"height"_s, recording.size().height},
                       {u"frames"_s, frames},
                       {u"formats"_s, qint64(m_formats)},
                       {u"renderer"_s, qint64(image::rendererVersion)},
                       {u"layout"_s, qint64(RecordingRecipe::layout)},
                       {u"corrections"_s, corrections},
                       {u"recipe"_s, QString::fromLatin1(viewOf(recipe.bytes).toByteArray().toBase64())}};
    if (frames > 0) {
        values[u"first"_s] = timeOf(recording, 0);
        values[u"last"_s] = timeOf(recording, recording.frames() - 1);
    }
    values[u"checksum"_s] = checksumOf(values);
    Storage::writeFile(pathOf(movie.number), movieMagic, values);
    m_files[movie.number] = movie.recording;
}

/// Stores a correction unless its file exists and is not damaged. Returns its hash, empty if it cannot be read.
QString MovieFolder::store(const std::shared_ptr<RecordedCorrection> &correction)
{
    for (const Known &known : m_known)
        if (known.correction.lock() == correction)
            return known.hash;
    const auto read = correction->correction();
    if (!read) {
        m_known.push_back({correction, {}, nullptr});
        return {};
    }
    const std::vector<uint8_t> content = toCorrectionFile(read->info, *read->table);
    const QString hash = StoredCorrection::hashOf(viewOf(content));
    const QString path = u"%1/%2.nuc"_s.arg(correctionFolder(), hash);
    QDir(m_folder).mkdir(u"corrections"_s);
    const auto file = fileOf(hash);
    const bool isStored = QFile::exists(path) && file->read();
    if (!isStored && !replaceFile(path, viewOf(content)))
        refuse(path, u"cannot be written"_s);
    correction->readFrom([file] { return file->read(); });
    m_known.push_back({correction, hash, file});
    return hash;
}

/// Removes movies, and all corrections if no other movie has a file. The movies are the last, so that the next start
/// sees a removal that was interrupted.
void MovieFolder::removeFiles(const std::vector<uint32_t> &numbers)
{
    if (numbers == numbersIn(m_folder)) {
        // The recording in the memory, and a download, may still use some.
        for (const Known &known : m_known)
            if (known.file && !known.correction.expired())
                known.file->keepOpen();
        m_known.clear();
        QDir(correctionFolder()).removeRecursively();
    }
    for (const uint32_t number : numbers)
        QFile::remove(pathOf(number));
}

} // namespace emulator
