#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <algorithm>

namespace hlx::cam::ui
{

/// Maps a raster of pixels into a control: scaled to fit, centred, and mirrored by the flips.
class RasterView
{
public:
    RasterView(const QSizeF &raster, const QRectF &space, bool hFlip = false, bool vFlip = false)
        : m_raster(raster), m_hFlip(hFlip), m_vFlip(vFlip)
    {
        if (raster.isEmpty() || space.isEmpty())
            return;
        m_scale = std::min(space.width() / raster.width(), space.height() / raster.height());
        m_frame.setSize(raster * m_scale);
        m_frame.moveCenter(space.center());
    }

    /// The whole raster in the control's coordinates; empty if the raster or the control is empty.
    QRectF frame() const { return m_frame; }

    /// Units of the control for each pixel; 0 if the raster or the control is empty.
    qreal scale() const { return m_scale; }

    QRectF toControl(const QRectF &pixels) const
    {
        const qreal left = m_hFlip ? m_raster.width() - pixels.right() : pixels.left();
        const qreal top = m_vFlip ? m_raster.height() - pixels.bottom() : pixels.top();
        return {m_frame.topLeft() + QPointF(left, top) * m_scale, pixels.size() * m_scale};
    }

    QPointF toPixels(const QPointF &point) const
    {
        if (m_scale <= 0)
            return {};
        const QPointF pixel = (point - m_frame.topLeft()) / m_scale;
        return {m_hFlip ? m_raster.width() - pixel.x() : pixel.x(),
                m_vFlip ? m_raster.height() - pixel.y() : pixel.y()};
    }

private:
    QSizeF m_raster;
    QRectF m_frame;
    qreal m_scale = 0;
    bool m_hFlip;
    bool m_vFlip;
};

} // namespace hlx::cam::ui
