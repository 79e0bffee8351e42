#pragma once

#include "platform/emulator/image/Light.h"
#include "platform/emulator/image/Optics.h"
#include "platform/emulator/image/Readout.h"
#include "platform/emulator/image/Scene.h"
#include "platform/emulator/image/Window.h"

#include <cstdint>
#include <memory>

namespace emulator::image
{

class Detector;

/// Everything on which a raw frame depends. Equal exposures give equal frames.
struct Exposure {
    Window window; ///< The part of the array that is read out.
    uint64_t frameNumber = 0; ///< Selects the noise.
    Scene scene;
    Optics optics;
    Light::Band band = Light::Medium;
    Readout readout;
    std::shared_ptr<const Detector> detector; ///< Its maps include the window.
};

} // namespace emulator::image
