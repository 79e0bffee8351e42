#pragma once

#include "platform/emulator/Frame.h"
#include "platform/emulator/image/Agc.h"
#include "standalone/desk/FrameStatistics.h"

#include <QImage>
#include <QRectF>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace emulator
{
class Camera;
}

/// What the desk shows of a camera.
struct FrameOrder {
    enum View {
        Raw, ///< Frames as they are read out.
        Corrected, ///< Frames as the video output gets them: corrected unless its correction is switched off.
        Video, ///< The picture of the video output.
    };

    std::shared_ptr<emulator::Camera> camera;
    View view = Raw;
    std::optional<int> preset; ///< Nothing: the preset of the video output, which the view Video always shows.

    bool operator==(const FrameOrder &) const = default;
};

/// A frame with everything that is computed from its counts.
struct MeasuredFrame {
    emulator::Frame frame;
    FrameStatistics statistics;
    /// Video: the limits of the gain control of the video. Otherwise those that it would have for these counts, which
    /// are raw in the view Raw; they follow the frames as fast.
    emulator::image::Agc::Limits gain;
    /// The histogram, from the lowest to the highest count, with logarithmic heights.
    QImage histogram;
};

/// What the desk shows at a time.
struct ShownFrame {
    enum State {
        Nothing, ///< The preset has not had a frame.
        TooLarge, ///< Windows of this size have no frames.
        Ready,
    };

    State state = Nothing;
    std::shared_ptr<const MeasuredFrame> measured; ///< Null unless Ready.
    QImage picture; ///< Null unless Ready.
    QRectF place; ///< The place of the frame on the picture, in pixels of the picture.
    double rate = 0; ///< Of the frames of all presets, in hertz.
    std::vector<int> presets; ///< Those that the camera sequences.

    /// Whether the same is shown. Pictures of the video output are never the same.
    bool operator==(const ShownFrame &other) const;
};

/// Makes the pictures and statistics of the desk from the newest frames of a camera. It uses the camera directly, so
/// that neither its gate nor its clients see it. Used by one thread, which must not hold the camera's lock.
class FrameMaker
{
public:
    /// Raw and corrected frames are shown linearly. This share of the pixels is black, and as many are white. A
    /// frame of equal counts is shown with the whole range of counts, so that a saturated one is white.
    static constexpr int blackThousandths = 5;

    /// Returns null if nothing has changed since the last time. A picture of the video output is always made, since its
    /// overlay changes too.
    std::shared_ptr<const ShownFrame> make(const FrameOrder &order);

private:
    struct Inputs;

    Inputs take(const FrameOrder &order) const;
    bool showVideo(ShownFrame &shown);
    bool showFrame(const Inputs &inputs, ShownFrame &shown);
    bool isMeasured(const emulator::FrameStart &start, emulator::image::Size size) const;
    bool followsMeasured(const emulator::Frame &frame) const;
    void measure(emulator::Frame frame, const emulator::image::Agc::Limits &gain);

    // What belongs to the last order. All of it is dropped when another order comes.
    FrameOrder m_order;
    std::shared_ptr<const MeasuredFrame> m_measured; ///< The last frame; null if there was none.
    std::shared_ptr<const ShownFrame> m_shown; ///< The last result; null before the first one.
    emulator::image::Agc m_gain;
};
