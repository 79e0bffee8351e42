#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Section.h"
#include "platform/emulator/devices/Motor.h"

#include <cstdint>

namespace emulator
{

/// A continuous optical zoom. Its encoder grows from the widest to the narrowest field of view. A move by speed ends at
/// the range's end and coasts past it a little; positions to go to lie in the range.
class Zoom : public Device
{
public:
    /// Knows in the profile: "minimum", "maximum" (the range), "overtravel" (how far behind it the hard stops are) and
    /// "position" in encoder counts; "countsPerSecond", "slowingSeconds"; "percent" (takes percentages of its speed).
    Zoom(Camera &camera, Section &section);

    uint32_t minimum() const { return m_minimum; }
    uint32_t maximum() const { return m_maximum; }
    uint32_t position() const;
    /// Where it was sent to; where it is after a move by speed.
    uint32_t commandedPosition() const;
    /// How narrow the view is, 0 to 1; now, and once the zoom stands.
    double narrowness() const;
    double restingNarrowness() const;

    bool movesByPercent() const { return m_percent; }
    /// Starts a move with a speed -3 to 3, positive to narrow; 0 stops.
    Status move(int32_t speed);
    /// Starts a move with -100 to 100 percent of the speed; 0 stops.
    Status movePercent(float percent);
    /// Starts to travel to a position.
    Status moveTo(uint32_t position);
    /// Travels to a position, and ends there.
    Status goTo(uint32_t position);
    /// Ends when the zoom stands.
    Status awaitRest() const { return m_motor.awaitRest(camera()); }

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;
    /// "position": travels there.
    bool set(const QString &name, const QVariant &value) override;

private:
    Status movePart(std::optional<double> part);
    double narrownessAt(double position) const;

    uint32_t m_minimum;
    uint32_t m_maximum;
    bool m_percent;
    Motor m_motor;
};

} // namespace emulator
