#include "correction/NucInfoModel.h"

#include "common/conversions.h"
#include "common/formatting.h"
#include "common/reading.h"
#include "correction/biasKind.h"

#include <QFile>
#include <QUrl>

#include "zvt/zvtsdk.h"

namespace
{

QString decimals(double number, int count) { return QStringLiteral("%1").arg(number, 0, 'f', count); }

template <size_t Size> QString textOf(const char (&field)[Size]) { return fromBoundedUtf8(field, Size); }

} // namespace

// NOLINTNEXTLINE(google-runtime-int)
NucInfoModel::NucInfoModel(uint64_t handle, const char *name, unsigned int size, unsigned long time, QObject *parent)
    : QAbstractListModel(parent)
{
    m_read.run([handle, file = File{name, size, time}](const CameraAccess &) { return Rows::read(handle, file); });
}

// The read

NucInfoModel::Rows NucInfoModel::Rows::read(uint64_t handle, File file)
{
    const char *name = file.name.constData();
    zvtSNUCInfo info{};
    double milliseconds = 0.0;
    double hertz = 0.0;
    if (file.size == 0 && file.time100ns == 0 && zvtGetNUCFileInfo(handle, name, &file.size, &file.time100ns) != 0)
        return {};
    if (zvtQueryNUCInfo(handle, name, &info) != 0
        || zvtClocksToMilliseconds(handle, info.integrationWidth, &milliseconds) != 0
        || zvtClocksToHertz(handle, info.frameWidth, &hertz) != 0)
        return {};
    Rows rows;
    rows.appendFile(file);
    rows.appendFrame(info, milliseconds, hertz);
    rows.appendDetector(info);
    rows.appendProcess(info);
    rows.appendBadPixels(info);
    return rows;
}

void NucInfoModel::Rows::appendFile(const File &file)
{
    //: Row of the description of a correction, as are the following
    append({tr("Name"), QString::fromUtf8(file.name)});
    append({tr("Size"), sizeText(file.size)});
    append({tr("Date"), dateTimeOfFileTime(file.time100ns).toString(Qt::TextDate)});
}

void NucInfoModel::Rows::appendFrame(const zvtSNUCInfo &info, double milliseconds, double hertz)
{
    append({tr("Camera Model"), textOf(info.cameraModel)});
    append({tr("Camera Serial"), textOf(info.cameraSerial)});
    append({tr("Integration Time"), QStringLiteral("%1 ms").arg(decimals(milliseconds, 6))});
    append({tr("Color"), info.color == 0 ? QStringLiteral("P on N") : QStringLiteral("N on P")});
    append({tr("Frame Rate"), QStringLiteral("%1 Hz").arg(decimals(hertz, 2))});
    append({tr("Window"), QStringLiteral("%1x%2 (%3,%4)").arg(info.width).arg(info.height).arg(info.x).arg(info.y)});
    append({tr("Invert"), truth(info.invert)});
    append({tr("Revert"), truth(info.revert)});
    // This row shows the frame sync mode.
    append({tr("Readout Mode"),
            QStringLiteral("Frame Sync Starts ") + QString::fromUtf8(zvtFrameSyncModeText(info.frameSyncMode))});
    append({tr("Filter ID"), QString::number(info.filterID)});
}

void NucInfoModel::Rows::appendDetector(const zvtSNUCInfo &info)
{
    if (info.biasKind == twoBiases) {
        append({tr("Detector Bias (P on N)"), decimals(info.detectorBias, 2)});
        append({tr("Detector Bias (N on P)"), decimals(info.secondDetectorBias, 2)});
    } else {
        append({tr("Detector Bias"), decimals(info.detectorBias, 2)});
    }
    append({tr("FPA Gain Level"), QString::number(info.gainLevel)});
    append({tr("Digital Gain"), decimals(info.digitalGain, 3)});
    append({tr("Digital Offset"), decimals(info.digitalOffset, 1)});
    // This row shows the digital offset too.
    append({tr("Analog Offset"), decimals(info.digitalOffset, 3)});
    append({tr("Skimming Enabled"), truth(info.skimmingEnabled)});
    append({tr("Skimming Voltage"), decimals(info.skimmingVoltage, 3)});
}

void NucInfoModel::Rows::appendProcess(const zvtSNUCInfo &info)
{
    append({tr("NUC Type"), QString::fromUtf8(zvtNUCTypeText(info.nucType))});
    append({tr("NUC Source"), QString::fromUtf8(zvtNUCSourceText(info.nucSource))});
    append({tr("Frames To Average"), QString::number(info.numFrames)});
    append({tr("Detect Bad Pixels"), truth(info.detectBadPixels)});
    append({tr("A/D Min"), QString::number(info.adMinimum)});
    append({tr("A/D Max"), QString::number(info.adMaximum)});
    append({tr("Gain Min"), decimals(info.gainMinimum, 2)});
    append({tr("Gain Max"), decimals(info.gainMaximum, 2)});
    append({tr("Detect Twinkling Pixels"), truth(info.detectTwinklers)});
    append({tr("Twinkler Frames To Collect"), QString::number(info.twinklerFrames)});
    append({tr("Twinkler Delta"), QString::number(info.twinklerDelta)});
}

void NucInfoModel::Rows::appendBadPixels(const zvtSNUCInfo &info)
{
    append({tr("Total Bad Pixels"), QString::number(info.totalBadPixels)});
    append({tr("Factory Bad Pixels"), QString::number(info.factoryBadPixels)});
    append({tr("New Bad Pixels"), QString::number(info.newBadPixels)});
    append({tr("Twinkling Pixels"), QString::number(info.twinklingPixels)});
    append({tr("Pixels Above Gain Max"), QString::number(info.aboveGainMaximum)});
    append({tr("Pixels Below Gain Min"), QString::number(info.belowGainMinimum)});
    // The source's parenthesis is not closed, in these four rows.
    append({tr("Pixels Above A/D Max (Source 1"), QString::number(info.aboveAdMaximumSource1)});
    append({tr("Pixels Below A/D Min (Source 1"), QString::number(info.belowAdMinimumSource1)});
    append({tr("Pixels Above A/D Max (Source 2"), QString::number(info.aboveAdMaximumSource2)});
    append({tr("Pixels Below A/D Min (Source 2"), QString::number(info.belowAdMinimumSource2)});
}

QString NucInfoModel::Rows::truth(bool value) { return value ? tr("True") : tr("False"); }

void NucInfoModel::finishedWatcher()
{
    const Rows rows = m_read.result();
    if (!rows.isEmpty()) {
        m_status = true;
        beginInsertRows({}, 0, static_cast<int>(rows.size()) - 1);
        m_rows = rows;
        endInsertRows();
    }
    m_read.finish();
}

// The list

int NucInfoModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant NucInfoModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= rowCount())
        return {};
    const auto &[name, value] = m_rows.at(index.row());
    return role == Name ? name : value;
}

QHash<int, QByteArray> NucInfoModel::roleNames() const { return {{Name, "name"}, {Value, "value"}}; }

// The file

bool NucInfoModel::save(const QString &url)
{
    QFile file(QUrl(url).toLocalFile());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    for (const auto &[name, value] : m_rows)
        file.write(QStringLiteral("%1: %2\n").arg(name, value).toUtf8());
    return true;
}
