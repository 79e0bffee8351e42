// The SDK's functions of the video overlay. The switch of the focus region belongs to the automatic focus.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/AutoFocus.h"
#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetVideoOverlayEnabled(uint64_t handle, bool *enabled)
{
    return get<&VideoOverlay::enabled>(__func__, handle, enabled);
}

int zvtSetVideoOverlayEnabled(uint64_t handle, bool enabled)
{
    return call<&VideoOverlay::setEnabled>(__func__, handle, enabled);
}

int zvtGetVideoOverlayPalette(uint64_t handle, uint8_t *rgb768)
{
    const auto body = [&](const VideoOverlay &) {
        uint8_t *component = rgb768;
        for (const image::Rgb color : image::overlayPalette())
            for (const uint8_t value : {color.red, color.green, color.blue})
                *component++ = value;
    };
    return onDevice<VideoOverlay>(__func__, handle, body, Block{rgb768, 3 * image::overlayPalette().size()});
}

int zvtGetVideoOverlayTextColor(uint64_t handle, uint8_t *color)
{
    return get<&VideoOverlay::textColor>(__func__, handle, color);
}

int zvtSetVideoOverlayTextColor(uint64_t handle, uint8_t color)
{
    return call<&VideoOverlay::setTextColor>(__func__, handle, color);
}

int zvtGetVideoOverlayTextBackground(uint64_t handle, uint8_t *color)
{
    return get<&VideoOverlay::textBackground>(__func__, handle, color);
}

int zvtSetVideoOverlayTextBackground(uint64_t handle, uint8_t color)
{
    return call<&VideoOverlay::setTextBackground>(__func__, handle, color);
}

int zvtGetVideoOverlayTextColorsAvailable(uint64_t handle, bool *available)
{
    return get<&VideoOverlay::textColorsAvailable>(__func__, handle, available);
}

int zvtGetVideoOverlayAGCROIColor(uint64_t handle, uint8_t *color)
{
    return get<&VideoOverlay::agcRegionColor>(__func__, handle, color);
}

int zvtSetVideoOverlayAGCROIColor(uint64_t handle, uint8_t color)
{
    return call<&VideoOverlay::setAgcRegionColor>(__func__, handle, color);
}

int zvtGetVideoOverlayFocusROIColor(uint64_t handle, uint8_t *color)
{
    return get<&VideoOverlay::focusRegionColor>(__func__, handle, color);
}

int zvtSetVideoOverlayFocusROIColor(uint64_t handle, uint8_t color)
{
    return call<&VideoOverlay::setFocusRegionColor>(__func__, handle, color);
}

int zvtGetVideoOverlayShowAGCROI(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::showAgcRegion>(__func__, handle, show);
}

int zvtSetVideoOverlayShowAGCROI(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShowAgcRegion>(__func__, handle, show);
}

int zvtGetVideoOverlayShowFocusROI(uint64_t handle, bool *show)
{
    return get<&AutoFocus::showAlways>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFocusROI(uint64_t handle, bool show)
{
    return call<&AutoFocus::setShowAlways>(__func__, handle, show);
}

int zvtGetVideoOverlayShowMessage(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::showMessages>(__func__, handle, show);
}

int zvtSetVideoOverlayShowMessage(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShowMessages>(__func__, handle, show);
}

int zvtVideoOverlayClearMessage(uint64_t handle) { return call<&VideoOverlay::clearMessage>(__func__, handle); }

int zvtGetVideoOverlayShowLogo(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Logo>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowLogo(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Logo>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowFocus(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Focus>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFocus(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Focus>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowDate(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Date>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowDate(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Date>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowTime(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Time>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowTime(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Time>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowIRIG(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Irig>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowIRIG(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Irig>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowCameraInfo(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::CameraInfo>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowCameraInfo(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::CameraInfo>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowHourMeter(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::HourMeter>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowHourMeter(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::HourMeter>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::FrontPanelTemperature>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFrontPanelTemp(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::FrontPanelTemperature>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowAirGapTemp(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::AirGapTemperature>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowAirGapTemp(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::AirGapTemperature>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowInternalTemp(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::InternalTemperature>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowInternalTemp(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::InternalTemperature>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowChassisTemp(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::ChassisTemperature>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowChassisTemp(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::ChassisTemperature>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowLensTemp(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::LensTemperature>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowLensTemp(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::LensTemperature>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowFlag(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Flag>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFlag(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Flag>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowPalette(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Palette>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowPalette(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Palette>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowFOV(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::FieldOfView>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFOV(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::FieldOfView>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowZoom(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Zoom>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowZoom(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Zoom>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowPreset(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::Preset>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowPreset(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::Preset>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowFrameRate(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::FrameRate>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowFrameRate(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::FrameRate>>(__func__, handle, show);
}

int zvtGetVideoOverlayShowStateName(uint64_t handle, bool *show)
{
    return get<&VideoOverlay::shows<OverlayField::StateName>>(__func__, handle, show);
}

int zvtSetVideoOverlayShowStateName(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShows<OverlayField::StateName>>(__func__, handle, show);
}

int zvtGetVideoOverlayUserDefinedFieldAvailable(uint64_t handle, bool *available)
{
    return get<&VideoOverlay::userFieldAvailable>(__func__, handle, available);
}

int zvtGetVideoOverlayShowUserDefinedField(uint64_t handle, bool *show)
{
    return call<&VideoOverlay::showUserField>(__func__, handle, show);
}

int zvtSetVideoOverlayShowUserDefinedField(uint64_t handle, bool show)
{
    return call<&VideoOverlay::setShowUserField>(__func__, handle, show);
}

int zvtGetVideoOverlayUserDefinedFieldText(uint64_t handle, char *buf, uint32_t size)
{
    return call<&VideoOverlay::userText>(__func__, handle, Text(buf, size));
}

int zvtSetVideoOverlayUserDefinedFieldText(uint64_t handle, const char *text)
{
    return call<&VideoOverlay::setUserText>(__func__, handle, text);
}

int zvtVideoOverlayUseDefaults(uint64_t handle) { return call<&VideoOverlay::useDefaults>(__func__, handle); }
