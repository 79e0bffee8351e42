#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/Motor.h"

#include <cstdint>
#include <vector>

namespace emulator
{

/// The focus of the lens. Its encoder counts up from near to far, or from far to near. A lens with discrete fields of
/// view has limits for each of them, 0 narrow and 1 wide; any other lens has one pair of limits, as field 2. A move by
/// speed ends at a limit of the present field and coasts a little, but never out of the range. The zoom changes the
/// position by some counts, because no real lens holds its focus perfectly.
class Focus : public Device
{
public:
    enum End { Near, Far };

    /// Profile keys: "minimum", "maximum" (the range), "descending" (far is at the minimum), "near", "far" (the limits:
    /// lists with one entry, or with those of both fields), "position", "zoomShare" (counts that the whole zoom adds)
    /// and "increments" (the step of a slow move, for each field) in encoder counts; "countsPerSecond",
    /// "slowingSeconds"; "percent" (takes percentages of its speed), "slowBySteps", "manual"; "nearest", "farthest"
    /// (limits of the distance in metres: lists for the narrow and the wide view).
    ///
    /// Settings: "position" (starts a move, or is set by hand), "manual", "slowBySteps", and as lists like in the
    /// profile "near", "far", "increments".
    Focus(Camera &camera, Section &section);

    uint32_t minimum() const { return m_minimum; }
    uint32_t maximum() const { return m_maximum; }
    bool descending() const { return m_descending; }
    uint32_t position() const;
    /// 2 on a lens without discrete fields of view.
    uint8_t presentField() const;
    bool hasField(uint8_t field) const;
    Status limit(End end, uint8_t field, uint32_t &position) const;
    /// Refused outside the range. Near may be beyond far, as it is between two calls that set one limit after the
    /// other.
    Status setLimit(End end, uint8_t field, uint32_t position);

    /// The focus is turned by hand at the lens: the motor refuses commands.
    bool manual() const { return m_manual; }
    bool movesByPercent() const { return m_percent; }
    /// 0: slow moves are made of steps of position.
    Status slowControl(uint8_t field, uint8_t &control) const;
    Status increment(uint8_t field, uint32_t &counts) const;

    /// Starts a move with a speed -3 to 3, positive to far; 0 stops.
    Status move(int32_t speed);
    /// Starts a move with -100 to 100 percent of the speed; 0 stops.
    Status movePercent(float percent);
    /// Starts a move to a position in the range.
    Status moveTo(uint32_t position);
    /// Moves to a position, and returns when it is reached.
    Status goTo(uint32_t position);
    /// Moves to a limit of the present field, and returns when it is reached.
    Status goToEnd(End end);
    /// Returns when the focus is at rest.
    Status awaitRest() const { return m_motor.awaitRest(camera()); }

    /// The nearest and the farthest distance that it can focus to with the present zoom, metres.
    double nearest() const;
    double farthest() const;
    /// The position in which objects at a distance are sharp; for a distance out of reach, that of the nearest limit.
    uint32_t positionFor(double metres) const;

    /// Its relative place between the limits of the present field when it is at rest, 0 near to 1 far.
    double placeBetweenLimits() const;
    /// Starts a move to a relative place, as a turning turret does, also while the focus is turned by hand.
    void carryBetweenLimits(double place, double seconds);

    void connectionChanged(bool connected) override;

private:
    /// Encoder counts: one entry, or one for each field of view.
    using Counts = std::vector<uint32_t>;

    size_t indexOf(uint8_t field) const { return m_near.size() == 1 ? 0 : field; }
    uint32_t presentLimit(End end) const;
    Status movePart(std::optional<double> part);
    Status setManual(bool manual);
    Status takeTo(uint32_t position);
    Status restoreRest(double position);
    void readSettings(Section &section);
    double narrowness() const;
    double zoomShare() const;
    double restingZoomShare() const;
    double within(double position) const;

    uint32_t m_minimum;
    uint32_t m_maximum;
    bool m_descending;
    Counts m_near;
    Counts m_far;
    Counts m_increments;
    bool m_percent;
    bool m_slowBySteps = false;
    bool m_manual = false;
    std::vector<double> m_nearest;
    std::vector<double> m_farthest;
    double m_zoomShare;
    Motor m_motor; ///< Its encoder has the position without the zoom's share.
};

} // namespace emulator
