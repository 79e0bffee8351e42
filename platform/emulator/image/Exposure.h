#pragma once

#include "platform/emulator/image/CorrectionTable.h"
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

/// To be raised with each change after which equal exposures give other frames: recordings are stored without pixels.
constexpr uint32_t rendererVersion = 1;

/// Everything on which a frame depends. Equal exposures give equal frames.
struct Exposure {
    Window window; ///< The part of the array that is read out.
    uint64_t frameNumber = 0; ///< Selects the noise.
    Scene scene;
    Optics optics;
    Light::Band band = Light::Medium;
    Readout readout;
    std::shared_ptr<const Detector> detector; ///< Its maps include the window.

    // Raw frames do not depend on the following, see renderOutput().

    std::shared_ptr<const CorrectionTable> correction; ///< Null: none.
    Repair repair = Repair::TwoNearest;
    bool showBadPixels = false;
    bool videoCorrected = true;
    bool digitalCorrected = false;
    float digitalGain = 1;
    float digitalOffset = 0; ///< Counts.
};

} // namespace emulator::image
