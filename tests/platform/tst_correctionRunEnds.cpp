#include "tests/platform/CorrectionRig.h"
#include "tests/support/Test.h"

#include <cmath>
#include <functional>

using emulator::Clock;

namespace
{

constexpr int refused = emulator::Refused;
constexpr int64_t second = 1000;

} // namespace

/// The ends of a run that makes no correction.
class tst_correctionRunEnds : public Test
{
    Q_OBJECT

private slots:
    void unstableFlagTimesOut();
    void runawayOfTheFlagEndsIt_data();
    void runawayOfTheFlagEndsIt();
    void hotFlagEndsIt();
    void invalidParametersEndIt_data();
    void invalidParametersEndIt();
    void sameSourceTwiceIsInvalid();
    void warmDetectorIsInvalid();
    void abandonedRunEnds_data();
    void abandonedRunEnds();
    void silenceEndsIt();
    void presetTakenOutOfUseEndsIt();
    void shortSilenceDelaysIt();
    void changedWindowEndsIt();
    void changedFlipsEndIt_data();
    void changedFlipsEndIt();
    void disconnectionLeavesItAlone();
};

void tst_correctionRunEnds::unstableFlagTimesOut()
{
    CorrectionRig rig;
    QVERIFY(rig.setType(1, 1));
    // The cooler of the flag reaches no 0 C.
    QCOMPARE(zvtSetNUCFlagSetpointTemps(rig.handle(), -20, 30), 0);
    QCOMPARE(zvtSetNUCFlagSetpointType(rig.handle(), 1), 0);
    QCOMPARE(zvtSetNUCFlagConfig(rig.handle(), 70, 0.5F, 8, 20'000), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    const auto steps = rig.walk();
    QCOMPARE(CorrectionRig::statuses(steps), "13 1 3 0");
    QVERIFY2(std::abs(steps[2].milliseconds - 20'000) <= 400, qPrintable(QString::number(steps[2].milliseconds)));
    QCOMPARE(rig.result(), "1 Stopped");
    Clock::advance(60 * second);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
    QVERIFY(std::abs(rig.exposure().optics.flagCelsius - 20) < 0.2);
}

void tst_correctionRunEnds::runawayOfTheFlagEndsIt_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("at the first wait") << 3;
    QTest::newRow("at the second wait") << 7;
    QTest::newRow("while frames are collected") << 8;
}

void tst_correctionRunEnds::runawayOfTheFlagEndsIt()
{
    QFETCH(const int, status);
    CorrectionRig rig;
    QVERIFY(rig.setType(1, 1));
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 255), 0);
    QVERIFY(rig.set("sensor.frameRate", 4));
    QCOMPARE(zvtSetNUCFlagConfig(rig.handle(), 60, 0.5F, 8, 600'000), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(static_cast<uint16_t>(status)));
    QVERIFY(rig.set("flag.stuck", true));
    const double before = rig.exposure().optics.flagCelsius;
    Clock::advance(5 * second);
    QVERIFY(std::abs(rig.exposure().optics.flagCelsius - before - 5) < 0.2);
    rig.walk();
    QCOMPARE(rig.result(), "3 The flag is too hot");
    QCOMPARE(settingOf(rig.camera(), "flag.power").toBool(), false);
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
    // Without power it cools.
    Clock::advance(30 * second);
    QVERIFY(rig.exposure().optics.flagCelsius < 55);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
}

void tst_correctionRunEnds::hotFlagEndsIt()
{
    CorrectionRig rig;
    QVERIFY(rig.setType(1, 1));
    QCOMPARE(zvtSetNUCFlagSetpointType(rig.handle(), 1), 0);
    QCOMPARE(zvtSetNUCFlagSetpointTemps(rig.handle(), 30, 45), 0);
    QCOMPARE(zvtSetNUCFlagConfig(rig.handle(), 40, 0.5F, 8, 60'000), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QCOMPARE(CorrectionRig::statuses(rig.walk()), "13 1 3 4 5 7 0");
    QCOMPARE(rig.result(), "3 The flag is too hot");
}

void tst_correctionRunEnds::invalidParametersEndIt_data()
{
    using Setter = std::function<void(CorrectionRig &)>;
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("source");
    QTest::addColumn<Setter>("set");
    QTest::addColumn<bool>("valid");
    const auto row = [](const char *name, int type, int source, const Setter &set, bool valid = false,
                        const char *profile = "everything") {
        QTest::newRow(name) << QByteArray(profile) << type << source << set << valid;
    };
    const auto limits = [](float gainMin, float gainMax, uint16_t adMin, uint16_t adMax, bool detect = true) {
        return [=](CorrectionRig &rig) { zvtSetNUCSetup(rig.handle(), gainMin, gainMax, adMin, adMax, detect); };
    };
    row("gains crossed", 1, 0, limits(1.5F, 0.75F, 1000, 15000));
    row("gains equal", 1, 0, limits(1, 1, 1000, 15000));
    row("A/D limits crossed", 1, 0, limits(0.75F, 1.5F, 15000, 1000));
    row("A/D limits equal, one point", 0, 0, limits(0.75F, 1.5F, 1000, 1000));
    row("crossed, not detected", 1, 0, limits(1.5F, 0.75F, 15000, 1000, false), true);
    row("crossed, offset update", 2, 0, limits(1.5F, 0.75F, 15000, 1000), true);
    row("no frames", 0, 0, [](CorrectionRig &rig) { zvtSetNUCNumFrames(rig.handle(), 0); });
    row("no frames for twinklers", 1, 0, [](CorrectionRig &rig) { zvtSetTwinklerSetup(rig.handle(), true, 0, 200); });
    row(
        "no twinklers", 1, 0, [](CorrectionRig &rig) { zvtSetTwinklerSetup(rig.handle(), false, 0, 200); }, true);
    row("offset update of nothing", 2, 0, [](CorrectionRig &rig) { zvtUnloadNUC(rig.handle(), 0); });
    row(
        "two points by a plain flag", 1, 1, [](CorrectionRig &) {}, false, "te-cooler");
    row("no flag", 0, 1, [](CorrectionRig &rig) { rig.openWith(R"({"flag": null})"); });
}

void tst_correctionRunEnds::invalidParametersEndIt()
{
    QFETCH(const QByteArray, profile);
    QFETCH(const int, type);
    QFETCH(const int, source);
    QFETCH(const std::function<void(CorrectionRig &)>, set);
    QFETCH(const bool, valid);
    CorrectionRig rig(profile.constData());
    set(rig);
    QVERIFY(rig.setType(static_cast<uint8_t>(type), static_cast<uint8_t>(source)));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    const auto steps = rig.walk();
    QCOMPARE(rig.result(), valid ? "0 Done" : "2 Invalid parameters");
    QCOMPARE(CorrectionRig::statuses(steps) == "13 0", !valid);
    QCOMPARE(zvtAcceptNUC(rig.handle()), valid ? 0 : refused);
}

void tst_correctionRunEnds::sameSourceTwiceIsInvalid()
{
    CorrectionRig rig;
    QVERIFY(rig.set("emulator./BlackbodyTemp2", 20.3));
    QCOMPARE(rig.run(), "2 Invalid parameters");
    QCOMPARE(rig.counts()[0], 0U);
    QVERIFY(rig.set("emulator./BlackbodyTemp2", 26));
    QCOMPARE(rig.run(), "0 Done");
}

void tst_correctionRunEnds::warmDetectorIsInvalid()
{
    CorrectionRig rig;
    QVERIFY(rig.set("cooler.setpoint", 90));
    Clock::advance(120 * second);
    QCOMPARE(rig.run(), "2 Invalid parameters");
}

void tst_correctionRunEnds::abandonedRunEnds_data()
{
    QTest::addColumn<uint16_t>("status");
    QTest::newRow("at the first source") << uint16_t(2);
    QTest::newRow("at the second source") << uint16_t(6);
}

void tst_correctionRunEnds::abandonedRunEnds()
{
    QFETCH(const uint16_t, status);
    CorrectionRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(status));
    Clock::advance(600 * second - 1);
    QCOMPARE(rig.status(), status);
    Clock::advance(1);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.result(), "1 Stopped");
}

void tst_correctionRunEnds::silenceEndsIt()
{
    CorrectionRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(2));
    QVERIFY(rig.set("sync.externalRate", 0) && rig.set("sync.source", 1));
    QCOMPARE(zvtContinueNUC(rig.handle()), 0);
    Clock::advance(9'999);
    QCOMPARE(rig.status(), uint16_t(4));
    Clock::advance(1);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.result(), "1 Stopped");
}

void tst_correctionRunEnds::presetTakenOutOfUseEndsIt()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 255), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    QVERIFY(rig.set("sensor.activePreset", 1));
    QCOMPARE(rig.status(), uint16_t(4));
    Clock::advance(9'999);
    QCOMPARE(rig.status(), uint16_t(4));
    Clock::advance(1);
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.result(), "1 Stopped");
}

void tst_correctionRunEnds::shortSilenceDelaysIt()
{
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 100), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(4));
    Clock::advance(500);
    QVERIFY(rig.set("sync.externalRate", 0) && rig.set("sync.source", 1));
    Clock::advance(9 * second);
    QCOMPARE(rig.status(), uint16_t(4));
    QVERIFY(rig.set("sync.externalRate", 100));
    Clock::advance(400);
    QCOMPARE(rig.status(), uint16_t(4));
    Clock::advance(100);
    QCOMPARE(rig.status(), uint16_t(5));
}

void tst_correctionRunEnds::changedWindowEndsIt()
{
    CorrectionRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(6));
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 64, 64}));
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.result(), "1 Stopped");
}

void tst_correctionRunEnds::changedFlipsEndIt_data()
{
    QTest::addColumn<uint16_t>("status");
    QTest::addColumn<QByteArray>("flip");
    for (const uint16_t status : {4, 6, 12})
        for (const char *flip : {"image.reverted", "image.inverted"})
            QTest::addRow("%s at %d", flip, status) << status << QByteArray(flip);
}

void tst_correctionRunEnds::changedFlipsEndIt()
{
    QFETCH(const uint16_t, status);
    QFETCH(const QByteArray, flip);
    CorrectionRig rig;
    QCOMPARE(zvtSetNUCNumFrames(rig.handle(), 100), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(status));
    QVERIFY(rig.set(flip.constData(), true));
    QCOMPARE(rig.status(), uint16_t(0));
    QCOMPARE(rig.result(), "1 Stopped");
    QCOMPARE(zvtAcceptNUC(rig.handle()), refused);
}

void tst_correctionRunEnds::disconnectionLeavesItAlone()
{
    CorrectionRig rig;
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QVERIFY(rig.walkTo(2));
    rig.camera().disconnect();
    QCOMPARE(rig.status(), uint16_t(999));
    Clock::advance(60 * second);
    rig.camera().connect();
    QCOMPARE(rig.status(), uint16_t(2));
    rig.walk();
    QCOMPARE(rig.result(), "0 Done");
    rig.camera().disconnect();
    rig.camera().connect();
    QCOMPARE(zvtAcceptNUC(rig.handle()), 0);
}

ZVT_TEST(tst_correctionRunEnds)
#include "tst_correctionRunEnds.moc"
