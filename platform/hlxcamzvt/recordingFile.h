#pragma once

#include "hlx/CReduceObjectArray.h"
#include "platform/hlxfile/MovieFormat.h"

#include <cstdint>

namespace emulator
{
class Camera;
class Recording;
struct RecordedFrame;
} // namespace emulator

namespace hlx::cam
{

// The contents of a raw movie, made from a recording of an emulated camera.

/// Returns the description of the camera and of its settings at a frame of the recording. Called with the camera's
/// lock.
file::MovieDescription descriptionOf(const emulator::Camera &camera, const emulator::Recording &recording,
                                     uint64_t frame);

/// Returns the format of the frames `first` to `last`, and, unless the recording is abated, the corrections that their
/// presets had at the first one and the factory calibration for its integration time, if the camera has one. The thread
/// must not hold the camera's lock, since a correction that has not been in use is read first.
reduce::CReduceObjectArray reduceObjectsOf(const emulator::Camera &camera, const emulator::Recording &recording,
                                           uint64_t first, uint64_t last);

/// Returns the values of a frame beside its pixels, without flags.
file::MovieFrame movieFrameOf(const emulator::RecordedFrame &frame);

} // namespace hlx::cam
