#pragma once

#include "platform/emulator/Device.h"

#include <QStringList>

#include <cstdint>
#include <string>

namespace emulator
{

/// The gain levels of the detector. They count from 0 and may have names.
class DetectorGain : public Device
{
public:
    /// Profile keys: "levels" (their number), "names" (may be fewer), "level", "named". Settings: "level", "named".
    DetectorGain(Camera &camera, Section &section);

    int levels() const { return m_levels; }
    uint8_t level() const { return m_level; }
    /// Refuses a level that the detector lacks.
    Status setLevel(uint8_t level) { return assign(m_level, level); }

    /// Whether the levels have names.
    bool named() const { return m_named; }
    /// The name of a level in UTF-8. Refused for a level without a name.
    Status name(uint8_t level, std::string &text) const;

    void expose(int preset, image::Exposure &exposure) const override;

private:
    int m_levels;
    QStringList m_names;
    uint8_t m_level = 0;
    bool m_named = true;
};

} // namespace emulator
