#pragma once

#include "standalone/desk/FileSaver.h"
#include "standalone/desk/FrameThread.h"
#include "standalone/desk/StatisticsLog.h"

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QStringList>
#include <QTimer>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

class StandaloneModel;

/// The card "Picture": what the camera sees now, with its statistics. GUI thread only; pictures and statistics are made
/// on a FrameThread, which runs only while `shown` is true and the camera is connected.
///
/// It only reads the camera, past the gate and the plug-in. Texts and histogram change at most five times a second, so
/// that they can be read, and with each change of the size of the picture.
///
/// The header is longer than 150 lines: each value of the card is a property of one place in it, and the getters only
/// format values of the same frame.
class PictureModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")

    /// Whether the picture can be seen. The card sets it.
    Q_PROPERTY(bool shown READ shown WRITE setShown NOTIFY shownChanged FINAL)
    Q_PROPERTY(View view READ view WRITE setView NOTIFY viewChanged FINAL)
    /// The choices of the preset: "Of the video output", and each preset that the camera sequences. Only the first one
    /// while the camera sequences a single preset.
    Q_PROPERTY(QStringList presets READ presets NOTIFY presetsChanged FINAL)
    Q_PROPERTY(int presetIndex READ presetIndex WRITE setPresetIndex NOTIFY presetIndexChanged FINAL)

    /// A QImage, for which QML has no type, as the histogram.
    Q_PROPERTY(QVariant image READ imageValue NOTIFY imageChanged FINAL)
    /// Why there is no image; empty if there is one.
    Q_PROPERTY(QString message READ message NOTIFY imageChanged FINAL)

    // Texts of the frame on show, empty if there is none. Noise and counts: see FrameStatistics.
    Q_PROPERTY(QString frame READ frame NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString preset READ preset NOTIFY valuesChanged FINAL)
    /// The camera's frames of all presets per second.
    Q_PROPERTY(QString rate READ rate NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString mean READ mean NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString spatialNoise READ spatialNoise NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString temporalNoise READ temporalNoise NOTIFY valuesChanged FINAL)

    Q_PROPERTY(QVariant histogram READ histogramValue NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString lowest READ lowest NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString highest READ highest NOTIFY valuesChanged FINAL)
    /// The limits of the gain control on the histogram, from 0 at its left to 1 at its right end. They may be outside
    /// of this range. See MeasuredFrame.
    Q_PROPERTY(double black READ black NOTIFY valuesChanged FINAL)
    Q_PROPERTY(double white READ white NOTIFY valuesChanged FINAL)
    Q_PROPERTY(QString gainLimits READ gainLimits NOTIFY valuesChanged FINAL)

    /// The pixel under the pointer and its count, empty if there is none.
    Q_PROPERTY(QString pixel READ pixel NOTIFY pixelChanged FINAL)

    /// Whether there is a frame to save, and rows of statistics.
    Q_PROPERTY(bool hasFrame READ hasFrame NOTIFY valuesChanged FINAL)
    Q_PROPERTY(bool hasStatistics READ hasStatistics NOTIFY valuesChanged FINAL)
    Q_PROPERTY(FileSaver *saver READ saver CONSTANT FINAL)

public:
    enum View { Raw = FrameOrder::Raw, Corrected = FrameOrder::Corrected, Video = FrameOrder::Video };
    Q_ENUM(View)

    /// `standalone` must outlive the model.
    explicit PictureModel(StandaloneModel &standalone, QObject *parent = nullptr);

    bool shown() const { return m_shown; }
    void setShown(bool shown);
    View view() const { return static_cast<View>(m_order.view); }
    void setView(View view);
    const QStringList &presets() const { return m_presetNames; }
    int presetIndex() const;
    /// An index without a preset is passed over.
    void setPresetIndex(int index);

    const QImage &image() const { return m_image; }
    QVariant imageValue() const { return m_image; }
    const QString &message() const { return m_message; }

    QString frame() const;
    QString preset() const;
    QString rate() const;
    QString mean() const;
    QString spatialNoise() const;
    QString temporalNoise() const;
    QImage histogram() const { return m_values ? m_values->measured->histogram : QImage(); }
    QVariant histogramValue() const { return histogram(); }
    QString lowest() const;
    QString highest() const;
    double black() const;
    double white() const;
    QString gainLimits() const;
    const QString &pixel() const { return m_pixel; }

    bool hasFrame() const { return m_values != nullptr; }
    bool hasStatistics() const { return !m_log.rows().empty(); }
    FileSaver *saver() { return &m_saver; }

    /// The pointer is over a point of the image: from 0, 0 at its top left corner to 1, 1. Points outside of it have no
    /// pixel.
    Q_INVOKABLE void pointAt(const QPointF &point);
    Q_INVOKABLE void pointAway();

    /// Ask for a file and write it. The frame is the one that was on show at the call, with its counts, and the picture
    /// as it was shown.
    Q_INVOKABLE void saveFrame();
    Q_INVOKABLE void savePicture();
    /// The statistics of the frames that were on show during the last minute. If there are none, only `hasStatistics`
    /// becomes false.
    Q_INVOKABLE void saveStatistics();

    const FrameThread &frames() const { return m_frames; }

signals:
    void shownChanged();
    void viewChanged();
    void presetsChanged();
    void presetIndexChanged();
    void imageChanged();
    void valuesChanged();
    void pixelChanged();

private:
    using Shown = std::shared_ptr<const ShownFrame>;

    void takeCamera();
    void updateRunning();
    void clear();
    void show(const Shown &shown);
    void log(const MeasuredFrame &measured);
    void setImage(const QImage &image, const QString &message);
    void publishValues();
    void updatePresets(const std::vector<int> &presets);
    void updatePixel();
    double onHistogram(int count) const;

    StandaloneModel &m_standalone;
    bool m_shown = false;
    FrameOrder m_order;
    std::vector<int> m_presets; ///< The choices after the first one.
    QStringList m_presetNames;
    QImage m_image;
    QString m_message;
    Shown m_newest; ///< Null unless a frame is on show.
    Shown m_values; ///< The frame whose values are on show.
    QTimer m_pause; ///< Runs while values do not change.
    StatisticsLog m_log;
    std::optional<QPointF> m_pointer;
    QString m_pixel;
    FileSaver m_saver;
    FrameThread m_frames;
};
