#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <optional>

namespace emulator
{

class Identity;
class Sensor;

/// The digital interfaces: the transport over which the camera streams, what its frames carry, and the links. Changes
/// no frame: pixels are the same with every header mode.
class Interfaces : public Device
{
public:
    /// The numbers of the SDK.
    enum Transport : uint8_t { GigE, CameraLink, CoaXPress };

    /// Profile keys and settings: "gigEHeaderMode" (0 to 2), "cameraLinkHeaderMode", "coaXPressHeaderMode" (0, 1),
    /// "allHeaderModes" (all of them are available, otherwise only that of the transport), "cameraLinkType" (0 base,
    /// 1 full, others up to 255), "cameraLinkTypeWritable", "coaXPressLinks" (1, 2) and "coaXPressLinksWritable".
    /// Setting: "typeFails" (the read that fails: 0 none, 1 transportAvailable(), 2 transportNumber()). Loaded states
    /// and other clients change header modes also while the camera streams.
    ///
    /// The devices Identity and Sensor must exist before.
    Interfaces(Camera &camera, Section &section);

    /// GigE on a camera with a known Pleora board. Without one, CameraLink on the boards 0 to 3, CoaXPress on the
    /// boards 4 to 6. Nothing on other boards, and with an unknown Pleora board. Follows the present identity.
    std::optional<Transport> transport() const;
    /// Whether the camera reports its transport: 1 if it is known, otherwise 0.
    Status transportAvailable(uint8_t &available) const;
    /// Refused while the transport is not available.
    Status transportNumber(uint8_t &number) const;

    // A header mode can be read and set only while it is available.

    bool gigEHeaderModeAvailable() const { return hasHeaderMode(GigE); }
    /// 0 header and image, 1 header only, 2 image only.
    Status gigEHeaderMode(uint8_t &mode) const { return fetch(m_gigEHeaderMode, mode); }
    /// Refused above 2, and while the camera streams over GigE.
    Status setGigEHeaderMode(uint8_t mode);

    bool cameraLinkHeaderModeAvailable() const { return hasHeaderMode(CameraLink); }
    /// 0 header and image, 1 image only.
    Status cameraLinkHeaderMode(uint8_t &mode) const { return fetch(m_cameraLinkHeaderMode, mode); }
    /// Refused above 1.
    Status setCameraLinkHeaderMode(uint8_t mode) { return assign(m_cameraLinkHeaderMode, mode); }

    bool coaXPressHeaderModeAvailable() const { return hasHeaderMode(CoaXPress); }
    /// 0 header and image, 1 image only.
    Status coaXPressHeaderMode(uint8_t &mode) const { return fetch(m_coaXPressHeaderMode, mode); }
    /// Refused above 1.
    Status setCoaXPressHeaderMode(uint8_t mode) { return assign(m_coaXPressHeaderMode, mode); }

    // The links. The SDK can only read them.

    uint8_t cameraLinkType() const { return m_cameraLinkType; }
    bool cameraLinkTypeWritable() const { return m_cameraLinkTypeWritable; }
    uint8_t coaXPressLinks() const { return m_coaXPressLinks; }
    bool coaXPressLinksWritable() const { return m_coaXPressLinksWritable; }

private:
    enum Failure : uint8_t { NoFailure, AvailabilityFails, NumberFails };

    bool hasHeaderMode(Transport transport) const;

    const Identity &m_identity;
    const Sensor &m_sensor;
    uint8_t m_gigEHeaderMode = 0;
    uint8_t m_cameraLinkHeaderMode = 0;
    uint8_t m_coaXPressHeaderMode = 0;
    bool m_allHeaderModes = false;
    uint8_t m_cameraLinkType = 1;
    bool m_cameraLinkTypeWritable = false;
    uint8_t m_coaXPressLinks = 2;
    bool m_coaXPressLinksWritable = false;
    Failure m_typeFails = NoFailure;
};

} // namespace emulator
