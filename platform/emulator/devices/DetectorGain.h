#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"

#include <QStringList>

#include <cstdint>
#include <string>

namespace emulator
{

/// The gain levels of the detector, from 0. They may have names.
class DetectorGain : public Device
{
public:
    /// Knows in the profile: "levels" (how many), "level", "named", and "names", which may tell of fewer levels.
    DetectorGain(Camera &camera, Section &section);

    int levels() const { return m_levels; }
    uint8_t level() const { return m_level; }
    Status setLevel(uint8_t level);

    bool named() const { return m_named; }
    /// UTF-8. Refused for a level without a name.
    Status name(uint8_t level, std::string &text) const;

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// "level", "named".
    bool set(const QString &name, const QVariant &value) override;

private:
    int m_levels;
    uint8_t m_level;
    bool m_named;
    QStringList m_names;
};

} // namespace emulator
