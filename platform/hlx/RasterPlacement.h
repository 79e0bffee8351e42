#pragma once

#include <algorithm>
#include <cmath>

namespace hlx
{

/// Where the image of a camera is on the raster of its video output. Used by the emulated camera and by the editor that
/// shows it, so that both place the image equally. Any thread.
struct RasterPlacement {
    /// The camera's numbers of the positions.
    enum Position { SameAsFpa = 0, Centered = 1, Free = 2 };

    struct Size {
        int width = 0;
        int height = 0;
    };
    struct Point {
        int x = 0;
        int y = 0;
        bool operator==(const Point &) const = default;
    };
    struct Rectangle {
        double x = 0;
        double y = 0;
        double width = 0;
        double height = 0;
    };

    Size raster; ///< In raster pixels.
    Size array; ///< The detector array, in its own pixels.
    Point windowPosition; ///< The part of the array that the image shows, in pixels of the array.
    Size windowSize;
    bool mirrored = false; ///< The image is flipped left to right. Changes the place only for SameAsFpa.
    bool inverted = false; ///< The image is flipped top to bottom. Changes the place only for SameAsFpa.
    int position = SameAsFpa; ///< Another number than those of Position counts as SameAsFpa.
    double zoom = 1; ///< Raster pixels for each pixel of the image. 0: the largest size that fits the raster.
    Point offset; ///< The top left corner of the image in raster pixels, for Free.

    /// The image on the raster, in raster pixels. It may be larger than the raster, or outside of it.
    Rectangle image() const
    {
        const double scale = this->scale();
        Rectangle image{0, 0, windowSize.width * scale, windowSize.height * scale};
        if (position == Free) {
            image.x = offset.x;
            image.y = offset.y;
        } else if (position == Centered || isEmpty()) {
            image.x = (raster.width - image.width) / 2;
            image.y = (raster.height - image.height) / 2;
        } else {
            image.x = scale * (mirrored ? array.width - windowPosition.x - windowSize.width : windowPosition.x);
            image.y = scale * (inverted ? array.height - windowPosition.y - windowSize.height : windowPosition.y);
        }
        return image;
    }

    /// The least and the largest valid offset: the multiples of `step` with which the image is inside the raster, or
    /// covers it if the image is larger. Components of `step` below 1 mean 1.
    Point leastOffset(const Point &step) const
    {
        return {std::min(0, room(raster.width, windowSize.width, step.x)),
                std::min(0, room(raster.height, windowSize.height, step.y))};
    }
    Point largestOffset(const Point &step) const
    {
        return {std::max(0, room(raster.width, windowSize.width, step.x)),
                std::max(0, room(raster.height, windowSize.height, step.y))};
    }

    /// Whether `offset` is one of the valid offsets.
    bool hasValidOffset(const Point &step) const
    {
        const Point least = leastOffset(step);
        const Point largest = largestOffset(step);
        return offset.x >= least.x && offset.x <= largest.x && offset.x % std::max(step.x, 1) == 0
            && offset.y >= least.y && offset.y <= largest.y && offset.y % std::max(step.y, 1) == 0;
    }

private:
    bool isEmpty() const { return windowSize.width <= 0 || windowSize.height <= 0; }

    double scale() const
    {
        if (isEmpty())
            return 0;
        return zoom > 0 ? zoom
                        : std::min(double(raster.width) / windowSize.width, double(raster.height) / windowSize.height);
    }

    /// The pixels of the raster beside the image as a multiple of `step`; negative if the image is larger.
    int room(int ofRaster, int ofWindow, int step) const
    {
        const int pixels = ofRaster - static_cast<int>(std::lround(ofWindow * scale()));
        return pixels - pixels % std::max(step, 1);
    }
};

} // namespace hlx
