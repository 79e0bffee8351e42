#include "standalone/desk/VideoView.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <memory>
#include <utility>

VideoView::VideoView(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    connect(this, &QQuickItem::smoothChanged, this, &QQuickItem::update);
    // The base class has taken a parent before itemChange() was this one's.
    watch(window());
}

void VideoView::setImage(const QImage &image)
{
    if (image.cacheKey() == m_image.cacheKey())
        return;
    m_image = image;
    m_imageIsNew = true;
    update();
    emit imageChanged();
}

void VideoView::setStretched(bool stretched)
{
    if (stretched == m_stretched)
        return;
    m_stretched = stretched;
    update();
    emit stretchedChanged();
}

QRectF VideoView::imageRect() const
{
    if (m_image.isNull())
        return {};
    if (m_stretched)
        return boundingRect();
    QRectF rect(QPointF(), QSizeF(m_image.size()).scaled(size(), Qt::KeepAspectRatio));
    rect.moveCenter(boundingRect().center());
    return rect;
}

QPointF VideoView::onImage(const QPointF &point) const
{
    const QRectF rect = imageRect();
    if (rect.isEmpty())
        return {-1, -1};
    return {(point.x() - rect.x()) / rect.width(), (point.y() - rect.y()) / rect.height()};
}

QSGNode *VideoView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    const QRectF rect = imageRect();
    if (rect.isEmpty()) {
        delete node;
        return nullptr;
    }
    auto *imageNode = static_cast<QSGImageNode *>(node);
    if (!imageNode) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
        m_imageIsNew = true;
    }
    if (std::exchange(m_imageIsNew, false)) {
        imageNode->setTexture(window()->createTextureFromImage(m_image, QQuickWindow::TextureIsOpaque));
        imageNode->setSourceRect(QRectF(m_image.rect()));
    }
    imageNode->setFiltering(smooth() ? QSGTexture::Linear : QSGTexture::Nearest);
    imageNode->setRect(rect);
    return imageNode;
}

void VideoView::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange)
        watch(data.window);
    else if (change == ItemVisibleHasChanged)
        updateLive();
}

void VideoView::watch(QQuickWindow *window)
{
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = window;
    if (m_window)
        m_window->installEventFilter(this);
    updateLive();
}

void VideoView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    update();
}

bool VideoView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose)
        updateLive();
    return QQuickItem::eventFilter(watched, event);
}

void VideoView::updateLive()
{
    const bool live = isVisible() && m_window && m_window->isExposed();
    if (live == m_live)
        return;
    m_live = live;
    emit liveChanged();
}
