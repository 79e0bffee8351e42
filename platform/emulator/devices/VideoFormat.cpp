#include "platform/emulator/devices/VideoFormat.h"

#include <algorithm>
#include <array>

namespace emulator
{

namespace
{

struct Row {
    uint8_t number;
    VideoFormat format;
};

constexpr double ntscRate = 30 / 1.001;
constexpr hlx::RasterPlacement::Size ntscRaster{640, 480};
constexpr hlx::RasterPlacement::Size palRaster{640, 512};
constexpr hlx::RasterPlacement::Size hd720{1280, 720};
constexpr hlx::RasterPlacement::Size hd1080{1920, 1080};

constexpr std::array rows{
    Row{0, {ntscRaster, ntscRate, true, true}},
    Row{1, {palRaster, 25, true, true}},
    Row{2, {{800, 600}, 60, false, false}},
    Row{3, {ntscRaster, ntscRate, true, true}},
    Row{4, {palRaster, 25, true, true}},
    Row{5, {hd720, 60, false, false}},
    Row{6, {{1280, 1024}, 60, false, false}},
    Row{7, {hd1080, 24, false, false}},
    Row{8, {hd1080, 30, false, false}},
    Row{9, {hd1080, 60, false, false}},
    Row{10, {hd720, 2 * ntscRate, false, false}},
    Row{11, {hd1080, ntscRate, false, false}},
    Row{12, {hd720, 50, false, false}},
    Row{13, {hd1080, 25, false, false}},
    Row{101, {ntscRaster, ntscRate, false, true}},
    Row{102, {palRaster, 25, false, true}},
};

} // namespace

const QList<double> &VideoFormat::known()
{
    static const QList<double> numbers = [] {
        QList<double> list;
        for (const Row &row : rows)
            list.append(row.number);
        return list;
    }();
    return numbers;
}

VideoFormat VideoFormat::of(uint8_t number)
{
    const auto *const found = std::ranges::find(rows, number, &Row::number);
    return found != rows.end() ? found->format : VideoFormat{ntscRaster, ntscRate, false, false};
}

} // namespace emulator
