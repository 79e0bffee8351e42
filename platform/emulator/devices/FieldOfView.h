#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// A turret with two optics, for a narrow and a wide field of view. Each has focus limits of its own: a turning turret
/// moves the focus to the same relative place between the new limits.
class FieldOfView : public Device
{
public:
    enum Field : uint8_t { Narrow = 0, Wide = 1 };

    /// Profile keys: "selected" (0 narrow, 1 wide), "switchSeconds". Setting: "selected".
    FieldOfView(Camera &camera, Section &section);

    Field selected() const { return m_selected; }

    /// Starts to turn, and moves the focus to its place between the new limits.
    Status select(uint8_t field);
    /// Leaves the focus alone, for a caller that moves it too.
    Status selectAlone(uint8_t field);

private:
    Field m_selected = Narrow;
    double m_switchSeconds;
};

} // namespace emulator
