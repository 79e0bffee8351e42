#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/image/Window.h"
#include "platform/hlx/BadPixelFile.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace emulator::image
{
struct CorrectionTable;
struct Optics;
} // namespace emulator::image

namespace emulator
{

/// The lists of bad pixels in the camera's folder: those that are exported from corrections, and the factory's, which
/// are the bad pixels that the factory knows. docs/file-formats.md describes the files. A file is replaced as a whole.
///
/// A list is that of a window: it has its size and coordinates in it, by the detector, so before the flips of the
/// picture. Those of the camera's present window and of the whole array can be used; the factory's first list is one of
/// the whole array. Corrections do not tell with which flips they were made: the present ones are assumed.
///
/// A preset's correction is the one in use, which may wait for the operator's decision. Masks have a bit for each
/// preset, from bit 0; presets without a correction are passed over. Reading a correction that has not been used yet
/// can take 0.1 s; the lists themselves take some milliseconds. The functions release the camera's lock, which the
/// thread must hold exactly once.
class BadPixelLists : public Device
{
public:
    /// No profile keys and no settings. The device CorrectionRun must exist before.
    BadPixelLists(Camera &camera, Section &section);

    /// Writes the bad pixels of the present window into /Temp/NAME.bpl. Refuses any other path, and a preset without a
    /// correction.
    Status exportList(uint8_t preset, const std::string &cameraPath) const;

    /// Replaces the factory's list by the bad pixels of the corrections of some presets in the present window. Refused
    /// if none of them has a correction. The same for the functions below, which also refuse a damaged list and one of
    /// another window.
    Status createFactoryList(uint32_t presets);
    /// Adds these pixels to the factory's list.
    Status appendToFactoryList(uint32_t presets);
    /// Flags the pixels of the factory's list in the corrections of some presets. The files of the corrections stay.
    Status applyFactoryList(uint32_t presets);

    /// Writes the factory's first list if this is its path and the camera has none.
    void provide(const QString &cameraPath);

    /// The factory's bad pixels in frames of a window with these flips, nonzero for each of them. Nothing if the
    /// factory's list is still the first one. Empty if the list cannot be used. The caller must not hold the camera's
    /// lock.
    std::optional<std::vector<uint8_t>> changedFactoryList(const image::Window &window, const image::Optics &flips);

private:
    using Table = std::shared_ptr<const image::CorrectionTable>;
    using File = std::optional<hlx::BadPixelFile>;
    struct View;
    struct List;

    View view() const;
    QString factoryPath() const;
    bool writeFirstFactoryList() const;
    std::optional<List> readFactoryList(const View &view) const;
    Status write(const QString &path, const List &list) const;
    Status changeFactoryList(uint32_t presets, const std::function<std::optional<List>(const View &)> &start);
    bool addBadPixels(uint32_t presets, const View &view, List &list) const;
    bool apply(int preset, const View &view, const List &list);

    std::mutex m_mutex; ///< For changes of the factory's list. Locked before the camera's lock.
};

} // namespace emulator
