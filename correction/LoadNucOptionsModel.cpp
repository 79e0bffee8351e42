#include "correction/LoadNucOptionsModel.h"

#include "common/setters.h"

void LoadNucOptionsModel::setLoadSettings(bool load)
{
    storeOnly(this, load, m_options.loadSettings, &Self::loadSettingsChanged);
}

void LoadNucOptionsModel::setUseIntTime(bool use)
{
    storeOnly(this, use, m_options.useIntTime, &Self::useIntTimeChanged);
}

void LoadNucOptionsModel::setUseWindowSize(bool use)
{
    storeOnly(this, use, m_options.useWindowSize, &Self::useWindowSizeChanged);
}

void LoadNucOptionsModel::setUseInvertRevert(bool use)
{
    storeOnly(this, use, m_options.useInvertRevert, &Self::useInvertRevertChanged);
}

void LoadNucOptionsModel::setUseFrameRate(bool use)
{
    storeOnly(this, use, m_options.useFrameRate, &Self::useFrameRateChanged);
}

void LoadNucOptionsModel::setUseFilter(bool use) { storeOnly(this, use, m_options.useFilter, &Self::useFilterChanged); }

void LoadNucOptionsModel::setUseFrameSyncMode(bool use)
{
    storeOnly(this, use, m_options.useFrameSyncMode, &Self::useFrameSyncModeChanged);
}

void LoadNucOptionsModel::setUseDigitalGainOffset(bool use)
{
    storeOnly(this, use, m_options.useDigitalGainOffset, &Self::useDigitalGainOffsetChanged);
}

void LoadNucOptionsModel::setUseAnalogOffset(bool use)
{
    storeOnly(this, use, m_options.useAnalogOffset, &Self::useAnalogOffsetChanged);
}

void LoadNucOptionsModel::setUseDetectorBias(bool use)
{
    storeOnly(this, use, m_options.useDetectorBias, &Self::useDetectorBiasChanged);
}

void LoadNucOptionsModel::setUseFPAGainLevel(bool use)
{
    storeOnly(this, use, m_options.useFPAGainLevel, &Self::useFPAGainLevelChanged);
}

void LoadNucOptionsModel::setUseSkimming(bool use)
{
    storeOnly(this, use, m_options.useSkimming, &Self::useSkimmingChanged);
}

void LoadNucOptionsModel::setUseColor(bool use) { storeOnly(this, use, m_options.useColor, &Self::useColorChanged); }

void LoadNucOptionsModel::save() { m_backup = m_options; }

void LoadNucOptionsModel::restore()
{
    setLoadSettings(m_backup.loadSettings);
    setUseIntTime(m_backup.useIntTime);
    setUseWindowSize(m_backup.useWindowSize);
    setUseInvertRevert(m_backup.useInvertRevert);
    setUseFrameRate(m_backup.useFrameRate);
    setUseFilter(m_backup.useFilter);
    setUseFrameSyncMode(m_backup.useFrameSyncMode);
    setUseDigitalGainOffset(m_backup.useDigitalGainOffset);
    setUseAnalogOffset(m_backup.useAnalogOffset);
    setUseDetectorBias(m_backup.useDetectorBias);
    setUseFPAGainLevel(m_backup.useFPAGainLevel);
    setUseSkimming(m_backup.useSkimming);
    setUseColor(m_backup.useColor);
}
