#include "benchmarks/Report.h"
#include "benchmarks/figures.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Saturation.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/frame.h"
#include "platform/emulator/image/output.h"
#include "tests/support/CameraRig.h"

#include <ctime>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
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

/// The cost to find out whether the picture is saturated, with an integration time with which it almost is. This is
/// about the slowest case: darker rows are skipped, and in brighter pictures the count ends early.
double costOfSaturation(emulator::image::Exposure exposure)
{
    using emulator::Saturation;
    exposure.readout.integrationTime = 3;
    const auto enough = static_cast<size_t>(Saturation::pixelShare * double(exposure.window.pixels())) + 1;
    return costOf([&] { countAtLeast(exposure, Saturation::countThreshold, enough); });
}

/// Adds a correction of which every 600th pixel is bad.
void correct(emulator::image::Exposure &exposure)
{
    using emulator::image::CorrectionTable;
    const auto pixels = static_cast<size_t>(exposure.window.pixels());
    CorrectionTable table{exposure.window, std::vector<float>(pixels, 1.01f), std::vector<float>(pixels, 3),
                          std::vector<uint8_t>(pixels)};
    for (size_t i = 0; i < pixels; i += 600)
        table.flags[i] = CorrectionTable::Bad;
    exposure.correction = std::make_shared<const CorrectionTable>(std::move(table));
}

/// Returns the microseconds that a function takes, of which each call to a camera runs one or more.
double costInCall(const std::function<void()> &function)
{
    constexpr int rounds = 101;
    constexpr int calls = 1000;
    std::vector<double> costs;
    for (int round = 0; round < rounds; ++round) {
        emulator::Clock::advance(1000);
        costs.push_back(costOf([&] {
            for (int call = 0; call < calls; ++call)
                function();
        }));
    }
    return median(costs) * 1000 / calls;
}

/// Each call to a camera asks the frame clock and the other devices before and after its body what has become due.
void measureCalls(Report &report)
{
    constexpr double clockLimit = 0.5; // Microseconds.
    constexpr double cameraLimit = 3;
    CameraRig rig;
    emulator::Camera &camera = rig.camera();
    auto &clock = *camera.device<emulator::FrameClock>();
    report.figure(QStringLiteral("a look at the frame clock, us"), costInCall([&] { clock.updateFrameTiming(); }),
                  clockLimit);
    report.figure(QStringLiteral("a look at all devices with the lock, us"), costInCall([&] {
                      const std::lock_guard lock(camera.mutex());
                      camera.catchUp();
                  }),
                  cameraLimit);
}

} // namespace

void measureVideo(Report &report)
{
    using namespace emulator::image;
    constexpr int rounds = 101;
    constexpr double rawLimit = 8; // Passes.
    constexpr double mapsLimit = 15; // Milliseconds.
    constexpr double correctionLimit = 0.45;
    constexpr double saturationLimit = 0.5;
    constexpr double framesPerSecond = 30;
    constexpr Size array{640, 512};

    Exposure exposure;
    exposure.window = {0, 0, array.width, array.height};
    correct(exposure);
    std::vector<double> maps;
    std::vector<double> raw;
    std::vector<double> corrections;
    std::vector<double> blurred;
    std::vector<double> saturation;
    std::vector<double> blurredSaturation;
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
        corrections.push_back(costOf([&] { renderOutput(exposure, Output::Video, counts); }) - raw.back());
        saturation.push_back(costOfSaturation(exposure));
        exposure.optics.defocus = 8;
        blurred.push_back(costOf([&] { renderFrame(exposure, counts); }));
        blurredSaturation.push_back(costOfSaturation(exposure));
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
    report.figure(QStringLiteral("correction of a frame, ms"), median(corrections), correctionLimit);
    report.figure(QStringLiteral("saturation of a picture found, ms"), median(saturation), saturationLimit);
    report.figure(QStringLiteral("saturation of a defocused picture found, ms"), median(blurredSaturation),
                  saturationLimit);
    report.figure(QStringLiteral("maps of the detector, ms"), median(maps), mapsLimit);
    measureCalls(report);
}
