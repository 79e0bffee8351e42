#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>
#include <stdexcept>

#include "hlx/CRCalReduceObject.h"
#include "hlx/CReduceObjectArray.h"
#include "platform/emulator/crc32.h"
#include "platform/hlxfile/CRQSWriter.h"
#include "platform/hlxfile/MovieReader.h"

/// Small movies for tests: frames of 4x3 pixels of 16 bits.
namespace movies
{

using Pixels = std::array<uint16_t, 12>;

constexpr int pixelBytes = 24;
constexpr int frameBytes = 21 + pixelBytes + 4; ///< In the file.
/// In the file, the head and the part of the description before the format of the frames.
constexpr int formatOffset = 20 + 1 + (4 + 7) + (4 + 4) + 4 + 2 * 2 + 4 * 12;

inline Pixels pixels(int frame)
{
    Pixels result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = static_cast<uint16_t>(1000 * frame + static_cast<int>(i));
    return result;
}

/// What a movie tells of a frame. No two fields are equal.
inline hlx::file::MovieFrame frame(int number)
{
    return {.number = static_cast<uint32_t>(70'000 + number),
            .preset = static_cast<uint8_t>(number % 4),
            .flags = 2,
            .year = 2026,
            .time = {300, 23, 59, 58, 999, static_cast<uint16_t>(500 + number)}};
}

/// All fields of a frame, for comparisons.
inline QString text(const hlx::file::MovieFrame &frame)
{
    const zvtSIRIG time = frame.time;
    return QString::asprintf("%u preset %u flags %u year %u day %u %u:%u:%u.%u.%u", frame.number, frame.preset,
                             frame.flags, frame.year, time.day, time.hour, time.minute, time.second, time.millisecond,
                             time.microsecond);
}

inline hlx::file::MovieDescription description(bool abated = false)
{
    return {.abated = abated,
            .cameraModel = "Größe", // 7 bytes.
            .cameraSerial = "ZE-7",
            .clockHertz = 20'000'000,
            .x = 16,
            .y = 8,
            .presets = {{{0.5, 100}, {1.5, 200}, {2.5, 300}, {3.5, 400}}}};
}

/// A calibration and a correction of preset 5.
inline hlx::reduce::CReduceObjectArray objects()
{
    using hlx::reduce::CRCalReduceObject;
    hlx::reduce::CReduceObjectArray objects;
    objects.format = {4, 3, 2};
    auto *calibration
        = dynamic_cast<CRCalReduceObject *>(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, true));
    calibration->flag = 1;
    calibration->calibration.name = "25 mm";
    calibration->calibration.low = 263.15F;
    calibration->calibration.high = 373.15F;
    calibration->calibration.coefficients = {1.0F, -0.5F, 0.25F};
    hlx::CNucFile nuc;
    nuc.name = "ps5";
    nuc.width = 2;
    nuc.height = 1;
    nuc.gains = {0.5F, 1.5F};
    nuc.offsets = {-3.0F, 4.0F};
    objects.GetCorrection(5, true)->CreateFromNucFile(nuc);
    return objects;
}

/// Computes the checksum of head and description of a movie again.
inline void seal(QByteArray &bytes)
{
    const auto end = 20 + qsizetype{qFromLittleEndian<quint32>(bytes.constData() + 16)};
    if (end + 4 > bytes.size())
        return;
    QByteArray head = bytes.left(end);
    head.replace(12, 4, QByteArray(4, '\xff'));
    qToLittleEndian(emulator::crc32({reinterpret_cast<const uint8_t *>(head.constData()), size_t(end)}),
                    bytes.data() + end);
}

/// The offset of the first frame of a movie.
inline int firstFrame(const QByteArray &bytes)
{
    return 24 + static_cast<int>(qFromLittleEndian<quint32>(bytes.constData() + 16));
}

/// A temporary folder.
class Folder
{
public:
    QString filePath(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    hlx::CString path(const char *name) const { return filePath(name).toUtf8().constData(); }
    bool has(const char *name) const { return QFile::exists(filePath(name)); }

    QByteArray content(const char *name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void store(const char *name, const QByteArray &bytes) const
    {
        QFile file(filePath(name));
        file.remove(); // A file that is truncated instead is flushed to the disk, which takes milliseconds.
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("cannot write a test file");
    }

    void writeRaw(const char *name, int frames, bool abated = false,
                  const hlx::reduce::CReduceObjectArray &reduceObjects = objects()) const
    {
        hlx::file::CRQSWriter writer;
        bool ok = writer.Create(hlx::fileSystem(), path(name), reduceObjects, description(abated));
        for (int i = 0; i < frames; ++i)
            ok = ok && writer.PutFrame(static_cast<uint32_t>(i), pixels(i).data(), frame(i));
        if (!ok)
            throw std::runtime_error("cannot write a movie");
    }

    /// Null if the file is no movie.
    std::unique_ptr<hlx::file::MovieReader> open(const hlx::file::MovieFormat &format, const char *name) const
    {
        hlx::reduce::CReduceObjectArray found;
        return hlx::file::MovieReader::open(format, hlx::fileSystem(), path(name), found);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace movies
