#pragma once

#include "platform/emulator/devices/FrameLog.h"
#include "platform/emulator/devices/RecorderMachine.h"
#include "platform/emulator/devices/Recording.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

/// A recorder without a camera: frames of 640 bytes come every 10 ms, or 3 of them every 100 ms. Times are in
/// milliseconds from 0.
class MachineRig : private emulator::RecorderWorld
{
public:
    using Machine = emulator::RecorderMachine;

    MachineRig(const Machine::Equipment &equipment, const emulator::Drive &drive, bool sequences)
        : machine(*this, settings, equipment, drive), m_sequences(sequences)
    {
        watchFrames();
    }

    /// Lets the time pass, and looks at the machine at the end.
    void wait(int64_t milliseconds)
    {
        m_now += milliseconds;
        advanceFrames();
        machine.advance(now());
        m_frames.forgetBefore(machine.oldestNeeded().value_or(m_frames.firstAfter(now())));
    }
    int64_t now() const { return m_now * 1000; }

    /// The values that a client can read from the recorder.
    std::string result()
    {
        std::string text = std::to_string(machine.state()) + ' ' + std::to_string(machine.framesAcquired()) + ' '
            + std::to_string(machine.playbackFrame(now())) + ' ' + std::to_string(machine.timesFull());
        text += ' ' + std::to_string(settings.frames) + ' ' + std::to_string(settings.pretrigger) + ' '
            + std::to_string(settings.rate) + ' ' + std::to_string(settings.startFrame) + ' '
            + std::to_string(settings.endFrame) + ' ' + std::to_string(machine.drive().used());
        for (const auto &movie : machine.drive().movies())
            text += describe(*movie.recording);
        return machine.memory() ? text + " memory" + describe(*machine.memory()) : text;
    }

    emulator::RecorderSettings settings;
    Machine machine;

private:
    static constexpr uint32_t frequency = 20'000'000;
    static constexpr int64_t ticksPerMillisecond = frequency / 1000;

    static std::string describe(const emulator::Recording &recording)
    {
        uint64_t sum = 0;
        for (uint64_t frame = 0; frame < recording.frames(); frame += 1 + recording.frames() / 40)
            sum = sum * 31 + recording.start(frame).number;
        return ' ' + std::to_string(recording.frames()) + ':' + std::to_string(sum);
    }

    emulator::FrameTiming timing() const
    {
        emulator::SensorTiming sensor;
        sensor.presets[0] = {1, 10 * ticksPerMillisecond, 1000, 1000};
        return {sensor, std::nullopt, m_sequences ? 3 : emulator::FrameTiming::endless};
    }

    /// Begins the sequences until now.
    void advanceFrames()
    {
        while (m_sequences && m_nextSequence <= m_now) {
            m_frames.begin({timing(), m_nextSequence * ticksPerMillisecond}, m_nextNumber,
                           {emulator::PulseTrain::every(100 * ticksPerMillisecond, frequency)});
            m_nextNumber += 3;
            m_nextSequence += 100;
        }
    }

    uint64_t frameBytes() const override { return 640; }
    bool freeFrames() override { return true; }
    void watchFrames() override
    {
        if (m_watching)
            return;
        m_watching = true;
        m_frames.start(frequency, 0);
        if (!m_sequences)
            m_frames.begin({timing(), 0}, 0);
        advanceFrames();
    }
    float highestRate() const override { return 50; }
    uint64_t firstAfter(int64_t time) const override { return m_frames.firstAfter(time); }
    void beginnings(uint64_t first, std::span<int64_t> times) const override { m_frames.beginnings(first, times); }
    int64_t shortestFrame() const override { return m_frames.shortestFrame(); }
    std::shared_ptr<const emulator::Recording> record(emulator::FrameRanges numbers) override
    {
        return std::make_shared<const emulator::Recording>(emulator::image::Size{64, 4}, std::move(numbers), m_frames,
                                                           std::deque<emulator::Recording::Segment>{{}});
    }

    bool m_sequences;
    bool m_watching = false;
    int64_t m_now = 0;
    int64_t m_nextSequence = 0;
    uint64_t m_nextNumber = 0;
    emulator::FrameLog m_frames;
};
