#include "platform/emulator/devices/Identity.h"

#include "platform/emulator/Camera.h"

namespace emulator
{

namespace
{

constexpr size_t longestText = 255;

bool isStorable(const std::string &text)
{
    return text.size() <= longestText && QString::fromStdString(text).toStdString() == text;
}

} // namespace

Identity::Identity(Camera &camera) : Device(camera), m_values(camera.profile().identity()) { }

QJsonObject Identity::save() const
{
    QJsonObject changed;
    for (auto value = m_values.begin(); value != m_values.end(); ++value)
        if (camera().profile().identity().value(value.key()) != value.value())
            changed[value.key()] = value.value();
    return changed;
}

QStringList Identity::restore(const QJsonObject &values)
{
    QStringList refused;
    m_values = camera().profile().identity();
    for (auto value = values.begin(); value != values.end(); ++value) {
        const Refusal refusal = change(value.key(), value.value());
        if (!refusal.isEmpty() && m_values.contains(value.key()))
            refused.append(value.key() + QStringLiteral(": ") + refusal);
    }
    return refused;
}

Refusal Identity::change(const QString &name, const QJsonValue &value)
{
    const QByteArray key = name.toLatin1();
    if (key == "model" || key == "serial") {
        QString text;
        const Refusal refusal = parse(value, text);
        return refusal.isEmpty() && storeText(key, text.toStdString()) != Ok ? refusedByTheCamera() : refusal;
    }
    if (key != "type" && key != "subtype" && key != "pleora")
        return noSuchSetting();
    uint8_t number = 0;
    const Refusal refusal = parse(value, number);
    if (refusal.isEmpty())
        store(key, number);
    return refusal;
}

uint8_t Identity::number(const char *key) const
{
    return static_cast<uint8_t>(m_values.value(QLatin1String(key)).toInt());
}

std::string Identity::text(const char *key) const
{
    return m_values.value(QLatin1String(key)).toString().toStdString();
}

void Identity::store(const char *key, const QJsonValue &value)
{
    m_values[QLatin1String(key)] = value;
    remember();
}

Status Identity::storeText(const char *key, const std::string &text)
{
    if (!isStorable(text))
        return Refused;
    store(key, QString::fromStdString(text));
    return Ok;
}

} // namespace emulator
