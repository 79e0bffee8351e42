#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <cstdint>

namespace emulator
{

/// A turret with two optics, for a narrow and a wide field of view. Each has focus limits of its own: while the turret
/// turns, it carries the focus to the same place between the new ones.
class FieldOfView : public Device
{
public:
    enum Field : uint8_t { Narrow = 0, Wide = 1 };

    /// Knows in the profile: "selected" (0 narrow, 1 wide), "switchSeconds".
    FieldOfView(Camera &camera, Section &section);

    Field selected() const { return m_selected; }

    /// Starts to turn, and takes the focus along.
    Status select(uint8_t field);
    /// The same for somebody who sends the focus somewhere too.
    Status selectAlone(uint8_t field);

    QJsonObject save() const override;
    /// The focus goes where it belongs by its own values.
    void restore(const QJsonObject &values) override;
    /// "selected".
    bool set(const QString &name, const QVariant &value) override;

private:
    Field m_selected;
    double m_switchSeconds;
};

} // namespace emulator
