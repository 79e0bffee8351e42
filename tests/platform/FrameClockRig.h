#pragma once

#include "platform/emulator/control.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/FrameSync.h"
#include "platform/emulator/devices/Sensor.h"

#include <QTemporaryDir>

#include <map>
#include <memory>

/// An emulated camera, not connected, and every frame that its frame clock has shown. The clock of the sensor has 20
/// MHz.
class FrameClockRig
{
public:
    static constexpr int64_t ticksPerMillisecond = 20'000;

    explicit FrameClockRig(const QString &profile = QStringLiteral("everything"))
        : m_camera(emulator::Camera::create(profile, m_folder.path())), start(emulator::Clock::now())
    {
    }

    emulator::Camera &camera() { return *m_camera; }
    emulator::FrameClock &clock() { return *m_camera->device<emulator::FrameClock>(); }
    emulator::Sensor &sensor() { return *m_camera->device<emulator::Sensor>(); }
    bool set(const char *name, const QVariant &value)
    {
        return m_camera->otherClient().set(QString::fromLatin1(name), value);
    }

    /// Notes the newest frames. Returns false if one contradicts the frames so far.
    bool poll()
    {
        for (int preset = 0; preset < emulator::maximumPresets; ++preset)
            if (const auto newest = clock().newest(preset))
                for (uint64_t number = newest->number + 1; number-- > 0;) {
                    const auto frame = clock().frame(number);
                    if (!frame || !note(*frame))
                        break;
                }
        return m_consistent;
    }

    const std::map<uint64_t, emulator::FrameStart> &frames() const { return m_frames; }

    /// True if no frame is missing and each begins after the one before, at the right microsecond.
    bool complete() const
    {
        uint64_t number = 0;
        int64_t tick = -1;
        for (const auto &[key, frame] : m_frames) {
            if (key != number++ || frame.tick <= tick || frame.microseconds != start * 1000 + frame.tick / 20)
                return false;
            tick = frame.tick;
        }
        return m_consistent;
    }

private:
    /// Returns whether the frame is new.
    bool note(const emulator::FrameStart &frame)
    {
        const auto [found, isNew] = m_frames.emplace(frame.number, frame);
        m_consistent = m_consistent && found->second == frame;
        return isNew;
    }

    QTemporaryDir m_folder;
    std::shared_ptr<emulator::Camera> m_camera;
    std::map<uint64_t, emulator::FrameStart> m_frames;
    bool m_consistent = true;

public:
    const int64_t start; ///< When the camera was made, a time of Clock.
};
