#pragma once

#include <QString>

#include <cstdint>

namespace emulator
{

class Camera;

/// The fields of the overlay that show a value of the camera, in the order in which the overlay lists them.
enum class OverlayField : uint8_t {
    Logo,
    Focus,
    Date,
    CameraInfo,
    Time,
    Irig,
    HourMeter,
    FrontPanelTemperature,
    Flag,
    AirGapTemperature,
    Palette,
    InternalTemperature,
    FieldOfView,
    StateName,
    Zoom,
    Preset,
    FrameRate,
    LensTemperature,
    ChassisTemperature,
};
constexpr auto overlayFields = static_cast<uint8_t>(OverlayField::ChassisTemperature) + 1;

/// Returns the present text of a field. Date, time and IRIG time of a playback are those of its frame. Empty if the
/// camera lacks the equipment. A sensor that cannot be read has the value "---". The thread must hold the camera's
/// lock.
QString overlayText(const Camera &camera, OverlayField field);

} // namespace emulator
