#include "platform/hlxfile/MovieReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

#include "platform/emulator/crc32.h"
#include "platform/hlxreduce/ReduceBytes.h"

namespace hlx::file
{

namespace
{

struct Head {
    uint32_t frames = 0;
    std::size_t descriptionSize = 0;
    uint32_t checksum = 0; ///< Of the head of a movie that is not closed.
};

std::optional<Head> readHead(const MovieFormat &format, const FileHandle &file)
{
    std::array<uint8_t, MovieFormat::headSize> bytes;
    if (!readAt(file, 0, bytes.data(), bytes.size()))
        return std::nullopt;
    ByteReader reader(bytes.data(), bytes.size());
    reader.expect(format.magic);
    if (reader.number<uint32_t>() != MovieFormat::version)
        return std::nullopt;
    Head head;
    head.frames = reader.number<uint32_t>();
    head.descriptionSize = reader.number<uint32_t>();
    // Checked against the file size first, so that no memory is allocated for a corrupt length.
    if (head.descriptionSize > largestWholeFile || bytes.size() + head.descriptionSize > sizeOf(file))
        return std::nullopt;
    std::fill_n(bytes.begin() + MovieFormat::frameCountOffset, sizeof head.frames, uint8_t{0xFF});
    head.checksum = emulator::crc32(bytes);
    return head;
}

/// Whether the file has this checksum at an offset.
bool hasChecksum(const FileHandle &file, uint64_t offset, uint32_t checksum)
{
    std::array<uint8_t, MovieFormat::checksumSize> bytes;
    return readAt(file, offset, bytes.data(), bytes.size())
        && ByteReader(bytes.data(), bytes.size()).number<uint32_t>() == checksum;
}

std::string readText(ByteReader &reader)
{
    const CString text = reader.text();
    return {text.c_str(), static_cast<std::size_t>(text.length())};
}

MovieDescription readDescription(ByteReader &reader)
{
    MovieDescription description;
    description.abated = reader.number<uint8_t>() != 0;
    description.cameraModel = readText(reader);
    description.cameraSerial = readText(reader);
    description.clockHertz = reader.number<uint32_t>();
    description.x = reader.number<uint16_t>();
    description.y = reader.number<uint16_t>();
    for (MovieDescription::Preset &preset : description.presets) {
        preset.integrationTime = std::bit_cast<double>(reader.number<uint64_t>());
        preset.frameWidth = reader.number<uint32_t>();
    }
    return description;
}

/// Fails if the mark is missing.
MovieFrame readFrameHead(ByteReader &reader)
{
    if (reader.number<uint32_t>() != MovieFormat::frameMark)
        reader.fail();
    MovieFrame frame;
    frame.number = reader.number<uint32_t>();
    frame.preset = reader.number<uint8_t>();
    frame.flags = reader.number<uint8_t>();
    frame.year = reader.number<uint16_t>();
    frame.time.day = reader.number<uint16_t>();
    frame.time.hour = reader.number<uint8_t>();
    frame.time.minute = reader.number<uint8_t>();
    frame.time.second = reader.number<uint8_t>();
    frame.time.millisecond = reader.number<uint16_t>();
    frame.time.microsecond = reader.number<uint16_t>();
    return frame;
}

/// Continues the checksum `before` with bytes of the file. Nothing if they cannot be read.
std::optional<uint32_t> checksumOf(const FileHandle &file, uint64_t offset, std::size_t size, uint32_t before)
{
    std::array<uint8_t, std::size_t{1} << 16> piece;
    while (size > 0) {
        const std::size_t count = std::min(size, piece.size());
        if (!readAt(file, offset, piece.data(), count))
            return std::nullopt;
        before = emulator::crc32(std::span(piece).first(count), before);
        offset += count;
        size -= count;
    }
    return before;
}

} // namespace

MovieReader::MovieReader(FileHandle file, uint64_t firstFrame, MovieDescription description,
                         const reduce::SImageFormat &imageFormat)
    : m_file(std::move(file)), m_firstFrame(firstFrame), m_description(std::move(description)),
      m_imageFormat(imageFormat)
{
}

std::unique_ptr<MovieReader> MovieReader::open(const MovieFormat &format, IFileSystem *files, const CString &path,
                                               reduce::CReduceObjectArray &objects)
{
    FileHandle file = openFile(files, path, "rb");
    const std::optional<Head> head = file == nullptr ? std::nullopt : readHead(format, file);
    if (!head)
        return nullptr;
    std::vector<uint8_t> bytes(head->descriptionSize);
    const uint64_t end = MovieFormat::headSize + bytes.size();
    if (!readAt(file, MovieFormat::headSize, bytes.data(), bytes.size())
        || !hasChecksum(file, end, emulator::crc32(bytes, head->checksum)))
        return nullptr;
    ByteReader reader(bytes);
    MovieDescription description = readDescription(reader);
    reduce::CReduceObjectArray found = reduce::readObjects(reader);
    if (!reader.complete())
        return nullptr;
    objects = std::move(found);
    std::unique_ptr<MovieReader> movie(
        new MovieReader(std::move(file), end + MovieFormat::checksumSize, std::move(description), objects.format));
    movie->findEnd(head->frames);
    return movie;
}

void MovieReader::findEnd(uint32_t counted)
{
    const uint64_t size = sizeOf(m_file);
    if (counted != MovieFormat::notClosed && size == placeOf(counted)) {
        m_frames = counted;
        return;
    }
    // The movie was cut off or never closed: the last write may be incomplete.
    const uint64_t whole
        = (std::max(size, m_firstFrame) - m_firstFrame) / MovieFormat::frameSize(m_imageFormat.frameBytes());
    m_frames = static_cast<unsigned int>(std::min<uint64_t>(whole, MovieFormat::notClosed - 1));
    while (m_frames > 0 && !check(m_frames - 1))
        --m_frames;
}

std::optional<MovieFrame> MovieReader::check(unsigned int frame) const
{
    std::array<uint8_t, MovieFormat::frameHeadSize> head;
    const uint64_t offset = placeOf(frame);
    if (!readAt(m_file, offset, head.data(), head.size()))
        return std::nullopt;
    ByteReader reader(head.data(), head.size());
    const MovieFrame info = readFrameHead(reader);
    if (!reader.ok())
        return std::nullopt;
    const std::size_t size = m_imageFormat.frameBytes();
    const auto checksum = checksumOf(m_file, offset + head.size(), size, emulator::crc32(head));
    if (!checksum || !hasChecksum(m_file, offset + head.size() + size, *checksum))
        return std::nullopt;
    return info;
}

bool MovieReader::readFrame(unsigned int frame, void *pixels, MovieFrame &info) const
{
    const std::size_t size = m_imageFormat.frameBytes();
    if (frame >= m_frames || (pixels == nullptr && size > 0))
        return false;
    // The frame is checked in small pieces before anything is written into the caller's buffer: a second buffer of the
    // size of a frame is not needed.
    const std::optional<MovieFrame> found = check(frame);
    if (!found || !readAt(m_file, placeOf(frame) + MovieFormat::frameHeadSize, pixels, size))
        return false;
    info = *found;
    return true;
}

} // namespace hlx::file
