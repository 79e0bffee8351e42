// What other clients of the camera may change in its sensor, and what a snapshot of the camera holds of it.
#include "platform/emulator/devices/Sensor.h"

#include <QJsonArray>
#include <QVariantList>

#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <optional>

namespace emulator
{

namespace
{

const QString windowKey = QStringLiteral("window");
const QString sequencingModeKey = QStringLiteral("sequencingMode");
const QString activePresetKey = QStringLiteral("activePreset");
const QString videoPresetKey = QStringLiteral("videoPreset");
const QString gigEPresetKey = QStringLiteral("gigEPreset");
const QString reduceNoiseKey = QStringLiteral("reduceNoise");
const QString superframeWidthKey = QStringLiteral("superframeWidth");
const QString presetsKey = QStringLiteral("presets");
const QString integrationWidthKey = QStringLiteral("integrationWidth");
const QString frameWidthKey = QStringLiteral("frameWidth");
const QString dwellCountKey = QStringLiteral("dwellCount");
const QString subframeEnabledKey = QStringLiteral("subframeEnabled");

std::optional<uint32_t> unsignedOf(const QVariant &value)
{
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok || !(number >= 0.0 && number <= std::numeric_limits<uint32_t>::max()))
        return std::nullopt;
    return static_cast<uint32_t>(number);
}

/// The value of a preset in a snapshot, if it is there and of the right kind.
std::optional<uint32_t> unsignedIn(const QJsonObject &values, const QString &key)
{
    return unsignedOf(values.value(key).toVariant());
}

double numberOf(const QVariant &value)
{
    bool ok = false;
    const double number = value.toDouble(&ok);
    return ok ? number : std::numeric_limits<double>::quiet_NaN();
}

int presetOf(const QVariant &value)
{
    bool ok = false;
    const int preset = value.toInt(&ok);
    return ok ? preset : -1;
}

} // namespace

QJsonObject Sensor::save() const
{
    const Window &window = m_geometry.window();
    QJsonArray presets;
    for (int preset = 0; preset < m_numPresets; ++preset) {
        const Preset &values = m_presets[static_cast<size_t>(preset)];
        presets.append(QJsonObject{{integrationWidthKey, double(values.integrationWidth)},
                                   {frameWidthKey, double(values.frameWidth)},
                                   {dwellCountKey, double(values.dwellCount)},
                                   {subframeEnabledKey, values.subframeEnabled}});
    }
    return {{windowKey, QJsonArray{window.x, window.y, window.width, window.height}},
            {sequencingModeKey, double(m_sequencingMode)},
            {activePresetKey, m_activePreset},
            {videoPresetKey, m_videoPreset},
            {gigEPresetKey, m_gigEPreset},
            {reduceNoiseKey, m_reduceNoise},
            {superframeWidthKey, double(m_superframeWidth)},
            {presetsKey, presets}};
}

void Sensor::restore(const QJsonObject &values)
{
    // The presets come last, since their shortest frames depend on all the others.
    for (const QString &key :
         {windowKey, sequencingModeKey, activePresetKey, videoPresetKey, gigEPresetKey, reduceNoiseKey})
        if (values.contains(key))
            set(key, values.value(key).toVariant());
    const QJsonArray presets = values.value(presetsKey).toArray();
    for (int preset = 0; preset < presets.size(); ++preset) {
        const QJsonObject saved = presets.at(preset).toObject();
        const auto integration = unsignedIn(saved, integrationWidthKey);
        const bool taken = integration && setIntegrationWidth(preset, *integration) == Ok;
        // A write of the integration register alone leaves a frame that is too short for it, which then takes as long
        // as it must.
        if (const auto clocks = unsignedIn(saved, frameWidthKey);
            clocks && setFrameWidth(preset, *clocks) != Ok && taken)
            m_presets[static_cast<size_t>(preset)].frameWidth = minimumFrameWidth(preset);
        if (const auto count = unsignedIn(saved, dwellCountKey))
            setDwellCount(preset, *count);
        if (const QJsonValue enabled = saved.value(subframeEnabledKey); enabled.isBool())
            setSubframeEnabled(preset, enabled.toBool());
    }
    m_superframeWidth = unsignedIn(values, superframeWidthKey).value_or(m_superframeWidth);
    stretchFrames();
}

bool Sensor::set(const QString &name, const QVariant &value)
{
    const auto setFlag = [&](bool &flag) {
        if (!value.canConvert<bool>())
            return Refused;
        flag = value.toBool();
        stretchFrames();
        return Ok;
    };
    const std::map<QString, std::function<Status()>> settings{
        {windowKey,
         [&] {
             const QVariantList list = value.toList();
             const auto at = [&](qsizetype index) {
                 return static_cast<uint16_t>(
                     std::min(unsignedOf(list.value(index)).value_or(UINT16_MAX), uint32_t(UINT16_MAX)));
             };
             return list.size() == 4 ? setWindow({at(0), at(1), at(2), at(3)}) : Refused;
         }},
        {sequencingModeKey, [&] { return setSequencingMode(unsignedOf(value).value_or(UINT32_MAX)); }},
        {activePresetKey, [&] { return setActivePreset(presetOf(value)); }},
        {videoPresetKey, [&] { return setVideoPreset(presetOf(value)); }},
        {gigEPresetKey, [&] { return setGigEPreset(presetOf(value)); }},
        {reduceNoiseKey, [&] { return setFlag(m_reduceNoise); }},
        {QStringLiteral("saturated"), [&] { return setFlag(m_saturationFlag); }},
        {QStringLiteral("integrationTime"), [&] { return setIntegrationTime(m_activePreset, numberOf(value)); }},
        {QStringLiteral("frameRate"), [&] { return setFrameRate(m_activePreset, numberOf(value)); }},
        {dwellCountKey, [&] { return setDwellCount(m_activePreset, unsignedOf(value).value_or(UINT32_MAX)); }},
        {subframeEnabledKey, [&] { return setFlag(m_presets[static_cast<size_t>(m_activePreset)].subframeEnabled); }},
        {QStringLiteral("superframeRate"), [&] { return setSuperframeRate(numberOf(value)); }},
    };
    const auto found = settings.find(name);
    return found != settings.end() && found->second() == Ok;
}

} // namespace emulator
