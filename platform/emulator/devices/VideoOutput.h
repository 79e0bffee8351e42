#pragma once

#include "platform/emulator/Device.h"
#include "platform/hlx/RasterPlacement.h"

#include <array>
#include <cstdint>
#include <vector>

namespace emulator
{

/// The video output: its format, and the place and size of the image on its raster. Also stores two options of other
/// outputs: the polarity of the integrate output, and the latch of the IRIG time.
class VideoOutput : public Device
{
public:
    using Offset = std::array<int16_t, 2>; ///< X and Y in raster pixels.

    /// Offsets are multiples of this number of raster pixels.
    static constexpr int offsetStep = 4;

    /// Profile keys and settings: "format", "positionWritable", "position", "zoomFactor", "offset" (a list of x, y),
    /// "integratePolarity" (0, 1), "irigLatch" (0 frame start, 1 integration start, 2 integration end).
    VideoOutput(Camera &camera, Section &section);

    /// The number of a video format of the SDK.
    uint8_t format() const { return m_format; }

    /// The camera's number of the position: 0 the place of the window on the array, 1 centred, 2 at the offset.
    uint8_t position() const { return m_position; }
    /// Refused above 2, and while the position is fixed.
    Status setPosition(uint8_t position) { return assign(m_position, position); }
    bool positionWritable() const { return m_positionWritable; }

    /// The zoom factors that the camera offers, as numbers of the SDK. Those that interpolate need the capability
    /// "hasBilinearZoom".
    std::vector<uint8_t> zoomFactors() const;
    uint8_t zoomFactor() const { return m_zoomFactor; }
    /// Refused if the camera does not offer the factor.
    Status setZoomFactor(uint8_t factor) { return assign(m_zoomFactor, factor); }

    int16_t xOffset() const { return m_offset[0]; }
    int16_t yOffset() const { return m_offset[1]; }
    /// Refuses offsets that are no multiples of offsetStep, and those with which the image is neither inside the raster
    /// nor covers it. A later change of window, zoom factor or format does not change the offset.
    Status setOffset(int16_t x, int16_t y) { return assign(m_offset, {x, y}); }

    /// The place of the present image on the raster.
    hlx::RasterPlacement placement() const;

    uint8_t integratePolarity() const { return m_integratePolarity; }
    Status setIntegratePolarity(uint8_t polarity) { return assign(m_integratePolarity, polarity); }
    uint8_t irigLatch() const { return m_irigLatch; }
    Status setIrigLatch(uint8_t latch) { return assign(m_irigLatch, latch); }

private:
    Refusal checkRoom(const Offset &offset) const;

    uint8_t m_format = 0;
    bool m_positionWritable = true;
    uint8_t m_position = 0;
    uint8_t m_zoomFactor = 1;
    Offset m_offset{};
    uint8_t m_integratePolarity = 0;
    uint8_t m_irigLatch = 0;
};

} // namespace emulator
