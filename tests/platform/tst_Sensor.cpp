#include "platform/emulator/control.h"
#include "platform/emulator/devices/FrameClock.h"
#include "platform/emulator/devices/Sensor.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <QJsonArray>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>

using emulator::Camera;
using emulator::Sensor;

using Rates = std::vector<double>;

class tst_Sensor : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void clocksBecomeHertzAndMilliseconds();
    void integrationTimesSnapToClocks();
    void integrationTimesStayInTheirRange();
    void ratesAreOfferedHighestFirst();
    void theHighestRateFalls_data();
    void theHighestRateFalls();
    void aListedRateReadsBackAsItsRow();
    void aFreeRateSnapsToClocks();
    void aLongIntegrationMakesTheFrameLonger();
    void theIntegrationRegisterLeavesTheFrameAlone();
    void aFrameRegisterBelowTheShortestFrameIsRefused();
    void aPresetThatTheCameraLacksIsRefused();
    void gigEStreamsOnePresetOrAll();
    void sequencingModesAreThoseOfTheProfile();
    void presetsTakeTurns();
    void theSuperframeIsTheSumOfItsSubframes();
    void aSnapshotRestoresEverything();
    void aDamagedSnapshotIsPassedOver();
    void anotherClientChangesSettings_data();
    void anotherClientChangesSettings();
    void edgeValuesStayFinite();

private:
    void use(const QString &profile);
    Sensor &sensor() { return *m_camera->device<Sensor>(); }
    double averageRate() { return m_camera->device<emulator::FrameClock>()->averageRate(); }
    uint64_t handle() const { return m_camera->handle(); }
    double highestRate(int preset = 0);
    /// The shortest frame in clocks, 0 if the call fails.
    uint32_t shortestFrame(uint16_t width, uint16_t height, uint32_t integration, bool sequencing)
    {
        uint32_t clocks = 0;
        zvtCalcMinFrameWidthEx(handle(), &clocks, width, height, integration, sequencing);
        return clocks;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
};

void tst_Sensor::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    use(QStringLiteral("everything"));
}

void tst_Sensor::cleanup()
{
    m_camera.reset();
    m_folder.reset();
}

void tst_Sensor::use(const QString &profile)
{
    m_camera = Camera::create(profile, m_folder->path());
    m_camera->connect();
}

double tst_Sensor::highestRate(int preset)
{
    Rates rates;
    return sensor().frameRates(preset, rates) == emulator::Ok ? rates.front() : 0.0;
}

void tst_Sensor::clocksBecomeHertzAndMilliseconds()
{
    uint32_t frequency = 0;
    double hertz = -1;
    double milliseconds = -1;
    QCOMPARE(zvtGetClockFrequency(handle(), &frequency), 0);
    QCOMPARE(frequency, 20'000'000U);
    QCOMPARE(zvtClocksToHertz(handle(), 200'000, &hertz), 0);
    QCOMPARE(hertz, 100.0);
    QCOMPARE(zvtClocksToMilliseconds(handle(), 30'000, &milliseconds), 0);
    QCOMPARE(milliseconds, 1.5);
    QVERIFY(zvtClocksToHertz(handle(), 0, &hertz) != 0);
    QCOMPARE(hertz, 100.0);
    QCOMPARE(zvtClocksToMilliseconds(handle(), 0, &milliseconds), 0);
    QCOMPARE(milliseconds, 0.0);
}

void tst_Sensor::integrationTimesSnapToClocks()
{
    QCOMPARE(sensor().setIntegrationTime(0, 1.23456789), emulator::Ok);
    uint32_t clocks = 0;
    QCOMPARE(zvtGetIntegrationWidth(handle(), 0, &clocks), 0);
    QCOMPARE(clocks, 24'691U);
    double milliseconds = 0;
    QCOMPARE(sensor().integrationTime(0, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 1.23455);
}

void tst_Sensor::integrationTimesStayInTheirRange()
{
    double milliseconds = 0;
    for (const double tooShort : {0.0, -5.0}) {
        QCOMPARE(sensor().setIntegrationTime(0, tooShort), emulator::Ok);
        QCOMPARE(sensor().integrationTime(0, milliseconds), emulator::Ok);
        QCOMPARE(milliseconds, 0.001);
    }
    QCOMPARE(sensor().setIntegrationTime(0, 1e30), emulator::Ok);
    QCOMPARE(sensor().integrationTime(0, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 1000.0);
    QCOMPARE(sensor().setIntegrationTime(0, std::nan("")), emulator::Refused);
    QVERIFY(zvtSetIntegrationWidth(handle(), 0, 0) != 0);
    QVERIFY(zvtSetIntegrationWidth(handle(), 0, 20'000'001) != 0);
    QCOMPARE(sensor().integrationTime(0, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 1000.0);
}

void tst_Sensor::ratesAreOfferedHighestFirst()
{
    Rates rates;
    QCOMPARE(sensor().frameRates(0, rates), emulator::Ok);
    QVERIFY(rates.size() > 5);
    QVERIFY(std::is_sorted(rates.rbegin(), rates.rend()));
    QVERIFY(std::adjacent_find(rates.begin(), rates.end()) == rates.end());
    QCOMPARE(sensor().setFrameRateIndex(0, static_cast<int>(rates.size())), emulator::Refused);
    QCOMPARE(sensor().setFrameRateIndex(0, -1), emulator::Refused);
}

void tst_Sensor::theHighestRateFalls_data()
{
    using Change = std::function<void(Sensor &)>;
    QTest::addColumn<Change>("change");
    QTest::newRow("with a longer integration") << Change([](Sensor &s) { s.setIntegrationTime(0, 30.0); });
    QTest::newRow("with a larger window") << Change([](Sensor &s) { s.setWindowSizeIndex(0); });
    QTest::newRow("with less noise") << Change([](Sensor &s) { s.setReduceNoise(true); });
    QTest::newRow("in a sequence") << Change([](Sensor &s) { s.setSequencingMode(Sensor::PresetSequencing); });
}

void tst_Sensor::theHighestRateFalls()
{
    QFETCH(std::function<void(Sensor &)>, change);
    QCOMPARE(sensor().setWindowSizeIndex(2), emulator::Ok);
    QCOMPARE(sensor().setFrameRateIndex(0, 0), emulator::Ok);
    const double before = highestRate();
    change(sensor());
    QVERIFY(highestRate() < before);
    double rate = 0;
    int index = -1;
    QCOMPARE(sensor().frameRate(0, rate), emulator::Ok);
    QCOMPARE(rate, highestRate());
    QCOMPARE(sensor().frameRateIndex(0, index), emulator::Ok);
    QCOMPARE(index, 0);
}

void tst_Sensor::aListedRateReadsBackAsItsRow()
{
    Rates rates;
    QCOMPARE(sensor().frameRates(1, rates), emulator::Ok);
    for (int row = 0; row < static_cast<int>(rates.size()); ++row) {
        QCOMPARE(sensor().setFrameRateIndex(1, row), emulator::Ok);
        int index = -2;
        double rate = 0;
        QCOMPARE(sensor().frameRateIndex(1, index), emulator::Ok);
        QCOMPARE(index, row);
        QCOMPARE(sensor().frameRate(1, rate), emulator::Ok);
        QVERIFY(rate == rates[static_cast<size_t>(row)]);
    }
}

void tst_Sensor::aFreeRateSnapsToClocks()
{
    double rate = 0;
    int index = 0;
    uint32_t clocks = 0;
    QCOMPARE(sensor().setFrameRate(0, 77.7), emulator::Ok);
    QCOMPARE(sensor().frameRateIndex(0, index), emulator::Ok);
    QCOMPARE(index, -1);
    QCOMPARE(zvtGetFrameWidth(handle(), 0, &clocks), 0);
    QCOMPARE(clocks, 257'400U);
    QCOMPARE(sensor().frameRate(0, rate), emulator::Ok);
    QCOMPARE(rate, 20e6 / 257'400);
    QCOMPARE(sensor().setFrameRate(0, 1e9), emulator::Ok);
    QCOMPARE(sensor().frameRate(0, rate), emulator::Ok);
    QCOMPARE(rate, highestRate());
    QCOMPARE(sensor().setFrameRate(0, 1e-9), emulator::Ok);
    QCOMPARE(sensor().frameRate(0, rate), emulator::Ok);
    QCOMPARE(rate, 0.1);
    for (const double bad : {0.0, -1.0, std::nan("")})
        QCOMPARE(sensor().setFrameRate(0, bad), emulator::Refused);
}

void tst_Sensor::aLongIntegrationMakesTheFrameLonger()
{
    QCOMPARE(sensor().setIntegrationTime(0, 50.0), emulator::Ok);
    uint32_t clocks = 0;
    QCOMPARE(zvtGetFrameWidth(handle(), 0, &clocks), 0);
    QVERIFY(clocks >= 1'000'000U);
    double other = 0;
    QCOMPARE(sensor().frameRate(1, other), emulator::Ok);
    QCOMPARE(other, 100.0);
}

void tst_Sensor::theIntegrationRegisterLeavesTheFrameAlone()
{
    uint32_t before = 0;
    uint32_t after = 0;
    QCOMPARE(zvtGetFrameWidth(handle(), 0, &before), 0);
    QCOMPARE(zvtSetIntegrationWidth(handle(), 0, 1'000'000), 0);
    QCOMPARE(zvtGetFrameWidth(handle(), 0, &after), 0);
    QCOMPARE(after, before);
    double rate = 0;
    QCOMPARE(sensor().frameRate(0, rate), emulator::Ok);
    QCOMPARE(rate, highestRate());
    double milliseconds = 0;
    QCOMPARE(sensor().integrationTime(0, milliseconds), emulator::Ok);
    QCOMPARE(milliseconds, 50.0);
}

void tst_Sensor::aFrameRegisterBelowTheShortestFrameIsRefused()
{
    const uint32_t shortest = shortestFrame(640, 512, 40'000, false);
    uint32_t clocks = 0;
    QCOMPARE(zvtSetFrameWidth(handle(), 0, shortest), 0);
    QVERIFY(zvtSetFrameWidth(handle(), 0, shortest - 1) != 0);
    QCOMPARE(zvtGetFrameWidth(handle(), 0, &clocks), 0);
    QCOMPARE(clocks, shortest);
}

void tst_Sensor::aPresetThatTheCameraLacksIsRefused()
{
    use(QStringLiteral("low-cost"));
    uint8_t count = 0;
    QCOMPARE(zvtGetNumPresets(handle(), &count), 0);
    QCOMPARE(count, uint8_t(1));
    QVERIFY(sensor().lowCost());
    double value = -7;
    Rates rates{-7};
    int index = -7;
    uint32_t dwell = 7;
    bool enabled = true;
    for (const int preset : {1, -1, 4}) {
        QCOMPARE(sensor().integrationTime(preset, value), emulator::Refused);
        QCOMPARE(sensor().setIntegrationTime(preset, 1.0), emulator::Refused);
        QCOMPARE(sensor().integrationWidth(preset, dwell), emulator::Refused);
        QCOMPARE(sensor().setIntegrationWidth(preset, 1000), emulator::Refused);
        QCOMPARE(sensor().frameWidth(preset, dwell), emulator::Refused);
        QCOMPARE(sensor().setFrameWidth(preset, 10'000'000), emulator::Refused);
        QCOMPARE(sensor().frameRate(preset, value), emulator::Refused);
        QCOMPARE(sensor().setFrameRate(preset, 10.0), emulator::Refused);
        QCOMPARE(sensor().frameRates(preset, rates), emulator::Refused);
        QCOMPARE(sensor().frameRateIndex(preset, index), emulator::Refused);
        QCOMPARE(sensor().setFrameRateIndex(preset, 0), emulator::Refused);
        QCOMPARE(sensor().subframeEnabled(preset, enabled), emulator::Refused);
        QCOMPARE(sensor().setSubframeEnabled(preset, true), emulator::Refused);
        QCOMPARE(sensor().dwellCount(preset, dwell), emulator::Refused);
        QCOMPARE(sensor().setDwellCount(preset, 1), emulator::Refused);
        QCOMPARE(sensor().setActivePreset(preset), emulator::Refused);
        QCOMPARE(sensor().setVideoPreset(preset), emulator::Refused);
        QCOMPARE(sensor().repeats(preset), 0U);
    }
    QVERIFY(value == -7 && rates == Rates{-7} && index == -7 && dwell == 7 && enabled);
}

void tst_Sensor::gigEStreamsOnePresetOrAll()
{
    uint8_t preset = 9;
    QCOMPARE(zvtGetGigEPreset(handle(), &preset), 0);
    QCOMPARE(preset, uint8_t(4));
    QCOMPARE(zvtSetGigEPreset(handle(), 3), 0);
    QCOMPARE(zvtSetGigEPreset(handle(), 5), int(emulator::Refused));
    QCOMPARE(zvtGetGigEPreset(handle(), &preset), 0);
    QCOMPARE(preset, uint8_t(3));
    use(QStringLiteral("low-cost"));
    QCOMPARE(zvtSetGigEPreset(handle(), 0), int(emulator::Absent));
    QCOMPARE(zvtGetGigEPreset(handle(), &preset), int(emulator::Absent));
    QCOMPARE(preset, uint8_t(3));
}

void tst_Sensor::sequencingModesAreThoseOfTheProfile()
{
    QCOMPARE(sensor().sequencingModes(), (std::vector<uint32_t>{0, 1, 2}));
    QCOMPARE(sensor().setSequencingMode(7), emulator::Refused);
    use(QStringLiteral("low-cost"));
    QCOMPARE(sensor().sequencingModes(), std::vector<uint32_t>{0});
    QCOMPARE(sensor().setSequencingMode(Sensor::Superframing), emulator::Refused);
    use(QStringLiteral("edge-values"));
    QCOMPARE(sensor().sequencingModes(), (std::vector<uint32_t>{0, 7, 2, 1}));
    QCOMPARE(sensor().setSequencingMode(7), emulator::Ok);
    uint8_t mode = 0;
    QCOMPARE(zvtGetPresetSequencingMode(handle(), &mode), 0);
    QCOMPARE(mode, uint8_t(7));
}

void tst_Sensor::presetsTakeTurns()
{
    QCOMPARE(sensor().setActivePreset(2), emulator::Ok);
    QCOMPARE(sensor().repeats(2), 1U);
    QCOMPARE(sensor().repeats(0), 0U);
    QCOMPARE(averageRate(), 100.0);
    QCOMPARE(sensor().setDwellCount(0, 3), emulator::Ok);
    QCOMPARE(sensor().setDwellCount(2, 0), emulator::Ok);
    QCOMPARE(sensor().setDwellCount(3, 0), emulator::Ok);
    QCOMPARE(sensor().setFrameRate(1, 50.0), emulator::Ok);
    QCOMPARE(sensor().setSequencingMode(Sensor::PresetSequencing), emulator::Ok);
    QCOMPARE(sensor().repeats(0), 3U);
    QCOMPARE(sensor().repeats(2), 0U);
    // Three frames of 10 ms and one of 20 ms.
    QCOMPARE(averageRate(), 80.0);
    QCOMPARE(sensor().setDwellCount(0, 0), emulator::Ok);
    QCOMPARE(sensor().setDwellCount(1, 0), emulator::Ok);
    QCOMPARE(averageRate(), 0.0);
}

void tst_Sensor::theSuperframeIsTheSumOfItsSubframes()
{
    QCOMPARE(sensor().setSequencingMode(Sensor::Superframing), emulator::Ok);
    const uint32_t subframe = shortestFrame(640, 512, 40'000, true);
    QCOMPARE(sensor().superframeRates().front(), 20e6 / (4.0 * subframe));
    QCOMPARE(sensor().superframeRateIndex(), 0);
    QCOMPARE(averageRate(), 4 * sensor().superframeRate());
    QCOMPARE(sensor().setSubframeEnabled(3, false), emulator::Ok);
    QCOMPARE(sensor().superframeRates().front(), 20e6 / (3.0 * subframe));
    QCOMPARE(sensor().superframeRateIndex(), -1);
    QCOMPARE(sensor().setSuperframeRateIndex(1), emulator::Ok);
    QCOMPARE(sensor().superframeRate(), sensor().superframeRates().at(1));
    QCOMPARE(sensor().setSuperframeRate(33.3), emulator::Ok);
    QCOMPARE(sensor().superframeRate(), 20e6 / 600'601);
    QCOMPARE(sensor().superframeRateIndex(), -1);
    QCOMPARE(sensor().setSuperframeRateIndex(1000), emulator::Refused);
    QCOMPARE(sensor().setSuperframeRateIndex(-1), emulator::Refused);
    QCOMPARE(sensor().setSuperframeRate(0.0), emulator::Refused);
    for (const int preset : {0, 1, 2})
        QCOMPARE(sensor().setSubframeEnabled(preset, false), emulator::Ok);
    QCOMPARE(averageRate(), 0.0);
    QVERIFY(std::isfinite(sensor().superframeRates().front()));
}

void tst_Sensor::aSnapshotRestoresEverything()
{
    const QJsonObject fresh = sensor().save();
    sensor().setWindow({16, 4, 96, 100});
    sensor().setReduceNoise(true);
    sensor().setSequencingMode(Sensor::Superframing);
    sensor().setActivePreset(3);
    sensor().setVideoPreset(2);
    sensor().setGigEPreset(1);
    sensor().setIntegrationTime(1, 7.5);
    sensor().setFrameRate(1, 12.5);
    sensor().setDwellCount(2, 2'000'000'000);
    sensor().setSubframeEnabled(0, false);
    sensor().setSuperframeRate(3.0);
    const QJsonObject changed = sensor().save();
    QVERIFY(changed != fresh);
    sensor().restore(fresh);
    QCOMPARE(sensor().save(), fresh);
    sensor().restore(changed);
    QCOMPARE(sensor().save(), changed);
}

void tst_Sensor::aDamagedSnapshotIsPassedOver()
{
    const QJsonObject before = sensor().save();
    sensor().restore({});
    sensor().restore({{QStringLiteral("window"), QJsonArray{1, 2, 3}},
                      {QStringLiteral("sequencingMode"), QStringLiteral("all")},
                      {QStringLiteral("activePreset"), 9},
                      {QStringLiteral("videoPreset"), QJsonValue()},
                      {QStringLiteral("reduceNoise"), QJsonArray{}},
                      {QStringLiteral("superframeWidth"), QStringLiteral("wide")},
                      {QStringLiteral("presets"),
                       QJsonArray{QJsonObject{{QStringLiteral("integrationWidth"), -1},
                                              {QStringLiteral("frameWidth"), 1},
                                              {QStringLiteral("dwellCount"), QJsonArray{}},
                                              {QStringLiteral("subframeEnabled"), QJsonArray{}}},
                                  1, 2, 3, QJsonObject{{QStringLiteral("integrationWidth"), 1000}}}},
                      {QStringLiteral("unknown"), 1}});
    QCOMPARE(sensor().save(), before);
}

void tst_Sensor::anotherClientChangesSettings_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("taken");
    QTest::newRow("window") << QVariant(QVariantList{16, 4, 96, 100}) << true;
    QTest::newRow("window: too few") << QVariant(QVariantList{16, 4, 96}) << false;
    QTest::newRow("window: too large") << QVariant(QVariantList{65536, 65536, 65600, 65540}) << false;
    QTest::newRow("sequencingMode") << QVariant(2) << true;
    QTest::newRow("sequencingMode: unknown") << QVariant(7) << false;
    QTest::newRow("sequencingMode: text") << QVariant(QStringLiteral("two")) << false;
    QTest::newRow("activePreset") << QVariant(3) << true;
    QTest::newRow("activePreset: none") << QVariant(4) << false;
    QTest::newRow("activePreset: text") << QVariant(QStringLiteral("first")) << false;
    QTest::newRow("videoPreset") << QVariant(1) << true;
    QTest::newRow("gigEPreset") << QVariant(1) << true;
    QTest::newRow("reduceNoise") << QVariant(true) << true;
    QTest::newRow("reduceNoise: list") << QVariant(QVariantList{}) << false;
    QTest::newRow("integrationTime") << QVariant(3.5) << true;
    QTest::newRow("integrationTime: text") << QVariant(QStringLiteral("long")) << false;
    QTest::newRow("frameRate") << QVariant(25.0) << true;
    QTest::newRow("frameRate: 0") << QVariant(0.0) << false;
    QTest::newRow("dwellCount") << QVariant(7) << true;
    QTest::newRow("dwellCount: below 0") << QVariant(-1) << false;
    QTest::newRow("subframeEnabled") << QVariant(false) << true;
    QTest::newRow("superframeRate") << QVariant(10.0) << true;
    QTest::newRow("superframeRate: 0") << QVariant(0.0) << false;
    QTest::newRow("colour") << QVariant(1) << false;
}

void tst_Sensor::anotherClientChangesSettings()
{
    QFETCH(QVariant, value);
    QFETCH(bool, taken);
    const QString name = QString::fromUtf8(QTest::currentDataTag()).section(QLatin1Char(':'), 0, 0);
    const QJsonObject before = sensor().save();
    QCOMPARE(m_camera->otherClient().set(QStringLiteral("sensor.") + name, value), taken);
    QCOMPARE(sensor().save() != before, taken);
}

void tst_Sensor::edgeValuesStayFinite()
{
    use(QStringLiteral("edge-values"));
    QVERIFY(m_camera->otherClient().set(QStringLiteral("sync.source"), 0));
    for (const uint32_t mode : sensor().sequencingModes()) {
        QCOMPARE(sensor().setSequencingMode(mode), emulator::Ok);
        for (const bool reduce : {false, true}) {
            sensor().setReduceNoise(reduce);
            QVERIFY(std::isfinite(averageRate()));
            QVERIFY(sensor().superframeRate() > 0.0);
            if (mode == Sensor::Superframing)
                QCOMPARE(averageRate(), 4 * sensor().superframeRate());
            QVERIFY(highestRate(1) > 0.0);
        }
    }
}

ZVT_TEST(tst_Sensor)
#include "tst_Sensor.moc"
