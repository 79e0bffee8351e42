#include "platform/hlxfile/MovieReader.h"

#include "platform/hlxreduce/ReduceBytes.h"

namespace hlx::file
{

namespace
{

struct Head {
    uint32_t frames = 0;
    std::size_t descriptionSize = 0;
};

std::optional<Head> readHead(const MovieFormat &format, const FileHandle &file)
{
    uint8_t bytes[MovieFormat::headSize];
    if (!readAt(file, 0, bytes, sizeof bytes))
        return std::nullopt;
    ByteReader reader(bytes, sizeof bytes);
    reader.expect(format.magic);
    if (reader.number<uint32_t>() != MovieFormat::version)
        return std::nullopt;
    Head head;
    head.frames = reader.number<uint32_t>();
    head.descriptionSize = reader.number<uint32_t>();
    // Checked against the file size first, so that no memory is allocated for a corrupt length.
    if (head.descriptionSize > largestWholeFile || sizeof bytes + head.descriptionSize > sizeOf(file))
        return std::nullopt;
    return head;
}

} // namespace

MovieReader::MovieReader(FileHandle file, uint64_t firstFrame, unsigned int frames,
                         const reduce::SImageFormat &imageFormat, bool abated)
    : m_file(std::move(file)), m_firstFrame(firstFrame), m_frames(frames), m_imageFormat(imageFormat), m_abated(abated)
{
}

std::unique_ptr<MovieReader> MovieReader::open(const MovieFormat &format, IFileSystem *files, const CString &path,
                                               reduce::CReduceObjectArray &objects)
{
    FileHandle file = openFile(files, path, "rb");
    const std::optional<Head> head = file == nullptr ? std::nullopt : readHead(format, file);
    if (!head)
        return nullptr;
    std::vector<uint8_t> description(head->descriptionSize);
    if (!readAt(file, MovieFormat::headSize, description.data(), description.size()))
        return nullptr;
    ByteReader reader(description);
    const bool abated = reader.number<uint8_t>() != 0;
    reduce::CReduceObjectArray found = reduce::readObjects(reader);
    if (!reader.complete())
        return nullptr;
    // A movie that was never closed has more bytes than its counted frames need; a truncated one has fewer.
    const uint64_t firstFrame = MovieFormat::headSize + description.size();
    const uint64_t frameSize = MovieFormat::frameHeadSize + found.format.frameBytes();
    if (sizeOf(file) != firstFrame + frameSize * head->frames)
        return nullptr;
    objects = std::move(found);
    return std::unique_ptr<MovieReader>(
        new MovieReader(std::move(file), firstFrame, head->frames, objects.format, abated));
}

bool MovieReader::readFrame(unsigned int frame, void *buffer, unsigned char &preset) const
{
    const std::size_t size = m_imageFormat.frameBytes();
    if (frame >= m_frames || (buffer == nullptr && size > 0))
        return false;
    const uint64_t offset = m_firstFrame + uint64_t{frame} * (MovieFormat::frameHeadSize + size);
    // Checks that the frame is complete before anything is written into the caller's buffer.
    if (sizeOf(m_file) < offset + MovieFormat::frameHeadSize + size)
        return false;
    uint8_t head[MovieFormat::frameHeadSize];
    if (!readAt(m_file, offset, head, sizeof head))
        return false;
    ByteReader reader(head, sizeof head);
    if (reader.number<uint32_t>() != MovieFormat::frameMark || !readAt(m_file, offset + sizeof head, buffer, size))
        return false;
    preset = reader.number<uint8_t>();
    return true;
}

} // namespace hlx::file
