#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>

#include <cstdint>

/// How corrections are made and used. The operator edits the settings and applies them all together; a refresh discards
/// edits that were not applied. Settings that the camera gets in one call share one signal. GUI thread only. (The
/// header is long because of the number of its settings.)
class MfgNucSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(int selectedNucTypeIndex READ selectedNucTypeIndex WRITE setSelectedNucTypeIndex NOTIFY
                   selectedNucTypeIndexChanged FINAL)
    Q_PROPERTY(int selectedNucSourceIndex READ selectedNucSourceIndex WRITE setSelectedNucSourceIndex NOTIFY
                   selectedNucSourceIndexChanged FINAL)
    Q_PROPERTY(bool detectBadPixels READ detectBadPixels WRITE setDetectBadPixels NOTIFY nucSetupChanged FINAL)
    Q_PROPERTY(int adMin READ adMin WRITE setAdMin NOTIFY nucSetupChanged FINAL)
    Q_PROPERTY(int adMax READ adMax WRITE setAdMax NOTIFY nucSetupChanged FINAL)
    Q_PROPERTY(float gainMin READ gainMin WRITE setGainMin NOTIFY nucSetupChanged FINAL)
    Q_PROPERTY(float gainMax READ gainMax WRITE setGainMax NOTIFY nucSetupChanged FINAL)
    Q_PROPERTY(int nucNumFrames READ nucNumFrames WRITE setNucNumFrames NOTIFY nucNumFramesChanged FINAL)
    Q_PROPERTY(bool useTwinklerDetection READ useTwinklerDetection WRITE setUseTwinklerDetection NOTIFY
                   twinklerSetupChanged FINAL)
    Q_PROPERTY(
        int twinklerNumFrames READ twinklerNumFrames WRITE setTwinklerNumFrames NOTIFY twinklerSetupChanged FINAL)
    Q_PROPERTY(int twinklerDelta READ twinklerDelta WRITE setTwinklerDelta NOTIFY twinklerSetupChanged FINAL)
    Q_PROPERTY(float flagMaxTemp READ flagMaxTemp WRITE setFlagMaxTemp NOTIFY flagSetupChanged FINAL)
    Q_PROPERTY(float stableDelta READ stableDelta WRITE setStableDelta NOTIFY flagSetupChanged FINAL)
    Q_PROPERTY(uint stableCount READ stableCount WRITE setStableCount NOTIFY flagSetupChanged FINAL)
    Q_PROPERTY(uint timeout READ timeout WRITE setTimeout NOTIFY flagSetupChanged FINAL)
    Q_PROPERTY(bool useFactoryBadPixels READ useFactoryBadPixels WRITE setUseFactoryBadPixels NOTIFY
                   useFactoryBadPixelsChanged FINAL)
    Q_PROPERTY(bool showBadPixels READ showBadPixels WRITE setShowBadPixels NOTIFY showBadPixelsChanged FINAL)
    Q_PROPERTY(bool nucVideoOutput READ nucVideoOutput WRITE setNucVideoOutput NOTIFY nucVideoOutputChanged FINAL)
    Q_PROPERTY(bool nucDigitalData READ nucDigitalData WRITE setNucDigitalData NOTIFY nucDigitalDataChanged FINAL)

public:
    explicit MfgNucSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    // The setters below only store, until applySettings(). The ranges are those of the page's fields; the setters do
    // not check them.
    int selectedNucTypeIndex() const { return m_type; } ///< NucProcessModel::ENUC_TYPE; -1 before the first read.
    void setSelectedNucTypeIndex(int type);
    int selectedNucSourceIndex() const { return m_source; } ///< NucProcessModel::ENUC_SOURCE; -1 before the first read.
    void setSelectedNucSourceIndex(int source);
    bool detectBadPixels() const { return m_setup.detectBadPixels; }
    void setDetectBadPixels(bool detect);
    int adMin() const { return m_setup.adMin; } ///< Limits of a good pixel's signal, 0 to 16383 A/D counts.
    void setAdMin(int counts);
    int adMax() const { return m_setup.adMax; }
    void setAdMax(int counts);
    float gainMin() const { return m_setup.gainMin; } ///< Limits of a good pixel's responsivity, 0 to 2; 1 is the mean.
    void setGainMin(float limit);
    float gainMax() const { return m_setup.gainMax; }
    void setGainMax(float limit);
    /// The number of frames averaged for each source, 2 to 128. The camera gets the lowest 8 bits.
    int nucNumFrames() const { return m_numFrames; }
    void setNucNumFrames(int count);
    bool useTwinklerDetection() const { return m_twinkler.detect; }
    void setUseTwinklerDetection(bool detect);
    int twinklerNumFrames() const { return m_twinkler.numFrames; } ///< 1 to 1048575.
    void setTwinklerNumFrames(int count);
    int twinklerDelta() const { return m_twinkler.delta; } ///< The greatest change of a good pixel, 0 to 16383 counts.
    void setTwinklerDelta(int counts);
    float flagMaxTemp() const { return m_flag.maxTemp; } ///< The highest temperature of the flag, 40 to 100 Celsius.
    void setFlagMaxTemp(float celsius);
    /// The flag is stable when stableCount() temperatures (1 to 128), one after the other, are this close to its
    /// setpoint: 0.1 to 5 degrees.
    float stableDelta() const { return m_flag.stableDelta; }
    void setStableDelta(float celsius);
    uint stableCount() const { return m_flag.stableCount; }
    void setStableCount(uint count);
    uint timeout() const { return m_flag.timeout; } ///< The longest time until the flag is stable, 15000 to 300000 ms.
    void setTimeout(uint milliseconds);
    /// Whether the pixels of the factory's list count as bad too.
    bool useFactoryBadPixels() const { return m_useFactoryBadPixels; }
    void setUseFactoryBadPixels(bool use);
    bool showBadPixels() const { return m_showBadPixels; } ///< Whether bad pixels stay uncorrected in the picture.
    void setShowBadPixels(bool show);
    bool nucVideoOutput() const { return m_videoOutput; } ///< Whether the video output is corrected.
    void setNucVideoOutput(bool corrected);
    bool nucDigitalData() const { return m_digitalData; } ///< Whether the digital output is corrected.
    void setNucDigitalData(bool corrected);

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void applySettings(); ///< Writes all settings, changed or not. Ignores all statuses.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedNucTypeIndexChanged();
    void selectedNucSourceIndexChanged();
    void nucSetupChanged();
    void nucNumFramesChanged();
    void twinklerSetupChanged();
    void flagSetupChanged();
    void useFactoryBadPixelsChanged();
    void showBadPixelsChanged();
    void nucVideoOutputChanged();
    void nucDigitalDataChanged();

private:
    using Self = MfgNucSettingsModel;

    struct NucSetup {
        float gainMin = 0;
        float gainMax = 0;
        int adMin = 0;
        int adMax = 0;
        bool detectBadPixels = false;

        static Nullable<NucSetup> read(uint64_t handle);
    };

    struct TwinklerSetup {
        bool detect = false;
        int numFrames = 0;
        int delta = 0;

        static Nullable<TwinklerSetup> read(uint64_t handle);
    };

    struct FlagSetup {
        float maxTemp = 0;
        float stableDelta = 0;
        uint32_t stableCount = 0;
        uint32_t timeout = 0;

        static Nullable<FlagSetup> read(uint64_t handle);
    };

    /// The result of a read.
    struct NucSettingsResult {
        Nullable<int> type;
        Nullable<int> source;
        Nullable<NucSetup> setup;
        Nullable<int> numFrames;
        Nullable<TwinklerSetup> twinkler;
        Nullable<FlagSetup> flag;
        Nullable<bool> useFactoryBadPixels;
        Nullable<bool> showBadPixels;
        Nullable<bool> digitalData;
        Nullable<bool> videoOutput;

        static NucSettingsResult read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    int m_type = -1;
    int m_source = -1;
    NucSetup m_setup;
    int m_numFrames = 0;
    TwinklerSetup m_twinkler;
    FlagSetup m_flag;
    bool m_useFactoryBadPixels = false;
    bool m_showBadPixels = false;
    bool m_videoOutput = false;
    bool m_digitalData = false;
    Refresh<Self, NucSettingsResult> m_refresh{this, &Self::finishedWatcher};
};
