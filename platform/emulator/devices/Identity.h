#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <string>

namespace emulator
{

/// The identity of the camera. The numbers are indices into tables of the SDK. The camera accepts every number, since
/// new boards and cameras are released before the tables contain them. Texts are UTF-8. Changes outlive the process.
///
/// Each write that changes something raises ZVT_EVENT_MAKE_UP_CHANGED, and capabilities follow it. With the interface
/// board of the profile, "hasGigEPreset" is that of the profile, otherwise true for any board but 0. With type and
/// subtype of the profile, "hasLockin" and "hasSsd" are those of the profile, otherwise "hasLockin" is true for type 2
/// with subtype 1, and "hasSsd" for type 5 with subtype 1. What another client has done to a capability stays until a
/// number changes on which it depends.
class Identity : public Device
{
public:
    /// Starts with the identity in the camera's profile. Settings: "model", "serial", "type", "subtype", "pleora".
    explicit Identity(Camera &camera);

    uint8_t board() const { return m_board; }
    uint8_t type() const { return m_values.type; }
    uint8_t subtype() const { return m_values.subtype; }
    uint8_t detector() const { return m_detector; }
    uint8_t readout() const { return m_readout; }
    uint8_t variant() const { return m_variant; }
    uint8_t pleoraBoard() const { return m_values.pleoraBoard; }
    const std::string &model() const { return m_values.model; }
    const std::string &serial() const { return m_values.serial; }

    Status setType(uint8_t value) { return assign(m_values.type, value); }
    Status setSubtype(uint8_t value) { return assign(m_values.subtype, value); }
    Status setPleoraBoard(uint8_t value) { return assign(m_values.pleoraBoard, value); }
    /// Sets the model and the serial number. Refuses a text that is longer than 255 bytes or is not UTF-8.
    Status setModel(const std::string &text) { return assign(m_values.model, text); }
    Status setSerial(const std::string &text) { return assign(m_values.serial, text); }

    /// Only the values that differ from the profile.
    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;

private:
    /// What can be written.
    struct Values {
        uint8_t type = 0;
        uint8_t subtype = 0;
        uint8_t pleoraBoard = 0;
        std::string model;
        std::string serial;
        bool operator==(const Values &) const = default;
    };

    Values valuesOfProfile() const;
    void follow();

    const uint8_t m_board;
    const uint8_t m_detector;
    const uint8_t m_readout;
    const uint8_t m_variant;
    Values m_values;
    Values m_followed; ///< The values that the capabilities have followed.
};

} // namespace emulator
