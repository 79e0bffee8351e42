#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

/// Reads a movie of either kind. Not thread-safe.
class MovieReader
{
public:
    /// Opens a movie and fills `objects` with its reduce objects. Returns null and leaves `objects` unchanged if the
    /// file does not exist, has another format, or is truncated or corrupt.
    static std::unique_ptr<MovieReader> open(const MovieFormat &format, IFileSystem *files, const CString &path,
                                             reduce::CReduceObjectArray &objects);

    unsigned int frames() const { return m_frames; }
    const reduce::SImageFormat &imageFormat() const { return m_imageFormat; }
    bool abated() const { return m_abated; }

    /// Reads frame number `frame`, from 0. Returns false and leaves both outputs unchanged if the frame cannot be read
    /// or if `buffer` is null although the frame has pixels.
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
