#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/Sensor.h"

#include <QStringList>

#include <array>
#include <vector>

namespace emulator
{

/// The calibrations that the factory has stored in the camera. Selecting one for a preset sets the integration time and
/// loads the non-uniformity correction of the preset too.
class FactoryCalibrations : public Device
{
public:
    static constexpr int none = -1;

    /// Profile keys: "names", and "integrationTimes" (ms), one for each name. Setting: "selected", the row of the
    /// active preset, or `none`.
    FactoryCalibrations(Camera &camera, Section &section);

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;

    const QStringList &names() const { return m_names; }

    /// The row of names() that is selected for a preset, or `none`. Refuses a preset that the camera lacks.
    Status selected(int preset, int &row) const;
    /// Selects a row for a preset. The row after the last one means `none` and changes no other setting.
    Status select(int preset, int row);

private:
    bool hasPreset(int preset) const;

    QStringList m_names;
    std::vector<double> m_integrationTimes;
    Between m_rows{none, none};
    std::array<int, Sensor::maxPresets> m_selected;
};

} // namespace emulator
