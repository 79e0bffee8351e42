#pragma once

#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace emulator
{

class Camera;

/// A motor of the lens with its encoder, in encoder counts. It moves with the Clock, at a speed and by that much to a
/// position, where it stands exactly; or on until it is stopped or comes to a limit, and then runs on a little while it
/// slows down. Its encoder ends at two hard stops. Every command takes over from the one before it.
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

    /// The motor of a profile, which tells its "countsPerSecond", "slowingSeconds" and, within the counts of `range`,
    /// its "position".
    static Motor fromProfile(Section &section, Range stops, double usualSpeed, Range range, double usualPosition);

    /// `stops` are the hard ones, `fastest` is in counts in a second, and `slowingSeconds` is what it takes to come to
    /// a standstill from there.
    Motor(Range stops, double fastest, double slowingSeconds, double position);

    /// The part of its speed for one of an operator's steps, -3 to 3; nothing for others.
    static std::optional<double> partOfStep(int32_t step);
    /// The part of its speed for -100 to 100 percent; nothing for others.
    static std::optional<double> partOfPercent(float percent);

    double position() const;
    /// Where it will stand if no other command comes.
    double restingPosition() const;
    /// Where it was sent to, nothing after a move without a goal.
    std::optional<double> goal() const { return m_goal; }
    bool moving() const { return remainingMilliseconds() > 0; }

    /// Travels to a position within the stops, as fast as it can or in a time.
    void travelTo(double position);
    void travelTo(double position, double seconds);
    /// Moves with a part of its speed, -1 to 1, up to a limit, past which it does not start. 0 stops it.
    void move(double part, double limit);
    /// Stands at once: its power is gone.
    void halt() { place(position()); }
    /// Puts it somewhere, as only a hand can.
    void place(double position);

    /// Lets the time pass until the motor stands. Refused if another command has taken it over meanwhile, NotConnected
    /// if the camera has been disconnected.
    Status awaitRest(Camera &camera) const;

private:
    double elapsed() const;
    double slowing() const;
    double velocity() const;
    int64_t remainingMilliseconds() const;
    double within(double position) const;
    void start(double velocity, double runSeconds, bool slowsDown, std::optional<double> goal);

    Range m_stops;
    double m_fastest;
    double m_slowingSeconds;

    // From here it runs with a velocity for a time, and slows down evenly behind that unless it has a goal.
    double m_from;
    int64_t m_since;
    double m_velocity = 0;
    double m_runSeconds = 0;
    bool m_slowsDown = false;
    std::optional<double> m_goal;
    uint64_t m_commands = 0;
};

} // namespace emulator
