#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/VideoPath.h"
#include "platform/emulator/image/TemporalFilter.h"
#include "platform/emulator/image/levels.h"
#include "platform/hlx/RasterPlacement.h"

#include <array>
#include <cstdint>
#include <vector>

namespace emulator
{

/// The video output: its format, its filter and its levels, and the place and size of the image on its raster. It
/// renders the picture. Also stores two options of other outputs: the polarity of the integrate output, and the event
/// at which the IRIG time of a frame is latched, which Recording applies.
class VideoOutput : public Device
{
public:
    using Offset = std::array<int16_t, 2>; ///< X and Y in raster pixels.

    /// Offsets are multiples of this number of raster pixels.
    static constexpr int offsetStep = 4;

    /// Profile key: "formats" (the formats that the camera offers, NTSC and PAL without the key). Profile keys and
    /// settings: "format", "updateRate" (0, 1), "temporalFilter" (0 to 2), "temporalFilterThreshold" (counts),
    /// "brightness", "contrast", "positionWritable", "position", "zoomFactor", "offset" (a list of x, y),
    /// "integratePolarity" (0, 1), "irigLatch" (0 frame start, 1 integration start, 2 integration end).
    VideoOutput(Camera &camera, Section &section);

    /// The picture that the output shows now, see VideoPath::render(). Any thread, which must not hold the camera's
    /// lock.
    image::Picture render() { return m_path.render().picture; }
    /// The same with the frame that it shows.
    VideoPicture renderWithFrame() { return m_path.render(); }

    /// The formats that the camera offers, as numbers of the SDK and others.
    const std::vector<uint8_t> &formats() const { return m_formats; }
    uint8_t format() const { return m_format; }
    /// Refuses formats that are neither offered nor known to the SDK.
    Status setFormat(uint8_t format) { return assign(m_format, format); }

    /// 0 by frames, 1 by fields. Absent without the capability "hasUpdateRate".
    Status updateRate(uint8_t &rate) const;
    /// Refused above 1.
    Status setUpdateRate(uint8_t rate);
    /// An image::TemporalFilter::Mode. Absent without the capability "hasTemporalFilter", as is the threshold.
    Status temporalFilter(uint8_t &mode) const;
    /// Refused above 2.
    Status setTemporalFilter(uint8_t mode);
    /// In counts.
    Status temporalFilterThreshold(uint16_t &counts) const;
    Status setTemporalFilterThreshold(uint16_t counts);
    /// Brightness and contrast, -128 to 127; analog formats only.
    int8_t brightness() const { return m_brightness; }
    Status setBrightness(int8_t brightness) { return assign(m_brightness, brightness); }
    int8_t contrast() const { return m_contrast; }
    Status setContrast(int8_t contrast) { return assign(m_contrast, contrast); }

    // The present picture, by these settings and the capabilities.

    /// The active preset in sequencing mode 0, otherwise that of Sensor::videoPreset().
    int preset() const;
    /// Whether the two fields of a frame of the video show different times.
    bool showsFields() const;
    image::TemporalFilter::Mode filterMode() const;
    uint16_t filterThreshold() const { return m_filterThreshold; }
    image::LevelTable levels() const;
    /// Whether the zoom factor interpolates. The others repeat pixels.
    bool interpolates() const;

    /// The camera's number of the position: 0 the place of the window on the array, 1 centred, 2 at the offset.
    uint8_t position() const { return m_position; }
    /// Refused above 2, and while the position is fixed.
    Status setPosition(uint8_t position) { return assign(m_position, position); }
    bool positionWritable() const { return m_positionWritable; }

    /// The zoom factors that the camera offers, as numbers of the SDK. Those that interpolate need the capability
    /// "hasBilinearZoom".
    std::vector<uint8_t> zoomFactors() const;
    uint8_t zoomFactor() const { return m_zoomFactor; }
    /// The name of a zoom factor as a static text, null for an unknown one.
    static const char *zoomFactorText(uint8_t factor);
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
    bool hasUpdateRate() const;
    bool hasTemporalFilter() const;

    std::vector<uint8_t> m_formats;
    uint8_t m_format = 0;
    uint8_t m_updateRate = 0;
    image::TemporalFilter::Mode m_temporalFilter = image::TemporalFilter::Mode::Off;
    uint16_t m_filterThreshold = 20;
    int8_t m_brightness = 0;
    int8_t m_contrast = 0;
    bool m_positionWritable = true;
    uint8_t m_position = 0;
    uint8_t m_zoomFactor = 1;
    Offset m_offset{};
    uint8_t m_integratePolarity = 0;
    uint8_t m_irigLatch = 0;
    VideoPath m_path;
};

} // namespace emulator
