#include "benchmarks/Report.h"
#include "benchmarks/figures.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/frame.h"

#include <ctime>
#include <functional>
#include <vector>

namespace
{

/// Returns the processor time of this thread in milliseconds that a function takes.
double costOf(const std::function<void()> &function)
{
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) * 1e-6;
    };
    const double start = now();
    function();
    return now() - start;
}

/// A gain and an offset for each pixel: the simplest step that a frame can pass through.
class Pass
{
public:
    explicit Pass(size_t pixels) : m_in(pixels, 5000), m_out(pixels), m_gain(pixels, 1.01f), m_offset(pixels, 3) { }

    void run()
    {
        for (size_t i = 0; i < m_in.size(); ++i)
            m_out[i] = static_cast<uint16_t>(static_cast<float>(m_in[i]) * m_gain[i] + m_offset[i]);
    }

private:
    std::vector<uint16_t> m_in;
    std::vector<uint16_t> m_out;
    std::vector<float> m_gain;
    std::vector<float> m_offset;
};

} // namespace

void measureVideo(Report &report)
{
    using namespace emulator::image;
    constexpr int rounds = 101;
    constexpr double rawLimit = 8; // Passes.
    constexpr double mapsLimit = 15; // Milliseconds.
    constexpr double saturationLimit = 0.5;
    constexpr double framesPerSecond = 30;
    constexpr Size array{640, 512};

    Exposure exposure;
    exposure.window = {0, 0, array.width, array.height};
    std::vector<double> maps;
    std::vector<double> raw;
    std::vector<double> blurred;
    std::vector<double> saturation;
    std::vector<double> one;
    Pass pass(static_cast<size_t>(exposure.window.pixels()));
    std::vector<uint16_t> counts;
    for (int round = 0; round < rounds; ++round) {
        if (round % 10 == 0)
            maps.push_back(costOf([&] { exposure.detector = Detector::make({}, array, exposure.window); }));
        ++exposure.frameNumber;
        exposure.scene.microseconds += 33'333;
        exposure.optics.defocus = 0;
        raw.push_back(costOf([&] { renderFrame(exposure, counts); }));
        saturation.push_back(costOf([&] { countAtLeast(exposure, Detector::maximumCount); }));
        exposure.optics.defocus = 8;
        blurred.push_back(costOf([&] { renderFrame(exposure, counts); }));
        one.push_back(costOf([&] { pass.run(); }));
    }
    const auto share = [](double milliseconds) {
        return QStringLiteral("%1 ms, %2 % of a core at 30 Hz")
            .arg(milliseconds, 0, 'f', 2)
            .arg(milliseconds * framesPerSecond / 10, 0, 'f', 1);
    };
    report.note(QStringLiteral("one pass of gains and offsets over 640x512: %1 ms").arg(median(one), 0, 'f', 2));
    report.figure(QStringLiteral("raw frame over one pass"), median(raw) / median(one), rawLimit, share(median(raw)));
    report.figure(QStringLiteral("defocused raw frame over one pass"), median(blurred) / median(one), rawLimit,
                  share(median(blurred)));
    report.figure(QStringLiteral("saturated pixels counted, ms"), median(saturation), saturationLimit);
    report.figure(QStringLiteral("maps of the detector, ms"), median(maps), mapsLimit);
}
