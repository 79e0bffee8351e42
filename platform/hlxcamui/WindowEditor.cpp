#include "platform/hlxcamui/WindowEditor.h"

#include "platform/hlxcamui/RasterView.h"
#include "platform/hlxcamui/snapping.h"

#include <QCursor>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace hlx::cam::ui
{

namespace
{

/// The largest distance from which the pointer can drag an edge, in the control's units.
constexpr qreal gripReach = 7;
/// The margin between the array and the control's edge, so that the edges of a full window can be dragged.
constexpr qreal margin = 4;

Qt::CursorShape sizingCursor(bool horizontal, bool vertical, bool falling)
{
    if (horizontal && vertical)
        return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
    return horizontal ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

} // namespace

struct WindowEditor::Span {
    int start;
    int size;
    int least;
    int most;
    int length;
    int step;
    bool centered;

    int end() const { return start + size; }

    void moveTo(double wanted)
    {
        if (!centered)
            start = snapped(wanted, 0, std::max(0, length - size), step);
    }

    void sizeFromLow(double wanted)
    {
        size = snapped(wanted, least, std::min(most, length - start), step);
        center();
    }

    void sizeFromHigh(double wanted)
    {
        const int high = end();
        size = snapped(wanted, least, std::min(most, high), step);
        start = high - size;
        center();
    }

    void center()
    {
        if (centered)
            start = (length - size) / 2 / step * step;
    }

    /// Applies a drag of a grip by `distance` pixels.
    void pull(Grip grip, double distance)
    {
        if (centered && grip != Grip::Inside) {
            // Both edges move by the distance, so that the dragged one stays under the pointer.
            start = 0;
            sizeFromLow(size + (grip == Grip::High ? 2 : -2) * distance);
        } else if (grip == Grip::Low) {
            sizeFromHigh(size - distance);
        } else if (grip == Grip::High) {
            sizeFromLow(size + distance);
        } else {
            moveTo(start + distance);
        }
    }

    Grip gripAt(double position, double reach) const
    {
        // Half of a small window stays free of grips, so that it can be moved.
        const double inner = std::min(reach, size / 4.0);
        if (position < start - reach || position > end() + reach)
            return Grip::None;
        if (position <= start + inner)
            return Grip::Low;
        return position >= end() - inner ? Grip::High : Grip::Inside;
    }
};

WindowEditor::WindowEditor(QQuickItem *parent) : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
    connect(this, &WindowEditor::windowChanged, this, &WindowEditor::viewChanged);
}

void WindowEditor::setWindow(const QRect &window)
{
    if (m_window == window)
        return;
    m_window = window;
    emit windowChanged();
}

QRectF WindowEditor::arrayFrame() const { return view().frame(); }

QRectF WindowEditor::areaFrame() const { return view().toControl(area()); }

QRectF WindowEditor::windowFrame() const { return view().toControl(m_window.translated(area().topLeft())); }

RasterView WindowEditor::view() const
{
    const QRectF space = boundingRect().adjusted(margin, margin, -margin, -margin);
    return {m_isSubWindow ? m_fullSize : m_maxSize, space, m_hFlip, m_vFlip};
}

QRect WindowEditor::area() const { return {m_isSubWindow ? m_subWindowPosition : QPoint(), m_maxSize}; }

WindowEditor::Span WindowEditor::horizontal(const QRect &window) const
{
    return {window.x(),        window.width(),    m_minSize.width(),
            m_maxSize.width(), m_maxSize.width(), std::max(m_increment.x(), 1),
            m_centeredOnly};
}

WindowEditor::Span WindowEditor::vertical(const QRect &window) const
{
    return {window.y(),         window.height(),    m_minSize.height(),
            m_maxSize.height(), m_maxSize.height(), std::max(m_increment.y(), 1),
            m_centeredOnly};
}

WindowEditor::Grips WindowEditor::gripsAt(const QPointF &position) const
{
    const RasterView raster = view();
    if (raster.scale() <= 0 || m_window.isEmpty())
        return {};
    const QPointF pixel = raster.toPixels(position) - area().topLeft();
    const qreal reach = gripReach / raster.scale();
    const Grips grips{horizontal(m_window).gripAt(pixel.x(), reach), vertical(m_window).gripAt(pixel.y(), reach)};
    return m_centeredOnly && grips.inside() ? Grips{} : grips;
}

void WindowEditor::mousePressEvent(QMouseEvent *event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    const Grips grips = gripsAt(event->position());
    if (!grips.any())
        return;
    m_drag = Drag{grips, view().toPixels(event->position()), m_window};
    // Otherwise the page would take the drag and scroll.
    setKeepMouseGrab(true);
}

void WindowEditor::mouseMoveEvent(QMouseEvent *event) { dragTo(event->position()); }

void WindowEditor::mouseReleaseEvent(QMouseEvent *event)
{
    dragTo(event->position());
    mouseUngrabEvent();
}

void WindowEditor::mouseUngrabEvent()
{
    m_drag.reset();
    setKeepMouseGrab(false);
}

void WindowEditor::dragTo(const QPointF &position)
{
    if (!m_drag)
        return;
    const QPointF distance = view().toPixels(position) - m_drag->from;
    Span x = horizontal(m_drag->window);
    Span y = vertical(m_drag->window);
    // A dragged edge moves only across its direction; movement of the pointer along the edge is ignored.
    if (m_drag->grips.inside() || m_drag->grips.x != Grip::Inside)
        x.pull(m_drag->grips.x, distance.x());
    if (m_drag->grips.inside() || m_drag->grips.y != Grip::Inside)
        y.pull(m_drag->grips.y, distance.y());
    setWindow({x.start, y.start, x.size, y.size});
}

void WindowEditor::hoverMoveEvent(QHoverEvent *event)
{
    const Grips grips = gripsAt(event->position());
    if (!grips.any())
        unsetCursor();
    else if (grips.inside())
        setCursor(Qt::SizeAllCursor);
    else
        setCursor(sizingCursor(grips.x != Grip::Inside, grips.y != Grip::Inside,
                               (grips.x == grips.y) == (m_hFlip == m_vFlip)));
}

void WindowEditor::keyPressEvent(QKeyEvent *event)
{
    const bool sizing = event->modifiers() & Qt::ShiftModifier;
    const int steps = event->modifiers() & Qt::ControlModifier ? 10 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return step(-steps, 0, sizing);
    case Qt::Key_Right:
        return step(steps, 0, sizing);
    case Qt::Key_Up:
        return step(0, -steps, sizing);
    case Qt::Key_Down:
        return step(0, steps, sizing);
    case Qt::Key_Escape:
        if (m_drag) {
            setWindow(m_drag->window);
            return ungrabMouse();
        }
        break;
    default:
        break;
    }
    event->ignore();
}

void WindowEditor::step(int dx, int dy, bool sizing)
{
    Span x = horizontal(m_window);
    Span y = vertical(m_window);
    // Arrow keys move in the direction seen on the screen, so a flip reverses the step. Sizes are not affected by
    // flips.
    const int moveX = (m_hFlip ? -dx : dx) * x.step;
    const int moveY = (m_vFlip ? -dy : dy) * y.step;
    if (dx != 0)
        sizing ? x.sizeFromLow(x.size + dx * x.step) : x.moveTo(x.start + moveX);
    if (dy != 0)
        sizing ? y.sizeFromLow(y.size + dy * y.step) : y.moveTo(y.start + moveY);
    setWindow({x.start, y.start, x.size, y.size});
}

void WindowEditor::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        emit viewChanged();
}

} // namespace hlx::cam::ui
