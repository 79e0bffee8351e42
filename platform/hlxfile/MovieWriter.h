#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

/// Writes a movie of either kind. Its destructor closes it: only then the file tells its number of frames and is a
/// movie. One thread at a time.
class MovieWriter
{
public:
    /// Begins a movie in place of a file of that name. Null if it can not be written; a cut file may be left then.
    static std::unique_ptr<MovieWriter> create(const MovieFormat &format, IFileSystem *files, const CString &path,
                                               const reduce::CReduceObjectArray &objects, bool abated);

    MovieWriter(const MovieWriter &) = delete;
    MovieWriter &operator=(const MovieWriter &) = delete;
    ~MovieWriter();

    /// False, with the movie as it was, if the frame can not be written or `buffer` is null though the frame has
    /// pixels.
    bool writeFrame(const void *buffer, unsigned char preset);

private:
    MovieWriter(FileHandle file, uint64_t end, std::size_t frameBytes);

    FileHandle m_file;
    uint64_t m_end; ///< Behind the last whole frame.
    std::size_t m_frameBytes;
    uint32_t m_frames = 0;
};

} // namespace hlx::file
