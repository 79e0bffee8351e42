#pragma once

#include "platform/emulator/Device.h"

namespace emulator
{

/// Moves the focus to the position in which objects at a distance are sharp. The limits change with the zoom.
class FocusToDistance : public Device
{
public:
    /// Profile key and setting: "available".
    FocusToDistance(Camera &camera, Section &section);

    /// The lens can focus to a distance now.
    bool available() const { return m_available; }

    /// The nearest and the farthest distance, metres. Refused while it is not available.
    Status minimum(float &metres) const;
    Status maximum(float &metres) const;

    /// Starts to move. A distance (metres) out of reach moves to the nearest limit, because the limits that the caller
    /// has read may have been rounded.
    Status focusTo(float metres);

private:
    bool m_available = true;
};

} // namespace emulator
