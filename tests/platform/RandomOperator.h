#pragma once

#include "platform/emulator/devices/RecorderMachine.h"
#include "tests/platform/MachineRig.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <vector>

/// A random operator of a recorder.
class RandomOperator
{
public:
    explicit RandomOperator(uint32_t seed) : m_random(seed) { }

    /// 1 ms to 10 s, as many short times as long ones.
    int64_t time() { return static_cast<int64_t>(std::pow(10.0, double(m_random() % 4001) / 1000)); }

    /// A command, or the change of a setting or of the input.
    void act(MachineRig &rig)
    {
        const uint32_t value = m_random();
        constexpr uint32_t count = std::size(commands);
        const uint32_t action = m_random() % (count + std::size(changes));
        if (action < count)
            (rig.machine.*commands[action])(rig.now());
        else
            changes[action - count](rig, value);
    }

private:
    using M = emulator::RecorderMachine;
    static constexpr bool (M::*commands[])(int64_t) = {&M::arm,
                                                       &M::arm,
                                                       &M::arm,
                                                       &M::arm,
                                                       &M::trigger,
                                                       &M::trigger,
                                                       &M::trigger,
                                                       &M::disarm,
                                                       &M::pauseRecording,
                                                       &M::resumeRecording,
                                                       &M::stopRecording,
                                                       &M::save,
                                                       &M::format,
                                                       &M::unload,
                                                       &M::downloadStarts,
                                                       &M::downloadIsDone,
                                                       &M::play,
                                                       &M::pause,
                                                       &M::resume,
                                                       &M::stop};

    static void changeInput(MachineRig &rig, uint32_t value) { rig.machine.setInput(value % 2 == 0, rig.now()); }
    /// Numbers of frames that exist, and others.
    static uint32_t frame(uint32_t value) { return value % 8 == 0 ? UINT32_MAX : value % 300; }
    static constexpr void (*changes[])(MachineRig &rig, uint32_t value) = {
        [](MachineRig &rig, uint32_t value) { rig.machine.load(value % 3, rig.now()); },
        [](MachineRig &rig, uint32_t value) { rig.machine.skipTo(value % 300, rig.now()); },
        [](MachineRig &rig, uint32_t value) { rig.machine.skipBy(value % 2 == 0 ? 1 : -1, rig.now()); },
        changeInput,
        changeInput,
        changeInput,
        [](MachineRig &rig, uint32_t value) { rig.settings.mode = value % 2; },
        [](MachineRig &rig, uint32_t value) { rig.settings.type = value % 3; },
        [](MachineRig &rig, uint32_t value) { rig.settings.frames = 1 + value % 400; },
        [](MachineRig &rig, uint32_t value) { rig.settings.pretrigger = value % 200; },
        [](MachineRig &rig, uint32_t value) { rig.settings.duration = 1 + value % 8000; },
        [](MachineRig &rig, uint32_t value) { rig.settings.gated = value % 2 == 0; },
        [](MachineRig &rig, uint32_t value) { rig.settings.autoPlay = value % 2 == 0; },
        [](MachineRig &rig, uint32_t value) { rig.settings.autoSave = value % 2 == 0; },
        [](MachineRig &rig, uint32_t value) { rig.settings.autoRearm = value % 2 == 0; },
        [](MachineRig &rig, uint32_t value) { rig.settings.autoDownload = value % 2 == 0; },
        [](MachineRig &rig, uint32_t value) {
            rig.settings.rate = 1 + static_cast<float>(value % 500) / 7;
            rig.settings.loop = value % 2 == 0;
            rig.machine.playbackChanged(rig.now());
        },
        [](MachineRig &rig, uint32_t value) {
            (value % 2 == 0 ? rig.settings.startFrame : rig.settings.endFrame) = frame(value / 2);
            rig.machine.playbackChanged(rig.now());
        },
        [](MachineRig &rig, uint32_t value) { rig.machine.setRecognized(value % 4 != 0); },
        [](MachineRig &rig, uint32_t value) { rig.machine.setPulled(value % 4 == 0, rig.now()); },
        [](MachineRig &rig, uint32_t value) { rig.machine.drive().setSlow(value % 2 == 0); },
    };

    std::mt19937 m_random;
};

/// Returns the results before and after each of 25 actions. With `looks` the time between them passes in random
/// steps, and the recorder is looked at after each.
inline std::vector<std::string> runMachine(uint32_t seed, bool looks)
{
    const bool small = seed % 2 == 1;
    emulator::RecorderMachine::Equipment equipment;
    if (small) {
        equipment.memory = 640 * 900;
        equipment.fifo = 640 * 50;
    }
    const emulator::Drive drive
        = small ? emulator::Drive(640 * 3000, 40'000) : emulator::Drive(512'110'190'592, 262'144'000);
    MachineRig rig(equipment, drive, seed % 3 == 0);
    RandomOperator random(seed);
    RandomOperator lookTimes(seed + 1'000'000);
    std::vector<std::string> results;
    for (int action = 0; action < 25; ++action) {
        int64_t left = random.time();
        while (looks && left > 0) {
            const int64_t passed = std::min(left, lookTimes.time());
            rig.wait(passed);
            left -= passed;
        }
        rig.wait(left);
        results.push_back(rig.result());
        random.act(rig);
        results.push_back(rig.result());
    }
    return results;
}
