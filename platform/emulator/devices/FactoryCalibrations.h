#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"
#include "platform/emulator/Section.h"
#include "platform/emulator/devices/Sensor.h"

#include <QStringList>

#include <array>
#include <vector>

namespace emulator
{

/// The calibrations that the factory has stored in the camera. One that is selected for a preset brings its integration
/// time and its non-uniformity correction along.
class FactoryCalibrations : public Device
{
public:
    static constexpr int none = -1;

    /// Knows in the profile: "names", and "integrationTimes" (ms), one for each name.
    FactoryCalibrations(Camera &camera, Section &section);

    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// "selected": the row of the active preset, or `none`.
    bool set(const QString &name, const QVariant &value) override;

    const QStringList &names() const { return m_names; }

    /// The row of names() that is selected for a preset, or `none`. Refuses a preset that the camera lacks.
    Status selected(int preset, int &row) const;
    /// Selects a row for a preset. The row behind the last one stands for `none`, and leaves all other settings alone.
    Status select(int preset, int row);

private:
    bool hasPreset(int preset) const;

    QStringList m_names;
    std::vector<double> m_integrationTimes;
    std::array<int, Sensor::maxPresets> m_selected;
};

} // namespace emulator
