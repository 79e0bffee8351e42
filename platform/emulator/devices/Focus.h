#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/Motor.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace emulator
{

class Zoom;

/// The focus of the lens. Its encoder counts up from near to far, or from far to near. A lens with discrete fields of
/// view has a near and a far limit for each field (0 narrow, 1 wide). Any other lens has one pair of limits, and its
/// only field has the number 2. A move by speed ends at a limit of the present field; the focus then coasts a little,
/// but stays in its range. The zoom adds some counts to the position, since the focus of a real lens shifts with its
/// zoom. Positions are encoder counts.
class Focus : public Device
{
public:
    enum End { Near, Far };

    /// Profile keys: "minimum", "maximum" (the range), "descending" (far is at the minimum), "near", "far" (the limits,
    /// lists of one entry or of one for each field), "position", "zoomShare" (the counts that the narrowest zoom adds)
    /// and "increments" (the step of a slow move, a list like "near"), all in encoder counts; "countsPerSecond" (full
    /// speed), "slowingSeconds"; "percent" (the focus moves by percentages of its speed), "slowBySteps", "manual";
    /// "nearest", "farthest" (distances in metres, lists for the narrow and the wide view).
    ///
    /// Settings: "position" (starts a move; while "manual" is true, sets the position as a hand at the lens does),
    /// "manual", "slowBySteps", and the lists "near", "far" and "increments" as in the profile.
    /// The device Zoom must exist before, if the lens has one.
    Focus(Camera &camera, Section &section);

    uint32_t minimum() const { return m_minimum; }
    uint32_t maximum() const { return m_maximum; }
    /// Whether the encoder counts up from far to near.
    bool descending() const { return m_descending; }
    uint32_t position() const;
    /// The field of view whose limits are in use: 0 or 1, or 2 on a lens without discrete fields of view.
    uint8_t presentField() const;
    bool hasField(uint8_t field) const;
    /// The limit of a field. This and the other functions with a `field` refuse a field that the lens lacks.
    Status limit(End end, uint8_t field, uint32_t &position) const;
    /// Sets a limit of a field. Refused outside the range. Near may be beyond far, since the two limits are set one
    /// after the other.
    Status setLimit(End end, uint8_t field, uint32_t position);

    /// Whether the focus is turned by hand at the lens. All moves but moveToRelativePosition() are then refused.
    bool manual() const { return m_manual; }
    /// Whether movePercent() is available.
    bool movesByPercent() const { return m_percent; }
    /// How slow moves are made in a field: 0 by steps of position, 1 by speed.
    Status slowControl(uint8_t field, uint8_t &control) const;
    /// The step of a slow move in a field, in encoder counts.
    Status increment(uint8_t field, uint32_t &counts) const;

    /// Starts a move with a speed from -3 to 3. Positive speeds move to far; 0 stops the move. Refuses other speeds.
    Status move(int32_t speed);
    /// Starts a move with -100 to 100 percent of the full speed. 0 stops the move. Absent unless movesByPercent().
    Status movePercent(float percent);
    /// Starts a move to a position. Refused outside the range.
    Status moveTo(uint32_t position);
    /// Moves to a position, and returns when the focus is at rest. Fails as moveTo() and awaitRest() do.
    Status goTo(uint32_t position);
    /// Moves to a limit of the present field, and returns when the focus is at rest.
    Status goToEnd(End end);
    /// Returns when the focus is at rest. Meanwhile: Refused if another command replaces the present one, NotConnected
    /// if the camera is disconnected.
    Status awaitRest() const { return m_motor.awaitRest(camera()); }
    /// The number of commands that have moved or stopped the focus so far.
    uint64_t commands() const { return m_motor.commands(); }

    /// The nearest and the farthest distance, in metres, to which the lens can focus with the present zoom or field.
    double nearest() const;
    double farthest() const;
    /// The position in which objects at a distance (metres) are sharp while the lens has its reference temperature. The
    /// distance is clamped to nearest() and farthest().
    uint32_t positionFor(double metres) const;

    /// The position at the end of the present move, relative to the limits of the present field: from 0, the near
    /// limit, to 1, the far limit.
    double relativePosition() const;
    /// Starts a move to such a relative position, which takes `seconds`. The turret does this when it turns, also while
    /// manual() is true.
    void moveToRelativePosition(double fraction, double seconds);

    void connectionChanged(bool connected) override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    /// Encoder counts: one entry, or one for each field of view.
    using Counts = std::vector<uint32_t>;

    Between range() const { return {double(m_minimum), double(m_maximum)}; }
    size_t indexOf(uint8_t field) const { return m_near.size() == 1 ? 0 : field; }
    uint32_t presentLimit(End end) const;
    /// Starts a move with a fraction of the full speed, -1 to 1, positive to far. Refuses an empty fraction.
    Status moveBySpeed(std::optional<double> fraction);
    Status setManual(bool manual);
    Status changePosition(uint32_t position);
    Status restoreMotorPosition(double position);
    void readSettings(Section &section);
    /// How narrow the view is, from 0 (widest) to 1 (narrowest).
    double narrowness() const;
    /// The counts that the zoom adds to the position: now, and at the end of the zoom's present move.
    double zoomShare() const;
    double restingZoomShare() const;
    double clampedToRange(double position) const;

    const Zoom *m_zoom; ///< Null if the lens has none.
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
    Motor m_motor; ///< Its position does not contain the counts that the zoom adds.
};

} // namespace emulator
