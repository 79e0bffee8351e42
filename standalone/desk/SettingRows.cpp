#include "standalone/desk/SettingRows.h"

#include <algorithm>
#include <utility>

SettingRows::SettingRows(StandaloneModel &model, QObject *parent) : QAbstractListModel(parent), m_settings(model, this)
{
    connect(&m_settings, &CameraSettings::cameraChanged, this, [this] { m_refusals.clear(); });
    connect(&m_settings, &CameraSettings::changed, this, &SettingRows::noteChange);
    connect(&m_settings, &CameraSettings::updated, this, &SettingRows::update);
}

void SettingRows::setActive(bool active)
{
    if (active == this->active())
        return;
    m_settings.setPolling(active);
    emit activeChanged();
}

int SettingRows::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : count(); }

QVariant SettingRows::data(const QModelIndex &index, int role) const
{
    const SettingRow *const row = at(index.row());
    if (row == nullptr)
        return {};
    switch (role) {
    case Label:
        return row->label;
    case Heading:
        return index.row() == 0 || at(index.row() - 1)->group != row->group ? row->group : QString();
    case Name:
        return row->name;
    case Control:
        return row->control;
    case On:
        return row->value.toBool();
    case Text:
        return row->text();
    case Unit:
        return row->unit;
    case Hint:
        return row->hint;
    case Note:
        return row->note;
    case Choices:
        return row->choices;
    case ChosenIndex:
        return row->choice();
    case Usable:
        return row->usable;
    case Refusal:
        return row->refusal;
    default:
        return {};
    }
}

QHash<int, QByteArray> SettingRows::roleNames() const
{
    return {{Label, "label"},    {Heading, "heading"}, {Name, "name"},          {Control, "control"},
            {On, "on"},          {Text, "text"},       {Unit, "unit"},          {Hint, "hint"},
            {Note, "note"},      {Choices, "choices"}, {ChosenIndex, "choice"}, {Usable, "usable"},
            {Refusal, "refusal"}};
}

const SettingRow *SettingRows::at(int row) const
{
    return row >= 0 && row < count() ? &m_rows[static_cast<size_t>(row)] : nullptr;
}

void SettingRows::turn(int row, bool on)
{
    if (const SettingRow *const found = at(row); found && found->value != on)
        change(*found, on);
}

void SettingRows::choose(int row, int choice)
{
    const SettingRow *const found = at(row);
    if (found && choice >= 0 && choice < found->choiceValues.size())
        change(*found, found->choiceValues.at(choice).toVariant());
}

void SettingRows::enter(int row, const QString &text)
{
    const SettingRow *const found = at(row);
    if (found && found->text() == text)
        dismiss(row);
    else if (found)
        change(*found, found->valueOf(text));
}

void SettingRows::pulse(int row)
{
    if (const SettingRow *const found = at(row))
        change(*found, true);
}

void SettingRows::dismiss(int row)
{
    if (const SettingRow *const found = at(row); found && m_refusals.remove(found->setting))
        update();
}

QVariant SettingRows::settingWith(const SettingRow &, const QVariant &value) const { return value; }

void SettingRows::change(const SettingRow &row, const QVariant &value)
{
    // The row may be replaced while the change is sent.
    const QString setting = row.setting;
    const QVariant whole = settingWith(row, value);
    m_refusals.remove(setting);
    m_settings.change(setting, whole);
}

void SettingRows::noteChange(const QString &name, const QString &why)
{
    if (why.isEmpty())
        m_refusals.remove(name);
    else
        m_refusals.insert(name, why);
}

void SettingRows::update()
{
    Rows rows = rowsOf(m_settings.settings());
    for (SettingRow &row : rows)
        row.refusal = m_refusals.value(row.setting);
    const auto identity = [](const SettingRow &row) { return std::pair(row.setting, row.entry); };
    if (!std::ranges::equal(rows, m_rows, {}, identity, identity)) {
        const bool sameCount = rows.size() == m_rows.size();
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
        if (!sameCount)
            emit countChanged();
        return;
    }
    for (int row = 0; row < count(); ++row)
        if (SettingRow &present = m_rows[static_cast<size_t>(row)]; present != rows[static_cast<size_t>(row)]) {
            present = std::move(rows[static_cast<size_t>(row)]);
            emit dataChanged(index(row), index(row));
        }
}
