#include "platform/emulator/SetupError.h"
#include "platform/emulator/control.h"
#include "platform/emulator/devices/Sensor.h"
#include "tests/platform/writeProfile.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QTemporaryDir>

#include <cmath>
#include <vector>

using emulator::Camera;
using emulator::Sensor;

/// The functions of the SDK that compute frame periods.
class tst_timing : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        m_camera = Camera::create(QStringLiteral("everything"), m_folder.path());
        m_camera->connect();
    }

    void theShortestFrameFollowsItsArguments();
    void theShortestFrameOfNothingFails();
    void ratesSnapToWholeClocks();
    void theReadoutIsThatOfTheProfile();
    void theMaximumRateHoldsForAllFrames();
    void impossibleReadoutsAreErrors_data();
    void impossibleReadoutsAreErrors();

private:
    /// Uses a camera with these keys of its sensor.
    void use(const QByteArray &keys)
    {
        const QString profile = writeProfile(m_folder.path(), "everything", R"({"sensor": {)" + keys + "}}");
        m_camera = Camera::create(profile, m_folder.path());
        m_camera->connect();
    }
    Sensor &sensor() { return *m_camera->device<Sensor>(); }
    uint64_t handle() const { return m_camera->handle(); }
    /// The shortest frame in clocks, 0 if the call fails.
    uint32_t shortestFrame(uint16_t width, uint16_t height, uint32_t integration, bool sequencing)
    {
        uint32_t clocks = 0;
        zvtCalcMinFrameWidthEx(handle(), &clocks, width, height, integration, sequencing);
        return clocks;
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
};

void tst_timing::theShortestFrameFollowsItsArguments()
{
    const uint32_t small = shortestFrame(320, 256, 1000, false);
    QCOMPARE(shortestFrame(320, 256, 2000, false), small);
    QCOMPARE(shortestFrame(320, 256, 1'000'000, false), 1'000'500U);
    QCOMPARE(shortestFrame(320, 256, 1000, true), small + 400);
    QVERIFY(shortestFrame(640, 512, 1000, false) > 3 * small);
    QCOMPARE(shortestFrame(65535, 65535, UINT32_MAX, true), UINT32_MAX);
    uint32_t clocks = 0;
    QCOMPARE(zvtCalcMinFrameWidth(handle(), &clocks, 320, 256), 0);
    QCOMPARE(clocks, small);
    // The result does not depend on the presets or their window.
    QCOMPARE(sensor().setIntegrationTime(0, 500.0), emulator::Ok);
    QCOMPARE(sensor().setWindow({0, 0, 64, 4}), emulator::Ok);
    QCOMPARE(shortestFrame(320, 256, 1000, false), small);
    sensor().setReduceNoise(true);
    QCOMPARE(shortestFrame(320, 256, 1000, false), small + 1000);
    QCOMPARE(shortestFrame(320, 256, UINT32_MAX, false), UINT32_MAX);
}

void tst_timing::theShortestFrameOfNothingFails()
{
    uint32_t clocks = 7;
    QVERIFY(zvtCalcMinFrameWidth(handle(), &clocks, 0, 256) != 0);
    QVERIFY(zvtCalcMinFrameWidth(handle(), &clocks, 320, 0) != 0);
    QVERIFY(zvtCalcMinFrameWidthEx(handle(), &clocks, 0, 0, 1000, false) != 0);
    QCOMPARE(clocks, 7U);
}

void tst_timing::ratesSnapToWholeClocks()
{
    double snapped = -7;
    for (const double bad : {0.0, -50.0, std::nan("")})
        QVERIFY(zvtSnapHertz(handle(), &snapped, bad) != 0);
    QCOMPARE(snapped, -7.0);
    QCOMPARE(zvtSnapHertz(handle(), &snapped, 50.0), 0);
    QCOMPARE(snapped, 50.0);
    QCOMPARE(zvtSnapHertz(handle(), &snapped, 33.3), 0);
    QCOMPARE(snapped, 20e6 / 600'601);
    QCOMPARE(zvtSnapHertz(handle(), &snapped, 1e300), 0);
    QCOMPARE(snapped, 20e6);
    QCOMPARE(zvtSnapHertz(handle(), &snapped, 1e-300), 0);
    QCOMPARE(snapped, 20e6 / UINT32_MAX);
}

void tst_timing::theReadoutIsThatOfTheProfile()
{
    use(R"("pixelsPerClock": 8, "lineDeadWidth": 3, "preDeadRows": 2, "postDeadRows": 3, "preIntDeadWidth": 30,
           "postIntDeadWidth": 40, "presetSwitchClocks": 9)");
    QCOMPARE(shortestFrame(320, 256, 20, false), (256 + 5) * (40 + 3) + 70U);
    QCOMPARE(shortestFrame(320, 256, 20, true), (256 + 5) * (40 + 3) + 79U);
    QCOMPARE(shortestFrame(320, 256, 50'000, false), 50'070U);
}

void tst_timing::theMaximumRateHoldsForAllFrames()
{
    use(R"("maximumFrameRate": 60, "frameRate": 60)");
    // 60 Hz are no whole number of clocks, and a shorter frame would be faster.
    for (const bool sequencing : {false, true})
        QCOMPARE(shortestFrame(64, 4, 20, sequencing), 333'334U);
    QCOMPARE(shortestFrame(64, 4, 1'000'000, false), 1'000'500U);
    QCOMPARE(sensor().setFrameRate(0, 1000.0), emulator::Ok);
    double rate = 0;
    QCOMPARE(sensor().frameRate(0, rate), emulator::Ok);
    QCOMPARE(rate, 20e6 / 333'334);
    std::vector<double> rates;
    QCOMPARE(sensor().frameRates(0, rates), emulator::Ok);
    QCOMPARE(rates.front(), rate);
    QCOMPARE(rates.at(1), 50.0);
    QVERIFY(zvtSetFrameWidth(handle(), 0, 333'333) != 0);
    QCOMPARE(sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    QCOMPARE(sensor().superframeRates().front(), 5e6 / 333'334);
}

void tst_timing::impossibleReadoutsAreErrors_data()
{
    QTest::addColumn<QByteArray>("keys");
    for (const char *keys :
         {R"("pixelsPerClock": 0)", R"("pixelsPerClock": 2.5)", R"("pixelsPerClock": 1025)", R"("lineDeadWidth": 0)",
          R"("lineDeadWidth": 4096)", R"("preDeadRows": 256)", R"("postDeadRows": -1)", R"("preIntDeadWidth": -1)",
          R"("postIntDeadWidth": 1000001)", R"("hasExtraLineSync": 1)", R"("presetSwitchClocks": 0)",
          R"("presetSwitchClocks": 1000001)", R"("maximumFrameRate": 0)", R"("maximumFrameRate": 1000001)",
          R"("maximumFrameRate": "fast")"})
        QTest::newRow(keys) << QByteArray(keys);
}

void tst_timing::impossibleReadoutsAreErrors()
{
    QFETCH(QByteArray, keys);
    QVERIFY_EXCEPTION_THROWN(use(keys), emulator::SetupError);
}

ZVT_TEST(tst_timing)
#include "tst_timing.moc"
