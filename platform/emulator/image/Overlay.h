#pragma once

#include "platform/emulator/image/Palette.h"

#include <cstdint>
#include <string>
#include <vector>

namespace emulator::image
{

struct Picture;

/// A frame around a part of the picture. It may be partly or wholly outside of the raster.
struct OverlayBox {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    uint8_t color = 0;
};

/// The texts and frames of the overlay. Texts are Latin-1. Colours are numbers of overlayPalette(); 0 draws nothing.
struct OverlayContent {
    std::vector<std::string> lines;
    std::string message; ///< Empty for none.
    std::vector<OverlayBox> boxes;
    uint8_t textColor = 0;
    uint8_t textBackground = 0;
};

/// The colours of overlays: 1 white, 2 red, 3 green, 4 blue, 5 yellow, 6 cyan, 7 magenta, 8 grey, 9 to 15 dark forms of
/// 2 to 8, 16 to 231 a cube of six levels of red, green and blue, 232 to 255 greys. 0 is transparent.
const Palette &overlayPalette();

/// Draws the boxes, in raster coordinates and one pixel wide, and over them the texts. The rows of text begin at (8, 8)
/// and follow each other at a distance of 18 pixels. The last row that fits is that of the message. The lines fill the
/// left column downwards, then the right one, which begins in the middle of the picture; further lines are left out. A
/// text ends with the last character that is wholly inside its column; the left column is as wide as the picture if the
/// right one is empty.
void drawOverlay(const OverlayContent &content, Picture &picture);

} // namespace emulator::image
