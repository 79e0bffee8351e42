// Feeds the readers of movies, cal packs and bad pixel lists with whatever the fuzzer invents. They must neither crash
// nor allocate beyond what the input can pay for, whatever they answer.
#include <cstdlib>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include "hlx/CCalPack.h"
#include "hlx/CRQSImagerFile.h"
#include "platform/hlx/BadPixelFile.h"

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

void readMovie(hlx::IFileSystem &files)
{
    hlx::file::CRQSImagerFile movie;
    if (!movie.Open(&files, "movie.rqs", 0) || movie.nFrames() == 0)
        return;
    std::vector<char> buffer(movie.reduceObjects().format.frameBytes());
    unsigned char preset = 0;
    movie.GetFrame(buffer.data(), 0, preset, movie.reduceObjects());
    movie.GetFrame(buffer.data(), movie.nFrames() - 1, preset, movie.reduceObjects());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    InputAsFile files(data, size);
    readMovie(files);
    hlx::CCalPack().Load(&files, "pack.cal");
    hlx::BadPixelFile::load(&files, "list.bpl");
    return 0;
}
