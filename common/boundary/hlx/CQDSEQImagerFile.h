#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieWriter;

/// A converted movie, for writing. It grows under its final name, and is a valid movie of as many frames as were put
/// once it is closed. One thread at a time.
class CQDSEQImagerFile
{
public:
    CQDSEQImagerFile();
    CQDSEQImagerFile(const CQDSEQImagerFile &) = delete;
    CQDSEQImagerFile &operator=(const CQDSEQImagerFile &) = delete;
    ~CQDSEQImagerFile();

    /// Begins a movie with these reduce objects and with frames of their format, in place of a file of that name.
    /// Closes the one that was open. On failure an empty or cut file may be left. The last argument is always 0.
    bool Create(IFileSystem *files, const CString &path, reduce::CReduceObjectArray &objects, unsigned int reserved);

    /// Adds a frame. False, with the movie as it was, if it can not be written, no file is open, or `buffer` is null; a
    /// null buffer will do for frames of no pixels. The frame has the format given to Create(), whatever the array
    /// says.
    bool PutFrame(void *buffer, unsigned char preset, reduce::CReduceObjectArray &objects);

    void Close();

private:
    std::unique_ptr<MovieWriter> m_writer;
};

} // namespace hlx::file
