#include "advanced/AdvancedLockinSettingsModel.h"

#include "common/formatting.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <cmath>

#include "zvt/zvtsdk.h"

void AdvancedLockinSettingsModel::setVisible(bool visible)
{
    storeOnly(this, visible, m_visible, &Self::visibleChanged);
}

// The read

void AdvancedLockinSettingsModel::refresh() { m_refresh.start(&Settings::read); }

AdvancedLockinSettingsModel::Settings AdvancedLockinSettingsModel::Settings::read(const CameraAccess &camera)
{
    Settings settings;
    fetch(settings.coupling, zvtGetLockinCoupling, camera.handle);
    fetch(settings.digitalFilter, zvtGetLockinAlphaFilter, camera.handle);
    fetch(settings.estInputFrequency, zvtGetLockinEstInputFreq, camera.handle);
    fetch(settings.sampleRate, zvtGetLockinSampleFreq, camera.handle);
    return settings;
}

void AdvancedLockinSettingsModel::finishedWatcher()
{
    const Settings settings = m_refresh.result();
    publish(this, settings.coupling, m_couplingIndex, &Self::selectedCouplingIndexChanged);
    publish(this, settings.digitalFilter, m_digitalFilterIndex, &Self::selectedDigitalFilterIndexChanged);
    publish(this, settings.estInputFrequency, m_estInputFrequency, &Self::estInputFrequencyChanged);
    m_sampleRateIsSet = settings.sampleRate.set();
    if (m_sampleRateIsSet)
        m_sampleRate = settings.sampleRate.get();
    m_digitalFilterList = filterTexts();
    emit sampleRateChanged();
    m_refresh.finish();
}

// Required: the two lists differ in length, and the first row of the one is not the first of the other. The row is the
// camera's number in both.
QStringList AdvancedLockinSettingsModel::filterTexts() const
{
    constexpr float firstFilter = 0.052736F;
    constexpr int filters = 7;
    QStringList texts;
    if (m_sampleRateIsSet) {
        const QLocale locale = plainLocale();
        float filter = firstFilter;
        for (int row = 0; row < filters; ++row, filter *= 0.5F)
            texts << locale.toString(static_cast<double>(filter * m_sampleRate * 0.5F), 'f', 2);
        return texts;
    }
    //: The digital filter is switched off
    texts << tr("Off");
    for (int row = 1; row <= filters; ++row)
        texts << QStringLiteral("1/%1").arg(1 << row);
    return texts;
}

// Writes

void AdvancedLockinSettingsModel::setSelectedCouplingIndex(int index)
{
    writeStandard(this, index, m_couplingIndex, &Self::selectedCouplingIndexChanged, zvtSetLockinCoupling);
}

void AdvancedLockinSettingsModel::setSelectedDigitalFilterIndex(int index)
{
    if (index == m_digitalFilterIndex)
        return;
    setters::write(this, zvtSetLockinAlphaFilter, index);
    announce(this, readOr(0, zvtGetLockinAlphaFilter, CameraAccess::of(this).handle), m_digitalFilterIndex,
             &Self::selectedDigitalFilterIndexChanged);
}

void AdvancedLockinSettingsModel::setEstInputFrequency(float hertz)
{
    constexpr float tolerance = 0.001F;
    if (std::abs(hertz - m_estInputFrequency) <= tolerance)
        return;
    setters::write(this, zvtSetLockinEstInputFreq, hertz);
    announce(this, readOr(m_estInputFrequency, zvtGetLockinEstInputFreq, CameraAccess::of(this).handle),
             m_estInputFrequency, &Self::estInputFrequencyChanged);
}
