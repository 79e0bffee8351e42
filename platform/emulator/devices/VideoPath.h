#pragma once

#include "platform/emulator/Frame.h"
#include "platform/emulator/image/Agc.h"
#include "platform/emulator/image/Picture.h"

#include <memory>
#include <mutex>

namespace emulator
{

class Camera;

/// A picture of the video output with the frame that it shows.
struct VideoPicture {
    image::Picture picture; ///< Empty if there is no frame.
    std::shared_ptr<const Frame> frame; ///< As the output gets it, before the temporal filter. Null if there is none.
    image::Agc::Limits gain; ///< Of the gain control.
};

/// The way from the frames of a camera to the picture of its video output: correction, temporal filter, detail
/// enhancement, gain control, brightness and contrast, palette, raster, overlay. The gain control and the temporal
/// filter remember the past, but only by the times at which pictures were asked for: at the same time, the same
/// settings result in the same picture again.
class VideoPath
{
public:
    explicit VideoPath(Camera &camera);
    VideoPath(const VideoPath &) = delete;
    VideoPath &operator=(const VideoPath &) = delete;
    ~VideoPath();

    /// Returns the picture that the video output shows now. There is none while the preset that it shows has not had a
    /// frame. While a correction is made, the image of the last picture that was asked for stays; if there is none, the
    /// newest frame is shown once. So it does without a signal: while the newest frame has been shown and is older than
    /// two frames of the video and two cycles of the camera's frames. It is shown in the present format and with the
    /// present overlay. While the recorder plays, is paused or has a movie, the picture shows its frame, without the
    /// temporal filter.
    ///
    /// Any thread, which must not hold the camera's lock: the values of the devices are taken with the lock, pixels are
    /// computed without it. One thread renders at a time. The gate does not see it.
    VideoPicture render();

private:
    class Memory;

    Camera &m_camera;
    std::mutex m_rendering; ///< For the memory.
    std::unique_ptr<Memory> m_memory; ///< Null before the first picture.
};

} // namespace emulator
