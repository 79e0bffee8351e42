#pragma once

#include "platform/emulator/Frame.h"
#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/RecordedSettings.h"

#include <cstdint>
#include <memory>

namespace emulator
{

/// A frame of the recorder's memory, without pixels: the values on which they depend.
struct RecordedFrame {
    FrameStart start;
    CameraClock::RealTime realTime;
    CameraClock::IrigTime irigTime;
    image::Exposure exposure; ///< Without the maps of the detector and the table of the correction.
    std::shared_ptr<RecordedCorrection> correction; ///< Null: none.
};

/// A frame of the recorder's memory as it is transferred.
struct PlayedFrame {
    Frame frame;
    CameraClock::IrigTime irigTime;
    uint32_t checksum = 0; ///< The CRC-32 of the pixels, each with its low byte first.
};

} // namespace emulator
