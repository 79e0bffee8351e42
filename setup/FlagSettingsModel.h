#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "setup/PollTimer.h"

#include <QObject>

/// The flag, a test surface inside the camera that moves into the optical path: its position and, on a camera that
/// cools it, its temperature and the desired one. While the section is visible on a shown page, the temperature is read
/// each second. Temperatures are in Celsius. A refresh whose calls fail sets the values to 0 and false. GUI thread
/// only.
class FlagSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(int selectedFlagStateIndex READ selectedFlagStateIndex WRITE setSelectedFlagStateIndex NOTIFY
                   selectedFlagStateIndexChanged FINAL)
    Q_PROPERTY(bool coolerEnabled READ coolerEnabled WRITE setCoolerEnabled NOTIFY coolerEnabledChanged FINAL)
    Q_PROPERTY(float currentFlagTemperature READ currentFlagTemperature WRITE setCurrentFlagTemperature NOTIFY
                   currentFlagTemperatureChanged FINAL)
    Q_PROPERTY(float desiredFlagTemperature READ desiredFlagTemperature WRITE setDesiredFlagTemperature NOTIFY
                   desiredFlagTemperatureChanged FINAL)
    Q_PROPERTY(bool desiredSetWasValid READ desiredSetWasValid WRITE setDesiredSetWasValid NOTIFY
                   desiredSetWasValidChanged FINAL)

public:
    explicit FlagSettingsModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section of the flag is expanded.
    void setVisible(bool visible);
    int selectedFlagStateIndex() const { return m_selectedFlagStateIndex; } ///< 0 stowed, 1 in the field of view.
    void setSelectedFlagStateIndex(int index); ///< Moves the flag; ignores the status.
    // These four setters only store: no call switches the cooler of the flag.
    bool coolerEnabled() const { return m_coolerEnabled; }
    void setCoolerEnabled(bool enabled);
    float currentFlagTemperature() const { return m_currentFlagTemperature; }
    void setCurrentFlagTemperature(float celsius);
    float desiredFlagTemperature() const { return m_desiredFlagTemperature; }
    void setDesiredFlagTemperature(float celsius);
    bool desiredSetWasValid() const { return m_desiredSetWasValid; } ///< The page also sets it, after an edit.
    void setDesiredSetWasValid(bool valid);

    /// Whether the Setup page is shown with this section, and the camera is connected. The temperature is polled only
    /// then, and only while the section is expanded.
    void setSectionLive(bool live) { m_temperatureTimer.setSectionLive(live); }

    Q_INVOKABLE void refresh();
    /// Writes the desired temperature. desiredSetWasValid() is then whether the camera accepted it.
    Q_INVOKABLE void applyDesiredFlagTemperature();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedFlagStateIndexChanged();
    void coolerEnabledChanged();
    void currentFlagTemperatureChanged();
    void desiredFlagTemperatureChanged();
    void desiredSetWasValidChanged();

private:
    using Self = FlagSettingsModel;

    /// The result of a read. A value that was not read is 0 or false.
    struct Settings {
        int state = 0;
        bool coolerEnabled = false;
        float currentTemperature = 0.0F;
        float desiredTemperature = 0.0F;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();
    void timeoutTemperatureUpdateTimer();
    void finishedTemperatureUpdate();

private:
    bool m_visible = false;
    int m_selectedFlagStateIndex = 0;
    bool m_coolerEnabled = false;
    float m_currentFlagTemperature = 0.0F;
    float m_desiredFlagTemperature = 0.0F;
    bool m_desiredSetWasValid = false;
    PollTimer m_temperatureTimer{this};
    Refresh<Self, Nullable<float>> m_temperature{this, &Self::finishedTemperatureUpdate, RefreshForm::NewestOnly};
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
