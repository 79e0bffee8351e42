#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

#include <algorithm>

namespace
{

constexpr int statusPage = 0;
constexpr int advancedPage = 4;

/// The first call of the read of each section.
const QStringList firstCalls{"zvtGetDigitalGain", "zvtGetGlobalOffsetVoltage", "zvtGetSaturationCountThreshold",
                             "zvtGetLockinCoupling", "zvtGetIntegrateOutPolarity"};

/// A control of each section.
const QStringList controls{"Preset 0 Digital Gain", "Detector Bias (mv)", "Preset 0 Count Threshold", "Coupling",
                           "Timestamp Latch"};

} // namespace

/// The Advanced page: its tab, its sections, and when they are read and enabled.
class tst_AdvancedTab : public Test
{
    Q_OBJECT

private slots:
    void theTabIsBetweenVideoAndSsd();
    void theBannerIsShownWhileDisconnected();
    void theSectionsAreInOrder();
    void onlyTheFirstSectionIsOpenAtFirst();
    void sectionsNeedTheirCapabilities_data();
    void sectionsNeedTheirCapabilities();
    void theHeaderReadsBeforeItOpens_data();
    void theHeaderReadsBeforeItOpens();
    void theShownPageIsRead();
    void theShownPageReadsSectionsOfTheVideoPage();
    void theShownPageDoesNotReadItsOtherSections();
    void theRootReadsTheSections();
    void theShownPageTakesTheFocus();
    void theConnectedPageTakesTheFocus();
    void anOpenMenuKeepsTheFocus_data();
    void anOpenMenuKeepsTheFocus();

    void theBodyIsOffUntilItHasBeenRead_data();
    void theBodyIsOffUntilItHasBeenRead();
    void theControlInUseStaysOnWhileItIsRead_data();
    void theControlInUseStaysOnWhileItIsRead();
    void theBodyIsOffWhileDisconnected();
    void anotherCameraShowsItsSections();
    void thePageOutlivesItsModel_data();
    void thePageOutlivesItsModel();
};

void tst_AdvancedTab::theTabIsBetweenVideoAndSsd()
{
    PageDriver driver;
    QList<double> places;
    for (const char *tab : {"Status", "Setup", "Correction", "Video", "Advanced", "SSD"})
        places << driver.item(tab).mapToScene({}).x();
    QVERIFY(std::ranges::is_sorted(places));
}

void tst_AdvancedTab::theBannerIsShownWhileDisconnected()
{
    PageDriver driver;
    driver.rig().camera().disconnect();
    driver.click("Advanced");
    driver.settle();
    QVERIFY(driver.findText("No camera connected"));
    QVERIFY(driver.find("Digital Settings"));
}

void tst_AdvancedTab::theSectionsAreInOrder()
{
    AdvancedPage page;
    QList<double> places;
    for (const QString &name : advancedSections())
        places << page.item(name).mapToScene({}).y();
    QVERIFY(std::ranges::is_sorted(places));
}

void tst_AdvancedTab::onlyTheFirstSectionIsOpenAtFirst()
{
    AdvancedPage page;
    QVERIFY(page.find(controls.first()));
    for (const QObject *model : {page.analog(), page.saturation(), page.lockin(), page.misc()})
        QVERIFY(!model->property("visible").toBool());
    const QStringList calls = page.rig().callsSince(0);
    QCOMPARE(calls.count("zvtGetDigitalGain"), 4);
    for (const QString &call : firstCalls.mid(1))
        QVERIFY2(!calls.contains(call), qPrintable(call));
}

void tst_AdvancedTab::sectionsNeedTheirCapabilities_data()
{
    QTest::addColumn<QString>("section");
    QTest::newRow("hasLockin") << "Lockin Settings";
    QTest::newRow("hasAdvancedMiscSettings") << "Miscellaneous Settings";
}

void tst_AdvancedTab::sectionsNeedTheirCapabilities()
{
    QFETCH(const QString, section);
    const QString capability = QString::fromLatin1(QTest::currentDataTag());
    AdvancedPage page([&](emulator::Camera &camera) { camera.changeMakeUp(capability, false); });
    for (const QString &name : advancedSections())
        QCOMPARE(page.find(name) != nullptr, name != section);
}

void tst_AdvancedTab::theHeaderReadsBeforeItOpens_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<bool>("byKeyboard");
    for (int section = 0; section < 5; ++section)
        for (const bool byKeyboard : {false, true})
            QTest::addRow("%s, by %s", qPrintable(advancedSections().at(section)), byKeyboard ? "keyboard" : "mouse")
                << section << byKeyboard;
}

void tst_AdvancedTab::theHeaderReadsBeforeItOpens()
{
    QFETCH(const int, section);
    QFETCH(const bool, byKeyboard);
    AdvancedPage page;
    const QString name = advancedSections().at(section);
    const QByteArray call = firstCalls.at(section).toLatin1();
    const auto toggle = [&] { page.use(name, byKeyboard); };
    const qsizetype reads = page.rig().callsSince(0).count(QStringLiteral("zvtGetDigitalGain")) / 4;
    QCOMPARE(reads, 1);
    if (section == 0)
        QCOMPARE(page.calls(call, toggle), 0);
    QVERIFY(!page.find(controls.at(section)));
    page.gate().hold(call.toStdString());
    toggle();
    QVERIFY(page.gate().waitHeld(call.toStdString()));
    QVERIFY(page.item(name).property("sectionLoading").toBool());
    page.gate().release("*");
    page.settle();
    QVERIFY(page.find(controls.at(section)));
    QVERIFY(!page.item(name).property("sectionLoading").toBool());
    QVERIFY(page.calls(call, [&] { page.refresh(name); }) > 0);
    QCOMPARE(page.calls(call, toggle), 0);
    QVERIFY(!page.find(controls.at(section)));
}

void tst_AdvancedTab::theShownPageIsRead()
{
    AdvancedPage page;
    QCOMPARE(page.calls("zvtGetDigitalGain", [&] { page.showTab(statusPage); }), 0);
    QCOMPARE(page.calls("zvtGetDigitalGain", [&] { page.showTab(advancedPage); }), 4);
    page.rig().camera().disconnect();
    page.settle();
    QCOMPARE(page.calls("zvtGetDigitalGain", [&] { page.rig().camera().connect(); }), 4);
    page.toggle("Digital Settings");
    page.showTab(statusPage);
    QCOMPARE(page.calls("zvtGetDigitalGain", [&] { page.showTab(advancedPage); }), 0);
}

void tst_AdvancedTab::theShownPageReadsSectionsOfTheVideoPage()
{
    AdvancedPage page;
    page.showTab(statusPage);
    const auto show = [&] {
        page.showTab(advancedPage);
        page.showTab(statusPage);
    };
    QCOMPARE(page.calls("zvtGetVideoAGCROI", show), 0);
    page.tabModel("agcRoiSettings")->setProperty("visible", true);
    QCOMPARE(page.calls("zvtGetVideoAGCROI", show), 1);
    QCOMPARE(page.calls("zvtGetVideoOverlayPalette", show), 0);
    page.tabModel("overlaySettings")->setProperty("visible", true);
    QCOMPARE(page.calls("zvtGetVideoOverlayPalette", show), 1);
}

void tst_AdvancedTab::theShownPageDoesNotReadItsOtherSections()
{
    AdvancedPage page;
    for (const QString &section : advancedSections().mid(1))
        page.toggle(section);
    const size_t mark = page.gate().mark();
    page.showTab(statusPage);
    page.showTab(advancedPage);
    page.rig().camera().disconnect();
    page.settle();
    page.rig().camera().connect();
    page.settle();
    const QStringList calls = page.rig().callsSince(mark);
    QCOMPARE(calls.count("zvtGetDigitalGain"), 8);
    for (const QString &call : firstCalls.mid(1))
        QVERIFY2(!calls.contains(call), qPrintable(call));
}

void tst_AdvancedTab::theRootReadsTheSections()
{
    AdvancedPage page;
    for (const QString &section : advancedSections().mid(1))
        page.toggle(section);
    const size_t mark = page.gate().mark();
    QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible");
    page.settle();
    const QStringList calls = page.rig().callsSince(mark);
    for (const QString &call : firstCalls)
        QCOMPARE(calls.contains(call), call != "zvtGetLockinCoupling");
}

void tst_AdvancedTab::theShownPageTakesTheFocus()
{
    AdvancedPage page;
    page.showTab(statusPage);
    page.page()->forceActiveFocus();
    page.showTab(advancedPage);
    const QQuickItem *holder = page.window().activeFocusItem();
    QVERIFY(holder && holder->isAncestorOf(&page.item(controls.first())) && holder != page.page());
}

void tst_AdvancedTab::theConnectedPageTakesTheFocus()
{
    AdvancedPage page;
    page.rig().camera().disconnect();
    page.settle();
    page.page()->forceActiveFocus();
    page.rig().camera().connect();
    page.settle();
    const QQuickItem *holder = page.window().activeFocusItem();
    QVERIFY(holder && holder->isAncestorOf(&page.item(controls.first())) && holder != page.page());
}

void tst_AdvancedTab::anOpenMenuKeepsTheFocus_data()
{
    QTest::addColumn<bool>("byTab");
    QTest::newRow("the camera connects") << false;
    QTest::newRow("the page is shown") << true;
}

void tst_AdvancedTab::anOpenMenuKeepsTheFocus()
{
    QFETCH(const bool, byTab);
    AdvancedPage page;
    if (byTab)
        page.showTab(statusPage);
    page.click("Configuration");
    page.settle();
    const QQuickItem *holder = page.window().activeFocusItem();
    QVERIFY(holder && !page.page()->isAncestorOf(holder));
    if (byTab) {
        page.showTab(advancedPage);
    } else {
        page.rig().camera().disconnect();
        page.settle();
        page.rig().camera().connect();
        page.settle();
    }
    QCOMPARE(page.window().activeFocusItem(), holder);
    QVERIFY(holder->isVisible());
    QVERIFY(page.find("Preset 0 Digital Gain"));
}

// Enabled controls

void tst_AdvancedTab::theBodyIsOffUntilItHasBeenRead_data()
{
    QTest::addColumn<int>("section");
    for (int section = 0; section < 5; ++section)
        QTest::newRow(qPrintable(advancedSections().at(section))) << section;
}

void tst_AdvancedTab::theBodyIsOffUntilItHasBeenRead()
{
    QFETCH(const int, section);
    AdvancedPage page;
    const std::string call = firstCalls.at(section).toStdString();
    const QString name = advancedSections().at(section);
    if (section == 0)
        page.toggle(name);
    for (const bool again : {false, true}) {
        page.gate().hold(call);
        page.click(again ? "Refresh " + name : name);
        QVERIFY(page.gate().waitHeld(call));
        page.awaitFrame();
        QVERIFY(!page.enabled(controls.at(section)));
        page.gate().release("*");
        page.settle();
        QVERIFY(page.enabled(controls.at(section)));
    }
}

void tst_AdvancedTab::theControlInUseStaysOnWhileItIsRead_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<bool>("isList");
    QTest::addColumn<QString>("other");
    QTest::newRow("Preset 1 Digital Gain") << 0 << false << "Preset 1 Digital Offset";
    QTest::newRow("Preset 2 Digital Offset") << 0 << false << "CameraLink Mode";
    QTest::newRow("CameraLink Mode") << 0 << true << "CoaXPress Links";
    QTest::newRow("CoaXPress Links") << 0 << true << "Black Hot Mode";
    QTest::newRow("Global Analog Offset (v)") << 1 << false << "Detector Bias (mv)";
    QTest::newRow("Skimming (v)") << 1 << false << "Enable Skimming";
    QTest::newRow("Preset 3 Count Threshold") << 2 << false << "Preset 3 Pixel Threshold";
    QTest::newRow("Estimated Input Frequency (Hz)") << 3 << false << "Digital Filter";
    QTest::newRow("Coupling") << 3 << true << "Estimated Input Frequency (Hz)";
    QTest::newRow("Digital Filter") << 3 << true << "Coupling";
    QTest::newRow("Timestamp Latch") << 4 << true << "Integrate Active Polarity";
    QTest::newRow("GigE Header Mode") << 4 << true << "CameraLink Header Mode";
}

void tst_AdvancedTab::theControlInUseStaysOnWhileItIsRead()
{
    QFETCH(const int, section);
    QFETCH(const bool, isList);
    QFETCH(const QString, other);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    AdvancedPage page([](emulator::Camera &camera) {
        QVERIFY(camera.otherClient().set(QStringLiteral("analog.skimmingEnabled"), true));
    });
    if (section > 0)
        page.openOnly(advancedSections().at(section));
    QVERIFY(page.enabled(other));
    if (isList)
        page.click(name);
    else
        page.type(name, "2");
    QObject *const models[]{page.digital(), page.analog(), page.saturation(), page.lockin(), page.misc()};
    const std::string call = firstCalls.at(section).toStdString();
    page.gate().hold(call);
    QMetaObject::invokeMethod(models[section], "refresh");
    QVERIFY(page.gate().waitHeld(call));
    page.awaitFrame();
    QVERIFY(page.enabled(name));
    QVERIFY(!page.enabled(other));
    page.gate().release("*");
    page.settle();
    QVERIFY(page.enabled(other));
    if (isList)
        QVERIFY(page.item(name).property("listOpen").toBool());
    else
        QCOMPARE(page.text(name), "2");
}

void tst_AdvancedTab::theBodyIsOffWhileDisconnected()
{
    AdvancedPage page;
    for (const QString &section : advancedSections().mid(1))
        page.toggle(section);
    page.rig().camera().disconnect();
    page.settle();
    for (const QString &name : controls)
        QVERIFY2(!page.enabled(name), qPrintable(name));
    QVERIFY(page.findText("No camera connected"));
    page.rig().camera().connect();
    page.settle();
    for (const QString &name : controls)
        QVERIFY2(page.enabled(name), qPrintable(name));
}

void tst_AdvancedTab::anotherCameraShowsItsSections()
{
    AdvancedPage page;
    page.toggle("Lockin Settings");
    QVERIFY(page.find("Coupling"));
    page.rig().camera().disconnect();
    page.rig().camera().changeMakeUp(QStringLiteral("hasLockin"), false);
    page.rig().camera().connect();
    page.settle();
    QVERIFY(!page.find("Lockin Settings") && !page.find("Coupling"));
    page.rig().camera().disconnect();
    page.rig().camera().changeMakeUp(QStringLiteral("hasLockin"), true);
    page.rig().camera().connect();
    page.settle();
    QVERIFY(page.find("Coupling"));
}

void tst_AdvancedTab::thePageOutlivesItsModel_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("list");
    QTest::newRow("at rest") << QString() << QString();
    for (const char *field :
         {"Preset 0 Digital Gain", "Detector Bias (mv)", "Preset 0 Count Threshold", "Estimated Input Frequency (Hz)"})
        QTest::newRow(field) << field << QString();
    for (const char *list : {"CoaXPress Links", "Digital Filter", "GigE Header Mode"})
        QTest::newRow(list) << QString() << list;
}

void tst_AdvancedTab::thePageOutlivesItsModel()
{
    QFETCH(const QString, field);
    QFETCH(const QString, list);
    AdvancedPage page;
    for (const QString &section : advancedSections().mid(1))
        page.toggle(section);
    if (!field.isEmpty())
        page.type(field, "2");
    if (!list.isEmpty())
        page.click(list);
    page.deleteModel();
    if (!field.isEmpty() || !list.isEmpty())
        page.press(Qt::Key_Return);
    page.settle();
    QVERIFY(page.findText("No camera connected"));
}

ZVT_TEST(tst_AdvancedTab)
#include "tst_AdvancedTab.moc"
