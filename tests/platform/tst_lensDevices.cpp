#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <cmath>
#include <future>

using emulator::Clock;

/// The field of view, focusing to a distance, the cover and the athermalization.
class tst_lensDevices : public Test
{
    Q_OBJECT

private slots:
    void aFieldOfViewTakesTheFocusAlong();
    void fieldsOfViewThatThereAreNot();
    void turningBackAndForthKeepsTheFocus();
    void anotherClientTurnsTheTurret();
    void focusesToADistance();
    void aDistanceOutOfReachGivesTheNearest();
    void refusesNoDistance();
    void knowsNoDistancesWhenNotAvailable();
    void theCoverTakesItsTime();
    void aCoverThatIsThereNeedsNoTime();
    void theCoverIsUnknownUntilItHasMoved();
    void aCoverSentBackFailsTheFirstMove();
    void disconnectionLeavesTheCoverUnknown();
    void anotherClientMovesTheCover();
    void snapshotsMoveTheCover();
    void athermalizationIsSetWhereAvailable();
    void snapshotsHoldTheAthermalization();
    void lensDevicesAreAbsentWithoutThem();
};

void tst_lensDevices::aFieldOfViewTakesTheFocusAlong()
{
    LensRig rig("discrete-fov");
    // In the middle between 11000 and 1000, and then between 9000 and 3000.
    QCOMPARE(zvtSetFocusPos(rig.handle(), 8500), 0);
    QCOMPARE(rig.field(), uint8_t(0));
    QCOMPARE(zvtSetFOV(rig.handle(), 1), 0);
    QCOMPARE(rig.field(), uint8_t(1));
    QCOMPARE(rig.focus(), 8500U);
    Clock::advance(300);
    QCOMPARE(rig.focus(), 8000U);
    Clock::advance(300);
    QCOMPARE(rig.focus(), 7500U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 7500U);
}

void tst_lensDevices::fieldsOfViewThatThereAreNot()
{
    LensRig rig("discrete-fov");
    for (const uint8_t field : {uint8_t(2), uint8_t(255)})
        QCOMPARE(zvtSetFOV(rig.handle(), field), int(emulator::Refused));
    QCOMPARE(rig.field(), uint8_t(0));
    rig.open("everything");
    uint8_t field = 7;
    QCOMPARE(zvtGetFOV(rig.handle(), &field), int(emulator::Absent));
    QCOMPARE(zvtSetFOV(rig.handle(), 0), int(emulator::Absent));
    QCOMPARE(field, uint8_t(7));
}

void tst_lensDevices::turningBackAndForthKeepsTheFocus()
{
    LensRig rig("discrete-fov");
    QCOMPARE(zvtSetFocusPos(rig.handle(), 8500), 0);
    for (const uint8_t field : {1, 0, 1, 0}) {
        QCOMPARE(zvtSetFOV(rig.handle(), field), 0);
        Clock::advance(100);
    }
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 8500U);
}

void tst_lensDevices::anotherClientTurnsTheTurret()
{
    LensRig rig("discrete-fov");
    QVERIFY(rig.set("fieldOfView.selected", 1));
    QCOMPARE(rig.field(), uint8_t(1));
    QVERIFY(!rig.set("fieldOfView.selected", 2));
    QVERIFY(!rig.set("fieldOfView.selected", true));
    QVERIFY(!rig.set("fieldOfView.colour", 1));
    QCOMPARE(rig.field(), uint8_t(1));
}

void tst_lensDevices::focusesToADistance()
{
    LensRig rig;
    bool available = false;
    QCOMPARE(zvtGetFocusToDistanceAvailable(rig.handle(), &available), 0);
    QVERIFY(available);
    QCOMPARE(zvtFocusToDistance(rig.handle(), 1.0F), 0);
    QCOMPARE(rig.focus(), 6000U);
    Clock::advance(100);
    QCOMPARE(rig.focus(), 5500U);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 5005U);
}

void tst_lensDevices::aDistanceOutOfReachGivesTheNearest()
{
    LensRig rig;
    QCOMPARE(zvtFocusToDistance(rig.handle(), 0.499F), 0);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 0U);
    QCOMPARE(zvtFocusToDistance(rig.handle(), INFINITY), 0);
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 10'000U);
}

void tst_lensDevices::refusesNoDistance()
{
    LensRig rig;
    for (const float metres : {0.0F, -1.0F, NAN})
        QCOMPARE(zvtFocusToDistance(rig.handle(), metres), int(emulator::Refused));
    LensRig::finishMoves();
    QCOMPARE(rig.focus(), 6000U);
}

void tst_lensDevices::knowsNoDistancesWhenNotAvailable()
{
    LensRig rig;
    QVERIFY(rig.set("focusToDistance.available", false));
    bool available = true;
    QCOMPARE(zvtGetFocusToDistanceAvailable(rig.handle(), &available), 0);
    QVERIFY(!available);
    float metres = 42;
    QCOMPARE(zvtGetFocusToDistanceMin(rig.handle(), &metres), int(emulator::Refused));
    QCOMPARE(zvtGetFocusToDistanceMax(rig.handle(), &metres), int(emulator::Refused));
    QCOMPARE(metres, 42.0F);
    QCOMPARE(zvtFocusToDistance(rig.handle(), 25), int(emulator::Refused));
    QVERIFY(!rig.set("focusToDistance.available", 1));
    QVERIFY(!rig.set("focusToDistance.colour", true));
}

void tst_lensDevices::theCoverTakesItsTime()
{
    LensRig rig;
    QCOMPARE(rig.cover(), uint8_t(0));
    const auto before = Clock::now();
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 1), 0);
    QCOMPARE(Clock::now() - before, 1000);
    QCOMPARE(rig.cover(), uint8_t(1));
    for (const uint8_t state : {uint8_t(2), uint8_t(255)})
        QCOMPARE(zvtSetLensCoverState(rig.handle(), state), int(emulator::Refused));
    QCOMPARE(rig.cover(), uint8_t(1));
}

void tst_lensDevices::aCoverThatIsThereNeedsNoTime()
{
    LensRig rig;
    const auto before = Clock::now();
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 0), 0);
    QCOMPARE(Clock::now(), before);
}

void tst_lensDevices::theCoverIsUnknownUntilItHasMoved()
{
    LensRig rig("speed-moves");
    QCOMPARE(rig.cover(), uint8_t(2));
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 0), 0);
    QCOMPARE(rig.cover(), uint8_t(0));
}

void tst_lensDevices::aCoverSentBackFailsTheFirstMove()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto closing = std::async(std::launch::async, [&] { return zvtSetLensCoverState(rig.handle(), 1); });
    QTRY_COMPARE(rig.cover(), uint8_t(2));
    QVERIFY(rig.set("cover.state", 0));
    QCOMPARE(closing.get(), int(emulator::Refused));
}

void tst_lensDevices::disconnectionLeavesTheCoverUnknown()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto closing = std::async(std::launch::async, [&] { return zvtSetLensCoverState(rig.handle(), 1); });
    QTRY_COMPARE(rig.cover(), uint8_t(2));
    rig.camera().disconnect();
    QCOMPARE(closing.get(), int(emulator::NotConnected));
    rig.open(LensRig::slow);
    QCOMPARE(rig.cover(), uint8_t(2));
}

void tst_lensDevices::anotherClientMovesTheCover()
{
    LensRig rig;
    QVERIFY(rig.set("cover.state", 1));
    QCOMPARE(rig.cover(), uint8_t(2));
    Clock::advance(999);
    QCOMPARE(rig.cover(), uint8_t(2));
    Clock::advance(1);
    QCOMPARE(rig.cover(), uint8_t(1));
    QVERIFY(rig.set("cover.state", 2));
    LensRig::finishMoves();
    QCOMPARE(rig.cover(), uint8_t(2));
    QVERIFY(!rig.set("cover.state", 3));
    QVERIFY(!rig.set("cover.state", QStringLiteral("open")));
    QVERIFY(!rig.set("cover.colour", 1));
}

void tst_lensDevices::snapshotsMoveTheCover()
{
    LensRig rig;
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 1), 0);
    const QJsonObject closed = rig.camera().snapshot();
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 0), 0);
    rig.camera().restore(closed);
    QCOMPARE(rig.cover(), uint8_t(2));
    LensRig::finishMoves();
    QCOMPARE(rig.cover(), uint8_t(1));
    rig.open("everything");
    QCOMPARE(rig.cover(), uint8_t(1));
}

void tst_lensDevices::athermalizationIsSetWhereAvailable()
{
    LensRig rig;
    bool available = false, enabled = true;
    QCOMPARE(zvtGetLensAthermalizationEnabledAvailable(rig.handle(), &available), 0);
    QVERIFY(available);
    QCOMPARE(zvtGetLensAthermalizationEnabled(rig.handle(), &enabled), 0);
    QVERIFY(!enabled);
    QCOMPARE(zvtSetLensAthermalizationEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtGetLensAthermalizationEnabled(rig.handle(), &enabled), 0);
    QVERIFY(enabled);
    QVERIFY(rig.set("athermalization.enabled", false));
    QVERIFY(rig.set("athermalization.available", false));
    QCOMPARE(zvtGetLensAthermalizationEnabledAvailable(rig.handle(), &available), 0);
    QVERIFY(!available);
    QCOMPARE(zvtGetLensAthermalizationEnabled(rig.handle(), &enabled), int(emulator::Refused));
    QVERIFY(enabled);
    QCOMPARE(zvtSetLensAthermalizationEnabled(rig.handle(), true), int(emulator::Refused));
    QVERIFY(!rig.set("athermalization.enabled", true));
    QVERIFY(!rig.set("athermalization.available", 1));
    QVERIFY(!rig.set("athermalization.colour", true));
}

void tst_lensDevices::snapshotsHoldTheAthermalization()
{
    LensRig rig;
    QCOMPARE(zvtSetLensAthermalizationEnabled(rig.handle(), true), 0);
    const QJsonObject snapshot = rig.camera().snapshot();
    QCOMPARE(zvtSetLensAthermalizationEnabled(rig.handle(), false), 0);
    rig.camera().restore(snapshot);
    bool enabled = false;
    QCOMPARE(zvtGetLensAthermalizationEnabled(rig.handle(), &enabled), 0);
    QVERIFY(enabled);
}

void tst_lensDevices::lensDevicesAreAbsentWithoutThem()
{
    LensRig rig("low-cost");
    bool flag = true;
    QCOMPARE(zvtGetFocusToDistanceAvailable(rig.handle(), &flag), int(emulator::Absent));
    QCOMPARE(zvtGetLensAthermalizationEnabledAvailable(rig.handle(), &flag), int(emulator::Absent));
    QCOMPARE(zvtSetLensCoverState(rig.handle(), 0), int(emulator::Absent));
    QCOMPARE(rig.field(), uint8_t(255));
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "state"), int(emulator::Absent));
}

ZVT_TEST(tst_lensDevices)
#include "tst_lensDevices.moc"
