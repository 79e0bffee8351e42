#include "tests/page/CorrectionPage.h"
#include "tests/support/Test.h"

/// The Correction page: its reads, the rows of the presets, and their buttons.
class tst_CorrectionTab : public Test
{
    Q_OBJECT

private slots:
    void pageIsReadWhenItIsShown();
    void pageIsReadWhenTheCameraConnects();
    void refreshButtonReads_data();
    void refreshButtonReads();
    void readIsShown();
    void disconnectedPageIsDisabled();

    void namesAreShown();
    void nameIsBlankUntilItIsRead();
    void longNameIsElided();
    void presetsBeyondTheNumberHaveNoButtons_data();
    void presetsBeyondTheNumberHaveNoButtons();
    void buttonsNeedACorrection();
    void buttonsWaitForTheTask();
    void newCorrectionNeedsAPresetInUse_data();
    void newCorrectionNeedsAPresetInUse();
    void toolTips();
    void correctionIsUnloaded_data();
    void correctionIsUnloaded();
    void refusedUnloadKeepsTheName();

    void tabWalksInReadingOrder();
    void everyTextFits_data();
    void everyTextFits();
    void pageOutlivesItsModel();
};

// Reading

void tst_CorrectionTab::pageIsReadWhenItIsShown()
{
    CorrectionPage page;
    QCOMPARE(page.nameOf(3), "Sky");
    QVERIFY(page.rig().callsSince(0).contains("zvtGetAutoNUCSetup"));
    page.showTab(1);
    const size_t mark = page.gate().mark();
    page.showTab(2);
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetAutoNUCSetup"), 1);
}

void tst_CorrectionTab::pageIsReadWhenTheCameraConnects()
{
    PageDriver page({.connected = false, .prepare = scriptCorrections});
    page.click("Correction");
    page.settle();
    QVERIFY(!page.rig().callsSince(0).contains("zvtGetAutoNUCSetup"));
    page.rig().camera().connect();
    page.settle();
    QCOMPARE(page.rig().callsSince(0).count("zvtGetAutoNUCSetup"), 1);
    QCOMPARE(page.text("NUC 0"), "Sky");
}

void tst_CorrectionTab::refreshButtonReads_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_CorrectionTab::refreshButtonReads()
{
    QFETCH(const bool, byKeyboard);
    CorrectionPage page;
    page.gate().script("zvtGetNUCName", "Ground");
    QCOMPARE(page.commandsOf([&] { page.use("Refresh", byKeyboard); }), QStringList());
    for (int preset = 0; preset < 4; ++preset)
        QCOMPARE(page.nameOf(preset), "Ground");
    // A read by the hot key of the host shows its values too.
    page.gate().script("zvtGetNUCName", "Sea");
    QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
    page.settle();
    QCOMPARE(page.nameOf(0), "Sea");
}

void tst_CorrectionTab::readIsShown()
{
    CorrectionPage page;
    QVERIFY(!page.object("correctionBusy"));
    page.gate().hold("zvtGetShowBadPixels");
    page.click("Refresh");
    QVERIFY(page.gate().waitHeld("zvtGetShowBadPixels"));
    QVERIFY(page.object("correctionBusy"));
    // The settings cannot be changed while they are read; the stored corrections can be managed.
    QVERIFY(!page.enabled("Show Bad Pixels") && !page.enabled("Auto NUC"));
    QVERIFY(page.enabled("Manage NUCs") && page.enabled("Load NUC Options"));
    page.gate().release("*");
    page.settle();
    QVERIFY(page.enabled("Show Bad Pixels"));
    QTRY_VERIFY(!page.object("correctionBusy"));
}

void tst_CorrectionTab::disconnectedPageIsDisabled()
{
    CorrectionPage page;
    QVERIFY(!page.findText("No camera connected"));
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
    const QStringList names{"Manage NUCs", "Load NUC Options", "Refresh", "Auto NUC", "Perform NUC Now"};
    for (const QString &name : names + buttonsOf(0))
        QVERIFY2(!page.enabled(name), qPrintable(name));
    QCOMPARE(page.nameOf(0), "Sky");
    page.rig().camera().connect();
    page.settle();
    for (const QString &name : names + buttonsOf(0))
        QVERIFY2(page.enabled(name), qPrintable(name));
}

// The presets

void tst_CorrectionTab::namesAreShown()
{
    CorrectionPage page;
    for (int preset = 0; preset < 4; ++preset) {
        QCOMPARE(page.nameOf(preset), "Sky");
        QCOMPARE(page.text(QStringLiteral("Preset %1").arg(preset)), QString::number(preset));
    }
    const auto color = page.item("NUC 1").property("color");
    page.gate().script("zvtGetNUCName", "");
    page.refresh();
    QCOMPARE(page.nameOf(1), "No NUC Loaded");
    QVERIFY(page.item("NUC 1").property("color") != color);
    // Markup is shown as it is.
    page.gate().script("zvtGetNUCName", "<b>x</b>");
    page.refresh();
    QCOMPARE(page.nameOf(1), "<b>x</b>");
    QCOMPARE(page.item("NUC 1").property("color"), color);
}

void tst_CorrectionTab::nameIsBlankUntilItIsRead()
{
    SetupPage page("everything", scriptCorrections);
    emulator::Gate &gate = page.rig().gate();
    gate.hold("zvtGetShowBadPixels");
    page.click("Correction");
    QVERIFY(gate.waitHeld("zvtGetShowBadPixels"));
    page.awaitFrame();
    QCOMPARE(page.text("NUC 0"), "");
    QVERIFY(!page.enabled("Load Existing NUC 0") && !page.enabled("Auto NUC"));
    gate.release("*");
    page.settle();
    QCOMPARE(page.text("NUC 0"), "Sky");
}

void tst_CorrectionTab::longNameIsElided()
{
    const QString name = QStringLiteral("x").repeated(199);
    CorrectionPage page([&](emulator::Camera &camera) { camera.gate().script("zvtGetNUCName", name); });
    QVERIFY(page.item("NUC 0").property("truncated").toBool());
    QTest::mouseMove(&page.window(), page.middle("NUC 0"));
    QTRY_COMPARE(page.hint(), name);
    const QQuickItem &last = page.item("Unload Current NUC 0");
    QVERIFY(last.mapRectToScene(last.boundingRect()).right() <= page.window().width());
}

void tst_CorrectionTab::presetsBeyondTheNumberHaveNoButtons_data()
{
    QTest::addColumn<int>("number");
    for (int number = 1; number <= 4; ++number)
        QTest::addRow("%d", number) << number;
}

void tst_CorrectionTab::presetsBeyondTheNumberHaveNoButtons()
{
    QFETCH(const int, number);
    CorrectionPage page([&](emulator::Camera &camera) {
        scriptCorrections(camera);
        camera.gate().script("zvtGetNumPresets", number);
    });
    for (int preset = 0; preset < 4; ++preset) {
        QVERIFY(page.find(QStringLiteral("Preset %1").arg(preset)));
        const QStringList names = buttonsOf(preset) + QStringList{QStringLiteral("NUC %1").arg(preset)};
        for (const QString &name : names)
            QCOMPARE(page.find(name) != nullptr, preset < number);
    }
}

void tst_CorrectionTab::buttonsNeedACorrection()
{
    CorrectionPage page;
    for (const QString &name : buttonsOf(0))
        QVERIFY2(page.enabled(name), qPrintable(name));
    page.gate().script("zvtGetNUCName", "");
    page.refresh();
    const QList<bool> enabled{false, true, false, true, false};
    for (int button = 0; button < enabled.size(); ++button)
        QCOMPARE(page.enabled(buttonsOf(0).at(button)), enabled.at(button));
}

void tst_CorrectionTab::buttonsWaitForTheTask()
{
    CorrectionPage page;
    page.gate().hold("zvtUnloadNUC");
    page.click("Unload Current NUC 2");
    QVERIFY(page.gate().waitHeld("zvtUnloadNUC"));
    const QList<bool> enabled{true, false, false, false, false};
    for (int button = 0; button < enabled.size(); ++button)
        QCOMPARE(page.enabled(buttonsOf(0).at(button)), enabled.at(button));
    // The settings stay as they were read.
    QVERIFY(page.enabled("Auto NUC"));
    page.gate().release("*");
    page.settle();
    for (const QString &name : buttonsOf(0))
        QVERIFY2(page.enabled(name), qPrintable(name));
}

void tst_CorrectionTab::newCorrectionNeedsAPresetInUse_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QList<int>>("inUse");
    QTest::addColumn<QString>("hintInUse");
    QTest::addColumn<QString>("otherHint");
    QTest::newRow("single preset") << 0 << QList<int>{2} << "This is the Active Preset"
                                   << "";
    QTest::newRow("superframing") << 1 << QList<int>{0, 1} << "Preset included in superframe."
                                  << "Preset excluded from superframe.";
    QTest::newRow("sequencing") << 2 << QList<int>{1, 3} << "Preset included in sequence. (Dwell is greater than 0)"
                                << "Preset excluded from sequence. (Dwell is 0)";
}

void tst_CorrectionTab::newCorrectionNeedsAPresetInUse()
{
    QFETCH(const int, mode);
    QFETCH(const QList<int>, inUse);
    QFETCH(const QString, hintInUse);
    QFETCH(const QString, otherHint);
    CorrectionPage page;
    page.general()->setProperty("activePreset", 2);
    page.sequence(mode, {0, 1, 0, 5}, {true, true, false, false});
    for (int preset = 0; preset < 4; ++preset) {
        const bool used = inUse.contains(preset);
        QCOMPARE(page.enabled(QStringLiteral("Perform New NUC %1").arg(preset)), used);
        QVERIFY(page.enabled(QStringLiteral("Load Existing NUC %1").arg(preset)));
        const QQuickItem &label = page.item(QStringLiteral("Preset %1").arg(preset));
        QCOMPARE(label.property("inUse").toBool(), used);
        QCOMPARE(label.property("toolTip").toString(), used ? hintInUse : otherHint);
        QCOMPARE(page.commandsOf([&] { page.click(QStringLiteral("Preset %1").arg(preset)); }), QStringList());
    }
}

void tst_CorrectionTab::toolTips()
{
    CorrectionPage page;
    for (const QString &name : buttonsOf(0)) {
        page.item(name).forceActiveFocus(Qt::TabFocusReason);
        QTRY_COMPARE(page.hint(), name.chopped(2));
    }
    page.item("Refresh").forceActiveFocus(Qt::TabFocusReason);
    QTRY_COMPARE(page.hint(), "Refresh");
}

void tst_CorrectionTab::correctionIsUnloaded_data() { refreshButtonReads_data(); }

void tst_CorrectionTab::correctionIsUnloaded()
{
    QFETCH(const bool, byKeyboard);
    CorrectionPage page;
    page.gate().script("zvtGetNUCName", "");
    QCOMPARE(page.commandsOf([&] { page.use("Unload Current NUC 1", byKeyboard); }), QStringList{"zvtUnloadNUC 1"});
    QCOMPARE(page.nameOf(1), "No NUC Loaded");
    QCOMPARE(page.nameOf(0), "Sky");
    QCOMPARE(page.cameraModel()->property("hasNucMask").toInt() & 2, 0);
}

void tst_CorrectionTab::refusedUnloadKeepsTheName()
{
    CorrectionPage page;
    page.gate().failAlways("zvtUnloadNUC");
    page.click("Unload Current NUC 1");
    page.settle();
    QCOMPARE(page.nameOf(1), "Sky");
    QVERIFY(page.enabled("Unload Current NUC 1"));
}

// The whole page

void tst_CorrectionTab::tabWalksInReadingOrder()
{
    CorrectionPage page;
    QStringList expected{"Manage NUCs", "Load NUC Options", "Refresh"};
    for (int preset = 0; preset < 4; ++preset)
        for (const QString &name : buttonsOf(preset))
            if (page.enabled(name))
                expected << name;
    expected << "Bad Pixel Correction Method"
             << "NUC Video Output"
             << "NUC Data Output"
             << "Show Bad Pixels"
             << "Auto NUC"
             << "Perform NUC Now";
    for (int row = 0; row < 2; ++row)
        for (int control = 0; control < 2; ++control)
            expected << (row == 0 ? "If front panel temp changes by this amount in °C" : "Periodically, in minutes");
    page.item("Manage NUCs").forceActiveFocus(Qt::TabFocusReason);
    QStringList walked;
    for (qsizetype step = 0; step < expected.size(); ++step) {
        walked << PageDriver::nameOf(*page.window().activeFocusItem());
        page.press(Qt::Key_Tab);
    }
    QCOMPARE(walked, expected);
}

void tst_CorrectionTab::everyTextFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(640, 480);
    QTest::newRow("two columns") << QSize(1400, 600);
}

void tst_CorrectionTab::everyTextFits()
{
    QFETCH(const QSize, size);
    PageDriver page({.size = size, .prepare = scriptCorrections});
    page.click("Correction");
    page.settle();
    QQuickItem *below = page.find("Manage NUCs");
    while (!below->inherits("QQuickFlickable"))
        below = below->parentItem();
    // The page need not scroll at any of these sizes.
    const QRectF place = below->mapRectToScene(below->boundingRect());
    const QList<QQuickItem *> texts = PageDriver::shownTexts(*below);
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    QVERIFY2(texts.size() > 12, qPrintable(QString::number(texts.size())));
    for (int preset = 0; preset < 4; ++preset)
        QVERIFY(PageDriver::fits(*page.find(QStringLiteral("NUC %1").arg(preset)), place));
}

void tst_CorrectionTab::pageOutlivesItsModel()
{
    CorrectionPage page;
    page.deleteModel();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
}

ZVT_TEST(tst_CorrectionTab)
#include "tst_CorrectionTab.moc"
