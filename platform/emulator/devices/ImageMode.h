#pragma once

#include "platform/emulator/Device.h"

namespace emulator
{

/// The orientation of the image, and the high sensitivity mode (HSM) if the camera has it.
class ImageMode : public Device
{
public:
    /// Profile keys and settings: "reverted" (left to right), "inverted" (top to bottom), "hsmAvailable", "hsmEnabled".
    ImageMode(Camera &camera, Section &section);

    bool reverted() const { return m_reverted; }
    Status setReverted(bool reverted) { return assign(m_reverted, reverted); }
    bool inverted() const { return m_inverted; }
    Status setInverted(bool inverted) { return assign(m_inverted, inverted); }

    bool hsmAvailable() const { return m_hsmAvailable; }
    /// Whether the high sensitivity mode is on. Reading and setting are refused while it is not available.
    Status hsmEnabled(bool &enabled) const { return fetch(m_hsmEnabled, enabled); }
    Status setHsmEnabled(bool enabled) { return assign(m_hsmEnabled, enabled); }

    void expose(int preset, image::Exposure &exposure) const override;

private:
    bool m_reverted = false;
    bool m_inverted = false;
    bool m_hsmAvailable = false;
    bool m_hsmEnabled = false;
};

} // namespace emulator
