#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

class MovieWriter;

/// Writes the raw movies that CRQSImagerFile reads, as a camera does when it transfers a recording. Each frame is
/// complete in the file when PutFrame() returns; a movie that is never closed opens with the frames that it has. Not
/// thread-safe.
class CRQSWriter
{
public:
    CRQSWriter();
    CRQSWriter(const CRQSWriter &) = delete;
    CRQSWriter &operator=(const CRQSWriter &) = delete;
    /// Closes the movie.
    ~CRQSWriter();

    /// Starts a movie with these reduce objects and frames of their format; replaces an existing file. False if the
    /// file cannot be written; a file that could be opened is removed then.
    bool Create(IFileSystem *files, const CString &path, const reduce::CReduceObjectArray &objects,
                const MovieDescription &description);

    /// Writes a frame at its place in the movie, from 0, over the one that is there. The places may come in any order.
    /// Returns false if the frame cannot be written (at a new place the movie stays as it was), if no file is open, or
    /// if `pixels` is null although the frame has pixels.
    bool PutFrame(uint32_t place, const void *pixels, const MovieFrame &frame);

    /// Completes the movie, which then ends with the last place at which a frame was put. A place before it without a
    /// frame counts as a frame that cannot be read: CRQSImagerFile::GetFrame() fails for it.
    void Close();

private:
    std::unique_ptr<MovieWriter> m_writer;
};

} // namespace hlx::file
