#include "standalone/desk/SettingListModel.h"

SettingListModel::SettingListModel(StandaloneModel &model, QObject *parent) : SettingRows(model, parent)
{
    connect(&settings(), &CameraSettings::changed, this, [this](const QString &, const QString &why) {
        if (why.isEmpty())
            emit settingChanged();
    });
}

void SettingListModel::setFilter(const QString &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    update();
    emit filterChanged();
}

SettingRows::Rows SettingListModel::rowsOf(const CameraSettings::Settings &settings) const
{
    Rows rows;
    for (const emulator::SettingInfo &setting : settings)
        if (setting.name.contains(m_filter, Qt::CaseInsensitive))
            rows.push_back(SettingRow::of(setting));
    return rows;
}
