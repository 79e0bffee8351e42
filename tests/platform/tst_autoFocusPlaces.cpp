#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <cmath>

using emulator::Clock;

namespace
{

constexpr double sharpEnough = 0.7; // Pixels of defocus.

/// Focuses from a place. Returns whether the picture is sharp then.
bool focusesSharply(LensRig &rig, uint32_t start, bool full)
{
    if (zvtSetFocusPos(rig.handle(), start) != 0)
        return false;
    const int status = full ? zvtAutoFocusFull(rig.handle(), 0) : zvtAutoFocusFast(rig.handle(), 1);
    if (status == 0 && rig.defocus() <= sharpEnough)
        return true;
    qInfo("from %u to %u: status %d, %g pixels", start, rig.focus(), status, rig.defocus());
    return false;
}

bool setRegion(LensRig &rig, int size, int position)
{
    return rig.set("autoFocus.regionSize", size) && rig.set("autoFocus.regionPosition", position);
}

} // namespace

/// The places in which the automatic focus ends.
class tst_autoFocusPlaces : public Test
{
    Q_OBJECT

private slots:
    void endsWhereTheSceneIsSharp_data();
    void endsWhereTheSceneIsSharp();
    void eachMomentOfTheScene();
    void followsTheLensTemperature();
    void endsAtTheEndOfTheRange();
    void theFastFormMayEndAtALocalMaximum();
    void eachRegion_data();
    void eachRegion();
    void smallWindows();
    void flipsMoveTheRegion();
    void agreesWithFocusingToTheDistance();
};

void tst_autoFocusPlaces::endsWhereTheSceneIsSharp_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("setting");
    QTest::addColumn<int>("value");
    QTest::newRow("wide zoom") << QByteArray("everything") << QByteArray("zoom.position") << 500;
    QTest::newRow("middle zoom") << QByteArray("everything") << QByteArray("zoom.position") << 5000;
    QTest::newRow("narrow zoom") << QByteArray("everything") << QByteArray("zoom.position") << 9500;
    QTest::newRow("narrow field, descending") << QByteArray("discrete-fov") << QByteArray("fieldOfView.selected") << 0;
    QTest::newRow("wide field, descending") << QByteArray("discrete-fov") << QByteArray("fieldOfView.selected") << 1;
    QTest::newRow("long waves") << QByteArray("low-cost") << QByteArray("autoFocus.showAlways") << -1;
    QTest::newRow("short waves") << QByteArray("te-cooler") << QByteArray("autoFocus.showAlways") << -1;
}

void tst_autoFocusPlaces::endsWhereTheSceneIsSharp()
{
    QFETCH(QByteArray, profile);
    QFETCH(QByteArray, setting);
    QFETCH(int, value);
    LensRig rig(profile.constData());
    if (value >= 0)
        QVERIFY(rig.set(setting.constData(), value));
    LensRig::coolDetector();
    const bool isDiscrete = profile == "discrete-fov";
    const uint32_t minimum = isDiscrete ? 100 : 0;
    const uint32_t maximum = isDiscrete ? 12'000 : 10'000;
    const uint32_t range = maximum - minimum;
    for (const double metres : {0.1, 1.0, 3.0, 25.0, 1e6}) {
        QVERIFY(rig.set("autoFocus.sceneDistance", metres));
        QVERIFY(focusesSharply(rig, minimum, true));
        const uint32_t sharp = rig.focus();
        for (uint32_t quarter = 1; quarter <= 4; ++quarter)
            QVERIFY(focusesSharply(rig, minimum + range / 4 * quarter, true));
        for (int hundredths = -30; hundredths <= 30; hundredths += 6) {
            const int64_t start = int64_t(sharp) + int64_t(range) * hundredths / 100;
            if (start >= minimum && start <= maximum)
                QVERIFY(focusesSharply(rig, static_cast<uint32_t>(start), false));
        }
    }
}

void tst_autoFocusPlaces::eachMomentOfTheScene()
{
    LensRig rig;
    LensRig::coolDetector();
    for (int moment = 0; moment < 10; ++moment) {
        QVERIFY(focusesSharply(rig, 2000, true));
        QVERIFY(focusesSharply(rig, 7000, false));
        Clock::advance(3700);
    }
}

void tst_autoFocusPlaces::followsTheLensTemperature()
{
    LensRig rig;
    QVERIFY(rig.set("autoFocus.sceneDistance", 1.0));
    QVERIFY(rig.set("environment.ambient", 45));
    Clock::advance(3'600'000);
    QVERIFY(focusesSharply(rig, 6000, false));
    const uint32_t warm = rig.focus();
    // 23 kelvin, each of which shifts the sharp place by 12 counts.
    QVERIFY(warm > 5005 + 23 * 12 - 30 && warm < 5005 + 23 * 12 + 30);
    QCOMPARE(zvtSetLensAthermalizationEnabled(rig.handle(), true), 0);
    QVERIFY(rig.defocus() > sharpEnough);
    QVERIFY(focusesSharply(rig, 6000, false));
    QVERIFY(rig.focus() > 5005 - 30 && rig.focus() < 5005 + 30);
}

void tst_autoFocusPlaces::endsAtTheEndOfTheRange()
{
    LensRig rig;
    QVERIFY(rig.set("environment.ambient", 60));
    QVERIFY(rig.set("autoFocus.sceneDistance", 1e6));
    Clock::advance(3'600'000);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 7000), 0);
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
    QCOMPARE(rig.focus(), 10'000U);
    QVERIFY(rig.set("environment.ambient", -20));
    QVERIFY(rig.set("autoFocus.sceneDistance", 0.1));
    Clock::advance(3'600'000);
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), 0);
    QCOMPARE(rig.focus(), 0U);
}

// Far from the sharp place, a warm target beside the region blurs into it.
void tst_autoFocusPlaces::theFastFormMayEndAtALocalMaximum()
{
    LensRig rig;
    LensRig::coolDetector();
    QVERIFY(setRegion(rig, 32, 3));
    QCOMPARE(zvtSetFocusPos(rig.handle(), 5000), 0);
    QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
    QVERIFY2(rig.defocus() > 10, qPrintable(QString::number(rig.defocus())));
    QVERIFY(focusesSharply(rig, 5000, true));
    // Without targets there is no such maximum.
    QVERIFY(rig.set("emulator./Pattern", 1));
    QVERIFY(focusesSharply(rig, 5000, false));
}

void tst_autoFocusPlaces::eachRegion_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("smallest");
    // A smaller region of the wide view shows a wall, the ground or the sky without edges.
    QTest::newRow("centre") << 0 << 16;
    QTest::newRow("top left") << 1 << 64;
    QTest::newRow("top right") << 2 << 128;
    QTest::newRow("bottom left") << 3 << 32;
    QTest::newRow("bottom right") << 4 << 32;
}

void tst_autoFocusPlaces::eachRegion()
{
    QFETCH(int, position);
    QFETCH(int, smallest);
    LensRig rig;
    LensRig::coolDetector();
    for (int size = smallest; size <= 512; size *= 2) {
        QVERIFY(setRegion(rig, size, position));
        QVERIFY(focusesSharply(rig, 3000, true));
        QVERIFY(focusesSharply(rig, 9300, false));
    }
}

void tst_autoFocusPlaces::smallWindows()
{
    LensRig rig;
    LensRig::coolDetector();
    for (const QVariantList &window : {QVariantList{320, 192, 160, 128}, QVariantList{288, 224, 64, 64}}) {
        QVERIFY(rig.set("sensor.window", window));
        QVERIFY(focusesSharply(rig, 3000, true));
    }
}

void tst_autoFocusPlaces::flipsMoveTheRegion()
{
    LensRig rig;
    LensRig::coolDetector();
    // The sky is in the top right corner. The fence is at the bottom.
    QVERIFY(setRegion(rig, 32, 2));
    QCOMPARE(zvtSetFocusPos(rig.handle(), 9300), 0);
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), int(emulator::Refused));
    QVERIFY(rig.set("image.inverted", true));
    QVERIFY(focusesSharply(rig, 9300, true));
    QVERIFY(rig.set("image.reverted", true));
    QVERIFY(focusesSharply(rig, 9300, true));
    QVERIFY(setRegion(rig, 32, 3));
    QCOMPARE(zvtAutoFocusFull(rig.handle(), 0), int(emulator::Refused));
}

void tst_autoFocusPlaces::agreesWithFocusingToTheDistance()
{
    LensRig rig;
    LensRig::coolDetector();
    QVERIFY(rig.set("autoFocus.sceneDistance", 7.5));
    QVERIFY(focusesSharply(rig, 8000, false));
    const double sharp = rig.focus();
    QCOMPARE(zvtFocusToDistance(rig.handle(), 7.5F), 0);
    LensRig::finishMoves();
    QVERIFY(std::abs(rig.focus() - sharp) < 210);
}

ZVT_TEST(tst_autoFocusPlaces)
#include "tst_autoFocusPlaces.moc"
