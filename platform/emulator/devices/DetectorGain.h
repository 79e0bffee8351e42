#pragma once

#include "platform/emulator/Device.h"

#include <QStringList>

#include <cstdint>
#include <string>

namespace emulator
{

/// The gain levels of the detector, from 0. They may have names.
class DetectorGain : public Device
{
public:
    /// Profile keys: "levels" (how many), "names" (may be fewer), "level", "named". Settings: "level", "named".
    DetectorGain(Camera &camera, Section &section);

    int levels() const { return m_levels; }
    uint8_t level() const { return m_level; }
    Status setLevel(uint8_t level) { return assign(m_level, level); }

    bool named() const { return m_named; }
    /// UTF-8. Refused for a level without a name.
    Status name(uint8_t level, std::string &text) const;

private:
    int m_levels;
    QStringList m_names;
    uint8_t m_level = 0;
    bool m_named = true;
};

} // namespace emulator
