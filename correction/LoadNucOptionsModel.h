#pragma once

#include "correction/LoadNucOptions.h"

#include <QObject>

/// Which settings are set again when a correction is loaded, as the operator chooses them: see LoadNucOptions. They
/// last as long as the model, are not stored on disk, and are not sent to the camera. GUI thread only.
class LoadNucOptionsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool loadSettings READ loadSettings WRITE setLoadSettings NOTIFY loadSettingsChanged FINAL)
    Q_PROPERTY(bool useIntTime READ useIntTime WRITE setUseIntTime NOTIFY useIntTimeChanged FINAL)
    Q_PROPERTY(bool useWindowSize READ useWindowSize WRITE setUseWindowSize NOTIFY useWindowSizeChanged FINAL)
    Q_PROPERTY(bool useInvertRevert READ useInvertRevert WRITE setUseInvertRevert NOTIFY useInvertRevertChanged FINAL)
    Q_PROPERTY(bool useFrameRate READ useFrameRate WRITE setUseFrameRate NOTIFY useFrameRateChanged FINAL)
    Q_PROPERTY(bool useFilter READ useFilter WRITE setUseFilter NOTIFY useFilterChanged FINAL)
    Q_PROPERTY(
        bool useFrameSyncMode READ useFrameSyncMode WRITE setUseFrameSyncMode NOTIFY useFrameSyncModeChanged FINAL)
    Q_PROPERTY(bool useDigitalGainOffset READ useDigitalGainOffset WRITE setUseDigitalGainOffset NOTIFY
                   useDigitalGainOffsetChanged FINAL)
    Q_PROPERTY(bool useAnalogOffset READ useAnalogOffset WRITE setUseAnalogOffset NOTIFY useAnalogOffsetChanged FINAL)
    Q_PROPERTY(bool useDetectorBias READ useDetectorBias WRITE setUseDetectorBias NOTIFY useDetectorBiasChanged FINAL)
    Q_PROPERTY(bool useFPAGainLevel READ useFPAGainLevel WRITE setUseFPAGainLevel NOTIFY useFPAGainLevelChanged FINAL)
    Q_PROPERTY(bool useSkimming READ useSkimming WRITE setUseSkimming NOTIFY useSkimmingChanged FINAL)
    Q_PROPERTY(bool useColor READ useColor WRITE setUseColor NOTIFY useColorChanged FINAL)

public:
    explicit LoadNucOptionsModel(QObject *parent) : QObject(parent) { }

    bool loadSettings() const { return m_options.loadSettings; }
    void setLoadSettings(bool load);
    bool useIntTime() const { return m_options.useIntTime; }
    void setUseIntTime(bool use);
    bool useWindowSize() const { return m_options.useWindowSize; }
    void setUseWindowSize(bool use);
    bool useInvertRevert() const { return m_options.useInvertRevert; }
    void setUseInvertRevert(bool use);
    bool useFrameRate() const { return m_options.useFrameRate; }
    void setUseFrameRate(bool use);
    bool useFilter() const { return m_options.useFilter; }
    void setUseFilter(bool use);
    bool useFrameSyncMode() const { return m_options.useFrameSyncMode; }
    void setUseFrameSyncMode(bool use);
    bool useDigitalGainOffset() const { return m_options.useDigitalGainOffset; }
    void setUseDigitalGainOffset(bool use);
    bool useAnalogOffset() const { return m_options.useAnalogOffset; }
    void setUseAnalogOffset(bool use);
    bool useDetectorBias() const { return m_options.useDetectorBias; }
    void setUseDetectorBias(bool use);
    bool useFPAGainLevel() const { return m_options.useFPAGainLevel; }
    void setUseFPAGainLevel(bool use);
    bool useSkimming() const { return m_options.useSkimming; }
    void setUseSkimming(bool use);
    bool useColor() const { return m_options.useColor; }
    void setUseColor(bool use);

    LoadNucOptions options() const { return m_options; }

    Q_INVOKABLE void save(); ///< Keeps the present options for restore().
    /// Sets the options of the last save(), the defaults without one. Signals each option that changes.
    Q_INVOKABLE void restore();

signals:
    void loadSettingsChanged();
    void useIntTimeChanged();
    void useWindowSizeChanged();
    void useInvertRevertChanged();
    void useFrameRateChanged();
    void useFilterChanged();
    void useFrameSyncModeChanged();
    void useDigitalGainOffsetChanged();
    void useAnalogOffsetChanged();
    void useDetectorBiasChanged();
    void useFPAGainLevelChanged();
    void useSkimmingChanged();
    void useColorChanged();

private:
    using Self = LoadNucOptionsModel;

    LoadNucOptions m_options;
    LoadNucOptions m_backup;
};
