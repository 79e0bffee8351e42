#pragma once

#include "platform/emulator/Section.h"
#include "platform/emulator/devices/Drive.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace emulator
{

class Camera;

/// A movie of the profile: it is on the drive of a new camera, until the drive is formatted. Like every recording, it
/// has no pixels. It is the same after each start, since it depends on the profile only: its frames show the live scene
/// with the settings of the profile and the corrections of the factory, seen by a cold detector through a lens at rest.
class SeededMovie
{
public:
    /// The first frame of the movie with the number N begins N days after this time, in microseconds since 1970:
    /// 2023-11-06 09:00 UTC.
    static constexpr int64_t start = 1'699'261'200'000'000;

    /// Returns the movies of the list "movies", which have the numbers from 1 on. Keys: "name" (UTF-8, cut as
    /// Drive::add() does), "width" and "height" of the window, which is in the centre of the array, "frames" (from 0),
    /// "rate" (Hz, 100 without the key), "presets" (how many take turns, 1 without the key), "abated" (corrected by the
    /// corrections of the presets).
    static std::vector<SeededMovie> list(Section &section);

    uint32_t number() const { return m_number; }
    /// The devices of the camera must have the values of the profile. Empty if it cannot record such a movie: it has a
    /// smaller array, fewer presets or no correction. A profile may have inherited the movie from another camera.
    std::optional<Drive::Movie> make(const Camera &camera) const;

private:
    SeededMovie(Section section, uint32_t number);

    uint32_t m_number;
    QString m_name;
    int m_width;
    int m_height;
    uint64_t m_frames;
    double m_rate;
    int m_presets;
    bool m_abated;
};

} // namespace emulator
