#pragma once

#include "platform/hlx/RasterPlacement.h"

#include <QList>

#include <cstdint>

namespace emulator
{

/// A format of the video output.
struct VideoFormat {
    hlx::RasterPlacement::Size raster; ///< Pixels.
    double rate; ///< Frames of the video per second.
    bool analog; ///< Analog standard definition: has brightness and contrast.
    bool interlaced; ///< A frame has two fields.

    /// The numbers of the formats that the SDK names.
    static const QList<double> &known();

    /// The format with a number of the SDK. Any other number counts as NTSC without its brightness and contrast, and is
    /// not interlaced.
    static VideoFormat of(uint8_t number);
};

} // namespace emulator
