#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include <QScopeGuard>
#include <QThreadPool>

#include <algorithm>

#include "hlx/IInterface.h"

namespace
{

constexpr int statusPage = 0;

/// A section that is read: the first call of its read, and one of its controls.
struct ReadSection {
    const char *name;
    const char *firstCall;
    const char *control;
};

/// In the order of their reads. The section "Tools" reads nothing.
const QList<ReadSection> readSections{
    {"Camera Settings", "zvtGetBoardType", "Serial"},
    {"NUC Settings", "zvtGetNUCType", "Source"},
    {"Voltage Settings", "zvtListVoltages", "Reference"},
    {"TE Cooler Settings", "zvtMfgGetCoolerType", "Cooler Enabled"},
    {"Corvin Filter Settings", "zvtGetNumFilters", "Apply Filter IDs"},
    {"Miscellaneous Settings", "zvtGetVideoAGCDDEThreshold", "DDE Threshold"},
    {"ROIC Config", "zvtGetMfgOverrideRoicConfig", "Override Defaults"},
};

void addReadSections()
{
    QTest::addColumn<int>("section");
    for (qsizetype section = 0; section < readSections.size(); ++section)
        QTest::newRow(readSections.at(section).name) << static_cast<int>(section);
}

QStringList firstCalls()
{
    QStringList calls;
    for (const ReadSection &section : readSections)
        calls << QString::fromLatin1(section.firstCall);
    return calls;
}

/// The page of a camera with all sections.
struct WholePage : MfgPage {
    WholePage() : MfgPage("discrete-fov", showAllSections) { }

    /// From below, so that each header is in the window.
    void openAll()
    {
        for (qsizetype section = mfgSections().size() - 1; section > 0; --section)
            toggle(mfgSections().at(section));
    }
};

} // namespace

/// The Mfg page: its tab, its sections, and when they are read and enabled.
class tst_MfgTab : public Test
{
    Q_OBJECT

private slots:
    void theTabIsTheLast();
    void theTabNeedsTheManufacturingMode();
    void theBannerIsOnTop();
    void theSectionsAreInOrder();
    void sectionsNeedTheirEquipment_data();
    void sectionsNeedTheirEquipment();
    void theSettingsOfAnEmulatorNeedOne();
    void onlyTheFirstSectionIsOpenAtFirst();
    void theHeaderReadsBeforeItOpens_data();
    void theHeaderReadsBeforeItOpens();
    void theShownPageIsReadInOrder();
    void theConnectedPageIsRead();
    void collapsedSectionsAreNotRead();
    void theShownPageTakesTheFocus();
    void aConnectionLeavesTheFocus();
    void theRootReadsTheSections();

    void theBodyIsOffUntilItHasBeenRead_data() { addReadSections(); }
    void theBodyIsOffUntilItHasBeenRead();
    void theReadoutStaysOnDuringALaterRead();
    void theBodyIsOffWhileDisconnected();

    void aReadEndsWithoutThePage();
    void thePageOutlivesItsModel();
};

void tst_MfgTab::theTabIsTheLast()
{
    MfgPage page;
    QList<double> places;
    for (const char *tab : {"Status", "Setup", "Correction", "Video", "Advanced", "SSD", "Mfg"})
        places << page.item(tab).mapToScene({}).x();
    QVERIFY(std::ranges::is_sorted(places));
    QCOMPARE(page.item("Mfg").parentItem()->parentItem()->parentItem()->property("currentIndex").toInt(),
             MfgPage::tabIndex);
}

void tst_MfgTab::theBannerIsOnTop()
{
    MfgPage page;
    QVERIFY(!page.findText("No camera connected"));
    page.rig().camera().disconnect();
    page.settle();
    const QQuickItem *banner = page.findText("No camera connected");
    QVERIFY(banner);
    QVERIFY(banner->mapToScene({0, banner->height()}).y() <= page.item("Camera Settings").mapToScene({}).y());
    page.rig().camera().connect();
    page.settle();
    QVERIFY(!page.findText("No camera connected"));
}

void tst_MfgTab::theTabNeedsTheManufacturingMode()
{
    MfgPage page;
    QVERIFY(page.find("Camera Settings"));
    page.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    page.settle();
    QVERIFY(!page.find("Mfg"));
    // The page cannot stay on show.
    QVERIFY(!page.find("Camera Settings"));
    QVERIFY(page.find("Frame Size"));
    page.press(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    page.settle();
    QVERIFY(page.find("Mfg"));
}

void tst_MfgTab::theSectionsAreInOrder()
{
    WholePage page;
    QList<double> places;
    for (const QString &name : mfgSections())
        places << page.item(name).mapToScene({}).y();
    QVERIFY(std::ranges::is_sorted(places));
}

void tst_MfgTab::sectionsNeedTheirEquipment_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<bool>("present");
    QTest::newRow("hasTeCooler") << "TE Cooler Settings" << true;
    QTest::newRow("hasReplaceableFilters") << "Corvin Filter Settings" << false;
}

void tst_MfgTab::sectionsNeedTheirEquipment()
{
    QFETCH(const QString, section);
    QFETCH(const bool, present);
    const QString capability = QString::fromLatin1(QTest::currentDataTag());
    for (const bool has : {false, true}) {
        MfgPage page("discrete-fov", [&](emulator::Camera &camera) {
            showAllSections(camera);
            camera.changeMakeUp(capability, has);
        });
        for (const QString &name : mfgSections())
            QCOMPARE(page.find(name) != nullptr, name != section || has == present);
    }
}

void tst_MfgTab::theSettingsOfAnEmulatorNeedOne()
{
    WholePage page;
    QVERIFY(page.find("Emulator Settings"));
    const auto interface = hlx::cam::interfaces().GetInterfaceOfDevice(page.rig().controller()->device()->key());
    const auto restore = qScopeGuard([&interface] { interface->isEmulator = true; });
    page.rig().camera().disconnect();
    interface->isEmulator = false;
    page.rig().camera().connect();
    page.settle();
    for (const QString &name : mfgSections())
        QCOMPARE(page.find(name) != nullptr, name != "Emulator Settings");
}

void tst_MfgTab::onlyTheFirstSectionIsOpenAtFirst()
{
    WholePage page;
    QVERIFY(page.find(readSections.first().control));
    page.showTab(statusPage);
    const size_t mark = page.gate().mark();
    page.showTab(MfgPage::tabIndex);
    const QStringList calls = page.rig().callsSince(mark);
    QCOMPARE(calls.count("zvtGetBoardType"), 1);
    for (const ReadSection &section : readSections.mid(1)) {
        QVERIFY2(!page.find(section.control), section.control);
        QVERIFY2(!calls.contains(section.firstCall), section.firstCall);
    }
}

void tst_MfgTab::theHeaderReadsBeforeItOpens_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<bool>("byKeyboard");
    for (int section = 0; section < readSections.size(); ++section)
        for (const bool byKeyboard : {false, true})
            QTest::addRow("%s, by %s", readSections.at(section).name, byKeyboard ? "keyboard" : "mouse")
                << section << byKeyboard;
}

void tst_MfgTab::theHeaderReadsBeforeItOpens()
{
    QFETCH(const int, section);
    QFETCH(const bool, byKeyboard);
    const auto &[name, call, control] = readSections.at(section);
    WholePage page;
    const auto toggle = [&] { page.use(name, byKeyboard); };
    if (section == 0)
        QCOMPARE(page.calls(call, toggle), 0);
    QVERIFY(!page.find(control));
    page.gate().hold(call);
    toggle();
    QVERIFY(page.gate().waitHeld(call));
    QVERIFY(page.item(name).property("sectionLoading").toBool());
    page.gate().release("*");
    page.settle();
    QVERIFY(page.find(control));
    QVERIFY(!page.item(name).property("sectionLoading").toBool());
    QCOMPARE(page.calls(call, [&] { page.refresh(name); }), 1);
    QCOMPARE(page.calls(call, toggle), 0);
    QVERIFY(!page.find(control));
}

// On one thread the reads run in the order of their starts.
void tst_MfgTab::theShownPageIsReadInOrder()
{
    WholePage page;
    page.openAll();
    page.showTab(statusPage);
    QThreadPool &pool = *QThreadPool::globalInstance();
    const auto restore = qScopeGuard([&pool, threads = pool.maxThreadCount()] { pool.setMaxThreadCount(threads); });
    pool.setMaxThreadCount(1);
    const size_t mark = page.gate().mark();
    page.showTab(MfgPage::tabIndex);
    QStringList calls = page.rig().callsSince(mark);
    calls.removeIf([](const QString &call) { return !firstCalls().contains(call); });
    QCOMPARE(calls, firstCalls());
}

void tst_MfgTab::theConnectedPageIsRead()
{
    WholePage page;
    page.openAll();
    page.rig().camera().disconnect();
    page.settle();
    const size_t mark = page.gate().mark();
    page.rig().camera().connect();
    page.settle();
    const QStringList calls = page.rig().callsSince(mark);
    for (const QString &call : firstCalls())
        QCOMPARE(calls.count(call), 1);
}

void tst_MfgTab::collapsedSectionsAreNotRead()
{
    WholePage page;
    page.toggle("Camera Settings");
    page.showTab(statusPage);
    const size_t mark = page.gate().mark();
    page.showTab(MfgPage::tabIndex);
    const QStringList calls = page.rig().callsSince(mark);
    for (const QString &call : firstCalls())
        QVERIFY2(!calls.contains(call), qPrintable(call));
}

void tst_MfgTab::theShownPageTakesTheFocus()
{
    MfgPage page;
    page.showTab(statusPage);
    page.page()->forceActiveFocus();
    page.showTab(MfgPage::tabIndex);
    const QQuickItem *holder = page.window().activeFocusItem();
    QVERIFY(holder && holder->isAncestorOf(&page.item("Serial")) && holder != page.page());
}

// The operator may be using a control beside the page.
void tst_MfgTab::aConnectionLeavesTheFocus()
{
    MfgPage page;
    QQuickItem &tab = page.item("Mfg");
    page.rig().camera().disconnect();
    page.settle();
    tab.forceActiveFocus(Qt::MouseFocusReason);
    QCOMPARE(page.calls("zvtGetBoardType", [&] { page.rig().camera().connect(); }), 1);
    QCOMPARE(page.window().activeFocusItem(), &tab);
}

// The page reads the readout circuit itself.
void tst_MfgTab::theRootReadsTheSections()
{
    WholePage page;
    page.openAll();
    const size_t mark = page.gate().mark();
    QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
    page.settle();
    const QStringList calls = page.rig().callsSince(mark);
    for (const QString &call : firstCalls())
        QCOMPARE(calls.contains(call), call != "zvtGetMfgOverrideRoicConfig");
}

// Enabled controls

void tst_MfgTab::theBodyIsOffUntilItHasBeenRead()
{
    QFETCH(const int, section);
    const auto &[name, call, control] = readSections.at(section);
    WholePage page;
    page.toggle("Camera Settings");
    const auto startRead = [&](const QString &button) {
        page.gate().hold(call);
        page.click(button);
        QVERIFY(page.gate().waitHeld(call));
        page.awaitFrame();
    };
    const auto endRead = [&] {
        page.gate().release("*");
        page.settle();
        QVERIFY(page.enabled(control));
    };
    startRead(name);
    // The rows of the voltages are not known yet.
    const QQuickItem *shown = page.find(control);
    QCOMPARE(shown == nullptr, QLatin1String(control) == "Reference");
    QVERIFY(!shown || !shown->isEnabled());
    endRead();
    startRead("Refresh " + QString(name));
    QCOMPARE(page.enabled(control), QString(name) == "ROIC Config");
    endRead();
}

void tst_MfgTab::theReadoutStaysOnDuringALaterRead()
{
    MfgPage page;
    page.openOnly("ROIC Config");
    page.gate().hold("zvtGetClockFrequency");
    page.click("Refresh ROIC Config");
    QVERIFY(page.gate().waitHeld("zvtGetClockFrequency"));
    QVERIFY(page.enabled("Override Defaults"));
    page.gate().release("*");
    page.settle();
}

void tst_MfgTab::theBodyIsOffWhileDisconnected()
{
    WholePage page;
    page.openAll();
    QStringList controls{"Download", "Record Start"};
    for (const ReadSection &section : readSections)
        controls << QString::fromLatin1(section.control);
    page.rig().camera().disconnect();
    page.settle();
    for (const QString &name : controls)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    page.rig().camera().connect();
    page.settle();
    for (const QString &name : controls)
        QVERIFY2(page.enabled(name), qPrintable(name));
}

// The operator leaves the manufacturing mode in the middle of a read, of an edit and with a list open.
void tst_MfgTab::aReadEndsWithoutThePage()
{
    MfgPage page;
    page.toggle("NUC Settings");
    page.SetupPage::type("A/D Min", "12");
    page.click("Type");
    QVERIFY(page.item("Type").property("listOpen").toBool());
    page.gate().hold("zvtGetBoardType");
    page.click("Refresh Camera Settings");
    QMetaObject::invokeMethod(page.identity(), "refresh");
    QVERIFY(page.gate().waitHeld("zvtGetBoardType"));
    const size_t mark = page.gate().mark();
    page.cameraModel()->setProperty("manufacturingMode", false);
    page.awaitFrame();
    QVERIFY(!page.find("Mfg") && !page.find("Camera Settings"));
    page.gate().release("*");
    page.settle();
    QVERIFY(!page.find("Camera Settings") && !page.findText("Update Offset"));
    QCOMPARE(page.commands(mark), QStringList());
    page.cameraModel()->setProperty("manufacturingMode", true);
    page.settle();
    QCOMPARE(page.calls("zvtGetNUCType", [&] { page.click("Mfg"); }), 1);
    QVERIFY(page.enabled("A/D Min"));
    QVERIFY(page.enabled("Serial"));
}

void tst_MfgTab::thePageOutlivesItsModel()
{
    WholePage page;
    page.openAll();
    page.deleteModel();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
}

ZVT_TEST(tst_MfgTab)
#include "tst_MfgTab.moc"
