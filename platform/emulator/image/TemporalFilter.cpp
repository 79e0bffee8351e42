#include "platform/emulator/image/TemporalFilter.h"

#include <cstdlib>
#include <limits>

namespace emulator::image
{

void TemporalFilter::apply(std::span<uint16_t> counts, Mode mode, uint16_t threshold)
{
    if (mode == Mode::Off) {
        *this = {};
        return;
    }
    for (std::vector<uint16_t> &frame : m_before)
        if (frame.size() != counts.size())
            frame.assign(counts.begin(), counts.end());
    const size_t frames = m_before.size();
    uint16_t *const oldest = m_before[m_oldest].data();
    m_oldest = (m_oldest + 1) % frames;
    const uint16_t *const older = m_before[m_oldest].data();
    const uint16_t *const last = m_before[(m_oldest + 1) % frames].data();
    // The mean never differs more than this from the pixel.
    const int most = mode == Mode::Adaptive ? threshold : std::numeric_limits<uint16_t>::max();
    for (size_t i = 0; i < counts.size(); ++i) {
        const int count = counts[i];
        const int mean = (count + last[i] + older[i] + oldest[i] + 2) / 4;
        oldest[i] = static_cast<uint16_t>(count);
        counts[i] = static_cast<uint16_t>(std::abs(count - mean) <= most ? mean : count);
    }
}

} // namespace emulator::image
