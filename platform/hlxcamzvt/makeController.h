#pragma once

#include "hlx/CZVTController.h"

#include <memory>

namespace emulator
{
class Camera;
}

namespace hlx::cam
{

/// Makes a controller of this emulated camera. The camera may be null; attach() attaches one later.
hlx::TSharedPtr<CZVTController> makeController(std::shared_ptr<emulator::Camera> camera);

/// Attaches another camera, or none, to a controller of makeController(). Returns false, and changes nothing, while its
/// present camera is connected, and for any other controller. Not from several threads at the same time.
bool attach(CZVTController &controller, std::shared_ptr<emulator::Camera> camera);

/// Connects the camera of a controller of makeController(), by the call "controller.Connect" of its gate. Returns the
/// status of the call: emulator::Ok, or the reason why the camera is not connected. Returns emulator::InvalidHandle
/// without a camera, and for any other controller.
int connect(CZVTController &controller);

} // namespace hlx::cam
