#pragma once

#include "common/Nullable.h"

#include <cstdint>

/// The input of one poll of the recorder.
struct SsdUIState {
    uint64_t handle = 0;
    int state = 0; ///< SsdTabModel::state() at the start of the poll.
    bool fromDisk = false;
    bool recordModeAvailable = false;
    bool drivePresent = false;
    bool driveRecognized = false;
    int tick = 0; ///< Polls since the drive was last read.
    uint64_t sequence = 0;
};

/// The result of one poll of the recorder. No field is set if the state could not be read.
struct SsdUpdateState {
    uint64_t sequence = 0; ///< Of the input.
    int tick = 0;
    Nullable<uint8_t> state;
    Nullable<uint32_t> currentFrame;
    Nullable<uint32_t> startFrame;
    Nullable<uint32_t> endFrame;
    Nullable<uint32_t> totalFrames;
    Nullable<uint32_t> maxFramesDisk;
    Nullable<uint8_t> drivePresent;
    Nullable<uint8_t> driveRecognized;
};
