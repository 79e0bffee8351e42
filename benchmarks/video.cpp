#include "benchmarks/Report.h"
#include "benchmarks/figures.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Saturation.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/devices/VideoOverlay.h"
#include "platform/emulator/image/Agc.h"
#include "platform/emulator/image/Detail.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Picture.h"
#include "platform/emulator/image/TemporalFilter.h"
#include "platform/emulator/image/frame.h"
#include "platform/emulator/image/output.h"
#include "tests/support/CameraRig.h"
#include "zvt/zvtsdk.h"

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
    return costOf([&] { countAtLeast(exposure, Saturation::startCountThreshold, enough); });
}

/// The saturated pixels of the four presets of a camera. In each case all rows have pixels close to the threshold.
void measureSaturatedPixels(Report &report)
{
    constexpr int rounds = 101;
    CameraRig rig;
    emulator::Camera &camera = rig.camera();
    CameraRig::coolDetector();
    const auto set
        = [&](const char *name, const QVariant &value) { camera.otherClient().set(QString::fromLatin1(name), value); };
    const auto measure = [&](const QString &name, double limit) {
        std::vector<double> costs;
        for (int round = 0; round < rounds; ++round) {
            emulator::Clock::advance(1000);
            costs.push_back(costOf([&] {
                uint32_t pixels = 0;
                for (uint8_t preset = 0; preset < emulator::maximumPresets; ++preset)
                    zvtGetSaturatedPixels(camera.handle(), preset, &pixels);
            }));
        }
        report.figure(QStringLiteral("four counts of saturated pixels, %1, ms").arg(name), median(costs), limit);
    };
    const auto setTimes = [&](double milliseconds) {
        for (const int preset : {3, 2, 1, 0}) {
            set("sensor.activePreset", preset);
            set("sensor.integrationTime", milliseconds);
        }
    };
    constexpr double areaLimit = 2; // Milliseconds.
    set("emulator./Pattern", 3);
    set("emulator./BlackbodyTemp1", 35);
    setTimes(4);
    measure(QStringLiteral("area blackbody"), areaLimit);
    set("emulator./Pattern", 0);
    set("focus.position", 7400); // 8 pixels of defocus.
    set("saturation.countThresholds", QVariantList{6000, 6000, 6000, 6000});
    setTimes(2);
    emulator::Clock::advance(60'000); // The lens moves.
    measure(QStringLiteral("defocused live scene"), 2 * areaLimit);
    set("analog.globalOffset", 0.1);
    measure(QStringLiteral("the same with a global offset"), 2 * areaLimit);
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

/// The steps from a corrected frame to levels of grey, each as a multiple of one pass.
void measureLevels(Report &report, emulator::image::Exposure exposure)
{
    using namespace emulator::image;
    constexpr int rounds = 101;
    constexpr double filterLimit = 2; // Passes.
    constexpr double detailLimit = 4;
    constexpr double agcLimit = 3;
    const Size size{exposure.window.width, exposure.window.height};
    const Window whole{0, 0, size.width, size.height};
    std::vector<double> filter;
    std::vector<double> detail;
    std::vector<double> gain;
    std::vector<double> one;
    Pass pass(static_cast<size_t>(exposure.window.pixels()));
    TemporalFilter temporalFilter;
    Agc agc;
    std::vector<uint16_t> counts;
    std::vector<uint8_t> levels;
    for (int round = 0; round < rounds; ++round) {
        ++exposure.frameNumber;
        renderOutput(exposure, Output::Video, counts);
        filter.push_back(costOf([&] { temporalFilter.apply(counts, TemporalFilter::Mode::Adaptive, 20); }));
        detail.push_back(
            costOf([&] { enhanceDetail(counts, size, AgcSettings::defaultSharpness, AgcSettings::defaultThreshold); }));
        gain.push_back(costOf([&] {
            agc.update(counts, size, whole, {}, 0.1);
            agc.apply(counts, levels);
        }));
        one.push_back(costOf([&] { pass.run(); }));
    }
    report.figure(QStringLiteral("temporal filter over one pass"), median(filter) / median(one), filterLimit);
    report.figure(QStringLiteral("detail enhancement over one pass"), median(detail) / median(one), detailLimit);
    report.figure(QStringLiteral("gain control over one pass"), median(gain) / median(one), agcLimit);
}

/// The overlay with all its texts and frames, on a picture of 640x512, as a multiple of one pass.
void measureOverlay(Report &report)
{
    constexpr int rounds = 101;
    constexpr double limit = 2; // Passes.
    CameraRig rig;
    emulator::Camera &camera = rig.camera();
    for (const auto &setting : camera.settings())
        if (setting.kind == emulator::SettingInfo::Flag && setting.name.startsWith(QStringLiteral("overlay.")))
            camera.otherClient().set(setting.name, true);
    for (const char *name : {"agc.regionEnabled", "autoFocus.showAlways"})
        camera.otherClient().set(QString::fromLatin1(name), true);
    camera.otherClient().set(QStringLiteral("overlay.textBackground"), 1);
    camera.otherClient().set(QStringLiteral("overlay.userText"), QString(64, u'W'));
    const auto &overlay = *camera.device<emulator::VideoOverlay>();
    emulator::image::Picture picture{640, 512, {}};
    picture.rgb.resize(640 * 512 * 3);
    Pass pass(size_t{640} * 512);
    std::vector<double> costs;
    std::vector<double> one;
    for (int round = 0; round < rounds; ++round) {
        costs.push_back(costOf([&] {
            std::unique_lock lock(camera.mutex());
            const auto content = overlay.content();
            lock.unlock();
            drawOverlay(content, picture);
        }));
        one.push_back(costOf([&] { pass.run(); }));
    }
    report.figure(QStringLiteral("overlay over one pass"), median(costs) / median(one), limit);
}

/// The pictures of a video output 30 times a second, from the raw frame to the overlay.
void measurePictures(Report &report)
{
    constexpr int rounds = 101;
    constexpr double plainLimit = 14; // Passes.
    constexpr double largeLimit = 25;
    constexpr double coreLimit = 25; // Percent.
    constexpr double framesPerSecond = 30;
    CameraRig rig;
    emulator::Camera &camera = rig.camera();
    CameraRig::coolDetector();
    Pass pass(size_t{640} * 512);
    const auto measure = [&](const QString &name, double limit) {
        std::vector<double> costs;
        std::vector<double> one;
        for (int round = 0; round < rounds; ++round) {
            emulator::Clock::advance(33);
            costs.push_back(costOf([&] { camera.device<emulator::VideoOutput>()->render(); }));
            one.push_back(costOf([&] { pass.run(); }));
        }
        const double milliseconds = median(costs);
        report.figure(name + QStringLiteral(" over one pass"), milliseconds / median(one), limit,
                      QStringLiteral("%1 ms").arg(milliseconds, 0, 'f', 2));
        report.figure(name + QStringLiteral(" 30 times a second, % of a core"), milliseconds * framesPerSecond / 10,
                      coreLimit);
    };
    const auto set
        = [&](const char *name, const QVariant &value) { camera.otherClient().set(QString::fromLatin1(name), value); };
    measure(QStringLiteral("picture of 1280x720"), plainLimit);
    set("video.format", 8);
    set("agc.method", 1);
    measure(QStringLiteral("picture of 1920x1080 with detail enhancement"), largeLimit);
    set("video.zoomFactor", 5);
    measure(QStringLiteral("the same, enlarged to fit"), largeLimit);
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
    measureSaturatedPixels(report);
    report.figure(QStringLiteral("maps of the detector, ms"), median(maps), mapsLimit);
    measureLevels(report, exposure);
    measureOverlay(report);
    measurePictures(report);
    measureCalls(report);
}
