#pragma once

#include <QPoint>
#include <QQuickItem>
#include <QRect>
#include <QSize>

#include <optional>

namespace hlx::cam::ui
{

class RasterView;

/// Shows an image window on its pixel array and lets the operator move and size it; the QML file of the same name draws
/// it. All rectangles and sizes are in pixels of the array, as the camera counts them; what is seen is mirrored by the
/// flips. GUI thread only.
///
/// Mouse: the inside moves, edges and corners size, Esc takes a drag back. Keys: arrows move, Shift and arrows size, by
/// one increment, with Ctrl by ten. What the operator does always meets limits and increments; what a page assigns to
/// `window` is shown as it is.
class WindowEditor : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QRect window READ window WRITE setWindow NOTIFY windowChanged)
    Q_PROPERTY(QSize minSize MEMBER m_minSize NOTIFY viewChanged)
    /// Also the size of the array, or, for a part of it, of the area in which the window lies.
    Q_PROPERTY(QSize maxSize MEMBER m_maxSize NOTIFY viewChanged)
    /// Steps of size and offset; below 1 counts as 1.
    Q_PROPERTY(QPoint increment MEMBER m_increment NOTIFY viewChanged)
    /// The window stays in the middle: it can be sized, not moved.
    Q_PROPERTY(bool centeredOnly MEMBER m_centeredOnly NOTIFY viewChanged)
    Q_PROPERTY(bool hFlip MEMBER m_hFlip NOTIFY viewChanged)
    Q_PROPERTY(bool vFlip MEMBER m_vFlip NOTIFY viewChanged)

    /// The window lies in an area that is itself a part of the array: `fullSize` is the array, `subWindowPosition` the
    /// area's place on it, and `window` counts from the area's corner.
    Q_PROPERTY(bool isSubWindow MEMBER m_isSubWindow NOTIFY viewChanged)
    Q_PROPERTY(QSize fullSize MEMBER m_fullSize NOTIFY viewChanged)
    Q_PROPERTY(QPoint subWindowPosition MEMBER m_subWindowPosition NOTIFY viewChanged)

    /// Where things are drawn, in the control's coordinates: array, area, window.
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
    /// What the pointer has hold of, in one direction.
    enum class Grip { None, Low, Inside, High };
    struct Grips {
        Grip x = Grip::None;
        Grip y = Grip::None;

        bool any() const { return x != Grip::None && y != Grip::None; }
        bool inside() const { return x == Grip::Inside && y == Grip::Inside; }
    };
    /// A window and its limits in one direction.
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
