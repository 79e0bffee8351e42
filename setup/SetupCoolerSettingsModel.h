#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "setup/PollTimer.h"

#include <QObject>
#include <QString>

/// The thermoelectric cooler: its power and setpoint, and the temperatures that it changes. While the section is
/// visible on a shown page, the temperatures are read each second. The operator edits power and setpoint, and applies
/// both together; a refresh discards unapplied edits. GUI thread only.
class SetupCoolerSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(QString coolerType READ coolerType NOTIFY coolerTypeChanged FINAL)
    Q_PROPERTY(bool coolerEnabled READ coolerEnabled WRITE setCoolerEnabled NOTIFY coolerEnabledChanged FINAL)
    Q_PROPERTY(float actualTemp READ actualTemp NOTIFY actualTempChanged FINAL)
    Q_PROPERTY(float internalTemp READ internalTemp NOTIFY internalTempChanged FINAL)
    Q_PROPERTY(float setpoint READ setpoint WRITE setSetpoint NOTIFY setpointChanged FINAL)

public:
    explicit SetupCoolerSettingsModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section of the cooler is expanded.
    void setVisible(bool visible);
    QString coolerType() const { return m_coolerType; } ///< The camera's name for it; "N/A" if the read failed.
    bool coolerEnabled() const { return m_coolerEnabled; }
    void setCoolerEnabled(bool enabled); ///< Only stored until applySettings().
    /// The temperature of what is cooled: of the detector in Kelvin if the cooler is thermoelectric, else of the flag
    /// in Celsius.
    float actualTemp() const { return m_actualTemp; }
    float internalTemp() const { return m_internalTemp; } ///< Of the interior of the camera, in Celsius.
    float setpoint() const { return m_setpoint; } ///< Celsius.
    void setSetpoint(float celsius); ///< Only stored until applySettings().

    /// Whether the Setup page is shown with this section, and the camera is connected. The temperatures are polled only
    /// then, and only while the section is expanded.
    void setSectionLive(bool live) { m_temperatureTimer.setSectionLive(live); }

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void applySettings(); ///< Writes power and setpoint. Ignores both statuses.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void coolerTypeChanged();
    void coolerEnabledChanged();
    void actualTempChanged();
    void internalTempChanged();
    void setpointChanged();

private:
    using Self = SetupCoolerSettingsModel;

    /// The result of a poll.
    struct Temperatures {
        Nullable<float> actual;
        Nullable<float> internal;

        /// Reads both. The actual temperature is that of the detector or of the flag.
        static Temperatures read(uint64_t handle, bool ofDetector);
    };

    /// The result of a read.
    struct Settings {
        QString coolerType;
        Nullable<bool> coolerEnabled;
        Temperatures temperatures;
        Nullable<float> setpoint;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();
    void timeoutTemperaturesUpdateTimer();
    void finishedTemperatureUpdate();

private:
    void publishTemperatures(const Temperatures &temperatures);

    bool m_visible = false;
    QString m_coolerType = QStringLiteral("N/A");
    bool m_coolerEnabled = false;
    float m_actualTemp = 0.0F;
    float m_internalTemp = 0.0F;
    float m_setpoint = 0.0F;
    PollTimer m_temperatureTimer{this};
    Refresh<Self, Temperatures> m_temperatures{this, &Self::finishedTemperatureUpdate, RefreshForm::NewestOnly};
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
