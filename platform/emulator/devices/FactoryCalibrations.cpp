#include "platform/emulator/devices/FactoryCalibrations.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/settings.h"

#include <QJsonArray>

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
}

QJsonObject FactoryCalibrations::save() const
{
    QJsonArray rows;
    for (const int row : m_selected)
        rows.append(row);
    return {{u"selected"_s, rows}};
}

void FactoryCalibrations::restore(const QJsonObject &values)
{
    // The times and the corrections that belong to them are kept by their own devices.
    const QJsonArray rows = values.value(u"selected"_s).toArray();
    for (size_t preset = 0; preset < m_selected.size(); ++preset) {
        constexpr int unknown = none - 1;
        const int row = rows.at(static_cast<qsizetype>(preset)).toInt(unknown);
        if (row >= none && row < m_names.size())
            m_selected.at(preset) = row;
    }
}

bool FactoryCalibrations::set(const QString &name, const QVariant &value)
{
    const auto row = settingAs<int>(value);
    if (name != u"selected"_s || !row)
        return false;
    const int rowOfNone = static_cast<int>(m_names.size());
    return select(camera().device<Sensor>()->activePreset(), *row == none ? rowOfNone : *row) == Ok;
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
    const auto place = static_cast<size_t>(preset);
    if (row == m_names.size()) {
        m_selected.at(place) = none;
        return Ok;
    }
    m_selected.at(place) = row;
    if (auto *const corrections = camera().device<Corrections>())
        corrections->load(static_cast<uint8_t>(preset), m_names.at(row));
    return camera().device<Sensor>()->setIntegrationTime(preset, m_integrationTimes.at(static_cast<size_t>(row)));
}

} // namespace emulator
