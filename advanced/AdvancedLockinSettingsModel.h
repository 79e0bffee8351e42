#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>
#include <QStringList>

#include <cstdint>

/// The lock-in, which locks the camera to a periodic input signal: the coupling and an estimate of the frequency of the
/// signal, a digital filter, and the sample rate that the camera has found. A camera without a sample rate is normal.
/// GUI thread only.
class AdvancedLockinSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(int selectedCouplingIndex READ selectedCouplingIndex WRITE setSelectedCouplingIndex NOTIFY
                   selectedCouplingIndexChanged FINAL)
    Q_PROPERTY(int selectedDigitalFilterIndex READ selectedDigitalFilterIndex WRITE setSelectedDigitalFilterIndex NOTIFY
                   selectedDigitalFilterIndexChanged FINAL)
    Q_PROPERTY(QStringList digitalFilterList READ digitalFilterList NOTIFY sampleRateChanged FINAL)
    Q_PROPERTY(
        float estInputFrequency READ estInputFrequency WRITE setEstInputFrequency NOTIFY estInputFrequencyChanged FINAL)
    Q_PROPERTY(float sampleRate READ sampleRate NOTIFY sampleRateChanged FINAL)
    Q_PROPERTY(float sampleRateIsSet READ sampleRateIsSet NOTIFY sampleRateChanged FINAL)

public:
    explicit AdvancedLockinSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    int selectedCouplingIndex() const { return m_couplingIndex; } ///< 0 AC, 1 DC.
    void setSelectedCouplingIndex(int index); ///< Sends the lowest 8 bits. Ignores the status.
    int selectedDigitalFilterIndex() const { return m_digitalFilterIndex; } ///< The camera's number, with either list.
    /// Sends the lowest 8 bits and stores what the camera then has; 0 if that cannot be read.
    void setSelectedDigitalFilterIndex(int index);
    /// With a sample rate, the frequencies of seven filters in hertz; without one, "Off" and seven fractions. Built by
    /// each read only.
    QStringList digitalFilterList() const { return m_digitalFilterList; }
    float estInputFrequency() const { return m_estInputFrequency; } ///< In hertz.
    /// Stores what the camera then has. Ignores a change of at most 0.001.
    void setEstInputFrequency(float hertz);
    float sampleRate() const { return m_sampleRate; } ///< In hertz. The last one if the camera has none now.
    /// 1 if the camera has a sample rate, else 0. The interface requires a number.
    float sampleRateIsSet() const { return m_sampleRateIsSet ? 1.0F : 0.0F; }

    Q_INVOKABLE void refresh();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedCouplingIndexChanged();
    void selectedDigitalFilterIndexChanged();
    void estInputFrequencyChanged();
    void sampleRateChanged(); ///< Of the rate and of the list of filters. Signalled by each read.

private:
    using Self = AdvancedLockinSettingsModel;

    /// The result of a read.
    struct Settings {
        Nullable<uint8_t> coupling;
        Nullable<uint8_t> digitalFilter;
        Nullable<float> estInputFrequency;
        Nullable<float> sampleRate;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    QStringList filterTexts() const;

    bool m_visible = false;
    int m_couplingIndex = 0;
    int m_digitalFilterIndex = 0;
    QStringList m_digitalFilterList;
    float m_estInputFrequency = 0;
    float m_sampleRate = 0;
    bool m_sampleRateIsSet = false;
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
