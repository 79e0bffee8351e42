#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <future>

using emulator::Clock;

class tst_autoFocus : public Test
{
    Q_OBJECT

private slots:
    void settlesWhereTheSceneIsSharp_data();
    void settlesWhereTheSceneIsSharp();
    void agreesWithFocusingToTheDistance();
    void swingsVisibly();
    void theFullFormRunsThroughTheRange();
    void knowsOneMode();
    void anotherCommandEndsIt();
    void disconnectionEndsIt();
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
};

void tst_autoFocus::settlesWhereTheSceneIsSharp_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<double>("metres");
    QTest::addColumn<uint32_t>("position");
    QTest::newRow("farthest") << QByteArray("everything") << 1e6 << 10'000U;
    QTest::newRow("nearest") << QByteArray("everything") << 0.1 << 0U;
    QTest::newRow("between") << QByteArray("everything") << 1.0 << 5005U;
    QTest::newRow("descending, far") << QByteArray("discrete-fov") << 1e6 << 1000U;
    QTest::newRow("descending, near") << QByteArray("discrete-fov") << 0.1 << 11'000U;
    QTest::newRow("no zoom") << QByteArray("low-cost") << 1e6 << 10'000U;
}

void tst_autoFocus::settlesWhereTheSceneIsSharp()
{
    QFETCH(QByteArray, profile);
    QFETCH(double, metres);
    QFETCH(uint32_t, position);
    LensRig rig(profile.constData());
    QVERIFY(rig.set("autoFocus.sceneDistance", metres));
    const auto before = Clock::now();
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
    QVERIFY(Clock::now() > before);
    QCOMPARE(rig.focus(), position);
    LensRig::settle();
    QCOMPARE(rig.focus(), position);
}

void tst_autoFocus::agreesWithFocusingToTheDistance()
{
    LensRig rig;
    QVERIFY(rig.set("autoFocus.sceneDistance", 7.5));
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
    const uint32_t sharp = rig.focus();
    QCOMPARE(zvtSetFocusPos(rig.handle(), 0), 0);
    QCOMPARE(zvtFocusToDistance(rig.handle(), 7.5F), 0);
    LensRig::settle();
    QCOMPARE(rig.focus(), sharp);
}

void tst_autoFocus::swingsVisibly()
{
    LensRig rig;
    QVERIFY(rig.set("autoFocus.sceneDistance", 1.0));
    const auto before = Clock::now();
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
    // From 6000 to 7005, 4005, 5405 and 4805, and to the sharp position at 5005, with 5 counts per millisecond.
    QCOMPARE(Clock::now() - before, 201 + 600 + 280 + 120 + 40);
}

void tst_autoFocus::theFullFormRunsThroughTheRange()
{
    LensRig rig;
    const auto before = Clock::now();
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
    const auto fast = Clock::now() - before;
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), 0);
    // Two moves over the whole range take four seconds.
    QVERIFY(Clock::now() - before > 2 * fast + 2000);
    float metres = 0;
    QCOMPARE(zvtGetFocusToDistanceMin(rig.handle(), &metres), 0);
    QVERIFY(rig.focus() > 9000);
}

void tst_autoFocus::knowsOneMode()
{
    LensRig rig;
    for (const int mode : {0, 2, -1})
        QCOMPARE(zvtAutoFocusFast(rig.handle(), mode), int(emulator::Refused));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 1), int(emulator::Refused));
    LensRig::settle();
    QCOMPARE(rig.focus(), 6000U);
}

void tst_autoFocus::anotherCommandEndsIt()
{
    LensRig rig(LensRig::slow);
    Clock::automatic();
    auto focusing = std::async(std::launch::async, [&] { return zvtAutoFocusFast(rig.handle(), 1); });
    QTRY_VERIFY(rig.focus() != 6000);
    QCOMPARE(zvtFocusMove(rig.handle(), 0), 0);
    QCOMPARE(focusing.get(), int(emulator::Refused));
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
