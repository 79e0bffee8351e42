#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

/// Reads a movie of either kind. One thread at a time.
class MovieReader
{
public:
    /// Opens a movie and fills `objects` with its reduce objects. Null, with `objects` left alone, if there is no such
    /// file, or if it is foreign, cut short or corrupt.
    static std::unique_ptr<MovieReader> open(const MovieFormat &format, IFileSystem *files, const CString &path,
                                             reduce::CReduceObjectArray &objects);

    unsigned int frames() const { return m_frames; }
    const reduce::SImageFormat &imageFormat() const { return m_imageFormat; }
    bool abated() const { return m_abated; }

    /// False, with both left alone, if the frame can not be read or `buffer` is null though the frame has pixels.
    bool readFrame(unsigned int frame, void *buffer, unsigned char &preset) const;

private:
    MovieReader(FileHandle file, uint64_t firstFrame, unsigned int frames, const reduce::SImageFormat &imageFormat,
                bool abated);

    FileHandle m_file;
    uint64_t m_firstFrame;
    unsigned int m_frames;
    reduce::SImageFormat m_imageFormat;
    bool m_abated;
};

} // namespace hlx::file
