#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <string>

namespace emulator
{

/// The identity of the camera. The numbers are indices into tables of the SDK; the camera takes all of them, since new
/// boards and cameras are released before the tables contain them. Texts are UTF-8. Changes outlive the process.
class Identity : public Device
{
public:
    /// Starts with the values of the camera's profile.
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
    /// Refuses a text that is longer than 255 bytes or is not UTF-8, as setSerial() does.
    Status setModel(const std::string &text) { return storeText("model", text); }
    Status setSerial(const std::string &text) { return storeText("serial", text); }

    /// Only the values that differ from the profile.
    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;
    /// Settings: "model", "serial", "type", "subtype", "pleora".
    Refusal change(const QString &name, const QJsonValue &value) override;

private:
    uint8_t number(const char *key) const;
    std::string text(const char *key) const;
    void store(const char *key, const QJsonValue &value);
    Status storeText(const char *key, const std::string &text);

    QJsonObject m_values;
};

} // namespace emulator
