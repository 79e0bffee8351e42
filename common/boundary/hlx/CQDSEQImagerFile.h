#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "hlx/IFileSystem.h"

namespace hlx::file
{

class MovieWriter;

/// A converted movie, for writing. It is written under its final name, and at any time it is a movie of the frames that
/// were put; Close() writes their number. One thread at a time.
class CQDSEQImagerFile
{
public:
    CQDSEQImagerFile();
    CQDSEQImagerFile(const CQDSEQImagerFile &) = delete;
    CQDSEQImagerFile &operator=(const CQDSEQImagerFile &) = delete;
    ~CQDSEQImagerFile();

    /// Closes the movie that was open, and begins one with these reduce objects and with frames of their format. If the
    /// objects are those of an open raw movie, it tells the same of the camera. Replaces a file of that name. On
    /// failure a file that could be opened is removed. `reserved` is always 0.
    bool Create(IFileSystem *files, const CString &path, reduce::CReduceObjectArray &objects, unsigned int reserved);

    /// Adds a frame taken with `preset`, in the format passed to Create(). Its number and time are those of the frame
    /// that CRQSImagerFile::GetFrame() has last read with `objects`; without one its number is its place, from 0, and
    /// its time all 0. Returns false, and leaves the movie as it is, if the frame cannot be written, no file is open,
    /// or `buffer` is null (allowed for frames without pixels).
    bool PutFrame(void *buffer, unsigned char preset, reduce::CReduceObjectArray &objects);

    void Close();

private:
    std::unique_ptr<MovieWriter> m_writer;
};

} // namespace hlx::file
