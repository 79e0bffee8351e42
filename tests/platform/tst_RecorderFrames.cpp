#include "platform/emulator/devices/CameraClock.h"
#include "platform/emulator/image/output.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <array>
#include <cstdlib>

/// Which frames a recording has, and what they show.
class tst_RecorderFrames : public Test
{
    Q_OBJECT

private slots:
    void framesHaveALineMore();
    void pretriggerFramesCount();
    void aDriveRecordsNoPretrigger();
    void theGateSelectsFrames();
    void aCommandTriggersWithAClosedGate();
    void aSlowDriveLosesFrames();
    void aFastDriveLosesNone();
    void framesShowTheCameraOfTheirTime();
    void framesKeepTheirSettings();
    void framesKeepTheirPresets();
    void framesKeepAMovingLens();
    void settingsThatChangeOftenAreLimited();
    void framesSurviveTheDrive();
    void moviesHaveTheirTimes();
    void sequencesAreOneEntry();
    void aFullMemoryTakesLittle();
    void aMovingLensTakesLittle();

private:
    using Ranges = std::vector<std::pair<uint64_t, uint64_t>>;
    using Counts = std::vector<uint16_t>;

    static Counts live(RecorderRig &rig, uint64_t number)
    {
        for (int preset = 0; preset < 4; ++preset)
            if (const auto frame = rig.camera().frame(preset, number, emulator::image::Output::Digital))
                return frame->counts;
        return {};
    }
    static Counts recorded(RecorderRig &rig, uint64_t frame)
    {
        const auto played = rig.recorder().frame(frame);
        return played ? played->frame.counts : Counts();
    }
    /// Lets a day pass, after which no temperature drifts.
    static void settle(RecorderRig &rig)
    {
        rig.wait(86'400'000);
        rig.state();
    }
};

void tst_RecorderFrames::framesHaveALineMore()
{
    RecorderRig rig;
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFrames), uint32_t(17'179'869'184 / 640));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk), uint32_t(512'110'190'592 / 640));
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFrames), 26'163U);
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFramesDisk), uint32_t(512'110'190'592 / 656'640));
    rig.openWith(R"({"memoryBytes": 1e15})");
    QCOMPARE(rig.number<uint32_t>(zvtGetSsdMaxNumFrames), UINT32_MAX);
}

void tst_RecorderFrames::pretriggerFramesCount()
{
    for (const int64_t waited : {50, 5000}) {
        RecorderRig rig;
        QVERIFY(zvtSetSsdNumFrames(rig.handle(), 100) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 30) == 0);
        QVERIFY(rig.arm());
        rig.wait(waited);
        const uint64_t trigger = rig.newest();
        const uint64_t before = waited == 50 ? 5 : 30;
        QVERIFY(rig.call(zvtSsdTrigger));
        QCOMPARE(rig.acquired(), uint32_t(before));
        rig.wait(int64_t(100 - before) * 10);
        QCOMPARE(rig.state(), 3);
        QCOMPARE(rig.ranges(), (Ranges{{trigger - before + 1, trigger - before + 100}}));
    }
    // A full ring ends a recording at once.
    RecorderRig rig;
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 20) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 20) == 0);
    QVERIFY(rig.arm());
    rig.wait(1000);
    QVERIFY(rig.call(zvtSsdTrigger));
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.ranges(), (Ranges{{rig.newest() - 19, rig.newest()}}));
}

void tst_RecorderFrames::aDriveRecordsNoPretrigger()
{
    RecorderRig rig;
    rig.openWith(R"({"mode": 1, "frames": 100, "pretrigger": 100})");
    QVERIFY(rig.arm());
    rig.wait(5000);
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(999);
    QCOMPARE(rig.state(), 2);
    rig.wait(1);
    QCOMPARE(rig.state(), 5);
}

void tst_RecorderFrames::theGateSelectsFrames()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordGated, 1) && rig.set(zvtSetSsdRecordType, 2));
    QVERIFY(rig.arm());
    rig.wait(1000);
    const uint64_t start = rig.newest();
    const auto gate = [&](bool open, int64_t milliseconds) {
        const bool done = rig.set("emulator./RecordStart", open);
        rig.wait(milliseconds);
        return done;
    };
    QVERIFY(gate(true, 100) && gate(false, 200) && gate(true, 55) && gate(false, 100));
    QCOMPARE(rig.state(), 2);
    QVERIFY(rig.call(zvtSsdRecordStop));
    // No frame before the trigger has come through the closed gate.
    QCOMPARE(rig.ranges(), (Ranges{{start + 1, start + 10}, {start + 31, start + 35}}));
}

void tst_RecorderFrames::aCommandTriggersWithAClosedGate()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordGated, 1) && zvtSetSsdNumFrames(rig.handle(), 10) == 0);
    QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(1000);
    QCOMPARE(rig.state(), 2);
    QCOMPARE(rig.acquired(), 0U);
    QVERIFY(rig.set("emulator./RecordStart", true));
    rig.wait(100);
    QCOMPARE(rig.state(), 3);
}

void tst_RecorderFrames::aSlowDriveLosesFrames()
{
    RecorderRig rig;
    rig.openDevices(R"({"sensor": {"maximumSize": "1280x1024", "windowSizes": ["1280x1024", "64x4"],
                                   "pixelsPerClock": 16},
                        "recorder": {"mode": 1, "type": 2}})");
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 1280, 1024}) && rig.set("sensor.frameRate", 114.5));
    QVERIFY(rig.arm());
    rig.wait(100);
    const uint64_t start = rig.newest();
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(27'000);
    QCOMPARE(uint64_t(rig.acquired()), rig.newest() - start);
    rig.wait(13'000);
    const uint64_t passed = rig.newest() - start;
    const uint64_t lost = passed - rig.acquired();
    QVERIFY2(lost > 165 && lost < 185, qPrintable(QString::number(lost)));
    QVERIFY(rig.call(zvtSsdRecordStop));
    // The memory before the drive is full: 1 GiB.
    rig.wait(4080);
    QCOMPARE(rig.state(), 5);
    rig.wait(20);
    QCOMPARE(rig.state(), 0);
    zvtSSsdMovieInfo info{};
    QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 0, &info), 0);
    QCOMPARE(uint64_t(info.numFrames), passed - lost);
    QCOMPARE(rig.number<int64_t>(zvtGetSsdDriveSpaceUsed), int64_t(info.numFrames) * 2 * 1280 * 1025);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    const Ranges ranges = rig.ranges();
    QVERIFY(uint64_t(ranges.size()) == lost || uint64_t(ranges.size()) == lost + 1);
    const double filled = double(ranges.front().second - start) / 114.5;
    QVERIFY2(filled > 27.8 && filled < 28.3, qPrintable(QString::number(filled)));
    for (size_t range = 1; range + 1 < ranges.size(); ++range) {
        const uint64_t kept = ranges[range].second - ranges[range].first + 1;
        QVERIFY(kept == 6 || kept == 7);
        QCOMPARE(ranges[range].first, ranges[range - 1].second + 2);
    }
}

void tst_RecorderFrames::aFastDriveLosesNone()
{
    RecorderRig rig;
    rig.openDevices(R"({"recorder": {"mode": 1, "type": 2}})");
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}) && rig.set("sensor.frameRate", 1e5));
    QVERIFY(rig.arm());
    const uint64_t start = rig.newest();
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(100'000);
    QCOMPARE(uint64_t(rig.acquired()), rig.newest() - start);
    QVERIFY(rig.newest() - start > 20'000);
}

void tst_RecorderFrames::framesShowTheCameraOfTheirTime()
{
    RecorderRig rig;
    settle(rig);
    QVERIFY(rig.set("sensor.window", QVariantList{240, 192, 160, 128}) && rig.record(10));
    const uint64_t last = rig.newest();
    for (const uint64_t back : {0, 3, 9}) {
        const auto played = rig.recorder().frame(9 - back);
        QVERIFY(played);
        QCOMPARE(played->frame.start.number, last - back);
        QCOMPARE(played->frame.size, (emulator::image::Size{160, 128}));
        QVERIFY(played->frame.counts == live(rig, last - back));
        const auto irig = rig.camera().device<emulator::CameraClock>()->irigTimeAt(played->frame.start.microseconds);
        QCOMPARE(played->irigTime.microsecond, irig.microsecond);
        QCOMPARE(played->irigTime.second, irig.second);
    }
    QVERIFY(recorded(rig, 0) != recorded(rig, 9));
    QVERIFY(!rig.recorder().frame(10));
    // Later changes of the camera do not change them.
    const Counts before = recorded(rig, 5);
    QVERIFY(rig.set("sensor.integrationTime", 1.0) && rig.set("zoom.position", 9000)
            && rig.set("image.reverted", true));
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 64, 4}));
    rig.wait(10'000);
    QVERIFY(recorded(rig, 5) == before);
}

void tst_RecorderFrames::framesKeepTheirSettings()
{
    RecorderRig rig;
    settle(rig);
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && zvtSetSsdPretriggerFrames(rig.handle(), 20) == 0 && rig.arm());
    rig.wait(200);
    const auto set = [&](const char *name, const QVariant &value) {
        rig.wait(100);
        return rig.set(name, value);
    };
    // The first one changes before the trigger.
    QVERIFY(set("gain.level", 2) && rig.call(zvtSsdTrigger));
    QVERIFY(set("image.reverted", true) && set("digital.offsets", QVariantList{100, 0, 0, 0}));
    QVERIFY(set("emulator./Pattern", 3));
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdRecordStop));
    QCOMPARE(rig.acquired(), 60U);
    const auto exposure
        = [&](uint64_t frame) { return rig.recorder().recorded(*rig.recorder().memory(), frame).exposure; };
    for (uint64_t frame = 0; frame < 60; ++frame) {
        const auto exposed = exposure(frame);
        QCOMPARE(exposed.readout.gainLevel, frame < 20 ? 0 : 2);
        QCOMPARE(exposed.optics.mirrored, frame >= 30);
        QCOMPARE(exposed.digitalOffset, frame < 40 ? 0.f : 100.f);
        QCOMPARE(int(exposed.scene.pattern), frame < 50 ? 0 : 3);
    }
    QVERIFY(recorded(rig, 59) == live(rig, rig.numbers().back()));
}

void tst_RecorderFrames::framesKeepTheirPresets()
{
    RecorderRig rig;
    QVERIFY(rig.set("sensor.sequencingMode", 2) && rig.record(40));
    for (uint64_t frame = 0; frame < 40; ++frame) {
        const auto shown = rig.recorder().recorded(*rig.recorder().memory(), frame);
        // The first frame had begun before the sequencing mode changed.
        QCOMPARE(shown.start.preset, int((shown.start.number + 3) % 4));
        const std::array times{2.0, 1.0, 0.5, 0.25};
        QCOMPARE(shown.exposure.readout.integrationTime, times[size_t(shown.start.preset)]);
    }
}

void tst_RecorderFrames::framesKeepAMovingLens()
{
    RecorderRig rig;
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 200) == 0 && zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0);
    QVERIFY(rig.arm() && rig.set("zoom.position", 9500) && rig.call(zvtSsdTrigger));
    // Nothing looks at the camera meanwhile.
    rig.wait(10'000);
    QCOMPARE(rig.state(), 3);
    const auto magnification = [&](uint64_t frame) {
        return rig.recorder().recorded(*rig.recorder().memory(), frame).exposure.optics.magnification;
    };
    for (uint64_t frame = 1; frame < 190; ++frame)
        QVERIFY(magnification(frame) > magnification(frame - 1));
    // A camera that is called meanwhile shows the same.
    RecorderRig watched;
    watched.arm();
    QVERIFY(watched.set("zoom.position", 9500));
    watched.wait(1000);
    const auto seen = watched.camera().exposure({}).optics.magnification;
    QVERIFY(magnification(98) <= seen && seen <= magnification(100));
}

void tst_RecorderFrames::settingsThatChangeOftenAreLimited()
{
    RecorderRig rig;
    QVERIFY(rig.set("sensor.integrationTime", 0.01) && rig.set("sensor.frameRate", 10'000));
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm() && rig.call(zvtSsdTrigger));
    QVERIFY(rig.set("zoom.position", 9500));
    for (int change = 0; change < 1000; ++change) {
        QVERIFY(rig.set("image.reverted", change % 2 == 0));
        rig.wait(1);
    }
    QVERIFY(rig.call(zvtSsdRecordStop));
    const size_t segments = rig.recorder().memory()->segments();
    QVERIFY2(segments > 20 && segments <= 101, qPrintable(QString::number(segments)));
}

void tst_RecorderFrames::framesSurviveTheDrive()
{
    RecorderRig rig;
    LensRig::coolDetector();
    QVERIFY(rig.set("sensor.window", QVariantList{240, 192, 160, 128}) && rig.record(20));
    std::vector<uint32_t> before;
    const auto checksums = [&] {
        std::vector<uint32_t> all;
        for (uint64_t frame = 0; frame < 20; ++frame)
            all.push_back(rig.recorder().frame(frame)->checksum);
        return all;
    };
    before = checksums();
    QVERIFY(std::ranges::adjacent_find(before) == before.end());
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QVERIFY(rig.record(20));
    QVERIFY(checksums() != before);
    QCOMPARE(zvtSsdLoadMovie(rig.handle(), 0), 0);
    QCOMPARE(checksums(), before);
}

void tst_RecorderFrames::moviesHaveTheirTimes()
{
    RecorderRig rig;
    QCOMPARE(zvtSetSsdSaveName(rig.handle(), QByteArray(66, 'x').append("\xc3\xa4 and more").constData()), 0);
    QVERIFY(rig.record(101) && rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    zvtSSsdMovieInfo info{};
    QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 1, &info), int(emulator::Refused));
    QCOMPARE(zvtGetSsdMovieInfo(rig.handle(), 0, &info), 0);
    QCOMPARE(QByteArray(info.name), QByteArray(66, 'x'));
    QVERIFY(info.number == 1 && info.width == 64 && info.height == 5 && info.numFrames == 101);
    const auto milliseconds = [](const zvtSIRIG &time) {
        return ((time.hour * 60 + time.minute) * 60 + time.second) * 1000 + time.millisecond;
    };
    QVERIFY(info.startTime.day == 60);
    QCOMPARE(milliseconds(info.endTime) - milliseconds(info.startTime), 1000);
    QVERIFY(rig.call(zvtSsdFormatDrive));
    rig.wait(3000);
    QVERIFY(rig.call(zvtSsdSaveBuffer));
    rig.wait(500);
    QVERIFY(zvtGetSsdMovieInfo(rig.handle(), 0, &info) == 0 && info.number == 1);
}

void tst_RecorderFrames::sequencesAreOneEntry()
{
    RecorderRig rig;
    for (const auto *source : {"internal", "external"}) {
        const bool internal = QByteArray(source) == "internal";
        QVERIFY(rig.set("trigger.mode", 2) && rig.set("trigger.source", internal ? 0 : 1));
        QVERIFY(rig.set("sensor.frameRate", 1000) && rig.set("trigger.sequenceCount", 3));
        // The period of 30 Hz is not a whole number of clocks.
        QVERIFY(rig.set("trigger.internalRate", 100) && rig.set("sync.triggerRate", 30));
        QVERIFY(rig.set(zvtSetSsdRecordType, 2) && zvtSetSsdPretriggerFrames(rig.handle(), 0) == 0);
        rig.wait(10'000);
        QVERIFY(rig.arm() && rig.call(zvtSsdTrigger));
        rig.wait(3600);
        rig.state();
        rig.wait(6400);
        QCOMPARE(rig.state(), 2);
        QVERIFY(rig.recorder().frameLog().size() <= 2);
        QVERIFY(rig.call(zvtSsdRecordStop));
        QCOMPARE(rig.acquired(), internal ? 3000U : 900U);
        const auto &memory = *rig.recorder().memory();
        for (uint64_t frame = 3; frame < memory.frames(); ++frame) {
            const int64_t period = memory.start(frame).microseconds - memory.start(frame - 3).microseconds;
            QVERIFY(std::abs(period - (internal ? 10'000 : 33'333)) <= 1);
        }
        QCOMPARE(memory.start(memory.frames() - 1).number, rig.newest());
    }
}

void tst_RecorderFrames::aFullMemoryTakesLittle()
{
    RecorderRig rig;
    QVERIFY(rig.set("sensor.integrationTime", 0.001) && rig.set("sensor.frameRate", 25'000));
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm());
    QVERIFY(rig.call(zvtSsdTrigger));
    for (int step = 0; rig.state() == 2 && step < 300; ++step)
        rig.wait(10'000);
    QCOMPARE(rig.state(), 3);
    QCOMPARE(rig.acquired(), 26'843'545U);
    // The temperatures of the camera drift while it warms up.
    const auto &memory = *rig.recorder().memory();
    QVERIFY2(memory.segments() > 10 && memory.segments() < 8000, qPrintable(QString::number(memory.segments())));
    QVERIFY2(memory.memoryUse() < 1'000'000, qPrintable(QString::number(memory.memoryUse())));
}

void tst_RecorderFrames::aMovingLensTakesLittle()
{
    RecorderRig rig;
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm());
    QVERIFY(rig.call(zvtSsdTrigger));
    for (int second = 0; second < 120; second += 2) {
        QVERIFY(rig.set("zoom.position", second % 4 == 0 ? 9500 : 500));
        rig.wait(2000);
    }
    QVERIFY(rig.call(zvtSsdRecordStop));
    const auto &memory = *rig.recorder().memory();
    QVERIFY2(memory.segments() > 11'000 && memory.segments() <= 12'010, qPrintable(QString::number(memory.segments())));
    // While it records, the recorder has as much.
    const size_t most = 2 * memory.memoryUse();
    QVERIFY2(most > memory.segments() * 160 && most < 4'000'000, qPrintable(QString::number(most)));
}

ZVT_TEST(tst_RecorderFrames)
#include "tst_RecorderFrames.moc"
