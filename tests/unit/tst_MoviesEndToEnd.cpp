#include "platform/emulator/devices/Link.h"
#include "recording/convertToQdseq.h"
#include "tests/platform/TransferRig.h"
#include "tests/support/Test.h"

#include <algorithm>

/// The way of a recording from the camera to a converted movie: every frame that arrives is the frame that was
/// recorded.
class tst_MoviesEndToEnd : public Test
{
    Q_OBJECT

private slots:
    void framesArriveAsTheyWereRecorded_data();
    void framesArriveAsTheyWereRecorded();

private:
    /// What the recorder tells of a frame, and what a movie does.
    struct Frame {
        uint32_t checksum;
        uint32_t number;
        int preset;
        int year;
        int day;
        int64_t microseconds; ///< Since midnight.
        bool operator==(const Frame &) const = default;
    };

    template <class Time> static int64_t microsecondsOf(const Time &time)
    {
        const int64_t seconds = (time.hour * 60 + time.minute) * 60 + time.second;
        return (seconds * 1000 + time.millisecond) * 1000 + time.microsecond;
    }
    static std::vector<Frame> recorded(TransferRig &rig)
    {
        std::vector<Frame> frames;
        for (uint64_t n = 0; const auto frame = rig.recorder().frame(n); ++n) {
            const auto &time = frame->irigTime;
            frames.push_back({frame->checksum, static_cast<uint32_t>(frame->frame.start.number),
                              frame->frame.start.preset, time.year, time.day, microsecondsOf(time)});
        }
        return frames;
    }
    static std::vector<Frame> inMovie(const hlx::file::MovieReader *movie)
    {
        std::vector<Frame> frames;
        for (const auto &frame : TransferRig::framesOf(movie)) {
            const auto info = frame ? frame->info : hlx::file::MovieFrame();
            frames.push_back({frame ? frame->checksum : 0, info.number, info.preset, info.year, info.time.day,
                              microsecondsOf(info.time)});
        }
        return frames;
    }

    static bool useTwoPresets(TransferRig &rig)
    {
        bool used = rig.set("sensor.sequencingMode", 1);
        for (const int preset : {2, 3})
            used = used && rig.set("sensor.activePreset", preset) && rig.set("sensor.subframeEnabled", false);
        return used && rig.set("sensor.activePreset", 0);
    }
    static bool record(TransferRig &rig, uint32_t frames)
    {
        const bool triggered = zvtSetSsdNumFrames(rig.handle(), frames) == 0 && rig.arm() && rig.call(zvtSsdTrigger);
        rig.wait(60'000);
        return triggered && rig.state() == TransferRig::State::Complete && rig.acquired() == frames;
    }
    /// Records again until the link loses a frame.
    static bool recordWithLoss(TransferRig &rig, uint32_t frames)
    {
        const auto isLost = [&rig](uint64_t number) { return rig.camera().device<emulator::Link>()->loses(number, 0); };
        for (int attempt = 0; attempt < 100; ++attempt) {
            if (!record(rig, frames))
                return false;
            if (std::ranges::any_of(rig.numbers(), isLost))
                return true;
        }
        return false;
    }
};

void tst_MoviesEndToEnd::framesArriveAsTheyWereRecorded_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<unsigned int>("frames");
    QTest::newRow("64x4") << 64 << 4 << 200U;
    QTest::newRow("160x128") << 160 << 128 << 60U;
    QTest::newRow("320x256") << 320 << 256 << 24U;
    QTest::newRow("640x512") << 640 << 512 << 8U;
}

void tst_MoviesEndToEnd::framesArriveAsTheyWereRecorded()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(unsigned int, frames);
    const QVariantList window{0, 0, width, height};
    TransferRig rig;
    TransferRig::coolDetector();
    QVERIFY(rig.set("sensor.window", window) && useTwoPresets(rig));
    QVERIFY(rig.lose(50'000) && recordWithLoss(rig, frames));
    const auto original = recorded(rig);
    QCOMPARE(original.size(), size_t(frames));
    for (const int preset : {0, 1})
        QCOMPARE(std::ranges::count(original, preset, &Frame::preset), ptrdiff_t(frames / 2));

    const uint32_t place = rig.movies();
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(10'000);
    QCOMPARE(rig.movies(), place + 1);
    // Only a movie can be unloaded.
    QVERIFY(rig.load(place) && rig.call(zvtSsdUnload));
    QVERIFY(rig.recorder().memory() == nullptr);
    rig.restart();
    QVERIFY(rig.recorder().memory() == nullptr);
    QVERIFY(rig.set("sensor.window", window));
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), place), 0);
    QVERIFY(rig.lose(50'000) && rig.download());
    const auto raw = rig.open();
    QVERIFY(inMovie(raw.get()) == original);
    const auto isFetchedAgain = [](const auto &frame) { return (frame->info.flags & 1) != 0; };
    QVERIFY(std::ranges::any_of(TransferRig::framesOf(raw.get()), isFetchedAgain));
    // An unloaded movie is gone from the camera; the file stays.
    QVERIFY(rig.call(zvtSsdUnload));

    const QString converted = rig.path() + ".qdseq";
    QCOMPARE(ConvertToQdseq(qPrintable(rig.path()), qPrintable(converted), "", {}), 1);
    const auto movie = rig.openMovie(hlx::file::qdseqFormat, converted);
    QVERIFY(movie);
    QVERIFY(inMovie(movie.get()) == original);
    QVERIFY(rig.objects.GetCorrection(0, false) && rig.objects.GetCorrection(1, false));
}

ZVT_TEST(tst_MoviesEndToEnd)
#include "tst_MoviesEndToEnd.moc"
