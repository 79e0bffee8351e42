#pragma once

#include <QImage>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

/// Shows an image in the middle of the item, as large as it fits with its aspect ratio. The property `smooth` of the
/// item selects linear or nearest filtering. It has a single image node, so it works under the software renderer too.
/// GUI thread only.
class VideoView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /// A QImage, for which QML has no type.
    Q_PROPERTY(QVariant image READ imageValue WRITE setImageValue NOTIFY imageChanged FINAL)
    /// Fills the item, without regard to the aspect ratio.
    Q_PROPERTY(bool stretched READ stretched WRITE setStretched NOTIFY stretchedChanged FINAL)
    /// Whether the item is visible and its window is exposed, so that an image can be seen.
    Q_PROPERTY(bool live READ live NOTIFY liveChanged FINAL)

public:
    explicit VideoView(QQuickItem *parent = nullptr);

    const QImage &image() const { return m_image; }
    void setImage(const QImage &image);
    QVariant imageValue() const { return m_image; }
    void setImageValue(const QVariant &image) { setImage(image.value<QImage>()); }
    bool stretched() const { return m_stretched; }
    void setStretched(bool stretched);
    bool live() const { return m_live; }

    /// The place of the image in the item. Empty without an image.
    QRectF imageRect() const;

    /// Returns the point of the image at a point of the item: from 0, 0 at its top left corner to 1, 1. Outside of this
    /// range there is no image; -1, -1 without an image.
    Q_INVOKABLE QPointF onImage(const QPointF &point) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void imageChanged();
    void stretchedChanged();
    void liveChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    void watch(QQuickWindow *window);
    void updateLive();

    QImage m_image;
    bool m_imageIsNew = false; ///< The node does not show it yet.
    bool m_stretched = false;
    bool m_live = false;
    QPointer<QQuickWindow> m_window; ///< Whose events this item watches.
};
