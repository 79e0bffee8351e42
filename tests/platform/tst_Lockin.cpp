#include "tests/platform/FrameRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <limits>

/// The lock-in of emulated cameras, by functions of the SDK and by other clients.
class tst_Lockin : public Test
{
    Q_OBJECT

private slots:
    void startValues();
    void couplingIsTakenInItsRange();
    void largerFiltersBecomeTheLast();
    void estimateIsLimitedByTheFrameRate_data();
    void estimateIsLimitedByTheFrameRate();
    void estimateStaysWhenTheFrameRateChanges();
    void estimateThatIsNotFiniteIsRefused();
    void sampleRateNeedsAnInputNearTheEstimate_data();
    void sampleRateNeedsAnInputNearTheEstimate();
    void sampleRateIsTheAverageFrameRate();
    void sampleRateNeedsFrames();
    void otherClientsSetIt_data();
    void otherClientsSetIt();
    void snapshotsHoldTheSettingsWithoutTheInput();
    void profilesStartIt();
    void camerasWithoutLockin();
    void framesDoNotDependOnIt();
    void functionsAreFast();
};

namespace
{

constexpr int refused = emulator::Refused;
constexpr float none = -1;

float estimateOf(const LensRig &rig)
{
    float hertz = none;
    zvtGetLockinEstInputFreq(rig.handle(), &hertz);
    return hertz;
}

/// The sample rate, none if the camera refuses it.
float sampleRateOf(const LensRig &rig)
{
    float hertz = none;
    zvtGetLockinSampleFreq(rig.handle(), &hertz);
    return hertz;
}

uint8_t byteOf(const LensRig &rig, int (*get)(uint64_t, uint8_t *))
{
    uint8_t value = 99;
    get(rig.handle(), &value);
    return value;
}

} // namespace

void tst_Lockin::startValues()
{
    LensRig rig;
    QCOMPARE(byteOf(rig, zvtGetLockinCoupling), uint8_t(0));
    QCOMPARE(byteOf(rig, zvtGetLockinAlphaFilter), uint8_t(0));
    QCOMPARE(estimateOf(rig), 0.0f);
    QCOMPARE(sampleRateOf(rig), none);
    QCOMPARE(settingOf(rig.camera(), "lockin.inputFrequency").toDouble(), 0.0);
}

void tst_Lockin::couplingIsTakenInItsRange()
{
    const LensRig rig;
    for (const uint8_t coupling : {1, 0, 1}) {
        QCOMPARE(zvtSetLockinCoupling(rig.handle(), coupling), 0);
        QCOMPARE(byteOf(rig, zvtGetLockinCoupling), coupling);
    }
    for (const uint8_t wrong : {2, 255})
        QCOMPARE(zvtSetLockinCoupling(rig.handle(), wrong), refused);
    QCOMPARE(byteOf(rig, zvtGetLockinCoupling), uint8_t(1));
}

void tst_Lockin::largerFiltersBecomeTheLast()
{
    const LensRig rig;
    for (int filter = 0; filter < 256; ++filter) {
        QCOMPARE(zvtSetLockinAlphaFilter(rig.handle(), static_cast<uint8_t>(filter)), 0);
        QCOMPARE(int(byteOf(rig, zvtGetLockinAlphaFilter)), std::min(filter, 7));
    }
}

void tst_Lockin::estimateIsLimitedByTheFrameRate_data()
{
    QTest::addColumn<float>("wanted");
    QTest::addColumn<float>("taken");
    QTest::newRow("within") << 12.25f << 12.25f;
    QTest::newRow("zero") << 0.0f << 0.0f;
    QTest::newRow("negative") << -0.5f << 0.0f;
    QTest::newRow("lowest float") << std::numeric_limits<float>::lowest() << 0.0f;
    QTest::newRow("half of the rate") << 50.0f << 50.0f;
    QTest::newRow("above half of the rate") << 50.01f << 50.0f;
    QTest::newRow("highest float") << std::numeric_limits<float>::max() << 50.0f;
}

void tst_Lockin::estimateIsLimitedByTheFrameRate()
{
    QFETCH(const float, wanted);
    QFETCH(const float, taken);
    const LensRig rig; // It has 100 frames per second.
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 33), 0);
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), wanted), 0);
    QCOMPARE(estimateOf(rig), taken);
}

void tst_Lockin::estimateStaysWhenTheFrameRateChanges()
{
    LensRig rig;
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 40), 0);
    QVERIFY(rig.set("sensor.frameRate", 20.0));
    emulator::Clock::advance(100);
    QCOMPARE(estimateOf(rig), 40.0f);
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 40), 0);
    QCOMPARE(estimateOf(rig), 10.0f);
}

void tst_Lockin::estimateThatIsNotFiniteIsRefused()
{
    const LensRig rig;
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 8), 0);
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float wrong : {infinite, -infinite, std::numeric_limits<float>::quiet_NaN()})
        QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), wrong), refused);
    QCOMPARE(estimateOf(rig), 8.0f);
}

void tst_Lockin::sampleRateNeedsAnInputNearTheEstimate_data()
{
    QTest::addColumn<float>("estimate");
    QTest::addColumn<double>("input");
    QTest::addColumn<bool>("found");
    QTest::newRow("the estimate") << 20.0f << 20.0 << true;
    QTest::newRow("a tenth above") << 20.0f << 22.0 << true;
    QTest::newRow("more than a tenth above") << 20.0f << 22.001 << false;
    QTest::newRow("a tenth below") << 20.0f << 18.0 << true;
    QTest::newRow("more than a tenth below") << 20.0f << 17.999 << false;
    QTest::newRow("no signal") << 20.0f << 0.0 << false;
    QTest::newRow("no estimate") << 0.0f << 0.001 << false;
    QTest::newRow("neither") << 0.0f << 0.0 << false;
}

void tst_Lockin::sampleRateNeedsAnInputNearTheEstimate()
{
    QFETCH(const float, estimate);
    QFETCH(const double, input);
    QFETCH(const bool, found);
    LensRig rig;
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), estimate), 0);
    QVERIFY(rig.set("lockin.inputFrequency", input));
    QCOMPARE(sampleRateOf(rig), found ? 100.0f : none);
    float hertz = 7;
    QCOMPARE(zvtGetLockinSampleFreq(rig.handle(), &hertz), found ? 0 : refused);
    QCOMPARE(hertz, found ? 100.0f : 7.0f);
}

void tst_Lockin::sampleRateIsTheAverageFrameRate()
{
    LensRig rig;
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 5), 0);
    QVERIFY(rig.set("lockin.inputFrequency", 5.0));
    for (const double rate : {20.0, 80.0}) {
        QVERIFY(rig.set("sensor.frameRate", rate));
        emulator::Clock::advance(200);
        QCOMPARE(sampleRateOf(rig), static_cast<float>(rate));
    }
}

void tst_Lockin::sampleRateNeedsFrames()
{
    LensRig rig;
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 5), 0);
    QVERIFY(rig.set("lockin.inputFrequency", 5.0));
    QVERIFY(rig.set("sync.externalRate", 0.0) && rig.set("sync.source", 1));
    emulator::Clock::advance(200);
    QCOMPARE(sampleRateOf(rig), none);
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 5), 0);
    QCOMPARE(estimateOf(rig), 0.0f);
}

void tst_Lockin::otherClientsSetIt_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("good");
    QTest::addColumn<QVariantList>("bad");
    const auto row = [](const char *name, const QVariant &good, const QVariantList &bad) {
        QTest::newRow(name) << QByteArray(name) << good << bad;
    };
    row("lockin.coupling", 1, {2, -1, 0.5, "DC"});
    row("lockin.filter", 7, {8, -1, 0.5});
    row("lockin.estimatedFrequency", 1e6, {-0.1, 1'000'001, "10"});
    row("lockin.inputFrequency", 0.125, {-0.1, 1'000'001, true});
}

void tst_Lockin::otherClientsSetIt()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QVariant, good);
    QFETCH(const QVariantList, bad);
    LensRig rig;
    QVERIFY(rig.set(name.constData(), good));
    for (const QVariant &wrong : bad)
        QVERIFY2(!rig.set(name.constData(), wrong), qPrintable(wrong.toString()));
    QCOMPARE(settingOf(rig.camera(), QString::fromLatin1(name)), good);
}

void tst_Lockin::snapshotsHoldTheSettingsWithoutTheInput()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(zvtSetLockinCoupling(rig.handle(), 1), 0);
    QCOMPARE(zvtSetLockinAlphaFilter(rig.handle(), 5), 0);
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 12.3f), 0);
    QVERIFY(rig.set("lockin.inputFrequency", 12.0));
    const QJsonObject after = rig.camera().snapshot();
    QCOMPARE(after.value("lockin").toObject().keys(), QStringList({"coupling", "estimatedFrequency", "filter"}));
    rig.camera().restore(before);
    QCOMPARE(rig.camera().snapshot(), before);
    QCOMPARE(settingOf(rig.camera(), "lockin.inputFrequency").toDouble(), 12.0);
    rig.camera().restore(after);
    QCOMPARE(rig.camera().snapshot(), after);
    QCOMPARE(byteOf(rig, zvtGetLockinCoupling), uint8_t(1));
    QCOMPARE(byteOf(rig, zvtGetLockinAlphaFilter), uint8_t(5));
    QCOMPARE(estimateOf(rig), 12.3f);
    QCOMPARE(sampleRateOf(rig), 100.0f);
}

void tst_Lockin::profilesStartIt()
{
    const LensRig rig("board-6");
    QCOMPARE(byteOf(rig, zvtGetLockinCoupling), uint8_t(1));
    QCOMPARE(byteOf(rig, zvtGetLockinAlphaFilter), uint8_t(3));
    QCOMPARE(estimateOf(rig), 10.0f);
    QCOMPARE(sampleRateOf(rig), 100.0f);
}

void tst_Lockin::camerasWithoutLockin()
{
    for (const char *profile : {"bare", "low-cost", "te-cooler", "discrete-fov"}) {
        LensRig rig(profile);
        const int absent = emulator::Absent;
        uint8_t value = 9;
        float hertz = 9;
        QCOMPARE(zvtGetLockinCoupling(rig.handle(), &value), absent);
        QCOMPARE(zvtSetLockinCoupling(rig.handle(), 1), absent);
        QCOMPARE(zvtGetLockinAlphaFilter(rig.handle(), &value), absent);
        QCOMPARE(zvtSetLockinAlphaFilter(rig.handle(), 1), absent);
        QCOMPARE(zvtGetLockinEstInputFreq(rig.handle(), &hertz), absent);
        QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 1), absent);
        QCOMPARE(zvtGetLockinSampleFreq(rig.handle(), &hertz), absent);
        QVERIFY(value == 9 && hertz == 9);
        QVERIFY(!rig.set("lockin.inputFrequency", 1.0));
    }
}

void tst_Lockin::framesDoNotDependOnIt()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    const auto before = rig.newest();
    QCOMPARE(zvtSetLockinCoupling(rig.handle(), 1), 0);
    QCOMPARE(zvtSetLockinAlphaFilter(rig.handle(), 7), 0);
    QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 20), 0);
    QVERIFY(rig.set("lockin.inputFrequency", 20.0));
    QCOMPARE(sampleRateOf(rig), 100.0f);
    QVERIFY(rig.newest() == before);
}

void tst_Lockin::functionsAreFast()
{
    LensRig rig;
    const size_t mark = rig.camera().gate().mark();
    for (int repeat = 0; repeat < 5; ++repeat) {
        QCOMPARE(zvtSetLockinCoupling(rig.handle(), 1), 0);
        QCOMPARE(zvtSetLockinAlphaFilter(rig.handle(), 1), 0);
        QCOMPARE(zvtSetLockinEstInputFreq(rig.handle(), 10), 0);
        QCOMPARE(byteOf(rig, zvtGetLockinCoupling), uint8_t(1));
        QCOMPARE(byteOf(rig, zvtGetLockinAlphaFilter), uint8_t(1));
        QCOMPARE(estimateOf(rig), 10.0f);
        QCOMPARE(sampleRateOf(rig), none);
    }
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_Lockin)
#include "tst_Lockin.moc"
