#pragma once

#include "platform/emulator/image/Palette.h"
#include "platform/emulator/image/Picture.h"
#include "platform/emulator/image/Window.h"

#include <cstdint>
#include <vector>

namespace emulator::image
{

/// The place of an image on a raster, in raster pixels. The image may be larger than the raster, or outside of it.
struct RasterPlace {
    Size raster;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    /// Pixels of the raster are interpolated between those of the image. If false, they have that of the nearest one.
    bool interpolated = false;
};

/// The levels of an image, row by row. An interlaced picture has two fields: the even rows of the raster show the first
/// one, the odd rows the second one.
struct Fields {
    Size size;
    std::vector<uint8_t> first;
    std::vector<uint8_t> second; ///< Empty if all rows show the first one.
};

/// Returns the raster with an image in the colours of a palette, black outside of the image. An image without as many
/// levels as its size says is not drawn. Any thread.
Picture drawRaster(const Fields &fields, const RasterPlace &place, const Palette &palette);

} // namespace emulator::image
