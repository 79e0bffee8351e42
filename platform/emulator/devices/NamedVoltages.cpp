#include "platform/emulator/devices/NamedVoltages.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Analog.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

NamedVoltages::NamedVoltages(Camera &camera, Section &section) : Device(camera)
{
    using image::Voltages;
    constexpr Between references{Voltages::minimumReference, Voltages::maximumReference};
    constexpr Between commons{Voltages::minimumCommon, Voltages::maximumCommon};
    const auto uses = Profile | Memory | OtherClient;
    const auto changed = [this] { remember(); };
    addSettings(section,
                {
                    Setting(u"reference"_s, m_reference, references, uses).then(changed),
                    Setting(u"detectorCommon"_s, m_common, commons, uses).then(changed),
                });
    const auto range = [](const Between &limits) {
        return std::pair(static_cast<float>(limits.minimum), static_cast<float>(limits.maximum));
    };
    m_voltages.push_back(fixed("VDDA", "Analog supply", 5));
    m_voltages.push_back({"VREF", "Reference", range(references).first, range(references).second,
                          [this] { return m_reference; }, [this](float volts) { return assign(m_reference, volts); }});
    m_voltages.push_back({"VDET", "Detector common", range(commons).first, range(commons).second,
                          [this] { return m_common; }, [this](float volts) { return assign(m_common, volts); }});
    if (auto *const analog = camera.device<Analog>())
        addThoseOf(*analog);
    m_voltages.push_back(fixed("VHEAT", "Flag heater", 0));
}

NamedVoltages::Voltage NamedVoltages::fixed(const char *name, const char *displayName, float volts)
{
    return {name, displayName, volts, volts, [volts] { return volts; }};
}

void NamedVoltages::addThoseOf(Analog &analog)
{
    const auto skimming = [&analog] {
        float volts = 0;
        analog.skimmingVoltage(volts);
        return volts;
    };
    m_voltages.push_back({"VSKIM", "Skimming", 0, static_cast<float>(image::Voltages::maximumSkimming), skimming,
                          [&analog](float volts) { return analog.setSkimmingVoltage(volts); },
                          [&analog] { return analog.skimmingAvailable(); }});
    m_voltages.push_back({"VOFFS", "Global offset", analog.minimumGlobalOffset(), analog.maximumGlobalOffset(),
                          [&analog] { return analog.globalOffset(); },
                          [&analog](float volts) { return analog.setGlobalOffset(volts); }});
}

const NamedVoltages::Voltage *NamedVoltages::find(const std::string &name) const
{
    const auto found = std::ranges::find(m_voltages, name, &Voltage::name);
    return found != m_voltages.end() && found->exists() ? &*found : nullptr;
}

std::vector<std::string> NamedVoltages::names() const
{
    std::vector<std::string> names;
    for (const Voltage &voltage : m_voltages)
        if (voltage.exists())
            names.push_back(voltage.name);
    return names;
}

Status NamedVoltages::displayName(const std::string &name, std::string &text) const
{
    const Voltage *const voltage = find(name);
    if (!voltage)
        return Refused;
    text = voltage->displayName;
    return Ok;
}

Status NamedVoltages::volts(const std::string &name, float &volts) const
{
    const Voltage *const voltage = find(name);
    if (!voltage)
        return Refused;
    volts = voltage->volts();
    return Ok;
}

Status NamedVoltages::setVolts(const std::string &name, float volts)
{
    const Voltage *const voltage = find(name);
    return voltage && voltage->set ? voltage->set(volts) : Refused;
}

Status NamedVoltages::editable(const std::string &name, bool &editable) const
{
    const Voltage *const voltage = find(name);
    if (!voltage)
        return Refused;
    editable = voltage->set != nullptr;
    return Ok;
}

Status NamedVoltages::limits(const std::string &name, float &minimum, float &maximum) const
{
    const Voltage *const voltage = find(name);
    if (!voltage)
        return Refused;
    minimum = voltage->minimum;
    maximum = voltage->maximum;
    return Ok;
}

void NamedVoltages::expose(int, image::Exposure &exposure) const
{
    exposure.readout.voltages.reference = m_reference;
    exposure.readout.voltages.common = m_common;
}

} // namespace emulator
