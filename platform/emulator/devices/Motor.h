#pragma once

#include "platform/emulator/Status.h"

#include <QString>

#include <cstdint>
#include <limits>
#include <optional>

namespace emulator
{

class Camera;
class Section;

/// A motor of the lens with its encoder. Positions are encoder counts; its moves follow the Clock. A move to a position
/// ends exactly there. A move by speed ends when it is stopped or reaches a limit; the motor then coasts a little while
/// it slows down. Two hard stops limit the position. Every command replaces the previous one.
class Motor
{
public:
    struct Range {
        double minimum;
        double maximum;
    };

    /// The largest number of encoder counts in a profile.
    static constexpr int maximumCounts = std::numeric_limits<int>::max();

    /// Reads encoder counts from a profile. Throws a SetupError for less than `minimum`.
    static uint32_t counts(Section &section, const QString &key, uint32_t fallback, uint32_t minimum);

    /// Makes a motor from the profile keys "countsPerSecond", "slowingSeconds" and "position". The position must be in
    /// `positionRange`.
    static Motor fromProfile(Section &section, Range stops, double defaultSpeed, Range positionRange,
                             double defaultPosition);

    /// `stops` are the hard stops, `fullSpeed` is in counts per second, and `slowingSeconds` is the time from full
    /// speed to rest.
    Motor(Range stops, double fullSpeed, double slowingSeconds, double position);

    /// Returns the fraction of the full speed, -1 to 1, for a speed step, -3 to 3. Empty for other steps.
    static std::optional<double> speedFractionOfStep(int32_t step);
    /// Returns the fraction of the full speed, -1 to 1, for -100 to 100 percent. Empty for other values.
    static std::optional<double> speedFractionOfPercent(float percent);

    double position() const;
    /// The position at the end of the present move.
    double restingPosition() const;
    /// The target of the last move to a position. Empty after any other command.
    std::optional<double> target() const { return m_target; }
    bool moving() const { return remainingMilliseconds() > 0; }
    /// The number of commands so far.
    uint64_t commands() const { return m_commands; }

    /// Starts a move to a position, at full speed or in `seconds`. The target is clamped to the hard stops.
    void moveTo(double position);
    void moveTo(double position, double seconds);
    /// Starts a move with a fraction of the full speed, -1 to 1, up to a limit. If the limit is not in this direction,
    /// or for 0, the motor slows down to rest.
    void moveBySpeed(double fraction, double limit);
    /// Stops immediately, as without power.
    void halt() { setPosition(position()); }
    /// Sets the position without a move, as for a lens that is turned by hand.
    void setPosition(double position);

    /// Lets the time pass until the motor is at rest. Returns Refused if another command replaces the present one
    /// meanwhile, NotConnected if the camera is disconnected meanwhile.
    Status awaitRest(Camera &camera) const;

private:
    /// Seconds since the last command.
    double elapsed() const;
    /// Seconds that the present move needs to slow down, 0 for a move to a position.
    double slowingSecondsOfMove() const;
    /// The present velocity in counts per second.
    double velocity() const;
    int64_t remainingMilliseconds() const;
    double clampedToStops(double position) const;
    void start(double velocity, double runSeconds, bool slowsDown, std::optional<double> target);

    Range m_stops;
    double m_fullSpeed; ///< Counts per second.
    double m_slowingSeconds; ///< From full speed to rest.

    // A move starts at this position and time, runs with this velocity for m_runSeconds, and then slows down evenly if
    // m_slowsDown is true.
    double m_startPosition;
    int64_t m_startTime;
    double m_velocity = 0;
    double m_runSeconds = 0;
    bool m_slowsDown = false;
    std::optional<double> m_target;
    uint64_t m_commands = 0;
};

} // namespace emulator
