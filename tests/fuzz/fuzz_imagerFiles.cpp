// Feeds the readers of movies, cal packs and bad pixel lists with whatever the fuzzer invents, movies also with valid
// checksums. They must neither crash nor allocate beyond what the input can pay for, whatever they answer. Of a movie
// with valid checksums every whole frame must be read, and a frame that cannot be read must leave the buffer alone.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include "hlx/CCalPack.h"
#include "hlx/CRQSImagerFile.h"
#include "platform/emulator/crc32.h"
#include "platform/hlx/BadPixelFile.h"
#include "platform/hlxfile/MovieFormat.h"

namespace
{

// Gives the input as the content of every file.
class InputAsFile : public hlx::IFileSystem
{
public:
    InputAsFile(const uint8_t *data, std::size_t size) : m_file(memfd_create("input", 0))
    {
        if (m_file < 0 || write(m_file, data, size) != static_cast<ssize_t>(size))
            std::abort();
    }
    ~InputAsFile() override { close(m_file); }

    std::FILE *OpenFile(const hlx::CString &, const char *mode) override { return fdopen(dup(m_file), mode); }
    bool DeleteFile(const hlx::CString &) override { return false; }

private:
    int m_file;
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void readMovie(hlx::IFileSystem &files)
{
    hlx::file::CRQSImagerFile movie;
    if (!movie.Open(&files, "movie.rqs", 0) || movie.nFrames() == 0)
        return;
    std::vector<char> buffer(movie.reduceObjects().format.frameBytes(), 'x');
    unsigned char preset = 0;
    for (const unsigned int frame : {0U, movie.nFrames() - 1, movie.nFrames()})
        if (!movie.GetFrame(buffer.data(), frame, preset, movie.reduceObjects()))
            require(std::ranges::all_of(buffer, [](char byte) { return byte == 'x'; }));
        else
            std::ranges::fill(buffer, 'x');
}

void put(std::vector<uint8_t> &bytes, std::size_t offset, uint32_t value)
{
    std::memcpy(bytes.data() + offset, &value, sizeof value);
}

uint32_t numberAt(const std::vector<uint8_t> &bytes, std::size_t offset)
{
    uint32_t value = 0;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

/// Makes head and description of a movie valid. Returns the offset of its first frame; 0 if there is none.
std::size_t sealHead(std::vector<uint8_t> &bytes)
{
    using hlx::file::MovieFormat;
    constexpr std::size_t countOffset = MovieFormat::frameCountOffset;
    if (bytes.size() < MovieFormat::headSize)
        return 0;
    std::ranges::copy(hlx::file::rqsFormat.magic, bytes.begin());
    put(bytes, 8, MovieFormat::version);
    const std::size_t end = MovieFormat::headSize + numberAt(bytes, MovieFormat::headSize - 4);
    if (end + MovieFormat::checksumSize > bytes.size())
        return 0;
    const uint32_t counted = numberAt(bytes, countOffset);
    put(bytes, countOffset, MovieFormat::notClosed);
    put(bytes, end, emulator::crc32(std::span(bytes).first(end)));
    put(bytes, countOffset, counted);
    return end + MovieFormat::checksumSize;
}

void readSealedMovie(const uint8_t *data, std::size_t size)
{
    using hlx::file::MovieFormat;
    std::vector<uint8_t> bytes(data, data + size);
    const std::size_t first = sealHead(bytes);
    hlx::file::CRQSImagerFile movie;
    InputAsFile head(bytes.data(), bytes.size());
    if (first == 0 || !movie.Open(&head, "movie.rqs", 0))
        return;
    const std::size_t pixels = movie.reduceObjects().format.frameBytes();
    const std::size_t frameSize = MovieFormat::frameSize(pixels);
    const std::size_t whole = (size - first) / frameSize;
    for (std::size_t frame = 0; frame < whole; ++frame) {
        const std::size_t offset = first + frame * frameSize;
        put(bytes, offset, MovieFormat::frameMark);
        const std::size_t length = frameSize - MovieFormat::checksumSize;
        put(bytes, offset + length, emulator::crc32(std::span(bytes).subspan(offset, length)));
    }
    InputAsFile sealed(bytes.data(), bytes.size());
    require(movie.Open(&sealed, "movie.rqs", 0) && movie.nFrames() == whole);
    std::vector<char> buffer(whole == 0 ? 0 : pixels);
    unsigned char preset = 0;
    for (unsigned int frame = 0; frame < whole; ++frame)
        require(movie.GetFrame(buffer.data(), frame, preset, movie.reduceObjects()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    InputAsFile files(data, size);
    readMovie(files);
    readSealedMovie(data, size);
    hlx::CCalPack().Load(&files, "pack.cal");
    hlx::BadPixelFile::load(&files, "list.bpl");
    return 0;
}
