#include "platform/emulator/devices/BadPixelLists.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/ImageMode.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/fileNames.h"

#include <array>
#include <map>
#include <string_view>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

/// How the camera reads frames out.
struct BadPixelLists::View {
    image::Window window;
    bool mirrored = false;
    bool inverted = false;

    bool operator==(const View &) const = default;
    image::Optics flips() const
    {
        image::Optics flips;
        flips.mirrored = mirrored;
        flips.inverted = inverted;
        return flips;
    }
};

/// What a call works on.
struct BadPixelLists::Taken {
    using Table = std::shared_ptr<const image::CorrectionTable>;

    View view;
    std::array<Table, maximumPresets> tables; ///< Null for a preset that has no correction or is not asked for.

    bool operator==(const Taken &) const = default;
};

namespace
{

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

/// Returns nothing for a window without frames, which no correction contains. Its list could be too large for memory.
std::optional<image::BadPixelMap> emptyList(const image::Window &window)
{
    return window.hasFrames() ? std::optional(image::BadPixelMap{window}) : std::nullopt;
}

image::Window windowOf(const DetectorArray &array) { return {0, 0, array.size().width, array.size().height}; }

/// Returns what makes the factory's list of a new camera. The camera need not exist any more.
std::function<BadPixelFolder::Map()> factory(const DetectorArray &array)
{
    return [properties = array.properties(), window = windowOf(array)]() -> BadPixelFolder::Map {
        if (!window.hasFrames())
            return nullptr;
        return std::make_shared<const image::BadPixelMap>(
            image::factoryList(image::Detector::findFaults(properties, window), window));
    };
}

} // namespace

BadPixelLists::BadPixelLists(Camera &camera, Section &)
    : Device(camera),
      m_folder(std::make_shared<BadPixelFolder>(camera.folder(), factory(camera.device<Sensor>()->array())))
{
}

/// Called with the camera's lock.
BadPixelLists::View BadPixelLists::view() const
{
    const auto &window = camera().device<Sensor>()->geometry().window();
    const ImageMode &image = *camera().device<ImageMode>();
    return {{window.x, window.y, window.width, window.height}, image.reverted(), image.inverted()};
}

/// Returns nothing if a correction must be read before. Called with the camera's lock.
std::optional<BadPixelLists::Taken> BadPixelLists::present(uint32_t presets) const
{
    Taken taken{view(), {}};
    for (int preset = 0; preset < maximumPresets; ++preset)
        if (isInMask(presets, preset)) {
            auto table = camera().device<Corrections>()->readTable(preset);
            if (!table)
                return std::nullopt;
            taken.tables.at(static_cast<size_t>(preset)) = *std::move(table);
        }
    return taken;
}

/// Called without the camera's lock.
BadPixelLists::Taken BadPixelLists::take(uint32_t presets) const
{
    for (;;) {
        for (int preset = 0; preset < maximumPresets; ++preset)
            if (isInMask(presets, preset))
                camera().device<Corrections>()->table(preset);
        const std::lock_guard lock(camera().mutex());
        // Another correction may have been selected meanwhile.
        if (auto taken = present(presets))
            return *std::move(taken);
    }
}

/// Computes something from the corrections of presets, and puts it into effect. Computes it again if one of them, the
/// window or the flips were changed meanwhile.
Status BadPixelLists::work(uint32_t presets, const std::function<Commit(const Taken &)> &compute)
{
    const Camera::Unlocked unlocked(camera());
    const std::lock_guard changing(m_mutex);
    for (;;) {
        const Taken taken = take(presets);
        const Commit commit = compute(taken);
        const std::lock_guard lock(camera().mutex());
        if (!camera().connected())
            return NotConnected;
        if (present(presets) != taken)
            continue;
        if (!commit)
            return Refused;
        commit();
        return Ok;
    }
}

Status BadPixelLists::exportList(uint8_t preset, const std::string &cameraPath)
{
    if (!isExportPath(cameraPath) || preset >= camera().device<Sensor>()->numPresets())
        return Refused;
    const QString path = QString::fromStdString(cameraPath);
    return work(1U << preset, [&](const Taken &taken) { return merge(taken, emptyList(taken.view.window), path); });
}

Status BadPixelLists::createFactoryList(uint32_t presets)
{
    return work(presets, [this](const Taken &taken) {
        return merge(taken, emptyList(taken.view.window), BadPixelFolder::factoryPath);
    });
}

Status BadPixelLists::appendToFactoryList(uint32_t presets)
{
    return work(presets, [this](const Taken &taken) {
        return merge(taken, readFactoryList(taken.view.window), BadPixelFolder::factoryPath);
    });
}

Status BadPixelLists::applyFactoryList(uint32_t presets)
{
    return work(presets, [this](const Taken &taken) { return apply(taken, readFactoryList(taken.view.window)); });
}

bool BadPixelLists::isFactoryListUsable(const image::Window &window) const
{
    const Camera::Unlocked unlocked(camera());
    return readFactoryList(window).has_value();
}

std::optional<std::vector<uint8_t>> BadPixelLists::factoryList(const image::Window &window,
                                                               const image::Optics &flips) const
{
    const auto list = readFactoryList(window);
    return list ? std::optional(list->forFrames(window, flips)) : std::nullopt;
}

std::optional<QByteArray> BadPixelLists::unwritten(const QString &cameraPath) const
{
    const Camera::Unlocked unlocked(camera());
    const QString path = m_folder->cleanPath(cameraPath);
    if (path == BadPixelFolder::factoryPath)
        provideFactoryList();
    return m_folder->unwritten(path);
}

void BadPixelLists::connectionChanged(bool connected)
{
    if (connected)
        provideFactoryList();
}

std::function<void()> BadPixelLists::filesToWrite()
{
    if (m_folder->isWritten())
        return {};
    return [folder = m_folder] { folder->write(); };
}

/// Asks the camera's thread to write the factory's list of a new camera if the factory's list has no file.
void BadPixelLists::provideFactoryList() const
{
    const bool hasFirstList = windowOf(camera().device<Sensor>()->array()).hasFrames();
    if (!hasFirstList || m_folder->hasFactoryFile())
        return;
    m_folder->provideFactoryList();
    remember();
}

/// Returns the factory's list, nothing if it is damaged or cannot be used with this window.
std::optional<BadPixelLists::List> BadPixelLists::readFactoryList(const image::Window &window) const
{
    const DetectorArray &array = camera().device<Sensor>()->array();
    const image::Window whole = windowOf(array);
    provideFactoryList();
    const auto found = m_folder->read(BadPixelFolder::factoryPath);
    // An array that is too large for a list has the factory's pixels in each window.
    if (!found && !whole.hasFrames() && !m_folder->hasFactoryFile() && window.hasFrames())
        return image::factoryList(image::Detector::findFaults(array.properties(), window), window);
    for (const image::Window &place : {whole, window})
        if (found && found->window.width == place.width && found->window.height == place.height) {
            List list = *found;
            list.window = place;
            return list;
        }
    return std::nullopt;
}

/// Adds the bad pixels of the present window to a list, and makes it that of a file. Returns an empty Commit without a
/// list, and if no correction contains the window.
BadPixelLists::Commit BadPixelLists::merge(const Taken &taken, std::optional<List> list, const QString &path)
{
    bool found = false;
    for (const auto &table : taken.tables)
        if (table && list && table->placeOf(taken.view.window, taken.view.flips())) {
            found = true;
            list->add(*table, taken.view.flips(), taken.view.window);
        }
    if (!found)
        return {};
    return [this, path, made = std::make_shared<const List>(*std::move(list))] {
        m_folder->replace(path, made);
        remember();
    };
}

BadPixelLists::Commit BadPixelLists::apply(const Taken &taken, const std::optional<List> &list)
{
    std::map<int, Taken::Table> changed;
    for (int preset = 0; preset < maximumPresets; ++preset)
        if (const auto &table = taken.tables.at(static_cast<size_t>(preset)); table && list)
            changed[preset]
                = std::make_shared<const image::CorrectionTable>(list->appliedTo(*table, taken.view.flips()));
    if (changed.empty())
        return {};
    return [this, changed] {
        for (const auto &[preset, table] : changed)
            camera().device<CorrectionRun>()->recount(preset,
                                                      camera().device<Corrections>()->replaceFlags(preset, table));
    };
}

} // namespace emulator
