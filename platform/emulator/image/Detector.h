#pragma once

#include "platform/emulator/image/Readout.h"
#include "platform/emulator/image/Window.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace emulator::image
{

/// A detector array: the maps of the differences between its pixels, which turn light into counts. All values of a
/// pixel follow from the seed and the array coordinate, so they do not depend on the window or the flips. Constant
/// after its construction, so any number of threads may use it.
class Detector
{
public:
    static constexpr uint16_t maximumCount = 16'383;

    struct Properties {
        uint64_t seed = 1;
        float vignetting = 0.08f; ///< The gain that is lost in the middle of a far edge.
        float gainDeviation = 0.05f;
        float offset = 1000; ///< Counts.
        float offsetDeviation = 250;
        float columnDeviation = 80; ///< Of the offsets of whole columns.
        float curvature = 0.02f; ///< The share that is lost of a full signal.
        float curvatureDeviation = 0.004f;
        float drift = 2; ///< Counts for each kelvin of the case above 25 C.
        float driftDeviation = 2.5f;
        /// Faulty pixels of a million.
        uint32_t dead = 500;
        uint32_t hot = 300;
        uint32_t weak = 300;
        uint32_t strong = 200;
        uint32_t twinkling = 200;
        float readNoise = 3; ///< Counts.
        float reducedReadNoise = 2.4f;

        /// The same array as its pictures show it after a correction: without differences and faults, but with its
        /// noise.
        Properties corrected() const;
    };

    struct Fault {
        enum Kind : uint8_t { Dead, Hot, Weak, Strong, Twinkling };

        int x; ///< Array coordinates.
        int y;
        Kind kind;
    };

    /// Makes the maps of a window of an array, in some 20 ns a pixel. Returns null for a window that has no frames or
    /// is not inside the array.
    static std::shared_ptr<const Detector> make(const Properties &properties, const Size &array, const Window &window);

    const Size &array() const { return m_array; }
    const Window &window() const { return m_window; }
    /// The faulty pixels of the window, row by row.
    std::span<const Fault> faults() const { return m_faults; }

    /// What all pixels of a frame have in common.
    struct Conversion {
        float exposure = 0; ///< The signal of light 1, in full signals.
        float kelvin = 0; ///< Of the case, above 25 C.
        float dark = 0; ///< Counts.
        float readVariance = 0; ///< Squared counts.
        float variancePerCount = 0; ///< Squared counts for each count of light and dark current.
    };

    /// The differences of pixels beside each other.
    struct Maps {
        const float *gain;
        const float *offset;
        const float *curvature;
        const float *drift;
    };

    /// A readout of frames by this detector, row by row. Used by one thread.
    class Frame
    {
    public:
        Frame(const Detector &detector, const Readout &readout, uint64_t number);

        /// Turns the light of some pixels of a row into counts, from the array coordinates x, y to the right. They must
        /// be inside the window of the detector. There are as many counts as lights.
        void read(int x, int y, std::span<const float> light, std::span<uint16_t> counts);
        /// Returns how many of these pixels reach a threshold, without noise and without twinkling.
        size_t countAtLeast(int x, int y, std::span<const float> light, uint16_t threshold) const;

    private:
        void makeNoise(int x, int y, size_t count);

        const Detector &m_detector;
        uint64_t m_number;
        uint64_t m_key; ///< Of the noise of this frame.
        Conversion m_conversion;
        std::vector<float> m_noise; ///< Of a row from an even x, in standard deviations.
    };

private:
    Detector(const Properties &properties, const Size &array, const Window &window);

    void addPixel(int x, int y, float columnOffset);
    /// The maps and the faults of pixels of a row, from the array coordinates to the right.
    Maps mapsAt(int x, int y) const;
    std::span<const Fault> faultsAt(int x, int y, size_t count) const;

    Properties m_properties;
    uint64_t m_key; ///< Of the hashes of all pixels.
    Size m_array;
    Window m_window;
    std::vector<float> m_gain;
    std::vector<float> m_offset;
    std::vector<float> m_curvature;
    std::vector<float> m_drift;
    std::vector<Fault> m_faults;
};

} // namespace emulator::image
