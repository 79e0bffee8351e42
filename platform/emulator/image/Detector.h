#pragma once

#include "platform/emulator/image/Window.h"
#include "platform/emulator/image/limits.h"

#include <cstdint>
#include <limits>
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
    static constexpr uint16_t maximumCount = image::maximumCount;

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
        float voltageDeviation = 40; ///< Counts for each volt of global offset.
        float biasDeviation = 0.02f; ///< Of the responses, at the highest and the lowest bias.
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
        float onset = 0; ///< The pixel twinkles while Voltages::twinkling() is above this.
    };

    /// Makes the maps of a window of an array, in some 20 ns a pixel. Returns null for a window that has no frames or
    /// is not inside the array.
    static std::shared_ptr<const Detector> make(const Properties &properties, const Size &array, const Window &window);

    /// Returns the faults() of a window without making its maps, in some 3 ns a pixel.
    static std::vector<Fault> findFaults(const Properties &properties, const Window &window);

    const Size &array() const { return m_array; }
    const Window &window() const { return m_window; }
    /// The faulty pixels of the window with the start value of the bias, row by row.
    std::span<const Fault> faults() const { return m_faults; }

    /// What all pixels of a frame have in common.
    struct Conversion {
        float exposure = 0; ///< The signal of light 1, in full signals.
        float skimmed = 0; ///< The signal that is taken off.
        float kelvin = 0; ///< Of the case, above 25 C.
        float dark = 0; ///< Counts.
        float readVariance = 0; ///< Squared counts.
        float variancePerCount = 0; ///< Squared counts for each count of light and dark current.
        float added = 0; ///< Counts.
        float volts = 0; ///< See Voltages::addedVolts().
        float excess = 0; ///< See Voltages::excess().
        float twinkling = 0; ///< See Voltages::twinkling().
    };

    /// The differences of pixels beside each other.
    struct Maps {
        const float *gain;
        const float *offset;
        const float *curvature;
        const float *drift;
        const float *voltage;
        const float *bias;
    };

    class RowReader;

private:
    Detector(const Properties &properties, const Size &array, const Window &window);

    void addPixel(int x, int y, float columnOffset);
    float addFault(int x, int y);
    /// The maps of pixels of a row, and those of the faults that are among them, from the array coordinates to the
    /// right.
    Maps mapsAt(int x, int y) const;
    static std::span<const Fault> partOf(const std::vector<Fault> &faults, int x, int y, size_t count);

    /// The extremes of a window, without the faults: a pixel with all of them is as bright as any by the same light.
    struct Extremes {
        float gain = 0;
        float offset = std::numeric_limits<float>::lowest();
        float curvature = std::numeric_limits<float>::max(); ///< The smallest.
        // The largest sizes.
        float drift = 0;
        float voltage = 0;
        float bias = 0;
    };

    Properties m_properties;
    uint64_t m_key; ///< Of the hashes of all pixels.
    Size m_array;
    Window m_window;
    std::vector<float> m_gain;
    std::vector<float> m_offset;
    std::vector<float> m_curvature;
    std::vector<float> m_drift;
    std::vector<float> m_voltage; ///< In voltageDeviation.
    std::vector<float> m_bias; ///< In biasDeviation.
    Extremes m_extremes;
    std::vector<Fault> m_faults;
    std::vector<Fault> m_unsteady; ///< The pixels that twinkle only with a higher bias.
};

} // namespace emulator::image
