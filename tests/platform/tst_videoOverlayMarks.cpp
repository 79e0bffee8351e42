#include "tests/platform/OverlayRig.h"
#include "tests/platform/VideoRig.h"
#include "tests/support/Test.h"

#include <QRect>

#include <vector>

/// The messages of the video overlay, and its frames around regions.
class tst_videoOverlayMarks : public Test
{
    Q_OBJECT

private slots:
    void aMessageStaysUntilItIsCleared();
    void aClearedMessageNeedsItsCauseAgain();
    void everyCauseHasItsMessage_data();
    void everyCauseHasItsMessage();
    void onlyAMissingTriggerSignalIsAMissingSignal();
    void theNewestMessageIsShown();
    void messagesMayBeHidden();
    void camerasWithoutTheEquipmentHaveNoMessage();
    void theAgcRegionIsShownWhileItIsInUse();
    void theFocusRegionIsShown();
    void theFocusRegionIsShownWhileFocusing();
    void framesFollowTheImage_data();
    void framesFollowTheImage();
    void framesFollowTheFlips();

private:
    struct Box {
        QRect place;
        int color;
        bool operator==(const Box &) const = default;
    };
    static std::vector<Box> boxes(OverlayRig &rig)
    {
        std::vector<Box> boxes;
        for (const auto &box : rig.content().boxes)
            boxes.push_back({QRectF(box.x, box.y, box.width, box.height).toRect(), box.color});
        return boxes;
    }
    /// The place of the only frame on the raster.
    static QRect frame(OverlayRig &rig)
    {
        return VideoRig::coloredPart(rig.camera().device<emulator::VideoOutput>()->render());
    }
    static bool showAgcRegion(OverlayRig &rig)
    {
        return zvtSetVideoAGCROI(rig.handle(), 100, 60, 40, 20) == 0
            && zvtSetVideoAGCROIEnabled(rig.handle(), true) == 0
            && zvtSetVideoOverlayShowAGCROI(rig.handle(), true) == 0;
    }
    static int clear(const OverlayRig &rig) { return zvtVideoOverlayClearMessage(rig.handle()); }
};

void tst_videoOverlayMarks::aMessageStaysUntilItIsCleared()
{
    OverlayRig rig;
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
    rig.coolDetector();
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
    QCOMPARE(clear(rig), 0);
    QCOMPARE(rig.message(), QString());
    QCOMPARE(clear(rig), 0);
    QCOMPARE(rig.message(), QString());
}

void tst_videoOverlayMarks::aClearedMessageNeedsItsCauseAgain()
{
    OverlayRig rig;
    QCOMPARE(clear(rig), 0);
    // The cause still exists.
    emulator::Clock::advance(10'000);
    QCOMPARE(rig.message(), QString());
    rig.coolDetector();
    QCOMPARE(rig.message(), QString());
    QVERIFY(rig.set("cooler.power", false));
    emulator::Clock::advance(600'000);
    QCOMPARE(rig.message(), QString());
    QVERIFY(rig.set("cooler.power", true));
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
    // Another setpoint during a cool-down does not begin a new one; with a cold detector it does.
    QCOMPARE(clear(rig), 0);
    QVERIFY(rig.set("cooler.setpoint", 70.0));
    QCOMPARE(rig.message(), QString());
    rig.coolDetector();
    QVERIFY(rig.set("cooler.setpoint", 68.0));
    QCOMPARE(rig.message(), QString());
    QVERIFY(rig.set("cooler.setpoint", 60.0));
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
}

void tst_videoOverlayMarks::everyCauseHasItsMessage_data()
{
    using Settings = QList<std::pair<const char *, QVariant>>;
    QTest::addColumn<QString>("message");
    QTest::addColumn<Settings>("begin");
    QTest::addColumn<Settings>("end");
    QTest::newRow("cooler") << "COOLING" << Settings{{"cooler.power", true}} << Settings{{"cooler.power", false}};
    QTest::newRow("sync input") << "NO SYNC" << Settings{{"sync.source", 1}, {"sync.externalRate", 0}}
                                << Settings{{"sync.externalRate", 50}};
    QTest::newRow("trigger input") << "NO SYNC" << Settings{{"trigger.source", 1}, {"trigger.mode", 1}}
                                   << Settings{{"trigger.mode", 0}};
    QTest::newRow("trigger input of sequences")
        << "NO SYNC" << Settings{{"trigger.source", 1}, {"sync.triggerRate", 0}, {"trigger.mode", 2}}
        << Settings{{"sync.triggerRate", 50}};
    QTest::newRow("flag") << "FLAG FAULT" << Settings{{"flag.stuck", true}} << Settings{{"flag.stuck", false}};
}

void tst_videoOverlayMarks::everyCauseHasItsMessage()
{
    using Settings = QList<std::pair<const char *, QVariant>>;
    QFETCH(const QString, message);
    QFETCH(const Settings, begin);
    QFETCH(const Settings, end);
    OverlayRig rig;
    const auto set = [&rig](const Settings &settings) {
        for (const auto &[name, value] : settings)
            if (!rig.set(name, value))
                qFatal("%s cannot be set", name);
    };
    set(end);
    QCOMPARE(clear(rig), 0);
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(rig.message(), QString());
        set(begin);
        QCOMPARE(rig.message(), message);
        QCOMPARE(clear(rig), 0);
        set(end);
    }
}

void tst_videoOverlayMarks::onlyAMissingTriggerSignalIsAMissingSignal()
{
    OverlayRig rig;
    QCOMPARE(clear(rig), 0);
    // Triggers from elsewhere.
    for (const int source : {0, 2, 3})
        for (const int mode : {1, 2}) {
            QVERIFY(rig.set("trigger.source", source) && rig.set("trigger.mode", mode));
            QCOMPARE(rig.message(), QString());
        }
    // No frames wait for the input.
    QVERIFY(rig.set("trigger.mode", 0) && rig.set("trigger.source", 1));
    QCOMPARE(rig.message(), QString());
    QVERIFY(rig.set("sensor.sequencingMode", 2) && rig.set("trigger.mode", 3));
    QCOMPARE(rig.message(), QString());
    QVERIFY(rig.set("sync.triggerRate", 50) && rig.set("trigger.mode", 1));
    emulator::Clock::advance(100);
    QVERIFY(rig.set("sync.triggerRate", 0));
    QCOMPARE(rig.message(), QString());
    // They wait again.
    QVERIFY(rig.set("trigger.mode", 1));
    QCOMPARE(rig.message(), QStringLiteral("NO SYNC"));
}

void tst_videoOverlayMarks::theNewestMessageIsShown()
{
    OverlayRig rig;
    rig.coolDetector();
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QCOMPARE(rig.message(), QStringLiteral("CORRECTION"));
    QVERIFY(rig.set("flag.stuck", true));
    QCOMPARE(rig.message(), QStringLiteral("FLAG FAULT"));
    // No older message comes back, although the run goes on.
    QCOMPARE(clear(rig), 0);
    QCOMPARE(rig.message(), QString());
    QCOMPARE(zvtAbortNUC(rig.handle()), 0);
    QCOMPARE(zvtStartNUC(rig.handle()), 0);
    QCOMPARE(rig.message(), QStringLiteral("CORRECTION"));
}

void tst_videoOverlayMarks::messagesMayBeHidden()
{
    OverlayRig rig;
    QCOMPARE(zvtSetVideoOverlayShowMessage(rig.handle(), false), 0);
    QCOMPARE(rig.message(), QString());
    QCOMPARE(zvtSetVideoOverlayShowMessage(rig.handle(), true), 0);
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
}

void tst_videoOverlayMarks::camerasWithoutTheEquipmentHaveNoMessage()
{
    for (const char *profile : {"bare", "low-cost"}) {
        OverlayRig rig(profile);
        QCOMPARE(rig.message(), QString());
        QCOMPARE(clear(rig), 0);
    }
    // A thermoelectric cooler cools, too.
    OverlayRig rig("te-cooler");
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
}

void tst_videoOverlayMarks::theAgcRegionIsShownWhileItIsInUse()
{
    OverlayRig rig;
    QVERIFY(showAgcRegion(rig));
    QVERIFY(boxes(rig) == std::vector<Box>({{QRect(100, 60, 40, 20), 5}}));
    QCOMPARE(zvtSetVideoOverlayAGCROIColor(rig.handle(), 17), 0);
    QVERIFY(boxes(rig) == std::vector<Box>({{QRect(100, 60, 40, 20), 17}}));
    QCOMPARE(zvtSetVideoAGCROIEnabled(rig.handle(), false), 0);
    QVERIFY(boxes(rig).empty());
    QCOMPARE(zvtSetVideoAGCROIEnabled(rig.handle(), true), 0);
    QCOMPARE(zvtSetVideoOverlayShowAGCROI(rig.handle(), false), 0);
    QVERIFY(boxes(rig).empty());
}

void tst_videoOverlayMarks::theFocusRegionIsShown()
{
    OverlayRig rig;
    QVERIFY(boxes(rig).empty());
    QCOMPARE(zvtSetVideoOverlayShowFocusROI(rig.handle(), true), 0);
    QVERIFY(boxes(rig) == std::vector<Box>({{QRect(256, 192, 128, 128), 3}}));
    QVERIFY(rig.set("autoFocus.regionSize", 32) && rig.set("autoFocus.regionPosition", 4));
    QCOMPARE(zvtSetVideoOverlayFocusROIColor(rig.handle(), 9), 0);
    QVERIFY(boxes(rig) == std::vector<Box>({{QRect(464, 368, 32, 32), 9}}));
    // That of the gain control comes first.
    QVERIFY(showAgcRegion(rig));
    QVERIFY(boxes(rig) == std::vector<Box>({{QRect(100, 60, 40, 20), 5}, {QRect(464, 368, 32, 32), 9}}));
    rig.open("bare");
    QVERIFY(boxes(rig).empty());
}

void tst_videoOverlayMarks::theFocusRegionIsShownWhileFocusing()
{
    OverlayRig rig;
    rig.coolDetector();
    for (const bool shows : {true, false}) {
        QVERIFY(rig.set("autoFocus.showWhenFocusing", shows));
        size_t during = 77;
        emulator::Clock::duringNextWait([&] { during = boxes(rig).size(); });
        QCOMPARE(zvtAutoFocusFast(rig.handle(), 1), 0);
        QCOMPARE(during, size_t(shows ? 1 : 0));
        QVERIFY(boxes(rig).empty());
    }
}

void tst_videoOverlayMarks::framesFollowTheImage_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("zoomFactor");
    QTest::addColumn<QRect>("place");
    // The raster has 1280x720 pixels, the image 640x512.
    QTest::newRow("as on the array") << 0 << 1 << QRect(100, 60, 40, 20);
    QTest::newRow("twice as large") << 0 << 2 << QRect(200, 120, 80, 40);
    QTest::newRow("half as large") << 0 << 0 << QRect(50, 30, 20, 10);
    QTest::newRow("centred") << 1 << 1 << QRect(420, 164, 40, 20);
    QTest::newRow("at an offset") << 2 << 1 << QRect(120, 68, 40, 20);
    QTest::newRow("outside of the raster") << 1 << 3 << QRect();
    // 900x720 pixels; the corners are at 330.625, 84.375 and 386.875, 112.5.
    QTest::newRow("to fit") << 1 << 5 << QRect(331, 84, 56, 29);
}

void tst_videoOverlayMarks::framesFollowTheImage()
{
    QFETCH(const int, position);
    QFETCH(const int, zoomFactor);
    QFETCH(const QRect, place);
    OverlayRig rig;
    QVERIFY(showAgcRegion(rig));
    QVERIFY(rig.set("video.offset", QVariantList{20, 8}) && rig.set("video.position", position)
            && rig.set("video.zoomFactor", zoomFactor));
    QCOMPARE(frame(rig), place);
}

void tst_videoOverlayMarks::framesFollowTheFlips()
{
    OverlayRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{64, 32, 320, 256}));
    QVERIFY(showAgcRegion(rig));
    QCOMPARE(frame(rig), QRect(164, 92, 40, 20));
    // The image is on the other side of the raster. The region stays in its place of the image.
    QVERIFY(rig.set("image.reverted", true));
    QCOMPARE(frame(rig), QRect(640 - 64 - 320 + 100, 92, 40, 20));
    QVERIFY(rig.set("image.inverted", true));
    QCOMPARE(frame(rig), QRect(640 - 64 - 320 + 100, 512 - 32 - 256 + 60, 40, 20));
    QCOMPARE(zvtSetVideoAGCROIEnabled(rig.handle(), false), 0);
    QCOMPARE(zvtSetVideoOverlayShowFocusROI(rig.handle(), true), 0);
    QCOMPARE(frame(rig), QRect(256 + 96, 224 + 64, 128, 128));
}

ZVT_TEST(tst_videoOverlayMarks)
#include "tst_videoOverlayMarks.moc"
