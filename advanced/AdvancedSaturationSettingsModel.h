#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "common/presetValues.h"

#include <QObject>
#include <QTimer>

#include <cstdint>

/// The saturation of the image of each preset: the A/D count above which a pixel is saturated, the number of saturated
/// pixels above which the image is, and the number that there are now. While the section is expanded on a shown page,
/// these numbers are read each second. A setter ignores the status, and after its signal reads the number of its
/// preset: a slot must not delete the model. GUI thread only.
class AdvancedSaturationSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)
    Q_PROPERTY(int countThresholdMinValue READ countThresholdMinValue CONSTANT FINAL)
    Q_PROPERTY(int countThresholdMaxValue READ countThresholdMaxValue CONSTANT FINAL)
    Q_PROPERTY(int pixelThresholdMinValue READ pixelThresholdMinValue CONSTANT FINAL)
    Q_PROPERTY(int pixelThresholdMaxValue READ pixelThresholdMaxValue CONSTANT FINAL)

    Q_PROPERTY(int presetZeroCountThreshold READ presetZeroCountThreshold WRITE setPresetZeroCountThreshold NOTIFY
                   presetZeroCountThresholdChanged FINAL)
    Q_PROPERTY(int presetOneCountThreshold READ presetOneCountThreshold WRITE setPresetOneCountThreshold NOTIFY
                   presetOneCountThresholdChanged FINAL)
    Q_PROPERTY(int presetTwoCountThreshold READ presetTwoCountThreshold WRITE setPresetTwoCountThreshold NOTIFY
                   presetTwoCountThresholdChanged FINAL)
    Q_PROPERTY(int presetThreeCountThreshold READ presetThreeCountThreshold WRITE setPresetThreeCountThreshold NOTIFY
                   presetThreeCountThresholdChanged FINAL)
    Q_PROPERTY(int presetZeroPixelThreshold READ presetZeroPixelThreshold WRITE setPresetZeroPixelThreshold NOTIFY
                   presetZeroPixelThresholdChanged FINAL)
    Q_PROPERTY(int presetOnePixelThreshold READ presetOnePixelThreshold WRITE setPresetOnePixelThreshold NOTIFY
                   presetOnePixelThresholdChanged FINAL)
    Q_PROPERTY(int presetTwoPixelThreshold READ presetTwoPixelThreshold WRITE setPresetTwoPixelThreshold NOTIFY
                   presetTwoPixelThresholdChanged FINAL)
    Q_PROPERTY(int presetThreePixelThreshold READ presetThreePixelThreshold WRITE setPresetThreePixelThreshold NOTIFY
                   presetThreePixelThresholdChanged FINAL)
    Q_PROPERTY(
        int presetZeroSaturatedPixels READ presetZeroSaturatedPixels NOTIFY presetZeroSaturatedPixelsChanged FINAL)
    Q_PROPERTY(int presetOneSaturatedPixels READ presetOneSaturatedPixels NOTIFY presetOneSaturatedPixelsChanged FINAL)
    Q_PROPERTY(int presetTwoSaturatedPixels READ presetTwoSaturatedPixels NOTIFY presetTwoSaturatedPixelsChanged FINAL)
    Q_PROPERTY(
        int presetThreeSaturatedPixels READ presetThreeSaturatedPixels NOTIFY presetThreeSaturatedPixelsChanged FINAL)

public:
    explicit AdvancedSaturationSettingsModel(QObject *parent);

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible); ///< A change also starts or stops the live count, whether the page is shown or not.
    // The limits of the page. The setters accept any number.
    int countThresholdMinValue() const { return 0; }
    int countThresholdMaxValue() const { return 16383; } ///< The largest of 14 bits.
    int pixelThresholdMinValue() const { return 0; }
    int pixelThresholdMaxValue() const { return 1048576; }

    // In A/D counts. The setters send the lowest 16 bits.
    int presetZeroCountThreshold() const { return m_countThresholds[0]; }
    void setPresetZeroCountThreshold(int counts) { setCountThreshold(0, counts); }
    int presetOneCountThreshold() const { return m_countThresholds[1]; }
    void setPresetOneCountThreshold(int counts) { setCountThreshold(1, counts); }
    int presetTwoCountThreshold() const { return m_countThresholds[2]; }
    void setPresetTwoCountThreshold(int counts) { setCountThreshold(2, counts); }
    int presetThreeCountThreshold() const { return m_countThresholds[3]; }
    void setPresetThreeCountThreshold(int counts) { setCountThreshold(3, counts); }
    // In pixels.
    int presetZeroPixelThreshold() const { return m_pixelThresholds[0]; }
    void setPresetZeroPixelThreshold(int pixels) { setPixelThreshold(0, pixels); }
    int presetOnePixelThreshold() const { return m_pixelThresholds[1]; }
    void setPresetOnePixelThreshold(int pixels) { setPixelThreshold(1, pixels); }
    int presetTwoPixelThreshold() const { return m_pixelThresholds[2]; }
    void setPresetTwoPixelThreshold(int pixels) { setPixelThreshold(2, pixels); }
    int presetThreePixelThreshold() const { return m_pixelThresholds[3]; }
    void setPresetThreePixelThreshold(int pixels) { setPixelThreshold(3, pixels); }
    // In pixels.
    int presetZeroSaturatedPixels() const { return m_saturatedPixels[0]; }
    int presetOneSaturatedPixels() const { return m_saturatedPixels[1]; }
    int presetTwoSaturatedPixels() const { return m_saturatedPixels[2]; }
    int presetThreeSaturatedPixels() const { return m_saturatedPixels[3]; }

    Q_INVOKABLE void refresh();
    Q_INVOKABLE void updateAllSaturatedPixels(); ///< Reads the numbers of all presets at once, on the GUI thread.
    /// Starts the live count if `updatePixelValues` and visible(), else stops it. The page calls it with whether it is
    /// shown and the camera connected.
    Q_INVOKABLE void saturatedPixelsUpdateActiveIfVisible(bool updatePixelValues);

    void startSaturatedPixelUpdate(); ///< Reads the numbers on a pool thread. Of several reads the newest is published.
    /// Reads the number of one preset on the GUI thread. A preset other than 0 to 3 is ignored.
    void updateSaturationPixels(int preset);

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void presetZeroCountThresholdChanged();
    void presetOneCountThresholdChanged();
    void presetTwoCountThresholdChanged();
    void presetThreeCountThresholdChanged();
    void presetZeroPixelThresholdChanged();
    void presetOnePixelThresholdChanged();
    void presetTwoPixelThresholdChanged();
    void presetThreePixelThresholdChanged();
    void presetZeroSaturatedPixelsChanged();
    void presetOneSaturatedPixelsChanged();
    void presetTwoSaturatedPixelsChanged();
    void presetThreeSaturatedPixelsChanged();

private:
    using Self = AdvancedSaturationSettingsModel;

    /// The result of a read.
    struct Settings {
        PerPreset<Nullable<int>> countThresholds;
        PerPreset<Nullable<int>> pixelThresholds;
        PerPreset<Nullable<int>> saturatedPixels;

        static Settings read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();
    void finishedSaturatedPixelsUpdateWatcher();

private:
    static PerPreset<Nullable<int>> readSaturatedPixels(const CameraAccess &camera);
    void setCountThreshold(uint8_t preset, int counts);
    void setPixelThreshold(uint8_t preset, int pixels);

    bool m_visible = false;
    PerPreset<int> m_countThresholds{};
    PerPreset<int> m_pixelThresholds{};
    PerPreset<int> m_saturatedPixels{};
    QTimer m_saturatedPixelsUpdateTimer{this};
    Refresh<Self, PerPreset<Nullable<int>>> m_saturatedPixelsUpdate{this, &Self::finishedSaturatedPixelsUpdateWatcher,
                                                                    RefreshForm::NewestOnly};
    Refresh<Self, Settings> m_refresh{this, &Self::finishedWatcher};
};
