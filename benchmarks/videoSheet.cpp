// zvtvideosheet FILE: writes a picture with what the video output of the emulated camera `everything` shows with
// different settings.
#include "benchmarks/writeSheet.h"
#include "platform/emulator/control.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "zvt/zvtsdk.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <iterator>
#include <utility>
#include <vector>

using namespace emulator;

namespace
{

using Settings = std::vector<std::pair<const char *, QVariant>>;

struct Cell {
    const char *title;
    Settings settings;
};

constexpr int columns = 3;
constexpr QSize cellSize{640, 480};
constexpr int textHeight = 20;
constexpr int gap = 8;

std::vector<Cell> cells()
{
    const QVariantList region{200, 160, 240, 160};
    const QVariantList small{160, 128, 320, 256};
    Settings texts{{"video.format", 3},
                   {"overlay.textColor", 5},
                   {"overlay.textBackground", 16},
                   {"overlay.showUserField", true},
                   {"overlay.userText", "User text"}};
    for (const char *name :
         {"overlay.showLogo", "overlay.showFocus", "overlay.showDate", "overlay.showIrig", "overlay.showHourMeter",
          "overlay.showFrontPanelTemp", "overlay.showFlag", "overlay.showAirGapTemp", "overlay.showPalette",
          "overlay.showInternalTemp", "overlay.showFov", "overlay.showStateName", "overlay.showZoom",
          "overlay.showLensTemp", "overlay.showChassisTemp"})
        texts.emplace_back(name, true);
    return {
        {"720p, plateau equalisation", {}},
        {"SXGA, detail enhancement, sharpness 7", {{"video.format", 6}, {"agc.method", 1}, {"agc.sharpness", 7}}},
        {"720p, automatic linear, Iron, to fit",
         {{"agc.method", 2}, {"palette.name", "Iron"}, {"video.zoomFactor", 5}, {"video.position", 1}}},
        {"SVGA, manual linear 4500 to 6500, Rainbow, 1.3X, centred",
         {{"video.format", 2},
          {"agc.method", 3},
          {"agc.manualLow", 4500},
          {"agc.manualHigh", 6500},
          {"palette.name", "Rainbow"},
          {"video.zoomFactor", 4},
          {"video.position", 1}}},
        {"PAL, brightness 20, contrast -60", {{"video.format", 4}, {"video.brightness", 20}, {"video.contrast", -60}}},
        {"NTSC, every text, yellow on black", texts},
        {"PAL, gain control by its region, both frames",
         {{"video.format", 4},
          {"agc.region", region},
          {"agc.regionEnabled", true},
          {"overlay.showAgcRoi", true},
          {"autoFocus.showAlways", true}}},
        {"720p, window of 320x256 as on the array, flipped both ways, Fire",
         {{"sensor.window", small}, {"image.reverted", true}, {"image.inverted", true}, {"palette.name", "Fire"}}},
        {"1080p, 2X, centred, Ice",
         {{"video.format", 8}, {"video.zoomFactor", 2}, {"video.position", 1}, {"palette.name", "Ice"}}},
        {"720p, 0.5X, offset 200, 100, Sepia",
         {{"video.zoomFactor", 0},
          {"video.position", 2},
          {"video.offset", QVariantList{200, 100}},
          {"palette.name", "Sepia"}}},
        {"PAL, by fields, temporal filter, Contour",
         {{"video.format", 1}, {"video.updateRate", 1}, {"video.temporalFilter", 1}, {"palette.name", "Contour"}}},
        {"720p, raw, Green", {{"corrections.videoCorrected", false}, {"palette.name", "Green"}}},
    };
}

/// The picture of the output with the settings of a cell.
QImage imageOf(Camera &camera, const Cell &cell)
{
    for (const auto &[name, value] : cell.settings)
        if (QString why; !camera.otherClient().set(QLatin1String(name), value, &why))
            qFatal("%s", qPrintable(why));
    Clock::advance(1000);
    const auto picture = camera.device<VideoOutput>()->render();
    return QImage(picture.rgb.data(), picture.width, picture.height, picture.width * 3, QImage::Format_RGB888).copy();
}

QImage sheet()
{
    constexpr int64_t coolDownMilliseconds = 120'000;
    const QTemporaryDir folder;
    Clock::manual();
    const auto camera = Camera::create(QStringLiteral("everything"), folder.path());
    camera->connect();
    Clock::advance(coolDownMilliseconds);
    zvtAutoFocusFull(camera->handle(), 0);
    zvtVideoOverlayClearMessage(camera->handle());
    const QJsonObject start = camera->snapshot();

    const std::vector<Cell> all = cells();
    const QSize step(cellSize.width() + gap, cellSize.height() + textHeight + gap);
    const int rows = (int(all.size()) + columns - 1) / columns;
    QImage sheet(gap + columns * step.width(), gap + rows * step.height(), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (int number = 0; number < int(all.size()); ++number) {
        const Cell &cell = all[size_t(number)];
        const QPoint place(gap + number % columns * step.width(), gap + number / columns * step.height());
        painter.drawText(QRect(place, QSize(cellSize.width(), textHeight)), Qt::AlignVCenter,
                         QString::fromLatin1(cell.title));
        camera->restore(start);
        const QImage image = imageOf(*camera, cell);
        QRect target({}, image.size().scaled(cellSize, Qt::KeepAspectRatio));
        target.moveTopLeft(place + QPoint(0, textHeight));
        painter.drawImage(target, image.scaled(target.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    return sheet;
}

} // namespace

int main(int argc, char *argv[]) { return writeSheet(argc, argv, "zvtvideosheet", sheet); }
