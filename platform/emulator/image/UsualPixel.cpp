#include "platform/emulator/image/UsualPixel.h"

#include "platform/emulator/image/Light.h"
#include "platform/emulator/image/Readout.h"

#include <algorithm>

namespace emulator::image
{

double UsualPixel::countOf(double light, const Readout &readout) const
{
    const Voltages &voltages = readout.voltages;
    const double exposed = readout.integrationTime / readout.saturatingTime * readout.gain() * voltages.response();
    const double skimmed = voltages.skimmedCounts(readout.integrationTime) / Light::fullSignal;
    const double signal = std::max(0.0, gain * exposed * light - skimmed);
    // A signal at which the curve of a pixel is at its top is far above all counts.
    const double curved = signal * (1 - std::min(curvature * signal, 0.5));
    return offset + readout.addedCounts() + readout.dark() + Light::fullSignal * curved;
}

} // namespace emulator::image
