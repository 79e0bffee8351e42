#pragma once

#include "common/BaseTabModel.h"
#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QList>
#include <QStringList>

#include <cstdint>

/// The Video tab: the format of the video outputs, the automatic gain control (AGC) that maps the counts of the
/// detector to the levels of the picture, the palette and the other adjustments of the picture. A choice has a list of
/// texts and an index into it; the camera has numbers, and the lists depend on the camera. The list of formats also
/// depends on the manufacturing mode, which offers all formats. A refused value is not stored, except where a setter
/// ignores the status. GUI thread only. (The header is long because of the number of its settings.)
class VideoTabModel : public BaseTabModel
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(QStringList formatStrings READ formatStrings NOTIFY formatStringsChanged FINAL)
    Q_PROPERTY(int formatIndex READ formatIndex WRITE setFormatIndex NOTIFY formatIndexChanged FINAL)
    Q_PROPERTY(bool showOverlay READ showOverlay WRITE setShowOverlay NOTIFY showOverlayChanged FINAL)
    Q_PROPERTY(bool useFilterRate READ useFilterRate WRITE setUseFilterRate NOTIFY useFilterRateChanged FINAL)
    Q_PROPERTY(float filterRate READ filterRate WRITE setFilterRate NOTIFY filterRateChanged FINAL)
    Q_PROPERTY(bool useFilterDampening READ useFilterDampening WRITE setUseFilterDampening NOTIFY
                   useFilterDampeningChanged FINAL)
    Q_PROPERTY(float filterDampening READ filterDampening WRITE setFilterDampening NOTIFY filterDampeningChanged FINAL)
    Q_PROPERTY(bool lockFilterDampening READ lockFilterDampening WRITE setLockFilterDampening NOTIFY
                   lockFilterDampeningChanged FINAL)
    Q_PROPERTY(QStringList agcModeStrings READ agcModeStrings NOTIFY agcModeStringsChanged FINAL)
    Q_PROPERTY(int agcModeIndex READ agcModeIndex WRITE setAgcModeIndex NOTIFY agcModeIndexChanged FINAL)
    Q_PROPERTY(uint plateauP READ plateauP WRITE setPlateauP NOTIFY plateauPChanged FINAL)
    Q_PROPERTY(int manualLow READ manualLow WRITE setManualLow NOTIFY manualLowChanged FINAL)
    Q_PROPERTY(int manualHigh READ manualHigh WRITE setManualHigh NOTIFY manualHighChanged FINAL)
    Q_PROPERTY(int ddeSharpness READ ddeSharpness WRITE setDdeSharpness NOTIFY ddeSharpnessChanged FINAL)
    Q_PROPERTY(int brightness READ brightness WRITE setBrightness NOTIFY brightnessChanged FINAL)
    Q_PROPERTY(int contrast READ contrast WRITE setContrast NOTIFY contrastChanged FINAL)
    Q_PROPERTY(QStringList palettes READ palettes NOTIFY palettesChanged FINAL)
    Q_PROPERTY(int paletteIndex READ paletteIndex WRITE setPaletteIndex NOTIFY paletteIndexChanged FINAL)
    Q_PROPERTY(bool isSD READ isSD NOTIFY isSDChanged FINAL)
    Q_PROPERTY(EAGC_MODE agcMode READ agcMode NOTIFY agcModeChanged FINAL)
    Q_PROPERTY(int selectedUpdateRateIndex READ selectedUpdateRateIndex WRITE setSelectedUpdateRateIndex NOTIFY
                   selectedUpdateRateIndexChanged FINAL)
    Q_PROPERTY(int selectedTemporalFilterIndex READ selectedTemporalFilterIndex WRITE setSelectedTemporalFilterIndex
                   NOTIFY selectedTemporalFilterIndexChanged FINAL)
    Q_PROPERTY(uint temporalFilterThreshold READ temporalFilterThreshold WRITE setTemporalFilterThreshold NOTIFY
                   temporalFilterThresholdChanged FINAL)

public:
    /// The modes of the gain control, in the numbers of the camera: plateau equalisation, plateau equalisation with
    /// detail enhancement (DDE), automatic linear, manual linear.
    enum EAGC_MODE : int { AGC_PLATEAU = 0, AGC_DDE = 1, AGC_LINEAR = 2, AGC_MANUAL = 3 };
    Q_ENUM(EAGC_MODE)

    explicit VideoTabModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }

    QStringList formatStrings() const { return m_formatStrings; }
    int formatIndex() const { return m_formatIndex; } ///< -1 for a format that is not in the list.
    /// Ignores an index outside the list. An accepted one also signals `isSD`, changed or not.
    void setFormatIndex(int index);
    bool showOverlay() const { return m_showOverlay; } ///< Texts and frames on the picture.
    void setShowOverlay(bool show);

    bool useFilterRate() const { return m_useFilterRate; } ///< Whether the filter rate limits changes of the gain.
    void setUseFilterRate(bool use);
    /// 0 to 20. A rate that is not exact as a float, such as 0.1, is signalled after each read.
    float filterRate() const { return m_filterRate; }
    void setFilterRate(float rate);
    bool useFilterDampening() const { return m_useFilterDampening; } ///< Whether changes of the gain are dampened.
    void setUseFilterDampening(bool use);
    float filterDampening() const { return m_filterDampening; } ///< 0 to 1; 0 keeps the gain as it is.
    void setFilterDampening(float dampening);
    bool lockFilterDampening() const { return m_filterDampening == 0.0F; } ///< Whether the dampening is 0.
    /// True stores the dampening and sets it to 0. False sets the stored one again, 0.5 if there is none.
    void setLockFilterDampening(bool lock);

    QStringList agcModeStrings() const { return m_agcModeStrings; }
    int agcModeIndex() const { return m_agcModeIndex; } ///< -1 for a mode that is not in the list.
    void setAgcModeIndex(int index); ///< Ignores an index outside the list.
    /// The most pixels that a bin of the histogram counts; larger bins are cut to it. 1 to 16383.
    uint plateauP() const { return m_plateauP; }
    void setPlateauP(uint plateau);
    /// The counts that become black and white in the manual mode. A setter ignores a value outside 0 to 65535.
    int manualLow() const { return m_manualLow; }
    void setManualLow(int counts);
    int manualHigh() const { return m_manualHigh; }
    void setManualHigh(int counts);
    int ddeSharpness() const { return m_ddeSharpness; }
    void setDdeSharpness(int sharpness); ///< Ignores a value outside 1 to 7.

    /// For the formats with isSD(). A setter sends the lowest 8 bits, but stores the whole number.
    int brightness() const { return m_brightness; } ///< -15 to 63.
    void setBrightness(int brightness);
    int contrast() const { return m_contrast; } ///< -128 to 127.
    void setContrast(int contrast);
    QStringList palettes() const { return m_palettes; } ///< The names that the camera uses.
    int paletteIndex() const { return m_paletteIndex; } ///< -1 for a palette that is not in the list.
    void setPaletteIndex(int index); ///< Ignores an index outside the list.
    bool isSD() const; ///< Whether the format is one of the four NTSC and PAL formats. 480i and 576i are not.
    EAGC_MODE agcMode() const { return EAGC_MODE(m_agcMode); } ///< The mode, listed or not; 255 until it has been read.

    // The camera may refuse these three; they are stored all the same.
    int selectedUpdateRateIndex() const { return m_updateRate; } ///< 0 by frames, 1 by fields.
    void setSelectedUpdateRateIndex(int index); ///< Sends the lowest 8 bits.
    int selectedTemporalFilterIndex() const { return m_temporalFilter; } ///< 0 none, 1 four taps, 2 adaptive.
    void setSelectedTemporalFilterIndex(int index); ///< Sends the lowest 8 bits.
    uint temporalFilterThreshold() const { return m_temporalFilterThreshold; } ///< In counts.
    void setTemporalFilterThreshold(uint counts); ///< Sends the lowest 16 bits.

    Q_INVOKABLE void refresh() override;
    Q_INVOKABLE void resetBrightness() { setBrightness(0); }
    Q_INVOKABLE void resetContrast() { setContrast(0); }

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void formatStringsChanged();
    void formatIndexChanged();
    void showOverlayChanged();
    void useFilterRateChanged();
    void filterRateChanged();
    void useFilterDampeningChanged();
    void filterDampeningChanged();
    void lockFilterDampeningChanged();
    void agcModeStringsChanged();
    void agcModeIndexChanged();
    void plateauPChanged();
    void manualLowChanged();
    void manualHighChanged();
    void ddeSharpnessChanged();
    void brightnessChanged();
    void contrastChanged();
    void palettesChanged();
    void paletteIndexChanged();
    void isSDChanged();
    void agcModeChanged();
    void selectedUpdateRateIndexChanged();
    void selectedTemporalFilterIndexChanged();
    void temporalFilterThresholdChanged();

private:
    using Self = VideoTabModel;

    /// The result of a read.
    struct VideoSettings {
        Nullable<QList<uint8_t>> formats;
        Nullable<uint8_t> format;
        Nullable<bool> showOverlay;
        Nullable<bool> useFilterRate;
        Nullable<double> filterRate;
        Nullable<bool> useFilterDampening;
        Nullable<float> filterDampening;
        Nullable<QList<uint8_t>> agcModes; ///< Depends on the board set only.
        Nullable<uint8_t> agcMode;
        Nullable<uint32_t> plateauP;
        Nullable<int8_t> brightness;
        Nullable<int8_t> contrast;
        Nullable<uint16_t> manualLow;
        Nullable<uint16_t> manualHigh;
        Nullable<uint8_t> ddeSharpness;
        Nullable<QStringList> palettes;
        Nullable<QString> palette;
        Nullable<uint8_t> updateRate;
        Nullable<uint8_t> temporalFilter;
        Nullable<uint16_t> temporalFilterThreshold;

        static VideoSettings read(const CameraAccess &camera);
    };
    struct Rows;

private slots:
    void finishedWatcher();
    void onManufacturingModeChanged();

private:
    bool manufacturingMode() const;
    void publishFormats(const VideoSettings &settings);
    void publishFilters(const VideoSettings &settings);
    void publishAgcMode(const VideoSettings &settings);
    void publishPalettes(const VideoSettings &settings);
    void showFormats(const QList<uint8_t> &formats);
    void publishFormatIndex();
    void announceDampening(float dampening);

    QList<uint8_t> m_shownFormats; ///< Row for row the formats of m_formatStrings.
    QList<uint8_t> m_cameraFormats; ///< As last read.
    QStringList m_formatStrings;
    int m_formatIndex = -1;
    uint8_t m_format = 255;
    bool m_showOverlay = false;
    bool m_useFilterRate = false;
    float m_filterRate = 0;
    bool m_useFilterDampening = false;
    float m_filterDampening = 0;
    float m_savedDampening = 0.5F; ///< Set again when the dampening is unlocked.
    QList<uint8_t> m_agcModes; ///< Row for row the modes of m_agcModeStrings.
    QStringList m_agcModeStrings;
    int m_agcModeIndex = -1;
    uint8_t m_agcMode = 255;
    uint m_plateauP = 0;
    int m_manualLow = 0;
    int m_manualHigh = 0;
    int m_ddeSharpness = 0;
    int m_brightness = 0;
    int m_contrast = 0;
    QStringList m_palettes;
    int m_paletteIndex = -1;
    int m_updateRate = 0;
    int m_temporalFilter = 0;
    uint m_temporalFilterThreshold = 0;
    Refresh<Self, VideoSettings> m_refresh{this, &Self::finishedWatcher};
};
