#pragma once

#include "standalone/desk/SettingRows.h"

/// The rows of the card "Other client": each setting of the camera that other clients may change, ordered by device,
/// and its capabilities. GUI thread only.
class SettingListModel : public SettingRows
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")
    /// The list contains only settings whose names contain this text. Upper and lower case are the same.
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged FINAL)

public:
    explicit SettingListModel(StandaloneModel &model, QObject *parent = nullptr);

    const QString &filter() const { return m_filter; }
    void setFilter(const QString &filter);

signals:
    void filterChanged();
    /// The camera has accepted a change.
    void settingChanged();

protected:
    Rows rowsOf(const CameraSettings::Settings &settings) const override;

private:
    QString m_filter;
};
