#pragma once

#include <cstdint>
#include <string_view>

namespace hlx::file
{

/// The format of a movie file: a header of fixed size, a description whose length is in the header, and the frames.
/// docs/file-formats.md describes every byte.
struct MovieFormat {
    std::string_view magic; ///< 8 bytes that identify the kind of movie.

    static constexpr uint32_t version = 1;
    static constexpr std::size_t frameCountOffset = 12;
    static constexpr std::size_t headSize = 20;

    /// Before the pixels of each frame: a mark, by which a damaged frame is detected, and the preset.
    static constexpr uint32_t frameMark = 0x4D415246; // "FRAM"
    static constexpr std::size_t frameHeadSize = 5;
};

/// A raw movie.
constexpr MovieFormat rqsFormat{"HLX-RQS\n"};
/// A converted movie.
constexpr MovieFormat qdseqFormat{"HLX-QDS\n"};

} // namespace hlx::file
