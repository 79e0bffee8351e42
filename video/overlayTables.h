#pragma once

// The similar settings of OverlaySettingsModel. They are macros because moc and the compiler make properties, functions
// and signals of the model from them.

// The switches, in the order in which the model reads, publishes and sets them: messages and the overlay as a whole,
// frames of regions, texts. FLAG(Name, Suffix) is the property showName with the SDK's functions
// zvtGetVideoOverlaySuffix() and zvtSetVideoOverlaySuffix().
#define ZVT_OVERLAY_FLAGS(FLAG)                                                                                        \
    FLAG(Messages, ShowMessage)                                                                                        \
    FLAG(Overlay, Enabled)                                                                                             \
    FLAG(AgcRoi, ShowAGCROI)                                                                                           \
    FLAG(FocusRoi, ShowFocusROI)                                                                                       \
    FLAG(Logo, ShowLogo)                                                                                               \
    FLAG(Focus, ShowFocus)                                                                                             \
    FLAG(Date, ShowDate)                                                                                               \
    FLAG(CameraInfo, ShowCameraInfo)                                                                                   \
    FLAG(Time, ShowTime)                                                                                               \
    FLAG(Irig, ShowIRIG)                                                                                               \
    FLAG(HourMeter, ShowHourMeter)                                                                                     \
    FLAG(FrontPanelTemp, ShowFrontPanelTemp)                                                                           \
    FLAG(Flag, ShowFlag)                                                                                               \
    FLAG(AirGapTemp, ShowAirGapTemp)                                                                                   \
    FLAG(Palette, ShowPalette)                                                                                         \
    FLAG(InternalTemp, ShowInternalTemp)                                                                               \
    FLAG(Fov, ShowFOV)                                                                                                 \
    FLAG(StateName, ShowStateName)                                                                                     \
    FLAG(Zoom, ShowZoom)                                                                                               \
    FLAG(StatusPresetIntTime, ShowPreset)                                                                              \
    FLAG(FrameRate, ShowFrameRate)                                                                                     \
    FLAG(LensTemp, ShowLensTemp)                                                                                       \
    FLAG(ChassisTemp, ShowChassisTemp)

// The colours, in the same order. COLOR(Name, name, Suffix) is the pair of the properties nameColorIndex and nameColor
// with zvtGetVideoOverlaySuffix() and zvtSetVideoOverlaySuffix(). `Name` is `name` with a capital.
#define ZVT_OVERLAY_COLORS(COLOR)                                                                                      \
    COLOR(OverlayText, overlayText, TextColor)                                                                         \
    COLOR(OverlayTextBackground, overlayTextBackground, TextBackground)                                                \
    COLOR(AgcRoi, agcRoi, AGCROIColor)                                                                                 \
    COLOR(FocusRoi, focusRoi, FocusROIColor)

// What the model declares for each row of the two tables.
#define ZVT_FLAG_PROPERTY(Name, Suffix)                                                                                \
    Q_PROPERTY(bool show##Name READ show##Name WRITE setShow##Name NOTIFY show##Name##Changed FINAL)
#define ZVT_FLAG_FUNCTIONS(Name, Suffix)                                                                               \
    bool show##Name() const { return m_shown[Show##Name]; }                                                            \
    void setShow##Name(bool show) { setShown(Show##Name, show); }
#define ZVT_FLAG_SIGNAL(Name, Suffix) void show##Name##Changed();
#define ZVT_FLAG_NUMBER(Name, Suffix) Show##Name,
#define ZVT_COLOR_PROPERTIES(Name, name, Suffix)                                                                       \
    Q_PROPERTY(                                                                                                        \
        int name##ColorIndex READ name##ColorIndex WRITE set##Name##ColorIndex NOTIFY name##ColorIndexChanged FINAL)   \
    Q_PROPERTY(QColor name##Color READ name##Color NOTIFY name##ColorChanged FINAL)
#define ZVT_COLOR_FUNCTIONS(Name, name, Suffix)                                                                        \
    int name##ColorIndex() const { return m_colorIndices[Name##Color]; }                                               \
    void set##Name##ColorIndex(int index) { setColorIndex(Name##Color, index); }                                       \
    QColor name##Color() const { return color(Name##Color); }
#define ZVT_COLOR_SIGNALS(Name, name, Suffix)                                                                          \
    void name##ColorIndexChanged();                                                                                    \
    void name##ColorChanged();
#define ZVT_COLOR_NUMBER(Name, name, Suffix) Name##Color,
