#include "standalone/desk/PictureModel.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/pictureFiles.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace
{

using namespace std::chrono_literals;

constexpr auto valuesPause = 200ms;

const char *nameOf(FrameOrder::View view)
{
    switch (view) {
    case FrameOrder::Raw:
        return "raw";
    case FrameOrder::Corrected:
        return "corrected";
    case FrameOrder::Video:
        return "video";
    }
    return "";
}

QString counts(double value, int decimals) { return QString::number(value, 'f', decimals); }

} // namespace

PictureModel::PictureModel(StandaloneModel &standalone, QObject *parent) : QObject(parent), m_standalone(standalone)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(valuesPause);
    connect(&m_pause, &QTimer::timeout, this, &PictureModel::publishValues);
    connect(&m_frames, &FrameThread::made, this, &PictureModel::show);
    connect(&standalone, &StandaloneModel::cameraChanged, this, &PictureModel::takeCamera);
    connect(&standalone, &StandaloneModel::connectedChanged, this, &PictureModel::updateRunning);
    takeCamera();
}

void PictureModel::takeCamera()
{
    m_order.camera = m_standalone.camera().shared_from_this();
    // Also forgets the choice of a preset.
    updatePresets({});
    m_log = {};
    emit valuesChanged(); // For hasStatistics: without frames nothing else changes.
    m_frames.setOrder(m_order);
    updateRunning();
}

void PictureModel::setShown(bool shown)
{
    if (shown == m_shown)
        return;
    m_shown = shown;
    updateRunning();
    emit shownChanged();
}

void PictureModel::updateRunning()
{
    m_frames.setRunning(m_shown && m_standalone.connected());
    clear();
}

/// Shows no frame, until the next one comes.
void PictureModel::clear()
{
    setImage({}, m_standalone.connected() ? tr("No picture") : tr("Not connected"));
    m_newest.reset();
    publishValues();
}

void PictureModel::setView(View view)
{
    if (view == this->view())
        return;
    m_order.view = static_cast<FrameOrder::View>(view);
    m_frames.setOrder(m_order);
    emit viewChanged();
}

int PictureModel::presetIndex() const
{
    if (!m_order.preset)
        return 0;
    return static_cast<int>(std::ranges::find(m_presets, *m_order.preset) - m_presets.begin()) + 1;
}

void PictureModel::setPresetIndex(int index)
{
    if (index == presetIndex() || index < 0 || index >= m_presetNames.size())
        return;
    m_order.preset = index == 0 ? std::nullopt : std::optional(m_presets[static_cast<size_t>(index - 1)]);
    m_frames.setOrder(m_order);
    emit presetIndexChanged();
}

void PictureModel::updatePresets(const std::vector<int> &presets)
{
    const std::vector<int> choices = presets.size() > 1 ? presets : std::vector<int>();
    if (choices == m_presets && !m_presetNames.isEmpty())
        return;
    m_presets = choices;
    //: A choice of the preset that is shown
    m_presetNames = {tr("Of the video output")};
    for (const int preset : choices)
        //: A choice of the preset that is shown; %1 is its number
        m_presetNames << tr("Preset %1").arg(preset);
    if (m_order.preset && std::ranges::find(m_presets, *m_order.preset) == m_presets.end()) {
        m_order.preset.reset();
        m_frames.setOrder(m_order);
    }
    emit presetsChanged();
    emit presetIndexChanged();
}

void PictureModel::show(const Shown &shown)
{
    updatePresets(shown->presets);
    if (shown->state != ShownFrame::Ready) {
        setImage({},
                 shown->state == ShownFrame::TooLarge ? tr("The window is too large for frames") : tr("No picture"));
        m_newest.reset();
        publishValues();
        return;
    }
    if (!m_newest || m_newest->measured != shown->measured)
        log(*shown->measured);
    m_newest = shown;
    setImage(shown->picture, {});
    // The pixel under the pointer is one of the picture on show.
    if (!m_pause.isActive() || m_values->picture.size() != shown->picture.size())
        publishValues();
}

void PictureModel::log(const MeasuredFrame &measured)
{
    const FrameStatistics &statistics = measured.statistics;
    m_log.add({measured.frame.start.microseconds, measured.frame.start.number, measured.frame.start.preset,
               nameOf(m_order.view), statistics.mean, statistics.spatialNoise, statistics.temporalNoise,
               statistics.lowest, statistics.highest});
}

void PictureModel::setImage(const QImage &image, const QString &message)
{
    if (image.cacheKey() == m_image.cacheKey() && message == m_message)
        return;
    m_image = image;
    m_message = message;
    emit imageChanged();
}

/// Shows the values of the newest frame, and then no others during the pause.
void PictureModel::publishValues()
{
    if (m_values == m_newest)
        return;
    m_values = m_newest;
    if (m_values)
        m_pause.start();
    else
        m_pause.stop();
    emit valuesChanged();
    updatePixel();
}

QString PictureModel::frame() const
{
    return m_values ? QString::number(m_values->measured->frame.start.number) : QString();
}

QString PictureModel::preset() const
{
    return m_values ? QString::number(m_values->measured->frame.start.preset) : QString();
}

QString PictureModel::rate() const
{
    return m_values ? tr("%1 Hz").arg(QString::number(m_values->rate, 'f', 2)) : QString();
}

QString PictureModel::mean() const { return m_values ? counts(m_values->measured->statistics.mean, 1) : QString(); }

QString PictureModel::spatialNoise() const
{
    return m_values ? counts(m_values->measured->statistics.spatialNoise, 1) : QString();
}

QString PictureModel::temporalNoise() const
{
    const auto noise = m_values ? m_values->measured->statistics.temporalNoise : std::nullopt;
    return noise ? counts(*noise, 2) : QString();
}

QString PictureModel::lowest() const
{
    return m_values ? QString::number(m_values->measured->statistics.lowest) : QString();
}

QString PictureModel::highest() const
{
    return m_values ? QString::number(m_values->measured->statistics.highest) : QString();
}

double PictureModel::onHistogram(int count) const
{
    if (!m_values)
        return 0;
    const FrameStatistics &statistics = m_values->measured->statistics;
    return (count - statistics.lowest) / (statistics.highest - statistics.lowest + 1.0);
}

double PictureModel::black() const { return m_values ? onHistogram(m_values->measured->gain.black) : 0; }

double PictureModel::white() const { return m_values ? onHistogram(m_values->measured->gain.white + 1) : 1; }

QString PictureModel::gainLimits() const
{
    if (!m_values)
        return {};
    const auto &gain = m_values->measured->gain;
    //: Two counts
    return tr("%1 to %2").arg(gain.black).arg(gain.white);
}

void PictureModel::pointAt(const QPointF &point)
{
    m_pointer = point;
    updatePixel();
}

void PictureModel::pointAway()
{
    m_pointer.reset();
    updatePixel();
}

void PictureModel::updatePixel()
{
    QString text;
    if (m_values && m_pointer) {
        const emulator::Frame &frame = m_values->measured->frame;
        const QSizeF picture = m_values->picture.size();
        const QRectF &place = m_values->place;
        const double x = (m_pointer->x() * picture.width() - place.x()) / place.width() * frame.size.width;
        const double y = (m_pointer->y() * picture.height() - place.y()) / place.height() * frame.size.height;
        const bool inside = x >= 0 && y >= 0 && x < frame.size.width && y < frame.size.height;
        // Points beside the picture have no pixel, also if the frame is larger than the raster.
        if (inside && QRectF(0, 0, 1, 1).contains(*m_pointer)) {
            const int column = static_cast<int>(x);
            const int row = static_cast<int>(y);
            const auto index
                = static_cast<size_t>(row) * static_cast<size_t>(frame.size.width) + static_cast<size_t>(column);
            //: The pixel under the pointer: %1 and %2 are its column and row, %3 its count
            text = tr("column %1, row %2: %3").arg(column).arg(row).arg(frame.counts[index]);
        }
    }
    if (text == m_pixel)
        return;
    m_pixel = text;
    emit pixelChanged();
}

void PictureModel::saveFrame()
{
    if (!m_newest)
        return;
    m_saver.ask(tr("Save Frame"), frameNameFilters(), QStringLiteral("frame"),
                [shown = m_newest](const QString &file) { return ::saveFrame(shown->measured->frame, file); });
}

void PictureModel::savePicture()
{
    if (!m_newest)
        return;
    m_saver.ask(tr("Save View"), {QStringLiteral("PNG (*.png)")}, QStringLiteral("view"),
                [shown = m_newest](const QString &file) { return ::savePicture(shown->picture, file); });
}

void PictureModel::saveStatistics()
{
    m_log.removeOld(emulator::Clock::now() * 1000);
    if (!hasStatistics()) {
        emit valuesChanged();
        return;
    }
    m_saver.ask(tr("Save Statistics"), {QStringLiteral("CSV (*.csv)")}, QStringLiteral("statistics"),
                [log = m_log](const QString &file) { return saveText(log.toCsv(), file); });
}
