#include "platform/emulator/devices/EventQueue.h"
#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <cmath>
#include <future>

using emulator::Clock;

class tst_focus : public Test
{
    Q_OBJECT

private slots:
    void knowsItsRangeAndLimits();
    void movesWithTheClock_data();
    void movesWithTheClock();
    void aDescendingEncoderFallsToFar();
    void runsOnALittleWhenStopped();
    void aStopOfAStopChangesNothing();
    void endsAtTheStops();
    void runsPastALimitOnlyALittle();
    void doesNotMoveFurtherBehindALimit();
    void travelsToAPosition();
    void aNewGoalTakesOverFromTheOldOne();
    void goesToAPositionAndEndsThere();
    void smallStepsAreQuick();
    void runsToTheLimitsOfTheField();
    void refusesWhatItCannotDo();
    void movesByPercentOnlyWhereTheLensCan();
    void fieldsHaveLimitsOfTheirOwn();
    void limitsMayCrossButNotLeaveTheRange();
    void tellsHowItMovesSlowly();
    void manualModeRefusesCommands();
    void isOpenToOtherClients();
    void refusesSettingsOfOtherClients();
    void aMoveThatIsOvertakenFails();
    void disconnectionEndsAMove();
    void disconnectionStopsTheMotor();
    void remembersWhereItIs();
    void snapshotsHoldIt();
    void snapshotsOfNonsenseChangeNothing();
};

void tst_focus::knowsItsRangeAndLimits()
{
    LensRig rig;
    uint32_t minimum = 1, maximum = 1;
    QCOMPARE(zvtGetFocusRange(rig.handle(), &minimum, &maximum), 0);
    QCOMPARE(minimum, 0U);
    QCOMPARE(maximum, 10'000U);
    QCOMPARE(rig.focus(), 6000U);
    QCOMPARE(rig.nearLimit(2), 0U);
    QCOMPARE(rig.farLimit(2), 10'000U);
    for (const uint8_t field : {uint8_t(0), uint8_t(1), uint8_t(3)}) {
        uint32_t position = 42;
        QCOMPARE(zvtGetFocusNearPos(rig.handle(), field, &position), int(emulator::Refused));
        QCOMPARE(zvtGetFocusFarPos(rig.handle(), field, &position), int(emulator::Refused));
        QCOMPARE(position, 42U);
    }
}

void tst_focus::movesWithTheClock_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<int>("afterASecond");
    QTest::newRow("slowly to far") << 1 << 500;
    QTest::newRow("to far") << 2 << 2000;
    QTest::newRow("slowly to near") << -1 << -500;
    QTest::newRow("to near") << -2 << -2000;
    QTest::newRow("quickly to near") << -3 << -5000;
}

void tst_focus::movesWithTheClock()
{
    QFETCH(int, speed);
    QFETCH(int, afterASecond);
    LensRig rig;
    QCOMPARE(zvtFocusMove(rig.handle(), speed), 0);
    QCOMPARE(rig.focus(), 6000U);
    for (int tenth = 1; tenth <= 10; ++tenth) {
        Clock::advance(100);
        QCOMPARE(int(rig.focus()) - 6000, afterASecond * tenth / 10);
    }
}

void tst_focus::aDescendingEncoderFallsToFar()
{
    LensRig rig("discrete-fov");
    QVERIFY(rig.nearLimit(0) > rig.farLimit(0));
    QCOMPARE(zvtFocusMove(rig.handle(), 1), 0);
    Clock::advance(1000);
    QCOMPARE(rig.focus(), 5500U);
    QCOMPARE(zvtFocusMove(rig.handle(), -2), 0);
    Clock::advance(1000);
    QCOMPARE(rig.focus(), 7500U);
}

void tst_focus::runsOnALittleWhenStopped()
{
    LensRig rig;
    zvtFocusMove(rig.handle(), -3);
    Clock::advance(200);
    QCOMPARE(zvtFocusMove(rig.handle(), 0), 0);
    QCOMPARE(rig.focus(), 5000U);
    Clock::advance(50);
    // It slows down: most of the distance is in the first half of the time.
    QCOMPARE(rig.focus(), 4813U);
    Clock::advance(50);
    QCOMPARE(rig.focus(), 4750U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 4750U);
}

void tst_focus::aStopOfAStopChangesNothing()
{
    LensRig rig;
    zvtFocusMove(rig.handle(), -3);
    Clock::advance(200);
    for (int n = 0; n < 10; ++n) {
        QCOMPARE(zvtFocusMove(rig.handle(), 0), 0);
        Clock::advance(10);
    }
    LensRig::finishMoves();
    QVERIFY(std::abs(int(rig.focus()) - 4750) <= 1);
}

void tst_focus::endsAtTheStops()
{
    LensRig rig;
    zvtFocusMove(rig.handle(), 3);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 10'000U);
    zvtFocusMove(rig.handle(), -3);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 0U);
}

void tst_focus::runsPastALimitOnlyALittle()
{
    LensRig rig("discrete-fov");
    zvtFocusMove(rig.handle(), 3);
    LensRig::finishMoves();
    QCOMPARE(rig.farLimit(0), 1000U);
    QCOMPARE(rig.focus(), 750U);
}

void tst_focus::doesNotMoveFurtherBehindALimit()
{
    LensRig rig("discrete-fov");
    QCOMPARE(zvtSetFocusPos(rig.handle(), 500), 0);
    QCOMPARE(zvtFocusMove(rig.handle(), 3), 0);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 500U);
    QCOMPARE(zvtFocusMove(rig.handle(), -1), 0);
    Clock::advance(1000);
    QCOMPARE(rig.focus(), 1000U);
}

void tst_focus::travelsToAPosition()
{
    LensRig rig;
    QCOMPARE(zvtFocusMoveTo(rig.handle(), 1000), 0);
    QCOMPARE(rig.focus(), 6000U);
    Clock::advance(500);
    QCOMPARE(rig.focus(), 3500U);
    Clock::advance(500);
    QCOMPARE(rig.focus(), 1000U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 1000U);
}

void tst_focus::aNewGoalTakesOverFromTheOldOne()
{
    LensRig rig;
    zvtFocusMoveTo(rig.handle(), 1000);
    Clock::advance(500);
    QCOMPARE(zvtFocusMoveTo(rig.handle(), 4000), 0);
    Clock::advance(50);
    QCOMPARE(rig.focus(), 3750U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 4000U);
}

void tst_focus::goesToAPositionAndEndsThere()
{
    LensRig rig;
    const auto before = Clock::now();
    QCOMPARE(zvtSetFocusPos(rig.handle(), 1000), 0);
    QCOMPARE(Clock::now() - before, 1000);
    QCOMPARE(rig.focus(), 1000U);
}

void tst_focus::smallStepsAreQuick()
{
    LensRig rig("discrete-fov");
    const auto before = Clock::now();
    QCOMPARE(zvtSetFocusPos(rig.handle(), rig.focus() - 90), 0);
    QVERIFY(Clock::now() - before <= 20);
    QCOMPARE(zvtSetFocusPos(rig.handle(), rig.focus()), 0);
    QVERIFY(Clock::now() - before <= 20);
}

void tst_focus::runsToTheLimitsOfTheField()
{
    LensRig rig("discrete-fov");
    QCOMPARE(zvtFocusNear(rig.handle()), 0);
    QCOMPARE(rig.focus(), 11'000U);
    QCOMPARE(zvtFocusFar(rig.handle()), 0);
    QCOMPARE(rig.focus(), 1000U);
    QCOMPARE(zvtSetFOV(rig.handle(), 1), 0);
    QCOMPARE(zvtFocusNear(rig.handle()), 0);
    QCOMPARE(rig.focus(), 9000U);
    QCOMPARE(zvtFocusFar(rig.handle()), 0);
    QCOMPARE(rig.focus(), 3000U);
}

void tst_focus::refusesWhatItCannotDo()
{
    LensRig rig;
    const auto refused = int(emulator::Refused);
    for (const int speed : {4, -4, INT32_MAX, INT32_MIN})
        QCOMPARE(zvtFocusMove(rig.handle(), speed), refused);
    for (const float percent : {100.5F, -100.5F, NAN, INFINITY})
        QCOMPARE(zvtFocusMovePercent(rig.handle(), percent), refused);
    for (const uint32_t position : {10'001U, UINT32_MAX}) {
        QCOMPARE(zvtFocusMoveTo(rig.handle(), position), refused);
        QCOMPARE(zvtSetFocusPos(rig.handle(), position), refused);
    }
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 6000U);
}

void tst_focus::movesByPercentOnlyWhereTheLensCan()
{
    LensRig rig;
    QCOMPARE(zvtFocusMovePercent(rig.handle(), -50.0F), 0);
    Clock::advance(100);
    QCOMPARE(rig.focus(), 5750U);
    QCOMPARE(zvtFocusMovePercent(rig.handle(), 0.0F), 0);
    LensRig::finishMoves();
    QVERIFY(rig.focus() > 5600);
    rig.open("speed-moves");
    QCOMPARE(zvtFocusMovePercent(rig.handle(), 50.0F), int(emulator::Absent));
    rig.open("bare");
    QCOMPARE(zvtFocusMove(rig.handle(), 1), int(emulator::Absent));
}

void tst_focus::fieldsHaveLimitsOfTheirOwn()
{
    LensRig rig("discrete-fov");
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 0, 10'000), 0);
    QCOMPARE(zvtSetFocusFarPos(rig.handle(), 1, 4000), 0);
    QCOMPARE((QList<uint32_t>{rig.nearLimit(0), rig.farLimit(0), rig.nearLimit(1), rig.farLimit(1)}),
             (QList<uint32_t>{10'000, 1000, 9000, 4000}));
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 2, 5000), int(emulator::Refused));
    QCOMPARE(rig.nearLimit(2), LensRig::none);
}

void tst_focus::limitsMayCrossButNotLeaveTheRange()
{
    LensRig rig;
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 2, 9000), 0);
    QCOMPARE(zvtSetFocusFarPos(rig.handle(), 2, 100), 0);
    QCOMPARE(zvtSetFocusFarPos(rig.handle(), 2, 10'001), int(emulator::Refused));
    QCOMPARE(rig.farLimit(2), 100U);
    rig.open("discrete-fov");
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 0, 99), int(emulator::Refused));
}

void tst_focus::tellsHowItMovesSlowly()
{
    LensRig rig("discrete-fov");
    uint8_t control = 7;
    uint32_t increment = 7;
    QCOMPARE(zvtMfgGetFocusSlowControl(rig.handle(), 1, &control), 0);
    QCOMPARE(control, uint8_t(0));
    QCOMPARE(zvtMfgGetFocusPositionIncrement(rig.handle(), 0, &increment), 0);
    QCOMPARE(increment, 90U);
    QCOMPARE(zvtMfgGetFocusPositionIncrement(rig.handle(), 1, &increment), 0);
    QCOMPARE(increment, 45U);
    QCOMPARE(zvtMfgGetFocusSlowControl(rig.handle(), 2, &control), int(emulator::Refused));
    QCOMPARE(zvtMfgGetFocusPositionIncrement(rig.handle(), 2, &increment), int(emulator::Refused));
    rig.open("everything");
    QCOMPARE(zvtMfgGetFocusSlowControl(rig.handle(), 2, &control), 0);
    QCOMPARE(control, uint8_t(1));
}

void tst_focus::manualModeRefusesCommands()
{
    LensRig rig;
    zvtFocusMove(rig.handle(), -3);
    Clock::advance(200);
    QVERIFY(rig.set("focus.manual", true));
    bool manual = false;
    QCOMPARE(zvtGetFocusManualMode(rig.handle(), &manual), 0);
    QVERIFY(manual);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 4750U);
    const auto refused = int(emulator::Refused);
    QCOMPARE(zvtFocusMove(rig.handle(), 1), refused);
    QCOMPARE(zvtFocusMovePercent(rig.handle(), 10), refused);
    QCOMPARE(zvtFocusMoveTo(rig.handle(), 1), refused);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 1), refused);
    QCOMPARE(zvtFocusNear(rig.handle()), refused);
    QCOMPARE(zvtFocusFar(rig.handle()), refused);
    QCOMPARE(zvtFocusToDistance(rig.handle(), 25), refused);
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), refused);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 4750U);
    // Turning by hand takes no time.
    QVERIFY(rig.set("focus.position", 123));
    QCOMPARE(rig.focus(), 123U);
    QVERIFY(rig.set("focus.manual", false));
    QCOMPARE(zvtFocusNear(rig.handle()), 0);
}

void tst_focus::isOpenToOtherClients()
{
    LensRig rig("discrete-fov");
    QVERIFY(rig.set("focus.near", QVariantList{8000, 7000}));
    QVERIFY(rig.set("focus.far", QVariantList{200, 300}));
    QVERIFY(rig.set("focus.increments", QVariantList{1, 2}));
    QVERIFY(rig.set("focus.slowBySteps", false));
    QVERIFY(rig.set("focus.position", 5000));
    QCOMPARE((QList<uint32_t>{rig.nearLimit(0), rig.farLimit(0), rig.nearLimit(1), rig.farLimit(1)}),
             (QList<uint32_t>{8000, 200, 7000, 300}));
    uint8_t control = 0;
    QCOMPARE(zvtMfgGetFocusSlowControl(rig.handle(), 0, &control), 0);
    QCOMPARE(control, uint8_t(1));
    QCOMPARE(rig.focus(), 6000U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 5000U);
    zvtEEventType event = ZVT_EVENT_NONE;
    QCOMPARE(zvtReadEventQueue(rig.handle(), &event), 0);
    QCOMPARE(event, ZVT_EVENT_SETTINGS_CHANGED);
}

void tst_focus::refusesSettingsOfOtherClients()
{
    LensRig rig("discrete-fov");
    const QJsonObject before = rig.camera().snapshot();
    QVERIFY(!rig.set("focus.near", QVariantList{8000}));
    QVERIFY(!rig.set("focus.near", QVariantList{8000, 99}));
    QVERIFY(!rig.set("focus.far", QVariantList{200, QStringLiteral("x")}));
    QVERIFY(!rig.set("focus.increments", QVariantList{1.5, 2}));
    QVERIFY(!rig.set("focus.slowBySteps", 1));
    QVERIFY(!rig.set("focus.manual", QStringLiteral("yes")));
    QVERIFY(!rig.set("focus.position", 12'001));
    QVERIFY(!rig.set("focus.position", -1));
    QVERIFY(!rig.set("focus.colour", 1));
    QCOMPARE(rig.camera().snapshot(), before);
    QCOMPARE(rig.camera().device<emulator::EventQueue>()->take(), ZVT_EVENT_NONE);
}

void tst_focus::aMoveThatIsOvertakenFails()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto move = std::async(std::launch::async, [&] { return zvtSetFocusPos(rig.handle(), 0); });
    QTRY_VERIFY(rig.focus() < 6000);
    QCOMPARE(zvtFocusMove(rig.handle(), 0), 0);
    QCOMPARE(move.get(), int(emulator::Refused));
    QVERIFY(rig.focus() > 0);
}

void tst_focus::disconnectionEndsAMove()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto move = std::async(std::launch::async, [&] { return zvtSetFocusPos(rig.handle(), 0); });
    QTRY_VERIFY(rig.focus() < 6000);
    rig.camera().disconnect();
    QCOMPARE(move.get(), int(emulator::NotConnected));
    rig.camera().connect();
    QVERIFY(rig.focus() > 0);
}

void tst_focus::disconnectionStopsTheMotor()
{
    LensRig rig;
    zvtFocusMove(rig.handle(), -2);
    Clock::advance(1000);
    rig.camera().disconnect();
    LensRig::finishMoves();
    rig.camera().connect();
    QCOMPARE(rig.focus(), 4000U);
}

void tst_focus::remembersWhereItIs()
{
    LensRig rig;
    QCOMPARE(zvtSetFocusPos(rig.handle(), 1234), 0);
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 2, 77), 0);
    rig.open("everything");
    QCOMPARE(rig.focus(), 1234U);
    QCOMPARE(rig.nearLimit(2), 77U);
}

void tst_focus::snapshotsHoldIt()
{
    LensRig rig("discrete-fov");
    QCOMPARE(zvtSetFOV(rig.handle(), 1), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 5000), 0);
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 1, 8888), 0);
    const QJsonObject snapshot = rig.camera().snapshot();
    QCOMPARE(zvtSetFOV(rig.handle(), 0), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 3000), 0);
    QCOMPARE(zvtSetFocusNearPos(rig.handle(), 1, 7777), 0);
    rig.camera().restore(snapshot);
    QCOMPARE(rig.camera().snapshot(), snapshot);
    QCOMPARE(rig.field(), uint8_t(1));
    QCOMPARE(rig.nearLimit(1), 8888U);
    // The lens moves to this position.
    QCOMPARE(rig.focus(), 3000U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 5000U);
}

void tst_focus::snapshotsOfNonsenseChangeNothing()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    rig.camera().restore({{QStringLiteral("focus"),
                           QJsonObject{{QStringLiteral("withoutZoom"), 1e300},
                                       {QStringLiteral("near"), QStringLiteral("x")},
                                       {QStringLiteral("far"), QJsonArray{20'000}},
                                       {QStringLiteral("slowBySteps"), 3}}},
                          {QStringLiteral("zoom"), QJsonObject{{QStringLiteral("position"), -4}}},
                          {QStringLiteral("cover"), QJsonObject{{QStringLiteral("state"), 9}}},
                          {QStringLiteral("autoFocus"), QJsonObject{{QStringLiteral("regionSize"), 17}}},
                          {QStringLiteral("gain"), QJsonObject{{QStringLiteral("level"), 3}}},
                          {QStringLiteral("sync"), QJsonObject{{QStringLiteral("source"), 3}}},
                          {QStringLiteral("image"), QJsonObject{{QStringLiteral("reverted"), 1}}}});
    QCOMPARE(rig.camera().snapshot(), before);
}

ZVT_TEST(tst_focus)
#include "tst_focus.moc"
