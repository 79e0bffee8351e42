#include "standalone/desk/pictureFiles.h"

#include "platform/emulator/Frame.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <cstring>

namespace
{

QString notWritten(const QString &file, const QString &why)
{
    return QCoreApplication::translate("pictureFiles", "%1 cannot be written: %2")
        .arg(QDir::toNativeSeparators(file), why);
}

/// The counts of a frame as an image with a copy of them.
QImage imageOf(const emulator::Frame &frame)
{
    QImage image(frame.size.width, frame.size.height, QImage::Format_Grayscale16);
    const auto width = static_cast<size_t>(frame.size.width);
    for (int y = 0; y < frame.size.height; ++y)
        std::memcpy(image.scanLine(y), frame.counts.data() + static_cast<size_t>(y) * width, width * sizeof(uint16_t));
    const auto time = QDateTime::fromMSecsSinceEpoch(frame.start.microseconds / 1000, Qt::UTC);
    image.setText(QStringLiteral("Description"),
                  QStringLiteral("Frame %1, preset %2, %3")
                      .arg(frame.start.number)
                      .arg(frame.start.preset)
                      .arg(time.toString(Qt::ISODateWithMs)));
    return image;
}

} // namespace

QStringList frameNameFilters()
{
    QStringList filters{QStringLiteral("PNG (*.png)")};
    if (QImageWriter::supportedImageFormats().contains("tiff"))
        filters << QStringLiteral("TIFF (*.tiff)");
    return filters;
}

QString saveFrame(const emulator::Frame &frame, const QString &file) { return savePicture(imageOf(frame), file); }

QString savePicture(const QImage &picture, const QString &file)
{
    // The writers of some formats read and seek in their file, which QSaveFile cannot do.
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, QFileInfo(file).suffix().toLatin1());
    if (!writer.write(picture))
        return notWritten(file, writer.errorString());
    return saveText(buffer.data(), file);
}

QString saveText(const QByteArray &text, const QString &file)
{
    QSaveFile output(file);
    if (output.open(QIODevice::WriteOnly) && output.write(text) == text.size() && output.commit())
        return {};
    return notWritten(file, output.errorString());
}
