#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/Motor.h"

#include <cstdint>

namespace emulator
{

/// A continuous optical zoom. Its encoder counts up from the widest to the narrowest field of view. A move by speed
/// ends at the limit of the range and coasts past it a little; targets are within the range.
class Zoom : public Device
{
public:
    /// Profile keys: "minimum", "maximum" (the range), "overtravel" (distance of the hard stops from the range) and
    /// "position" in encoder counts; "countsPerSecond", "slowingSeconds"; "percent" (takes percentages of its speed).
    /// Setting: "position", which starts a move.
    Zoom(Camera &camera, Section &section);

    uint32_t minimum() const { return m_minimum; }
    uint32_t maximum() const { return m_maximum; }
    uint32_t position() const;
    /// The target of the last move to a position; after a move by speed the present position.
    uint32_t commandedPosition() const;
    /// How narrow the view is, from 0 (widest) to 1: now, and after the present move.
    double narrowness() const;
    double restingNarrowness() const;

    bool movesByPercent() const { return m_percent; }
    /// Starts a move with a speed -3 to 3, positive to narrow; 0 stops.
    Status move(int32_t speed);
    /// Starts a move with -100 to 100 percent of the speed; 0 stops.
    Status movePercent(float percent);
    /// Starts a move to a position, encoder counts. Refused outside the range.
    Status moveTo(uint32_t position);
    /// Moves to a position, and returns when it is reached.
    Status goTo(uint32_t position);
    /// Returns when the zoom is at rest.
    Status awaitRest() const { return m_motor.awaitRest(camera()); }

    void connectionChanged(bool connected) override;

private:
    Status restorePosition(uint32_t position);
    Status movePart(std::optional<double> part);
    double narrownessAt(double position) const;

    uint32_t m_minimum;
    uint32_t m_maximum;
    bool m_percent;
    Motor m_motor;
};

} // namespace emulator
