#include "platform/hlxcamui/DisplayEditor.h"

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

/// The margin around the raster as a part of the control's size. The edges of an image larger than the raster are
/// visible there.
constexpr qreal marginShare = 0.08;

QPoint toPoint(const RasterPlacement::Point &point) { return {point.x, point.y}; }

} // namespace

DisplayEditor::DisplayEditor(QQuickItem *parent) : QQuickItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
    connect(this, &DisplayEditor::offsetChanged, this, &DisplayEditor::layoutChanged);
}

void DisplayEditor::setOffset(const QPoint &offset)
{
    if (m_offset == offset)
        return;
    m_offset = offset;
    emit offsetChanged();
}

QPoint DisplayEditor::offsetMin() const { return toPoint(placement().leastOffset(step())); }

QPoint DisplayEditor::offsetMax() const { return toPoint(placement().largestOffset(step())); }

bool DisplayEditor::isValid() const { return m_offsetType != Free || placement().hasValidOffset(step()); }

QRectF DisplayEditor::displayFrame() const { return view().frame(); }

QRectF DisplayEditor::imageFrame() const
{
    const RasterPlacement::Rectangle image = placement().image();
    return view().toControl({image.x, image.y, image.width, image.height});
}

RasterView DisplayEditor::view() const
{
    const qreal dx = width() * marginShare;
    const qreal dy = height() * marginShare;
    return {m_displaySize, boundingRect().adjusted(dx, dy, -dx, -dy)};
}

RasterPlacement DisplayEditor::placement() const
{
    return {
        .raster = {m_displaySize.width(), m_displaySize.height()},
        .array = {m_fpaSize.width(), m_fpaSize.height()},
        .windowPosition = {m_window.x(), m_window.y()},
        .windowSize = {m_window.width(), m_window.height()},
        .mirrored = m_hFlip,
        .inverted = m_vFlip,
        .position = m_offsetType,
        .zoom = m_zoom,
        .offset = {m_offset.x(), m_offset.y()},
    };
}

bool DisplayEditor::canMoveAt(const QPointF &position) const
{
    return m_offsetType == Free && imageFrame().contains(position);
}

void DisplayEditor::moveTo(const QPointF &wanted)
{
    const QPoint least = offsetMin();
    const QPoint most = offsetMax();
    setOffset({snapped(wanted.x(), least.x(), most.x(), m_increment.x()),
               snapped(wanted.y(), least.y(), most.y(), m_increment.y())});
}

void DisplayEditor::mousePressEvent(QMouseEvent *event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    if (!canMoveAt(event->position()))
        return;
    m_drag = Drag{view().toPixels(event->position()), m_offset};
    // Otherwise the page would take the drag and scroll.
    setKeepMouseGrab(true);
}

void DisplayEditor::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag && m_offsetType == Free)
        moveTo(m_drag->offset + view().toPixels(event->position()) - m_drag->from);
}

void DisplayEditor::mouseReleaseEvent(QMouseEvent *event)
{
    mouseMoveEvent(event);
    mouseUngrabEvent();
}

void DisplayEditor::mouseUngrabEvent()
{
    m_drag.reset();
    setKeepMouseGrab(false);
}

void DisplayEditor::hoverMoveEvent(QHoverEvent *event)
{
    if (canMoveAt(event->position()))
        setCursor(Qt::SizeAllCursor);
    else
        unsetCursor();
}

void DisplayEditor::keyPressEvent(QKeyEvent *event)
{
    const int steps = event->modifiers() & Qt::ControlModifier ? 10 : 1;
    const int dx = std::max(m_increment.x(), 1) * steps;
    const int dy = std::max(m_increment.y(), 1) * steps;
    if (event->key() == Qt::Key_Escape && m_drag) {
        setOffset(m_drag->offset);
        return ungrabMouse();
    }
    if (m_offsetType == Free) {
        switch (event->key()) {
        case Qt::Key_Left:
            return moveTo(m_offset - QPoint(dx, 0));
        case Qt::Key_Right:
            return moveTo(m_offset + QPoint(dx, 0));
        case Qt::Key_Up:
            return moveTo(m_offset - QPoint(0, dy));
        case Qt::Key_Down:
            return moveTo(m_offset + QPoint(0, dy));
        default:
            break;
        }
    }
    event->ignore();
}

void DisplayEditor::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        emit layoutChanged();
}

} // namespace hlx::cam::ui
