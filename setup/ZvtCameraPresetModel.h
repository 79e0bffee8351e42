#pragma once

#include "common/Refresh.h"

#include <QList>
#include <QObject>

#include <chrono>
#include <cstdint>

/// One preset of the camera: its exposure, its factory calibration and its place in a sequence or in a superframe. The
/// camera is the sole judge of times and rates: what the operator typed goes there as it is, and what the camera made
/// of it is read back. SetupGeneralModel reads all presets together with its own values. GUI thread only.
class ZvtCameraPresetModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int activeFactoryCalibrationIndex READ activeFactoryCalibrationIndex WRITE
                   setActiveFactoryCalibrationIndex NOTIFY activeFactoryCalibrationIndexChanged FINAL)
    Q_PROPERTY(
        bool factoryCalibrationLoaded READ factoryCalibrationLoaded NOTIFY activeFactoryCalibrationIndexChanged FINAL)
    Q_PROPERTY(double integrationTime READ integrationTime WRITE setIntegrationTime NOTIFY integrationTimeChanged FINAL)
    Q_PROPERTY(double frameRate READ frameRate WRITE setFrameRate NOTIFY frameRateChanged FINAL)
    Q_PROPERTY(bool subframeEnabled READ subframeEnabled WRITE setSubframeEnabled NOTIFY subframeEnabledChanged FINAL)
    Q_PROPERTY(uint32_t dwellCount READ dwellCount WRITE setDwellCount NOTIFY dwellCountChanged FINAL)
    Q_PROPERTY(QList<qreal> frameRates READ frameRates NOTIFY frameRatesChanged FINAL)
    Q_PROPERTY(int frameRateIndex READ frameRateIndex WRITE setFrameRateIndex NOTIFY frameRateIndexChanged FINAL)

public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// What a read of the whole preset gives. A value that the camera did not give stays as it is here.
    struct PresetFullRefreshResult {
        int frameRateIndex = -1;
        uint32_t dwellCount = 0;
        bool subframeEnabled = false;
        double integrationTime = 0.0;
        double frameRate = 0.0;
        QList<qreal> frameRates;
        int activeFactoryCalibrationIndex = -1;
        bool factoryCalibrationLoaded = false;
        TimePoint since{}; ///< When the read was started.
    };

    /// What may follow from a change of the integration time, the window or the noise reduction.
    struct PresetPartialRefreshResult {
        int frameRateIndex = -1;
        double integrationTime = 0.0;
        double frameRate = 0.0;
        QList<qreal> frameRates;
        TimePoint since{};
    };

    /// Presets count from 0.
    ZvtCameraPresetModel(QObject *parent, int preset);

    /// The row of SetupGeneralModel::factoryCalibrationStrings(), whose last one stands for none.
    int activeFactoryCalibrationIndex() const { return m_activeFactoryCalibrationIndex; }
    void setActiveFactoryCalibrationIndex(int index);
    bool factoryCalibrationLoaded() const { return m_factoryCalibrationLoaded; } ///< It fixes the integration time.
    double integrationTime() const { return m_integrationTime; } ///< Milliseconds.
    void setIntegrationTime(double milliseconds); ///< Shown as typed until the camera's own value has been read.
    double frameRate() const { return m_frameRate; } ///< Hertz.
    void setFrameRate(double hertz); ///< A rate on offer selects its row; any other goes to the camera as it is.
    bool subframeEnabled() const { return m_subframeEnabled; } ///< Takes part in the superframe.
    void setSubframeEnabled(bool enabled);
    uint32_t dwellCount() const { return m_dwellCount; } ///< Repeats in the preset sequence; 0 leaves it out.
    void setDwellCount(uint32_t count);
    QList<qreal> frameRates() const { return m_frameRates; } ///< On offer, the highest first.
    int frameRateIndex() const { return m_frameRateIndex; } ///< The row of frameRates(); -1 for a rate of its own.
    void setFrameRateIndex(int index);

    /// Reads the whole preset.
    Q_INVOKABLE void refresh();
    /// Reads what follows from a change of the exposure.
    void partialRefresh();

    /// The reads. Any thread.
    static PresetFullRefreshResult GetFullRefreshResult(const CameraAccess &camera, int preset);
    static PresetPartialRefreshResult GetPartialRefreshResult(const CameraAccess &camera, int preset);
    /// Publish what differs, so that a signal means a change and an open list of rates stays open. Of two reads of the
    /// exposure the one that was started last counts, whichever ends first.
    void ApplyFullRefreshResult(const PresetFullRefreshResult &result);
    void ApplyPartialRefreshResult(const PresetPartialRefreshResult &result);

signals:
    void activeFactoryCalibrationIndexChanged();
    void integrationTimeChanged();
    void frameRateChanged();
    void subframeEnabledChanged();
    void dwellCountChanged();
    void frameRatesChanged();
    void frameRateIndexChanged();

private slots:
    void finishedFullRefreshWatcher();
    void finishedPartialRefreshWatcher();

private:
    using Self = ZvtCameraPresetModel;

    bool isNewestOfExposure(TimePoint since);
    void applyTimeAndRate(double milliseconds, double hertz);
    void applyFrameRates(const QList<qreal> &rates, int index);

    const int m_preset;
    int m_activeFactoryCalibrationIndex = -1;
    int m_frameRateIndex = -1;
    bool m_factoryCalibrationLoaded = false;
    bool m_subframeEnabled = false;
    uint32_t m_dwellCount = 0;
    double m_integrationTime = 0.0;
    double m_frameRate = 0.0;
    QList<qreal> m_frameRates;
    TimePoint m_exposureSince; ///< When the read was started that counts for times and rates.
    Refresh<Self, PresetPartialRefreshResult> m_partialRefresh{this, &Self::finishedPartialRefreshWatcher,
                                                               Form::NoFlags};
    Refresh<Self, PresetFullRefreshResult> m_fullRefresh{this, &Self::finishedFullRefreshWatcher, Form::NoFlags};
};
