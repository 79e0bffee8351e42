#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

namespace emulator
{
struct Frame;
}

// The files that the desk writes. A file appears only when it is complete. Each function returns an empty text, or why
// the file could not be written. Any thread.

/// The filters of a file dialog for frames: PNG, and TIFF if Qt can write it.
QStringList frameNameFilters();

/// Writes the counts of a frame as shades of grey of 16 bits, unchanged: 0 to 16383. `file` ends with ".png", ".tif" or
/// ".tiff". PNG files have a description with number, preset and time of the frame.
QString saveFrame(const emulator::Frame &frame, const QString &file);

/// Writes a picture in the format of the suffix.
QString savePicture(const QImage &picture, const QString &file);

QString saveText(const QByteArray &text, const QString &file);
