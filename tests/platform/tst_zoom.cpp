#include "platform/emulator/devices/Zoom.h"
#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <cmath>
#include <future>
#include <random>

using emulator::Clock;

class tst_zoom : public Test
{
    Q_OBJECT

private slots:
    void knowsItsRange();
    void tellsWhereItIsAndWhereItWasSent();
    void movesWithTheClock();
    void coastsPastItsLimits_data();
    void coastsPastItsLimits();
    void isBroughtBackFromBehindALimit();
    void runsToItsEnds();
    void refusesWhatItCannotDo();
    void movesByPercentOnlyWhereTheLensCan();
    void dragsTheFocusAlong();
    void aFocusGoalIsReachedWhateverTheZoomDoes();
    void changesTheDistances();
    void disconnectionEndsAMove();
    void isOpenToOtherClients();
    void snapshotsHoldItWithTheFocus();
    void remembersWhereItIs();
    void noCommandsLeadOutOfTheLens_data();
    void noCommandsLeadOutOfTheLens();
};

void tst_zoom::knowsItsRange()
{
    LensRig rig;
    uint32_t minimum = 1, maximum = 1;
    QCOMPARE(zvtGetFOVRange(rig.handle(), &minimum, &maximum), 0);
    QCOMPARE(minimum, 500U);
    QCOMPARE(maximum, 9500U);
    rig.open("discrete-fov");
    QCOMPARE(zvtGetFOVRange(rig.handle(), &minimum, &maximum), int(emulator::Absent));
    QCOMPARE(rig.zoom(), LensRig::none);
}

void tst_zoom::tellsWhereItIsAndWhereItWasSent()
{
    LensRig rig;
    QCOMPARE(zvtFOVMoveTo(rig.handle(), 5000), 0);
    Clock::advance(500);
    QCOMPARE(rig.zoom(), 2750U);
    QCOMPARE(rig.commandedZoom(), 5000U);
    // A move by speed has no target.
    QCOMPARE(zvtFOVMove(rig.handle(), 0), 0);
    QCOMPARE(rig.commandedZoom(), 2750U);
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), 2975U);
    QCOMPARE(rig.commandedZoom(), 2975U);
}

void tst_zoom::movesWithTheClock()
{
    LensRig rig;
    QCOMPARE(zvtFOVMove(rig.handle(), 2), 0);
    for (uint32_t tenth = 1; tenth <= 10; ++tenth) {
        Clock::advance(100);
        QCOMPARE(rig.zoom(), 500 + 180 * tenth);
    }
    QCOMPARE(zvtFOVMove(rig.handle(), -1), 0);
    Clock::advance(1000);
    QCOMPARE(rig.zoom(), 1850U);
}

void tst_zoom::coastsPastItsLimits_data()
{
    QTest::addColumn<int>("speed");
    QTest::addColumn<uint32_t>("rest");
    // It slows down in a tenth of a second from full speed, and the hard stop is 200 counts beyond the limit.
    QTest::newRow("quickly to narrow") << 3 << 9700U;
    QTest::newRow("to narrow") << 2 << 9536U;
    QTest::newRow("slowly to wide") << -1 << 498U;
}

void tst_zoom::coastsPastItsLimits()
{
    QFETCH(int, speed);
    QFETCH(uint32_t, rest);
    LensRig rig;
    QCOMPARE(zvtSetFOVPos(rig.handle(), 5000), 0);
    QCOMPARE(zvtFOVMove(rig.handle(), speed), 0);
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), rest);
}

void tst_zoom::isBroughtBackFromBehindALimit()
{
    LensRig rig;
    zvtFOVMove(rig.handle(), 3);
    LensRig::finishMoves();
    QVERIFY(rig.zoom() > 9500);
    const uint32_t behind = rig.zoom();
    // It moves no further.
    QCOMPARE(zvtFOVMove(rig.handle(), 3), 0);
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), behind);
    QCOMPARE(zvtSetFOVPos(rig.handle(), 9500), 0);
    QCOMPARE(rig.zoom(), 9500U);
}

void tst_zoom::runsToItsEnds()
{
    LensRig rig;
    const auto before = Clock::now();
    QCOMPARE(zvtFOVMax(rig.handle()), 0);
    QCOMPARE(rig.zoom(), 9500U);
    QCOMPARE(Clock::now() - before, 2000);
    QCOMPARE(zvtFOVMin(rig.handle()), 0);
    QCOMPARE(rig.zoom(), 500U);
}

void tst_zoom::refusesWhatItCannotDo()
{
    LensRig rig;
    const auto refused = int(emulator::Refused);
    for (const int speed : {4, -4, INT32_MIN})
        QCOMPARE(zvtFOVMove(rig.handle(), speed), refused);
    for (const float percent : {101.0F, -101.0F, NAN})
        QCOMPARE(zvtFOVMovePercent(rig.handle(), percent), refused);
    for (const uint32_t position : {0U, 499U, 9501U, UINT32_MAX}) {
        QCOMPARE(zvtFOVMoveTo(rig.handle(), position), refused);
        QCOMPARE(zvtSetFOVPos(rig.handle(), position), refused);
    }
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), 500U);
}

void tst_zoom::movesByPercentOnlyWhereTheLensCan()
{
    LensRig rig;
    // There is no dead band.
    QCOMPARE(zvtFOVMovePercent(rig.handle(), 0.5F), 0);
    Clock::advance(2000);
    QCOMPARE(rig.zoom(), 545U);
    rig.open("speed-moves");
    QCOMPARE(zvtFOVMovePercent(rig.handle(), 50.0F), int(emulator::Absent));
    QCOMPARE(zvtFOVMove(rig.handle(), 1), 0);
}

void tst_zoom::dragsTheFocusAlong()
{
    LensRig rig;
    zvtFOVMoveTo(rig.handle(), 9500);
    Clock::advance(1000);
    QCOMPARE(rig.focus(), 6100U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 6400U);
    QCOMPARE(zvtFOVMin(rig.handle()), 0);
    QCOMPARE(rig.focus(), 6000U);
    // Never outside the range.
    QCOMPARE(zvtFocusFar(rig.handle()), 0);
    QCOMPARE(zvtFOVMax(rig.handle()), 0);
    QCOMPARE(rig.focus(), 10'000U);
}

void tst_zoom::aFocusGoalIsReachedWhateverTheZoomDoes()
{
    LensRig rig;
    zvtFOVMoveTo(rig.handle(), 9500);
    Clock::advance(700);
    QCOMPARE(zvtFocusMoveTo(rig.handle(), 3000), 0);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 3000U);
}

void tst_zoom::changesTheDistances()
{
    LensRig rig;
    const auto range = [&] {
        float nearest = 0, farthest = 0;
        zvtGetFocusToDistanceMin(rig.handle(), &nearest);
        zvtGetFocusToDistanceMax(rig.handle(), &farthest);
        return QList<float>{nearest, farthest};
    };
    QCOMPARE(range(), (QList<float>{0.5F, 500.0F}));
    zvtFOVMoveTo(rig.handle(), 9500);
    Clock::advance(1000);
    QCOMPARE(range(), (QList<float>{2.75F, 2750.0F}));
    LensRig::finishMoves();
    QCOMPARE(range(), (QList<float>{5.0F, 5000.0F}));
}

void tst_zoom::disconnectionEndsAMove()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto move = std::async(std::launch::async, [&] { return zvtFOVMax(rig.handle()); });
    QTRY_VERIFY(rig.zoom() > 500);
    rig.camera().disconnect();
    QCOMPARE(move.get(), int(emulator::NotConnected));
    rig.camera().connect();
    QVERIFY(rig.zoom() < 9500);
}

void tst_zoom::isOpenToOtherClients()
{
    LensRig rig;
    QVERIFY(rig.set("zoom.position", 5000));
    QCOMPARE(rig.commandedZoom(), 5000U);
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), 5000U);
    for (const auto &value : {QVariant(499), QVariant(9501), QVariant(600.5), QVariant(true), QVariant("600")})
        QVERIFY(!rig.set("zoom.position", value));
    QVERIFY(!rig.set("zoom.colour", 600));
    QCOMPARE(rig.zoom(), 5000U);
}

void tst_zoom::snapshotsHoldItWithTheFocus()
{
    LensRig rig;
    QCOMPARE(zvtSetFOVPos(rig.handle(), 5000), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 2000), 0);
    const QJsonObject snapshot = rig.camera().snapshot();
    QCOMPARE(zvtFOVMax(rig.handle()), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 9000), 0);
    rig.camera().restore(snapshot);
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), 5000U);
    QCOMPARE(rig.focus(), 2000U);
    QCOMPARE(rig.camera().snapshot(), snapshot);
}

void tst_zoom::remembersWhereItIs()
{
    LensRig rig;
    QCOMPARE(zvtSetFOVPos(rig.handle(), 5000), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 2000), 0);
    rig.open("everything");
    QCOMPARE(rig.zoom(), 5000U);
    QCOMPARE(rig.focus(), 2000U);
}

void tst_zoom::noCommandsLeadOutOfTheLens_data()
{
    QTest::addColumn<QString>("profile");
    for (const auto *name : {"everything", "discrete-fov", "low-cost", "edge-values"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_zoom::noCommandsLeadOutOfTheLens()
{
    QFETCH(QString, profile);
    LensRig rig(qPrintable(profile));
    const uint64_t handle = rig.handle();
    const bool zooms = rig.camera().device<emulator::Zoom>();
    const double overtravel = profile == QLatin1String("edge-values") ? 0 : 200;
    uint32_t focusMinimum = 0, focusMaximum = 0, zoomMinimum = 0, zoomMaximum = 0;
    QCOMPARE(zvtGetFocusRange(handle, &focusMinimum, &focusMaximum), 0);
    zvtGetFOVRange(handle, &zoomMinimum, &zoomMaximum);
    std::mt19937 random(20240229);
    const auto pick = [&](int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); };
    const auto anywhere = [&](uint32_t minimum, uint32_t maximum) {
        return std::uniform_int_distribution<uint32_t>(minimum, maximum)(random);
    };
    for (int n = 0; n < 10'000; ++n) {
        switch (n % 20 == 0 ? 8 : pick(8)) {
        case 0:
            zvtFocusMove(handle, pick(9) - 4);
            break;
        case 1:
            zvtFocusMovePercent(handle, float(pick(240) - 120));
            break;
        case 2:
            zvtFocusMoveTo(handle, anywhere(focusMinimum, focusMaximum));
            break;
        case 3:
            zvtFOVMove(handle, pick(9) - 4);
            break;
        case 4:
            zvtFOVMovePercent(handle, float(pick(240) - 120));
            break;
        case 5:
            zvtFOVMoveTo(handle, anywhere(zoomMinimum, zoomMaximum));
            break;
        case 6:
            zvtSetFOV(handle, uint8_t(pick(3)));
            break;
        case 7:
            zvtFocusToDistance(handle, float(pick(1000)) / 10);
            break;
        default:
            // Seldom, since each change is written to a file.
            (pick(2) ? zvtSetFocusNearPos : zvtSetFocusFarPos)(handle, uint8_t(pick(3)),
                                                               anywhere(focusMinimum, focusMaximum));
        }
        Clock::advance(pick(200));
        QVERIFY(rig.focus() >= focusMinimum && rig.focus() <= focusMaximum);
        if (zooms)
            QVERIFY(rig.zoom() + overtravel >= zoomMinimum && rig.zoom() <= zoomMaximum + overtravel);
        if (n % 50 != 0)
            continue;
        // A stop always succeeds, within the time that a turning turret takes.
        QCOMPARE(zvtFocusMove(handle, 0), 0);
        if (zooms)
            QCOMPARE(zvtFOVMove(handle, 0), 0);
        Clock::advance(5000);
        const uint32_t focus = rig.focus();
        const uint32_t zoom = rig.zoom();
        Clock::advance(1000);
        QCOMPARE(rig.focus(), focus);
        QCOMPARE(rig.zoom(), zoom);
        if (zooms)
            QCOMPARE(rig.commandedZoom(), zoom);
    }
}

ZVT_TEST(tst_zoom)
#include "tst_zoom.moc"
