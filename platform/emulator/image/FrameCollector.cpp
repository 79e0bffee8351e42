#include "platform/emulator/image/FrameCollector.h"

#include "platform/emulator/image/frame.h"

#include <algorithm>

namespace emulator::image
{

bool FrameCollector::add(const Exposure &exposure)
{
    const Optics &first = m_exposure.optics;
    const bool differs = m_exposure.window != exposure.window || first.mirrored != exposure.optics.mirrored
        || first.inverted != exposure.optics.inverted;
    if ((m_frames > 0 && differs) || !renderFrame(exposure, m_frame))
        return false;
    if (m_frames == 0) {
        m_sums.assign(m_frame.size(), 0);
        m_minima = m_frame;
        m_maxima = m_frame;
    }
    ++m_frames;
    m_exposure = exposure;
    for (size_t i = 0; i < m_frame.size(); ++i) {
        m_sums[i] += m_frame[i];
        m_minima[i] = std::min(m_minima[i], m_frame[i]);
        m_maxima[i] = std::max(m_maxima[i], m_frame[i]);
    }
    return true;
}

} // namespace emulator::image
