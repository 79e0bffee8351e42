#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/Gate.h"

#include <cstdint>
#include <string>

namespace emulator
{

/// Who the camera is. The numbers are indices into tables that the SDK knows; the camera takes any of them, since new
/// boards and cameras come out before the tables know them. Texts are UTF-8. What was changed outlives the process.
class Identity : public Device
{
public:
    /// Takes the values of the camera's profile.
    explicit Identity(Camera &camera);

    uint8_t board() const { return number("boardSet"); }
    uint8_t type() const { return number("type"); }
    uint8_t subtype() const { return number("subtype"); }
    uint8_t detector() const { return number("detector"); }
    uint8_t readout() const { return number("readout"); }
    uint8_t variant() const { return number("variant"); }
    uint8_t pleoraBoard() const { return number("pleora"); }
    std::string model() const { return text("model"); }
    std::string serial() const { return text("serial"); }

    void setType(uint8_t value) { store("type", value); }
    void setSubtype(uint8_t value) { store("subtype", value); }
    void setPleoraBoard(uint8_t value) { store("pleora", value); }
    /// Refuses a text that is longer than 255 bytes or no UTF-8; so does setSerial().
    Status setModel(const std::string &text) { return storeText("model", text); }
    Status setSerial(const std::string &text) { return storeText("serial", text); }

    /// Only what differs from the profile.
    QJsonObject save() const override;
    void restore(const QJsonObject &values) override;
    /// Any of "model", "serial", "type", "subtype", "pleora".
    bool set(const QString &name, const QVariant &value) override;

private:
    uint8_t number(const char *key) const;
    std::string text(const char *key) const;
    void store(const char *key, const QJsonValue &value);
    Status storeText(const char *key, const std::string &text);

    QJsonObject m_values;
};

} // namespace emulator
