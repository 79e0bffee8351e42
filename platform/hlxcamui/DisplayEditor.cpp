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

/// In one direction, the limits of the offsets with which the image is inside the raster or covers it.
struct Limits {
    Limits(int display, qreal image, int step)
    {
        const double room = display - std::round(image);
        least = snapped(std::min(0.0, room), static_cast<int>(std::min(0.0, room)), 0, step);
        most = snapped(std::max(0.0, room), 0, static_cast<int>(std::max(0.0, room)), step);
    }

    bool accepts(int offset, int step) const
    {
        return offset >= least && offset <= most && offset % std::max(step, 1) == 0;
    }

    int least;
    int most;
};

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

QPoint DisplayEditor::offsetMin() const
{
    return {Limits(m_displaySize.width(), imageSize().width(), m_increment.x()).least,
            Limits(m_displaySize.height(), imageSize().height(), m_increment.y()).least};
}

QPoint DisplayEditor::offsetMax() const
{
    return {Limits(m_displaySize.width(), imageSize().width(), m_increment.x()).most,
            Limits(m_displaySize.height(), imageSize().height(), m_increment.y()).most};
}

bool DisplayEditor::isValid() const
{
    const Limits x(m_displaySize.width(), imageSize().width(), m_increment.x());
    const Limits y(m_displaySize.height(), imageSize().height(), m_increment.y());
    return m_offsetType != Free
        || (x.accepts(m_offset.x(), m_increment.x()) && y.accepts(m_offset.y(), m_increment.y()));
}

QRectF DisplayEditor::displayFrame() const { return view().frame(); }

QRectF DisplayEditor::imageFrame() const { return view().toControl({imagePosition(), imageSize()}); }

RasterView DisplayEditor::view() const
{
    const qreal dx = width() * marginShare;
    const qreal dy = height() * marginShare;
    return {m_displaySize, boundingRect().adjusted(dx, dy, -dx, -dy)};
}

QSizeF DisplayEditor::imageSize() const
{
    if (m_window.isEmpty())
        return {0, 0};
    const QSizeF size = m_window.size();
    return m_zoom > 0 ? size * m_zoom : size.scaled(m_displaySize, Qt::KeepAspectRatio);
}

QPointF DisplayEditor::imagePosition() const
{
    const QSizeF size = imageSize();
    if (m_offsetType == Free)
        return m_offset;
    if (m_offsetType == Centered || m_window.isEmpty())
        return {(m_displaySize.width() - size.width()) / 2, (m_displaySize.height() - size.height()) / 2};
    // The image on the raster is mirrored by the flips.
    const int left = m_hFlip ? m_fpaSize.width() - m_window.x() - m_window.width() : m_window.x();
    const int top = m_vFlip ? m_fpaSize.height() - m_window.y() - m_window.height() : m_window.y();
    return QPointF(left, top) * (size.width() / m_window.width());
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
    if (m_drag)
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
