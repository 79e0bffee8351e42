#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/Motor.h"

#include <cstdint>
#include <optional>

namespace emulator
{

/// A continuous optical zoom. Its encoder counts up from the widest to the narrowest field of view. A move by speed
/// ends at a limit of the range and coasts a little beyond it. Positions are encoder counts.
class Zoom : public Device
{
public:
    /// Profile keys: "minimum", "maximum" (the range), "overtravel" (distance of the hard stops from the range) and
    /// "position", all in encoder counts; "countsPerSecond" (full speed), "slowingSeconds"; "percent" (the zoom moves
    /// by percentages of its speed). Setting: "position", which starts a move.
    Zoom(Camera &camera, Section &section);

    uint32_t minimum() const { return m_minimum; }
    uint32_t maximum() const { return m_maximum; }
    uint32_t position() const;
    /// The target of the last move to a position, or the present position after any other move.
    uint32_t commandedPosition() const;
    /// How narrow the view is, from 0 (widest) to 1 (narrowest): now, and after the present move.
    double narrowness() const;
    double restingNarrowness() const;

    /// Whether movePercent() is available.
    bool movesByPercent() const { return m_percent; }
    /// Starts a move with a speed from -3 to 3. Positive speeds move to narrow; 0 stops the move. Refuses other speeds.
    Status move(int32_t speed);
    /// Starts a move with -100 to 100 percent of the full speed. 0 stops the move. Absent if the zoom lacks this.
    Status movePercent(float percent);
    /// Starts a move to a position. Refused outside the range.
    Status moveTo(uint32_t position);
    /// Moves to a position, and returns when the zoom is at rest. Refused like moveTo() and awaitRest().
    Status goTo(uint32_t position);
    /// Returns when the zoom is at rest. Refused if another command replaces the present one meanwhile.
    Status awaitRest() const { return m_motor.awaitRest(camera()); }

    void connectionChanged(bool connected) override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    Between range() const { return {double(m_minimum), double(m_maximum)}; }
    Status restorePosition(uint32_t position);
    /// Starts a move with a fraction of the full speed, -1 to 1, positive to narrow. Refuses an empty fraction.
    Status moveBySpeed(std::optional<double> fraction);
    double narrownessAt(double position) const;

    uint32_t m_minimum;
    uint32_t m_maximum;
    bool m_percent;
    Motor m_motor;
};

} // namespace emulator
