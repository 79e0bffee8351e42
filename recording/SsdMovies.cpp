#include "recording/SsdMovies.h"

#include "common/reading.h"

#include "zvt/zvtsdk.h"

SsdFileListing SsdFileListing::read(const CameraAccess &camera)
{
    SsdFileListing listing;
    const auto count = readOr(0U, zvtGetSsdMovieCount, camera.handle);
    for (uint32_t index = 0; index < count; ++index) {
        zvtSSsdMovieInfo info{};
        if (zvtGetSsdMovieInfo(camera.handle, index, &info) == 0)
            listing.movies.append(info);
    }
    fetch(listing.totalSpace, zvtGetSsdDriveSpaceTotal, camera.handle);
    fetch(listing.freeSpace, zvtGetSsdDriveSpaceFree, camera.handle);
    fetch(listing.usedSpace, zvtGetSsdDriveSpaceUsed, camera.handle);
    return listing;
}

SsdFileLoad SsdFileLoad::run(uint64_t handle, uint32_t index)
{
    SsdFileLoad load;
    load.loaded = zvtSsdLoadMovie(handle, index) == 0;
    fetch(load.currentFrame, zvtGetSsdPlaybackFrame, handle);
    fetch(load.startFrame, zvtGetSsdStartFrame, handle);
    fetch(load.endFrame, zvtGetSsdEndFrame, handle);
    fetch(load.totalFrames, zvtGetSsdNumFramesAcquired, handle);
    return load;
}
