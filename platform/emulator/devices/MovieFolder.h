#pragma once

#include "platform/emulator/devices/Drive.h"

#include <QFile>
#include <QJsonObject>
#include <QString>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace emulator
{

class RecentTables;
class RecordedCorrection;
class StoredCorrection;

/// The files of the movies on a drive, which outlive the process: NUMBER.json for each movie, the corrections that
/// movies use in corrections/, and drive.json with the last number. docs/emulated-camera.md describes them. Movies of
/// the profile have no files.
class MovieFolder
{
public:
    explicit MovieFolder(QString folder);

    /// Returns the movies in the folder. A file that is damaged, or was written by another program or with another
    /// renderer, is left out and reported; its number is not used again. If drive.json cannot be read, the drive is
    /// that of the last format among the movies. Reads no corrections. Call it before write().
    Drive::Content read();
    /// Whether a movie has a file, also one that read() left out.
    bool hasFile(uint32_t number) const { return QFile::exists(pathOf(number)); }

    /// Brings the files up to date with a content of the drive after this number of changes. A content with fewer
    /// changes than one before is ignored. Logs a warning once for each file that cannot be written; the next call
    /// tries again. From then on the corrections of the movies are read from their files, and not kept. Takes up to
    /// 0.2 s for each new correction. Any thread, without the camera's lock.
    void write(const Drive::Content &content, uint64_t changes);
    /// The number of changes whose content is in the files.
    uint64_t written() const { return m_written; }

private:
    struct File {
        Drive::Movie movie;
        uint32_t formats = 0; ///< How often the drive had been formatted.
    };
    struct Known {
        std::weak_ptr<RecordedCorrection> correction;
        QString hash; ///< Empty if it cannot be read.
        std::shared_ptr<StoredCorrection> file; ///< Null without a hash.
    };

    QString pathOf(uint32_t number) const
    {
        return QStringLiteral("%1/%2.json").arg(m_folder, QString::number(number));
    }
    QString correctionFolder() const { return m_folder + QStringLiteral("/corrections"); }
    bool readDrive();
    File readMovie(uint32_t number);
    std::shared_ptr<RecordedCorrection> correctionOf(const QString &path, const QString &hash);
    std::shared_ptr<StoredCorrection> fileOf(const QString &hash);
    void writeDrive(const Drive::Content &content);
    void writeMovie(const Drive::Movie &movie);
    void warn(const std::string &what);
    QString store(const std::shared_ptr<RecordedCorrection> &correction);
    void removeFiles(const std::vector<uint32_t> &numbers);

    QString m_folder;
    std::mutex m_mutex; ///< For the following.
    std::atomic<uint64_t> m_written{0};
    uint32_t m_lastNumber = 0; ///< In drive.json, like m_formats.
    uint32_t m_formats = 0;
    std::vector<uint32_t> m_left; ///< Files of an interrupted format.
    std::map<uint32_t, std::shared_ptr<const Recording>> m_files; ///< By their numbers.
    std::vector<Known> m_known; ///< Corrections that are in files. Some may be gone.
    std::shared_ptr<RecentTables> m_recent;
    std::set<std::string> m_warnings; ///< Given already.
};

} // namespace emulator
