#pragma once

#include "platform/emulator/devices/CorrectionFile.h"
#include "platform/emulator/devices/presets.h"

#include <QFile>
#include <QString>

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace emulator
{

/// The tables that were read last, so that the presets of one recording need not read theirs for each frame. Any
/// thread.
class RecentTables
{
public:
    void add(std::shared_ptr<const image::CorrectionTable> table);

private:
    std::mutex m_mutex;
    std::array<std::shared_ptr<const image::CorrectionTable>, maximumPresets> m_tables;
    size_t m_oldest = 0;
};

/// A correction in a file of the drive. No other class changes the file. Any thread.
class StoredCorrection
{
public:
    /// `hash` is that of the contents. The file is not opened.
    StoredCorrection(const QString &path, QString hash, std::shared_ptr<RecentTables> recent)
        : m_file(path), m_hash(std::move(hash)), m_recent(std::move(recent))
    {
    }

    /// The hash of the contents of a file.
    static QString hashOf(QByteArrayView content);

    /// Why the file cannot be opened. Empty if it can.
    QString error();
    /// Nothing, and one report, if the file is damaged.
    std::optional<Correction> read();
    /// Lets the file be removed: it is open until this object is gone. If it cannot be opened, read() will fail.
    void keepOpen();

private:
    bool open() { return m_file.isOpen() ? m_file.seek(0) : m_file.open(QIODevice::ReadOnly); }
    void close();

    std::mutex m_mutex; ///< For m_file.
    QFile m_file;
    QString m_hash;
    std::shared_ptr<RecentTables> m_recent;
    bool m_staysOpen = false;
    std::atomic<bool> m_reported{false}; ///< That it is damaged.
};

} // namespace emulator
