// zvtsheet FILE: writes a picture with a frame of each pattern (columns) for each built-in profile (rows). Each frame
// is grey between the counts below which 1 % and 99 % of its pixels are.
#include "benchmarks/writeSheet.h"
#include "platform/emulator/control.h"
#include "zvt/zvtsdk.h"

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <vector>

using namespace emulator;

namespace
{

constexpr const char *patterns[] = {"live scene", "round blackbody", "two blackbodies", "area blackbody"};
constexpr double celsius1 = 30;
constexpr double celsius2 = 40;
constexpr QSize cell{320, 256};
constexpr int textHeight = 20;
constexpr int gap = 8;

/// The counts below which 1 % and 99 % of the pixels are.
struct Range {
    int low;
    int high;
};

Range rangeOf(std::vector<uint16_t> counts)
{
    const auto at = [&counts](double share) {
        const auto place = counts.begin() + static_cast<ptrdiff_t>(share * double(counts.size() - 1));
        std::ranges::nth_element(counts, place);
        return int(*place);
    };
    return {at(0.01), at(0.99)};
}

/// The range in levels of grey. A range of one count is grey.
QImage greyImage(const Frame &frame, const Range &range)
{
    const int width = std::max(range.high - range.low, 1);
    QImage image(frame.size.width, frame.size.height, QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const int count = frame.counts[static_cast<size_t>(y * image.width() + x)];
            image.scanLine(y)[x] = static_cast<uchar>(std::clamp((count - range.low) * 255 / width, 0, 255));
        }
    return image;
}

/// A frame of each pattern. Empty if the camera has none.
std::vector<Frame> framesOf(Camera &camera)
{
    const auto set = [&camera](const char *name, const QVariant &value) {
        if (QString why; !camera.otherClient().set(QLatin1String(name), value, &why))
            qFatal("%s", qPrintable(why));
    };
    set("emulator./BlackbodyTemp1", celsius1);
    set("emulator./BlackbodyTemp2", celsius2);
    std::vector<Frame> frames;
    for (size_t pattern = 0; pattern < std::size(patterns); ++pattern) {
        set("emulator./Pattern", int(pattern));
        if (auto frame = camera.newestFrame(0))
            frames.push_back(std::move(*frame));
    }
    return frames;
}

struct Row {
    QString title;
    std::vector<Frame> frames;
};

std::vector<Row> rows()
{
    constexpr int64_t coolDownMilliseconds = 120'000;
    std::vector<Row> all;
    for (const QString &name : Profile::names()) {
        const QTemporaryDir folder;
        Clock::manual();
        const auto camera = Camera::create(name, folder.path());
        camera->connect();
        Clock::advance(coolDownMilliseconds);
        // A camera without a cover or a focus refuses these calls and needs neither.
        zvtSetLensCoverState(camera->handle(), 0);
        zvtAutoFocusFull(camera->handle(), 0);
        std::vector<Frame> frames = framesOf(*camera);
        if (frames.empty()) {
            std::printf("%s has no frames\n", qPrintable(name));
            continue;
        }
        const auto size = frames.front().size;
        all.push_back({QStringLiteral("%1, %2x%3").arg(name).arg(size.width).arg(size.height), std::move(frames)});
    }
    return all;
}

void draw(QPainter &painter, const QPoint &place, const QString &title, const Frame &frame)
{
    const Range range = rangeOf(frame.counts);
    const QImage image = greyImage(frame, range);
    const auto text = QStringLiteral("%1: %2 to %3").arg(title).arg(range.low).arg(range.high);
    painter.drawText(QRect(place, QSize(cell.width(), textHeight)), Qt::AlignVCenter, text);
    QRect target({}, image.size().scaled(cell, Qt::KeepAspectRatio));
    target.moveTopLeft(place + QPoint(0, textHeight));
    painter.drawImage(target, image.scaled(target.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

QImage sheetOf(const std::vector<Row> &rows)
{
    const QSize step(cell.width() + gap, cell.height() + 2 * textHeight + gap);
    const int columns = std::size(patterns);
    QImage sheet(gap + columns * step.width(), gap + int(rows.size()) * step.height(), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    QPoint place(gap, gap);
    for (const Row &row : rows) {
        const auto line
            = QStringLiteral("%1, blackbodies of %2 and %3 °C, counts").arg(row.title).arg(celsius1).arg(celsius2);
        painter.drawText(QRect(place, QSize(sheet.width(), textHeight)), Qt::AlignVCenter, line);
        for (size_t pattern = 0; pattern < row.frames.size(); ++pattern)
            draw(painter, place + QPoint(int(pattern) * step.width(), textHeight), QLatin1String(patterns[pattern]),
                 row.frames[pattern]);
        place.ry() += step.height();
    }
    return sheet;
}

} // namespace

int main(int argc, char *argv[])
{
    return writeSheet(argc, argv, "zvtsheet", [] { return sheetOf(rows()); });
}
