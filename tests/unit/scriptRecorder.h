#pragma once

#include "tests/support/modelOf.h"

#include "recording/SsdTabModel.h"

/// Lets each read return a value that differs from those of a new model, and each command and setter succeed.
inline void scriptRecorder(emulator::Gate &gate)
{
    for (const char *flag :
         {"zvtGetSsdDrivePresent", "zvtGetSsdDriveRecognized", "zvtGetSsdLoopPlayback", "zvtGetSsdAutoPlay",
          "zvtGetSsdAutoSave", "zvtGetSsdRecordModeAvailable", "zvtGetSsdRecordGated", "zvtGetSsdMovieLoaded",
          "zvtGetSsdAutoRearm", "zvtGetSsdAutoDownload", "zvtGetFrameSyncSource"})
        gate.script(flag, 1);
    gate.script("zvtGetSsdState", SsdTabModel::COMPLETE);
    gate.script("zvtGetSsdNumFrames", 400U);
    gate.script("zvtGetSsdMaxNumFrames", 5000U);
    gate.script("zvtGetSsdPretriggerFrames", 50U);
    gate.script("zvtGetSsdPlaybackRate", 25.0F);
    gate.script("zvtGetSsdStartFrame", 7U);
    gate.script("zvtGetSsdEndFrame", 300U);
    gate.script("zvtGetSsdPlaybackFrame", 42U);
    gate.script("controller.GetAverageFrameRate", 50.0);
    gate.script("controller.CanDownload", true);
    gate.script("zvtGetSsdRecordMode", SsdTabModel::MODE_TO_DISK);
    gate.script("zvtGetSsdRecordType", SsdTabModel::TYPE_START_STOP);
    gate.script("zvtGetSsdMaxNumFramesDisk", 900U);
    gate.script("zvtGetSsdRecordDuration", 2500U);
    gate.script("zvtGetSsdNumFramesAcquired", 350U);
    gate.script("controller.GetWindow", QVariantList{0, 0, 640, 512});
    gate.script("zvtGetSsdSaveName", "Shot");
    gate.script("zvtCalcMinFrameWidth", 1000U);
    gate.script("zvtClocksToHertz", 500.0);
    gate.script("zvtSsd*", true);
    gate.script("zvtSetSsd*", true);
}

/// The SSD tab for the walkers. The camera's values are scripted.
inline ModelUnderTest ssdModel()
{
    auto model = modelOf<SsdTabModel>();
    model.prepare = [](CameraRig &rig) { scriptRecorder(rig.gate()); };
    model.ownState << "autoDownloadDirectory"
                   << "autoDownloadDirectoryUrl"
                   << "autoDownloadCount"
                   << "currentFrame";
    return model;
}
