#pragma once

#include "platform/emulator/Section.h"
#include "platform/emulator/Status.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace emulator
{

class Camera;

/// A motor of the lens with its encoder, in encoder counts. It moves with the Clock: to a position, which it reaches
/// exactly; or by speed until it is stopped or reaches a limit, after which it coasts a little while it slows down. Two
/// hard stops limit its encoder. Every command replaces the one before it.
class Motor
{
public:
    struct Range {
        double minimum;
        double maximum;
    };

    static constexpr int mostCounts = std::numeric_limits<int>::max();

    /// Encoder counts of a profile, from `minimum` up.
    static uint32_t counts(Section &section, const QString &key, uint32_t fallback, uint32_t minimum);

    /// The motor of a profile. Its keys are "countsPerSecond", "slowingSeconds" and "position", which is in `range`.
    static Motor fromProfile(Section &section, Range stops, double usualSpeed, Range range, double usualPosition);

    /// `stops` are the hard stops, `fastest` is in counts per second, and `slowingSeconds` is the time from there to
    /// rest.
    Motor(Range stops, double fastest, double slowingSeconds, double position);

    /// The fraction of the full speed, -1 to 1, for a speed step of an operator, -3 to 3. Empty for other steps.
    static std::optional<double> speedFractionOfStep(int32_t step);
    /// The fraction of the full speed, -1 to 1, for -100 to 100 percent. Empty for other values.
    static std::optional<double> speedFractionOfPercent(float percent);

    double position() const;
    /// The position in which it will be at rest if no other command follows.
    double restingPosition() const;
    /// The target of the last move to a position. Empty after another command.
    std::optional<double> goal() const { return m_goal; }
    bool moving() const { return remainingMilliseconds() > 0; }

    /// Starts a move to a position within the stops, at full speed or in a given time.
    void travelTo(double position);
    void travelTo(double position, double seconds);
    /// Starts a move with a fraction of the full speed, -1 to 1, up to a limit. Beyond the limit it does not start. 0
    /// stops it.
    void move(double fraction, double limit);
    /// Stops at once, as without power.
    void halt() { setPosition(position()); }
    /// Sets the position without a move, as when it is turned by hand.
    void setPosition(double position);

    /// Lets the time pass until the motor is at rest. Refused if another command replaces the present one meanwhile,
    /// NotConnected if the camera is disconnected meanwhile.
    Status awaitRest(Camera &camera) const;

private:
    double elapsed() const;
    double slowing() const;
    double velocity() const;
    int64_t remainingMilliseconds() const;
    double clampedToStops(double position) const;
    void start(double velocity, double runSeconds, bool slowsDown, std::optional<double> goal);

    Range m_stops;
    double m_fastest;
    double m_slowingSeconds;

    // It runs from this position with a velocity for a time, and then slows down evenly unless it has a goal.
    double m_from;
    int64_t m_since;
    double m_velocity = 0;
    double m_runSeconds = 0;
    bool m_slowsDown = false;
    std::optional<double> m_goal;
    uint64_t m_commands = 0;
};

} // namespace emulator
