#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/VideoOutput.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"
#include "tests/support/computedMicroseconds.h"

#include <QFile>

#include <atomic>
#include <functional>
#include <future>
#include <thread>

using emulator::Camera;
using emulator::CameraClock;
using emulator::Clock;
using emulator::Frame;
using emulator::FrameStart;
using Counts = FrameRig::Counts;

/// Which frames a camera has, what they cost, and that they are the same on all threads.
class tst_cameraFrames : public Test
{
    Q_OBJECT

private slots:
    void cleanup() { Clock::automatic(); }

    void framesDifferInTheirNoise();
    void aFrameShowsTheCameraAsItIsNow();
    void numbersPresetsAndTimesBelongTogether();
    void otherFramesDoNotExist();
    void aPresetThatIsNotInUseHasNoNewFrames();
    void beforeTheFirstConnectionThereAreNoFrames();
    void framesGoOnWithoutAConnection();
    void hugeWindowsHaveNoFrames();
    void aWindowOfAHugeArrayHasFrames();
    void everyProfileHasItsFrames_data();
    void everyProfileHasItsFrames();
    void aPolledCameraMakesNoMaps();
    void tenCamerasMakeTheSameFrames();
    void tenThreadsShareACamera();
    void theLockIsFreeWhilePixelsAreComputed();
    void anExposureIsFilledInAtOnce();

private:
    /// Reads what the Status page shows, and lets a second pass.
    static void poll(Camera &camera);
    /// The share of attempts to get the camera's lock that succeed while a function runs on another thread. The
    /// function runs at least once, and again until there are enough attempts. 0 if it has returned false.
    static double freeShare(Camera &camera, const std::function<bool()> &function);
};

namespace
{

/// Memory of this process in bytes.
qint64 usedMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    constexpr qint64 pageSize = 4096;
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * pageSize : 0;
}

/// A camera in a folder of its own that differs from the others.
class NumberedCamera
{
public:
    explicit NumberedCamera(int number) : m_camera(Camera::create(QStringLiteral("everything"), m_folder.path()))
    {
        m_camera->connect();
        auto client = m_camera->otherClient();
        client.set(QStringLiteral("sensor.window"), QVariantList{number * 16, number * 4, 160, 128});
        client.set(QStringLiteral("sensor.integrationTime"), 1 + number * 0.1);
    }
    Camera &operator*() const { return *m_camera; }

private:
    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
};

/// The first frames of a camera, one after the other.
std::vector<Counts> firstFrames(Camera &camera)
{
    std::vector<Counts> frames;
    for (uint64_t number = 3; number < 13; ++number)
        if (const auto frame = camera.frame(0, number))
            frames.push_back(frame->counts);
    return frames;
}

} // namespace

void tst_cameraFrames::framesDifferInTheirNoise()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(27));
    Clock::advance(1000);
    const auto newest = rig.camera().newestFrame(0);
    QVERIFY(newest);
    const auto before = rig.camera().frame(0, newest->start.number - 1);
    QVERIFY(before);
    QVERIFY(before->counts != newest->counts);
    QVERIFY(largestDifference(before->counts, newest->counts) < 500); // Twinkling pixels change by 420 counts.
    QVERIFY(rig.frame(newest->start) == newest->counts);
    QVERIFY(rig.frame(before->start) == before->counts);
    QVERIFY(rig.newest() == newest->counts);
    // The next frame begins after 10 ms.
    Clock::advance(10);
    const auto next = rig.camera().newestFrame(0);
    QVERIFY(next);
    QCOMPARE(next->start.number, newest->start.number + 1);
    QVERIFY(next->counts != newest->counts);
}

void tst_cameraFrames::aFrameShowsTheCameraAsItIsNow()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    const auto before = rig.camera().newestFrame(0);
    QVERIFY(before);
    QVERIFY(rig.set("gain.level", 1));
    QVERIFY(rig.frame(before->start) != before->counts);
    QVERIFY(rig.set("gain.level", 0));
    QVERIFY(rig.frame(before->start) == before->counts);
}

void tst_cameraFrames::numbersPresetsAndTimesBelongTogether()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
    QCOMPARE(zvtSetIRIGTime(rig.handle(), 2024, 366, 23, 59, 59, 900, 250), 0);
    const int64_t irigStart = Clock::now() * 1000;
    Clock::advance(1000);
    const auto *const clock = rig.camera().device<CameraClock>();
    const auto newest = rig.camera().newestFrame(3);
    QVERIFY(newest);
    uint64_t found = 0;
    std::optional<FrameStart> before;
    for (uint64_t number = newest->start.number - 40; number <= newest->start.number; ++number)
        for (int preset = 0; preset < emulator::maximumPresets; ++preset)
            if (const auto frame = rig.camera().frame(preset, number)) {
                ++found;
                const FrameStart &start = frame->start;
                QCOMPARE(start.number, number);
                QCOMPARE(start.preset, preset);
                // Each preset takes 10 ms.
                if (before) {
                    QCOMPARE(start.preset, (before->preset + 1) % 4);
                    QCOMPARE(start.microseconds - before->microseconds, 10'000);
                    QCOMPARE(start.tick - before->tick, 200'000);
                }
                before = start;
                const CameraClock::IrigTime time = clock->irigTimeAt(start.microseconds);
                const int64_t passed = start.microseconds - irigStart + 900'250;
                QCOMPARE(time.millisecond * 1000 + time.microsecond, passed % 1'000'000);
                QCOMPARE(int(time.second), passed < 1'000'000 ? 59 : 0);
                QCOMPARE(int(time.year), passed < 1'000'000 ? 2024 : 2025);
            }
    QCOMPARE(found, uint64_t(41));
}

void tst_cameraFrames::otherFramesDoNotExist()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
    Clock::advance(1000);
    const auto newest = rig.camera().newestFrame(1);
    QVERIFY(newest);
    const uint64_t number = newest->start.number;
    QVERIFY(rig.camera().frame(1, number));
    for (const int other : {0, 2, 3, -1, 4, 1000})
        QVERIFY(!rig.camera().frame(other, number));
    for (const uint64_t future : {number + 4, number + 4'000'000, std::numeric_limits<uint64_t>::max()})
        for (int preset = 0; preset < emulator::maximumPresets; ++preset)
            QVERIFY(!rig.camera().frame(preset, future));
    for (const int preset : {-1, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        QVERIFY(!rig.camera().newestFrame(preset));
}

void tst_cameraFrames::aPresetThatIsNotInUseHasNoNewFrames()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    for (const int preset : {1, 2, 3})
        QVERIFY(!rig.camera().newestFrame(preset));
    const auto last = rig.camera().newestFrame(0);
    QVERIFY(last);
    QVERIFY(rig.set("sensor.activePreset", 2));
    Clock::advance(1000);
    QVERIFY(rig.camera().newestFrame(2));
    QVERIFY(rig.camera().newestFrame(2)->start.number > last->start.number);
    // The last frame of a preset stays.
    QVERIFY(rig.camera().newestFrame(0));
    QVERIFY(rig.camera().newestFrame(0)->start.number <= last->start.number + 1);
    QVERIFY(!rig.camera().newestFrame(1));
}

void tst_cameraFrames::beforeTheFirstConnectionThereAreNoFrames()
{
    Clock::manual();
    const QTemporaryDir folder;
    const auto camera = Camera::create(QStringLiteral("everything"), folder.path());
    Clock::advance(1000);
    for (int preset = 0; preset < emulator::maximumPresets; ++preset) {
        QVERIFY(!camera->newestFrame(preset));
        QVERIFY(!camera->frame(preset, 0));
    }
    camera->connect();
    const auto first = camera->newestFrame(0);
    QVERIFY(first);
    QCOMPARE(first->start.number, uint64_t(0));
    QCOMPARE(first->start.tick, 0);
    QCOMPARE(first->start.microseconds, Clock::now() * 1000);
}

void tst_cameraFrames::framesGoOnWithoutAConnection()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    const auto before = rig.camera().newestFrame(0);
    rig.camera().disconnect();
    Clock::advance(1000);
    const auto later = rig.camera().newestFrame(0);
    QVERIFY(before && later);
    QCOMPARE(later->start.number, before->start.number + 100);
    rig.camera().connect();
    QVERIFY(rig.newest() == later->counts);
}

void tst_cameraFrames::hugeWindowsHaveNoFrames()
{
    FrameRig rig;
    rig.open("edge-values");
    QVERIFY(rig.set("sync.source", 0) && rig.set("sensor.sequencingMode", int(emulator::Sensor::PresetSequencing)));
    Clock::advance(1'000'000);
    QCOMPARE(rig.window().pixels(), int64_t(65535) * 65535);
    auto *const clock = rig.camera().device<emulator::FrameClock>();
    for (int preset = 0; preset < emulator::maximumPresets; ++preset)
        QVERIFY(clock->newest(preset));
    const qint64 before = usedMemory();
    const qint64 start = computedMicroseconds();
    for (int preset = 0; preset < emulator::maximumPresets; ++preset) {
        QVERIFY(!rig.camera().newestFrame(preset));
        QVERIFY(!rig.camera().frame(preset, clock->newest(preset)->number));
    }
    QVERIFY2(computedMicroseconds() - start < 100'000, qPrintable(QString::number(computedMicroseconds() - start)));
    QVERIFY2(usedMemory() - before < 4'000'000, qPrintable(QString::number(usedMemory() - before)));
    QVERIFY(!rig.exposure().detector);
    // The largest window that has frames, and one row more.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 2048, 2049}));
    QVERIFY(!rig.camera().newestFrame(0));
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 2048, 2048}));
    QVERIFY(rig.camera().newestFrame(0));
}

void tst_cameraFrames::aWindowOfAHugeArrayHasFrames()
{
    FrameRig rig;
    rig.openWith(R"({"sensor": {"maximumSize": "4096x2048", "windowSizes": ["4096x2048"]}})");
    QVERIFY(!rig.camera().newestFrame(0));
    // Each window gets maps of its own, which show the same pixels.
    QVERIFY(rig.set("sensor.window", QVariantList{2048, 1024, 320, 128}));
    const auto part = rig.camera().newestFrame(0);
    QVERIFY(part);
    QVERIFY(rig.set("sensor.window", QVariantList{1888, 1024, 320, 128}));
    const auto shifted = rig.camera().frame(0, part->start.number);
    QVERIFY(shifted);
    for (int row = 0; row < 128; ++row)
        QVERIFY(std::equal(part->counts.begin() + row * 320, part->counts.begin() + row * 320 + 160,
                           shifted->counts.begin() + row * 320 + 160));
}

void tst_cameraFrames::everyProfileHasItsFrames_data()
{
    QTest::addColumn<bool>("hasFrames");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << (name != QLatin1String("edge-values"));
}

void tst_cameraFrames::everyProfileHasItsFrames()
{
    QFETCH(const bool, hasFrames);
    FrameRig rig(QTest::currentDataTag());
    const auto frame = rig.camera().newestFrame(0);
    QCOMPARE(frame.has_value(), hasFrames);
    if (!frame)
        return;
    QCOMPARE(frame->counts.size(), static_cast<size_t>(rig.window().pixels()));
    QCOMPARE(frame->size, (emulator::image::Size{rig.window().width, rig.window().height}));
    const double mean = rig.mean();
    QVERIFY2(mean > 1100 && mean < 12'000, qPrintable(QString::number(mean)));
    QVERIFY(rig.whiteShare() < 0.01);
}

void tst_cameraFrames::poll(Camera &camera)
{
    uint8_t flag = 0;
    float kelvin = 0;
    float other[2] = {};
    zvtGetSaturatedFlag(camera.handle(), &flag);
    zvtGetFPATemperature(camera.handle(), &kelvin);
    zvtGetFPAColdTemperature(camera.handle(), &kelvin);
    zvtGetSCTemperatures(camera.handle(), &kelvin, &other[0], &other[1]);
    zvtGetIRIGLocked(camera.handle(), &flag);
    Clock::advance(1000);
}

void tst_cameraFrames::aPolledCameraMakesNoMaps()
{
    FrameRig rig;
    rig.open("everything");
    for (int second = 0; second < 120; ++second)
        poll(rig.camera());
    QVERIFY(!rig.exposure().detector);
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.camera().newestFrame(0));
    const auto detector = rig.exposure().detector;
    QVERIFY(detector);
    // They are made once, for all windows.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    QVERIFY(rig.camera().newestFrame(0));
    QCOMPARE(rig.exposure().detector, detector);
}

void tst_cameraFrames::tenCamerasMakeTheSameFrames()
{
    constexpr int cameras = 10;
    Clock::manual();
    std::vector<std::unique_ptr<NumberedCamera>> all;
    for (int number = 0; number < cameras; ++number)
        all.push_back(std::make_unique<NumberedCamera>(number));
    Clock::advance(120'000);
    std::vector<std::vector<Counts>> together(cameras);
    {
        std::vector<std::jthread> threads;
        for (int number = 0; number < cameras; ++number)
            threads.emplace_back([&, number] {
                const auto index = static_cast<size_t>(number);
                together[index] = firstFrames(**all[index]);
            });
    }
    for (size_t index = 0; index < all.size(); ++index) {
        QCOMPARE(together[index].size(), size_t(10));
        QVERIFY(together[index] == firstFrames(**all[index]));
        QVERIFY(index == 0 || together[index] != together[index - 1]);
    }
}

void tst_cameraFrames::tenThreadsShareACamera()
{
    FrameRig rig;
    QVERIFY(!rig.exposure().detector);
    QVERIFY(rig.useSmallWindow());
    Clock::advance(1000);
    constexpr size_t threadCount = 10;
    std::vector<std::optional<Frame>> together(threadCount);
    {
        std::vector<std::jthread> threads;
        for (size_t thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([&, thread] { together[thread] = rig.camera().frame(0, 12'050 + thread); });
    }
    for (size_t thread = 0; thread < threadCount; ++thread) {
        QVERIFY(together[thread]);
        QVERIFY(rig.frame(together[thread]->start) == together[thread]->counts);
    }
}

double tst_cameraFrames::freeShare(Camera &camera, const std::function<bool()> &function)
{
    constexpr int enoughAttempts = 100;
    enum Phase { Starting, Running, Ended };
    std::atomic<Phase> phase{Starting};
    std::atomic<int> attempts{0};
    auto succeeded = std::async(std::launch::async, [&] {
        phase = Running;
        bool all = true;
        do
            all = function() && all;
        while (attempts < enoughAttempts);
        phase = Ended;
        return all;
    });
    int locks = 0;
    while (phase != Ended) {
        if (phase == Running) {
            ++attempts;
            if (camera.mutex().try_lock()) {
                ++locks;
                camera.mutex().unlock();
            }
        }
        std::this_thread::yield();
    }
    return succeeded.get() ? double(locks) / attempts : 0;
}

void tst_cameraFrames::theLockIsFreeWhilePixelsAreComputed()
{
    FrameRig rig;
    rig.openWith(R"({"sensor": {"maximumSize": "4096x2048", "windowSizes": ["4096x2048"]}})");
    QVERIFY(rig.showArea(36) && rig.set("sensor.integrationTime", 4.0));
    Camera &camera = rig.camera();
    int column = 0;
    const double makingMaps = freeShare(camera, [&] {
        // Each window of so large an array has maps of its own.
        column = 2048 - column;
        return rig.set("sensor.window", QVariantList{column, 0, 2048, 1024}) && camera.newestFrame(0);
    });
    QVERIFY2(makingMaps > 0.5, qPrintable(QString::number(makingMaps)));
    const double rendering = freeShare(camera, [&] { return camera.newestFrame(0).has_value(); });
    QVERIFY2(rendering > 0.5, qPrintable(QString::number(rendering)));
    auto &video = *camera.device<emulator::VideoOutput>();
    const double drawing = freeShare(camera, [&] { return !video.render().isEmpty(); });
    QVERIFY2(drawing > 0.5, qPrintable(QString::number(drawing)));
    // Some pixels of every row may be saturated, but not enough for the flag, so all rows are counted.
    QVERIFY(rig.showArea(35) && rig.set("sensor.integrationTime", 3.4));
    const double counting = freeShare(camera, [&] {
        uint8_t flag = 1;
        return zvtGetSaturatedFlag(camera.handle(), &flag) == 0 && flag == 0;
    });
    QVERIFY2(counting > 0.5, qPrintable(QString::number(counting)));
    uint16_t threshold = 8000;
    const double countingAll = freeShare(camera, [&] {
        // A changed threshold makes the camera count the pixels again.
        uint32_t pixels = 0;
        return zvtSetSaturationCountThreshold(camera.handle(), 0, ++threshold) == 0
            && zvtGetSaturatedPixels(camera.handle(), 0, &pixels) == 0 && pixels > 0;
    });
    QVERIFY2(countingAll > 0.5, qPrintable(QString::number(countingAll)));
}

// 50 us are allowed in a release build.
void tst_cameraFrames::anExposureIsFilledInAtOnce()
{
#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__)
    constexpr qint64 limit = 50;
#else
    constexpr qint64 limit = 250;
#endif
    FrameRig rig;
    const auto start = rig.camera().newestFrame(0)->start;
    std::vector<qint64> costs;
    for (int round = 0; round < 1000; ++round) {
        Clock::advance(10);
        const qint64 before = computedMicroseconds();
        const auto exposure = rig.camera().exposure(start);
        costs.push_back(computedMicroseconds() - before);
        QVERIFY(exposure.detector);
    }
    std::ranges::nth_element(costs, costs.begin() + 500);
    QVERIFY2(costs[500] < limit, qPrintable(QString::number(costs[500]) + " us"));
}

ZVT_TEST(tst_cameraFrames)
#include "tst_cameraFrames.moc"
