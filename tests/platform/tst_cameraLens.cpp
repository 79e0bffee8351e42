#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Focus.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <cmath>

using emulator::Clock;
using emulator::FieldOfView;
using emulator::FrameStart;
using emulator::image::Statistics;
using Counts = FrameRig::Counts;

/// How the lens, its cover and its turret change the frames of a camera.
class tst_cameraLens : public Test
{
    Q_OBJECT

private slots:
    void zoomEnlargesATarget();
    void aNarrowFieldEnlargesATarget();
    void defocusLowersTheFocusMeasureSteadily_data();
    void defocusLowersTheFocusMeasureSteadily();
    void lensTemperatureMovesTheSharpPlace();
    void theCoverShowsTheLensTemperature();
    void anUnknownCoverHidesTheScene();
    void theTurretHidesTheSceneWhileItTurns();
    void aTurretRestoredWithoutAConnectionDoesNotTurn();
    void aClockThatIsSetBackHidesNothing_data();
    void aClockThatIsSetBackHidesNothing();

private:
    /// The width in pixels of a round blackbody before the background.
    static double widthOfDisc(FrameRig &rig);
    /// Moves the focus, and returns the focus measure of a frame then. It shows the same moment and noise each time.
    static double measureAt(FrameRig &rig, const FrameStart &frame, int position);
    /// The position that gives the largest measure, near another one.
    static int sharpestPlace(FrameRig &rig, const FrameStart &frame, int near);
    /// Whether the newest frame of equal pixels shows nothing but their noise.
    static bool isFlat(FrameRig &rig);
};

double tst_cameraLens::widthOfDisc(FrameRig &rig)
{
    if (!rig.focusOn(25) || !rig.set("emulator./Pattern", 1) || !rig.set("emulator./BlackbodyTemp1", 40))
        return 0;
    // The background has about 5000 counts, the disc 10000.
    const auto pixels = double(Statistics::countAtLeast(rig.newest(), 7300));
    return std::sqrt(pixels * 4 / 3.14159);
}

double tst_cameraLens::measureAt(FrameRig &rig, const FrameStart &frame, int position)
{
    if (!rig.set("focus.position", position))
        return 0;
    FrameRig::finishMoves();
    if (rig.focus() != static_cast<uint32_t>(position))
        return 0;
    return Statistics::focusMeasure(rig.frame(frame), static_cast<size_t>(rig.window().width));
}

int tst_cameraLens::sharpestPlace(FrameRig &rig, const FrameStart &frame, int near)
{
    int best = 0;
    double largest = 0;
    for (int position = near - 100; position <= near + 100; position += 10)
        if (const double measure = measureAt(rig, frame, position); measure > largest) {
            largest = measure;
            best = position;
        }
    return best;
}

bool tst_cameraLens::isFlat(FrameRig &rig)
{
    const Counts counts = rig.newest();
    return !counts.empty() && std::ranges::max(counts) - std::ranges::min(counts) < 60;
}

void tst_cameraLens::zoomEnlargesATarget()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels);
    const double wide = widthOfDisc(rig);
    QVERIFY2(std::abs(wide - 512.0 / 3) < 2, qPrintable(QString::number(wide)));
    // The magnification rises evenly from 1 to 6.
    for (const auto &[position, magnification] : {std::pair{1400, 1.5}, {2300, 2.0}, {3650, 2.75}}) {
        QVERIFY(rig.set("zoom.position", position));
        FrameRig::finishMoves();
        QCOMPARE(rig.zoom(), static_cast<uint32_t>(position));
        const double ratio = widthOfDisc(rig) / wide;
        QVERIFY2(std::abs(ratio / magnification - 1) < 0.01, qPrintable(QString::number(ratio)));
    }
}

void tst_cameraLens::aNarrowFieldEnlargesATarget()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels, "discrete-fov");
    QVERIFY(rig.set("emulator./Pattern", 0));
    const auto magnification = [&] { return rig.exposure().optics.magnification; };
    QCOMPARE(magnification(), 6.0);
    QVERIFY(rig.set("fieldOfView.selected", int(FieldOfView::Wide)));
    FrameRig::finishMoves();
    QCOMPARE(magnification(), 1.0);
    QVERIFY(std::abs(widthOfDisc(rig) - 512.0 / 3) < 2);
    // At six times the size it fills the field.
    QVERIFY(rig.set("fieldOfView.selected", int(FieldOfView::Narrow)));
    FrameRig::finishMoves();
    QVERIFY(widthOfDisc(rig) > 640);
}

void tst_cameraLens::defocusLowersTheFocusMeasureSteadily_data()
{
    QTest::addColumn<int>("zoom");
    QTest::addColumn<double>("metres");
    QTest::addColumn<int>("countsPerPixel");
    QTest::newRow("wide") << 500 << 1.0 << 300;
    QTest::newRow("narrow") << 9500 << 10.0 << 100;
}

void tst_cameraLens::defocusLowersTheFocusMeasureSteadily()
{
    QFETCH(const int, zoom);
    QFETCH(const double, metres);
    QFETCH(const int, countsPerPixel);
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels);
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.set("zoom.position", zoom) && rig.set("autoFocus.sceneDistance", metres));
    QVERIFY(rig.set("athermalization.enabled", true));
    FrameRig::finishMoves();
    const auto sharp = static_cast<int>(rig.camera().device<emulator::Focus>()->positionFor(metres));
    QVERIFY(sharp > 4900 && sharp < 5100);
    const FrameStart frame = rig.camera().newestFrame(0)->start;
    for (const int direction : {-1, 1}) {
        double before = std::numeric_limits<double>::infinity();
        for (const double pixels : {0.0, 0.35, 0.7, 1.0, 1.4, 2.0, 3.0, 4.0, 6.0, 8.0, 16.0}) {
            const int counts = static_cast<int>(pixels * countsPerPixel);
            const double measure = measureAt(rig, frame, sharp + direction * counts);
            QVERIFY2(measure > 0 && measure < before, qPrintable(QString::number(direction * pixels)));
            before = measure;
        }
    }
}

void tst_cameraLens::lensTemperatureMovesTheSharpPlace()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels);
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.set("zoom.position", 9500) && rig.set("autoFocus.sceneDistance", 10));
    FrameRig::finishMoves();
    const FrameStart frame = rig.camera().newestFrame(0)->start;
    const auto sharp = static_cast<int>(rig.camera().device<emulator::Focus>()->positionFor(10));
    const auto lensCelsius = [&] { return rig.exposure().optics.lensCelsius; };
    QVERIFY(std::abs(lensCelsius() - 22.8) < 0.2);
    QVERIFY(std::abs(sharpestPlace(rig, frame, sharp) - (sharp + 4)) <= 10);
    QVERIFY(rig.set("environment.ambient", 41.5));
    Clock::advance(6 * 3'600'000);
    // The lens is 19.5 K warmer than 22.5 C.
    QVERIFY(std::abs(lensCelsius() - 42) < 0.1);
    QVERIFY(std::abs(sharpestPlace(rig, frame, sharp + 200) - (sharp + 234)) <= 10);
    QVERIFY(rig.set("athermalization.enabled", true));
    QVERIFY(std::abs(sharpestPlace(rig, frame, sharp) - sharp) <= 10);
    QVERIFY(rig.set("athermalization.available", false));
    QVERIFY(std::abs(sharpestPlace(rig, frame, sharp + 200) - (sharp + 234)) <= 10);
}

void tst_cameraLens::theCoverShowsTheLensTemperature()
{
    FrameRig rig;
    QVERIFY(rig.useSmallWindow());
    const FrameStart frame = rig.camera().newestFrame(0)->start;
    const Counts scene = rig.frame(frame);
    // An area of the temperature of the lens now.
    const auto lensBody = [&] {
        const double lens = rig.exposure().optics.lensCelsius;
        if (!rig.showArea(lens))
            return Counts();
        const Counts counts = rig.frame(frame);
        return rig.set("emulator./Pattern", 0) ? counts : Counts();
    };
    QVERIFY(largestDifference(scene, lensBody()) > 300);
    QVERIFY(rig.set("cover.state", 1));
    // It moves for a second.
    Clock::advance(999);
    QCOMPARE(rig.cover(), uint8_t(2));
    const Counts moving = rig.frame(frame);
    Clock::advance(1);
    QCOMPARE(rig.cover(), uint8_t(1));
    const Counts closed = rig.frame(frame);
    QVERIFY(rig.set("cover.state", 0));
    Clock::advance(999);
    const Counts opening = rig.frame(frame);
    Clock::advance(1);
    QVERIFY(rig.cover() == 0 && largestDifference(rig.frame(frame), scene) <= 1);
    const Counts expected = lensBody();
    for (const Counts &hidden : {moving, closed, opening})
        QVERIFY2(largestDifference(hidden, expected) <= 1,
                 qPrintable(QString::number(largestDifference(hidden, expected))));
}

void tst_cameraLens::anUnknownCoverHidesTheScene()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels);
    QVERIFY(rig.useSmallWindow());
    QVERIFY(!isFlat(rig));
    // An interrupted move leaves the cover between its ends.
    QVERIFY(rig.set("cover.state", 1));
    Clock::advance(500);
    rig.camera().disconnect();
    rig.camera().connect();
    Clock::advance(60'000);
    QCOMPARE(rig.cover(), uint8_t(2));
    QVERIFY(isFlat(rig));
    QVERIFY(rig.set("cover.state", 0));
    Clock::advance(1000);
    QVERIFY(!isFlat(rig));
}

void tst_cameraLens::theTurretHidesTheSceneWhileItTurns()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels, "discrete-fov");
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.camera().device<FieldOfView>());
    QVERIFY(!isFlat(rig));
    QCOMPARE(rig.field(), uint8_t(FieldOfView::Narrow));
    QVERIFY(rig.set("fieldOfView.selected", int(FieldOfView::Wide)));
    // The commanded field is read at once.
    QCOMPARE(rig.field(), uint8_t(FieldOfView::Wide));
    QVERIFY(isFlat(rig));
    Clock::advance(599);
    QVERIFY(isFlat(rig));
    Clock::advance(1);
    QVERIFY(!isFlat(rig));
    // The same field again does not turn it.
    QVERIFY(rig.set("fieldOfView.selected", int(FieldOfView::Wide)));
    QVERIFY(!isFlat(rig));
}

void tst_cameraLens::aTurretRestoredWithoutAConnectionDoesNotTurn()
{
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels, "discrete-fov");
    QVERIFY(rig.useSmallWindow());
    const QJsonObject narrow = rig.camera().snapshot();
    QVERIFY(rig.set("fieldOfView.selected", int(FieldOfView::Wide)));
    FrameRig::finishMoves();
    rig.camera().disconnect();
    rig.camera().restore(narrow);
    QCOMPARE(rig.camera().device<FieldOfView>()->selected(), FieldOfView::Narrow);
    QVERIFY(!isFlat(rig));
    rig.camera().connect();
    QVERIFY(!isFlat(rig));
    // Neither does it turn to the field that it has.
    rig.camera().restore(narrow);
    QVERIFY(!isFlat(rig));
    // While the camera is connected, it turns.
    QVERIFY(rig.set("fieldOfView.selected", int(FieldOfView::Wide)));
    FrameRig::finishMoves();
    rig.camera().restore(narrow);
    QVERIFY(isFlat(rig));
    FrameRig::finishMoves();
    QVERIFY(!isFlat(rig));
}

void tst_cameraLens::aClockThatIsSetBackHidesNothing_data()
{
    QTest::addColumn<QByteArray>("profile");
    QTest::addColumn<QByteArray>("setting");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("cover") << QByteArray("everything") << QByteArray("cover.state") << 1 << 0;
    QTest::newRow("turret") << QByteArray("discrete-fov") << QByteArray("fieldOfView.selected")
                            << int(FieldOfView::Wide) << int(FieldOfView::Narrow);
}

// The computer's clock may be set back after a move.
void tst_cameraLens::aClockThatIsSetBackHidesNothing()
{
    QFETCH(QByteArray, profile);
    QFETCH(QByteArray, setting);
    QFETCH(int, before);
    QFETCH(int, after);
    FrameRig rig;
    rig.openWith(FrameRig::equalPixels, profile);
    QVERIFY(rig.useSmallWindow());
    QVERIFY(rig.set(setting, before));
    FrameRig::finishMoves();
    QVERIFY(rig.set(setting, after));
    QVERIFY(isFlat(rig));
    FrameRig::finishMoves();
    QVERIFY(!isFlat(rig));
    Clock::manual();
    QVERIFY(!isFlat(rig));
    Clock::advance(10);
    QVERIFY(!isFlat(rig));
}

ZVT_TEST(tst_cameraLens)
#include "tst_cameraLens.moc"
