#pragma once

#include "platform/emulator/Device.h"

namespace emulator
{

/// The athermalization of the lens: it keeps the focus when the temperature changes.
class Athermalization : public Device
{
public:
    /// Profile keys and settings: "available", "enabled".
    Athermalization(Camera &camera, Section &section);

    bool available() const { return m_available; }
    /// Whether it is switched on. Reading and setting are refused while the athermalization is not available.
    Status enabled(bool &enabled) const { return fetch(m_enabled, enabled); }
    Status setEnabled(bool enabled) { return assign(m_enabled, enabled); }
    /// Whether the temperature of the lens does not change the focus now.
    bool holdsFocus() const { return m_available && m_enabled; }

private:
    bool m_available = true;
    bool m_enabled = false;
};

} // namespace emulator
