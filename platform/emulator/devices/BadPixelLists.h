#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/BadPixelFolder.h"
#include "platform/emulator/image/BadPixelMap.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace emulator::image
{
struct Optics;
} // namespace emulator::image

namespace emulator
{

/// The lists of bad pixels in the camera's folder: those that are exported from corrections, and the factory's, which
/// are the bad pixels that the factory knows. docs/file-formats.md describes the files. The camera's thread writes
/// them; clients do not see the difference.
///
/// A list is that of a window. Its coordinates begin at the window's corner on the array, so they do not follow the
/// flips of the picture. The file does not contain the place of the window. A list of the size of the array belongs to
/// the array. Any other one belongs to the present window if the sizes are equal, also if the window has been moved
/// since; otherwise it cannot be used. The factory's first list is one of the array; an array without frames
/// (Window::maximumPixels) has none, but its known pixels are used in each window until there is a list. A correction
/// does not tell with which flips it was made: the present ones are assumed.
///
/// A preset's correction is the one in use, which may wait for the operator's decision. Masks have a bit for each
/// preset, from bit 0; presets without a correction are passed over. The functions take about 1 ms, 6 ms if they read
/// a list of 134 000 pixels, and 0.1 s more for each correction that has not been used yet, which is read. They release
/// the camera's lock, which the thread must hold exactly once, work on corrections and a window of the same moment, and
/// return NotConnected, without any effect, if the camera has been disconnected meanwhile.
///
/// A function returns Ok although its list may never be written, as on a full disk. The camera then uses the list from
/// memory until it is deleted. The list is lost with the process if it cannot be written until then.
class BadPixelLists : public Device
{
public:
    /// No profile keys and no settings. The device Sensor must exist before.
    BadPixelLists(Camera &camera, Section &section);

    /// Writes the bad pixels of the present window into /Temp/NAME.bpl. Refuses any other path, and a preset without a
    /// correction.
    Status exportList(uint8_t preset, const std::string &cameraPath);

    /// Replaces the factory's list by the bad pixels of the corrections of some presets in the present window. Refused
    /// if none of them has a correction. The same for the functions below, which also refuse a damaged list and one of
    /// another size.
    Status createFactoryList(uint32_t presets);
    /// Adds these pixels to the factory's list.
    Status appendToFactoryList(uint32_t presets);
    /// Flags the pixels of the factory's list in the corrections of some presets. The files of the corrections stay.
    Status applyFactoryList(uint32_t presets);

    /// Whether the factory's list can be used with a window. Releases the camera's lock, as the functions above do.
    bool isFactoryListUsable(const image::Window &window) const;
    /// The factory's bad pixels in frames of a window with these flips, nonzero for each of them; nothing if the list
    /// cannot be used with this window. The caller must not hold the camera's lock.
    std::optional<std::vector<uint8_t>> factoryList(const image::Window &window, const image::Optics &flips) const;

    /// The contents of a list that has no file yet. A factory's list that has been removed comes back. Releases the
    /// camera's lock, as the functions above do. BadPixelFolder::cleanPath() tells which paths lead to a list.
    std::optional<QByteArray> unwritten(const QString &cameraPath) const;

    void connectionChanged(bool connected) override;
    std::function<void()> filesToWrite() override;

private:
    struct View;
    struct Taken;
    using List = image::BadPixelMap;
    /// Puts a result into effect. Called with the camera's lock. Empty: the call is refused.
    using Commit = std::function<void()>;

    View view() const;
    std::optional<Taken> present(uint32_t presets) const;
    Taken take(uint32_t presets) const;
    Status work(uint32_t presets, const std::function<Commit(const Taken &)> &compute);
    void provideFactoryList() const;
    std::optional<List> readFactoryList(const image::Window &window) const;
    Commit merge(const Taken &taken, std::optional<List> list, const QString &path);
    Commit apply(const Taken &taken, const std::optional<List> &list);

    const std::shared_ptr<BadPixelFolder> m_folder;
    std::mutex m_mutex; ///< For changes of the factory's list. Locked before the camera's lock.
};

} // namespace emulator
