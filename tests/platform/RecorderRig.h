#pragma once

#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Recorder.h"
#include "tests/platform/LensRig.h"
#include "tests/platform/RecorderProfiles.h"

#include <cstdint>
#include <limits>
#include <mutex>
#include <utility>
#include <vector>

/// A camera with a stopped clock, an empty drive and the calls of its recorder. Its window has 64x4 pixels, 640 bytes a
/// frame, unless the test changes it, and a frame comes every 10 ms, with the ticks of the clock.
class RecorderRig : private RecorderProfiles, public LensRig
{
public:
    using State = emulator::RecorderMachine::State;
    using Setter = int (*)(uint64_t, uint8_t);
    using Command = int (*)(uint64_t);

    static constexpr int64_t frameBytes = 640;

    explicit RecorderRig(const char *profile = "everything") : LensRig(pathOf("{}", profile)) { useSmallestWindow(); }

    /// Opens a camera whose recorder has these keys.
    void openWith(const char *recorder, const char *extended = "everything")
    {
        const auto devices = QByteArray(R"({"recorder": )") + recorder + "}";
        openDevices(devices.constData(), extended);
    }
    void openDevices(const char *devices, const char *extended = "everything")
    {
        open(pathOf(devices, extended));
        useSmallestWindow();
    }
    /// Switches the camera off and on.
    void restart() { open(lastPath()); }
    /// The same after the keys of the recorder have been replaced.
    void restartWith(const QByteArray &recorder) { restartWithDevices(R"({"recorder": )" + recorder + "}"); }
    void restartWithDevices(const QByteArray &devices)
    {
        rewriteLast(devices);
        restart();
    }
    void useSmallestWindow()
    {
        if (!set("sensor.window", QVariantList{0, 0, 64, 4}))
            qFatal("the camera refuses the window of the rig");
    }

    emulator::Recorder &recorder() { return *camera().device<emulator::Recorder>(); }

    static void wait(int64_t milliseconds) { emulator::Clock::advance(milliseconds); }
    /// False if the camera refuses.
    bool call(Command command) { return command(handle()) == 0; }
    bool load(uint32_t place) { return zvtSsdLoadMovie(handle(), place) == 0; }
    bool set(Setter setter, uint8_t value) { return setter(handle(), value) == 0; }
    using LensRig::set;

    /// 255 if it cannot be read.
    int state() const { return number<uint8_t>(zvtGetSsdState); }
    uint32_t acquired() const { return number<uint32_t>(zvtGetSsdNumFramesAcquired); }
    uint32_t playbackFrame() const { return number<uint32_t>(zvtGetSsdPlaybackFrame); }
    uint32_t movies() const { return number<uint32_t>(zvtGetSsdMovieCount); }
    template <class T> T number(int (*get)(uint64_t, T *)) const
    {
        T value = std::numeric_limits<T>::max();
        get(handle(), &value);
        return value;
    }

    /// Arms it and waits until it is armed.
    bool arm()
    {
        const bool armed = call(zvtSsdArm);
        wait(300);
        return armed && state() == State::Armed;
    }
    /// Records a number of frames to the memory.
    bool record(uint32_t frames)
    {
        const bool recorded = zvtSetSsdNumFrames(handle(), frames) == 0 && zvtSetSsdPretriggerFrames(handle(), 0) == 0
            && arm() && call(zvtSsdTrigger);
        wait(frames * 10);
        return recorded && state() == State::Complete && acquired() == frames;
    }
    /// Records a number of frames, and saves them as a movie.
    bool recordMovie(uint32_t frames, const char *name = "Untitled")
    {
        const uint32_t before = movies();
        const bool saves = record(frames) && zvtSetSsdSaveName(handle(), name) == 0 && call(zvtSsdSaveBuffer);
        wait(500);
        return saves && movies() == before + 1;
    }
    /// The numbers of the recorded frames on the sensor.
    std::vector<uint64_t> numbers()
    {
        std::vector<uint64_t> numbers;
        const auto &memory = recorder().memory();
        for (uint64_t frame = 0; memory && frame < memory->frames(); ++frame)
            numbers.push_back(memory->start(frame).number);
        return numbers;
    }
    /// The same as ranges, each with its first and its last number.
    std::vector<std::pair<uint64_t, uint64_t>> ranges()
    {
        std::vector<std::pair<uint64_t, uint64_t>> ranges;
        for (const uint64_t number : numbers())
            if (!ranges.empty() && ranges.back().second + 1 == number)
                ranges.back().second = number;
            else
                ranges.emplace_back(number, number);
        return ranges;
    }
    /// The number of the newest frame.
    uint64_t newest()
    {
        const std::lock_guard lock(camera().mutex());
        const auto frame = camera().device<emulator::FrameClock>()->newest(0);
        return frame ? frame->number : 0;
    }
};
