#pragma once

#include <memory>
#include <optional>

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
    /// file does not exist, has another format or version, or ends before the first frame, or if its head or
    /// description is damaged. A movie that was cut off or never closed ends with its last whole frame.
    static std::unique_ptr<MovieReader> open(const MovieFormat &format, IFileSystem *files, const CString &path,
                                             reduce::CReduceObjectArray &objects);

    unsigned int frames() const { return m_frames; }
    const reduce::SImageFormat &imageFormat() const { return m_imageFormat; }
    const MovieDescription &description() const { return m_description; }

    /// Reads frame number `frame`, from 0. Returns false and leaves both outputs unchanged if the frame cannot be read
    /// or is damaged, or if `pixels` is null although the frame has pixels.
    bool readFrame(unsigned int frame, void *pixels, MovieFrame &info) const;

private:
    MovieReader(FileHandle file, uint64_t firstFrame, MovieDescription description,
                const reduce::SImageFormat &imageFormat);

    uint64_t placeOf(uint64_t frame) const
    {
        return m_firstFrame + frame * MovieFormat::frameSize(m_imageFormat.frameBytes());
    }
    /// Determines the number of frames; `counted` is the one in the head.
    void findEnd(uint32_t counted);
    /// The values of a frame beside its pixels; nothing if its mark or its checksum is wrong.
    std::optional<MovieFrame> check(unsigned int frame) const;

    FileHandle m_file;
    uint64_t m_firstFrame; ///< Its offset.
    unsigned int m_frames = 0;
    MovieDescription m_description;
    reduce::SImageFormat m_imageFormat;
};

} // namespace hlx::file
