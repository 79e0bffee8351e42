#include "platform/hlxcamzvt/EmulatedVideoSource.h"

#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/dispatch.h"

#include <utility>

namespace hlx::cam
{

EmulatedVideoSource::EmulatedVideoSource(std::weak_ptr<emulator::Camera> camera) : m_camera(std::move(camera)) { }

void EmulatedVideoSource::StopStream() { setStreaming("controller.StopStream", false); }

void EmulatedVideoSource::StartStream() { setStreaming("controller.StartStream", true); }

void EmulatedVideoSource::setStreaming(const char *name, bool streaming)
{
    emulator::controllerOnDevice<emulator::Sensor>(m_camera.lock(), name,
                                                   [&](emulator::Sensor &sensor) { sensor.setStreaming(streaming); });
}

} // namespace hlx::cam
