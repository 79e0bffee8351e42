#include "video/VideoOutputSettingsModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/setters.h"

#include <array>

#include "zvt/zvtsdk.h"

namespace
{

/// Raster pixels for each pixel of the image, by the camera's number of a zoom factor.
float scaleOf(uint8_t zoomFactor)
{
    static constexpr std::array scales{0.5F, 1.0F, 2.0F, 4.0F, 1.3F, 0.0F};
    return zoomFactor < scales.size() ? scales.at(zoomFactor) : 1.0F;
}

/// The number as the camera gets it. A row outside the list has the value -1, which becomes 255.
uint8_t toZoomFactor(int value) { return static_cast<uint8_t>(value); }

} // namespace

void VideoOutputSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

// The read

void VideoOutputSettingsModel::refresh() { m_refresh.start(&VideoOutputSettingsWatcherResult::read); }

VideoOutputSettingsModel::VideoOutputSettingsWatcherResult
VideoOutputSettingsModel::VideoOutputSettingsWatcherResult::read(const CameraAccess &camera)
{
    VideoOutputSettingsWatcherResult result;
    fetch(result.zoomFactors, zvtGetVideoZoomFactors, camera.handle);
    fetch(result.canChangePosition, zvtGetVideoPositionWritable, camera.handle);
    fetch(result.videoFormat, zvtGetVideoFormat, camera.handle);
    fetch(result.position, zvtGetVideoPosition, camera.handle);
    fetch(result.zoomFactor, zvtGetVideoZoomFactor, camera.handle);
    readPair(result.xOffset, result.yOffset, zvtGetVideoOffset, camera.handle);
    return result;
}

void VideoOutputSettingsModel::finishedWatcher()
{
    const VideoOutputSettingsWatcherResult result = m_refresh.result();
    publishIfChanged(this, result.position, m_position, &Self::selectedVideoOutputPositionIndexChanged);
    publishIfChanged(this, result.canChangePosition, m_canChangePosition, &Self::canChangePositionChanged);
    if (result.zoomFactors.set())
        publishZoomFactors(result.zoomFactors.get());
    if (result.zoomFactor.set()) {
        publishIfChanged(this, result.zoomFactor, m_zoomFactor, &Self::zoomFactorChanged);
        storeOnly(this, m_zoomFactors.findFirstIndexOfValue(m_zoomFactor), m_zoomFactorIndex,
                  &Self::selectedZoomFactorIndexChanged);
    }
    if (result.xOffset.set())
        setVideoOutputOffset({result.xOffset.get(), result.yOffset.get()});
    publishIfChanged(this, result.videoFormat, m_videoFormat, &Self::videoFormatChanged);
    m_refresh.finish();
}

// Signals the selected row after a new list: the box of the page selects its first row when it gets the list.
void VideoOutputSettingsModel::publishZoomFactors(const hlx::TArray<unsigned char> &factors)
{
    StringIntDisplaySanityModel read;
    for (const unsigned char factor : factors)
        read.append(QString::fromUtf8(zvtVideoZoomFactorText(factor)), factor);
    if (read.values() == m_zoomFactors.values())
        return;
    m_zoomFactors.removeAll();
    for (int row = 0; row < read.size(); ++row)
        m_zoomFactors.append(read.stringAt(row), read.valueAt(row));
    emit selectedZoomFactorIndexChanged();
}

// Setters

void VideoOutputSettingsModel::setSelectedVideoOutputPositionIndex(int index)
{
    if (storeOnly(this, index, m_position, &Self::selectedVideoOutputPositionIndexChanged))
        setters::write(this, zvtSetVideoPosition, index);
}

void VideoOutputSettingsModel::setSelectedZoomFactorIndex(int index)
{
    if (!storeOnly(this, index, m_zoomFactorIndex, &Self::selectedZoomFactorIndexChanged))
        return;
    m_zoomFactor = toZoomFactor(m_zoomFactors.valueAt(index));
    setters::write(this, zvtSetVideoZoomFactor, m_zoomFactor);
    emit zoomFactorChanged();
}

void VideoOutputSettingsModel::setVideoOutputXOffset(int x) { setVideoOutputOffset({x, m_offset.y()}); }

void VideoOutputSettingsModel::setVideoOutputYOffset(int y) { setVideoOutputOffset({m_offset.x(), y}); }

void VideoOutputSettingsModel::setVideoOutputOffset(QPoint offset)
{
    const bool xDiffers = storeOnly(this, offset.x(), m_offset.rx(), &Self::videoOutputXOffsetChanged);
    const bool yDiffers = storeOnly(this, offset.y(), m_offset.ry(), &Self::videoOutputYOffsetChanged);
    if (xDiffers || yDiffers)
        emit videoOutputOffsetChanged();
}

void VideoOutputSettingsModel::applyVideoOffsetSettings()
{
    zvtSetVideoOffset(CameraAccess::of(this).handle, static_cast<int16_t>(m_offset.x()),
                      static_cast<int16_t>(m_offset.y()));
}

// Values

QSize VideoOutputSettingsModel::displaySize() const
{
    switch (m_videoFormat) {
    case 1:
    case 4:
    case 102:
        return {640, 512};
    case 2:
        return {800, 600};
    case 5:
    case 10:
    case 12:
        return {1280, 720};
    case 6:
        return {1280, 1024};
    case 7:
    case 8:
    case 9:
    case 11:
    case 13:
        return {1920, 1080};
    default:
        return {640, 480};
    }
}

float VideoOutputSettingsModel::zoomScale() const { return scaleOf(m_zoomFactor); }

float VideoOutputSettingsModel::convertZoomFactorIndexToRealZoomFactor(int index) const
{
    return scaleOf(toZoomFactor(m_zoomFactors.valueAt(index)));
}

bool VideoOutputSettingsModel::videoFormatIsNtsc() const { return m_videoFormat == 0 || m_videoFormat == 3; }
