#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Section.h"
#include "platform/emulator/devices/Motor.h"

#include <cstdint>
#include <vector>

namespace emulator
{

/// The focus of the lens. Its encoder grows from near to far, or the other way about. A lens with discrete fields of
/// view has limits for each of them, 0 narrow and 1 wide; any other lens has one pair of limits, as field 2. A move by
/// speed ends at the limits of the present field and runs on a little, but never out of the range. The zoom drags the
/// focus along by some counts, since no lens holds it perfectly.
class Focus : public Device
{
public:
    enum End { Near, Far };

    /// Knows in the profile: "minimum", "maximum" (the range), "descending" (far is at the minimum), "near", "far" (the
    /// limits: lists with one entry, or with those of both fields), "position", "zoomShare" (what the whole zoom adds)
    /// and "increments" (the positional step of each field) in encoder counts; "countsPerSecond", "slowingSeconds";
    /// "percent" (takes percentages of its speed), "slowBySteps", "manual"; "nearest", "farthest" (what it can focus
    /// on, in metres: lists for the narrow and the wide view).
    Focus(Camera &camera, Section &section);

    uint32_t minimum() const { return m_minimum; }
    uint32_t maximum() const { return m_maximum; }
    bool descending() const { return m_descending; }
    uint32_t position() const;
    /// 2 on a lens without discrete fields of view.
    uint8_t presentField() const;
    bool hasField(uint8_t field) const;
    Status limit(End end, uint8_t field, uint32_t &position) const;
    /// Near may come to lie behind far, as it does when somebody sets one limit after the other.
    Status setLimit(End end, uint8_t field, uint32_t position);

    /// Turned by hand at the lens: the motor takes no commands.
    bool manual() const { return m_manual; }
    bool movesByPercent() const { return m_percent; }
    /// 0: the slow speed is made of steps of position.
    Status slowControl(uint8_t field, uint8_t &control) const;
    Status increment(uint8_t field, uint32_t &counts) const;

    /// Starts a move with a speed -3 to 3, positive to far; 0 stops.
    Status move(int32_t speed);
    /// Starts a move with -100 to 100 percent of the speed; 0 stops.
    Status movePercent(float percent);
    /// Starts to travel to a position in the range.
    Status moveTo(uint32_t position);
    /// Travels to a position, and ends there.
    Status goTo(uint32_t position);
    /// Travels to a limit of the present field, and ends there.
    Status goToEnd(End end);
    /// Ends when the focus stands.
    Status awaitRest() const { return m_motor.awaitRest(camera()); }

    /// What it can focus on with the present zoom, in metres.
    double nearest() const;
    double farthest() const;
    /// Where things at a distance are sharp; for one out of reach, the nearest that can be done.
    uint32_t positionFor(double metres) const;

    /// Where it will stand between the limits of the present field, 0 near to 1 far.
    double placeBetweenLimits() const;
    /// A turning turret takes the focus there, whoever turns it.
    void carryBetweenLimits(double place, double seconds);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    void connectionChanged(bool connected) override;
    /// "position" (travels there, or is turned there by hand), "manual", "slowBySteps", and as lists like in the
    /// profile "near", "far", "increments".
    bool set(const QString &name, const QVariant &value) override;

private:
    size_t indexOf(uint8_t field) const { return m_near.size() == 1 ? 0 : field; }
    uint32_t presentLimit(End end) const;
    Status movePart(std::optional<double> part);
    void setManual(bool manual);
    bool setList(std::vector<uint32_t> &list, const QVariant &value);
    double narrowness() const;
    double zoomShare() const;
    double restingZoomShare() const;
    double within(double position) const;

    uint32_t m_minimum;
    uint32_t m_maximum;
    bool m_descending;
    std::vector<uint32_t> m_near;
    std::vector<uint32_t> m_far;
    std::vector<uint32_t> m_increments;
    bool m_percent;
    bool m_slowBySteps;
    bool m_manual;
    std::vector<double> m_nearest;
    std::vector<double> m_farthest;
    double m_zoomShare;
    Motor m_motor; ///< Where the encoder would be without the zoom's share.
};

} // namespace emulator
