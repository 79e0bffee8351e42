#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/image/frame.h"
#include "tests/platform/FrameRig.h"
#include "tests/platform/callTimes.h"
#include "tests/platform/settingOf.h"
#include "tests/support/Test.h"

#include <cmath>
#include <limits>

using emulator::Clock;

namespace
{

constexpr int64_t second = 1000;
constexpr double noise = 0.03;

/// A camera with a cold detector and a flag.
class FlagRig : public FrameRig
{
public:
    using FrameRig::FrameRig;

    int state() const
    {
        uint8_t state = 42;
        return zvtGetFlagState(handle(), &state) == 0 ? state : -1;
    }
    bool move(uint8_t state) { return zvtSetFlagState(handle(), state) == 0; }
    double temperature() const
    {
        float celsius = 0;
        return zvtGetFlagTemperature(handle(), &celsius) == 0 ? celsius : std::numeric_limits<double>::quiet_NaN();
    }
    double desired() const
    {
        float celsius = 0;
        return zvtGetFlagDesiredTemperature(handle(), &celsius) == 0 ? celsius
                                                                     : std::numeric_limits<double>::quiet_NaN();
    }
    double airGap() { return camera().device<emulator::Temperatures>()->airGap(Clock::now()); }

    /// How many columns of the newest frame, from the left, show the flag: those that differ from a frame without it.
    int coveredColumns(const Counts &without)
    {
        const Counts counts = newest();
        const auto width = static_cast<size_t>(window().width);
        size_t column = 0;
        const auto differs = [&](size_t x) {
            double sum = 0;
            for (size_t i = x; i < counts.size(); i += width)
                sum += counts[i] - without[i];
            return std::abs(sum) / (static_cast<double>(counts.size()) / static_cast<double>(width)) > 50;
        };
        while (column < width && differs(column))
            ++column;
        return static_cast<int>(column);
    }
};

} // namespace

/// The flag: its moves, its temperature, and its picture.
class tst_flag : public Test
{
    Q_OBJECT

private slots:
    void presence_data();
    void presence();
    void stateTellsWhereItGoes();
    void otherStatesAreRefused();
    void aClockThatIsSetBackEndsTheMove();
    void commandsReturnAtOnce();
    void isStowedAfterARestart();

    void plainFlagHasTheTemperatureOfTheAirGap_data();
    void plainFlagHasTheTemperatureOfTheAirGap();
    void plainFlagHasNoDesiredTemperature();
    void cooledFlagReachesItsTemperature_data();
    void cooledFlagReachesItsTemperature();
    void temperatureOutOfRangeIsRefused_data();
    void temperatureOutOfRangeIsRefused();
    void lowestTemperatureIsNeverReached();
    void withoutPowerItWarmsUp();

    void sweepsFromTheLeft();
    void turnsRoundOnItsWay();
    void fillsThePictureWithoutShading();
    void hidesTheSceneAndTheCover();
    void pictureFollowsItsTemperature();
    void isFlippedWithThePicture();
    void windowShowsItsPartOfTheFlag();
    void stowedFlagChangesNothing();
    void isInNoSnapshot();
    void disconnectionDoesNotStopIt();
};

void tst_flag::presence_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<bool>("controlled");
    QTest::newRow("everything") << true << true;
    QTest::newRow("edge-values") << true << true;
    QTest::newRow("te-cooler") << true << false;
    QTest::newRow("low-cost") << true << false;
    QTest::newRow("discrete-fov") << true << false;
    QTest::newRow("board-6") << true << false;
    QTest::newRow("bare") << false << false;
}

void tst_flag::presence()
{
    QFETCH(const bool, present);
    QFETCH(const bool, controlled);
    LensRig rig(QTest::currentDataTag());
    bool value = !present;
    QCOMPARE(zvtGetFlagPresent(rig.handle(), &value), 0);
    QCOMPARE(value, present);
    value = !controlled;
    uint8_t state = 42;
    float celsius = 42;
    const int expected = present ? emulator::Ok : emulator::Absent;
    QCOMPARE(zvtGetFlagTemperatureControlled(rig.handle(), &value), expected);
    QCOMPARE(value, present ? controlled : !controlled);
    QCOMPARE(zvtGetFlagState(rig.handle(), &state), expected);
    QCOMPARE(state, uint8_t(present ? 0 : 42));
    QCOMPARE(zvtSetFlagState(rig.handle(), 1), expected);
    QCOMPARE(zvtGetFlagTemperature(rig.handle(), &celsius), expected);
    rig.camera().disconnect();
    QCOMPARE(zvtGetFlagPresent(rig.handle(), &value), int(emulator::NotConnected));
}

// The move

void tst_flag::stateTellsWhereItGoes()
{
    FlagRig rig;
    QCOMPARE(rig.state(), 0);
    QVERIFY(rig.move(1));
    QCOMPARE(rig.state(), 1);
    QVERIFY(rig.move(0));
    QCOMPARE(rig.state(), 0);
    QVERIFY(rig.set("flag.state", 1));
    QCOMPARE(rig.state(), 1);
}

void tst_flag::otherStatesAreRefused()
{
    FlagRig rig;
    QVERIFY(rig.move(1));
    for (const uint8_t state : {2, 42, 255})
        QCOMPARE(zvtSetFlagState(rig.handle(), state), int(emulator::Refused));
    QVERIFY(!rig.set("flag.state", 2) && !rig.set("flag.state", -1) && !rig.set("flag.state", true));
    QCOMPARE(rig.state(), 1);
}

void tst_flag::aClockThatIsSetBackEndsTheMove()
{
    FlagRig rig;
    QVERIFY(rig.move(1));
    Clock::manual(); // Back to the start.
    QCOMPARE(rig.exposure().optics.flagCover, 1.0);
}

void tst_flag::commandsReturnAtOnce()
{
    FlagRig rig;
    const auto before = Clock::now();
    const size_t mark = rig.camera().gate().mark();
    for (int i = 0; i < 10; ++i) {
        QVERIFY(rig.move(i % 2));
        QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), static_cast<float>(i)), 0);
        rig.temperature();
    }
    QCOMPARE(Clock::now(), before);
    QVERIFY(slowestFunction(rig.camera().gate(), mark) < std::chrono::milliseconds(1));
}

void tst_flag::isStowedAfterARestart()
{
    FlagRig rig;
    QVERIFY(rig.move(1));
    rig.open("everything");
    QCOMPARE(rig.state(), 0);
    QCOMPARE(rig.exposure().optics.flagCover, 0.0);
}

// The temperature

void tst_flag::plainFlagHasTheTemperatureOfTheAirGap_data()
{
    QTest::addColumn<double>("ambient");
    QTest::newRow("te-cooler") << 22.0;
    QTest::newRow("low-cost") << 26.0;
}

void tst_flag::plainFlagHasTheTemperatureOfTheAirGap()
{
    QFETCH(const double, ambient);
    LensRig rig(QTest::currentDataTag());
    const auto temperature = [&rig] {
        float celsius = 0;
        return zvtGetFlagTemperature(rig.handle(), &celsius) == 0 ? celsius : 1000;
    };
    QVERIFY(std::abs(temperature() - (ambient + 4.5)) < noise);
    Clock::advance(600 * second);
    QVERIFY(std::abs(temperature() - (ambient + 4.5 + 4 * (1 - std::exp(-1.0)))) < noise);
}

void tst_flag::plainFlagHasNoDesiredTemperature()
{
    LensRig rig("te-cooler");
    float celsius = 42;
    bool on = true;
    QCOMPARE(zvtGetFlagDesiredTemperature(rig.handle(), &celsius), int(emulator::Absent));
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), 30), int(emulator::Absent));
    QCOMPARE(zvtGetFlagCoolerEnabled(rig.handle(), &on), int(emulator::Absent));
    QCOMPARE(celsius, 42.0F);
    QVERIFY(on);
}

void tst_flag::cooledFlagReachesItsTemperature_data()
{
    QTest::addColumn<double>("celsius");
    QTest::addColumn<double>("seconds");
    QTest::newRow("20 C") << 20.0 << 5.6;
    QTest::newRow("35 C") << 35.0 << 11.1;
    QTest::newRow("45 C") << 45.0 << 15.1;
}

// From 24 C, which the air gap has here for a moment.
void tst_flag::cooledFlagReachesItsTemperature()
{
    QFETCH(const double, celsius);
    QFETCH(const double, seconds);
    FlagRig rig;
    rig.openWith(R"({"environment": {"ambient": 19}, "flag": {"power": false, "noise": 0}})");
    while (rig.temperature() < 24)
        Clock::advance(100);
    QVERIFY(std::abs(rig.temperature() - 24) < 0.01);
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), static_cast<float>(celsius)), 0);
    QCOMPARE(zvtMfgSetCoolerPowerEnabled(rig.handle(), true), 0);
    double outside = 0;
    for (int step = 1; step <= 600; ++step) {
        Clock::advance(100);
        if (std::abs(rig.temperature() - celsius) > 0.5)
            outside = step / 10.0;
    }
    QVERIFY2(std::abs(outside - seconds) <= 0.1 * seconds, qPrintable(QString::number(outside)));
}

void tst_flag::temperatureOutOfRangeIsRefused_data()
{
    QTest::addColumn<float>("celsius");
    QTest::addColumn<bool>("taken");
    QTest::newRow("lowest") << -10.0F << true;
    QTest::newRow("highest") << 60.0F << true;
    QTest::newRow("too low") << -10.01F << false;
    QTest::newRow("too high") << 60.01F << false;
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << false;
    QTest::newRow("infinite") << std::numeric_limits<float>::infinity() << false;
}

void tst_flag::temperatureOutOfRangeIsRefused()
{
    QFETCH(const float, celsius);
    QFETCH(const bool, taken);
    FlagRig rig;
    QCOMPARE(rig.desired(), 20.0);
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), celsius), int(taken ? emulator::Ok : emulator::Refused));
    QCOMPARE(rig.desired(), taken ? celsius : 20.0);
    QCOMPARE(rig.set("flag.setpoint", celsius), taken);
}

void tst_flag::lowestTemperatureIsNeverReached()
{
    FlagRig rig;
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), -10), 0);
    Clock::advance(900 * second);
    // The cooler reaches 32.7 K below the air gap.
    QVERIFY2(std::abs(rig.temperature() - (rig.airGap() - 32.7)) < 0.2, qPrintable(QString::number(rig.temperature())));
    QVERIFY(rig.temperature() > -9);
}

void tst_flag::withoutPowerItWarmsUp()
{
    FlagRig rig;
    bool on = false;
    QCOMPARE(zvtGetFlagCoolerEnabled(rig.handle(), &on), 0);
    QVERIFY(on);
    QVERIFY(std::abs(rig.temperature() - 20) < 0.05 + noise);
    QVERIFY(rig.set("flag.power", false));
    QCOMPARE(zvtGetFlagCoolerEnabled(rig.handle(), &on), 0);
    QVERIFY(!on);
    Clock::advance(600 * second);
    QVERIFY(std::abs(rig.temperature() - rig.airGap()) < 0.1 + noise);
}

// The picture

void tst_flag::sweepsFromTheLeft()
{
    FlagRig rig;
    QVERIFY(rig.showArea(35));
    const auto without = rig.newest();
    QCOMPARE(rig.coveredColumns(without), 0);
    QVERIFY(rig.move(1));
    QCOMPARE(rig.coveredColumns(without), 0);
    for (const int columns : {160, 320, 480, 640, 640}) {
        Clock::advance(100);
        QCOMPARE(rig.coveredColumns(without), columns);
    }
    QVERIFY(rig.move(0));
    for (const int columns : {480, 320, 160, 0, 0}) {
        Clock::advance(100);
        QCOMPARE(rig.coveredColumns(without), columns);
    }
}

void tst_flag::turnsRoundOnItsWay()
{
    FlagRig rig;
    const auto cover = [&rig] { return rig.exposure().optics.flagCover; };
    QVERIFY(rig.move(1));
    Clock::advance(100);
    QVERIFY(std::abs(cover() - 0.25) < 1e-9);
    QVERIFY(rig.move(1));
    Clock::advance(100);
    QVERIFY(std::abs(cover() - 0.5) < 1e-9);
    QVERIFY(rig.move(0));
    QVERIFY(std::abs(cover() - 0.5) < 1e-9);
    Clock::advance(100);
    QVERIFY(std::abs(cover() - 0.25) < 1e-9);
    Clock::advance(100);
    QCOMPARE(cover(), 0.0);
}

void tst_flag::fillsThePictureWithoutShading()
{
    FlagRig rig;
    // Only the lens shades here: the detector has no vignetting.
    rig.openWith(FrameRig::equalPixels);
    QVERIFY(rig.showArea(35));
    const auto profile = [&rig] {
        const auto frame = rig.newest();
        const size_t width = 640;
        const auto mean = [&](size_t x) {
            double sum = 0;
            for (size_t y = 240; y < 272; ++y)
                for (size_t i = 0; i < 32; ++i)
                    sum += frame[y * width + x + i];
            return sum / (32 * 32);
        };
        return std::pair(mean(304), mean(0));
    };
    const auto [sceneMiddle, sceneEdge] = profile();
    QVERIFY(sceneMiddle - sceneEdge > 30);
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), 35), 0);
    QVERIFY(rig.move(1));
    Clock::advance(60 * second);
    const auto [flagMiddle, flagEdge] = profile();
    QVERIFY2(std::abs(flagMiddle - flagEdge) < 2, qPrintable(QString::number(flagMiddle - flagEdge)));
    // The scene of the same temperature is as bright in the middle, where nothing is shaded.
    QVERIFY2(std::abs(flagMiddle - sceneMiddle) < 10, qPrintable(QString::number(flagMiddle - sceneMiddle)));
}

void tst_flag::hidesTheSceneAndTheCover()
{
    FlagRig rig;
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.move(1));
    Clock::advance(60 * second);
    const auto flagged = rig.mean();
    QVERIFY(rig.showArea(60));
    QVERIFY(std::abs(rig.mean() - flagged) < 2);
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 1), 0);
    QVERIFY(rig.exposure().optics.blocked);
    QVERIFY(std::abs(rig.mean() - flagged) < 2);
    QVERIFY(rig.move(0));
    Clock::advance(second);
    QVERIFY(std::abs(rig.mean() - flagged) > 20);
}

void tst_flag::pictureFollowsItsTemperature()
{
    FlagRig rig;
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.move(1));
    Clock::advance(60 * second);
    const double cold = rig.mean();
    QCOMPARE(zvtSetFlagDesiredTemperature(rig.handle(), 35), 0);
    QVERIFY(std::abs(rig.mean() - cold) < 2);
    Clock::advance(60 * second);
    const double warm = rig.mean();
    QVERIFY(rig.move(0));
    QVERIFY(rig.showArea(20));
    Clock::advance(second);
    QVERIFY(std::abs(rig.mean() - cold) < 15);
    QVERIFY(rig.showArea(35));
    QVERIFY(std::abs(rig.mean() - warm) < 15);
    QVERIFY(warm - cold > 500);
}

void tst_flag::isFlippedWithThePicture()
{
    FlagRig rig;
    QVERIFY(rig.showArea(35) && rig.set("image.reverted", true));
    const auto without = rig.newest();
    QVERIFY(rig.move(1));
    Clock::advance(200);
    const auto half = rig.newest();
    const auto sideDiffers = [&](size_t first) {
        double sum = 0;
        for (size_t i = 256 * 640 + first; i < 256 * 640 + first + 300; ++i)
            sum += half[i] - without[i];
        return std::abs(sum) / 300 > 50;
    };
    QVERIFY(!sideDiffers(0));
    QVERIFY(sideDiffers(340));
}

void tst_flag::windowShowsItsPartOfTheFlag()
{
    FlagRig rig;
    QVERIFY(rig.useSmallWindow() && rig.showArea(35));
    const auto without = rig.newest();
    QVERIFY(rig.move(1));
    Clock::advance(100);
    QCOMPARE(rig.coveredColumns(without), 0);
    Clock::advance(75);
    QCOMPARE(rig.coveredColumns(without), 40);
    Clock::advance(100);
    QCOMPARE(rig.coveredColumns(without), 160);
}

void tst_flag::stowedFlagChangesNothing()
{
    FlagRig rig;
    QVERIFY(!rig.newest().empty()); // Makes the maps of the detector.
    auto exposure = rig.exposure();
    QCOMPARE(exposure.optics.flagCover, 0.0);
    FrameRig::Counts before;
    FrameRig::Counts after;
    QVERIFY(emulator::image::renderFrame(exposure, before));
    exposure.optics.flagCelsius = 60;
    QVERIFY(emulator::image::renderFrame(exposure, after));
    QCOMPARE(after, before);
    exposure.optics.flagCover = 0.1;
    QVERIFY(emulator::image::renderFrame(exposure, after));
    QVERIFY(after != before);
}

void tst_flag::isInNoSnapshot()
{
    FlagRig rig;
    QVERIFY(rig.move(1));
    QVERIFY(!rig.camera().snapshot().contains("flag"));
    QCOMPARE(zvtSaveStateAs(rig.handle(), "a"), 0);
    QVERIFY(rig.move(0));
    QVERIFY(rig.set("states.current", "a"));
    QCOMPARE(rig.state(), 0);
}

void tst_flag::disconnectionDoesNotStopIt()
{
    FlagRig rig;
    QVERIFY(rig.move(1));
    Clock::advance(100);
    rig.camera().disconnect();
    QCOMPARE(zvtSetFlagState(rig.handle(), 0), int(emulator::NotConnected));
    Clock::advance(300);
    rig.camera().connect();
    QCOMPARE(rig.state(), 1);
    QCOMPARE(rig.exposure().optics.flagCover, 1.0);
}

ZVT_TEST(tst_flag)
#include "tst_flag.moc"
