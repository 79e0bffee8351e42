#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

/// Writes a movie of either kind. The destructor writes the number of frames and closes the file; before that it is not
/// readable as a movie. Not thread-safe.
class MovieWriter
{
public:
    /// Starts a movie; replaces an existing file. Returns null if it cannot be written; a truncated file may remain
    /// then.
    static std::unique_ptr<MovieWriter> create(const MovieFormat &format, IFileSystem *files, const CString &path,
                                               const reduce::CReduceObjectArray &objects, bool abated);

    MovieWriter(const MovieWriter &) = delete;
    MovieWriter &operator=(const MovieWriter &) = delete;
    ~MovieWriter();

    /// Appends a frame. Returns false and leaves the movie unchanged if the frame cannot be written or if `buffer` is
    /// null although the frame has pixels.
    bool writeFrame(const void *buffer, unsigned char preset);

private:
    MovieWriter(FileHandle file, uint64_t end, std::size_t frameBytes);

    FileHandle m_file;
    uint64_t m_end; ///< The offset after the last complete frame.
    std::size_t m_frameBytes;
    uint32_t m_frames = 0;
};

} // namespace hlx::file
