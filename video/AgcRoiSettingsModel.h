#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstdint>

/// The region of interest (ROI) of the automatic gain control (AGC): the rectangle of the image that the control works
/// on, whether it is in use, and whether the overlay shows it. The rectangle is relative to the window of the preset
/// that the video output shows, and all sizes are in pixels of the detector. The page edits a copy of the rectangle.
/// GUI thread only.
class AgcRoiSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(bool enableAgcRoi READ enableAgcRoi WRITE setEnableAgcRoi NOTIFY enableAgcRoiChanged FINAL)
    Q_PROPERTY(bool showWhenEnabled READ showWhenEnabled WRITE setShowWhenEnabled NOTIFY showWhenEnabledChanged FINAL)
    Q_PROPERTY(QRect window READ window WRITE setWindow NOTIFY windowChanged FINAL)
    Q_PROPERTY(bool windowSizeHasUnsavedValues READ windowSizeHasUnsavedValues WRITE setWindowSizeHasUnsavedValues
                   NOTIFY windowSizeHasUnsavedValuesChanged FINAL)
    Q_PROPERTY(QSize windowMaxSize READ windowMaxSize NOTIFY windowMaxSizeChanged FINAL)
    Q_PROPERTY(QSize windowMinSize READ windowMinSize NOTIFY windowMinSizeChanged FINAL)
    Q_PROPERTY(QSize fpaSize READ fpaSize NOTIFY fpaSizeChanged FINAL)
    Q_PROPERTY(QPoint subWindowPosition READ subWindowPosition NOTIFY subWindowPositionChanged FINAL)

public:
    explicit AgcRoiSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    bool enableAgcRoi() const { return m_enableAgcRoi; } ///< Whether the gain control uses the region.
    void setEnableAgcRoi(bool enable); ///< Keeps the new value until the next read, even if the camera refuses it.
    /// Whether the overlay shows the region while it is in use. The same setting of the camera as `showAgcRoi` of the
    /// overlay settings; each of the two models shows a change of the other after its own next read.
    bool showWhenEnabled() const { return m_showWhenEnabled; }
    void setShowWhenEnabled(bool show); ///< Keeps the new value until the next read, even if the camera refuses it.
    QRect window() const { return m_window; } ///< The region. Empty until a read.
    void setWindow(const QRect &window); ///< Sends the lowest 16 bits of each number. Keeps the old region if refused.
    /// Whether the page has edits that are not applied. Each read sets it to false, which discards the edits.
    bool windowSizeHasUnsavedValues() const { return m_windowSizeHasUnsavedValues; }
    void setWindowSizeHasUnsavedValues(bool unsaved);
    // These four change only after a read that got the video preset, its window and the limits of windows. Before the
    // first such read the sizes are invalid.
    QSize windowMaxSize() const { return m_windowMaxSize; } ///< The size of the preset's window.
    QSize windowMinSize() const { return m_windowMinSize; } ///< Always 1 by 1 after the first such read.
    QSize fpaSize() const { return m_fpaSize; } ///< The size of the largest window of the detector.
    QPoint subWindowPosition() const { return m_subWindowPosition; } ///< Of the preset's window on the detector.

    Q_INVOKABLE void refresh();

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void enableAgcRoiChanged(); ///< Also emitted after each good read.
    void showWhenEnabledChanged(); ///< Also emitted after each good read.
    void windowChanged();
    void windowSizeHasUnsavedValuesChanged(); ///< Also emitted after each read.
    void windowMaxSizeChanged();
    void windowMinSizeChanged();
    void fpaSizeChanged();
    void subWindowPositionChanged();

private:
    using Self = AgcRoiSettingsModel;

    /// The result of a read.
    struct AgcRoiSettingsWatcherResult {
        Nullable<bool> enableAgcRoi;
        Nullable<bool> showWhenEnabled;
        Nullable<QRect> window;
        // These four are set together or not at all.
        Nullable<QSize> windowMinSize;
        Nullable<QSize> windowMaxSize;
        Nullable<QPoint> subWindowPosition;
        Nullable<QSize> fpaSize;

        static AgcRoiSettingsWatcherResult read(const CameraAccess &camera);
        void readWindow(uint64_t handle);
        void readLimits(uint64_t handle);
    };

private slots:
    void finishedWatcher();

private:
    bool m_visible = false;
    bool m_enableAgcRoi = false;
    bool m_showWhenEnabled = false;
    QRect m_window;
    bool m_windowSizeHasUnsavedValues = false;
    QSize m_windowMaxSize;
    QSize m_windowMinSize;
    QSize m_fpaSize;
    QPoint m_subWindowPosition;
    Refresh<Self, AgcRoiSettingsWatcherResult> m_refresh{this, &Self::finishedWatcher, RefreshForm::Swapped};
};
