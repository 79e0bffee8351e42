#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <string>

namespace emulator
{

/// The identity of the camera. The numbers are indices into tables of the SDK. The camera accepts every number, since
/// new boards and cameras are released before the tables contain them. Texts are UTF-8. Changes outlive the process.
class Identity : public Device
{
public:
    /// Starts with the identity in the camera's profile. Settings: "model", "serial", "type", "subtype", "pleora".
    explicit Identity(Camera &camera);

    uint8_t board() const { return m_board; }
    uint8_t type() const { return m_type; }
    uint8_t subtype() const { return m_subtype; }
    uint8_t detector() const { return m_detector; }
    uint8_t readout() const { return m_readout; }
    uint8_t variant() const { return m_variant; }
    uint8_t pleoraBoard() const { return m_pleoraBoard; }
    const std::string &model() const { return m_model; }
    const std::string &serial() const { return m_serial; }

    Status setType(uint8_t value) { return assign(m_type, value); }
    Status setSubtype(uint8_t value) { return assign(m_subtype, value); }
    Status setPleoraBoard(uint8_t value) { return assign(m_pleoraBoard, value); }
    /// Sets the model and the serial number. Refuses a text that is longer than 255 bytes or is not UTF-8.
    Status setModel(const std::string &text) { return assign(m_model, text); }
    Status setSerial(const std::string &text) { return assign(m_serial, text); }

    /// Only the values that differ from the profile.
    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;

private:
    void readProfile();

    uint8_t m_board = 0;
    uint8_t m_type = 0;
    uint8_t m_subtype = 0;
    uint8_t m_detector = 0;
    uint8_t m_readout = 0;
    uint8_t m_variant = 0;
    uint8_t m_pleoraBoard = 0;
    std::string m_model;
    std::string m_serial;
};

} // namespace emulator
