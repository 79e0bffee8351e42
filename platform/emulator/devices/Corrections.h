#pragma once

#include "platform/emulator/Device.h"

#include <QStringList>

#include <cstdint>
#include <string>

namespace emulator
{

/// The non-uniformity corrections in the camera's memory, one for each preset.
class Corrections : public Device
{
public:
    /// Knows in the profile: "names", one text for each preset that the camera has; an empty one where none is loaded.
    Corrections(Camera &camera, Section &section);

    /// The name of the correction in a preset, UTF-8, empty if there is none. Refuses a preset that the camera lacks.
    Status name(uint8_t preset, std::string &text) const;
    /// Puts a correction into a preset. Refuses a preset that the camera lacks.
    Status load(uint8_t preset, const QString &name);

private:
    QStringList m_names;
};

} // namespace emulator
