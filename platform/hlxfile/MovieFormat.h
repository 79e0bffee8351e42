#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "zvt/zvttypes.h"

namespace hlx::file
{

/// The format of a movie file: a head of fixed size, a description whose length is in the head, the checksum of both,
/// and the frames, which are equally long. docs/file-formats.md describes every byte.
struct MovieFormat {
    std::string_view magic; ///< 8 bytes that identify the kind of movie.

    static constexpr uint32_t version = 2;
    static constexpr std::size_t frameCountOffset = 12;
    static constexpr std::size_t headSize = 20;
    static constexpr std::size_t checksumSize = 4;
    /// The number of frames in the head until the movie is closed.
    static constexpr uint32_t notClosed = UINT32_MAX;

    /// Before the pixels of each frame: a mark, by which a place without a frame is recognised, and a MovieFrame.
    static constexpr uint32_t frameMark = 0x4D415246; // "FRAM"
    static constexpr std::size_t frameHeadSize = 21;

    /// The bytes of a frame in the file.
    static constexpr uint64_t frameSize(std::size_t pixelBytes) { return frameHeadSize + pixelBytes + checksumSize; }
};

/// A raw movie.
constexpr MovieFormat rqsFormat{"HLX-RQS\n"};
/// A converted movie.
constexpr MovieFormat qdseqFormat{"HLX-QDS\n"};

/// The values of one frame, beside its pixels.
struct MovieFrame {
    /// Flags.
    static constexpr uint8_t fetchedAgain = 1; ///< Lost in the transfer, and transferred again.
    static constexpr uint8_t saturated = 2;

    uint32_t number = 0; ///< The number that the sensor gave it.
    uint8_t preset = 0; ///< The preset that it was taken with.
    uint8_t flags = 0;
    uint16_t year = 0; ///< The year of `time`; 0 if not known.
    zvtSIRIG time{}; ///< All 0 if not known.
};

/// The camera of a movie, and its settings at the first frame.
struct MovieDescription {
    struct Preset {
        double integrationTime = 0; ///< Milliseconds.
        uint32_t frameWidth = 0; ///< The period of the frames in clocks.
    };

    bool abated = false; ///< The pixels are already corrected: the raw values are lost.
    std::string cameraModel; ///< UTF-8, as is the serial number.
    std::string cameraSerial;
    uint32_t clockHertz = 0; ///< The frequency of the clocks of Preset::frameWidth.
    uint16_t x = 0; ///< The upper left corner of the window, in pixels of the detector.
    uint16_t y = 0;
    std::array<Preset, 4> presets;
};

} // namespace hlx::file
