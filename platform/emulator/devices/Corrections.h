#pragma once

#include "platform/emulator/Device.h"

#include <QStringList>

#include <cstdint>
#include <string>

namespace emulator
{

/// The non-uniformity corrections (NUCs) that are loaded, one for each preset.
class Corrections : public Device
{
public:
    /// Profile keys: "names", one text for each preset of the camera, empty for a preset without a correction.
    Corrections(Camera &camera, Section &section);

    /// The name of the correction of a preset in UTF-8, empty if none is loaded. Refuses a preset that the camera
    /// lacks.
    Status name(uint8_t preset, std::string &text) const;
    /// Loads a correction into a preset. Refuses a preset that the camera lacks.
    Status load(uint8_t preset, const QString &name);

private:
    QStringList m_names;
};

} // namespace emulator
