#include "platform/emulator/devices/Identity.h"

#include "platform/emulator/Camera.h"

namespace emulator
{

using namespace Qt::StringLiterals;

Identity::Identity(Camera &camera) : Device(camera)
{
    const auto notTooLong
        = [](const std::string &text) { return text.size() <= 255 ? Refusal() : u"must have at most 255 bytes"_s; };
    const auto keep = [this] { remember(); };
    readProfile();
    addSettings({
        Setting(u"model"_s, m_model, notTooLong, Snapshot | OtherClient).then(keep),
        Setting(u"serial"_s, m_serial, notTooLong, Snapshot | OtherClient).then(keep),
        Setting(u"type"_s, m_type, Snapshot | OtherClient).then(keep),
        Setting(u"subtype"_s, m_subtype, Snapshot | OtherClient).then(keep),
        Setting(u"pleora"_s, m_pleoraBoard, Snapshot | OtherClient).then(keep),
    });
}

QJsonObject Identity::save() const
{
    QJsonObject changed = Device::save();
    for (const QString &key : changed.keys())
        if (changed.value(key) == camera().profile().identity().value(key))
            changed.remove(key);
    return changed;
}

QStringList Identity::restore(const QJsonObject &values)
{
    readProfile();
    return Device::restore(values);
}

void Identity::readProfile()
{
    const QJsonObject &values = camera().profile().identity();
    const auto number = [&values](const QString &key) { return static_cast<uint8_t>(values.value(key).toInt()); };
    m_board = number(u"boardSet"_s);
    m_type = number(u"type"_s);
    m_subtype = number(u"subtype"_s);
    m_detector = number(u"detector"_s);
    m_readout = number(u"readout"_s);
    m_variant = number(u"variant"_s);
    m_pleoraBoard = number(u"pleora"_s);
    m_model = values.value(u"model"_s).toString().toStdString();
    m_serial = values.value(u"serial"_s).toString().toStdString();
}

} // namespace emulator
