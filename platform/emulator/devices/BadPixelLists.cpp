#include "platform/emulator/devices/BadPixelLists.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/fileNames.h"
#include "platform/emulator/image/geometry.h"
#include "platform/emulator/replaceFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <string_view>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

/// How the camera reads frames out.
struct BadPixelLists::View {
    image::Window window;
    image::Window array;
    image::Optics flips;
};

/// A list with a number for each pixel of its window, row by row, nonzero for the bad ones.
struct BadPixelLists::List {
    image::Window window;
    std::vector<uint8_t> isBad = std::vector<uint8_t>(static_cast<size_t>(window.pixels()));
};

namespace
{

const auto factoryFile = u"/flashfs/system/factoryConfig/factory.bpl"_s;

/// Calls `visit` for each pixel that is in both windows: with its index in frames of the first one with these flips,
/// and with its index in a list of the second one.
template <class Visit>
void forEachCommonPixel(const image::Window &frames, const image::Optics &flips, const image::Window &list, Visit visit)
{
    const int right = std::min(frames.x + frames.width, list.x + list.width);
    const int bottom = std::min(frames.y + frames.height, list.y + list.height);
    for (int y = std::max(frames.y, list.y); y < bottom; ++y)
        for (int x = std::max(frames.x, list.x); x < right; ++x)
            visit(placeIn(frames, flips, x, y).indexIn(frames.width),
                  image::Place{x - list.x, y - list.y}.indexIn(list.width));
}

bool isInMask(uint32_t presets, int preset) { return (presets >> preset & 1) != 0; }

/// Whether clients may write a list to this path on the camera: /Temp/NAME.bpl.
bool isExportPath(std::string_view path)
{
    constexpr std::string_view folder = "/Temp/";
    constexpr std::string_view suffix = ".bpl";
    if (!path.starts_with(folder) || !path.ends_with(suffix))
        return false;
    path.remove_prefix(folder.size());
    return path.size() > suffix.size() && isFileName(path.substr(0, path.size() - suffix.size())) && isFileName(path);
}

} // namespace

BadPixelLists::BadPixelLists(Camera &camera, Section &) : Device(camera) { }

/// Called without the camera's lock.
BadPixelLists::View BadPixelLists::view() const
{
    const std::lock_guard lock(camera().mutex());
    const Sensor &sensor = *camera().device<Sensor>();
    const ImageMode &image = *camera().device<ImageMode>();
    const auto &window = sensor.geometry().window();
    const auto &array = sensor.array().size();
    View view{{window.x, window.y, window.width, window.height}, {0, 0, array.width, array.height}, {}};
    view.flips.mirrored = image.reverted();
    view.flips.inverted = image.inverted();
    return view;
}

Status BadPixelLists::exportList(uint8_t preset, const std::string &cameraPath) const
{
    if (!isExportPath(cameraPath) || preset >= camera().device<Sensor>()->numPresets())
        return Refused;
    const Camera::Unlocked unlocked(camera());
    const View view = this->view();
    List list{view.window};
    if (!addBadPixels(1U << preset, view, list))
        return Refused;
    return write(camera().folder() + QString::fromStdString(cameraPath), list);
}

Status BadPixelLists::createFactoryList(uint32_t presets)
{
    return changeFactoryList(presets, [](const View &view) { return List{view.window}; });
}

Status BadPixelLists::appendToFactoryList(uint32_t presets)
{
    return changeFactoryList(presets, [this](const View &view) { return readFactoryList(view); });
}

/// Adds the bad pixels of presets to the list that `start` returns, and makes it the factory's list.
Status BadPixelLists::changeFactoryList(uint32_t presets, const std::function<std::optional<List>(const View &)> &start)
{
    const Camera::Unlocked unlocked(camera());
    const std::lock_guard lock(m_mutex);
    const View view = this->view();
    auto list = start(view);
    return list && addBadPixels(presets, view, *list) ? write(factoryPath(), *list) : Refused;
}

Status BadPixelLists::applyFactoryList(uint32_t presets)
{
    const Camera::Unlocked unlocked(camera());
    const std::lock_guard lock(m_mutex);
    const View view = this->view();
    const auto list = readFactoryList(view);
    if (!list)
        return Refused;
    Status status = Refused;
    for (int preset = 0; preset < maximumPresets; ++preset)
        if (isInMask(presets, preset) && apply(preset, view, *list))
            status = Ok;
    return status;
}

void BadPixelLists::provide(const QString &cameraPath)
{
    if (QDir::cleanPath(u'/' + cameraPath) != factoryFile)
        return;
    const Camera::Unlocked unlocked(camera());
    const std::lock_guard lock(m_mutex);
    writeFirstFactoryList();
}

std::optional<std::vector<uint8_t>> BadPixelLists::changedFactoryList(const image::Window &window,
                                                                      const image::Optics &flips)
{
    const std::lock_guard lock(m_mutex);
    if (!QFile::exists(factoryPath()))
        return std::nullopt;
    std::vector<uint8_t> isBad;
    View view = this->view();
    view.window = window;
    if (const auto list = readFactoryList(view)) {
        isBad.resize(static_cast<size_t>(window.pixels()));
        forEachCommonPixel(window, flips, list->window,
                           [&](size_t inFrame, size_t inList) { isBad[inFrame] = list->isBad[inList]; });
    }
    return isBad;
}

QString BadPixelLists::factoryPath() const { return camera().folder() + factoryFile; }

/// Does nothing if the factory's list exists. Returns false if it cannot be written.
bool BadPixelLists::writeFirstFactoryList() const
{
    if (QFile::exists(factoryPath()))
        return true;
    DetectorArray &array = camera().device<Sensor>()->array();
    const image::Window window{0, 0, array.size().width, array.size().height};
    image::Exposure exposure;
    exposure.window = window;
    exposure.detector = array.mapsFor(window);
    List list{window, image::factoryList(exposure)};
    return write(factoryPath(), list) == Ok;
}

/// Returns the factory's list, nothing if it is damaged or that of a window which cannot be used.
std::optional<BadPixelLists::List> BadPixelLists::readFactoryList(const View &view) const
{
    if (!writeFirstFactoryList())
        return std::nullopt;
    const auto file = hlx::BadPixelFile::load(hlx::fileSystem(), hlx::CString(factoryPath().toUtf8().constData()));
    if (!file)
        return std::nullopt;
    for (const image::Window &window : {view.window, view.array})
        if (file->width == window.width && file->height == window.height && window.hasFrames()) {
            List list{window};
            for (const auto &pixel : file->pixels)
                list.isBad[image::Place{pixel.x, pixel.y}.indexIn(window.width)] = 1;
            return list;
        }
    return std::nullopt;
}

Status BadPixelLists::write(const QString &path, const List &list) const
{
    hlx::BadPixelFile file{static_cast<uint16_t>(list.window.width), static_cast<uint16_t>(list.window.height), {}};
    const auto width = static_cast<size_t>(list.window.width);
    for (size_t i = 0; i < list.isBad.size(); ++i)
        if (list.isBad[i] != 0)
            file.pixels.push_back({static_cast<uint16_t>(i % width), static_cast<uint16_t>(i / width)});
    const bool written = QDir().mkpath(QFileInfo(path).path()) && replaceFile(path, file.bytes());
    return written ? Ok : Refused;
}

/// Adds the bad pixels of the present window to a list. Returns false if none of the presets has a correction.
bool BadPixelLists::addBadPixels(uint32_t presets, const View &view, List &list) const
{
    bool found = false;
    for (int preset = 0; preset < maximumPresets; ++preset) {
        const Table table = isInMask(presets, preset) ? camera().device<Corrections>()->table(preset) : nullptr;
        // The window may have been changed meanwhile.
        if (!table || !table->window.contains(view.window))
            continue;
        found = true;
        const image::CorrectionTable part = table->partFor(view.window, view.flips);
        forEachCommonPixel(view.window, view.flips, list.window, [&](size_t inFrame, size_t inList) {
            if ((part.flags[inFrame] & image::CorrectionTable::Bad) != 0)
                list.isBad[inList] = 1;
        });
    }
    return found;
}

/// Returns false if the preset has no correction.
bool BadPixelLists::apply(int preset, const View &view, const List &list)
{
    Corrections &corrections = *camera().device<Corrections>();
    const Table old = corrections.table(preset);
    if (!old)
        return false;
    auto changed = std::make_shared<image::CorrectionTable>(*old);
    forEachCommonPixel(changed->window, view.flips, list.window, [&](size_t inTable, size_t inList) {
        if (list.isBad[inList] != 0)
            changed->flags[inTable] |= image::CorrectionTable::Bad | image::CorrectionTable::Factory;
    });
    const std::lock_guard lock(camera().mutex());
    if (const auto counts = corrections.replaceFlags(preset, old, std::move(changed)))
        camera().device<CorrectionRun>()->recount(preset, *counts);
    return true;
}

} // namespace emulator
