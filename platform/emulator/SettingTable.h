#pragma once

#include "platform/emulator/Setting.h"

#include <QJsonObject>
#include <QStringList>

#include <type_traits>
#include <vector>

namespace emulator
{

class Section;

/// The settings of a device, or of one of its presets. They are read, restored and listed in the order of the rows.
/// Rows of the same key serve different uses.
class SettingTable
{
public:
    /// Adds rows and reads those from the profile that it has. Throws a SetupError about a value that its row refuses.
    void add(Section &section, std::vector<Setting> rows);
    /// Adds rows that no profile has.
    void add(std::vector<Setting> rows);

    /// The values of the rows for snapshots and for the memory.
    QJsonObject save() const;

    /// Returns values of save() without those that are only for the memory.
    QJsonObject forSnapshot(QJsonObject values) const;

    /// Takes the values of save() back. Values that their rows refuse stay as they are; each is in the result, as
    /// "key: why". Ignores keys without a row, and rows that cannot be changed now: their equipment is not available.
    QStringList restore(const QJsonObject &values) const;

    /// True for the name of a setting that other clients may change.
    bool has(const QString &name) const { return find(name) != nullptr; }

    /// Another client changes the setting `name`. Returns why it is refused, empty if it has been changed.
    Refusal change(const QString &name, const QJsonValue &value) const;

    /// The settings that other clients may change.
    std::vector<SettingInfo> list() const;

    /// Changes the setting that `member` is, by the rule of its row. Refused if the row refuses the value.
    template <class T> Status assign(T &member, const std::type_identity_t<T> &value) const
    {
        return of(&member).change(toJson(value)).isEmpty() ? Ok : Refused;
    }

    /// Reads the setting that `member` is. Refused while it cannot be changed.
    template <class T> Status fetch(const T &member, T &value) const
    {
        if (!of(&member).changeable())
            return Refused;
        value = member;
        return Ok;
    }

private:
    /// The row for changes of this member.
    const Setting &of(const void *member) const;
    const Setting *find(const QString &name) const;

    std::vector<Setting> m_rows;
};

} // namespace emulator
