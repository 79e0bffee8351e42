#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/overlayTexts.h"
#include "platform/hlxcam/EmulatedDevice.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <tuple>

namespace
{

using emulator::Clock;
using emulator::RecordedFrame;

bool sameTimes(const RecordedFrame &a, const RecordedFrame &b)
{
    const auto fields = [](const RecordedFrame &frame) {
        const auto &real = frame.realTime;
        const auto &irig = frame.irigTime;
        return std::tuple(real.year, real.month, real.day, real.hour, real.minute, real.second, irig.day, irig.hour,
                          irig.minute, irig.second, irig.millisecond, irig.microsecond);
    };
    return a.start == b.start && fields(a) == fields(b);
}

/// Whether two cameras have recorded the same frame, but for the correction.
bool same(const RecordedFrame &a, const RecordedFrame &b)
{
    const auto &x = a.exposure;
    const auto &y = b.exposure;
    return sameTimes(a, b) && x.frameNumber == y.frameNumber && x.window == y.window && x.scene == y.scene
        && x.optics == y.optics && x.band == y.band && x.readout == y.readout && x.repair == y.repair
        && x.showBadPixels == y.showBadPixels && x.videoCorrected == y.videoCorrected
        && x.digitalCorrected == y.digitalCorrected && x.digitalGain == y.digitalGain
        && x.digitalOffset == y.digitalOffset;
}

/// Sets a property of the emulator as the framework does.
bool setByFramework(RecorderRig &rig, const QString &path, const QVariant &value)
{
    hlx::cam::EmulatedDevice device(rig.camera().shared_from_this());
    const bool isFloat = value.typeId() == QMetaType::Float;
    const hlx::CVariant text(hlx::CString(value.toString().toUtf8().constData()));
    return device.properties().set(path.toUtf8().constData(), isFloat ? hlx::CVariant(value.toFloat()) : text);
}

/// A camera to which commands are given, and one which is looked at besides. They share the clock.
class TwoRigs
{
public:
    explicit TwoRigs(uint32_t seed = 0) : m_random(seed), m_usesDevice(seed / 2 % 2 == 1) { }

    /// Arms and triggers both for a recording that is stopped.
    bool start()
    {
        const bool armed
            = both([](RecorderRig &rig) { return rig.set(zvtSetSsdRecordType, 2) && rig.call(zvtSsdArm); });
        Clock::advance(303);
        return armed && both([](RecorderRig &rig) { return rig.call(zvtSsdTrigger); });
    }
    /// Stops both. Returns how the first frame differs between them, empty if the recordings are the same.
    QString difference(uint64_t step = 1)
    {
        both([](RecorderRig &rig) { return rig.call(zvtSsdRecordStop); });
        const auto &expected = alone.recorder().memory();
        const auto &recorded = watched.recorder().memory();
        if (!expected || !recorded || expected->frames() != recorded->frames()
            || expected->segments() != recorded->segments())
            return QStringLiteral("frames or segments");
        // To read the corrections would take too long: frames with the same one have it in both recordings.
        std::map<const void *, const void *> corrections;
        std::map<const void *, const void *> backwards;
        for (uint64_t frame = 0; frame < expected->frames(); frame += step) {
            const RecordedFrame a = alone.recorder().recorded(*expected, frame);
            const RecordedFrame b = watched.recorder().recorded(*recorded, frame);
            const void *const first = a.correction.get();
            const void *const second = b.correction.get();
            const bool none = !first && !second;
            const bool sameCorrection = none
                || (first && second && corrections.try_emplace(first, second).first->second == second
                    && backwards.try_emplace(second, first).first->second == first);
            if (!sameCorrection || !same(a, b))
                return QStringLiteral("frame %1").arg(frame);
        }
        return {};
    }

    /// 1 ms to 10 s, as many short times as long ones.
    void waitAndLook()
    {
        int64_t left = duration();
        while (left > 0) {
            const int64_t passed = std::min(left, duration());
            Clock::advance(passed);
            left -= passed;
            if (left > 0)
                look();
        }
    }
    /// Both cameras get a random command. Returns whether both have taken it.
    bool command()
    {
        const double share = double(m_random() % 1000) / 1000;
        const bool flag = share < 0.5;
        const auto third = size_t(share * 3);
        const std::pair<const char *, QVariant> changes[] = {
            {"zoom.position", 500 + int(share * 9000)},
            {"zoom.position", 9500 - int(share * 9000)},
            {"focus.position", int(share * 10'000)},
            {"autoFocus.sceneDistance", 5 + share * 100},
            {"gain.level", int(third)},
            {"image.reverted", flag},
            {"digital.offsets", QVariantList{share, 0, 0, 0}},
            {"emulator./Pattern", int(third)},
            {"flag.state", flag ? 1 : 0},
            {"flag.setpoint", 10 + share * 30},
            {"emulator./ChamberProfile", flag ? "0:60,5:-20" : QString("0:%1").arg(10 + share * 40)},
            {"cooler.setpoint", 70 + share * 20},
            {"cover.state", flag ? 1 : 0},
            {"filters.current", std::array{1, 13, 21}.at(third)},
            {"corrections.names", QVariantList{flag ? "Factory 2 ms" : "", "", "", "Factory 1 ms"}},
            {"corrections.digitalCorrected", flag},
        };
        const size_t index = m_random() % (std::size(changes) + 1);
        return both([&](RecorderRig &rig) {
            if (index < std::size(changes))
                return change(rig, changes[index].first, changes[index].second);
            return zvtSetRealTimeClock(rig.handle(), uint8_t(20 + third), 3, 4, 5, 6, 7) == 0;
        });
    }
    template <class Call> bool both(Call call)
    {
        const bool first = call(alone);
        return call(watched) && first;
    }

    RecorderRig alone;
    RecorderRig watched;

private:
    bool change(RecorderRig &rig, const char *name, const QVariant &value) const
    {
        const QString path = QString(name).section('.', 1);
        return m_usesDevice && path.startsWith('/') ? setByFramework(rig, path, value) : rig.set(name, value);
    }
    int64_t duration() { return int64_t(std::pow(10.0, double(m_random() % 4001) / 1000)); }
    void look()
    {
        switch (m_random() % 3) {
        case 0:
            watched.state();
            break;
        case 1:
            watched.camera().newestFrame(0);
            break;
        default:
            watched.number<float>(zvtGetFPATemperature);
        }
    }

    std::mt19937 m_random;
    bool m_usesDevice; ///< The properties of the emulator are set through the framework.
};

} // namespace

/// The settings with which recorded frames were exposed.
class tst_RecorderExposures : public Test
{
    Q_OBJECT

private slots:
    void looksChangeNothing();
    void looksInALongSilenceChangeNothing();
    void looksDuringASlowOperationChangeNothing();
    void looksChangeNothingWhileTheChamberTurns();
    void aDisconnectionStopsTheLens();
    void aNumberThatIsNoneIsNoChange();
    void changesWaitForTenMilliseconds();
    void framesHaveTheirDates();
    void anAutomaticCorrectionGivesWay();
    void anOperatorsCorrectionDoesNot();
    void noAutomaticCorrectionStartsBeforeTheNextRecording();
};

void tst_RecorderExposures::looksChangeNothing()
{
    for (uint32_t seed = 0; seed < 40; ++seed) {
        TwoRigs rigs(seed);
        if (seed % 3 != 0)
            LensRig::coolDetector();
        if (seed % 2 == 1)
            QVERIFY(rigs.both([](RecorderRig &rig) {
                return rig.set("sensor.integrationTime", 0.1) && rig.set("sensor.frameRate", 1000);
            }));
        QVERIFY(rigs.start());
        for (int command = 0; command < 25; ++command) {
            rigs.waitAndLook();
            QVERIFY(rigs.command());
        }
        rigs.waitAndLook();
        const QString difference = rigs.difference(1 + seed % 5);
        QVERIFY2(difference.isEmpty(), qPrintable(QString("seed %1: %2").arg(seed).arg(difference)));
    }
}

void tst_RecorderExposures::looksInALongSilenceChangeNothing()
{
    TwoRigs rigs;
    QVERIFY(rigs.start());
    QVERIFY(rigs.both([](RecorderRig &rig) {
        return rig.set("filters.current", 21) && rig.set("environment.ambient", 40) && rig.set("flag.setpoint", 35);
    }));
    for (int second = 0; second < 7200; second += 6) {
        Clock::advance(6000);
        rigs.watched.state();
    }
    QCOMPARE(rigs.difference(101), QString());
    QVERIFY(rigs.alone.recorder().memory()->segments() > 1000);
}

/// After the flat part of the program, the temperature of the case rises and falls again within 2 s, also on one
/// straight line of the program.
void tst_RecorderExposures::looksChangeNothingWhileTheChamberTurns()
{
    for (const char *program : {"0:23,90:23,90.5:60,91.5:-14,92:23", "0:23,90:23,90.001:80,91:-34,91.001:23"}) {
        TwoRigs rigs;
        Clock::advance(86'400'000);
        QVERIFY(rigs.start());
        QVERIFY(rigs.both([&](RecorderRig &rig) { return rig.set("emulator./ChamberProfile", program); }));
        Clock::advance(89'990);
        for (int look = 0; look < 400; ++look) {
            Clock::advance(25);
            rigs.watched.state();
        }
        QCOMPARE(rigs.difference(), QString());
        QVERIFY(rigs.alone.recorder().memory()->segments() > 3);
    }
}

/// A search of the focus moves the lens several times in one call.
void tst_RecorderExposures::looksDuringASlowOperationChangeNothing()
{
    std::vector<double> unseen;
    for (const bool looks : {false, true}) {
        RecorderRig rig;
        LensRig::coolDetector();
        QVERIFY(rig.set("sensor.window", QVariantList{240, 192, 160, 128}));
        QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm() && rig.call(zvtSsdTrigger));
        const std::function<void()> look = [&] {
            rig.state();
            Clock::duringNextWait(look);
        };
        if (looks)
            Clock::duringNextWait(look);
        const int searched = zvtAutoFocusFull(rig.handle(), 0);
        Clock::duringNextWait(nullptr);
        QCOMPARE(searched, 0);
        QVERIFY(rig.call(zvtSsdRecordStop));
        const auto memory = rig.recorder().memory();
        std::vector<double> seen;
        for (uint64_t frame = 0; frame < memory->frames(); ++frame)
            seen.push_back(rig.recorder().recorded(*memory, frame).exposure.optics.defocus);
        QVERIFY(std::ranges::max(seen) > 2 && seen.size() > 200);
        if (looks)
            QVERIFY(seen == unseen);
        unseen = seen;
    }
}

void tst_RecorderExposures::aDisconnectionStopsTheLens()
{
    TwoRigs rigs;
    QVERIFY(rigs.start());
    QVERIFY(rigs.both([](RecorderRig &rig) { return rig.set("zoom.position", 9500); }));
    Clock::advance(500);
    rigs.watched.state();
    rigs.both([](RecorderRig &rig) { return rig.camera().disconnect(), true; });
    Clock::advance(500);
    rigs.both([](RecorderRig &rig) { return rig.camera().connect(), true; });
    QCOMPARE(rigs.difference(), QString());
    const auto memory = rigs.alone.recorder().memory();
    const auto magnification
        = [&](uint64_t frame) { return rigs.alone.recorder().recorded(*memory, frame).exposure.optics.magnification; };
    QVERIFY(magnification(20) > magnification(10) && magnification(40) > magnification(20));
    QCOMPARE(magnification(90), magnification(60));
}

void tst_RecorderExposures::aNumberThatIsNoneIsNoChange()
{
    RecorderRig rig;
    rig.wait(86'400'000);
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(100);
    const float none = std::numeric_limits<float>::quiet_NaN();
    QVERIFY(setByFramework(rig, "/BlackbodyTemp1", none) && setByFramework(rig, "/BlackbodyTemp2", none));
    for (int look = 0; look < 100; ++look) {
        rig.wait(20);
        rig.state();
    }
    QVERIFY(rig.call(zvtSsdRecordStop));
    QCOMPARE(rig.recorder().memory()->segments(), size_t(3));
}

/// With the settings of another one, a segment begins 10 ms after the last one at the earliest.
void tst_RecorderExposures::changesWaitForTenMilliseconds()
{
    RecorderRig rig;
    LensRig::coolDetector();
    rig.wait(86'400'000);
    QVERIFY(rig.set("sensor.integrationTime", 0.1) && rig.set("sensor.frameRate", 1000));
    QVERIFY(rig.set(zvtSetSsdRecordType, 2) && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(25);
    QVERIFY(rig.set("gain.level", 1));
    rig.wait(7);
    // This one has its effect at 35 ms, and these at 45 ms.
    QVERIFY(rig.set("gain.level", 2));
    rig.wait(6);
    QVERIFY(rig.set("gain.level", 0));
    rig.wait(1);
    QVERIFY(rig.set("image.reverted", true));
    rig.wait(20);
    QVERIFY(rig.call(zvtSsdRecordStop));
    const auto memory = rig.recorder().memory();
    for (uint64_t frame = 0; frame < memory->frames(); ++frame) {
        const auto exposure = rig.recorder().recorded(*memory, frame).exposure;
        const int64_t time = int64_t(frame) + 1;
        QCOMPARE(exposure.readout.gainLevel, time <= 25 ? 0 : time <= 35 ? 1 : time <= 45 ? 2 : 0);
        QCOMPARE(exposure.optics.mirrored, time > 45);
    }
}

void tst_RecorderExposures::framesHaveTheirDates()
{
    RecorderRig rig;
    const auto text = [&](emulator::OverlayField field) { return emulator::overlayText(rig.camera(), field); };
    QCOMPARE(zvtSetRealTimeClock(rig.handle(), 31, 7, 8, 9, 10, 11), 0);
    QVERIFY(rig.record(20));
    QCOMPARE(zvtSetRealTimeClock(rig.handle(), 40, 1, 2, 3, 4, 5), 0);
    QCOMPARE(text(emulator::OverlayField::Date), QString("2040-01-02"));
    QCOMPARE(zvtSsdSkipToFrame(rig.handle(), 0), 0);
    QCOMPARE(text(emulator::OverlayField::Date), QString("2031-07-08"));
    QCOMPARE(text(emulator::OverlayField::Time), QString("09:10:11"));
    QVERIFY(rig.call(zvtSsdStopBuffer));
    QCOMPARE(text(emulator::OverlayField::Time), QString("03:04:05"));
}

void tst_RecorderExposures::anAutomaticCorrectionGivesWay()
{
    RecorderRig rig;
    LensRig::coolDetector();
    QCOMPARE(zvtDoAutoNUC(rig.handle()), 0);
    rig.wait(500);
    const auto &run = *rig.camera().device<emulator::CorrectionRun>();
    QVERIFY(run.running());
    QVERIFY(rig.arm());
    QVERIFY(!run.running());
    rig.wait(1000);
    QVERIFY(rig.call(zvtSsdTrigger));
    rig.wait(10'000);
    QCOMPARE(rig.state(), 3);
    const auto first = rig.recorder().recorded(*rig.recorder().memory(), 0).exposure;
    QCOMPARE(first.optics.flagCover, 0.0);
}

void tst_RecorderExposures::anOperatorsCorrectionDoesNot()
{
    RecorderRig rig;
    LensRig::coolDetector();
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(!rig.call(zvtSsdArm));
    QCOMPARE(rig.state(), 0);
    QCOMPARE(zvtAbortNUC(rig.handle()), 0);
    QVERIFY(rig.arm());
}

void tst_RecorderExposures::noAutomaticCorrectionStartsBeforeTheNextRecording()
{
    RecorderRig rig;
    LensRig::coolDetector();
    QCOMPARE(zvtSetAutoNUCSetup(rig.handle(), true, true, 1, false, 1), 0);
    QVERIFY(rig.set(zvtSetSsdAutoDownload, 1) && rig.set(zvtSetSsdAutoRearm, 1));
    QVERIFY(!rig.record(10));
    QCOMPARE(rig.state(), 12);
    QVERIFY(rig.set("environment.ambient", 60));
    const auto &run = *rig.camera().device<emulator::CorrectionRun>();
    for (int second = 0; second < 59; ++second) {
        rig.wait(1000);
        QVERIFY(rig.state() == 12 && !run.running());
    }
    rig.wait(2000);
    QCOMPARE(rig.state(), 1);
    QVERIFY(rig.call(zvtSsdDisarm));
    QVERIFY(run.running());
}

ZVT_TEST(tst_RecorderExposures)
#include "tst_RecorderExposures.moc"
