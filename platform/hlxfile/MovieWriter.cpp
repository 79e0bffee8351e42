#include "platform/hlxfile/MovieWriter.h"

#include <bit>

#include <unistd.h>

#include "platform/emulator/crc32.h"
#include "platform/hlxreduce/ReduceBytes.h"

namespace hlx::file
{

namespace
{

ByteWriter descriptionBytes(const MovieDescription &description, const reduce::CReduceObjectArray &objects)
{
    ByteWriter writer;
    writer.number(static_cast<uint8_t>(description.abated ? 1 : 0));
    writer.text({description.cameraModel.data(), static_cast<int>(description.cameraModel.size())});
    writer.text({description.cameraSerial.data(), static_cast<int>(description.cameraSerial.size())});
    writer.number(description.clockHertz);
    writer.number(description.x);
    writer.number(description.y);
    for (const MovieDescription::Preset &preset : description.presets) {
        writer.number(std::bit_cast<uint64_t>(preset.integrationTime));
        writer.number(preset.frameWidth);
    }
    reduce::write(writer, objects);
    return writer;
}

ByteWriter headBytes(const MovieFormat &format, std::size_t descriptionSize)
{
    ByteWriter writer;
    writer.raw(format.magic.data(), format.magic.size());
    writer.number(MovieFormat::version);
    writer.number(MovieFormat::notClosed);
    writer.number(static_cast<uint32_t>(descriptionSize));
    return writer;
}

ByteWriter frameHeadBytes(const MovieFrame &frame)
{
    ByteWriter writer;
    writer.number(MovieFormat::frameMark);
    writer.number(frame.number);
    writer.number(frame.preset);
    writer.number(frame.flags);
    writer.number(frame.year);
    writer.number(uint16_t{frame.time.day});
    writer.number(frame.time.hour);
    writer.number(frame.time.minute);
    writer.number(frame.time.second);
    writer.number(uint16_t{frame.time.millisecond});
    writer.number(uint16_t{frame.time.microsecond});
    return writer;
}

ByteWriter numberBytes(uint32_t number)
{
    ByteWriter writer;
    writer.number(number);
    return writer;
}

bool write(const FileHandle &file, uint64_t offset, const ByteWriter &writer)
{
    return writeAt(file, offset, writer.bytes().data(), writer.bytes().size());
}

} // namespace

MovieWriter::MovieWriter(FileHandle file, uint64_t firstFrame, std::size_t pixelBytes)
    : m_file(std::move(file)), m_firstFrame(firstFrame), m_pixelBytes(pixelBytes)
{
}

std::unique_ptr<MovieWriter> MovieWriter::create(const MovieFormat &format, IFileSystem *files, const CString &path,
                                                 const reduce::CReduceObjectArray &objects,
                                                 const MovieDescription &description)
{
    FileHandle file = openFile(files, path, "wb");
    if (file == nullptr)
        return nullptr;
    const ByteWriter text = descriptionBytes(description, objects);
    const ByteWriter head = headBytes(format, text.bytes().size());
    const uint32_t checksum = emulator::crc32(text.bytes(), emulator::crc32(head.bytes()));
    const uint64_t end = MovieFormat::headSize + text.bytes().size();
    if (!write(file, 0, head) || !write(file, MovieFormat::headSize, text)
        || !write(file, end, numberBytes(checksum))) {
        file.reset();
        files->DeleteFile(path);
        return nullptr;
    }
    return std::unique_ptr<MovieWriter>(
        new MovieWriter(std::move(file), end + MovieFormat::checksumSize, objects.format.frameBytes()));
}

MovieWriter::~MovieWriter()
{
    // Removes the rest of a failed write after the last frame. A failure cannot be reported here: the file is then read
    // as a movie that was not closed.
    if (ftruncate(fileno(m_file.get()), static_cast<off_t>(placeOf(m_frames))) == 0)
        write(m_file, MovieFormat::frameCountOffset, numberBytes(m_frames));
}

bool MovieWriter::writeFrame(uint32_t place, const void *pixels, const MovieFrame &frame)
{
    if ((pixels == nullptr && m_pixelBytes > 0) || place >= MovieFormat::notClosed - 1)
        return false;
    const ByteWriter head = frameHeadBytes(frame);
    const uint32_t checksum
        = emulator::crc32({static_cast<const uint8_t *>(pixels), m_pixelBytes}, emulator::crc32(head.bytes()));
    const uint64_t offset = placeOf(place);
    const uint64_t pixelOffset = offset + MovieFormat::frameHeadSize;
    if (!write(m_file, offset, head) || !writeAt(m_file, pixelOffset, pixels, m_pixelBytes)
        || !write(m_file, pixelOffset + m_pixelBytes, numberBytes(checksum)))
        return false;
    if (place >= m_frames)
        m_frames = place + 1;
    return true;
}

} // namespace hlx::file
