#pragma once

#include "platform/emulator/devices/Trigger.h"
#include "tests/platform/FrameClockRig.h"
#include "zvt/zvtsdk.h"

#include <initializer_list>
#include <utility>

/// A camera with a trigger, in a window of which a frame takes 10 ms. It is connected at tick 0.
class TriggerRig : public FrameClockRig
{
public:
    TriggerRig() { camera().connect(); }
    /// Changes the settings and sets the trigger before the camera is connected.
    TriggerRig(int mode, int source, double rate = 10,
               std::initializer_list<std::pair<const char *, QVariant>> settings = {})
    {
        bool changed = true;
        for (const auto &[name, value] : settings)
            changed = set(name, value) && changed;
        arm(mode, source, rate);
        ready = ready && changed;
        camera().connect();
    }

    /// `rate` is that of a periodic source.
    void arm(int mode, int source, double rate = 10)
    {
        const bool external = source == emulator::Trigger::External;
        ready = set(external ? "sync.triggerRate" : "trigger.internalRate", rate) && set("trigger.source", source)
            && set("trigger.mode", mode);
    }
    uint64_t handle() { return camera().handle(); }

    /// Milliseconds from tick 0 to the newest frame of a preset, -1 without one.
    double newest(int preset = 0)
    {
        const auto frame = clock().newest(preset);
        return frame ? double(frame->tick) / ticksPerMillisecond : -1;
    }
    /// The presets and the times of the frames so far, in milliseconds.
    QString story() const
    {
        QStringList texts;
        for (const auto &[number, frame] : frames())
            texts.append(QStringLiteral("%1@%2").arg(frame.preset).arg(double(frame.tick) / ticksPerMillisecond));
        return texts.join(QLatin1Char(' '));
    }
    /// Lets time pass and notes the frames after each millisecond. False if a frame contradicts one noted before.
    bool watch(int milliseconds)
    {
        bool consistent = poll();
        for (int n = 0; n < milliseconds; ++n) {
            emulator::Clock::advance(1);
            consistent = poll() && consistent;
        }
        return consistent && complete();
    }

    bool ready = true; ///< Whether the camera has taken the settings.
};
