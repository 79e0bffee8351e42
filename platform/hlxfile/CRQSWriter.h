#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieWriter;

/// Writes the raw movies that CRQSImagerFile reads, as a camera does when it transfers a recording. Not thread-safe.
class CRQSWriter
{
public:
    CRQSWriter();
    CRQSWriter(const CRQSWriter &) = delete;
    CRQSWriter &operator=(const CRQSWriter &) = delete;
    ~CRQSWriter();

    /// Starts a movie with these reduce objects and frames of their format; replaces an existing file. False if the
    /// file cannot be written.
    bool Create(IFileSystem *files, const CString &path, const reduce::CReduceObjectArray &objects, bool abated);

    /// Appends a frame. Returns false and leaves the movie unchanged if the frame cannot be written, if no file is
    /// open, or if `buffer` is null although the frame has pixels.
    bool PutFrame(const void *buffer, unsigned char preset);

    /// Completes the movie. Before this it is not readable.
    void Close();

private:
    std::unique_ptr<MovieWriter> m_writer;
};

} // namespace hlx::file
