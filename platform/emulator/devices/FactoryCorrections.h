#pragma once

#include "platform/emulator/devices/CorrectionFile.h"
#include "platform/emulator/image/Exposure.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace emulator
{

class Camera;
class DetectorArray;

/// The corrections that the factory has made for a camera: one for each of its factory calibrations, and one for each
/// correction that the profile loads into a preset. They have no files. Each is a two-point correction of the whole
/// array with the settings of the profile, from frames without noise of blackbodies of 20 and 35 C. At integration
/// times at which these differ too little, the second one is hotter. Any thread.
class FactoryCorrections
{
public:
    /// The time of all of them, in milliseconds since the epoch: 2023-11-06 09:00 UTC.
    static constexpr int64_t written = 1'699'261'200'000;

    /// The devices of the camera must have the values of its profile.
    explicit FactoryCorrections(Camera &camera);

    std::vector<std::string> names() const;
    bool contains(const std::string &name) const { return find(name) != nullptr; }
    /// The size in bytes that each of them has in the store.
    uint64_t size() const { return m_size; }

    /// Returns the description. The numbers of bad pixels are 0 until the correction has been made once. Empty if there
    /// is no such correction.
    std::optional<CorrectionInfo> basicInfo(const std::string &name) const;
    /// Returns the description with the numbers of bad pixels. Makes the correction as make() does, but only once.
    std::optional<CorrectionInfo> info(const std::string &name) const;

    /// Makes the correction, in some 40 ms for 640x512 pixels, unless its table still exists. Empty if there is no such
    /// correction, or if it cannot be made: the array is too large for frames, or saturated at the integration time.
    /// The caller should not hold the camera's lock.
    std::optional<Correction> make(const std::string &name) const;

private:
    struct Entry {
        std::string name;
        CorrectionInfo info;
        image::Exposure exposure; ///< Without the maps of the detector.
        bool counted = false; ///< The description has the numbers of bad pixels.
        std::weak_ptr<const image::CorrectionTable> table;
    };

    void add(const Camera &camera, const std::string &name, int preset, uint32_t integrationWidth);
    Entry *find(const std::string &name) const;

    DetectorArray &m_array;
    uint64_t m_size;
    mutable std::vector<Entry> m_entries; ///< Their number and their names are constant.
    mutable std::mutex m_mutex; ///< For the descriptions and the tables.
    mutable std::mutex m_making; ///< So that two threads do not make the same correction.
};

} // namespace emulator
