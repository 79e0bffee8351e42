#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "video/overlayTables.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>
#include <cstdint>

/// The texts and frames that the camera draws on its video output. Colours are entries of a palette of the camera.
/// Entry 0 is transparent for the text and its background. Setters ignore the status unless said otherwise: a refused
/// value stays until the next read. Each read signals the switches and the colours, also if they have not changed. GUI
/// thread only.
class OverlaySettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(
        QStringList videoPaletteStringList READ videoPaletteStringList NOTIFY videoPaletteStringListChanged FINAL)
    ZVT_OVERLAY_FLAGS(ZVT_FLAG_PROPERTY)
    ZVT_OVERLAY_COLORS(ZVT_COLOR_PROPERTIES)
    Q_PROPERTY(bool overlayTextHasColor READ overlayTextHasColor WRITE setOverlayTextHasColor NOTIFY
                   overlayTextHasColorChanged FINAL)
    Q_PROPERTY(bool overlayTextBackgroundHasColor READ overlayTextBackgroundHasColor WRITE
                   setOverlayTextBackgroundHasColor NOTIFY overlayTextBackgroundHasColorChanged FINAL)
    Q_PROPERTY(bool hasLensTemp READ hasLensTemp NOTIFY hasLensTempChanged FINAL)
    Q_PROPERTY(bool textColorsAvailable READ textColorsAvailable NOTIFY textColorsAvailableChanged FINAL)
    Q_PROPERTY(
        bool userDefinedFieldAvailable READ userDefinedFieldAvailable NOTIFY userDefinedFieldAvailableChanged FINAL)
    Q_PROPERTY(bool showUserDefinedField READ showUserDefinedField WRITE setShowUserDefinedField NOTIFY
                   showUserDefinedFieldChanged FINAL)
    Q_PROPERTY(QString userDefinedFieldText READ userDefinedFieldText WRITE setUserDefinedFieldText NOTIFY
                   userDefinedFieldTextChanged FINAL)

public:
    explicit OverlaySettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);
    /// The 256 colours of the palette as #rrggbb. Empty until the first read; all black after a failed one.
    const QStringList &videoPaletteStringList() const { return m_palette; }
    ZVT_OVERLAY_FLAGS(ZVT_FLAG_FUNCTIONS)
    /// Entries of the palette, and their colours. The setters send the lowest 8 bits. For entry 0, and for one outside
    /// the list, the colour of the text is invalid and the others are black.
    ZVT_OVERLAY_COLORS(ZVT_COLOR_FUNCTIONS)
    /// Whether the text or its background is drawn in its colour, and not transparent. The setters always write: true
    /// sends the stored entry, false sends entry 0 and keeps the stored one.
    bool overlayTextHasColor() const { return m_hasColor[OverlayTextColor]; }
    void setOverlayTextHasColor(bool hasColor) { setHasColor(OverlayTextColor, hasColor); }
    bool overlayTextBackgroundHasColor() const { return m_hasColor[OverlayTextBackgroundColor]; }
    void setOverlayTextBackgroundHasColor(bool hasColor) { setHasColor(OverlayTextBackgroundColor, hasColor); }
    bool hasLensTemp() const { return m_hasLensTemp; } ///< Whether the lens has a sensor of its temperature.
    bool textColorsAvailable() const { return m_textColorsAvailable; } ///< True until the first read.
    bool userDefinedFieldAvailable() const { return m_userDefinedFieldAvailable; }
    /// The text of the user. Both setters keep the old value if the camera refuses the new one, and signal it.
    bool showUserDefinedField() const { return m_showUserDefinedField; }
    void setShowUserDefinedField(bool show);
    const QString &userDefinedFieldText() const { return m_userDefinedFieldText; }
    void setUserDefinedFieldText(const QString &text);

    Q_INVOKABLE void refresh();
    /// Sets the frames, the texts that this camera can show, and the text of the user; not the overlay as a whole.
    Q_INVOKABLE void setAllShowBoolsTo(bool value);
    Q_INVOKABLE void useDefaults(); ///< Lets the camera set its defaults, then reads them.
    Q_INVOKABLE void clearMessage(); ///< Removes the message from the picture.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void videoPaletteStringListChanged();
    ZVT_OVERLAY_FLAGS(ZVT_FLAG_SIGNAL)
    ZVT_OVERLAY_COLORS(ZVT_COLOR_SIGNALS)
    void overlayTextHasColorChanged();
    void overlayTextBackgroundHasColorChanged();
    void hasLensTempChanged();
    void textColorsAvailableChanged();
    void userDefinedFieldAvailableChanged();
    void showUserDefinedFieldChanged();
    void userDefinedFieldTextChanged();

private:
    using Self = OverlaySettingsModel;

    enum Flag : size_t { ZVT_OVERLAY_FLAGS(ZVT_FLAG_NUMBER) flagCount };
    enum Color : size_t { ZVT_OVERLAY_COLORS(ZVT_COLOR_NUMBER) colorCount };
    using Palette = std::array<uint8_t, size_t{3} * 256>; ///< Red, green and blue of each colour.
    struct Rows;

    /// The result of a read.
    struct OverlaySettingsWatcherResult {
        Palette palette{}; ///< Zeros if it was not read.
        std::array<Nullable<bool>, flagCount> shown;
        std::array<Nullable<uint8_t>, colorCount> colors;
        Nullable<bool> hasLensTemp;
        Nullable<bool> textColorsAvailable;
        Nullable<bool> userDefinedFieldAvailable;
        Nullable<bool> showUserDefinedField;
        Nullable<QString> userDefinedFieldText;

        static OverlaySettingsWatcherResult read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    QColor color(Color color) const;
    void publishPalette(const Palette &palette);
    void publishColor(size_t color, uint8_t index);
    void setShown(Flag flag, bool show);
    void setColorIndex(Color color, int index);
    void setHasColor(Color color, bool hasColor);
    bool canShow(Flag flag) const; ///< Whether the camera has what the text shows.

    bool m_visible = false;
    QStringList m_palette;
    std::array<bool, flagCount> m_shown{};
    std::array<int, colorCount> m_colorIndices{-1, -1, 0, 0};
    std::array<bool, AgcRoiColor> m_hasColor{}; ///< Of the text and of its background.
    bool m_hasLensTemp = false;
    bool m_textColorsAvailable = true;
    bool m_userDefinedFieldAvailable = false;
    bool m_showUserDefinedField = false;
    QString m_userDefinedFieldText;
    Refresh<Self, OverlaySettingsWatcherResult> m_refresh{this, &Self::finishedWatcher, RefreshForm::Standard};
};
