#include "platform/hlxfile/MovieWriter.h"

#include <limits>
#include <unistd.h>

#include "platform/hlxreduce/ReduceBytes.h"

namespace hlx::file
{

MovieWriter::MovieWriter(FileHandle file, uint64_t end, std::size_t frameBytes)
    : m_file(std::move(file)), m_end(end), m_frameBytes(frameBytes)
{
}

std::unique_ptr<MovieWriter> MovieWriter::create(const MovieFormat &format, IFileSystem *files, const CString &path,
                                                 const reduce::CReduceObjectArray &objects, bool abated)
{
    ByteWriter description;
    description.number(static_cast<uint8_t>(abated ? 1 : 0));
    reduce::write(description, objects);
    ByteWriter start;
    start.raw(format.magic.data(), format.magic.size());
    start.number(MovieFormat::version);
    start.number(uint32_t{0}); // The number of frames, written by close().
    start.number(static_cast<uint32_t>(description.bytes().size()));
    start.raw(description.bytes().data(), description.bytes().size());

    FileHandle file = openFile(files, path, "wb");
    if (file == nullptr || !writeAt(file, 0, start.bytes().data(), start.bytes().size()))
        return nullptr;
    return std::unique_ptr<MovieWriter>(
        new MovieWriter(std::move(file), start.bytes().size(), objects.format.frameBytes()));
}

MovieWriter::~MovieWriter()
{
    ByteWriter count;
    count.number(m_frames);
    // Removes the rest of a failed write after the last complete frame; otherwise the file would be too long for its
    // number of frames. A failure here cannot be reported; the file then does not open as a movie.
    if (ftruncate(fileno(m_file.get()), static_cast<off_t>(m_end)) == 0)
        writeAt(m_file, MovieFormat::frameCountOffset, count.bytes().data(), count.bytes().size());
}

bool MovieWriter::writeFrame(const void *buffer, unsigned char preset)
{
    if ((buffer == nullptr && m_frameBytes > 0) || m_frames == std::numeric_limits<uint32_t>::max())
        return false;
    ByteWriter head;
    head.number(MovieFormat::frameMark);
    head.number(preset);
    if (!writeAt(m_file, m_end, head.bytes().data(), head.bytes().size())
        || !writeAt(m_file, m_end + MovieFormat::frameHeadSize, buffer, m_frameBytes))
        return false;
    m_end += MovieFormat::frameHeadSize + m_frameBytes;
    ++m_frames;
    return true;
}

} // namespace hlx::file
