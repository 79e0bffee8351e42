#include "platform/emulator/SetupError.h"
#include "platform/emulator/devices/VideoGain.h"
#include "tests/platform/FrameRig.h"
#include "tests/support/Test.h"

#include <QJsonObject>
#include <QRect>

using emulator::image::Window;

/// The region of the picture to which the gain control of the video fits.
class tst_videoGainRegion : public Test
{
    Q_OBJECT

private slots:
    void theStartRegionIsTheWholePicture();
    void regionsMustBeInsideThePicture_data();
    void regionsMustBeInsideThePicture();
    void aSmallerWindowCutsTheRegion_data();
    void aSmallerWindowCutsTheRegion();
    void onlyAnEnabledRegionIsUsed();
    void theSwitchOfTheOverlayIsRead();
    void aRestoredRegionBelongsToItsWindow();
    void profilesWithWrongRegionsAreRefused();
};

namespace
{

constexpr int refused = emulator::Refused;

const emulator::VideoGain &gain(LensRig &rig) { return *rig.camera().device<emulator::VideoGain>(); }

/// The region as the SDK returns it. Invalid if the camera refuses.
QRect region(LensRig &rig)
{
    uint16_t x = 0, y = 0, width = 0, height = 0;
    if (zvtGetVideoAGCROI(rig.handle(), &x, &y, &width, &height) != 0)
        return {};
    return {x, y, width, height};
}

int setRegion(LensRig &rig, const QRect &to)
{
    const auto number = [](int value) { return static_cast<uint16_t>(value); };
    return zvtSetVideoAGCROI(rig.handle(), number(to.x()), number(to.y()), number(to.width()), number(to.height()));
}

} // namespace

void tst_videoGainRegion::theStartRegionIsTheWholePicture()
{
    LensRig rig;
    QCOMPARE(region(rig), QRect(0, 0, 640, 512));
    rig.open("te-cooler");
    QCOMPARE(region(rig), QRect(0, 0, 320, 256));
}

void tst_videoGainRegion::regionsMustBeInsideThePicture_data()
{
    QTest::addColumn<QRect>("wanted");
    QTest::addColumn<bool>("taken");
    QTest::newRow("whole") << QRect(0, 0, 320, 256) << true;
    QTest::newRow("first pixel") << QRect(0, 0, 1, 1) << true;
    QTest::newRow("last pixel") << QRect(319, 255, 1, 1) << true;
    QTest::newRow("column") << QRect(100, 0, 1, 256) << true;
    QTest::newRow("no width") << QRect(10, 10, 0, 10) << false;
    QTest::newRow("no height") << QRect(10, 10, 10, 0) << false;
    QTest::newRow("too wide") << QRect(1, 0, 320, 256) << false;
    QTest::newRow("too high") << QRect(0, 1, 320, 256) << false;
    QTest::newRow("beside") << QRect(320, 0, 1, 1) << false;
    QTest::newRow("below") << QRect(0, 256, 1, 1) << false;
    QTest::newRow("largest numbers") << QRect(65'535, 65'535, 65'535, 65'535) << false;
}

void tst_videoGainRegion::regionsMustBeInsideThePicture()
{
    QFETCH(const QRect, wanted);
    QFETCH(const bool, taken);
    LensRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{160, 128, 320, 256}));
    QCOMPARE(setRegion(rig, {40, 30, 20, 10}), 0);
    QCOMPARE(setRegion(rig, wanted), taken ? 0 : refused);
    const QRect expected = taken ? wanted : QRect(40, 30, 20, 10);
    QCOMPARE(region(rig), expected);
    QVERIFY(rig.set("agc.region", QVariantList{wanted.x(), wanted.y(), wanted.width(), wanted.height()}) == taken);
    QCOMPARE(region(rig), expected);
}

void tst_videoGainRegion::aSmallerWindowCutsTheRegion_data()
{
    QTest::addColumn<QRect>("before");
    QTest::addColumn<QRect>("after");
    QTest::newRow("inside") << QRect(10, 20, 100, 80) << QRect(10, 20, 100, 80);
    QTest::newRow("cut at the right") << QRect(100, 20, 200, 80) << QRect(100, 20, 60, 80);
    QTest::newRow("cut at the bottom") << QRect(10, 100, 100, 400) << QRect(10, 100, 100, 28);
    QTest::newRow("one pixel left") << QRect(159, 127, 481, 385) << QRect(159, 127, 1, 1);
    QTest::newRow("whole") << QRect(0, 0, 640, 512) << QRect(0, 0, 160, 128);
    QTest::newRow("nothing left at the right") << QRect(160, 20, 100, 80) << QRect(0, 0, 160, 128);
    QTest::newRow("nothing left at the bottom") << QRect(10, 128, 100, 80) << QRect(0, 0, 160, 128);
}

void tst_videoGainRegion::aSmallerWindowCutsTheRegion()
{
    QFETCH(const QRect, before);
    QFETCH(const QRect, after);
    LensRig rig;
    QCOMPARE(setRegion(rig, before), 0);
    QVERIFY(rig.set("sensor.window", QVariantList{240, 192, 160, 128}));
    QCOMPARE(region(rig), after);
    // A larger window does not change it again.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 640, 512}));
    QCOMPARE(region(rig), after);
}

void tst_videoGainRegion::onlyAnEnabledRegionIsUsed()
{
    LensRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{160, 128, 320, 256}));
    QCOMPARE(setRegion(rig, {40, 30, 20, 10}), 0);
    QCOMPARE(gain(rig).effectiveRegion(), (Window{0, 0, 320, 256}));
    QCOMPARE(gain(rig).region(), (Window{40, 30, 20, 10}));
    QCOMPARE(zvtSetVideoAGCROIEnabled(rig.handle(), true), 0);
    QCOMPARE(gain(rig).effectiveRegion(), (Window{40, 30, 20, 10}));
}

void tst_videoGainRegion::theSwitchOfTheOverlayIsRead()
{
    LensRig rig;
    for (const bool show : {true, false}) {
        QCOMPARE(zvtSetVideoOverlayShowAGCROI(rig.handle(), show), 0);
        bool shown = !show;
        QCOMPARE(zvtGetVideoAGCROIShowWhenEnabled(rig.handle(), &shown), 0);
        QCOMPARE(shown, show);
    }
}

void tst_videoGainRegion::aRestoredRegionBelongsToItsWindow()
{
    LensRig rig;
    QCOMPARE(setRegion(rig, {400, 300, 200, 200}), 0);
    const QJsonObject large = rig.camera().snapshot();
    QVERIFY(rig.set("sensor.window", QVariantList{240, 192, 160, 128}));
    QCOMPARE(setRegion(rig, {100, 80, 60, 40}), 0);
    const QJsonObject small = rig.camera().snapshot();
    rig.camera().restore(large);
    QCOMPARE(region(rig), QRect(400, 300, 200, 200));
    rig.camera().restore(small);
    QCOMPARE(region(rig), QRect(100, 80, 60, 40));
    // A region that does not fit the window of its snapshot is cut as by a change of the window.
    QJsonObject mixed = small;
    mixed["agc"] = large.value("agc");
    rig.camera().restore(mixed);
    QCOMPARE(region(rig), QRect(0, 0, 160, 128));
}

void tst_videoGainRegion::profilesWithWrongRegionsAreRefused()
{
    FrameRig rig;
    for (const auto *wrong : {"[0, 0, 0, 1]", "[640, 0, 1, 1]", "[0, 0, 640, 513]"})
        QVERIFY_EXCEPTION_THROWN(rig.openWith(qPrintable(QStringLiteral(R"({"agc": {"region": %1}})").arg(wrong))),
                                 emulator::SetupError);
    rig.openWith(R"({"agc": {"region": [300, 200, 50, 40], "regionEnabled": true}})");
    QCOMPARE(region(rig), QRect(300, 200, 50, 40));
}

ZVT_TEST(tst_videoGainRegion)
#include "tst_videoGainRegion.moc"
