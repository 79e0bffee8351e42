#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QList>
#include <QObject>
#include <QString>

#include "hlxui/ObjectListModel.h"

/// The voltages of the camera. Each read replaces all rows. A voltage has no row if one of its values cannot be read.
/// The rows write their own changes. GUI thread only.
class MfgVoltageSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(ObjectListModel *voltageListModel READ voltageListModel CONSTANT FINAL)

public:
    explicit MfgVoltageSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); } ///< Stays true after the first read.
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);
    /// VoltageItemModel objects in the camera's order. Empty if the camera has no voltages or does not list them.
    ObjectListModel *voltageListModel() { return &m_voltages; }

    Q_INVOKABLE void refresh();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();

private:
    using Self = MfgVoltageSettingsModel;

    struct Voltage {
        QString sdkName;
        Nullable<QString> displayName;
        Nullable<float> volts;
        Nullable<bool> editable;
        Nullable<double> minVolts;
        Nullable<double> maxVolts;

        static Voltage read(uint64_t handle, const char *name);
        bool complete() const { return displayName.set() && volts.set() && editable.set() && minVolts.set(); }
    };

    /// The result of a read.
    struct MfgVoltageSettingsResult {
        QList<Voltage> voltages; ///< Those that were read completely.

        static MfgVoltageSettingsResult read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    ObjectListModel m_voltages{true, this}; ///< A child, so that its rows find the root.
    Refresh<Self, MfgVoltageSettingsResult> m_refresh{this, &Self::finishedWatcher, RefreshForm::RefreshingOnly};
};
