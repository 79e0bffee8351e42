#include "platform/emulator/devices/Interfaces.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/devices/Sensor.h"

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr uint8_t noPleoraBoard = 0;
constexpr uint8_t lastPleoraBoard = 3;
constexpr uint8_t lastCameraLinkBoard = 3;
constexpr uint8_t lastCoaXPressBoard = 6;
constexpr uint8_t lastGigEHeaderMode = 2;
constexpr uint8_t mostLinks = 2;

} // namespace

Interfaces::Interfaces(Camera &camera, Section &section)
    : Device(camera), m_identity(*camera.device<Identity>()), m_sensor(*camera.device<Sensor>())
{
    constexpr Between gigEModes{0, lastGigEHeaderMode};
    constexpr Between modes{0, 1};
    addSettings(section,
                {
                    {u"allHeaderModes"_s, m_allHeaderModes, Profile | OtherClient},
                    Setting(u"gigEHeaderMode"_s, m_gigEHeaderMode, gigEModes, Everywhere).onlyIf([this] {
                        return hasHeaderMode(GigE);
                    }),
                    Setting(u"cameraLinkHeaderMode"_s, m_cameraLinkHeaderMode, modes, Everywhere).onlyIf([this] {
                        return hasHeaderMode(CameraLink);
                    }),
                    Setting(u"coaXPressHeaderMode"_s, m_coaXPressHeaderMode, modes, Everywhere).onlyIf([this] {
                        return hasHeaderMode(CoaXPress);
                    }),
                    {u"cameraLinkType"_s, m_cameraLinkType, Everywhere},
                    {u"cameraLinkTypeWritable"_s, m_cameraLinkTypeWritable, Profile | OtherClient},
                    {u"coaXPressLinks"_s, m_coaXPressLinks, Between{1, mostLinks}, Everywhere},
                    {u"coaXPressLinksWritable"_s, m_coaXPressLinksWritable, Profile | OtherClient},
                    {u"typeFails"_s, m_typeFails, Between{NoFailure, NumberFails}, OtherClient},
                });
}

std::optional<Interfaces::Transport> Interfaces::transport() const
{
    if (m_identity.pleoraBoard() != noPleoraBoard)
        return m_identity.pleoraBoard() <= lastPleoraBoard ? std::optional(GigE) : std::nullopt;
    if (m_identity.board() <= lastCameraLinkBoard)
        return CameraLink;
    return m_identity.board() <= lastCoaXPressBoard ? std::optional(CoaXPress) : std::nullopt;
}

Status Interfaces::transportAvailable(uint8_t &available) const
{
    if (m_typeFails == AvailabilityFails)
        return Refused;
    available = transport().has_value();
    return Ok;
}

Status Interfaces::transportNumber(uint8_t &number) const
{
    const auto present = transport();
    if (!present || m_typeFails == NumberFails)
        return Refused;
    number = *present;
    return Ok;
}

Status Interfaces::setGigEHeaderMode(uint8_t mode)
{
    const bool streams = m_sensor.hasVideoStream() && m_sensor.streaming();
    return streams && transport() == GigE ? Refused : assign(m_gigEHeaderMode, mode);
}

bool Interfaces::hasHeaderMode(Transport transport) const { return m_allHeaderModes || this->transport() == transport; }

} // namespace emulator
