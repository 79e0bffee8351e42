#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/Sensor.h"

#include <QStringList>

#include <array>
#include <vector>

namespace emulator
{

/// The calibrations that the factory has stored in the camera. The selection of a calibration for a preset also sets
/// the integration time of the preset and loads its non-uniformity correction.
class FactoryCalibrations : public Device
{
public:
    static constexpr int none = -1;

    /// Profile keys: "names", and "integrationTimes" (ms), one for each name. Setting: "selected", the row that is
    /// selected for the active preset, or `none`.
    FactoryCalibrations(Camera &camera, Section &section);

    const QStringList &names() const { return m_names; }
    /// In milliseconds, one for each name.
    const std::vector<double> &integrationTimes() const { return m_integrationTimes; }

    /// The row of names() that is selected for a preset, or `none`. Refuses a preset that the camera lacks.
    Status selected(int preset, int &row) const;
    /// Selects a row for a preset. The row after the last one selects `none` and changes no other setting. Refuses
    /// other rows, and a preset that the camera lacks.
    Status select(int preset, int row);

private:
    bool hasPreset(int preset) const;

    QStringList m_names;
    std::vector<double> m_integrationTimes;
    std::array<int, maximumPresets> m_selected;
};

} // namespace emulator
