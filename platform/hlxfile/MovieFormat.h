#pragma once

#include <cstdint>
#include <string_view>

namespace hlx::file
{

/// A movie file: a head of fixed size, a description of the length told there, the frames. docs/file-formats.md shows
/// it byte by byte.
struct MovieFormat {
    std::string_view magic; ///< 8 bytes; what tells the kinds apart.

    static constexpr uint32_t version = 1;
    static constexpr std::size_t frameCountOffset = 12;
    static constexpr std::size_t headSize = 20;

    /// Before the pixels of each frame: a mark, so that a damaged frame is seen, and the preset.
    static constexpr uint32_t frameMark = 0x4D415246; // "FRAM"
    static constexpr std::size_t frameHeadSize = 5;
};

/// A raw movie.
constexpr MovieFormat rqsFormat{"HLX-RQS\n"};
/// A converted movie.
constexpr MovieFormat qdseqFormat{"HLX-QDS\n"};

} // namespace hlx::file
