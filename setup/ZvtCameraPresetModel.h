#pragma once

#include "common/Refresh.h"

#include <QList>
#include <QObject>

#include <chrono>
#include <cstdint>

/// One preset of the camera: its exposure (integration time and frame rates), its factory calibration and its use in a
/// sequence or in a superframe. Times and rates are written as the operator typed them; the camera may round or refuse
/// them. After a change of the integration time the exposure is read again. SetupGeneralModel reads all presets
/// together with its own values. GUI thread only.
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

    /// The result of a read of the whole preset. A value whose call fails keeps its default.
    struct PresetFullRefreshResult {
        int frameRateIndex = -1;
        uint32_t dwellCount = 0;
        bool subframeEnabled = false;
        double integrationTime = 0.0;
        double frameRate = 0.0;
        QList<qreal> frameRates;
        int activeFactoryCalibrationIndex = -1;
        bool factoryCalibrationLoaded = false;
        TimePoint startTime{}; ///< Start of the read.
    };

    /// The result of a read of the exposure, which may change with the window and the noise reduction. A value whose
    /// call fails keeps its default.
    struct PresetPartialRefreshResult {
        int frameRateIndex = -1;
        double integrationTime = 0.0;
        double frameRate = 0.0;
        QList<qreal> frameRates;
        TimePoint startTime{}; ///< Start of the read.
    };

    /// `preset` is the number of the preset, counted from 0.
    ZvtCameraPresetModel(QObject *parent, int preset);

    /// The row of SetupGeneralModel::factoryCalibrationStrings(); its last row is for no calibration. -1 if not read.
    int activeFactoryCalibrationIndex() const { return m_activeFactoryCalibrationIndex; }
    void setActiveFactoryCalibrationIndex(int index);
    /// Whether the preset has a factory calibration. The operator cannot change its integration time then.
    bool factoryCalibrationLoaded() const { return m_factoryCalibrationLoaded; }
    double integrationTime() const { return m_integrationTime; } ///< Milliseconds.
    void setIntegrationTime(double milliseconds); ///< Stored as typed until it has been read again.
    double frameRate() const { return m_frameRate; } ///< Hertz.
    void setFrameRate(double hertz); ///< Writes a listed rate by its row, another by its value.
    bool subframeEnabled() const { return m_subframeEnabled; } ///< Whether it is in the superframe.
    void setSubframeEnabled(bool enabled);
    uint32_t dwellCount() const { return m_dwellCount; } ///< Repeats in the preset sequence; 0 omits it.
    void setDwellCount(uint32_t count);
    QList<qreal> frameRates() const { return m_frameRates; } ///< Hertz, the highest first.
    int frameRateIndex() const { return m_frameRateIndex; } ///< Row of frameRates(); -1 for an unlisted rate.
    void setFrameRateIndex(int index);

    /// Reads the whole preset.
    Q_INVOKABLE void refresh();
    /// Reads only the exposure.
    void partialRefresh();

    /// Read the camera, with one controller call for each value. Without a controller all values are the defaults. Any
    /// thread.
    static PresetFullRefreshResult GetFullRefreshResult(const CameraAccess &camera, int preset);
    static PresetPartialRefreshResult GetPartialRefreshResult(const CameraAccess &camera, int preset);
    /// Publish only the values that differ, since a signal for an unchanged list of rates would close the open list on
    /// the page. The exposure is dropped if a later read of it has been started by partialRefresh() or published.
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

    bool isNewestOfExposure(TimePoint startTime);
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
    TimePoint m_exposureReadStart; ///< Start of the newest read of the exposure.
    Refresh<Self, PresetPartialRefreshResult> m_partialRefresh{this, &Self::finishedPartialRefreshWatcher,
                                                               RefreshForm::NoFlags};
    Refresh<Self, PresetFullRefreshResult> m_fullRefresh{this, &Self::finishedFullRefreshWatcher, RefreshForm::NoFlags};
};
