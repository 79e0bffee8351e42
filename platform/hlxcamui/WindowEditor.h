#pragma once

#include <QPoint>
#include <QQuickItem>
#include <QRect>
#include <QSize>

#include <optional>

namespace hlx::cam::ui
{

class RasterView;

/// Shows an image window on its pixel array; the operator can move and resize it. The QML file of the same name draws
/// it. All rectangles and sizes are in pixels of the array in the camera's orientation; the drawing is mirrored by the
/// flips. GUI thread only.
///
/// Mouse: dragging the inside moves, dragging an edge or corner resizes, Esc cancels a drag. Keys: arrows move, Shift
/// and arrows resize, by one increment, with Ctrl by ten. Changes by the operator always keep to limits and increments.
/// A `window` that a page assigns is shown unchanged.
class WindowEditor : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QRect window READ window WRITE setWindow NOTIFY windowChanged)
    Q_PROPERTY(QSize minSize MEMBER m_minSize NOTIFY viewChanged)
    /// The largest window. Also the size of the array, or, with `isSubWindow`, of the area that contains the window.
    Q_PROPERTY(QSize maxSize MEMBER m_maxSize NOTIFY viewChanged)
    /// Increments of size and offset; values below 1 mean 1.
    Q_PROPERTY(QPoint increment MEMBER m_increment NOTIFY viewChanged)
    /// Whether the window stays centred, so that it can be resized but not moved.
    Q_PROPERTY(bool centeredOnly MEMBER m_centeredOnly NOTIFY viewChanged)
    Q_PROPERTY(bool hFlip MEMBER m_hFlip NOTIFY viewChanged)
    Q_PROPERTY(bool vFlip MEMBER m_vFlip NOTIFY viewChanged)

    /// Whether the window is in an area that is only a part of the array: `fullSize` is the size of the array,
    /// `subWindowPosition` the position of the area in it, and `window` is relative to the area's corner.
    Q_PROPERTY(bool isSubWindow MEMBER m_isSubWindow NOTIFY viewChanged)
    Q_PROPERTY(QSize fullSize MEMBER m_fullSize NOTIFY viewChanged)
    Q_PROPERTY(QPoint subWindowPosition MEMBER m_subWindowPosition NOTIFY viewChanged)

    /// The drawn rectangles of array, area and window, in the control's coordinates.
    Q_PROPERTY(QRectF arrayFrame READ arrayFrame NOTIFY viewChanged)
    Q_PROPERTY(QRectF areaFrame READ areaFrame NOTIFY viewChanged)
    Q_PROPERTY(QRectF windowFrame READ windowFrame NOTIFY viewChanged)

public:
    explicit WindowEditor(QQuickItem *parent = nullptr);

    QRect window() const { return m_window; }
    void setWindow(const QRect &window);
    QRectF arrayFrame() const;
    QRectF areaFrame() const;
    QRectF windowFrame() const;

signals:
    void windowChanged();
    void viewChanged();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    /// The part of the window that the pointer drags, in one direction.
    enum class Grip { None, Low, Inside, High };
    struct Grips {
        Grip x = Grip::None;
        Grip y = Grip::None;

        bool any() const { return x != Grip::None && y != Grip::None; }
        bool inside() const { return x == Grip::Inside && y == Grip::Inside; }
    };
    /// Position, size and limits of a window in one direction.
    struct Span;
    struct Drag {
        Grips grips;
        QPointF from;
        QRect window;
    };

    RasterView view() const;
    QRect area() const;
    Span horizontal(const QRect &window) const;
    Span vertical(const QRect &window) const;
    Grips gripsAt(const QPointF &position) const;
    void dragTo(const QPointF &position);
    void step(int dx, int dy, bool sizing);

    QRect m_window;
    QSize m_minSize{1, 1};
    QSize m_maxSize{0, 0};
    QSize m_fullSize{0, 0};
    QPoint m_increment{1, 1};
    QPoint m_subWindowPosition;
    bool m_centeredOnly = false;
    bool m_hFlip = false;
    bool m_vFlip = false;
    bool m_isSubWindow = false;
    std::optional<Drag> m_drag;
};

} // namespace hlx::cam::ui
