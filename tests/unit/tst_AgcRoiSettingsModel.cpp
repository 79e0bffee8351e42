#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"
#include "tests/support/modelOf.h"

#include "video/AgcRoiSettingsModel.h"

#include <thread>

namespace
{

const QStringList allReads{"zvtGetVideoAGCROIEnabled",
                           "zvtGetVideoAGCROIShowWhenEnabled",
                           "zvtGetVideoAGCROI",
                           "zvtGetVideoPreset",
                           "zvtGetWindow",
                           "zvtGetWindowLimits"};

/// Lets the camera return values that all differ from those of a model that has not been read.
void scriptRegion(CameraRig &rig)
{
    emulator::Gate &gate = rig.gate();
    gate.script("zvtGetVideoAGCROIEnabled", true);
    gate.script("zvtGetVideoAGCROIShowWhenEnabled", true);
    gate.script("zvtGetVideoAGCROI", QVariantList{10, 20, 100, 50});
    gate.script("zvtGetWindow", QVariantList{16, 8, 320, 256});
    for (const char *setter : {"zvtSetVideoAGCROIEnabled", "zvtSetVideoOverlayShowAGCROI", "zvtSetVideoAGCROI"})
        gate.script(setter, true);
}

/// A model that has not been read.
struct Region {
    Region() : root(rig.controller(), nullptr), model(*root.agcRoiSettings())
    {
        scriptRegion(rig);
        CameraRig::settle();
        log.watch(&model);
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// Reads everything. Returns the calls of the task.
    QStringList read()
    {
        const size_t mark = gate().mark();
        model.refresh();
        CameraRig::settle();
        QStringList calls;
        for (const auto &call : gate().callsSince(mark))
            if (call.thread != std::this_thread::get_id())
                calls << QString::fromStdString(call.name);
        return calls;
    }

    /// Reads everything, and forgets the signals.
    void start()
    {
        read();
        log.take();
    }

    /// Writes a property. Returns the calls with their arguments.
    QStringList write(const char *property, const QVariant &value)
    {
        const size_t mark = gate().mark();
        model.setProperty(property, value);
        QStringList calls;
        for (const auto &call : gate().callsSince(mark))
            if (call.name.starts_with("zvt"))
                calls << QString::fromStdString(call.name + " " + call.arguments);
        return calls;
    }

    CameraRig rig;
    ZvtCameraModel root;
    AgcRoiSettingsModel &model;
    SignalLog log;
};

ModelUnderTest changedModel()
{
    auto model = modelOf<AgcRoiSettingsModel>();
    model.prepare = scriptRegion;
    // Each read sets it to false.
    model.ownState << QStringLiteral("windowSizeHasUnsavedValues");
    return model;
}

} // namespace

/// The region of interest of the gain control.
class tst_AgcRoiSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void startsWithDefaults();
    void readsInOrder();
    void publishesInOrder();
    void onlySomeUnchangedValuesAreNotSignalled();
    void eachNumberOfTheRegionIsCompared_data();
    void eachNumberOfTheRegionIsCompared();
    void theFlagsFallBeforeTheReadStarts();
    void theSmallestRegionIsOnePixel();
    void theRegionIsInTheWindowOfTheVideoPreset();
    void theWindowIsTheSensorsOwn();
    void anIncompleteWindowIsNotPublished_data();
    void anIncompleteWindowIsNotPublished();
    void aReadDiscardsUnsavedEdits_data();
    void aReadDiscardsUnsavedEdits();

    void switchesAreWritten_data();
    void switchesAreWritten();
    void aRefusedSwitchStaysUntilTheNextRead_data();
    void aRefusedSwitchStaysUntilTheNextRead();
    void theRegionIsWritten_data();
    void theRegionIsWritten();
    void aRegionIsWrittenAsItWasRead();
    void theNumbersAreCutTo16Bits();
    void aRefusedRegionIsNotStored();
    void aWriteDuringAReadIsMadeAtOnce();
    void pageStatesAreOnlyStored();
    void unchangedValuesAreNotWritten();
    void theRootReadsAVisibleSection();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();

private:
    static void addSwitches();
};

void tst_AgcRoiSettingsModel::startsWithDefaults()
{
    const Region region;
    const AgcRoiSettingsModel &model = region.model;
    QVERIFY(!model.refreshing() && !model.hasRefreshed() && !model.visible());
    QVERIFY(!model.enableAgcRoi() && !model.showWhenEnabled() && !model.windowSizeHasUnsavedValues());
    QCOMPARE(model.window(), QRect(QPoint(0, 0), QPoint(-1, -1)));
    for (const QSize &size : {model.windowMinSize(), model.windowMaxSize(), model.fpaSize()})
        QCOMPARE(size, QSize(-1, -1));
    QCOMPARE(model.subWindowPosition(), QPoint(0, 0));
}

void tst_AgcRoiSettingsModel::readsInOrder()
{
    Region region;
    QCOMPARE(region.read(), allReads);
}

void tst_AgcRoiSettingsModel::publishesInOrder()
{
    Region region;
    region.model.setWindowSizeHasUnsavedValues(true);
    region.log.take();
    region.read();
    QCOMPARE(region.log.take(),
             QStringList({"hasRefreshedChanged", "refreshingChanged", "enableAgcRoiChanged", "showWhenEnabledChanged",
                          "windowChanged", "windowSizeHasUnsavedValuesChanged", "windowMinSizeChanged",
                          "windowMaxSizeChanged", "fpaSizeChanged", "subWindowPositionChanged", "hasRefreshedChanged",
                          "refreshingChanged"}));
    QVERIFY(region.model.enableAgcRoi() && region.model.showWhenEnabled());
    QVERIFY(!region.model.windowSizeHasUnsavedValues());
    QCOMPARE(region.model.window(), QRect(QPoint(10, 20), QPoint(109, 69)));
    QCOMPARE(region.model.windowMaxSize(), QSize(320, 256));
    QCOMPARE(region.model.fpaSize(), QSize(640, 512));
    QCOMPARE(region.model.subWindowPosition(), QPoint(16, 8));
}

void tst_AgcRoiSettingsModel::onlySomeUnchangedValuesAreNotSignalled()
{
    Region region;
    region.start();
    region.read();
    QCOMPARE(region.log.take(),
             QStringList({"hasRefreshedChanged", "refreshingChanged", "enableAgcRoiChanged", "showWhenEnabledChanged",
                          "windowSizeHasUnsavedValuesChanged", "hasRefreshedChanged", "refreshingChanged"}));
}

void tst_AgcRoiSettingsModel::eachNumberOfTheRegionIsCompared_data()
{
    QTest::addColumn<QVariantList>("region");
    QTest::addColumn<QRect>("shown");
    QTest::newRow("x") << QVariantList{11, 20, 100, 50} << QRect(11, 20, 100, 50);
    QTest::newRow("y") << QVariantList{10, 21, 100, 50} << QRect(10, 21, 100, 50);
    QTest::newRow("width") << QVariantList{10, 20, 101, 50} << QRect(10, 20, 101, 50);
    QTest::newRow("height") << QVariantList{10, 20, 100, 51} << QRect(10, 20, 100, 51);
    QTest::newRow("largest") << QVariantList{65535, 65535, 65535, 65535} << QRect(65535, 65535, 65535, 65535);
}

void tst_AgcRoiSettingsModel::eachNumberOfTheRegionIsCompared()
{
    QFETCH(const QVariantList, region);
    QFETCH(const QRect, shown);
    Region present;
    present.start();
    present.gate().script("zvtGetVideoAGCROI", region);
    present.read();
    QCOMPARE(present.log.take().count("windowChanged"), 1);
    QCOMPARE(present.model.window(), shown);
}

// The flags are set in this order, which differs from that of most sections.
void tst_AgcRoiSettingsModel::theFlagsFallBeforeTheReadStarts()
{
    Region region;
    region.start();
    QStringList flags;
    const auto note
        = [&] { flags << QStringLiteral("%1 %2").arg(region.model.hasRefreshed()).arg(region.model.refreshing()); };
    QObject::connect(&region.model, &AgcRoiSettingsModel::hasRefreshedChanged, this, note);
    QObject::connect(&region.model, &AgcRoiSettingsModel::refreshingChanged, this, note);
    region.read();
    QCOMPARE(flags, QStringList({"0 0", "0 1", "1 1", "1 0"}));
}

void tst_AgcRoiSettingsModel::theSmallestRegionIsOnePixel()
{
    Region region;
    region.gate().script("zvtGetWindowLimits", QVariantList{64, 1280, 4, 1024, 16, 4});
    region.read();
    QCOMPARE(region.model.windowMinSize(), QSize(1, 1));
    QCOMPARE(region.model.fpaSize(), QSize(1280, 1024));
}

void tst_AgcRoiSettingsModel::theRegionIsInTheWindowOfTheVideoPreset()
{
    Region region;
    region.gate().script("zvtGetVideoPreset", 2);
    const size_t mark = region.gate().mark();
    region.read();
    QStringList windows;
    for (const auto &call : region.gate().callsSince(mark))
        if (call.name == "zvtGetWindow")
            windows << QString::fromStdString(call.arguments);
    QCOMPARE(windows, QStringList("2"));
}

void tst_AgcRoiSettingsModel::theWindowIsTheSensorsOwn()
{
    Region region;
    region.gate().script("zvtGetWindow", {});
    region.read();
    QCOMPARE(region.model.windowMaxSize(), QSize(640, 512));
    QCOMPARE(region.model.subWindowPosition(), QPoint(0, 0));
    QVERIFY(region.rig.camera().otherClient().set("sensor.window", QVariantList{160, 128, 320, 256}));
    region.read();
    QCOMPARE(region.model.windowMaxSize(), QSize(320, 256));
    QCOMPARE(region.model.subWindowPosition(), QPoint(160, 128));
    QCOMPARE(region.model.fpaSize(), QSize(640, 512));
}

void tst_AgcRoiSettingsModel::anIncompleteWindowIsNotPublished_data()
{
    QTest::addColumn<int>("failing");
    for (int call = 3; call < 6; ++call)
        QTest::newRow(qPrintable(allReads.at(call))) << call;
}

void tst_AgcRoiSettingsModel::anIncompleteWindowIsNotPublished()
{
    QFETCH(const int, failing);
    Region region;
    region.gate().failNext(allReads.at(failing).toStdString());
    // The calls after it are not made.
    QCOMPARE(region.read(), allReads.mid(0, failing + 1));
    QCOMPARE(region.model.window(), QRect(10, 20, 100, 50));
    for (const QSize &size : {region.model.windowMinSize(), region.model.windowMaxSize(), region.model.fpaSize()})
        QCOMPARE(size, QSize(-1, -1));
    QCOMPARE(region.model.subWindowPosition(), QPoint(0, 0));
}

void tst_AgcRoiSettingsModel::aReadDiscardsUnsavedEdits_data()
{
    QTest::addColumn<bool>("connected");
    QTest::newRow("connected") << true;
    QTest::newRow("disconnected") << false;
}

void tst_AgcRoiSettingsModel::aReadDiscardsUnsavedEdits()
{
    QFETCH(const bool, connected);
    Region region;
    region.start();
    if (!connected)
        region.rig.camera().disconnect();
    region.model.setWindowSizeHasUnsavedValues(true);
    region.log.take();
    region.read();
    QVERIFY(!region.model.windowSizeHasUnsavedValues());
    QCOMPARE(region.log.take().count("windowSizeHasUnsavedValuesChanged"), 1);
}

// Setters

void tst_AgcRoiSettingsModel::addSwitches()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("setter");
    QTest::newRow("in use") << QByteArray("enableAgcRoi") << "zvtSetVideoAGCROIEnabled";
    // There is no setter of the gain control for this value.
    QTest::newRow("shown") << QByteArray("showWhenEnabled") << "zvtSetVideoOverlayShowAGCROI";
}

void tst_AgcRoiSettingsModel::switchesAreWritten_data() { addSwitches(); }

void tst_AgcRoiSettingsModel::switchesAreWritten()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QString, setter);
    Region region;
    region.start();
    QCOMPARE(region.write(property, false), QStringList(setter + " false"));
    QCOMPARE(region.model.property(property), QVariant(false));
    QCOMPARE(region.log.take(), QStringList(property + "Changed"));
    QCOMPARE(region.write(property, false), QStringList());
    QCOMPARE(region.write(property, true), QStringList(setter + " true"));
}

void tst_AgcRoiSettingsModel::aRefusedSwitchStaysUntilTheNextRead_data() { addSwitches(); }

void tst_AgcRoiSettingsModel::aRefusedSwitchStaysUntilTheNextRead()
{
    QFETCH(const QByteArray, property);
    QFETCH(const QString, setter);
    Region region;
    region.start();
    region.gate().failNext(setter.toStdString());
    region.model.setProperty(property, false);
    QCOMPARE(region.model.property(property), QVariant(false));
    QCOMPARE(region.log.take(), QStringList(property + "Changed"));
    region.read();
    QCOMPARE(region.model.property(property), QVariant(true));
}

void tst_AgcRoiSettingsModel::theRegionIsWritten_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QString>("arguments");
    QTest::newRow("x") << QRect(11, 20, 100, 50) << "11, 20, 100, 50";
    QTest::newRow("y") << QRect(10, 21, 100, 50) << "10, 21, 100, 50";
    QTest::newRow("width") << QRect(10, 20, 101, 50) << "10, 20, 101, 50";
    QTest::newRow("height") << QRect(10, 20, 100, 51) << "10, 20, 100, 51";
}

void tst_AgcRoiSettingsModel::theRegionIsWritten()
{
    QFETCH(const QRect, window);
    QFETCH(const QString, arguments);
    Region region;
    region.start();
    QCOMPARE(region.write("window", window), QStringList("zvtSetVideoAGCROI " + arguments));
    QCOMPARE(region.model.window(), window);
    QCOMPARE(region.log.take(), QStringList("windowChanged"));
}

void tst_AgcRoiSettingsModel::aRegionIsWrittenAsItWasRead()
{
    Region region;
    region.start();
    const QRect read = region.model.window();
    QCOMPARE(read.right(), 109);
    QCOMPARE(read.bottom(), 69);
    region.model.setWindow(QRect(0, 0, 1, 1));
    QCOMPARE(region.write("window", read), QStringList("zvtSetVideoAGCROI 10, 20, 100, 50"));
}

void tst_AgcRoiSettingsModel::theNumbersAreCutTo16Bits()
{
    Region region;
    region.start();
    QCOMPARE(region.write("window", QRect(-1, 65537, 65536 + 64, 70000)),
             QStringList("zvtSetVideoAGCROI 65535, 1, 64, 4464"));
    QCOMPARE(region.model.window(), QRect(-1, 65537, 65536 + 64, 70000));
}

void tst_AgcRoiSettingsModel::aRefusedRegionIsNotStored()
{
    Region region;
    region.start();
    region.gate().failNext("zvtSetVideoAGCROI");
    QCOMPARE(region.write("window", QRect(0, 0, 2, 2)), QStringList("zvtSetVideoAGCROI 0, 0, 2, 2"));
    QCOMPARE(region.model.window(), QRect(10, 20, 100, 50));
    QCOMPARE(region.log.take(), QStringList());
}

void tst_AgcRoiSettingsModel::aWriteDuringAReadIsMadeAtOnce()
{
    Region region;
    region.start();
    region.gate().hold("zvtGetWindowLimits");
    region.model.refresh();
    QVERIFY(region.gate().waitHeld("zvtGetWindowLimits"));
    QCOMPARE(region.write("window", QRect(0, 0, 2, 2)), QStringList("zvtSetVideoAGCROI 0, 0, 2, 2"));
    QCOMPARE(region.model.window(), QRect(0, 0, 2, 2));
    region.gate().release("*");
    CameraRig::settle();
    // The older region, which the read had already got.
    QCOMPARE(region.model.window(), QRect(10, 20, 100, 50));
}

void tst_AgcRoiSettingsModel::pageStatesAreOnlyStored()
{
    Region region;
    region.start();
    for (const char *property : {"visible", "windowSizeHasUnsavedValues"}) {
        QCOMPARE(region.write(property, true), QStringList());
        QCOMPARE(region.model.property(property), QVariant(true));
        QCOMPARE(region.log.take(), QStringList(QLatin1String(property) + "Changed"));
    }
}

void tst_AgcRoiSettingsModel::unchangedValuesAreNotWritten()
{
    Region region;
    region.start();
    for (const char *property : {"visible", "enableAgcRoi", "showWhenEnabled", "window", "windowSizeHasUnsavedValues"})
        QCOMPARE(region.write(property, region.model.property(property)), QStringList());
    QCOMPARE(region.log.take(), QStringList());
}

void tst_AgcRoiSettingsModel::theRootReadsAVisibleSection()
{
    Region region;
    for (const bool visible : {false, true}) {
        region.model.setVisible(visible);
        const size_t mark = region.gate().mark();
        region.root.refreshAllVisible();
        CameraRig::settle();
        QCOMPARE(region.rig.callsSince(mark).count("zvtGetVideoAGCROI"), visible ? 1 : 0);
    }
}

void tst_AgcRoiSettingsModel::failingReads()
{
    const QStringList window{"windowMinSize", "windowMaxSize", "subWindowPosition", "fpaSize"};
    const char *const reason = "the window of the video preset is read by three calls, of which each needs the last";
    walkFailingReads(changedModel(),
                     {{"zvtGetVideoPreset", {window, reason}},
                      {"zvtGetWindow", {window, reason}},
                      {"zvtGetWindowLimits", {window, reason}}});
}

void tst_AgcRoiSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(changedModel()); }

void tst_AgcRoiSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(changedModel()); }

void tst_AgcRoiSettingsModel::readsWithoutACamera() { walkNoCamera(changedModel(), {"windowSizeHasUnsavedValues"}); }

void tst_AgcRoiSettingsModel::randomOperator() { walkRandomOperator(changedModel(), 63); }

ZVT_TEST(tst_AgcRoiSettingsModel)
#include "tst_AgcRoiSettingsModel.moc"
