#pragma once

#include "platform/emulator/Clock.h"
#include "platform/emulator/Device.h"
#include "platform/emulator/devices/ChamberProgram.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace emulator
{

/// The surroundings of the camera: a room with a constant temperature, or a climate chamber that runs a program, and
/// the targets before the camera. They exist also while the camera is off. Temperatures are Celsius.
class Environment : public Device
{
public:
    /// Profile key: "ambient", -60 to 80. Settings: "ambient", which cannot be changed while a program runs, and
    /// "movingTargets" (whether the live scene contains its targets).
    Environment(Camera &camera, Section &section);

    /// The present temperature.
    double ambient() const;

    /// The temperature that a part of the camera without any heat of its own has: it follows ambient() with a
    /// first-order lag of 300 s. Both are equal when the camera is created.
    double laggedAmbient() const { return laggedAmbient(Clock::now()); }
    /// The same at a time of Clock since the last change of the ambient temperature or program.
    double laggedAmbient(int64_t time) const;

    /// The next time of Clock after `time` at which laggedAmbient() may turn: between two of them it only rises or only
    /// falls. The largest number if there is none.
    int64_t nextTurn(int64_t time) const;

    /// Calls `listener` before each change of the ambient temperature or program, until the end of the camera. Devices
    /// that compute a temperature step by step advance to the present then.
    void beforeChange(std::function<void()> listener) { m_listeners.push_back(std::move(listener)); }

    /// Starts a program, also if it equals the present one. The temperature changes linearly from its present value to
    /// the first point of the program, follows the program, and stays at the last point. A program without points ends
    /// the present one and sets ambient() to the value in the profile.
    void run(const ChamberProgram &program);

    /// The parts of a camera without the device Temperatures have the temperature laggedAmbient(). The live scene has
    /// targets or not.
    void expose(int preset, image::Exposure &exposure) const override;

private:
    using Course = std::vector<ChamberProgram::Point>;

    /// Replaces the course, which starts now.
    void start(Course course);
    /// Milliseconds from the start of the course to a time of Clock.
    int64_t elapsed(int64_t time) const { return std::max<int64_t>(0, time - m_startTime); }

    double m_profileAmbient;
    bool m_hasTargets = true;
    bool m_runsProgram = false;
    Course m_course; ///< The temperature since m_startTime: at least one point, the first one at 0 ms.
    int64_t m_startTime = 0; ///< A time of Clock.
    std::vector<std::function<void()>> m_listeners;
    double m_laggedAtStart; ///< The value of laggedAmbient() at m_startTime.
};

} // namespace emulator
