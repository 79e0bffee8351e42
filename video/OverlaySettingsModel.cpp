#include "video/OverlaySettingsModel.h"

#include "common/CapabilityBlock.h"
#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include "zvt/zvtsdk.h"

struct OverlaySettingsModel::Rows {
    struct FlagRow {
        int (*get)(uint64_t handle, bool *shown);
        int (*set)(uint64_t handle, bool shown);
        void (Self::*changed)();
    };
    struct ColorRow {
        int (*get)(uint64_t handle, uint8_t *index);
        int (*set)(uint64_t handle, uint8_t index);
        void (Self::*indexChanged)();
        void (Self::*colorChanged)();
    };

#define FLAG_ROW(Name, Suffix)                                                                                         \
    FlagRow{zvtGetVideoOverlay##Suffix, zvtSetVideoOverlay##Suffix, &Self::show##Name##Changed},
    static constexpr std::array flags{ZVT_OVERLAY_FLAGS(FLAG_ROW)};
#undef FLAG_ROW
#define COLOR_ROW(Name, name, Suffix)                                                                                  \
    ColorRow{zvtGetVideoOverlay##Suffix, zvtSetVideoOverlay##Suffix, &Self::name##ColorIndexChanged,                   \
             &Self::name##ColorChanged},
    static constexpr std::array colors{ZVT_OVERLAY_COLORS(COLOR_ROW)};
#undef COLOR_ROW
    // Of the first colours, which may be transparent.
    static constexpr std::array hasColorChanged{&Self::overlayTextHasColorChanged,
                                                &Self::overlayTextBackgroundHasColorChanged};

    // Calls the functions with the numbers of the switches and colours, in the order of their reads and signals.
    template <class ForFlag, class ForColor> static void visit(ForFlag forFlag, ForColor forColor)
    {
        size_t flag = 0;
        size_t color = 0;
        const auto flagsBefore = [&](size_t end) {
            for (; flag < end; ++flag)
                forFlag(flag);
        };
        const auto colorsBefore = [&](size_t end) {
            for (; color < end; ++color)
                forColor(color);
        };
        flagsBefore(ShowAgcRoi);
        colorsBefore(AgcRoiColor);
        flagsBefore(ShowLogo);
        colorsBefore(colorCount);
        flagsBefore(flagCount);
    }
};

void OverlaySettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The read

void OverlaySettingsModel::refresh() { m_refresh.start(&OverlaySettingsWatcherResult::read); }

OverlaySettingsModel::OverlaySettingsWatcherResult
OverlaySettingsModel::OverlaySettingsWatcherResult::read(const CameraAccess &camera)
{
    constexpr uint32_t userTextSize = 65;
    OverlaySettingsWatcherResult result;
    zvtGetVideoOverlayPalette(camera.handle, result.palette.data());
    Rows::visit([&](size_t flag) { fetch(result.shown[flag], Rows::flags[flag].get, camera.handle); },
                [&](size_t color) { fetch(result.colors[color], Rows::colors[color].get, camera.handle); });
    fetch(result.hasLensTemp, zvtGetHasLensTemperature, camera.handle);
    fetch(result.textColorsAvailable, zvtGetVideoOverlayTextColorsAvailable, camera.handle);
    fetch(result.userDefinedFieldAvailable, zvtGetVideoOverlayUserDefinedFieldAvailable, camera.handle);
    if (result.userDefinedFieldAvailable.set() && result.userDefinedFieldAvailable.get()) {
        fetch(result.showUserDefinedField, zvtGetVideoOverlayShowUserDefinedField, camera.handle);
        readText<userTextSize>(result.userDefinedFieldText, zvtGetVideoOverlayUserDefinedFieldText, camera.handle);
    }
    return result;
}

void OverlaySettingsModel::finishedWatcher()
{
    const OverlaySettingsWatcherResult result = m_refresh.result();
    publishPalette(result.palette);
    Rows::visit([&](size_t flag) { publish(this, result.shown[flag], m_shown[flag], Rows::flags[flag].changed); },
                [&](size_t color) {
                    if (result.colors[color].set())
                        publishColor(color, result.colors[color].get());
                });
    publishIfChanged(this, result.hasLensTemp, m_hasLensTemp, &Self::hasLensTempChanged);
    publishIfChanged(this, result.textColorsAvailable, m_textColorsAvailable, &Self::textColorsAvailableChanged);
    publishIfChanged(this, result.userDefinedFieldAvailable, m_userDefinedFieldAvailable,
                     &Self::userDefinedFieldAvailableChanged);
    publishIfChanged(this, result.showUserDefinedField, m_showUserDefinedField, &Self::showUserDefinedFieldChanged);
    publishIfChanged(this, result.userDefinedFieldText, m_userDefinedFieldText, &Self::userDefinedFieldTextChanged);
    m_refresh.finish();
}

void OverlaySettingsModel::publishPalette(const Palette &palette)
{
    m_palette.clear();
    for (size_t entry = 0; entry < palette.size(); entry += 3)
        m_palette << QColor(palette[entry], palette[entry + 1], palette[entry + 2]).name();
    emit videoPaletteStringListChanged();
}

void OverlaySettingsModel::publishColor(size_t color, uint8_t index)
{
    const bool mayBeTransparent = color < m_hasColor.size();
    m_colorIndices[color] = index;
    if (mayBeTransparent)
        m_hasColor[color] = index != 0;
    emit(this->*Rows::colors[color].indexChanged)();
    emit(this->*Rows::colors[color].colorChanged)();
    if (mayBeTransparent)
        emit(this->*Rows::hasColorChanged[color])();
}

// Writes

void OverlaySettingsModel::setShown(Flag flag, bool show)
{
    writeStandard(this, show, m_shown[flag], Rows::flags[flag].changed, Rows::flags[flag].set);
}

void OverlaySettingsModel::setColorIndex(Color color, int index)
{
    const auto &row = Rows::colors[color];
    if (writeStandard(this, index, m_colorIndices[color], row.indexChanged, row.set))
        emit(this->*row.colorChanged)();
}

void OverlaySettingsModel::setHasColor(Color color, bool hasColor)
{
    setters::write(this, Rows::colors[color].set, hasColor ? m_colorIndices[color] : 0);
    announce(this, hasColor, m_hasColor[color], Rows::hasColorChanged[color]);
}

void OverlaySettingsModel::setShowUserDefinedField(bool show)
{
    writeConfirmed(this, show, m_showUserDefinedField, &Self::showUserDefinedFieldChanged,
                   zvtSetVideoOverlayShowUserDefinedField);
}

void OverlaySettingsModel::setUserDefinedFieldText(const QString &text)
{
    writeConfirmed(this, text, m_userDefinedFieldText, &Self::userDefinedFieldTextChanged,
                   zvtSetVideoOverlayUserDefinedFieldText);
}

void OverlaySettingsModel::setAllShowBoolsTo(bool value)
{
    for (size_t flag = ShowAgcRoi; flag < flagCount; ++flag)
        if (canShow(static_cast<Flag>(flag)))
            setShown(static_cast<Flag>(flag), value);
    if (m_userDefinedFieldAvailable)
        setShowUserDefinedField(value);
}

// The text of the internal shutter (ShowFlag) is not listed: it is set on every camera, and only the page hides its
// switch.
bool OverlaySettingsModel::canShow(Flag flag) const
{
    const auto capabilities = CameraAccess::of(this).capabilities;
    switch (flag) {
    case ShowFrontPanelTemp:
        return capabilities->hasFrontPanelTemperature();
    case ShowAirGapTemp:
        return capabilities->hasAirGapTemperature();
    case ShowInternalTemp:
        return capabilities->hasInternalTemperature();
    case ShowChassisTemp:
        return capabilities->hasChassisTemperature();
    case ShowLensTemp:
        return m_hasLensTemp;
    default:
        return true;
    }
}

void OverlaySettingsModel::useDefaults()
{
    zvtVideoOverlayUseDefaults(CameraAccess::of(this).handle);
    refresh();
}

void OverlaySettingsModel::clearMessage() { zvtVideoOverlayClearMessage(CameraAccess::of(this).handle); }

// Values

QColor OverlaySettingsModel::color(Color color) const
{
    const int index = m_colorIndices[color];
    if (index > 0 && index < m_palette.size())
        return QColor::fromString(m_palette.at(index));
    return color == OverlayTextColor ? QColor() : QColor(Qt::black);
}
