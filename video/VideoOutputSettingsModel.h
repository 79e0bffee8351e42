#pragma once

#include "common/Nullable.h"
#include "common/Refresh.h"
#include "common/StringIntDisplaySanityModel.h"

#include <QObject>
#include <QPoint>
#include <QSize>

#include <cstdint>

#include "hlx/TArray.h"

/// The place of the image on the raster of the video output: a position, a zoom factor, and an offset for the position
/// "Offset". Position and zoom factor are written at once and keep the operator's choice until the next read, even if
/// the camera refuses it. An offset is only stored until applyVideoOffsetSettings(). GUI thread only.
class VideoOutputSettingsModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged FINAL)
    Q_PROPERTY(bool hasRefreshed READ hasRefreshed NOTIFY hasRefreshedChanged FINAL)
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged FINAL)

    Q_PROPERTY(int selectedVideoOutputPositionIndex READ selectedVideoOutputPositionIndex WRITE
                   setSelectedVideoOutputPositionIndex NOTIFY selectedVideoOutputPositionIndexChanged FINAL)
    Q_PROPERTY(StringIntDisplaySanityModel *zoomFactorListModel READ zoomFactorListModel NOTIFY
                   zoomFactorListModelChanged FINAL)
    Q_PROPERTY(int selectedZoomFactorIndex READ selectedZoomFactorIndex WRITE setSelectedZoomFactorIndex NOTIFY
                   selectedZoomFactorIndexChanged FINAL)
    Q_PROPERTY(int videoOutputXOffset READ videoOutputXOffset WRITE setVideoOutputXOffset NOTIFY
                   videoOutputXOffsetChanged FINAL)
    Q_PROPERTY(int videoOutputYOffset READ videoOutputYOffset WRITE setVideoOutputYOffset NOTIFY
                   videoOutputYOffsetChanged FINAL)
    Q_PROPERTY(QPoint videoOutputOffset READ videoOutputOffset WRITE setVideoOutputOffset NOTIFY
                   videoOutputOffsetChanged FINAL)
    Q_PROPERTY(bool canChangePosition READ canChangePosition NOTIFY canChangePositionChanged FINAL)
    Q_PROPERTY(QSize displaySize READ displaySize NOTIFY videoFormatChanged FINAL)
    Q_PROPERTY(float zoomScale READ zoomScale NOTIFY zoomFactorChanged FINAL)
    Q_PROPERTY(bool videoFormatIsNtsc READ videoFormatIsNtsc NOTIFY videoFormatChanged FINAL)

public:
    explicit VideoOutputSettingsModel(QObject *parent) : QObject(parent) { }

    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); } ///< Stays true after the first read.
    bool visible() const { return m_visible; } ///< Whether the section is expanded.
    void setVisible(bool visible);

    /// 0 the place of the window on the detector, 1 centred, 2 at the offset: the camera's own numbers.
    int selectedVideoOutputPositionIndex() const { return m_position; }
    void setSelectedVideoOutputPositionIndex(int index); ///< Sends the lowest 8 bits.
    StringIntDisplaySanityModel *zoomFactorListModel() { return &m_zoomFactors; } ///< Texts and the camera's numbers.
    int selectedZoomFactorIndex() const { return m_zoomFactorIndex; } ///< A row of the list; -1 for an unlisted factor.
    void setSelectedZoomFactorIndex(int index); ///< A row outside the list sends 255.
    /// The offset of the image for position 2, in pixels of the raster. The setters store any number, send nothing
    /// until applyVideoOffsetSettings(), and signal each coordinate that differs, then the offset.
    int videoOutputXOffset() const { return m_offset.x(); }
    void setVideoOutputXOffset(int x);
    int videoOutputYOffset() const { return m_offset.y(); }
    void setVideoOutputYOffset(int y);
    QPoint videoOutputOffset() const { return m_offset; }
    void setVideoOutputOffset(QPoint offset);
    bool canChangePosition() const { return m_canChangePosition; } ///< The camera lets its position be set.
    QSize displaySize() const; ///< The raster of the video format in pixels.
    float zoomScale() const; ///< Raster pixels for each pixel of the image. 0: the largest size that fits.
    bool videoFormatIsNtsc() const; ///< NTSC, also with square pixels: the formats 0 and 3. True until the first read.

    Q_INVOKABLE void refresh();
    Q_INVOKABLE float convertZoomFactorIndexToRealZoomFactor(int index) const; ///< As zoomScale(); 1 outside the list.
    Q_INVOKABLE void applyVideoOffsetSettings(); ///< Sends the lowest 16 bits of both offsets. Ignores the status.

signals:
    void refreshingChanged();
    void hasRefreshedChanged();
    void visibleChanged();
    void selectedVideoOutputPositionIndexChanged();
    void zoomFactorListModelChanged(); ///< Never emitted: the list is always the same object.
    void selectedZoomFactorIndexChanged(); ///< Also emitted after a new list, so that the page selects its row again.
    void videoOutputXOffsetChanged();
    void videoOutputYOffsetChanged();
    void videoOutputOffsetChanged();
    void canChangePositionChanged();
    void videoFormatChanged();
    void zoomFactorChanged();

private:
    using Self = VideoOutputSettingsModel;

    /// The result of a read.
    struct VideoOutputSettingsWatcherResult {
        Nullable<uint8_t> position;
        Nullable<bool> canChangePosition;
        Nullable<uint8_t> zoomFactor;
        Nullable<int> xOffset; ///< Read together with yOffset.
        Nullable<int> yOffset;
        Nullable<uint8_t> videoFormat;
        Nullable<hlx::TArray<unsigned char>> zoomFactors;

        static VideoOutputSettingsWatcherResult read(const CameraAccess &camera);
    };

private slots:
    void finishedWatcher();

private:
    void publishZoomFactors(const hlx::TArray<unsigned char> &factors);

    bool m_visible = false;
    int m_position = 0;
    StringIntDisplaySanityModel m_zoomFactors{this};
    uint8_t m_zoomFactor = 1; ///< The camera's number.
    int m_zoomFactorIndex = 0;
    QPoint m_offset;
    bool m_canChangePosition = true;
    uint8_t m_videoFormat = 0;
    Refresh<Self, VideoOutputSettingsWatcherResult> m_refresh{this, &Self::finishedWatcher,
                                                              RefreshForm::RefreshingOnly};
};
