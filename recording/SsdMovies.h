#pragma once

#include "common/CameraAccess.h"
#include "common/Nullable.h"

#include <QList>

#include <cstdint>

#include "zvt/zvttypes.h"

// What pool tasks of SsdTabModel do with the movies on the drive of the camera.

/// The result of a listing of the drive.
struct SsdFileListing {
    /// Leaves out a movie that cannot be read.
    static SsdFileListing read(const CameraAccess &camera);

    QList<zvtSSsdMovieInfo> movies;
    Nullable<int64_t> totalSpace; ///< Bytes.
    Nullable<int64_t> freeSpace;
    Nullable<int64_t> usedSpace;
};

/// The result of a load of a movie into the camera's memory.
struct SsdFileLoad {
    /// Loads the movie with this place in the camera's list, and reads the frames of the playback also after a failure.
    static SsdFileLoad run(uint64_t handle, uint32_t index);

    bool loaded = false;
    Nullable<uint32_t> currentFrame;
    Nullable<uint32_t> startFrame;
    Nullable<uint32_t> endFrame;
    Nullable<uint32_t> totalFrames;
};
