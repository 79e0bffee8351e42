#pragma once

#include "common/Refresh.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>

/// Makes a new correction for one preset. The camera measures and computes by itself: start() writes all settings and
/// starts it, then the model polls the camera each second, until it is ready, and shows what it does. The setters only
/// store; the numbers of the camera are narrower than int, and a setter keeps the low bits. GUI thread only. (The
/// header is long because of the number of its settings.)
class NucProcessModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool inProgress READ inProgress NOTIFY inProgressChanged FINAL)
    Q_PROPERTY(int preset READ preset WRITE setPreset NOTIFY presetChanged FINAL)
    Q_PROPERTY(ENUC_TYPE nucType READ nucType WRITE setNucType NOTIFY nucTypeChanged FINAL)
    Q_PROPERTY(ENUC_SOURCE nucSource READ nucSource WRITE setNucSource NOTIFY nucSourceChanged FINAL)
    Q_PROPERTY(int numFrames READ numFrames WRITE setNumFrames NOTIFY numFramesChanged FINAL)
    Q_PROPERTY(float gainMin READ gainMin WRITE setGainMin NOTIFY gainMinChanged FINAL)
    Q_PROPERTY(float gainMax READ gainMax WRITE setGainMax NOTIFY gainMaxChanged FINAL)
    Q_PROPERTY(int adcLow READ adcLow WRITE setAdcLow NOTIFY adcLowChanged FINAL)
    Q_PROPERTY(int adcHigh READ adcHigh WRITE setAdcHigh NOTIFY adcHighChanged FINAL)
    Q_PROPERTY(bool detectBadPixels READ detectBadPixels WRITE setDetectBadPixels NOTIFY detectBadPixelsChanged FINAL)
    Q_PROPERTY(bool detectTwinklers READ detectTwinklers WRITE setDetectTwinklers NOTIFY detectTwinklersChanged FINAL)
    Q_PROPERTY(
        int twinklerNumFrames READ twinklerNumFrames WRITE setTwinklerNumFrames NOTIFY twinklerNumFramesChanged FINAL)
    Q_PROPERTY(int twinklerDelta READ twinklerDelta WRITE setTwinklerDelta NOTIFY twinklerDeltaChanged FINAL)
    Q_PROPERTY(ESETPOINT_TYPE flagSetpointType READ flagSetpointType WRITE setFlagSetpointType NOTIFY
                   flagSetpointTypeChanged FINAL)
    Q_PROPERTY(float flagSetpointDeltaLow READ flagSetpointDeltaLow WRITE setFlagSetpointDeltaLow NOTIFY
                   flagSetpointDeltaLowChanged FINAL)
    Q_PROPERTY(float flagSetpointDeltaHigh READ flagSetpointDeltaHigh WRITE setFlagSetpointDeltaHigh NOTIFY
                   flagSetpointDeltaHighChanged FINAL)
    Q_PROPERTY(float flagSetpointTempLow READ flagSetpointTempLow WRITE setFlagSetpointTempLow NOTIFY
                   flagSetpointTempLowChanged FINAL)
    Q_PROPERTY(float flagSetpointTempHigh READ flagSetpointTempHigh WRITE setFlagSetpointTempHigh NOTIFY
                   flagSetpointTempHighChanged FINAL)
    Q_PROPERTY(bool useFactoryBadPixels READ useFactoryBadPixels WRITE setUseFactoryBadPixels NOTIFY
                   useFactoryBadPixelsChanged FINAL)
    Q_PROPERTY(bool hasFlag READ hasFlag NOTIFY hasFlagChanged FINAL)
    Q_PROPERTY(bool hasTempControlledFlag READ hasTempControlledFlag NOTIFY hasTempControlledFlagChanged FINAL)
    Q_PROPERTY(ENUC_STATUS status READ status NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged FINAL)
    Q_PROPERTY(ENUC_RESULT result READ result NOTIFY resultChanged FINAL)
    Q_PROPERTY(QString resultText READ resultText NOTIFY resultChanged FINAL)
    Q_PROPERTY(int totalBadPixels READ totalBadPixels NOTIFY resultChanged FINAL)
    Q_PROPERTY(int factoryBadPixels READ factoryBadPixels NOTIFY resultChanged FINAL)
    Q_PROPERTY(int newBadPixels READ newBadPixels NOTIFY resultChanged FINAL)
    Q_PROPERTY(int twinklingPixels READ twinklingPixels NOTIFY resultChanged FINAL)
    Q_PROPERTY(int aboveGainMax READ aboveGainMax NOTIFY resultChanged FINAL)
    Q_PROPERTY(int belowGainMin READ belowGainMin NOTIFY resultChanged FINAL)
    Q_PROPERTY(int aboveADMaxSrc1 READ aboveADMaxSrc1 NOTIFY resultChanged FINAL)
    Q_PROPERTY(int belowADMinSrc1 READ belowADMinSrc1 NOTIFY resultChanged FINAL)
    Q_PROPERTY(int aboveADMaxSrc2 READ aboveADMaxSrc2 NOTIFY resultChanged FINAL)
    Q_PROPERTY(int belowADMinSrc2 READ belowADMinSrc2 NOTIFY resultChanged FINAL)
    Q_PROPERTY(bool canNext READ canNext NOTIFY canNextChanged FINAL)

public:
    // The numbers of all enumerations are those of the camera.
    enum ENUC_TYPE : int { TYPE_ONE_POINT = 0, TYPE_TWO_POINT = 1, TYPE_UPDATE_OFFSET = 2 };
    Q_ENUM(ENUC_TYPE)
    enum ENUC_SOURCE : int { SOURCE_EXTERNAL = 0, SOURCE_INTERNAL = 1 }; ///< A blackbody, or the flag.
    Q_ENUM(ENUC_SOURCE)
    enum ESETPOINT_TYPE : int { SETPOINT_DELTA = 0, SETPOINT_FIXED = 1 };
    Q_ENUM(ESETPOINT_TYPE)
    enum ENUC_RESULT : int {
        RESULT_OKAY = 0,
        RESULT_ABORT = 1,
        RESULT_ABORT_INVALID_PARAM = 2,
        RESULT_ABORT_FLAG_COOLER_RUNAWAY = 3
    };
    Q_ENUM(ENUC_RESULT)
    /// In the two external waits the camera waits for next(). It leaves all other states by itself.
    enum ENUC_STATUS : int {
        STATUS_READY = 0,
        STATUS_SAVING_OLD_NUC = 1,
        STATUS_WAITING_FOR_FIRST_SOURCE_EXTERNAL = 2,
        STATUS_WAITING_FOR_FIRST_SOURCE_INTERNAL = 3,
        STATUS_COLLECTING_FIRST_SOURCE = 4,
        STATUS_DONE_COLLECTING_FIRST_SOURCE = 5,
        STATUS_WAITING_FOR_SECOND_SOURCE_EXTERNAL = 6,
        STATUS_WAITING_FOR_SECOND_SOURCE_INTERNAL = 7,
        STATUS_COLLECTING_SECOND_SOURCE = 8,
        STATUS_DONE_COLLECTING_SECOND_SOURCE = 9,
        STATUS_COLLECTING_TWINKLE_SOURCE = 10,
        STATUS_DONE_COLLECTING_TWINKLE_SOURCE = 11,
        STATUS_COMPUTING_COEFFICIENTS = 12,
        STATUS_STARTING = 13,
        STATUS_APPLYING_FACTORY_BAD_PIXELS = 14
    };
    Q_ENUM(ENUC_STATUS)

    explicit NucProcessModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); }
    /// From start() until the camera is ready again. Stays true while polls fail.
    bool inProgress() const { return m_inProgress; }

    int preset() const { return m_settings.preset; } ///< For which the correction is made, 0 to 3.
    void setPreset(int preset); ///< Ignores other numbers.
    ENUC_TYPE nucType() const { return static_cast<ENUC_TYPE>(m_settings.nucType); }
    void setNucType(ENUC_TYPE type);
    ENUC_SOURCE nucSource() const { return static_cast<ENUC_SOURCE>(m_settings.nucSource); }
    void setNucSource(ENUC_SOURCE source);
    int numFrames() const { return m_settings.numFrames; } ///< Averaged for each source.
    void setNumFrames(int count); ///< Keeps 8 bits.
    float gainMin() const { return m_settings.gainMin; } ///< Limits of a good pixel's responsivity; 1 is the mean.
    void setGainMin(float limit);
    float gainMax() const { return m_settings.gainMax; }
    void setGainMax(float limit);
    int adcLow() const { return m_settings.adcLow; } ///< Limits of a good pixel's signal, in A/D counts.
    void setAdcLow(int counts); ///< Keeps 16 bits, as do the next one and the delta of twinklers.
    int adcHigh() const { return m_settings.adcHigh; }
    void setAdcHigh(int counts);
    bool detectBadPixels() const { return m_settings.detectBadPixels; }
    void setDetectBadPixels(bool detect);
    bool detectTwinklers() const { return m_settings.detectTwinklers; }
    void setDetectTwinklers(bool detect);
    int twinklerNumFrames() const { return static_cast<int>(m_settings.twinklerNumFrames); }
    void setTwinklerNumFrames(int count);
    int twinklerDelta() const { return m_settings.twinklerDelta; } ///< The greatest change of a good pixel, A/D counts.
    void setTwinklerDelta(int counts);
    ESETPOINT_TYPE flagSetpointType() const { return static_cast<ESETPOINT_TYPE>(m_settings.flagSetpointType); }
    void setFlagSetpointType(ESETPOINT_TYPE type);
    // Of the flag in degrees Celsius: above ambient, and fixed. A one-point correction uses only the low one.
    float flagSetpointDeltaLow() const { return m_settings.flagSetpointDeltaLow; }
    void setFlagSetpointDeltaLow(float celsius);
    float flagSetpointDeltaHigh() const { return m_settings.flagSetpointDeltaHigh; }
    void setFlagSetpointDeltaHigh(float celsius);
    float flagSetpointTempLow() const { return m_settings.flagSetpointTempLow; }
    void setFlagSetpointTempLow(float celsius);
    float flagSetpointTempHigh() const { return m_settings.flagSetpointTempHigh; }
    void setFlagSetpointTempHigh(float celsius);
    bool useFactoryBadPixels() const { return m_settings.useFactoryBadPixels; } ///< They count as bad too.
    void setUseFactoryBadPixels(bool use);
    bool hasFlag() const { return m_settings.hasFlag; }
    bool hasTempControlledFlag() const { return m_settings.hasTempControlledFlag; }

    ENUC_STATUS status() const { return static_cast<ENUC_STATUS>(m_status); } ///< As last polled.
    QString statusText() const { return m_statusText; } ///< The camera's words for the operator.
    ENUC_RESULT result() const { return static_cast<ENUC_RESULT>(m_result.result); } ///< Of the last run that ended.
    QString resultText() const { return m_result.text; }
    // Numbers of bad pixels of that run, all together and by reason. A pixel may have several reasons.
    int totalBadPixels() const { return static_cast<int>(m_result.totalBadPixels); }
    int factoryBadPixels() const { return static_cast<int>(m_result.factoryBadPixels); }
    int newBadPixels() const { return static_cast<int>(m_result.newBadPixels); } ///< Not in the factory's list.
    int twinklingPixels() const { return static_cast<int>(m_result.twinklingPixels); }
    int aboveGainMax() const { return static_cast<int>(m_result.aboveGainMax); }
    int belowGainMin() const { return static_cast<int>(m_result.belowGainMin); }
    int aboveADMaxSrc1() const { return static_cast<int>(m_result.aboveADMaxSrc1); }
    int belowADMinSrc1() const { return static_cast<int>(m_result.belowADMinSrc1); }
    int aboveADMaxSrc2() const { return static_cast<int>(m_result.aboveADMaxSrc2); }
    int belowADMinSrc2() const { return static_cast<int>(m_result.belowADMinSrc2); }
    bool canNext() const { return m_canNext; } ///< Whether the camera waits for next().

    /// Reads all settings but the preset from the camera. A setting that cannot be read gets its default.
    Q_INVOKABLE void refresh();
    /// Writes the settings and starts the camera. Does nothing while a run is in progress. If a call fails,
    /// inProgress() becomes false, and status() and result() stay those of the last run.
    Q_INVOKABLE void start();
    // The following call the camera once and ignore the status.
    Q_INVOKABLE void next(); ///< Continues after the operator has presented the source.
    Q_INVOKABLE void abort(); ///< The run is over when a poll finds the camera ready.
    Q_INVOKABLE void accept(); ///< Makes the result the correction of the preset. Does not save it.
    Q_INVOKABLE void discard(); ///< Drops the result.

signals:
    void refreshingChanged();
    void inProgressChanged();
    void presetChanged();
    void nucTypeChanged();
    void nucSourceChanged();
    void numFramesChanged();
    void gainMinChanged();
    void gainMaxChanged();
    void adcLowChanged();
    void adcHighChanged();
    void detectBadPixelsChanged();
    void detectTwinklersChanged();
    void twinklerNumFramesChanged();
    void twinklerDeltaChanged();
    void flagSetpointTypeChanged();
    void flagSetpointDeltaLowChanged();
    void flagSetpointDeltaHighChanged();
    void flagSetpointTempLowChanged();
    void flagSetpointTempHighChanged();
    void useFactoryBadPixelsChanged();
    void hasFlagChanged();
    void hasTempControlledFlagChanged();
    void statusChanged();
    void resultChanged();
    void canNextChanged();
    void respLowChanged(); ///< Never emitted.

private:
    using Self = NucProcessModel;

    /// The result of a read, and the store of the edited values. A value that was not read has its default.
    struct Settings {
        uint8_t preset = 0;
        uint8_t nucType = TYPE_TWO_POINT;
        uint8_t nucSource = SOURCE_EXTERNAL;
        uint8_t numFrames = 16;
        float gainMin = 0.75F;
        float gainMax = 1.5F;
        uint16_t adcLow = 1000;
        uint16_t adcHigh = 15000;
        bool detectBadPixels = true;
        bool detectTwinklers = true;
        uint32_t twinklerNumFrames = 32;
        uint16_t twinklerDelta = 200;
        uint8_t flagSetpointType = SETPOINT_DELTA;
        float flagSetpointDeltaLow = 0.0F;
        float flagSetpointDeltaHigh = 15.0F;
        float flagSetpointTempLow = 20.0F;
        float flagSetpointTempHigh = 35.0F;
        bool useFactoryBadPixels = true;
        bool hasFlag = false;
        bool hasTempControlledFlag = false;

        static Settings read(const CameraAccess &camera);
        /// Writes all settings and starts the run. Returns false at the first call that fails.
        bool start(uint64_t handle) const;
    };

    struct Result {
        uint16_t result = RESULT_OKAY;
        QString text;
        uint32_t totalBadPixels = 0;
        uint32_t factoryBadPixels = 0;
        uint32_t newBadPixels = 0;
        uint32_t twinklingPixels = 0;
        uint32_t aboveGainMax = 0;
        uint32_t belowGainMin = 0;
        uint32_t aboveADMaxSrc1 = 0;
        uint32_t belowADMinSrc1 = 0;
        uint32_t aboveADMaxSrc2 = 0;
        uint32_t belowADMinSrc2 = 0;

        bool readCounts(uint64_t handle, uint8_t preset);
    };

    /// The result of a poll.
    struct Status {
        bool ok = false; ///< All calls succeeded.
        uint16_t status = STATUS_READY;
        QString text;
        Result result; ///< The text and the result only if the status is STATUS_READY.

        static Status read(const CameraAccess &camera, uint8_t preset);
    };

    void publishStatus(const Status &status);
    void setInProgress(bool inProgress);
    void setCanNext(bool canNext);

private slots:
    void refreshStatus();
    void finishedSettingsWatcher();
    void finishedStatusWatcher();
    void finishedStartWatcher();

private:
    Settings m_settings;
    bool m_inProgress = false;
    bool m_canNext = false;
    uint16_t m_status = STATUS_READY;
    QString m_statusText;
    Result m_result;
    QTimer m_statusTimer{this};
    Refresh<Self, bool> m_start{this, &Self::finishedStartWatcher, RefreshForm::NoFlags};
    Refresh<Self, Status> m_poll{this, &Self::finishedStatusWatcher, RefreshForm::NoFlags};
    Refresh<Self, Settings> m_refresh{this, &Self::finishedSettingsWatcher, RefreshForm::FlagGuard};
};
