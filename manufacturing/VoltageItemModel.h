#pragma once

#include <QObject>
#include <QString>

/// A voltage of the camera: a row of MfgVoltageSettingsModel. GUI thread only.
class VoltageItemModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString sdkName READ sdkName CONSTANT FINAL)
    Q_PROPERTY(QString displayName READ displayName CONSTANT FINAL)
    Q_PROPERTY(float volts READ volts WRITE setVolts NOTIFY voltsChanged FINAL)
    Q_PROPERTY(bool editable READ editable CONSTANT FINAL)
    Q_PROPERTY(double minVolts READ minVolts CONSTANT FINAL)
    Q_PROPERTY(double maxVolts READ maxVolts CONSTANT FINAL)

public:
    /// A row that writes to the camera of the root among its ancestors. The list to which it is appended becomes its
    /// parent.
    VoltageItemModel(QString sdkName, QString displayName, float volts, bool editable, QObject *parent, double minVolts,
                     double maxVolts);

    QString sdkName() const { return m_sdkName; } ///< Identifies the voltage.
    QString displayName() const { return m_displayName; } ///< The name for the operator.
    float volts() const { return m_volts; }
    /// Writes at once. Ignores the status: a refused value stays until the next read. Does nothing if not editable().
    void setVolts(float volts);
    bool editable() const { return m_editable; }
    // The camera returns the limits as floats, so that 2.3 is 2.2999999523: round them before the comparison with a
    // text.
    double minVolts() const { return m_minVolts; }
    double maxVolts() const { return m_maxVolts; }

signals:
    void voltsChanged();

private:
    const QString m_sdkName;
    const QString m_displayName;
    float m_volts;
    const bool m_editable;
    const double m_minVolts;
    const double m_maxVolts;
};
