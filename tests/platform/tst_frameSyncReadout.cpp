#include "platform/emulator/devices/CameraClock.h"
#include "tests/platform/FrameClockRig.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

using emulator::Clock;
using emulator::FrameSync;
using emulator::Sensor;

namespace
{

constexpr int64_t ms = FrameClockRig::ticksPerMillisecond;

/// A camera with a signal at its sync input, whose pulses start the readout.
struct ReadoutRig : FrameClockRig {
    explicit ReadoutRig(double hertz)
        : ready(set("sync.source", FrameSync::External) && set("sync.externalRate", hertz)
                && set("sync.mode", FrameSync::StartsReadout))
    {
    }

    bool watch(int milliseconds)
    {
        camera().connect();
        bool consistent = poll();
        for (int n = 0; n < milliseconds; ++n) {
            Clock::advance(1);
            consistent = poll() && consistent;
        }
        return ready && consistent && complete();
    }

    uint32_t minimum(int preset)
    {
        uint32_t integration = 0;
        uint32_t width = 0;
        sensor().integrationWidth(preset, integration);
        sensor().minimumFrameWidth({640, 512}, integration, false, width);
        return width;
    }

    bool ready;
};

} // namespace

/// A frame sync that starts the readout: the integration ends at the pulse.
class tst_frameSyncReadout : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        Clock::manual();
    }
    void cleanup() { Clock::automatic(); }

    void theIntegrationEndsAtThePulse();
    void eachPresetHasItsOwnIntegration();
    void subframesFollowTheFirstReadout();
    void theInternalSourceIsNotAffected();
    void changesOfPresetsNeedNoTime();
    void shortFramesAreRestored();
    void framesGetLongerWithoutIt();
    void aDelayShiftsThePulses();
};

void tst_frameSyncReadout::theIntegrationEndsAtThePulse()
{
    ReadoutRig rig(50);
    QCOMPARE(rig.sensor().setIntegrationTime(0, 3), emulator::Ok);
    QVERIFY(rig.watch(90));
    QCOMPARE(rig.frames().size(), 4U);
    const auto &clock = *rig.camera().device<emulator::CameraClock>();
    for (const auto &[number, frame] : rig.frames()) {
        QCOMPARE(frame.tick, int64_t(20 * (number + 1) - 3) * ms);
        // The IRIG time of the pulse, 20 ms apart, is 3 ms later.
        const auto time = clock.irigTimeAt(frame.microseconds);
        const auto pulse = clock.irigTimeAt((rig.start + int64_t(20 * (number + 1))) * 1000);
        QCOMPARE((pulse.millisecond + 1000 - time.millisecond) % 1000, 3);
    }
    QCOMPARE(rig.clock().averageRate(), 50.0);
    // The other mode: the integration begins with the pulse.
    FrameClockRig other;
    QCOMPARE(other.sensor().setIntegrationTime(0, 3), emulator::Ok);
    QVERIFY(other.set("sync.source", FrameSync::External));
    other.camera().connect();
    Clock::advance(90);
    QCOMPARE(other.clock().newest(0)->tick, 80 * ms);
}

void tst_frameSyncReadout::eachPresetHasItsOwnIntegration()
{
    ReadoutRig rig(100);
    const double times[] = {2, 25, 0.05, 9};
    for (const int preset : {0, 1, 2, 3})
        QCOMPARE(rig.sensor().setIntegrationTime(preset, times[preset]), emulator::Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    QVERIFY(rig.watch(140));
    // The pulse of each frame; the one of preset 1 needs three periods.
    const int pulses[] = {10, 40, 50, 60};
    for (const auto &[number, frame] : rig.frames()) {
        const auto preset = static_cast<size_t>(number % 4);
        QCOMPARE(frame.preset, int(preset));
        QCOMPARE(double(frame.tick), (double(pulses[preset] + 60 * int(number / 4)) - times[preset]) * double(ms));
    }
    QCOMPARE(rig.clock().averageRate(), 400.0 / 6);
}

void tst_frameSyncReadout::subframesFollowTheFirstReadout()
{
    ReadoutRig rig(20);
    for (const int preset : {0, 1, 2, 3})
        QCOMPARE(rig.sensor().setIntegrationTime(preset, preset + 1), emulator::Ok);
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    QCOMPARE(rig.sensor().setSubframeEnabled(1, false), emulator::Ok);
    QVERIFY(rig.watch(190));
    QCOMPARE(rig.frames().size(), 9U);
    for (const auto &[number, frame] : rig.frames()) {
        int64_t tick = 50 * ms * int64_t(number / 3 + 1);
        if (number % 3 > 0)
            tick += rig.minimum(2);
        if (number % 3 > 1)
            tick += rig.minimum(3);
        const int preset = number % 3 == 0 ? 0 : int(number % 3) + 1;
        QCOMPARE(frame.preset, preset);
        QCOMPARE(frame.tick, tick - (preset + 1) * ms);
    }
}

void tst_frameSyncReadout::theInternalSourceIsNotAffected()
{
    ReadoutRig rig(50);
    QVERIFY(rig.set("sync.source", FrameSync::Internal));
    QVERIFY(rig.watch(25));
    QCOMPARE(rig.frames().at(2).tick, 20 * ms);
}

void tst_frameSyncReadout::changesOfPresetsNeedNoTime()
{
    FrameClockRig rig;
    rig.camera().connect();
    const uint64_t handle = rig.camera().handle();
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    uint32_t shortest = 0;
    QCOMPARE(zvtCalcMinFrameWidthEx(handle, &shortest, 640, 512, 40'000, false), 0);
    uint32_t withChange = 0;
    QCOMPARE(zvtCalcMinFrameWidthEx(handle, &withChange, 640, 512, 40'000, true), 0);
    QCOMPARE(withChange, shortest + 400);
    QVERIFY(zvtSetFrameWidth(handle, 0, shortest) != 0);
    QCOMPARE(zvtSetFrameSyncMode(handle, FrameSync::StartsReadout), 0);
    QCOMPARE(zvtSetFrameWidth(handle, 0, shortest), 0);
    QVERIFY(zvtSetFrameWidth(handle, 0, shortest - 1) != 0);
    // The frames are so short, as are superframes.
    Clock::advance(100);
    const auto last = rig.clock().newest(0);
    QCOMPARE(rig.sensor().setDwellCount(0, 5), emulator::Ok);
    rig.clock().updateFrameTiming();
    Clock::advance(50);
    const auto frame = rig.clock().newest(0);
    QVERIFY(frame->number > last->number);
    QCOMPARE(rig.clock().frame(frame->number - 1)->tick, frame->tick - shortest);
    QCOMPARE(rig.sensor().superframeRates().front(), 20e6 / (4.0 * shortest));
}

void tst_frameSyncReadout::shortFramesAreRestored()
{
    FrameClockRig rig;
    rig.camera().connect();
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    const QJsonObject before = rig.camera().snapshot();
    QVERIFY(rig.set("sync.mode", 1));
    uint32_t shortest = 0;
    QCOMPARE(rig.sensor().minimumFrameWidth({640, 512}, 40'000, false, shortest), emulator::Ok);
    QCOMPARE(rig.sensor().setFrameWidth(0, shortest), emulator::Ok);
    const QJsonObject after = rig.camera().snapshot();
    rig.camera().restore(before);
    QCOMPARE(rig.camera().device<FrameSync>()->mode(), uint8_t(FrameSync::StartsIntegration));
    rig.camera().restore(after);
    QCOMPARE(rig.camera().snapshot(), after);
    uint32_t width = 0;
    QCOMPARE(rig.sensor().frameWidth(0, width), emulator::Ok);
    QCOMPARE(width, shortest);
}

void tst_frameSyncReadout::framesGetLongerWithoutIt()
{
    FrameClockRig rig;
    QCOMPARE(rig.sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    QVERIFY(rig.set("sync.mode", 1));
    uint32_t shortest = 0;
    QCOMPARE(rig.sensor().minimumFrameWidth({640, 512}, 40'000, false, shortest), emulator::Ok);
    QCOMPARE(rig.sensor().setFrameWidth(0, shortest), emulator::Ok);
    QVERIFY(rig.set("sync.mode", 0));
    uint32_t width = 0;
    QCOMPARE(rig.sensor().frameWidth(0, width), emulator::Ok);
    QCOMPARE(width, shortest + 400);
}

void tst_frameSyncReadout::aDelayShiftsThePulses()
{
    for (const int mode : {0, 1}) {
        ReadoutRig rig(50);
        QCOMPARE(rig.sensor().setIntegrationTime(0, 3), emulator::Ok);
        QVERIFY(rig.set("sync.mode", mode) && rig.set("sync.delay", 30'000.05));
        QVERIFY(rig.watch(90));
        const int64_t first = (mode == 0 ? 30 * ms : 47 * ms) + 1;
        QCOMPARE(rig.frames().at(0).tick, first);
        QCOMPARE(rig.frames().at(1).tick, first + 20 * ms);
    }
}

ZVT_TEST(tst_frameSyncReadout)
#include "tst_frameSyncReadout.moc"
