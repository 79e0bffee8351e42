#pragma once

#include "tests/support/RecorderPoll.h"
#include "tests/support/modelOf.h"

#include "recording/SsdTabModel.h"

/// The SSD tab of an emulated camera, whose clock and polls the test drives. A frame comes every 10 ms.
struct Recorder {
    explicit Recorder(const QString &profile = QStringLiteral("everything"))
        : rig(profile), root(rig.controller(), nullptr), model(*root.ssdTabModel())
    {
        refresh();
        model.setPretriggerFramesToRecord(0);
        model.setFramesToRecord(frames);
    }

    void refresh()
    {
        model.refresh();
        CameraRig::settle();
    }

    /// Lets a time pass and polls. Returns the state on the page.
    SsdTabModel::SsdState after(int milliseconds)
    {
        emulator::Clock::advance(milliseconds);
        startPoll(model);
        CameraRig::settle();
        return model.state();
    }

    /// Arms and triggers. Returns whether the camera has done both.
    bool trigger()
    {
        model.arm();
        if (after(500) != SsdTabModel::ARMED)
            return false;
        model.triggerRecording();
        return after(0) == SsdTabModel::TRIGGERED;
    }

    /// Arms, triggers and lets the recording end. Returns the state after it, or the unknown state if the camera has
    /// not recorded.
    SsdTabModel::SsdState record()
    {
        return trigger() ? after(longerThanARecording) : SsdTabModel::UNKNOWN_STATE_QML_ONLY_NOT_SDK;
    }

    static constexpr uint frames = 50;
    static constexpr int longerThanARecording = 20'000;

    CameraRig rig;
    ZvtCameraModel root;
    SsdTabModel &model;
};
