#pragma once

#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Light.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace emulator::image
{
struct Exposure;
}

namespace emulator
{

class Section;

/// The pixels of a sensor: the light that they see, and the differences between them. The maps of these differences are
/// made at the first frame, outside of the camera's lock.
class DetectorArray
{
public:
    /// Profile keys: "band" ("short", "medium" or "long"); "saturatingIntegrationTime" (ms, the time at which light 1
    /// gives image::Light::fullSignal); "detector", an object with the names of image::Detector::Properties.
    DetectorArray(Section &section, const image::Size &size);

    const image::Size &size() const { return m_size; }
    const image::Detector::Properties &properties() const { return m_properties; }

    /// Sets the band, the saturating time and the maps, if they have been made. The exposure has its window already.
    void expose(image::Exposure &exposure) const;

    /// Returns maps that contain a window, null for a window without frames. Makes them if necessary, which takes up to
    /// 20 ns a pixel: those of the whole array, or of the window if the array is too large. Any thread.
    std::shared_ptr<const image::Detector> mapsFor(const image::Window &window);

private:
    std::shared_ptr<const image::Detector> presentMaps(const image::Window &window) const;

    image::Size m_size;
    image::Light::Band m_band;
    double m_saturatingMilliseconds;
    image::Detector::Properties m_properties;
    std::mutex m_making;
    std::atomic<std::shared_ptr<const image::Detector>> m_maps;
};

} // namespace emulator
