#pragma once

#include "platform/emulator/devices/CorrectionFile.h"
#include "platform/emulator/devices/FactoryCorrections.h"
#include "platform/emulator/devices/FileTransfer.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace emulator
{

class RecordedCorrection;

/// The non-uniformity corrections in a camera: files, nucs/NAME.nuc in the camera's folder, and the FactoryCorrections,
/// which have none. Files that another process adds, changes or removes are seen at the next call; only the free space
/// does not see the new size of a file that is changed in place. Damaged files are in the list, but cannot be read.
///
/// A file replaces the factory correction of its name. A factory correction that this camera has replaced or deleted
/// does not come back; its deletion outlives the process.
///
/// Names are UTF-8 and follow isCorrectionName(), except those of factory corrections, which are as in the profile.
class CorrectionStore : public Device
{
public:
    struct Entry {
        std::string name;
        uint64_t size; ///< Bytes.
        int64_t written; ///< Milliseconds since the epoch, UTC.
    };

    /// Profile key and setting: "capacity" (bytes). The device Corrections must exist before.
    CorrectionStore(Camera &camera, Section &section);

    /// All corrections, ordered by name. Lists the files with the camera's lock released; the thread must hold it
    /// exactly once.
    std::vector<Entry> list() const;
    bool exists(const std::string &name) const;
    /// The functions below refuse a name that does not exist.

    Status findWhetherFactory(const std::string &name, bool &factory) const;
    /// Returns the entry of list() with this name.
    Status fileInfo(const std::string &name, Entry &entry) const;
    /// Returns the description without the numbers of bad pixels that would have to be computed: those of a factory
    /// correction that has not been made yet are 0. Refuses a damaged head and a file of a wrong size.
    Status basicInfo(const std::string &name, CorrectionInfo &info) const;
    /// Returns the whole description. Refuses a correction that basicInfo() refuses or that cannot be made.
    Status info(const std::string &name, CorrectionInfo &info) const;

    /// Reads a correction, or makes it. Empty if it does not exist, is damaged or cannot be made. Takes up to 0.1 s, so
    /// the caller should not hold the camera's lock. Any thread.
    std::optional<Correction> read(const std::string &name) const;

    /// Returns the correction of this name as it is now, also after it has been replaced, renamed or deleted. Opens a
    /// file for this, but does not read it; logs a warning if this fails. While an object for the same contents exists,
    /// it is returned, so that a file is open only once. The thread must hold the camera's lock.
    std::shared_ptr<RecordedCorrection> toRecord(const std::string &name);
    /// The same for the correction that the factory has made. Null if there is none of this name.
    std::shared_ptr<RecordedCorrection> recordFactory(const std::string &name) const;

    /// Writes a correction, in place of one of this name. The window of the file is that of the table. Refused for an
    /// invalid name, for a table that is not complete, and if it does not fit into the free space. Takes up to 0.1 s,
    /// and holds the camera's lock only to check the space and to rename the file; the caller must not hold it. Any
    /// thread.
    Status write(const std::string &name, const CorrectionInfo &info, const image::CorrectionTable &table);

    Status remove(const std::string &name);
    /// Refuses a factory correction, an invalid name, and the name of another correction.
    Status rename(const std::string &oldName, const std::string &newName);

    /// Transfers a local file to the camera. A final ".nuc" of the name is dropped. At the end of the transfer the file
    /// replaces a correction of this name. Refused for an invalid name and that of a factory correction, if the file
    /// does not fit into the free space, and if it is not a correction inside the array of this camera.
    Status upload(std::string name, const QString &localPath, const FileTransfer::Progress &progress);
    /// Transfers a correction to a local file, with the contents that it has at the start. A transfer that ends early
    /// leaves the part that it has written. Refuses a damaged correction.
    Status download(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress) const;

    /// The capacity without the sizes of all corrections, in bytes; 0 if they are larger. Lists the files as list()
    /// does, but only if the folder has changed by something else than remove().
    uint64_t freeSpace() const;
    /// The size of a correction of a window, at most that of a uint32_t. Refuses a side of 0 pixels.
    Status guessSize(uint16_t width, uint16_t height, uint32_t &bytes) const;

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;

private:
    std::string folder() const;
    std::string pathOf(const std::string &name) const;
    QString qtPathOf(const std::string &name) const;
    std::optional<Entry> fileEntry(const std::string &name) const;
    std::optional<CorrectionInfo> headOf(const std::string &name) const;
    bool hasFile(const std::string &name) const { return fileEntry(name).has_value(); }
    bool hasFactory(const std::string &name) const; ///< Also if a file has replaced it.
    /// Whether the correction of this name is the factory's.
    bool isFactory(const std::string &name) const { return hasFactory(name) && !hasFile(name); }
    void forgetFactory(const std::string &name);
    void forEachFile(const std::function<void(Entry)> &visit) const;
    int64_t folderTime() const;
    bool removeFile(const std::string &name);
    uint64_t sizeOfFiles() const;
    uint64_t sizeOfFactory() const;
    /// Returns the free space if the correction of this name is replaced, in bytes.
    uint64_t spaceFor(const std::string &name) const;
    QByteArray contentOf(const std::string &name) const;
    QByteArray madeContentOf(const std::string &name) const;
    Status store(const std::string &name, QByteArrayView content);
    qint64 bytesPerSecond() const;

    /// The identity of the contents of a file. All 0 for a factory correction.
    struct Contents {
        uint64_t device = 0;
        uint64_t inode = 0; ///< No other file gets it while this one is open.
        int64_t written = 0; ///< Nanoseconds since the epoch.
        int64_t size = 0; ///< Bytes.

        bool operator==(const Contents &) const = default;
    };
    struct Recorded {
        Contents contents;
        std::weak_ptr<RecordedCorrection> correction;
    };
    Contents contentsOf(const std::string &name) const;

    /// The files when they were listed last.
    struct Listing {
        int64_t folderTime; ///< Nanoseconds since the epoch.
        uint64_t size; ///< Of all files together, in bytes.
    };

    FactoryCorrections m_factory;
    std::set<std::string> m_deletedFactory;
    uint64_t m_capacity = 536'870'912;
    std::multimap<std::string, Recorded> m_recorded; ///< By name. The objects may be gone.
    mutable std::mutex m_listingMutex; ///< Locked after the camera's lock, if both are.
    mutable std::optional<Listing> m_listing;
};

} // namespace emulator
