#pragma once

#include "hlx/CZVTController.h"

#include <memory>

namespace emulator
{
class Camera;
}

namespace hlx::cam
{

/// A controller that drives this emulated camera, or none yet if it is null.
hlx::TSharedPtr<CZVTController> makeController(std::shared_ptr<emulator::Camera> camera);

/// Makes a controller of makeController() drive another camera, or none. False, and nothing done, while its present
/// camera is connected, or for a controller of another make. Not at the same time from several threads.
bool attach(CZVTController &controller, std::shared_ptr<emulator::Camera> camera);

/// Connects the camera that a controller of makeController() drives, by the call "controller.Connect" of its gate, and
/// returns the call's status: emulator::Ok, or why the camera stays disconnected. Without a camera, and for a
/// controller of another make, it is emulator::InvalidHandle.
int connect(CZVTController &controller);

} // namespace hlx::cam
