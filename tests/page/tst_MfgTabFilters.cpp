#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"

namespace
{

const QString section = QStringLiteral("Corvin Filter Settings");
const QString busyPanel = QStringLiteral("Loading Filters...");

QString field(int slot) { return QStringLiteral("Filter ID of Slot %1").arg(slot); }
QString box(int slot) { return QStringLiteral("Filter Name of Slot %1").arg(slot); }
QString button(int slot) { return QStringLiteral("Select Slot %1").arg(slot); }

/// The page of a camera whose wheel has three filters: 1, 4 and 21.
struct FilterPage : MfgPage {
    explicit FilterPage(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("discrete-fov"))
        : MfgPage(profile, [&](emulator::Camera &camera) {
              camera.otherClient().set("filters.current", 4);
              prepare(camera);
          })
    {
        openOnly(section);
    }

    QObject *wheel() const { return tabModel("mfgCorvinFilterSettingsModel"); }
    bool isMarked(int slot) const
    {
        return item(field(slot)).parentItem()->findChild<QQuickItem *>("filterMark")->opacity() > 0;
    }
    bool isBusy(int slot) const
    {
        return item(field(slot)).parentItem()->findChild<QQuickItem *>("filterBusy") != nullptr;
    }
    int id(int slot) const { return item(field(slot)).property("text").toInt(); }
};

} // namespace

/// The section "Corvin Filter Settings" of the Mfg page.
class tst_MfgTabFilters : public Test
{
    Q_OBJECT

private slots:
    void eachSlotHasARow();
    void aWheelOfFourHasFourRows();
    void withoutAWheelThereAreNoRows();
    void anUnreadWheelIsNotCalledEmpty();
    void thePanelIsShownDuringARead();
    void anIdIsStoredAtEachKey();
    void theFirstAndTheLastIdAreStored();
    void wrongIdsAreNotStored_data();
    void wrongIdsAreNotStored();
    void aNameIsChosen_data();
    void aNameIsChosen();
    void idsAreApplied_data();
    void idsAreApplied();
    void aReadDiscardsEdits();
    void theWheelTurns_data();
    void theWheelTurns();
    void theEditedIdIsSelected();
    void anUnknownFilterKeepsTheMark();
    void longNamesFit();
};

void tst_MfgTabFilters::eachSlotHasARow()
{
    FilterPage page;
    for (const char *heading : {"Slot", "Filter ID", "Filter Name", "Actions"})
        QVERIFY2(page.findText(heading), heading);
    const QStringList ids{"1", "4", "21"};
    const QStringList names{"Open", "ND 0.3", "BP 3.30 um"};
    for (int slot = 0; slot < 3; ++slot) {
        QCOMPARE(page.text(field(slot)), ids.at(slot));
        QCOMPARE(page.shown(box(slot)), names.at(slot));
        QCOMPARE(page.rowsOf(box(slot)).size(), 64);
        QCOMPARE(page.isMarked(slot), slot == 1);
        QCOMPARE(page.find(button(slot)) != nullptr, slot != 1);
    }
    QVERIFY(!page.find(field(3)));
    QVERIFY(page.findText("Selected"));
    QVERIFY(!page.findText("No filters available."));
}

void tst_MfgTabFilters::aWheelOfFourHasFourRows()
{
    FilterPage page(
        [](emulator::Camera &camera) { camera.changeMakeUp(QStringLiteral("hasReplaceableFilters"), false); },
        "everything");
    QVERIFY(page.find(field(3)));
    QVERIFY(!page.find(field(4)));
}

void tst_MfgTabFilters::withoutAWheelThereAreNoRows()
{
    FilterPage page([](emulator::Camera &) {}, "board-6");
    QVERIFY(!page.find(field(0)));
    QVERIFY(page.find("Apply Filter IDs"));
    QVERIFY(page.findText("No filters available."));
}

void tst_MfgTabFilters::anUnreadWheelIsNotCalledEmpty()
{
    MfgPage page("board-6");
    page.rig().camera().disconnect();
    page.settle();
    page.openOnly(section);
    QVERIFY(page.find("Apply Filter IDs"));
    QVERIFY(!page.findText("No filters available."));
    page.rig().camera().connect();
    page.settle();
    QVERIFY(page.findText("No filters available."));
}

void tst_MfgTabFilters::thePanelIsShownDuringARead()
{
    FilterPage page;
    QVERIFY(!page.findText(busyPanel));
    const double place = page.item("Apply Filter IDs").mapToScene({}).y();
    page.gate().hold("zvtGetNumFilters");
    page.click("Refresh " + section);
    QVERIFY(page.gate().waitHeld("zvtGetNumFilters"));
    page.awaitFrame();
    QVERIFY(page.findText(busyPanel));
    QVERIFY(!page.find(field(0)));
    QVERIFY(!page.enabled("Apply Filter IDs"));
    QCOMPARE(page.item("Apply Filter IDs").mapToScene({}).y(), place);
    page.gate().release("*");
    page.settle();
    QVERIFY(!page.findText(busyPanel));
    QVERIFY(page.find(field(0)));
}

void tst_MfgTabFilters::anIdIsStoredAtEachKey()
{
    FilterPage page;
    QVERIFY(!page.primary("Apply Filter IDs"));
    QCOMPARE(page.commandsOf([&] {
        page.SetupPage::type(field(0), "2");
        QCOMPARE(page.shown(box(0)), "Blocked");
        page.PageDriver::type("2");
        QCOMPARE(page.shown(box(0)), "BP 3.42 um");
    }),
             QStringList());
    QVERIFY(page.primary("Apply Filter IDs"));
}

void tst_MfgTabFilters::theFirstAndTheLastIdAreStored()
{
    FilterPage page;
    page.SetupPage::type(field(0), "63");
    page.SetupPage::type(field(2), "0");
    QVERIFY(page.fault(field(0)).isEmpty() && page.fault(field(2)).isEmpty());
    QCOMPARE(page.commandsOf([&] { page.click("Apply Filter IDs"); }),
             QStringList({"zvtSetFilterIDInSlot 0, 63", "zvtSetFilterIDInSlot 1, 4", "zvtSetFilterIDInSlot 2, 0"}));
}

void tst_MfgTabFilters::wrongIdsAreNotStored_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("64") << "64"
                        << "ND 1.0";
    QTest::newRow("-1") << "-1"
                        << "Open";
    QTest::newRow("a letter") << "x"
                              << "Open";
    QTest::newRow("nothing") << ""
                             << "Open";
}

// Typing 64 stores the 6.
void tst_MfgTabFilters::wrongIdsAreNotStored()
{
    QFETCH(const QString, text);
    QFETCH(const QString, shown);
    FilterPage page;
    page.SetupPage::type(field(0), text);
    if (text.isEmpty())
        page.press(Qt::Key_Delete);
    QVERIFY(!page.fault(field(0)).isEmpty());
    QCOMPARE(page.shown(box(0)), shown);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text(field(0)), text == "64" ? "6" : "1");
}

void tst_MfgTabFilters::aNameIsChosen_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_MfgTabFilters::aNameIsChosen()
{
    QFETCH(const bool, byKeyboard);
    FilterPage page;
    QCOMPARE(page.commandsOf([&] {
        if (byKeyboard)
            page.step(box(2), Qt::Key_Up);
        else
            page.choose(box(2), "BP 3.00 um");
    }),
             QStringList());
    QCOMPARE(page.text(field(2)), "20");
    QVERIFY(page.primary("Apply Filter IDs"));
}

void tst_MfgTabFilters::idsAreApplied_data() { aNameIsChosen_data(); }

void tst_MfgTabFilters::idsAreApplied()
{
    QFETCH(const bool, byKeyboard);
    FilterPage page;
    page.enterNumber(field(0), "7");
    const size_t mark = page.gate().mark();
    page.use("Apply Filter IDs", byKeyboard);
    page.settle();
    QCOMPARE(page.commands(mark),
             QStringList({"zvtSetFilterIDInSlot 0, 7", "zvtSetFilterIDInSlot 1, 4", "zvtSetFilterIDInSlot 2, 21"}));
    // Nothing is read after it.
    QCOMPARE(page.rig().callsSince(mark).size(), 3);
    QVERIFY(!page.primary("Apply Filter IDs"));
    page.refresh(section);
    QCOMPARE(page.text(field(0)), "7");
}

void tst_MfgTabFilters::aReadDiscardsEdits()
{
    FilterPage page;
    page.enterNumber(field(0), "7");
    page.refresh(section);
    QCOMPARE(page.text(field(0)), "1");
    QVERIFY(!page.primary("Apply Filter IDs"));
}

void tst_MfgTabFilters::theWheelTurns_data() { aNameIsChosen_data(); }

void tst_MfgTabFilters::theWheelTurns()
{
    QFETCH(const bool, byKeyboard);
    FilterPage page;
    page.gate().hold("zvtSetCurrentFilterID");
    const size_t mark = page.gate().mark();
    page.use(button(2), byKeyboard);
    QVERIFY(page.gate().waitHeld("zvtSetCurrentFilterID"));
    page.awaitFrame();
    // The mark moves before the wheel.
    QVERIFY(page.isMarked(2) && !page.isMarked(1));
    QVERIFY(page.isBusy(2) && !page.isBusy(1));
    QVERIFY(!page.findText("Selected"));
    for (const int slot : {0, 1})
        QVERIFY(!page.enabled(button(slot)));
    page.gate().release("*");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList("zvtSetCurrentFilterID 21"));
    QVERIFY(!page.isBusy(2));
    QVERIFY(page.findText("Selected"));
    QVERIFY(page.enabled(button(1)));
}

void tst_MfgTabFilters::theEditedIdIsSelected()
{
    FilterPage page;
    page.enterNumber(field(0), "9");
    QCOMPARE(page.commandsOf([&] { page.click(button(0)); }), QStringList("zvtSetCurrentFilterID 9"));
    QVERIFY(page.isMarked(0));
}

void tst_MfgTabFilters::anUnknownFilterKeepsTheMark()
{
    FilterPage page;
    page.gate().script("zvtGetCurrentFilterID", 50);
    page.refresh(section);
    QVERIFY(page.isMarked(1));
}

void tst_MfgTabFilters::longNamesFit()
{
    FilterPage page;
    page.gate().script("zvtGetFilterNameEx", QString(256, u'M'));
    page.refresh(section);
    for (const int width : {640, 900}) {
        page.window().resize(width, 900);
        page.page()->setSize(QSizeF(width, 900));
        page.settle();
        const QQuickItem &names = page.item(box(0));
        QVERIFY(QRectF(0, 0, width, 900).contains(names.mapRectToScene(names.boundingRect())));
        QVERIFY(page.item(box(0)).mapToScene({}).x() < page.item(button(0)).mapToScene({}).x());
    }
}

ZVT_TEST(tst_MfgTabFilters)
#include "tst_MfgTabFilters.moc"
