#pragma once

#include <QString>

#include <string>

/// A switch of a text or frame of the video overlay: its property in OverlaySettingsModel, the end of the names of its
/// SDK functions, its text on the page, and the property without which the camera does not have it (null for none).
struct OverlayFlag {
    const char *property;
    const char *suffix;
    const char *text;
    const char *needs = nullptr;

    std::string getter() const { return std::string("zvtGetVideoOverlay") + suffix; }
    std::string setter() const { return std::string("zvtSetVideoOverlay") + suffix; }
    QString command(bool shown) const
    {
        return QString::fromStdString(setter()) + (shown ? QStringLiteral(" true") : QStringLiteral(" false"));
    }
    QString signal() const { return QString::fromLatin1(property) + QStringLiteral("Changed"); }
};

/// All of them, in the order of the camera.
inline constexpr OverlayFlag overlayFlags[] = {
    {"showAgcRoi", "ShowAGCROI", "AGC ROI"},
    {"showFocusRoi", "ShowFocusROI", "Focus ROI"},
    {"showLogo", "ShowLogo", "Logo"},
    {"showFocus", "ShowFocus", "Focus"},
    {"showDate", "ShowDate", "Date"},
    {"showCameraInfo", "ShowCameraInfo", "Camera Info"},
    {"showTime", "ShowTime", "Time"},
    {"showIrig", "ShowIRIG", "IRIG"},
    {"showHourMeter", "ShowHourMeter", "Hour Meter"},
    {"showFrontPanelTemp", "ShowFrontPanelTemp", "Front Panel Temp", "hasFrontPanelTemperature"},
    {"showFlag", "ShowFlag", "Flag", "hasFlag"},
    {"showAirGapTemp", "ShowAirGapTemp", "Air Gap Temp", "hasAirGapTemperature"},
    {"showPalette", "ShowPalette", "Palette"},
    {"showInternalTemp", "ShowInternalTemp", "Internal Temp", "hasInternalTemperature"},
    {"showFov", "ShowFOV", "FOV"},
    {"showStateName", "ShowStateName", "State Name"},
    {"showZoom", "ShowZoom", "Zoom"},
    {"showStatusPresetIntTime", "ShowPreset", "Status/Preset : Integration Time"},
    {"showFrameRate", "ShowFrameRate", "Frame Rate"},
    {"showLensTemp", "ShowLensTemp", "Lens Temp", "hasLensTemp"},
    {"showChassisTemp", "ShowChassisTemp", "Chassis Temp", "hasChassisTemperature"},
};
