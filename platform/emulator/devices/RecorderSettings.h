#pragma once

#include <cstdint>
#include <string>

namespace emulator
{

/// The settings of a recorder.
struct RecorderSettings {
    enum Mode : uint8_t { ToMemory = 0, ToDisk = 1 };
    enum Type : uint8_t { Frames = 0, Duration = 1, StartStop = 2 }; ///< What ends a recording.

    uint8_t mode = ToMemory;
    uint8_t type = Frames;
    uint32_t frames = 1000;
    uint32_t pretrigger = 100; ///< Frames.
    uint32_t duration = 1000; ///< Milliseconds.
    bool gated = false;
    bool autoPlay = false;
    bool autoSave = false;
    bool autoRearm = false;
    bool autoDownload = false;
    std::string name = "Untitled"; ///< Of movies, UTF-8.
    float rate = 30; ///< Of a playback, in hertz.
    bool loop = false;
    uint32_t startFrame = 0; ///< The range of a playback, cut to the frames that exist when it is played.
    uint32_t endFrame = UINT32_MAX;
};

} // namespace emulator
