#include "platform/emulator/SettingTable.h"

#include "platform/emulator/Section.h"

#include <algorithm>
#include <iterator>

namespace emulator
{

void SettingTable::add(Section &section, std::vector<Setting> rows)
{
    for (const Setting &row : rows)
        if (row.isFor(Setting::Profile) && section.contains(row.key()))
            if (const Refusal refusal = row.start(section.value(row.key())); !refusal.isEmpty())
                section.refuse(row.key(), refusal);
    add(std::move(rows));
}

void SettingTable::add(std::vector<Setting> rows) { std::ranges::move(rows, std::back_inserter(m_rows)); }

QJsonObject SettingTable::save() const
{
    QJsonObject values;
    for (const Setting &row : m_rows)
        if (row.isSaved())
            values[row.key()] = row.value();
    return values;
}

QJsonObject SettingTable::forSnapshot(QJsonObject values) const
{
    for (const Setting &row : m_rows)
        if (row.isFor(Setting::Memory))
            values.remove(row.key());
    return values;
}

QStringList SettingTable::restore(const QJsonObject &values) const
{
    QStringList refused;
    for (const Setting &row : m_rows)
        if (row.isSaved() && values.contains(row.key()) && row.changeable())
            // A profile may start with a value that cannot be set later. Such a saved value is in place already.
            if (const Refusal refusal = row.change(values.value(row.key()));
                !refusal.isEmpty() && row.value() != values.value(row.key()))
                refused.append(row.key() + QStringLiteral(": ") + refusal);
    return refused;
}

const Setting *SettingTable::find(const QString &name) const
{
    for (const Setting &row : m_rows)
        if (row.isFor(Setting::OtherClient) && row.key() == name)
            return &row;
    return nullptr;
}

Refusal SettingTable::change(const QString &name, const QJsonValue &value) const
{
    const Setting *const row = find(name);
    return row ? row->change(value) : noSuchSetting();
}

std::vector<SettingInfo> SettingTable::list() const
{
    std::vector<SettingInfo> settings;
    for (const Setting &row : m_rows)
        if (row.isFor(Setting::OtherClient))
            settings.push_back(row.info());
    return settings;
}

const Setting &SettingTable::of(const void *member) const
{
    const auto takesChangesOfIt = [member](const Setting &row) {
        return row.isMember(member) && (row.isSaved() || row.isFor(Setting::OtherClient));
    };
    const auto row = std::ranges::find_if(m_rows, takesChangesOfIt);
    if (row == m_rows.end())
        qFatal("a setter of an emulated device has no row in its table");
    return *row;
}

} // namespace emulator
