#include "platform/emulator/devices/FocusMeter.h"
#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <future>
#include <limits>
#include <mutex>
#include <thread>

using emulator::Clock;

class tst_autoFocus : public Test
{
    Q_OBJECT

private slots:
    void takesItsTime();
    void theFullFormBeginsAtTheNearEnd_data();
    void theFullFormBeginsAtTheNearEnd();
    void knowsOneMode();
    void goesBackWithoutContrast_data();
    void goesBackWithoutContrast();
    void staysWithoutAView_data();
    void staysWithoutAView();
    void refusesWhileTheTurretTurns();
    void goesBackWhenTheViewIsLost();
    void needsFramesOfTheActivePreset();
    void refusesHandsAtTheLens();
    void theLockIsFreeWhilePixelsAreComputed();
    void anotherCommandEndsIt();
    void aCommandBetweenMovesEndsIt();
    void disconnectionEndsIt();
    void aDisconnectionBetweenMovesEndsIt();
    void takesTheRegionsThatThereAre();
    void showsTheRegion();
    void isOpenToOtherClients();
    void snapshotsHoldTheRegion();
    void lacksWithoutAFocus();

private:
    static QList<int> region(uint64_t handle)
    {
        uint16_t size = 0;
        uint8_t position = 0;
        bool whenFocusing = false, always = false;
        if (zvtGetAutoFocusROISize(handle, &size) != 0 || zvtGetAutoFocusROIPosition(handle, &position) != 0
            || zvtGetAutoFocusROIShowWhenFocusing(handle, &whenFocusing) != 0
            || zvtGetVideoOverlayShowFocusROI(handle, &always) != 0)
            return {};
        return {size, position, whenFocusing, always};
    }

    /// Returns the status of a full run from 6000 during which `act` has been called. The clock is stopped, so moves
    /// take no time of the computer, and `act` is called while pixels are computed. The smallest int if it returns
    /// false, Ok if it has always been too late.
    static int statusOfRunWith(LensRig &rig, const std::function<bool()> &act);
};

int tst_autoFocus::statusOfRunWith(LensRig &rig, const std::function<bool()> &act)
{
    constexpr int rounds = 100;
    rig.set("autoFocus.regionSize", 512);
    for (int round = 0; round < rounds; ++round) {
        rig.camera().connect();
        rig.set("cover.state", 0);
        LensRig::coolDetector();
        zvtSetFocusPos(rig.handle(), 6000);
        auto focusing = std::async(std::launch::async, [&rig] { return zvtAutoFocusFull(rig.handle(), 0); });
        const auto isReady = [&] { return focusing.wait_for(std::chrono::seconds(0)) == std::future_status::ready; };
        while (rig.focus() == 6000 && !isReady())
            std::this_thread::yield();
        const bool acted = act();
        const bool inTime = !isReady();
        const int status = focusing.get();
        if (!acted)
            return std::numeric_limits<int>::min();
        // A run that ended before, or whose last picture was computed then, is made again.
        if (inTime && status != emulator::Ok)
            return status;
    }
    return emulator::Ok;
}

void tst_autoFocus::takesItsTime()
{
    LensRig rig;
    LensRig::coolDetector();
    const auto timeOf = [&rig](double metres, auto focus) {
        rig.set("autoFocus.sceneDistance", metres);
        zvtSetFocusPos(rig.handle(), 6000);
        const auto before = Clock::now();
        return focus() == 0 ? Clock::now() - before : -1;
    };
    const auto fast = [&rig] { return zvtAutoFocusFast(rig.handle(), 1); };
    const auto full = [&rig] { return zvtAutoFocusFull(rig.handle(), 0); };
    // With 5 counts per millisecond.
    const auto isAbout
        = [](int64_t time, double milliseconds) { return std::abs(double(time) - milliseconds) <= 0.3 * milliseconds; };
    QVERIFY(isAbout(timeOf(1, fast), 1241));
    QVERIFY(isAbout(timeOf(25, fast), 1394));
    QVERIFY(isAbout(timeOf(1, full), 4839));
    QVERIFY(isAbout(timeOf(25, full), 3794));
}

void tst_autoFocus::theFullFormBeginsAtTheNearEnd_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<uint32_t>("near");
    QTest::addColumn<uint32_t>("far");
    QTest::newRow("ascending") << QByteArray("everything") << 0U << 10'000U;
    QTest::newRow("descending") << QByteArray("discrete-fov") << 12'000U << 100U;
}

void tst_autoFocus::theFullFormBeginsAtTheNearEnd()
{
    QFETCH(QByteArray, profile);
    QFETCH(uint32_t, near);
    QFETCH(uint32_t, far);
    LensRig rig(profile.constData());
    LensRig::coolDetector();
    QCOMPARE(zvtSetFocusPos(rig.handle(), near), 0);
    const auto before = Clock::now();
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), 0);
    // One move over the range, and then some around the sharp place.
    const auto milliseconds = double(Clock::now() - before) - std::abs(double(far) - near) / 5;
    QVERIFY(milliseconds > 100 && milliseconds < 1600);
}

void tst_autoFocus::knowsOneMode()
{
    LensRig rig;
    for (const int mode : {0, 2, -1})
        QCOMPARE(zvtAutoFocusFast(rig.handle(), mode), int(emulator::Refused));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 1), int(emulator::Refused));
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 6000U);
}

void tst_autoFocus::goesBackWithoutContrast_data()
{
    QTest::addColumn<bool>("warm");
    QTest::addColumn<int>("pattern");
    QTest::addColumn<int>("size");
    QTest::newRow("warm detector") << true << 0 << 128;
    for (const int size : {16, 32, 64, 128, 256, 512})
        QTest::addRow("flat scene, %d", size) << false << 3 << size;
}

void tst_autoFocus::goesBackWithoutContrast()
{
    QFETCH(bool, warm);
    QFETCH(int, pattern);
    QFETCH(int, size);
    LensRig rig;
    if (!warm)
        LensRig::coolDetector();
    QVERIFY(rig.set("emulator./Pattern", pattern));
    QVERIFY(rig.set("autoFocus.regionSize", size));
    for (const uint32_t start : {0U, 6000U, 9810U, 10'000U}) {
        QCOMPARE(zvtSetFocusPos(rig.handle(), start), 0);
        const auto before = Clock::now();
        QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), int(emulator::Refused));
        QCOMPARE(rig.focus(), start);
        QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), int(emulator::Refused));
        QCOMPARE(rig.focus(), start);
        QVERIFY(Clock::now() - before > 4000);
    }
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 10'000U);
}

void tst_autoFocus::staysWithoutAView_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("setting");
    QTest::addColumn<int>("value");
    QTest::newRow("closed cover") << QByteArray("everything") << QByteArray("cover.state") << 1;
    QTest::newRow("unknown cover") << QByteArray("everything") << QByteArray("cover.state") << 2;
    QTest::newRow("no frames") << QByteArray("everything") << QByteArray("sync.externalRate") << 0;
    QTest::newRow("window too large") << QByteArray("edge-values") << QByteArray("cover.state") << 0;
}

void tst_autoFocus::staysWithoutAView()
{
    QFETCH(QByteArray, profile);
    QFETCH(QByteArray, setting);
    QFETCH(int, value);
    LensRig rig(profile.constData());
    LensRig::coolDetector();
    QVERIFY(rig.set("sync.source", setting == "sync.externalRate" ? 1 : 0));
    QVERIFY(rig.set(setting.constData(), value));
    LensRig::finishMoves();
    const uint32_t start = rig.focus();
    const auto before = Clock::now();
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), int(emulator::Refused));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), int(emulator::Refused));
    QCOMPARE(Clock::now(), before);
    QCOMPARE(rig.focus(), start);
}

void tst_autoFocus::refusesWhileTheTurretTurns()
{
    LensRig rig("discrete-fov");
    LensRig::coolDetector();
    QCOMPARE(zvtSetFocusPos(rig.handle(), 8500), 0);
    QCOMPARE(zvtSetFOV(rig.handle(), 1), 0);
    Clock::advance(100);
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), int(emulator::Refused));
    // The turret still takes the focus along.
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 7500U);
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), 0);
    QVERIFY(rig.defocus() <= 0.7);
}

void tst_autoFocus::goesBackWhenTheViewIsLost()
{
    LensRig rig;
    // The cover hides the scene as soon as it moves.
    QCOMPARE(statusOfRunWith(rig, [&rig] { return rig.set("cover.state", 1); }), int(emulator::Refused));
    QCOMPARE(rig.focus(), 6000U);
}

void tst_autoFocus::needsFramesOfTheActivePreset()
{
    LensRig rig;
    LensRig::coolDetector();
    QVERIFY(rig.set("sensor.sequencingMode", 2));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), 0);
    QVERIFY(rig.set("sensor.activePreset", 1));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), 0);
    QVERIFY(rig.set("sensor.dwellCount", 0));
    LensRig::finishMoves();
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), int(emulator::Refused));
}

void tst_autoFocus::refusesHandsAtTheLens()
{
    LensRig rig;
    LensRig::coolDetector();
    QVERIFY(rig.set("focus.manual", true));
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), int(emulator::Refused));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), int(emulator::Refused));
    QCOMPARE(rig.focus(), 6000U);
}

void tst_autoFocus::theLockIsFreeWhilePixelsAreComputed()
{
    LensRig rig;
    LensRig::coolDetector();
    std::atomic<bool> answered = false;
    std::future<void> reading;
    std::unique_lock lock(rig.camera().mutex());
    emulator::FocusMeter meter(rig.camera(), {512, 0});
    reading = std::async(std::launch::async, [&] { answered = rig.focus() == 6000; });
    for (int measures = 0; measures < 1000 && !answered; ++measures)
        QVERIFY(meter.measure());
    const bool answeredInTime = answered;
    lock.unlock();
    reading.get();
    QVERIFY(answeredInTime);
}

void tst_autoFocus::anotherCommandEndsIt()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto focusing = std::async(std::launch::async, [&] { return zvtAutoFocusFast(rig.handle(), 1); });
    QTRY_VERIFY(rig.focus() != 6000);
    QCOMPARE(zvtFocusMove(rig.handle(), 0), 0);
    QCOMPARE(focusing.get(), int(emulator::Refused));
    QVERIFY(rig.focus() != 6000);
}

void tst_autoFocus::aCommandBetweenMovesEndsIt()
{
    LensRig rig;
    QCOMPARE(statusOfRunWith(rig, [&rig] { return zvtFocusMoveTo(rig.handle(), 1234) == 0; }), int(emulator::Refused));
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 1234U);
}

void tst_autoFocus::aDisconnectionBetweenMovesEndsIt()
{
    LensRig rig;
    const auto disconnect = [&rig] {
        rig.camera().disconnect();
        return true;
    };
    QCOMPARE(statusOfRunWith(rig, disconnect), int(emulator::NotConnected));
}

void tst_autoFocus::disconnectionEndsIt()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto focusing = std::async(std::launch::async, [&] { return zvtAutoFocusFull(rig.handle(), 0); });
    QTRY_VERIFY(rig.focus() != 6000);
    rig.camera().disconnect();
    QCOMPARE(focusing.get(), int(emulator::NotConnected));
}

void tst_autoFocus::takesTheRegionsThatThereAre()
{
    LensRig rig;
    QCOMPARE(region(rig.handle()), (QList<int>{128, 0, 1, 0}));
    for (const uint16_t size : {16, 32, 64, 128, 256, 512})
        QCOMPARE(zvtSetAutoFocusROISize(rig.handle(), size), 0);
    for (const uint16_t size : {0, 15, 17, 1024, 65535})
        QCOMPARE(zvtSetAutoFocusROISize(rig.handle(), size), int(emulator::Refused));
    for (uint8_t position = 0; position < 5; ++position)
        QCOMPARE(zvtSetAutoFocusROIPosition(rig.handle(), position), 0);
    for (const uint8_t position : {uint8_t(5), uint8_t(255)})
        QCOMPARE(zvtSetAutoFocusROIPosition(rig.handle(), position), int(emulator::Refused));
    QCOMPARE(region(rig.handle()), (QList<int>{512, 4, 1, 0}));
    // A profile may contain a size that cannot be set.
    rig.open("edge-values");
    QCOMPARE(region(rig.handle()).at(0), 100);
}

void tst_autoFocus::showsTheRegion()
{
    LensRig rig;
    QCOMPARE(zvtSetAutoFocusROIShowWhenFocusing(rig.handle(), false), 0);
    QCOMPARE(region(rig.handle()), (QList<int>{128, 0, 0, 0}));
    QCOMPARE(zvtSetVideoOverlayShowFocusROI(rig.handle(), true), 0);
    QCOMPARE(region(rig.handle()), (QList<int>{128, 0, 0, 1}));
}

void tst_autoFocus::isOpenToOtherClients()
{
    LensRig rig;
    QVERIFY(rig.set("autoFocus.regionSize", 64));
    QVERIFY(rig.set("autoFocus.regionPosition", 3));
    QVERIFY(rig.set("autoFocus.showWhenFocusing", false));
    QVERIFY(rig.set("autoFocus.showAlways", true));
    QCOMPARE(region(rig.handle()), (QList<int>{64, 3, 0, 1}));
    QVERIFY(!rig.set("autoFocus.regionSize", 100));
    QVERIFY(!rig.set("autoFocus.regionPosition", 5));
    QVERIFY(!rig.set("autoFocus.regionPosition", 256));
    QVERIFY(!rig.set("autoFocus.showAlways", 1));
    QVERIFY(!rig.set("autoFocus.sceneDistance", 0));
    QVERIFY(!rig.set("autoFocus.sceneDistance", QStringLiteral("5")));
    QVERIFY(!rig.set("autoFocus.colour", 1));
    QCOMPARE(region(rig.handle()), (QList<int>{64, 3, 0, 1}));
}

void tst_autoFocus::snapshotsHoldTheRegion()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(zvtSetAutoFocusROISize(rig.handle(), 512), 0);
    QCOMPARE(zvtSetAutoFocusROIPosition(rig.handle(), 2), 0);
    QCOMPARE(zvtSetAutoFocusROIShowWhenFocusing(rig.handle(), false), 0);
    const QJsonObject after = rig.camera().snapshot();
    rig.camera().restore(before);
    QCOMPARE(region(rig.handle()), (QList<int>{128, 0, 1, 0}));
    rig.camera().restore(after);
    QCOMPARE(region(rig.handle()), (QList<int>{512, 2, 0, 0}));
}

void tst_autoFocus::lacksWithoutAFocus()
{
    LensRig rig("bare");
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), int(emulator::Absent));
    QVERIFY(region(rig.handle()).empty());
}

ZVT_TEST(tst_autoFocus)
#include "tst_autoFocus.moc"
