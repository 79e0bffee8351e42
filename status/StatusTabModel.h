#pragma once

#include "common/BaseTabModel.h"
#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QString>
#include <QTimer>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

#include "zvt/zvttypes.h"

class ZvtCameraModel;

/// The values of the Status page. refresh() reads frame size, frame rate and integration time, which change seldom.
/// While the page is visible and the camera is connected, a poll reads the clock and the saturation each second, the
/// temperatures every 5 seconds and the operating time every minute. GUI thread only. (The header is long because of
/// its two result records.)
class StatusTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(QString time READ time NOTIFY timeChanged FINAL)
    Q_PROPERTY(QString operatingTime READ operatingTime NOTIFY operatingTimeChanged FINAL)
    Q_PROPERTY(ZvtCameraModel *cameraModel READ cameraModel CONSTANT FINAL)

    Q_PROPERTY(double fpaTemp READ fpaTemp NOTIFY fpaTempChanged FINAL)
    Q_PROPERTY(bool fpaCold READ fpaCold NOTIFY fpaColdChanged FINAL)
    Q_PROPERTY(bool fpaTempCelsius READ fpaTempCelsius NOTIFY fpaTempCelsiusChanged FINAL)
    Q_PROPERTY(double frontPanelTemp READ frontPanelTemp NOTIFY frontPanelTempChanged FINAL)
    Q_PROPERTY(double airGapTemp READ airGapTemp NOTIFY airGapTempChanged FINAL)
    Q_PROPERTY(double lensTemp READ lensTemp NOTIFY lensTempChanged FINAL)
    Q_PROPERTY(bool hasLensTemp READ hasLensTemp NOTIFY hasLensTempChanged FINAL)
    Q_PROPERTY(double internalChassisTemp READ internalChassisTemp NOTIFY internalChassisTempChanged FINAL)

    Q_PROPERTY(QString frameSize READ frameSize NOTIFY frameSizeChanged FINAL)
    Q_PROPERTY(QString integrationTime READ integrationTime NOTIFY integrationTimeChanged FINAL)
    Q_PROPERTY(QString frameRate READ frameRate NOTIFY frameRateChanged FINAL)
    Q_PROPERTY(bool saturated READ saturated NOTIFY saturatedChanged FINAL)
    Q_PROPERTY(bool loaded READ loaded NOTIFY loadedChanged FINAL)
    Q_MOC_INCLUDE("plugin/ZvtCameraModel.h")

public:
    explicit StatusTabModel(QObject *parent);

    bool visible() const { return m_visible; }
    /// Starts or stops the poll. The poll also stops while the camera is not connected.
    void setVisible(bool visible);
    QString time() const { return m_time; } ///< "YYYY-MM-DD hh:mm:ss", or IRIG time, with "L" if locked.
    QString operatingTime() const { return m_operatingTime; } ///< "H h MM min".
    ZvtCameraModel *cameraModel() const;

    double fpaTemp() const { return m_fpaTemp.value_or(0.0); } ///< Detector, in Kelvin; 0 if not read.
    bool fpaCold() const { return m_fpaCold; } ///< Whether the detector is at its operating temperature.
    bool fpaTempCelsius() const { return m_fpaTempCelsius; } ///< Whether to show fpaTemp() in degrees Celsius.
    /// Temperatures of the other sensors in degrees Celsius; 0 if not read.
    double frontPanelTemp() const { return m_frontPanelTemp.value_or(0.0); }
    double airGapTemp() const { return m_airGapTemp.value_or(0.0); }
    double lensTemp() const { return m_lensTemp.value_or(0.0); }
    bool hasLensTemp() const { return m_hasLensTemp; }
    /// The interior, measured by the readout electronics or else by the sensor controller.
    double internalChassisTemp() const { return m_internalChassisTemp.value_or(0.0); }

    /// Texts; empty if not read. The frame size is in pixels, without a unit; the other texts contain their units.
    QString frameSize() const { return m_frameSize; }
    QString integrationTime() const { return m_integrationTime; }
    QString frameRate() const { return m_frameRate; }
    bool saturated() const { return m_saturated; }
    bool loaded() const { return m_loaded; } ///< Whether the page has ever been visible.

    Q_INVOKABLE void refresh() override; ///< Reads frame size, frame rate and integration time.
    Q_INVOKABLE double convertKelvinToCelsius(double kelvinTemp) const { return kelvinTemp - kelvinOffset; }

signals:
    void visibleChanged();
    void timeChanged();
    void operatingTimeChanged();

    // The first reading of a temperature is signalled even if it is 0, the value of a temperature that is not read yet.
    void fpaTempChanged();
    void fpaColdChanged();
    void fpaTempCelsiusChanged();
    void frontPanelTempChanged();
    void airGapTempChanged();
    void lensTempChanged();
    void hasLensTempChanged();
    void internalChassisTempChanged();

    void frameSizeChanged();
    void integrationTimeChanged();
    void frameRateChanged();
    void saturatedChanged();
    void loadedChanged();

private:
    using Self = StatusTabModel;

    static constexpr double kelvinOffset = 273.15;

    /// The result of refresh(), as texts; empty if not read.
    struct Result {
        QString frameSize;
        QString frameRate;
        QString integrationTime;

        static Result read(const CameraAccess &camera);
        void readActivePreset(const CameraAccess &camera);
        void readSequence(const CameraAccess &camera, int mode);
    };

    /// The result of one poll. A value is unset if the poll did not read it or its call failed.
    struct TimesAndTempsResult {
        bool hasRtc = false;
        uint8_t year = 0; ///< Counted from 2000.
        uint8_t month = 0;
        uint8_t day = 0;
        uint8_t hour = 0;
        uint8_t minute = 0;
        uint8_t second = 0;
        bool hasIrig = false;
        uint8_t irigLocked = 0;
        uint16_t irigYear = 0; ///< 0 if it is not known.
        zvtSIRIG irig{};
        Nullable<float> fpaTemp; ///< Kelvin.
        Nullable<float> coldTemp; ///< Operating temperature: Kelvin, or Celsius with a thermoelectric cooler.
        Nullable<float> lensTemp; ///< Celsius.
        Nullable<uint8_t> coolerType;
        Nullable<uint8_t> coolerPowerEnabled;
        Nullable<bool> fpaTempCelsius;
        Nullable<bool> fpaCold;
        Nullable<uint8_t> hasLensTemp;
        bool scOk = false;
        bool rsOk = false;
        float frontPanelTemp = 0.0F; ///< Celsius, as are the next three.
        float airGapTemp = 0.0F;
        float scInternalTemp = 0.0F; ///< Interior, measured by the sensor controller.
        float rsInternalTemp = 0.0F; ///< Interior, measured by the readout electronics.
        Nullable<uint32_t> operatingMinutes;
        uint8_t saturated = 0;

        static TimesAndTempsResult read(const CameraAccess &camera, int tick);
        void readClock(const CameraAccess &camera);
        void readTemperatures(uint64_t handle);
        void readDetectorTemperature(uint64_t handle);
    };

    /// The schedule of the polls, shared with their tasks. Its tick, 0 to 59, selects the values that a poll reads. A
    /// task advances the tick at its end, so a slow camera delays the schedule. restart() sets the tick to 0; advance()
    /// by an older task then does nothing. Any thread.
    class Schedule
    {
    public:
        uint32_t current() const { return m_value; }
        static int tick(uint32_t value) { return static_cast<int>(value % ticks); }
        void restart() { m_value = (m_value / ticks + 1) * ticks; }
        void advance(uint32_t from)
        {
            m_value.compare_exchange_strong(from, from - from % ticks + (from % ticks + 1) % ticks);
        }

    private:
        static constexpr uint32_t ticks = 60;
        std::atomic<uint32_t> m_value{0};
    };

private slots:
    void timeoutUpdateTimeTimer();
    void connectedChangedCameraModel();
    void finishedResultWatcher();
    void finishedGettingTimesAndTemps();

private:
    void checkTimer();
    void publishTime(const TimesAndTempsResult &result);
    void publishTemperatures(const TimesAndTempsResult &result);

    bool m_visible = false;
    QString m_time;
    QString m_operatingTime;
    std::optional<double> m_fpaTemp;
    bool m_fpaCold = false;
    bool m_fpaTempCelsius = false;
    std::optional<double> m_frontPanelTemp;
    std::optional<double> m_airGapTemp;
    std::optional<double> m_lensTemp;
    bool m_hasLensTemp = false;
    std::optional<double> m_internalChassisTemp;
    QString m_frameSize;
    QString m_integrationTime;
    QString m_frameRate;
    bool m_saturated = false;
    bool m_loaded = false;
    QTimer m_updateTimeTimer{this};
    std::shared_ptr<Schedule> m_schedule = std::make_shared<Schedule>();
    Refresh<Self, TimesAndTempsResult> m_timesAndTemps{this, &Self::finishedGettingTimesAndTemps, RefreshForm::NoFlags};
    Refresh<Self, Result> m_refresh{this, &Self::finishedResultWatcher, RefreshForm::NoFlags};
};
