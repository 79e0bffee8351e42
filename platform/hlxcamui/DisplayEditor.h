#pragma once

#include <QPoint>
#include <QQuickItem>
#include <QRect>
#include <QSize>

#include <optional>

namespace hlx::cam::ui
{

class RasterView;

/// Shows where the camera's image lies on the raster of its video output, and lets the operator move it while the
/// position is free; the QML file of the same name draws it. GUI thread only.
///
/// Mouse: drag the image, Esc takes a drag back. Keys: arrows move it by one increment, with Ctrl by ten. What the
/// operator does always meets the limits; what a page assigns to `offset` is shown as it is, and `isValid` judges it.
class DisplayEditor : public QQuickItem
{
    Q_OBJECT
    /// The image window on the detector array and the array's size, both in its pixels.
    Q_PROPERTY(QRect window MEMBER m_window NOTIFY layoutChanged)
    Q_PROPERTY(QSize fpaSize MEMBER m_fpaSize NOTIFY layoutChanged)
    Q_PROPERTY(bool hFlip MEMBER m_hFlip NOTIFY layoutChanged)
    Q_PROPERTY(bool vFlip MEMBER m_vFlip NOTIFY layoutChanged)

    /// The video raster, in its pixels.
    Q_PROPERTY(QSize displaySize MEMBER m_displaySize NOTIFY layoutChanged)
    /// Raster pixels for each pixel of the image; 0 makes the image as large as fits.
    Q_PROPERTY(qreal zoom MEMBER m_zoom NOTIFY layoutChanged)
    /// One of OffsetType.
    Q_PROPERTY(int offsetType MEMBER m_offsetType NOTIFY layoutChanged)
    /// The image's top left corner on the raster, while the position is free.
    Q_PROPERTY(QPoint offset READ offset WRITE setOffset NOTIFY offsetChanged)
    /// Steps of the offset; below 1 counts as 1.
    Q_PROPERTY(QPoint increment MEMBER m_increment NOTIFY layoutChanged)
    /// Marks what a television may hide at the upper and lower edge.
    Q_PROPERTY(bool showNtscLines MEMBER m_showNtscLines NOTIFY layoutChanged)

    /// The offsets with which the image lies on the raster, or, where it is larger, fills it.
    Q_PROPERTY(QPoint offsetMin READ offsetMin NOTIFY layoutChanged)
    Q_PROPERTY(QPoint offsetMax READ offsetMax NOTIFY layoutChanged)
    /// False while a free position is outside its limits or between two increments.
    Q_PROPERTY(bool isValid READ isValid NOTIFY layoutChanged)
    /// Where things are drawn, in the control's coordinates: raster and image.
    Q_PROPERTY(QRectF displayFrame READ displayFrame NOTIFY layoutChanged)
    Q_PROPERTY(QRectF imageFrame READ imageFrame NOTIFY layoutChanged)

public:
    enum OffsetType { SameAsFpa, Centered, Free };
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
    QSizeF imageSize() const;
    QPointF imagePosition() const;
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
