#pragma once

#include "platform/emulator/Device.h"

namespace emulator
{

/// Moves the focus to the position in which objects at a distance are sharp. The limits depend on the zoom.
class FocusToDistance : public Device
{
public:
    /// Profile keys and settings: "available".
    FocusToDistance(Camera &camera, Section &section);

    /// Whether the lens can focus to a distance at present.
    bool available() const { return m_available; }

    /// The nearest and the farthest distance in metres. Refused while the function is not available.
    Status minimum(float &metres) const;
    Status maximum(float &metres) const;

    /// Starts a move to a distance in metres. A distance beyond a limit moves to this limit, because the caller may
    /// have rounded the limits. Refused for a distance that is not above 0, and while the function is not available.
    Status focusTo(float metres);

private:
    bool m_available = true;
};

} // namespace emulator
