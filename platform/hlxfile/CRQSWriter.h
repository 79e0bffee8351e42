#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieWriter;

/// Writes the raw movies that CRQSImagerFile reads: what a camera does when it transfers a recording. One thread at a
/// time.
class CRQSWriter
{
public:
    CRQSWriter();
    CRQSWriter(const CRQSWriter &) = delete;
    CRQSWriter &operator=(const CRQSWriter &) = delete;
    ~CRQSWriter();

    /// Begins a movie with these reduce objects and with frames of their format, in place of a file of that name.
    bool Create(IFileSystem *files, const CString &path, const reduce::CReduceObjectArray &objects, bool abated);

    /// False, with the movie as it was, if the frame can not be written, no file is open, or `buffer` is null though
    /// the frame has pixels.
    bool PutFrame(const void *buffer, unsigned char preset);

    /// Ends the movie, which is not readable before.
    void Close();

private:
    std::unique_ptr<MovieWriter> m_writer;
};

} // namespace hlx::file
