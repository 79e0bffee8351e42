#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>

namespace emulator
{

/// A turret with two optics, for a narrow and a wide field of view. Each field of view has its own focus limits. When
/// the turret turns, it moves the focus to the same relative position between the new limits, and hides the scene.
class FieldOfView : public Device
{
public:
    enum Field : uint8_t { Narrow = 0, Wide = 1 };

    /// Profile keys: "selected" (0 narrow, 1 wide), "switchSeconds". Setting: "selected".
    FieldOfView(Camera &camera, Section &section);

    /// The field of view that was selected last, also while the turret still turns to it.
    Field selected() const { return m_selected; }

    /// Selects a field of view, and starts to move the focus to its relative position between the new limits. Refuses
    /// other values than Narrow and Wide.
    Status select(uint8_t field);
    /// The same without a move of the focus, for callers that move it themselves.
    Status selectWithoutFocus(uint8_t field);

    void expose(int preset, image::Exposure &exposure) const override;

private:
    Field m_selected = Narrow;
    int64_t m_turnMilliseconds;
    int64_t m_arrival = 0; ///< The end of the last turn, a time of Clock.
};

} // namespace emulator
