#pragma once

#include "platform/emulator/Device.h"

namespace emulator
{

/// Keeps the lens in focus over temperature, while it is available.
class Athermalization : public Device
{
public:
    /// Profile keys and settings: "available", "enabled".
    Athermalization(Camera &camera, Section &section);

    bool available() const { return m_available; }
    /// Reading and setting it are refused while it is not available.
    Status enabled(bool &enabled) const { return fetch(m_enabled, enabled); }
    Status setEnabled(bool enabled) { return assign(m_enabled, enabled); }

private:
    bool m_available = true;
    bool m_enabled = false;
};

} // namespace emulator
