#pragma once

#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Readout.h"

#include <cstdint>
#include <span>
#include <vector>

namespace emulator::image
{

/// A readout of frames by this detector, row by row. Used by one thread.
class Detector::RowReader
{
public:
    RowReader(const Detector &detector, const Readout &readout, uint64_t number);

    /// Turns the light of some pixels of a row into counts, from the array coordinates x, y to the right. They must
    /// be inside the window of the detector. There are as many counts as lights.
    void read(int x, int y, std::span<const float> light, std::span<uint16_t> counts);
    /// Returns how many of these pixels reach a threshold, without noise and without twinkling.
    size_t countAtLeast(int x, int y, std::span<const float> light, uint16_t threshold);
    /// The same for `count` pixels of which only those with a fault that fixes their counts may reach it.
    size_t countFixedAtLeast(int x, int y, size_t count, uint16_t threshold) const;
    /// Returns false if no pixel of `count` whose count is not fixed reaches the threshold by this light or less.
    bool mayReach(int x, int y, size_t count, float light, uint16_t threshold) const;

private:
    /// The maps of pixels of a row as the voltages change them. Valid until the next call.
    Maps mapsAt(int x, int y, size_t count);
    void makeNoise(int x, int y, size_t count);
    void twinkle(const Fault &fault, uint16_t &count) const;

    const Detector &m_detector;
    uint64_t m_number;
    uint64_t m_key; ///< Of the noise of this frame.
    Conversion m_conversion;
    std::vector<float> m_gain; ///< Of a row, as the voltages change them.
    std::vector<float> m_offset;
    std::vector<float> m_noise; ///< Of a row from an even x, in standard deviations.
};

} // namespace emulator::image
