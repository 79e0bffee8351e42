#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieWriter;

/// A converted movie, for writing. It is written under its final name; after Close() it is a valid movie of the frames
/// that were put. One thread at a time.
class CQDSEQImagerFile
{
public:
    CQDSEQImagerFile();
    CQDSEQImagerFile(const CQDSEQImagerFile &) = delete;
    CQDSEQImagerFile &operator=(const CQDSEQImagerFile &) = delete;
    ~CQDSEQImagerFile();

    /// Closes the movie that was open, and begins one with these reduce objects and with frames of their format.
    /// Replaces a file of that name. On failure an empty or truncated file may remain. `reserved` is always 0.
    bool Create(IFileSystem *files, const CString &path, reduce::CReduceObjectArray &objects, unsigned int reserved);

    /// Adds a frame taken with `preset`. Returns false, and leaves the movie as it is, if the frame cannot be written,
    /// no file is open, or `buffer` is null (allowed for frames without pixels). The frame has the format passed to
    /// Create(); `objects` is not used.
    bool PutFrame(void *buffer, unsigned char preset, reduce::CReduceObjectArray &objects);

    void Close();

private:
    std::unique_ptr<MovieWriter> m_writer;
};

} // namespace hlx::file
