#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/overlayTexts.h"
#include "platform/emulator/image/Overlay.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace emulator
{

/// The overlay of the video output: texts with values of the camera, a text of the user, frames around the regions of
/// the gain control and of the automatic focus, and messages. Colours are numbers of image::overlayPalette().
///
/// A message is raised when its cause begins: COOLING when the cooler begins to cool the detector down, CORRECTION
/// while a correction is made, NO SYNC while the selected sync input has no signal, or frames wait for a trigger input
/// without a signal, FLAG FAULT while the cooler of the flag is stuck, LOADING while the recorder loads a movie, SSD
/// FULL when something does not fit onto its drive. The newest one is shown, also after the end of its cause, until it
/// is cleared. While the recorder plays, date, time and IRIG time are those of the frame that it shows.
class VideoOverlay : public Device
{
public:
    static constexpr size_t maximumUserText = 64; ///< Bytes of UTF-8.

    /// Profile keys and settings: "enabled", "showMessages", "showAgcRoi", the fields ("showLogo", "showFocus",
    /// "showDate", "showCameraInfo", "showTime", "showIrig", "showHourMeter", "showFrontPanelTemp", "showFlag",
    /// "showAirGapTemp", "showPalette", "showInternalTemp", "showFov", "showStateName", "showZoom", "showPreset",
    /// "showFrameRate", "showLensTemp", "showChassisTemp"), "agcRoiColor" and "focusRoiColor"; with the profile key
    /// "textColors" (true without it) "textColor" and "textBackground"; with "userField" (true without it)
    /// "showUserField" and "userText". The cooler, the flag, the frame sync, the trigger, the frame clock and the run
    /// of corrections must exist before. content() needs VideoGain, and the devices of overlayText().
    VideoOverlay(Camera &camera, Section &section);

    bool enabled() const { return m_values.enabled; }
    Status setEnabled(bool enabled) { return assign(m_values.enabled, enabled); }
    bool showMessages() const { return m_values.showMessages; }
    Status setShowMessages(bool show) { return assign(m_values.showMessages, show); }
    void clearMessage() { m_message.clear(); }

    template <OverlayField Field> bool shows() const { return m_values.fields[static_cast<size_t>(Field)]; }
    template <OverlayField Field> Status setShows(bool show)
    {
        return assign(m_values.fields[static_cast<size_t>(Field)], show);
    }

    /// Whether the region of the gain control is shown while it is in use.
    bool showAgcRegion() const { return m_values.showAgcRegion; }
    Status setShowAgcRegion(bool show) { return assign(m_values.showAgcRegion, show); }
    uint8_t agcRegionColor() const { return m_values.agcRegionColor; }
    Status setAgcRegionColor(uint8_t color) { return assign(m_values.agcRegionColor, color); }
    /// AutoFocus decides whether its region is shown.
    uint8_t focusRegionColor() const { return m_values.focusRegionColor; }
    Status setFocusRegionColor(uint8_t color) { return assign(m_values.focusRegionColor, color); }

    bool textColorsAvailable() const { return m_textColorsAvailable; }
    uint8_t textColor() const { return m_values.textColor; }
    uint8_t textBackground() const { return m_values.textBackground; }
    /// These are refused while the colours of texts are not available.
    Status setTextColor(uint8_t color) { return assign(m_values.textColor, color); }
    Status setTextBackground(uint8_t color) { return assign(m_values.textBackground, color); }

    bool userFieldAvailable() const { return m_userFieldAvailable; }
    // These four are refused while the user's text is not available.
    Status showUserField(bool &show) const { return fetch(m_values.showUserField, show); }
    Status setShowUserField(bool show) { return assign(m_values.showUserField, show); }
    Status userText(std::string &text) const { return fetch(m_values.userText, text); }
    /// Refused above maximumUserText, and if the text is not UTF-8.
    Status setUserText(const std::string &text) { return assign(m_values.userText, text); }

    /// Sets all these settings, and the switch of the region of the automatic focus, to their defaults. The message
    /// stays.
    void useDefaults();

    /// The texts and frames of the overlay on a picture of the video output now. The frames are in pixels of the image,
    /// after its flips. The thread must hold the camera's lock.
    image::OverlayContent content() const;

    void catchUp() override;

private:
    struct Values {
        bool enabled = true;
        bool showMessages = true;
        std::array<bool, overlayFields> fields = defaultFields();
        bool showAgcRegion = false;
        uint8_t agcRegionColor = 5;
        uint8_t focusRegionColor = 3;
        uint8_t textColor = 1;
        uint8_t textBackground = 0;
        bool showUserField = false;
        std::string userText;
    };
    /// Something that raises a message.
    struct Cause {
        const char *message;
        std::function<bool()> exists; ///< For something that happens: whether it has happened since the last call.
        bool existed = false; ///< At the last catchUp().
    };

    static std::array<bool, overlayFields> defaultFields();
    void addCauses();
    void addBoxes(std::vector<image::OverlayBox> &boxes) const;

    const bool m_textColorsAvailable;
    const bool m_userFieldAvailable;
    Values m_values;
    std::vector<Cause> m_causes;
    std::string m_message;
};

} // namespace emulator
