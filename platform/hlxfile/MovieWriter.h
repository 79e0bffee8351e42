#pragma once

#include <memory>

#include "hlx/CReduceObjectArray.h"
#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/MovieFormat.h"

namespace hlx::file
{

/// Writes a movie of either kind. The destructor writes the number of frames and closes the file. Not thread-safe.
class MovieWriter
{
public:
    /// Starts a movie; replaces an existing file. Returns null if it cannot be written; a file that could be opened is
    /// removed then.
    static std::unique_ptr<MovieWriter> create(const MovieFormat &format, IFileSystem *files, const CString &path,
                                               const reduce::CReduceObjectArray &objects,
                                               const MovieDescription &description);

    MovieWriter(const MovieWriter &) = delete;
    MovieWriter &operator=(const MovieWriter &) = delete;
    ~MovieWriter();

    /// The number of places of the movie, which ends with the last frame that was written.
    uint32_t frames() const { return m_frames; }

    /// Writes a frame at its place, from 0, over the one that is there. Returns false if it cannot be written or if
    /// `pixels` is null although the frame has pixels; the number of frames then stays.
    bool writeFrame(uint32_t place, const void *pixels, const MovieFrame &frame);

private:
    MovieWriter(FileHandle file, uint64_t firstFrame, std::size_t pixelBytes);

    uint64_t placeOf(uint32_t frame) const { return m_firstFrame + frame * MovieFormat::frameSize(m_pixelBytes); }

    FileHandle m_file;
    uint64_t m_firstFrame; ///< Its offset.
    std::size_t m_pixelBytes; ///< Of one frame.
    uint32_t m_frames = 0;
};

} // namespace hlx::file
