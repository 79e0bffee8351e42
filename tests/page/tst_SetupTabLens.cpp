#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

/// The rows of the lens with choices: cover, lens states, field of view, auto focus region.
class tst_SetupTabLens : public Test
{
    Q_OBJECT

private slots:
    void rowsFollowTheMakeUp_data();
    void rowsFollowTheMakeUp();
    void coverIsChosen();
    void unknownCoverIsTold();
    void fieldOfViewIsChosenAndBringsItsLimits();
    void fieldOfViewOfAnotherClientIsLearnt();
    void fieldOfViewIsNotAskedOfAnotherLens();
    void fieldOfViewIsNotAskedForAHiddenPage();
    void choosingALensStateLoadsIt();
    void changedFieldOfViewMarksTheLensState();
    void readTakesTheMarkOfTheLensStateAway();
    void lensStateButtonsFollowTheList_data();
    void lensStateButtonsFollowTheList();
    void lensStateIsAdded();
    void lensStateIsRenamed();
    void lensStateIsSavedUnderItsBareName();
    void lensStateIsReloaded();
    void lensStateIsDeleted();
    void athermalizationIsSwitched();
    void autoFocusRuns();
    void autoFocusRegion_data();
    void autoFocusRegion();
    void doubleClickOnAChoiceChangesNothing_data();
    void doubleClickOnAChoiceChangesNothing();
    void firstShowingIsLaidOut_data();
    void firstShowingIsLaidOut();
    void longNameOfALensStateIsTold();
    void controlsStandInOneColumn();

private:
    static QList<QQuickItem *> visibleItems(const PageDriver &page);
    static void doubleClick(SetupPage &page, QPoint place);
    static void addState(SetupPage &page, const QString &name);
};

void tst_SetupTabLens::addState(SetupPage &page, const QString &name)
{
    QMetaObject::invokeMethod(page.tab(), "addLensState", Q_ARG(QString, name));
    page.settle();
}

void tst_SetupTabLens::rowsFollowTheMakeUp_data()
{
    QTest::addColumn<QString>("capability");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("cover") << "hasLensCover" << QStringList{"Lens Cover"};
    QTest::newRow("states") << "hasLensStatesFunctionality"
                            << QStringList{"Lens States", "Add New Lens State Using Current Settings"};
    QTest::newRow("zoom") << "hasContinuousOpticalZoom" << QStringList{"Optical Zoom", "Zoom Position", "Wide"};
    QTest::newRow("focus") << "hasFocus" << QStringList{"Focus",
                                                        "Focus Position",
                                                        "Auto Focus",
                                                        "Position",
                                                        "Size (Pixels)",
                                                        "Show on Video Output",
                                                        "Enable Athermalization"};
    QTest::newRow("distance") << "hasFocusToDistance" << QStringList{"Distance", "Range", "Focus To Distance"};
}

void tst_SetupTabLens::rowsFollowTheMakeUp()
{
    QFETCH(const QString, capability);
    QFETCH(const QStringList, names);
    const SetupPage with;
    const SetupPage without("everything",
                            [&capability](emulator::Camera &camera) { camera.changeMakeUp(capability, false); });
    for (const QString &name : names) {
        QVERIFY2(with.find(name), qPrintable(name));
        QVERIFY2(!without.find(name), qPrintable(name));
    }
    const SetupPage bare("bare");
    QVERIFY(!bare.findText("Lens Control"));
    QVERIFY(with.findText("Lens Control"));
}

void tst_SetupTabLens::coverIsChosen()
{
    SetupPage page;
    QCOMPARE(page.shown("Lens Cover"), "Open");
    QCOMPARE(page.commandsOf([&page] { page.choose("Lens Cover", "Closed"); }), QStringList{"zvtSetLensCoverState 1"});
    QCOMPARE(page.shown("Lens Cover"), "Closed");
    // If the camera refuses the move, the old state is shown.
    page.rig().gate().failAlways("zvtSetLensCoverState");
    page.choose("Lens Cover", "Open");
    QCOMPARE(page.shown("Lens Cover"), "Closed");
}

void tst_SetupTabLens::unknownCoverIsTold()
{
    SetupPage page("speed-moves");
    QCOMPARE(page.shown("Lens Cover"), "Unknown");
    const QString mark = QStringLiteral("The camera can not tell where the lens cover is");
    QCOMPARE(page.text(mark), QString(QChar(0xf06a)));
    page.choose("Lens Cover", "Open");
    QCOMPARE(page.shown("Lens Cover"), "Open");
    QVERIFY(!page.find(mark));
}

void tst_SetupTabLens::fieldOfViewIsChosenAndBringsItsLimits()
{
    SetupPage page("discrete-fov");
    QCOMPARE(page.shown("Field of View"), "Narrow");
    const double before = page.item("Focus Position").property("to").toDouble();
    QCOMPARE(page.commandsOf([&page] { page.choose("Field of View", "Wide"); }), QStringList{"zvtSetFOV 1"});
    QCOMPARE(page.shown("Field of View"), "Wide");
    QVERIFY(page.item("Focus Position").property("to").toDouble() != before);
}

void tst_SetupTabLens::fieldOfViewOfAnotherClientIsLearnt()
{
    SetupPage page("discrete-fov");
    addState(page, "Runway");
    QVERIFY(page.rig().camera().otherClient().set("fieldOfView.selected", 1));
    QMetaObject::invokeMethod(page.tab(), "timeoutEventQueueTimer");
    page.settle();
    QCOMPARE(page.shown("Field of View"), "Wide");
    // The read of the field of view does not change the list of lens states.
    QCOMPARE(page.shown("Lens States"), "Runway");
}

void tst_SetupTabLens::fieldOfViewIsNotAskedOfAnotherLens()
{
    SetupPage page;
    QVERIFY(!page.rig().callsSince(0).contains("zvtGetFOV"));
}

// The read blocks the page, and also reads the focus limits.
void tst_SetupTabLens::fieldOfViewIsNotAskedForAHiddenPage()
{
    PageDriver driver({.profile = "discrete-fov", .connected = false, .size = {900, 1700}});
    QTRY_VERIFY(driver.object("lockTimer"));
    driver.rig().camera().connect();
    driver.settle();
    QVERIFY(!driver.rig().callsSince(0).contains("zvtGetFOV"));

    SetupPage page("discrete-fov");
    page.showTab(0);
    const size_t mark = page.rig().gate().mark();
    page.tab()->setProperty("selectedDiscontinuousFieldOfViewIndex", 1);
    page.settle();
    QCOMPARE(page.rig().callsSince(mark), QStringList{"zvtSetFOV"});
    page.showTab(1);
    page.settle();
    QCOMPARE(page.shown("Field of View"), "Wide");
}

void tst_SetupTabLens::choosingALensStateLoadsIt()
{
    SetupPage page;
    QCOMPARE(page.shown("Lens States"), "No lens states");
    addState(page, "Runway");
    addState(page, "Tower");
    QCOMPARE(page.shown("Lens States"), "Tower");
    QCOMPARE(page.commandsOf([&page] {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Trying to load lens state: .*Runway"));
        page.choose("Lens States", "Runway");
    }),
             QStringList{"zvtLoadLensState \"Runway\""});
    QCOMPARE(page.shown("Lens States"), "Runway");
}

void tst_SetupTabLens::changedFieldOfViewMarksTheLensState()
{
    SetupPage page("discrete-fov");
    addState(page, "Runway");
    page.rig().gate().hold("zvtGetFocusRange");
    page.tab()->setProperty("selectedDiscontinuousFieldOfViewIndex", 1);
    QCOMPARE(page.shown("Lens States"), "Runway*");
    QVERIFY(!page.enabled("Rename Lens State"));
    QVERIFY(page.enabled("Save Changes To Lens State"));
    QVERIFY(page.enabled("Reload Lens State (Discard Changes)"));
    QVERIFY(!page.enabled("Delete Lens State"));
    QVERIFY(page.enabled("Add New Lens State Using Current Settings"));
}

void tst_SetupTabLens::readTakesTheMarkOfTheLensStateAway()
{
    SetupPage page("discrete-fov");
    addState(page, "Runway");
    page.choose("Field of View", "Wide");
    QCOMPARE(page.shown("Lens States"), "Runway*");
    page.click("Refresh General Setup");
    page.settle();
    QCOMPARE(page.shown("Lens States"), "Runway");
    QVERIFY(page.enabled("Rename Lens State"));
    QVERIFY(page.enabled("Delete Lens State"));
}

void tst_SetupTabLens::lensStateButtonsFollowTheList_data()
{
    QTest::addColumn<bool>("any");
    QTest::newRow("empty list") << false;
    QTest::newRow("one state") << true;
}

void tst_SetupTabLens::lensStateButtonsFollowTheList()
{
    QFETCH(const bool, any);
    SetupPage page;
    if (any)
        addState(page, "Runway");
    QVERIFY(page.enabled("Add New Lens State Using Current Settings"));
    for (const QString name : {"Rename Lens State", "Save Changes To Lens State", "Reload Lens State (Discard Changes)",
                               "Delete Lens State"})
        QCOMPARE(page.enabled(name), any);
    // The buttons are in this order from left to right.
    int x = 0;
    for (const QString name :
         {"Lens States", "Add New Lens State Using Current Settings", "Rename Lens State", "Save Changes To Lens State",
          "Reload Lens State (Discard Changes)", "Delete Lens State"}) {
        QVERIFY2(page.middle(name).x() > x, qPrintable(name));
        x = page.middle(name).x();
    }
}

void tst_SetupTabLens::lensStateIsAdded()
{
    SetupPage page;
    QCOMPARE(page.commandsOf([&page] {
        page.click("Add New Lens State Using Current Settings");
        QTRY_VERIFY(page.find("Name") && page.find("Name")->hasActiveFocus());
        for (const char letter : QByteArray("Runway"))
            QTest::keyClick(&page.window(), letter);
        page.press(Qt::Key_Return);
    }),
             (QStringList{"zvtSaveLensStateAs \"Runway\"", "zvtLoadLensState \"Runway\""}));
    QCOMPARE(page.shown("Lens States"), "Runway");
}

void tst_SetupTabLens::lensStateIsRenamed()
{
    SetupPage page;
    addState(page, "Runway");
    QCOMPARE(page.commandsOf([&page] {
                     page.click("Rename Lens State");
                     QTRY_VERIFY(page.find("Name") && page.find("Name")->hasActiveFocus());
                     QCOMPARE(page.text("Name"), "Runway");
                     page.type("Name", "2");
                     page.press(Qt::Key_Return);
                 })
                 .size(),
             1);
    QVERIFY(page.shown("Lens States").contains('2'));
}

void tst_SetupTabLens::lensStateIsSavedUnderItsBareName()
{
    SetupPage page("discrete-fov");
    addState(page, "Runway");
    page.rig().gate().hold("zvtGetFocusRange");
    page.tab()->setProperty("selectedDiscontinuousFieldOfViewIndex", 1);
    QCOMPARE(page.shown("Lens States"), "Runway*");
    const size_t mark = page.rig().gate().mark();
    page.click("Save Changes To Lens State");
    QCOMPARE(page.commands(mark), QStringList{"zvtSaveLensStateAs \"Runway\""});
    QCOMPARE(page.shown("Lens States"), "Runway");
}

void tst_SetupTabLens::lensStateIsReloaded()
{
    SetupPage page;
    addState(page, "Runway");
    QCOMPARE(page.commandsOf([&page] {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Trying to load lens state: .*Runway"));
        page.click("Reload Lens State (Discard Changes)");
    }),
             QStringList{"zvtLoadLensState \"Runway\""});
}

void tst_SetupTabLens::lensStateIsDeleted()
{
    SetupPage page;
    addState(page, "Runway");
    QCOMPARE(page.commandsOf([&page] {
        page.click("Delete Lens State");
        QTRY_VERIFY(page.findText("Delete this lens state?"));
        QVERIFY(page.findText("Runway"));
        page.settle();
        page.click("Delete");
    }),
             QStringList{"zvtDeleteLensState \"Runway\""});
    QCOMPARE(page.shown("Lens States"), "No lens states");
}

void tst_SetupTabLens::athermalizationIsSwitched()
{
    SetupPage page;
    QCOMPARE(page.commandsOf([&page] { page.click("Enable Athermalization"); }),
             QStringList{"zvtSetLensAthermalizationEnabled true"});
    QVERIFY(page.item("Enable Athermalization").property("checked").toBool());
    const SetupPage without("everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetLensAthermalizationEnabledAvailable", 0);
    });
    QVERIFY(!without.find("Enable Athermalization"));
}

void tst_SetupTabLens::autoFocusRuns()
{
    SetupPage page;
    page.rig().gate().hold("zvtAutoFocusFast");
    const size_t mark = page.rig().gate().mark();
    page.click("Auto Focus");
    QVERIFY(page.rig().gate().waitHeld("zvtAutoFocusFast"));
    QVERIFY(!page.enabled("Auto Focus"));
    QVERIFY(!page.enabled("Wide"));
    page.rig().gate().release("*");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList{"zvtAutoFocusFast 1"});
    QVERIFY(page.enabled("Auto Focus"));
}

void tst_SetupTabLens::autoFocusRegion_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("size") << "Size (Pixels)" << QStringList{"XS (16x16)",  "S (32x32)",    "M (64x64)",
                                                            "L (128x128)", "XL (256x256)", "XXL (512x512)"}
                          << "XXL (512x512)" << QStringList{"zvtSetAutoFocusROISize 512"};
    QTest::newRow("position") << "Position"
                              << QStringList{"Center", "Top Left", "Top Right", "Bottom Left", "Bottom Right"}
                              << "Bottom Left" << QStringList{"zvtSetAutoFocusROIPosition 3"};
    QTest::newRow("show") << "Show on Video Output" << QStringList{"Always", "Only When Focusing", "Never"} << "Always"
                          << QStringList{"zvtSetVideoOverlayShowFocusROI true",
                                         "zvtSetAutoFocusROIShowWhenFocusing false"};
}

void tst_SetupTabLens::autoFocusRegion()
{
    QFETCH(const QString, box);
    QFETCH(const QStringList, rows);
    QFETCH(const QString, row);
    QFETCH(const QStringList, commands);
    SetupPage page;
    QCOMPARE(page.item(box).property("model").toStringList(), rows);
    QCOMPARE(page.commandsOf([&] { page.choose(box, row); }), commands);
    QCOMPARE(page.shown(box), row);
}

QList<QQuickItem *> tst_SetupTabLens::visibleItems(const PageDriver &page)
{
    const QQuickItem *header = page.find("General Setup");
    QList<QQuickItem *> items = header->parentItem()->findChildren<QQuickItem *>();
    items.removeIf([](const QQuickItem *item) { return item->window() == nullptr || !item->isVisible(); });
    return items;
}

// The second press comes within the double-click time, after the effect of the first click is visible.
void tst_SetupTabLens::doubleClick(SetupPage &page, QPoint place)
{
    for (const auto type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QTest::lastMouseTimestamp += 50;
        qt_handleMouseEvent(&page.window(), place, page.window().mapToGlobal(place), buttons, Qt::LeftButton, type,
                            Qt::NoModifier, QTest::lastMouseTimestamp);
        page.awaitFrame();
    }
}

void tst_SetupTabLens::doubleClickOnAChoiceChangesNothing_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("everything") << "everything" << QStringList{"Sequencing Mode", "Lens Cover", "Lens States",
                                                               "Size (Pixels)",   "Position",   "Show on Video Output",
                                                               "FPA Gain",        "Image Size", "GigE Preset",
                                                               "Video Preset"};
    QTest::newRow("discrete-fov") << "discrete-fov" << QStringList{"Lens States", "Field of View"};
    QTest::newRow("low-cost") << "low-cost" << QStringList{"Sync Source"};
}

void tst_SetupTabLens::doubleClickOnAChoiceChangesNothing()
{
    QFETCH(const QString, profile);
    QFETCH(const QStringList, expected);
    SetupPage page(profile);
    if (expected.contains("Lens States")) {
        addState(page, "Runway");
        addState(page, "Tower");
    }
    page.general()->setProperty("sequencingMode", 2);
    page.settle();
    for (const QString &name : expected) {
        const int index = page.item(name).property("currentIndex").toInt();
        const QStringList commands = page.commandsOf([&] {
            doubleClick(page, page.middle(name));
            page.settle();
            if (page.item(name).property("listOpen").toBool())
                page.press(Qt::Key_Escape);
        });
        QCOMPARE(commands, QStringList());
        QCOMPARE(page.item(name).property("currentIndex").toInt(), index);
    }
}

void tst_SetupTabLens::firstShowingIsLaidOut_data()
{
    QTest::addColumn<QString>("profile");
    for (const char *profile : {"bare", "board-6", "discrete-fov", "edge-values", "everything", "irig", "low-cost",
                                "speed-moves", "te-cooler", "two-color"})
        QTest::newRow(profile) << profile;
}

// The rows change while the page is hidden, when the camera is connected.
void tst_SetupTabLens::firstShowingIsLaidOut()
{
    QFETCH(const QString, profile);
    PageDriver driver({.profile = profile, .connected = false, .size = {900, 1700}});
    // The contents of the page exist before it is shown.
    QTRY_VERIFY(driver.object("lockTimer"));
    driver.rig().camera().connect();
    driver.settle();
    driver.click("Setup");
    driver.settle();
    driver.settle();
    const QList<QQuickItem *> items = visibleItems(driver);
    QList<QRectF> before;
    for (const QQuickItem *item : items)
        before << item->mapRectToScene(item->boundingRect());
    driver.page()->setWidth(899);
    driver.settle();
    QCOMPARE(visibleItems(driver), items);
    QVERIFY(items.contains(driver.find("Reduce Noise")));
    for (qsizetype i = 0; i < items.size(); ++i) {
        const QRectF after = items.at(i)->mapRectToScene(items.at(i)->boundingRect());
        const QRectF &first = before.at(i);
        const double moved = std::max({std::abs(after.left() - first.left()), std::abs(after.right() - first.right()),
                                       std::abs(after.top() - first.top()), std::abs(after.bottom() - first.bottom())});
        QVERIFY2(moved <= 1,
                 qPrintable(QStringLiteral("%1 \"%2\" %3")
                                .arg(items.at(i)->metaObject()->className(), items.at(i)->property("text").toString())
                                .arg(moved)));
    }
}

void tst_SetupTabLens::controlsStandInOneColumn()
{
    const SetupPage page("discrete-fov");
    const double left = page.item("Image Size").mapToScene({0, 0}).x();
    for (const QString name : {"Lens Cover", "Lens States", "Field of View", "Enable Athermalization", "Focus Position",
                               "Farthest", "Auto Focus", "Size (Pixels)", "Distance"})
        QVERIFY2(qFuzzyCompare(page.item(name).mapToScene({0, 0}).x(), left), qPrintable(name));
}

void tst_SetupTabLens::longNameOfALensStateIsTold()
{
    SetupPage page;
    const QString name(31, u'W');
    QMetaObject::invokeMethod(page.tab(), "addLensState", Q_ARG(QString, name));
    page.settle();
    // The offscreen platform does not enable hover effects itself.
    page.item("Lens States").setProperty("hoverEnabled", true);
    QTest::mouseMove(&page.window(), page.middle("Lens States"));
    QTRY_COMPARE(page.hint(), name);
}

ZVT_TEST(tst_SetupTabLens)
#include "tst_SetupTabLens.moc"
