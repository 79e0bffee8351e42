#include "platform/emulator/devices/Identity.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/changedValues.h"

#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

uint8_t numberIn(const QJsonObject &identity, const QString &key)
{
    return static_cast<uint8_t>(identity.value(key).toInt());
}

/// A type and a subtype.
using Kind = std::pair<int, int>;
constexpr Kind lockinCamera{2, 1};
constexpr Kind driveCamera{5, 1};

} // namespace

Identity::Identity(Camera &camera)
    : Device(camera), m_board(numberIn(camera.profile().identity(), u"boardSet"_s)),
      m_detector(numberIn(camera.profile().identity(), u"detector"_s)),
      m_readout(numberIn(camera.profile().identity(), u"readout"_s)),
      m_variant(numberIn(camera.profile().identity(), u"variant"_s)), m_values(valuesOfProfile()), m_followed(m_values)
{
    const auto notTooLong
        = [](const std::string &text) { return text.size() <= 255 ? Refusal() : u"must have at most 255 bytes"_s; };
    const auto written = [this] { follow(); };
    addSettings({
        Setting(u"model"_s, m_values.model, notTooLong, Snapshot | OtherClient).then(written),
        Setting(u"serial"_s, m_values.serial, notTooLong, Snapshot | OtherClient).then(written),
        Setting(u"type"_s, m_values.type, Snapshot | OtherClient).then(written),
        Setting(u"subtype"_s, m_values.subtype, Snapshot | OtherClient).then(written),
        Setting(u"pleora"_s, m_values.pleoraBoard, Snapshot | OtherClient).then(written),
    });
}

QJsonObject Identity::save() const { return changedValues(Device::save(), camera().profile().identity()); }

QStringList Identity::restore(const QJsonObject &values)
{
    m_values = valuesOfProfile();
    QStringList refused = Device::restore(values);
    follow();
    return refused;
}

Identity::Values Identity::valuesOfProfile() const
{
    const QJsonObject &values = camera().profile().identity();
    return {
        .type = numberIn(values, u"type"_s),
        .subtype = numberIn(values, u"subtype"_s),
        .pleoraBoard = numberIn(values, u"pleora"_s),
        .model = values.value(u"model"_s).toString().toStdString(),
        .serial = values.value(u"serial"_s).toString().toStdString(),
    };
}

/// Lets the capabilities follow what has changed.
void Identity::follow()
{
    if (m_values == m_followed)
        return;
    const Values before = std::exchange(m_followed, m_values);
    const Values ofProfile = valuesOfProfile();
    const Kind kind{m_values.type, m_values.subtype};
    QJsonObject capabilities;
    const auto set = [&](const QString &capability, bool isThatOfProfile, bool otherwise) {
        capabilities[capability]
            = isThatOfProfile ? camera().profile().capabilities().value(capability) : QJsonValue(otherwise);
    };
    if (m_values.pleoraBoard != before.pleoraBoard)
        set(u"hasGigEPreset"_s, m_values.pleoraBoard == ofProfile.pleoraBoard, m_values.pleoraBoard >= 1);
    if (kind != Kind(before.type, before.subtype)) {
        const bool isThatOfProfile = kind == Kind(ofProfile.type, ofProfile.subtype);
        set(u"hasLockin"_s, isThatOfProfile, kind == lockinCamera);
        set(u"hasSsd"_s, isThatOfProfile, kind == driveCamera);
    }
    camera().identityChanged(capabilities);
    remember();
}

} // namespace emulator
