#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <array>
#include <cstdint>
#include <limits>

/// How frames are synchronised, what a trigger starts, and what the sync output follows. Delays are in microseconds,
/// and polarities are 0 for active low and 1 for active high. The modes and sources are -1 until they have been read.
/// The camera decides which values it accepts; a refused value is not stored. The list of trigger modes depends on the
/// sequencing mode. GUI thread only. (The header is long because of the number of its settings.)
class SyncSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool sequencingSupported READ sequencingSupported NOTIFY sequencingSupportedChanged FINAL)

    Q_PROPERTY(int syncMode READ syncMode WRITE setSyncMode NOTIFY syncModeChanged FINAL)
    Q_PROPERTY(int syncSource READ syncSource WRITE setSyncSource NOTIFY syncSourceChanged FINAL)
    Q_PROPERTY(QStringList syncSourceStrings READ syncSourceStrings NOTIFY syncSourceStringsChanged FINAL)
    Q_PROPERTY(int triggerMode READ triggerMode WRITE setTriggerMode NOTIFY triggerModeChanged FINAL)
    Q_PROPERTY(int triggerModeIndex READ triggerModeIndex WRITE setTriggerModeIndex NOTIFY triggerModeChanged FINAL)
    Q_PROPERTY(QStringList triggerModeStrings READ triggerModeStrings NOTIFY triggerModeStringsChanged FINAL)
    Q_PROPERTY(int triggerSource READ triggerSource WRITE setTriggerSource NOTIFY triggerSourceChanged FINAL)
    Q_PROPERTY(double triggerRate READ triggerRate WRITE setTriggerRate NOTIFY triggerRateChanged FINAL)
    Q_PROPERTY(uint32_t sequenceCount READ sequenceCount WRITE setSequenceCount NOTIFY sequenceCountChanged FINAL)

    Q_PROPERTY(float syncInDelay READ syncInDelay WRITE setSyncInDelay NOTIFY syncInDelayChanged FINAL)
    Q_PROPERTY(float triggerInDelay READ triggerInDelay WRITE setTriggerInDelay NOTIFY triggerInDelayChanged FINAL)
    Q_PROPERTY(float syncOutDelayPS0 READ syncOutDelayPS0 WRITE setSyncOutDelayPS0 NOTIFY syncOutDelayPS0Changed FINAL)
    Q_PROPERTY(float syncOutDelayPS1 READ syncOutDelayPS1 WRITE setSyncOutDelayPS1 NOTIFY syncOutDelayPS1Changed FINAL)
    Q_PROPERTY(float syncOutDelayPS2 READ syncOutDelayPS2 WRITE setSyncOutDelayPS2 NOTIFY syncOutDelayPS2Changed FINAL)
    Q_PROPERTY(float syncOutDelayPS3 READ syncOutDelayPS3 WRITE setSyncOutDelayPS3 NOTIFY syncOutDelayPS3Changed FINAL)
    Q_PROPERTY(int syncOutPolarity READ syncOutPolarity WRITE setSyncOutPolarity NOTIFY syncOutPolarityChanged FINAL)
    Q_PROPERTY(int syncOutSource READ syncOutSource WRITE setSyncOutSource NOTIFY syncOutSourceChanged FINAL)
    Q_PROPERTY(int syncInPolarity READ syncInPolarity WRITE setSyncInPolarity NOTIFY syncInPolarityChanged FINAL)
    Q_PROPERTY(
        int triggerInPolarity READ triggerInPolarity WRITE setTriggerInPolarity NOTIFY triggerInPolarityChanged FINAL)

    Q_PROPERTY(int triggerTimeDay READ triggerTimeDay WRITE setTriggerTimeDay NOTIFY triggerTimeDayChanged FINAL)
    Q_PROPERTY(int triggerTimeHour READ triggerTimeHour WRITE setTriggerTimeHour NOTIFY triggerTimeHourChanged FINAL)
    Q_PROPERTY(
        int triggerTimeMinute READ triggerTimeMinute WRITE setTriggerTimeMinute NOTIFY triggerTimeMinuteChanged FINAL)
    Q_PROPERTY(
        int triggerTimeSecond READ triggerTimeSecond WRITE setTriggerTimeSecond NOTIFY triggerTimeSecondChanged FINAL)
    Q_PROPERTY(int triggerTimeMillisecond READ triggerTimeMillisecond WRITE setTriggerTimeMillisecond NOTIFY
                   triggerTimeMillisecondChanged FINAL)
    Q_PROPERTY(int triggerTimeMicrosecond READ triggerTimeMicrosecond WRITE setTriggerTimeMicrosecond NOTIFY
                   triggerTimeMicrosecondChanged FINAL)

public:
    /// What a trigger starts. The numbers are those of the camera. Without preset sequencing 2 is a superframe.
    enum ETRIGGER_MODE : int {
        FREE_RUN = 0,
        TRIGGERED_FREE_RUN = 1,
        TRIGGERED_SEQUENCE = 2,
        TRIGGERED_PRESET_ADVANCE = 3
    };
    Q_ENUM(ETRIGGER_MODE)

    explicit SyncSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool sequencingSupported() const { return m_sequencingSupported; } ///< The camera offers preset sequencing.

    int syncMode() const { return m_syncMode; } ///< A frame sync starts 0 the integration, 1 the readout.
    void setSyncMode(int mode);
    int syncSource() const { return m_syncSource; } ///< 0 internal, 1 external, 2 video, 3 tri-level.
    void setSyncSource(int source);
    QStringList syncSourceStrings() const; ///< The row is the source. The last one only with a tri-level input.
    int triggerMode() const { return m_triggerMode; } ///< An ETRIGGER_MODE.
    void setTriggerMode(int mode);
    int triggerModeIndex() const; ///< -1 for a mode that is not in the list.
    void setTriggerModeIndex(int index);
    QStringList triggerModeStrings() const { return m_triggerModeStrings; }
    int triggerSource() const { return m_triggerSource; } ///< 0 internal, 1 external, 2 software, 3 time.
    void setTriggerSource(int source);
    double triggerRate() const { return m_triggerRate; } ///< Of the internal trigger, in hertz.
    void setTriggerRate(double hertz); ///< Writes the nearest rate that the camera can do.
    uint32_t sequenceCount() const { return m_sequenceCount; } ///< The sequences that one trigger starts.
    void setSequenceCount(uint32_t count);

    /// A delay is NaN until it has been read, since the camera's may be 0.
    float syncInDelay() const { return m_syncInDelay; }
    void setSyncInDelay(float microseconds);
    float triggerInDelay() const { return m_triggerInDelay; }
    void setTriggerInDelay(float microseconds);
    /// The delay of the sync output for frames of a preset.
    float syncOutDelayPS0() const { return m_syncOutDelays[0]; }
    void setSyncOutDelayPS0(float microseconds) { setSyncOutDelay(0, microseconds); }
    float syncOutDelayPS1() const { return m_syncOutDelays[1]; }
    void setSyncOutDelayPS1(float microseconds) { setSyncOutDelay(1, microseconds); }
    float syncOutDelayPS2() const { return m_syncOutDelays[2]; }
    void setSyncOutDelayPS2(float microseconds) { setSyncOutDelay(2, microseconds); }
    float syncOutDelayPS3() const { return m_syncOutDelays[3]; }
    void setSyncOutDelayPS3(float microseconds) { setSyncOutDelay(3, microseconds); }
    int syncOutPolarity() const { return m_syncOutPolarity; }
    void setSyncOutPolarity(int polarity);
    int syncOutSource() const { return m_syncOutSource; } ///< 0 integration start, 1 frame start, 2 saturation flag.
    void setSyncOutSource(int source);
    int syncInPolarity() const { return m_syncInPolarity; }
    void setSyncInPolarity(int polarity);
    int triggerInPolarity() const { return m_triggerInPolarity; }
    void setTriggerInPolarity(int polarity);

    /// The IRIG time of a trigger by time; the day is that of the year, from 1. Each setter writes all six parts. The
    /// camera gets the low 16 bits of day, millisecond and microsecond, and the low 8 bits of the others.
    int triggerTimeDay() const { return m_triggerTime[Day]; }
    void setTriggerTimeDay(int day) { setTriggerTime(Day, day); }
    int triggerTimeHour() const { return m_triggerTime[Hour]; }
    void setTriggerTimeHour(int hour) { setTriggerTime(Hour, hour); }
    int triggerTimeMinute() const { return m_triggerTime[Minute]; }
    void setTriggerTimeMinute(int minute) { setTriggerTime(Minute, minute); }
    int triggerTimeSecond() const { return m_triggerTime[Second]; }
    void setTriggerTimeSecond(int second) { setTriggerTime(Second, second); }
    int triggerTimeMillisecond() const { return m_triggerTime[Millisecond]; }
    void setTriggerTimeMillisecond(int millisecond) { setTriggerTime(Millisecond, millisecond); }
    int triggerTimeMicrosecond() const { return m_triggerTime[Microsecond]; }
    void setTriggerTimeMicrosecond(int microsecond) { setTriggerTime(Microsecond, microsecond); }

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void trigger(); ///< Triggers once.
    Q_INVOKABLE void rearm(); ///< Prepares a further trigger.
    /// Lists the trigger modes of the camera's present sequencing mode. Changes nothing if the mode cannot be read.
    void sequencingModeChanged();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void sequencingSupportedChanged();
    void syncModeChanged();
    void syncSourceChanged();
    void syncSourceStringsChanged();
    void triggerModeChanged();
    void triggerModeStringsChanged();
    void triggerSourceChanged();
    void triggerRateChanged();
    void sequenceCountChanged();
    void syncInDelayChanged();
    void triggerInDelayChanged();
    void syncOutDelayPS0Changed();
    void syncOutDelayPS1Changed();
    void syncOutDelayPS2Changed();
    void syncOutDelayPS3Changed();
    void syncOutPolarityChanged();
    void syncOutSourceChanged();
    void syncInPolarityChanged();
    void triggerInPolarityChanged();
    void triggerTimeDayChanged();
    void triggerTimeHourChanged();
    void triggerTimeMinuteChanged();
    void triggerTimeSecondChanged();
    void triggerTimeMillisecondChanged();
    void triggerTimeMicrosecondChanged();

private:
    using Self = SyncSettingsModel;
    using Signal = void (Self::*)();

    enum TimePart : size_t { Day, Hour, Minute, Second, Millisecond, Microsecond };
    using TriggerTime = std::array<int, 6>; ///< By TimePart.
    static constexpr size_t delayCount = 4; ///< One delay of the sync output for each preset.
    static constexpr float unread = std::numeric_limits<float>::quiet_NaN(); ///< A delay before its first read.

    /// The result of a read.
    struct Result {
        Nullable<TriggerTime> triggerTime;
        Nullable<uint8_t> triggerMode;
        Nullable<uint8_t> triggerSource;
        Nullable<uint8_t> syncSource;
        Nullable<uint32_t> sequenceCount;
        Nullable<float> syncInDelay;
        Nullable<float> triggerInDelay;
        std::array<Nullable<float>, delayCount> syncOutDelays;
        Nullable<double> triggerRate;
        Nullable<uint8_t> syncOutPolarity;
        Nullable<uint8_t> syncOutSource;
        Nullable<uint8_t> syncInPolarity;
        Nullable<uint8_t> triggerInPolarity;
        Nullable<uint8_t> syncMode;
        Nullable<bool> triLevelAvailable;

        static Result read(const CameraAccess &camera);
    };
    struct Rows;

private slots:
    void finishedWatcher();

private:
    void publishSequencing();
    void setSyncOutDelay(size_t preset, float microseconds);
    void setTriggerTime(TimePart part, int value);

    static const std::array<Signal, delayCount> s_syncOutDelayChanged;
    static const std::array<Signal, 6> s_triggerTimeChanged;

    bool m_sequencingSupported = false;
    bool m_triLevelAvailable = false;
    int m_syncMode = -1;
    int m_syncSource = -1;
    int m_triggerMode = -1;
    int m_triggerSource = -1;
    double m_triggerRate = 0;
    uint32_t m_sequenceCount = 0;
    float m_syncInDelay = unread;
    float m_triggerInDelay = unread;
    std::array<float, delayCount> m_syncOutDelays{unread, unread, unread, unread};
    int m_syncOutPolarity = -1;
    int m_syncOutSource = -1;
    int m_syncInPolarity = -1;
    int m_triggerInPolarity = -1;
    TriggerTime m_triggerTime{};
    QStringList m_triggerModeStrings;
    QList<uint8_t> m_triggerModes; ///< Row for row the modes of m_triggerModeStrings.
    Refresh<Self, Result> m_refresh{this, &Self::finishedWatcher, RefreshForm::Standard};
};
