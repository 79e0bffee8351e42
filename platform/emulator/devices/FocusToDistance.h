#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

namespace emulator
{

/// Sends the focus to where things at a distance are sharp. What can be reached changes with the zoom.
class FocusToDistance : public Device
{
public:
    /// Knows in the profile: "available".
    FocusToDistance(Camera &camera, Section &section);

    /// The lens knows its distances now.
    bool available() const { return m_available; }

    /// Metres. Refused while they are not known.
    Status minimum(float &metres) const;
    Status maximum(float &metres) const;

    /// Starts to travel. A distance out of reach gives the nearest that can be done, since a limit comes back rounded.
    Status focusTo(float metres);

    /// "available".
    bool set(const QString &name, const QVariant &value) override;

private:
    bool m_available;
};

} // namespace emulator
