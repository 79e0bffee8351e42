#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>
#include <QString>

/// The thermoelectric cooler with the terms of its control loop. The operator edits the settings and applies them all
/// together; a refresh discards edits that were not applied. GUI thread only.
class MfgCoolerSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(QString coolerType READ coolerType NOTIFY coolerTypeChanged FINAL)
    Q_PROPERTY(bool coolerEnabled READ coolerEnabled WRITE setCoolerEnabled NOTIFY coolerEnabledChanged FINAL)
    Q_PROPERTY(float actualTemp READ actualTemp NOTIFY actualTempChanged FINAL)
    Q_PROPERTY(float internalTemp READ internalTemp NOTIFY internalTempChanged FINAL)
    Q_PROPERTY(float kP READ kP WRITE setKP NOTIFY kPChanged FINAL)
    Q_PROPERTY(float kOff READ kOff WRITE setKOff NOTIFY kOffChanged FINAL)
    Q_PROPERTY(float kI READ kI WRITE setKI NOTIFY kIChanged FINAL)
    Q_PROPERTY(float kD READ kD WRITE setKD NOTIFY kDChanged FINAL)
    Q_PROPERTY(float setpoint READ setpoint WRITE setSetpoint NOTIFY setpointChanged FINAL)

public:
    explicit MfgCoolerSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    QString coolerType() const { return m_coolerType; } ///< The camera's name for it; empty before the first read.
    bool coolerEnabled() const { return m_coolerEnabled; }
    void setCoolerEnabled(bool enabled);
    /// The temperature of what is cooled: of the detector in Kelvin if the cooler is thermoelectric, else of the flag
    /// in Celsius.
    float actualTemp() const { return m_actualTemp; }
    float internalTemp() const { return m_internalTemp; } ///< Of the interior of the camera, in Celsius.
    // The terms of the control loop: proportional, offset, integral, differential.
    float kP() const { return m_kP; }
    void setKP(float term);
    float kOff() const { return m_kOff; }
    void setKOff(float term);
    float kI() const { return m_kI; }
    void setKI(float term);
    float kD() const { return m_kD; }
    void setKD(float term);
    float setpoint() const { return m_setpoint; } ///< Celsius if the cooler is thermoelectric, else Kelvin.
    void setSetpoint(float temperature);

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void applySettings(); ///< Writes power, terms and setpoint, changed or not. Ignores all statuses.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void coolerTypeChanged();
    void coolerEnabledChanged();
    void actualTempChanged();
    void internalTempChanged();
    void kPChanged();
    void kOffChanged();
    void kIChanged();
    void kDChanged();
    void setpointChanged();

private:
    using Self = MfgCoolerSettingsModel;

    /// The result of a read.
    struct CoolerSettingsResult {
        Nullable<QString> coolerType;
        Nullable<bool> coolerEnabled;
        Nullable<float> actualTemp;
        Nullable<float> internalTemp;
        Nullable<float> kP;
        Nullable<float> kI;
        Nullable<float> kD;
        Nullable<float> kOff;
        Nullable<float> setpoint;

        static CoolerSettingsResult read(const CameraAccess &camera);
        void readTerms(uint64_t handle);
    };

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    QString m_coolerType;
    bool m_coolerEnabled = false;
    float m_actualTemp = 0;
    float m_internalTemp = 0;
    float m_kP = 0;
    float m_kOff = 0;
    float m_kI = 0;
    float m_kD = 0;
    float m_setpoint = 0;
    Refresh<Self, CoolerSettingsResult> m_refresh{this, &Self::finishedWatcher};
};
