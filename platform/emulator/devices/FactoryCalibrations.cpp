#include "platform/emulator/devices/FactoryCalibrations.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Corrections.h"

namespace emulator
{

using namespace Qt::StringLiterals;

FactoryCalibrations::FactoryCalibrations(Camera &camera, Section &section)
    : Device(camera), m_names(section.texts(u"names"_s, {}))
{
    const QList<double> times = section.numbers(u"integrationTimes"_s, {});
    if (times.size() != m_names.size())
        section.refuse(u"integrationTimes"_s, u"must be a list of times in milliseconds, one for each name"_s);
    m_integrationTimes.assign(times.begin(), times.end());
    m_selected.fill(none);
    const Between rows{none, m_names.size() - 1.0};
    const auto selectedForActivePreset = [this] {
        int row = none;
        selected(this->camera().device<Sensor>()->activePreset(), row);
        return row;
    };
    const auto selectForActivePreset = [this](int row) {
        const int rowOfNone = static_cast<int>(m_names.size());
        return select(this->camera().device<Sensor>()->activePreset(), row == none ? rowOfNone : row);
    };
    const QString key = u"selected"_s;
    addSettings(section,
                {
                    // Other devices restore the integration times and the corrections.
                    {key, m_selected, rows, Snapshot},
                    {key, selectedForActivePreset, selectForActivePreset, rows, OtherClient},
                });
}

bool FactoryCalibrations::hasPreset(int preset) const
{
    return preset >= 0 && preset < camera().device<Sensor>()->numPresets();
}

Status FactoryCalibrations::selected(int preset, int &row) const
{
    if (!hasPreset(preset))
        return Refused;
    row = m_selected.at(static_cast<size_t>(preset));
    return Ok;
}

Status FactoryCalibrations::select(int preset, int row)
{
    if (!hasPreset(preset) || row < 0 || row > m_names.size())
        return Refused;
    const auto index = static_cast<size_t>(preset);
    if (row == m_names.size()) {
        m_selected.at(index) = none;
        return Ok;
    }
    m_selected.at(index) = row;
    if (auto *const corrections = camera().device<Corrections>())
        corrections->select(preset, m_names.at(row).toStdString());
    return camera().device<Sensor>()->setIntegrationTime(preset, m_integrationTimes.at(static_cast<size_t>(row)));
}

} // namespace emulator
