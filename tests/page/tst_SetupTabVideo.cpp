#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QPoint>
#include <QRect>

/// The section "Video Output Settings" of the Setup page.
class tst_SetupTabVideo : public Test
{
    Q_OBJECT

private slots:
    void aCollapsedSectionIsNotRead();
    void theHeaderReadsBeforeItOpens();
    void theSectionOpensByKeyboard();
    void itIsReadWhenThePageIsShown();
    void cameraOrModeShowsTheSection_data();
    void cameraOrModeShowsTheSection();
    void theBodyIsOffUntilItHasBeenRead();
    void theBodyStaysOnDuringALaterRead();
    void theBodyIsOffWhileDisconnected();
    void theBodyMakesNoCalls();

    void theEditorShowsTheCamera();
    void aPositionIsChosen();
    void aFixedPositionCannotBeChosen();
    void aZoomFactorIsChosen();
    void aReadListOfFactorsKeepsTheRow();
    void offsetsAreUsedAtOnePositionOnly();
    void offsetsAreTypedAndApplied();
    void aTextThatIsNoOffsetIsMarked();
    void theLimitsFollowTheZoomFactor();
    void theImageIsDragged();
    void theImageIsMovedByKeys();
    void anotherOffsetReplacesATypedText();
    void anInvalidOffsetIsNotApplied();
    void aRefusedChoiceStaysUntilARead();
    void aReadRestoresTheCamerasOffset();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void tabWalksInReadingOrder();

private:
    static constexpr auto editorName = "Video Output Position";

    /// The Setup page with only this section expanded.
    struct Video : SetupPage {
        explicit Video(
            const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
            : SetupPage(profile, prepare)
        {
            click("General Setup");
            click(QStringLiteral("Video Output Settings"));
            settle();
        }

        QObject *video() const { return tabModel("videoOutputSettings"); }
        QPoint offset() const { return video()->property("videoOutputOffset").toPoint(); }
        QQuickItem &editor() const { return item(editorName); }
        bool marked(const QString &field) const { return !item(field).property("fault").toString().isEmpty(); }
        bool set(const char *name, const QVariant &value)
        {
            return rig().camera().otherClient().set(QLatin1String(name), value);
        }
        void refresh()
        {
            click("Refresh Video Output Settings");
            settle();
        }
        /// How often `action` reads the model.
        template <class Action> qsizetype reads(Action action)
        {
            const size_t mark = rig().gate().mark();
            action();
            settle();
            return rig().callsSince(mark).count("zvtGetVideoOffset");
        }
    };
};

void tst_SetupTabVideo::aCollapsedSectionIsNotRead()
{
    SetupPage page;
    QVERIFY(page.find("Video Output Settings"));
    QVERIFY(!page.find(editorName));
    QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
    page.showTab(0);
    page.showTab(1);
    QCOMPARE(page.rig().callsSince(0).filter("zvtGetVideoOffset"), QStringList());
}

void tst_SetupTabVideo::theHeaderReadsBeforeItOpens()
{
    Video page;
    QVERIFY(page.find(editorName));
    QVERIFY(page.video()->property("visible").toBool());
    QCOMPARE(page.reads([&] { page.refresh(); }), 1);
    QCOMPARE(page.reads([&] { page.click("Video Output Settings"); }), 0);
    QVERIFY(!page.find(editorName));
    QVERIFY(!page.video()->property("visible").toBool());
    page.rig().gate().hold("zvtGetVideoOffset");
    page.click("Video Output Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOffset"));
    // The header does not show that the section is read.
    QVERIFY(!page.item("Video Output Settings").property("sectionLoading").toBool());
    page.rig().gate().release("*");
    page.settle();
}

void tst_SetupTabVideo::theSectionOpensByKeyboard()
{
    Video page;
    page.item("Video Output Settings").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    QVERIFY(!page.find(editorName));
    QCOMPARE(page.reads([&] { page.press(Qt::Key_Return); }), 1);
    QVERIFY(page.find(editorName));
}

void tst_SetupTabVideo::itIsReadWhenThePageIsShown()
{
    Video page;
    QCOMPARE(page.reads([&] { page.showTab(0); }), 0);
    QCOMPARE(page.reads([&] { page.showTab(1); }), 1);
    page.rig().camera().disconnect();
    page.settle();
    QCOMPARE(page.reads([&] { page.rig().camera().connect(); }), 1);
    QCOMPARE(page.reads([&] { QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible"); }), 1);
}

void tst_SetupTabVideo::cameraOrModeShowsTheSection_data()
{
    QTest::addColumn<bool>("capability");
    QTest::addColumn<bool>("mode");
    for (const bool capability : {false, true})
        for (const bool mode : {false, true})
            QTest::addRow("%d %d", capability, mode) << capability << mode;
}

void tst_SetupTabVideo::cameraOrModeShowsTheSection()
{
    QFETCH(const bool, capability);
    QFETCH(const bool, mode);
    SetupPage page("everything", [capability](emulator::Camera &camera) {
        camera.changeMakeUp("hasVideoOutputSettings", capability);
    });
    page.cameraModel()->setProperty("manufacturingMode", mode);
    page.settle();
    QCOMPARE(page.find("Video Output Settings") != nullptr, capability || mode);
}

void tst_SetupTabVideo::theBodyIsOffUntilItHasBeenRead()
{
    SetupPage page;
    page.click("General Setup");
    page.rig().gate().hold("zvtGetVideoOffset");
    page.click("Video Output Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOffset"));
    page.awaitFrame();
    for (const char *name : {editorName, "Position", "Zoom Factor", "X Offset", "Y Offset", "Apply Offset"})
        QVERIFY2(!page.enabled(name), name);
    QCOMPARE(page.shown("Position"), "");
    QCOMPARE(page.shown("Zoom Factor"), "");
    QCOMPARE(page.text("X Offset"), "");
    page.rig().gate().release("*");
    page.settle();
    for (const char *name : {editorName, "Position", "Zoom Factor"})
        QVERIFY2(page.enabled(name), name);
    QCOMPARE(page.shown("Position"), "Same As FPA");
    QCOMPARE(page.shown("Zoom Factor"), "1X");
    QCOMPARE(page.text("X Offset"), "0");
}

void tst_SetupTabVideo::theBodyStaysOnDuringALaterRead()
{
    Video page;
    page.rig().gate().hold("zvtGetVideoOffset");
    page.click("Refresh Video Output Settings");
    QVERIFY(page.rig().gate().waitHeld("zvtGetVideoOffset"));
    QVERIFY(page.enabled("Position"));
    page.rig().gate().release("*");
    page.settle();
}

void tst_SetupTabVideo::theBodyIsOffWhileDisconnected()
{
    Video page;
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled("Position"));
    QVERIFY(!page.enabled(editorName));
}

void tst_SetupTabVideo::theBodyMakesNoCalls()
{
    Video page;
    page.click("Video Output Settings");
    const size_t mark = page.rig().gate().mark();
    page.video()->setProperty("videoOutputOffset", QPoint(4, 4));
    page.general()->setProperty("window", QRect(0, 0, 320, 256));
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).filter("Video"), QStringList());
}

void tst_SetupTabVideo::theEditorShowsTheCamera()
{
    Video page("everything", [](emulator::Camera &camera) {
        camera.otherClient().set("sensor.window", QVariantList{160, 128, 320, 256});
        camera.otherClient().set("image.reverted", true);
    });
    const QQuickItem &editor = page.editor();
    QCOMPARE(editor.property("window").toRect(), QRect(160, 128, 320, 256));
    QCOMPARE(editor.property("fpaSize").toSize(), QSize(640, 512));
    QCOMPARE(editor.property("displaySize").toSize(), QSize(1280, 720));
    QCOMPARE(editor.property("increment").toPoint(), QPoint(4, 4));
    QCOMPARE(editor.property("offsetType").toInt(), 0);
    QVERIFY(editor.property("hFlip").toBool() && !editor.property("vFlip").toBool());
    QVERIFY(!editor.property("showNtscLines").toBool());
    QVERIFY(page.set("video.zoomFactor", 4) && page.set("video.position", 2)
            && page.set("video.offset", QVariantList{100, 40}) && page.set("video.format", 2)
            && page.set("image.inverted", true));
    page.refresh();
    QMetaObject::invokeMethod(page.tab(), "refresh");
    page.settle();
    QCOMPARE(editor.property("zoom").toFloat(), 1.3F);
    QCOMPARE(editor.property("offsetType").toInt(), 2);
    QCOMPARE(editor.property("offset").toPoint(), QPoint(100, 40));
    QCOMPARE(editor.property("displaySize").toSize(), QSize(800, 600));
    QVERIFY(editor.property("vFlip").toBool());
}

void tst_SetupTabVideo::aPositionIsChosen()
{
    Video page;
    QCOMPARE(page.commandsOf([&] { page.choose("Position", "Centered"); }), QStringList("zvtSetVideoPosition 1"));
    QCOMPARE(page.editor().property("offsetType").toInt(), 1);
    page.item("Position").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Down); }), QStringList("zvtSetVideoPosition 2"));
    // The box also follows the camera.
    QVERIFY(page.set("video.position", 0));
    page.refresh();
    QCOMPARE(page.shown("Position"), "Same As FPA");
}

void tst_SetupTabVideo::aFixedPositionCannotBeChosen()
{
    Video page("low-cost");
    QVERIFY(!page.enabled("Position"));
    QVERIFY(page.enabled("Zoom Factor"));
    QVERIFY(!page.enabled("X Offset"));
    // The offsets of a fixed position can be set.
    QVERIFY(page.set("video.positionWritable", true) && page.set("video.position", 2)
            && page.set("video.positionWritable", false));
    page.refresh();
    QVERIFY(!page.enabled("Position"));
    QCOMPARE(page.shown("Position"), "Offset");
    QVERIFY(page.enabled("X Offset") && page.enabled("Y Offset") && page.enabled("Apply Offset"));
}

void tst_SetupTabVideo::aZoomFactorIsChosen()
{
    Video page;
    QCOMPARE(page.commandsOf([&] { page.choose("Zoom Factor", "Fit"); }), QStringList("zvtSetVideoZoomFactor 5"));
    QCOMPARE(page.editor().property("zoom").toDouble(), 0.0);
    page.item("Zoom Factor").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Up); }), QStringList("zvtSetVideoZoomFactor 3"));
    QCOMPARE(page.editor().property("zoom").toDouble(), 4.0);
}

void tst_SetupTabVideo::aReadListOfFactorsKeepsTheRow()
{
    Video page;
    page.choose("Zoom Factor", "2X");
    QVERIFY(page.rig().camera().changeMakeUp("hasBilinearZoom", false));
    page.refresh();
    QCOMPARE(page.shown("Zoom Factor"), "2X");
    QCOMPARE(page.item("Zoom Factor").property("count").toInt(), 3);
    QVERIFY(page.rig().camera().changeMakeUp("hasBilinearZoom", true));
    page.refresh();
    QCOMPARE(page.shown("Zoom Factor"), "2X");
    QCOMPARE(page.item("Zoom Factor").property("count").toInt(), 6);
}

void tst_SetupTabVideo::offsetsAreUsedAtOnePositionOnly()
{
    Video page;
    for (const auto &[position, used] : {std::pair{"Centered", false}, {"Offset", true}, {"Same As FPA", false}}) {
        page.choose("Position", position);
        for (const char *name : {"X Offset", "Y Offset", "Apply Offset"})
            QCOMPARE(page.enabled(name), used);
    }
}

void tst_SetupTabVideo::offsetsAreTypedAndApplied()
{
    Video page;
    page.choose("Position", "Offset");
    QCOMPARE(page.commandsOf([&] {
        page.type("X Offset", "128");
        page.type("Y Offset", "8");
    }),
             QStringList());
    // Each acceptable text is shown at once, also one of a single key.
    QCOMPARE(page.offset(), QPoint(128, 8));
    QCOMPARE(page.editor().property("offset").toPoint(), QPoint(128, 8));
    page.type("Y Offset", "");
    page.press(Qt::Key_0);
    QCOMPARE(page.offset(), QPoint(128, 0));
    QCOMPARE(page.commandsOf([&] { page.click("Apply Offset"); }), QStringList("zvtSetVideoOffset 128, 0"));
    page.item("Apply Offset").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtSetVideoOffset 128, 0"));
}

void tst_SetupTabVideo::aTextThatIsNoOffsetIsMarked()
{
    Video page;
    page.choose("Position", "Offset");
    const auto fault = [&page] { return page.item("X Offset").property("fault").toString(); };
    // Typing passes these offsets, which are shown at once.
    for (const auto &[text, why, offset] : {std::tuple{"42", "Not a multiple of 4", 4},
                                            {"644", "Not between 0 and 640", 64},
                                            {"-4", "Not between 0 and 640", 8},
                                            {"4x", "Not a number", 4},
                                            {"", "Not a number", 8},
                                            {"-", "Not a number", 8}}) {
        page.type("X Offset", "8");
        page.press(Qt::Key_A, Qt::ControlModifier);
        page.press(Qt::Key_Delete);
        page.PageDriver::type(text);
        QCOMPARE(fault(), why);
        // The text stays, and is neither stored nor sent.
        page.press(Qt::Key_Tab);
        QCOMPARE(page.text("X Offset"), text);
        QCOMPARE(fault(), why);
        QCOMPARE(page.offset(), QPoint(offset, 0));
        page.item("X Offset").forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Escape);
        QCOMPARE(fault(), "");
        QCOMPARE(page.text("X Offset"), QString::number(offset));
    }
}

void tst_SetupTabVideo::theLimitsFollowTheZoomFactor()
{
    Video page;
    page.choose("Position", "Offset");
    const auto toolTip = [&page](const QString &name) { return page.item(name).property("toolTip").toString(); };
    QCOMPARE(toolTip("X Offset"), "Between 0 and 640 in increments of 4");
    QCOMPARE(toolTip("Y Offset"), "Between 0 and 208 in increments of 4");
    page.choose("Zoom Factor", "4X");
    QCOMPARE(toolTip("X Offset"), "Between -1280 and 0 in increments of 4");
    QCOMPARE(toolTip("Y Offset"), "Between -1328 and 0 in increments of 4");
    page.type("X Offset", "-1280");
    QVERIFY(!page.marked("X Offset"));
    QCOMPARE(page.offset(), QPoint(-1280, 0));
}

void tst_SetupTabVideo::theImageIsDragged()
{
    Video page;
    page.choose("Position", "Offset");
    QQuickItem &editor = page.editor();
    const auto frame = editor.property("imageFrame").toRectF();
    const QPoint from = editor.mapToScene(frame.center()).toPoint();
    const QStringList commands = page.commandsOf([&] {
        QTest::mousePress(&page.window(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&page.window(), from + QPoint(10, 4));
        QTest::mouseMove(&page.window(), from + QPoint(300, 200));
        QTest::mouseRelease(&page.window(), Qt::LeftButton, {}, from + QPoint(300, 200));
    });
    QCOMPARE(commands, QStringList());
    QCOMPARE(page.offset(), QPoint(640, 208));
    QCOMPARE(page.text("X Offset"), "640");
    QCOMPARE(page.commandsOf([&] { page.click("Apply Offset"); }), QStringList("zvtSetVideoOffset 640, 208"));
}

void tst_SetupTabVideo::theImageIsMovedByKeys()
{
    Video page;
    page.choose("Position", "Offset");
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    page.press(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(page.offset(), QPoint(4, 40));
    QCOMPARE(page.text("Y Offset"), "40");
    // Other positions do not use the offset.
    page.choose("Position", "Centered");
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    QCOMPARE(page.offset(), QPoint(4, 40));
}

void tst_SetupTabVideo::anotherOffsetReplacesATypedText()
{
    Video page;
    page.choose("Position", "Offset");
    page.type("X Offset", "43");
    QVERIFY(page.marked("X Offset"));
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    QVERIFY(!page.marked("X Offset"));
    QCOMPARE(page.text("X Offset"), QString::number(page.offset().x()));
    // A read during typing shows the camera's offset again.
    page.type("X Offset", "80");
    QMetaObject::invokeMethod(page.video(), "refresh");
    page.settle();
    QCOMPARE(page.text("X Offset"), "0");
    QCOMPARE(page.editor().property("offset").toPoint(), QPoint(0, 0));
}

void tst_SetupTabVideo::anInvalidOffsetIsNotApplied()
{
    Video page;
    page.choose("Position", "Offset");
    page.type("X Offset", "640");
    QVERIFY(page.enabled("Apply Offset"));
    page.choose("Zoom Factor", "1.3X");
    QVERIFY(!page.editor().property("isValid").toBool());
    QVERIFY(!page.enabled("Apply Offset"));
    QVERIFY(page.item("X Offset").property("marked").toBool());
    QVERIFY(!page.item("Y Offset").property("marked").toBool());
    page.type("X Offset", "8");
    QVERIFY(page.enabled("Apply Offset"));
    QVERIFY(!page.item("X Offset").property("marked").toBool());
}

void tst_SetupTabVideo::aRefusedChoiceStaysUntilARead()
{
    Video page;
    page.rig().gate().failAlways("zvtSetVideoPosition");
    page.rig().gate().failAlways("zvtSetVideoZoomFactor");
    page.choose("Position", "Offset");
    page.choose("Zoom Factor", "4X");
    QCOMPARE(page.shown("Position"), "Offset");
    QCOMPARE(page.shown("Zoom Factor"), "4X");
    QVERIFY(page.enabled("X Offset"));
    page.refresh();
    QCOMPARE(page.shown("Position"), "Same As FPA");
    QCOMPARE(page.shown("Zoom Factor"), "1X");
    QVERIFY(!page.enabled("X Offset"));
}

void tst_SetupTabVideo::aReadRestoresTheCamerasOffset()
{
    Video page;
    QVERIFY(page.set("video.offset", QVariantList{12, 16}));
    page.refresh();
    page.choose("Position", "Offset");
    QCOMPARE(page.text("X Offset"), "12");
    page.type("X Offset", "100");
    page.press(Qt::Key_Return);
    page.refresh();
    QCOMPARE(page.text("X Offset"), "12");
    QCOMPARE(page.editor().property("offset").toPoint(), QPoint(12, 16));
}

void tst_SetupTabVideo::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    for (const char *profile : {"everything", "low-cost"})
        QTest::newRow(profile) << profile;
}

void tst_SetupTabVideo::nothingIsClipped()
{
    QFETCH(const QString, profile);
    Video page(profile);
    for (const int width : {640, 900, 1400}) {
        page.page()->setWidth(width);
        page.settle();
        const QRectF place(0, 0, width, page.page()->height());
        const auto texts = page.shownTexts(*page.page());
        QVERIFY(texts.size() > 10);
        for (const QQuickItem *text : texts)
            QVERIFY2(page.fits(*text, place), qPrintable(text->property("text").toString()));
        const QRectF editor = page.editor().mapRectToScene(page.editor().boundingRect());
        const QRectF box = page.item("Position").mapRectToScene(page.item("Position").boundingRect());
        QVERIFY(place.contains(editor) && place.contains(box));
        // The rows are beside the editor in a window of any width.
        QVERIFY(box.left() - editor.right() > 12 && box.left() - editor.right() < 150);
    }
}

void tst_SetupTabVideo::tabWalksInReadingOrder()
{
    Video page;
    page.choose("Position", "Offset");
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    for (const char *name : {"Position", "Zoom Factor", "X Offset", "Y Offset", "Apply Offset"}) {
        page.press(Qt::Key_Tab);
        QVERIFY2(page.item(name).hasActiveFocus(), name);
    }
}

ZVT_TEST(tst_SetupTabVideo)
#include "tst_SetupTabVideo.moc"
