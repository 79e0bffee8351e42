#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/ChamberProgram.h"

#include <cstdint>
#include <vector>

namespace emulator
{

/// The surroundings of the camera: a room with a constant temperature, or a climate chamber that runs a program. They
/// exist also while the camera is off. Temperatures are Celsius.
class Environment : public Device
{
public:
    /// Profile key and setting: "ambient", -60 to 80. The setting cannot be changed while a program runs.
    Environment(Camera &camera, Section &section);

    /// The present temperature.
    double ambient() const;

    /// The temperature that a part of the camera without any heat of its own has: it follows ambient() with a
    /// first-order lag of 300 s. Both are equal when the camera is created.
    double laggedAmbient() const;

    /// Starts a program, also if it equals the present one. The temperature changes linearly from its present value to
    /// the first point of the program, follows the program, and stays at the last point. A program without points ends
    /// the present one and sets ambient() to the value in the profile.
    void run(const ChamberProgram &program);

    /// The parts of a camera without the device Temperatures have the temperature laggedAmbient().
    void expose(int preset, image::Exposure &exposure) const override;

private:
    using Course = std::vector<ChamberProgram::Point>;

    /// Replaces the course, which starts now.
    void start(Course course);
    /// Milliseconds since the start of the course.
    int64_t elapsed() const;

    double m_profileAmbient;
    bool m_runsProgram = false;
    Course m_course; ///< The temperature since m_startTime: at least one point, the first one at 0 ms.
    int64_t m_startTime = 0; ///< A time of Clock.
    double m_laggedAtStart; ///< The value of laggedAmbient() at m_startTime.
};

} // namespace emulator
