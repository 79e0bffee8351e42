#pragma once

#include <QPoint>
#include <QQuickItem>
#include <QRect>
#include <QSize>

#include <optional>

#include "platform/hlx/RasterPlacement.h"

namespace hlx::cam::ui
{

class RasterView;

/// Shows the position of the camera's image on the raster of its video output. The operator can move the image if the
/// position is free. The QML file of the same name draws it. GUI thread only.
///
/// Dragging with the left mouse button moves the image; Esc cancels a drag. The arrow keys move the image by one
/// increment, with Ctrl by ten. The operator can only choose valid offsets. An `offset` that a page assigns is shown
/// unchanged even if it is not valid; `isValid` is then false.
class DisplayEditor : public QQuickItem
{
    Q_OBJECT
    /// The image window on the detector array, and the size of the array; both in pixels of the array.
    Q_PROPERTY(QRect window MEMBER m_window NOTIFY layoutChanged)
    Q_PROPERTY(QSize fpaSize MEMBER m_fpaSize NOTIFY layoutChanged)
    /// Whether the image is mirrored in X or Y. This changes the position only for SameAsFpa.
    Q_PROPERTY(bool hFlip MEMBER m_hFlip NOTIFY layoutChanged)
    Q_PROPERTY(bool vFlip MEMBER m_vFlip NOTIFY layoutChanged)

    /// The size of the video raster in raster pixels.
    Q_PROPERTY(QSize displaySize MEMBER m_displaySize NOTIFY layoutChanged)
    /// Raster pixels for each pixel of the image. 0 scales the image to the largest size that fits.
    Q_PROPERTY(qreal zoom MEMBER m_zoom NOTIFY layoutChanged)
    /// The position of the image, one of OffsetType.
    Q_PROPERTY(int offsetType MEMBER m_offsetType NOTIFY layoutChanged)
    /// The position of the image's top left corner in raster pixels. Used only for Free.
    Q_PROPERTY(QPoint offset READ offset WRITE setOffset NOTIFY offsetChanged)
    /// The increments of the offset in X and Y, in raster pixels. Values below 1 mean 1.
    Q_PROPERTY(QPoint increment MEMBER m_increment NOTIFY layoutChanged)
    /// Whether lines mark the strips at the top and bottom of the raster that a television may cut off.
    Q_PROPERTY(bool showNtscLines MEMBER m_showNtscLines NOTIFY layoutChanged)

    /// The range of valid offsets in raster pixels. In this range the image is inside the raster, or covers it if the
    /// image is larger.
    Q_PROPERTY(QPoint offsetMin READ offsetMin NOTIFY layoutChanged)
    Q_PROPERTY(QPoint offsetMax READ offsetMax NOTIFY layoutChanged)
    /// False if `offset` is used and is out of range or not a multiple of the increment.
    Q_PROPERTY(bool isValid READ isValid NOTIFY layoutChanged)
    /// The rectangles in which the raster and the image are drawn, in the coordinates of the control.
    Q_PROPERTY(QRectF displayFrame READ displayFrame NOTIFY layoutChanged)
    Q_PROPERTY(QRectF imageFrame READ imageFrame NOTIFY layoutChanged)

public:
    /// The image is where its window is on the detector array, in the middle of the raster, or at `offset`.
    enum OffsetType {
        SameAsFpa = RasterPlacement::SameAsFpa,
        Centered = RasterPlacement::Centered,
        Free = RasterPlacement::Free,
    };
    Q_ENUM(OffsetType)

    explicit DisplayEditor(QQuickItem *parent = nullptr);

    QPoint offset() const { return m_offset; }
    void setOffset(const QPoint &offset);
    QPoint offsetMin() const;
    QPoint offsetMax() const;
    bool isValid() const;
    QRectF displayFrame() const;
    QRectF imageFrame() const;

signals:
    void offsetChanged();
    void layoutChanged();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    struct Drag {
        QPointF from;
        QPoint offset;
    };

    RasterView view() const;
    RasterPlacement placement() const;
    RasterPlacement::Point step() const { return {m_increment.x(), m_increment.y()}; }
    bool canMoveAt(const QPointF &position) const;
    void moveTo(const QPointF &wanted);

    QRect m_window;
    QSize m_fpaSize{0, 0};
    QSize m_displaySize{0, 0};
    QPoint m_offset;
    QPoint m_increment{1, 1};
    qreal m_zoom = 1;
    int m_offsetType = SameAsFpa;
    bool m_hFlip = false;
    bool m_vFlip = false;
    bool m_showNtscLines = false;
    std::optional<Drag> m_drag;
};

} // namespace hlx::cam::ui
