// The settings of the sensor that other clients may change, and those that snapshots contain.
#include "platform/emulator/devices/Sensor.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Trigger.h"

#include <QJsonArray>

#include <algorithm>
#include <iterator>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

const QString sequencingModeKey = u"sequencingMode"_s;
const QString reduceNoiseKey = u"reduceNoise"_s;
const QString syncStartsReadoutKey = u"syncStartsReadout"_s;
const QString superframeWidthKey = u"superframeWidth"_s;
const QString presetsKey = u"presets"_s;
const QString integrationWidthKey = u"integrationWidth"_s;
const QString frameWidthKey = u"frameWidth"_s;

Refusal aboveZero(double hertz) { return hertz > 0 ? Refusal() : u"must be above 0"_s; }

} // namespace

void Sensor::readSettings(Section &section)
{
    using WindowList = std::array<uint16_t, 4>;
    const auto window = [this] {
        const Window &now = m_geometry.window();
        return WindowList{now.x, now.y, now.width, now.height};
    };
    const auto setWindowList = [this](const WindowList &list) {
        return setWindow({list[0], list[1], list[2], list[3]});
    };
    const auto stretch = [this] { stretchFrames(); };
    const auto notHeld = [this] { return !framesAreHeld(); };
    const Between presets{0, m_numPresets - 1.0};
    OneOf gigEPresets;
    for (int preset = 0; preset < m_numPresets; ++preset)
        gigEPresets.numbers.append(preset);
    gigEPresets.numbers.append(allPresets);
    const OneOf modes{{m_sequencingModes.begin(), m_sequencingModes.end()}};

    addSettings(
        section,
        {
            {u"window"_s, window, setWindowList, Snapshot | OtherClient},
            Setting(sequencingModeKey, m_sequencingMode, modes, Snapshot | OtherClient).onlyIf(notHeld).then([this] {
                stretchFrames();
                camera().device<Trigger>()->sequencingChanged();
            }),
            {u"activePreset"_s, m_activePreset, presets, Snapshot | OtherClient},
            {u"videoPreset"_s, m_videoPreset, presets, Snapshot | OtherClient},
            Setting(u"gigEPreset"_s, m_gigEPreset, gigEPresets, Snapshot | OtherClient).onlyIf([this] {
                return hasGigEPreset();
            }),
            Setting(reduceNoiseKey, m_reduceNoise, Snapshot | OtherClient).onlyIf(notHeld).then(stretch),
            // The setting of FrameSync; here, since the shortest frames depend on it.
            Setting(syncStartsReadoutKey, m_syncStartsReadout, Snapshot).onlyIf(notHeld),
            {u"saturated"_s, m_saturationFlag, Profile | OtherClient},
            {u"superframeRate"_s, [this] { return superframeRate(); },
             [this](double hertz) { return setSuperframeRate(hertz); }, aboveZero, OtherClient},
        });
    for (int preset = 0; preset < m_numPresets; ++preset)
        addPresetSettings(preset);
}

void Sensor::addPresetSettings(int preset)
{
    Preset &values = m_presets[static_cast<size_t>(preset)];
    // The preset exists, so the getters succeed.
    const auto time = [this, preset] {
        double milliseconds = 0;
        integrationTime(preset, milliseconds);
        return milliseconds;
    };
    const auto rate = [this, preset] {
        double hertz = 0;
        frameRate(preset, hertz);
        return hertz;
    };
    const auto notHeld = [this] { return !framesAreHeld(); };
    values.settings.add({
        {integrationWidthKey, [&values] { return values.integrationWidth; },
         [this, preset](uint32_t clocks) { return setIntegrationWidth(preset, clocks); }, integrationWidths(),
         Snapshot},
        {u"integrationTime"_s, time, [this, preset](double ms) { return setIntegrationTime(preset, ms); }, OtherClient},
        {u"frameRate"_s, rate, [this, preset](double hertz) { return setFrameRate(preset, hertz); }, aboveZero,
         OtherClient},
        Setting(u"dwellCount"_s, values.dwellCount, Between{0, maximumDwellCount}, Snapshot | OtherClient)
            .onlyIf(notHeld),
        Setting(u"subframeEnabled"_s, values.subframeEnabled, Snapshot | OtherClient).onlyIf(notHeld).then([this] {
            stretchFrames();
        }),
    });
}

QJsonObject Sensor::save() const
{
    QJsonArray presets;
    for (int preset = 0; preset < m_numPresets; ++preset) {
        const Preset &values = m_presets[static_cast<size_t>(preset)];
        QJsonObject saved = values.settings.save();
        saved[frameWidthKey] = toJson(values.frameWidth);
        presets.append(saved);
    }
    QJsonObject saved = Device::save();
    saved[superframeWidthKey] = toJson(m_superframeWidth);
    saved[presetsKey] = presets;
    return saved;
}

QStringList Sensor::restore(const QJsonObject &values)
{
    QStringList refused = Device::restore(values);
    const auto report = [&refused](const QString &key, const Refusal &refusal) {
        if (!refusal.isEmpty())
            refused.append(key + u": "_s + refusal);
    };
    if (framesAreHeld()) {
        const QJsonObject present = save();
        for (const QString &key :
             {sequencingModeKey, reduceNoiseKey, syncStartsReadoutKey, presetsKey, superframeWidthKey})
            if (values.contains(key) && values.value(key) != present.value(key))
                report(key, refusedByTheCamera());
        return refused;
    }
    // The presets follow the other settings, since their shortest frames depend on them. The superframe follows them.
    const QJsonValue presets = values.value(presetsKey);
    if (!presets.isUndefined() && !presets.isArray())
        report(presetsKey, u"must be a list"_s);
    for (int preset = 0; preset < std::min<qsizetype>(presets.toArray().size(), m_numPresets); ++preset) {
        const QString path = u"%1.%2"_s.arg(presetsKey).arg(preset);
        const QJsonValue saved = presets.toArray().at(preset);
        if (!saved.isObject())
            report(path, u"must be an object"_s);
        for (const QString &refusal : restorePreset(preset, saved.toObject()))
            refused.append(path + u'.' + refusal);
    }
    if (values.contains(superframeWidthKey))
        report(superframeWidthKey, parse(values.value(superframeWidthKey), m_superframeWidth));
    stretchFrames();
    return refused;
}

QStringList Sensor::restorePreset(int preset, const QJsonObject &saved)
{
    Preset &values = m_presets[static_cast<size_t>(preset)];
    QStringList refused = values.settings.restore(saved);
    uint32_t clocks = values.frameWidth;
    Refusal refusal = saved.contains(frameWidthKey) ? parse(saved.value(frameWidthKey), clocks) : Refusal();
    if (refusal.isEmpty() && setFrameWidth(preset, clocks) != Ok) {
        // The saved frame width may be too short for the integration, since setIntegrationWidth() does not change it.
        // Such a frame gets the shortest width.
        if (saved.value(integrationWidthKey) == toJson(values.integrationWidth))
            values.frameWidth = minimumFrameWidth(preset);
        else
            refusal = refusedByTheCamera();
    }
    if (!refusal.isEmpty())
        refused.append(frameWidthKey + u": "_s + refusal);
    return refused;
}

Refusal Sensor::change(const QString &name, const QJsonValue &value)
{
    const SettingTable &presetSettings = m_presets[static_cast<size_t>(m_activePreset)].settings;
    return presetSettings.has(name) ? presetSettings.change(name, value) : Device::change(name, value);
}

std::vector<SettingInfo> Sensor::settings() const
{
    auto list = Device::settings();
    std::ranges::move(m_presets[static_cast<size_t>(m_activePreset)].settings.list(), std::back_inserter(list));
    return list;
}

} // namespace emulator
