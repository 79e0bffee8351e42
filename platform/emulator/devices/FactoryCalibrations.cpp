#include "platform/emulator/devices/FactoryCalibrations.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Corrections.h"

#include <QJsonArray>

#include <algorithm>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

const QString selectedKey = u"selected"_s;

} // namespace

FactoryCalibrations::FactoryCalibrations(Camera &camera, Section &section)
    : Device(camera), m_names(section.texts(u"names"_s, {}))
{
    const QList<double> times = section.numbers(u"integrationTimes"_s, {});
    if (times.size() != m_names.size())
        section.refuse(u"integrationTimes"_s, u"must be a list of times in milliseconds, one for each name"_s);
    m_integrationTimes.assign(times.begin(), times.end());
    m_selected.fill(none);
    m_rows = {none, m_names.size() - 1.0};
    const auto ofActivePreset = [this] {
        int row = none;
        selected(this->camera().device<Sensor>()->activePreset(), row);
        return row;
    };
    const auto selectForActivePreset = [this](int row) {
        const int rowOfNone = static_cast<int>(m_names.size());
        return select(this->camera().device<Sensor>()->activePreset(), row == none ? rowOfNone : row);
    };
    addSettings(section, {{selectedKey, ofActivePreset, selectForActivePreset, m_rows, OtherClient}});
}

QJsonObject FactoryCalibrations::save() const
{
    QJsonArray rows;
    for (const int row : m_selected)
        rows.append(row);
    return {{selectedKey, rows}};
}

QStringList FactoryCalibrations::restore(const QJsonObject &values)
{
    // The times and the corrections that belong to them are restored by their own devices.
    QStringList refused;
    const QJsonArray saved = values.value(selectedKey).toArray();
    for (qsizetype preset = 0; preset < std::min<qsizetype>(saved.size(), m_selected.size()); ++preset)
        if (const Refusal refusal = parse(saved.at(preset), m_selected.at(static_cast<size_t>(preset)), m_rows);
            !refusal.isEmpty())
            refused.append(u"%1.%2: %3"_s.arg(selectedKey).arg(preset).arg(refusal));
    return refused;
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
