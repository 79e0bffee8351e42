#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/image/Voltages.h"

#include <functional>
#include <string>
#include <vector>

namespace emulator
{

class Analog;

/// The voltages of the detector's electronics by their names, for the factory. Some cannot be set: their limits are
/// their value. Skimming and global offset are those of the device Analog, which keeps them; skimming has no effect
/// until it is enabled there. The other voltages outlive the process, but are not in snapshots.
///
/// A voltage outside its limits is refused, and so is one that is not finite. An unknown name is refused.
class NamedVoltages : public Device
{
public:
    /// Profile keys and settings: "reference" and "detectorCommon" (volts). The device Analog must exist before, if the
    /// camera has it.
    NamedVoltages(Camera &camera, Section &section);

    /// In the order of the electronics. Without skimming while it is not available.
    std::vector<std::string> names() const;

    Status displayName(const std::string &name, std::string &text) const;
    Status volts(const std::string &name, float &volts) const;
    /// Refuses a voltage that cannot be set.
    Status setVolts(const std::string &name, float volts);
    Status editable(const std::string &name, bool &editable) const;
    Status limits(const std::string &name, float &minimum, float &maximum) const;

    void expose(int preset, image::Exposure &exposure) const override;

private:
    struct Voltage {
        std::string name;
        std::string displayName;
        float minimum;
        float maximum;
        std::function<float()> volts;
        std::function<Status(float)> set = {}; ///< Empty: it cannot be set.
        std::function<bool()> exists = [] { return true; };
    };

    static Voltage fixed(const char *name, const char *displayName, float volts);
    void addThoseOf(Analog &analog);
    const Voltage *find(const std::string &name) const;

    float m_reference = static_cast<float>(image::Voltages::startReference);
    float m_common = static_cast<float>(image::Voltages::startCommon);
    std::vector<Voltage> m_voltages;
};

} // namespace emulator
