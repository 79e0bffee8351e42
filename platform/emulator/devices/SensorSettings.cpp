// The settings of the sensor: those that other clients of the camera may change, and those that a snapshot holds.
#include "platform/emulator/devices/Sensor.h"

#include <QJsonArray>

#include <algorithm>
#include <iterator>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

const QString superframeWidthKey = u"superframeWidth"_s;
const QString presetsKey = u"presets"_s;

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
    const Between presets{0, m_numPresets - 1.0};
    OneOf streamed;
    for (int preset = 0; preset < m_numPresets; ++preset)
        streamed.numbers.append(preset);
    streamed.numbers.append(allPresets);
    const OneOf modes{{m_sequencingModes.begin(), m_sequencingModes.end()}};

    addSettings(section,
                {
                    {u"window"_s, window, setWindowList, Snapshot | OtherClient},
                    Setting(u"sequencingMode"_s, m_sequencingMode, modes, Snapshot | OtherClient).then(stretch),
                    {u"activePreset"_s, m_activePreset, presets, Snapshot | OtherClient},
                    {u"videoPreset"_s, m_videoPreset, presets, Snapshot | OtherClient},
                    Setting(u"gigEPreset"_s, m_gigEPreset, streamed, Snapshot | OtherClient).onlyIf([this] {
                        return hasGigEPreset();
                    }),
                    Setting(u"reduceNoise"_s, m_reduceNoise, Snapshot | OtherClient).then(stretch),
                    {u"saturated"_s, m_saturationFlag, Profile | OtherClient},
                    {u"superframeRate"_s, [this] { return superframeRate(); },
                     [this](double hertz) { return setSuperframeRate(hertz); }, aboveZero, OtherClient},
                    {superframeWidthKey, m_superframeWidth, Snapshot},
                });
    for (int preset = 0; preset < m_numPresets; ++preset)
        addPresetSettings(preset);
}

void Sensor::addPresetSettings(int preset)
{
    Preset &values = m_presets[static_cast<size_t>(preset)];
    // The outputs of the getters are those of a preset that is there.
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
    values.settings.add({
        {u"integrationWidth"_s, [&values] { return values.integrationWidth; },
         [this, preset](uint32_t clocks) { return restoreIntegrationWidth(preset, clocks); }, Snapshot},
        {u"frameWidth"_s, [&values] { return values.frameWidth; },
         [this, preset](uint32_t clocks) { return restoreFrameWidth(preset, clocks); }, Snapshot},
        {u"integrationTime"_s, time, [this, preset](double ms) { return setIntegrationTime(preset, ms); }, OtherClient},
        {u"frameRate"_s, rate, [this, preset](double hertz) { return setFrameRate(preset, hertz); }, aboveZero,
         OtherClient},
        {u"dwellCount"_s, values.dwellCount, Between{0, maximumDwellCount}, Snapshot | OtherClient},
        Setting(u"subframeEnabled"_s, values.subframeEnabled, Snapshot | OtherClient).then([this] { stretchFrames(); }),
    });
}

QJsonObject Sensor::save() const
{
    QJsonArray presets;
    for (int preset = 0; preset < m_numPresets; ++preset)
        presets.append(m_presets[static_cast<size_t>(preset)].settings.save());
    QJsonObject saved = Device::save();
    saved[presetsKey] = presets;
    return saved;
}

QStringList Sensor::restore(const QJsonObject &values)
{
    QStringList refused = Device::restore(values);
    // The presets follow, since their shortest frames depend on all the others.
    const QJsonArray presets = values.value(presetsKey).toArray();
    for (int preset = 0; preset < std::min<qsizetype>(presets.size(), m_numPresets); ++preset)
        for (const QString &refusal :
             m_presets[static_cast<size_t>(preset)].settings.restore(presets.at(preset).toObject()))
            refused.append(u"%1.%2.%3"_s.arg(presetsKey).arg(preset).arg(refusal));
    // A superframe may have grown with a preset that has since got a shorter frame.
    parse(values.value(superframeWidthKey), m_superframeWidth);
    stretchFrames();
    return refused;
}

Status Sensor::restoreIntegrationWidth(int preset, uint32_t clocks)
{
    const Status status = setIntegrationWidth(preset, clocks);
    // The frame width that follows is longer, or is refused because the saved one was too short for its integration:
    // a write of the register alone leaves such frames, which then take as long as they must.
    if (status == Ok)
        m_presets[static_cast<size_t>(preset)].frameWidth = minimumFrameWidth(preset);
    return status;
}

Status Sensor::restoreFrameWidth(int preset, uint32_t clocks)
{
    const bool isShortest = m_presets[static_cast<size_t>(preset)].frameWidth == minimumFrameWidth(preset);
    return setFrameWidth(preset, clocks) == Ok || isShortest ? Ok : Refused;
}

Refusal Sensor::change(const QString &name, const QJsonValue &value)
{
    const SettingTable &ofPreset = m_presets[static_cast<size_t>(m_activePreset)].settings;
    return ofPreset.has(name) ? ofPreset.change(name, value) : Device::change(name, value);
}

std::vector<SettingInfo> Sensor::settings() const
{
    auto list = Device::settings();
    std::ranges::move(m_presets[static_cast<size_t>(m_activePreset)].settings.list(), std::back_inserter(list));
    return list;
}

} // namespace emulator
