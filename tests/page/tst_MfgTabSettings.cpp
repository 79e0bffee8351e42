#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

namespace
{

constexpr auto nucSection = "NUC Settings";
constexpr auto miscSection = "Miscellaneous Settings";
constexpr auto coolerSection = "TE Cooler Settings";

/// A number field: its section and name, the property of its model, its range, and texts that it refuses.
struct Field {
    const char *section;
    const char *name;
    const char *property;
    const char *least;
    const char *most;
    QStringList wrong;
};

const QList<Field> fields{
    {nucSection, "A/D Min", "adMin", "0", "16383", {"-1", "16384", "1.5"}},
    {nucSection, "A/D Max", "adMax", "0", "16383", {"-1", "16384", "x"}},
    {nucSection, "Gain Min", "gainMin", "0.00", "2.00", {"-0.01", "2.01", "1.005"}},
    {nucSection, "Gain Max", "gainMax", "0.00", "2.00", {"-0.01", "2.01", "1.005"}},
    {nucSection, "Number of Frames", "nucNumFrames", "2", "128", {"1", "129", "2.5"}},
    {nucSection, "Twinkler Number of Frames", "twinklerNumFrames", "1", "1048575", {"0", "1048576"}},
    {nucSection, "Twinkler Delta", "twinklerDelta", "0", "16383", {"-1", "16384"}},
    {nucSection, "Flag Max Temperature", "flagMaxTemp", "40.0", "100.0", {"39.9", "100.1"}},
    {nucSection, "Flag Timeout", "timeout", "15000", "300000", {"14999", "300001"}},
    {nucSection, "Stable Delta", "stableDelta", "0.10", "5.00", {"0.09", "5.01", "0.105"}},
    {nucSection, "Stable Count", "stableCount", "1", "128", {"0", "129"}},
    {miscSection, "DDE Threshold", "ddeThreshold", "0", "16383", {"-1", "16384", ""}},
    {miscSection, "FPA Clock Phase Shift", "fpaClockPhaseShift", "0", "100000000", {"-1", "100000001"}},
};

const char *modelOf(const char *section)
{
    return section == nucSection ? "mfgNucSettingsModel" : "mfgMiscSettingsModel";
}

struct SettingsPage : MfgPage {
    explicit SettingsPage(
        const char *section, const Prepare &prepare = [](emulator::Camera &) {},
        const QString &profile = QStringLiteral("everything"))
        : MfgPage(profile, prepare)
    {
        openOnly(section);
    }

    QObject *nuc() const { return tabModel("mfgNucSettingsModel"); }
    QObject *misc() const { return tabModel("mfgMiscSettingsModel"); }
};

void scriptNuc(emulator::Camera &camera)
{
    emulator::Gate &gate = camera.gate();
    gate.script("zvtGetNUCType", 2);
    gate.script("zvtGetNUCSource", 1);
    gate.script("zvtGetNUCSetup", QVariantList{0.5, 1.75, 100, 15000, true});
    gate.script("zvtGetNUCNumFrames", 44);
    gate.script("zvtGetTwinklerSetup", QVariantList{true, 70000, 321});
    gate.script("zvtGetNUCFlagConfig", QVariantList{55.5, 0.25, 12, 20000});
    for (const char *name : {"zvtGetNUCUseFactoryBadPixels", "zvtGetShowBadPixels", "zvtGetDigitalOutputNUCEnabled",
                             "zvtGetVideoOutputNUCEnabled"})
        gate.script(name, true);
}

const QStringList nucWrites{"zvtSetNUCType 2",
                            "zvtSetNUCSource 1",
                            "zvtSetNUCSetup 0.5, 1.75, 100, 15000, true",
                            "zvtSetNUCNumFrames 44",
                            "zvtSetTwinklerSetup true, 70000, 321",
                            "zvtSetNUCFlagConfig 55.5, 0.25, 12, 20000",
                            "zvtSetNUCUseFactoryBadPixels true",
                            "zvtSetShowBadPixels true",
                            "zvtSetDigitalOutputNUCEnabled true",
                            "zvtSetVideoOutputNUCEnabled true"};

const QStringList switches{"Detect Bad Pixels", "Detect Twinkler Pixels", "Use Factory Bad Pixels",
                           "NUC Video Output",  "Show Bad Pixels",        "NUC Digital Data"};

} // namespace

/// The sections "NUC Settings", "TE Cooler Settings" and "Miscellaneous Settings" of the Mfg page, whose settings are
/// applied all together.
class tst_MfgTabSettings : public Test
{
    Q_OBJECT

private slots:
    void eachNumberHasItsRange_data();
    void eachNumberHasItsRange();
    void nucShowsTheValuesOfTheCamera();
    void nucTypeIsEmptyBeforeTheFirstRead();
    void nucChoicesAreStored();
    void nucSwitchesAreStored_data();
    void nucSwitchesAreStored();
    void unreadNucNumbersAreEmpty();
    void applyOfOneEditWritesEverything_data();
    void applyOfOneEditWritesEverything();
    void refusedValuesStayUntilARead();
    void aReadDiscardsEdits();
    void onlyTheFieldInUseStaysOnDuringARead_data();
    void onlyTheFieldInUseStaysOnDuringARead();

    void miscIsApplied();
    void unreadMiscNumbersAreEmpty();

    void coolerShowsTheValuesOfTheCamera();
    void coolerFieldsAreInOrder();
    void coolerNumbersFitAFloat_data();
    void coolerNumbersFitAFloat();
    void coolerIsApplied_data();
    void coolerIsApplied();
    void unreadCoolerValuesAreEmpty();
};

// The NUC settings

void tst_MfgTabSettings::eachNumberHasItsRange_data()
{
    QTest::addColumn<int>("field");
    for (qsizetype field = 0; field < fields.size(); ++field)
        QTest::newRow(fields.at(field).name) << static_cast<int>(field);
}

void tst_MfgTabSettings::eachNumberHasItsRange()
{
    QFETCH(const int, field);
    const auto &[section, name, property, least, most, wrong] = fields.at(field);
    SettingsPage page(section);
    const QString apply = QStringLiteral("Apply ") + QLatin1String(section);
    const QObject *model = page.tabModel(modelOf(section));
    QVERIFY(!page.primary(apply));
    for (const char *text : {most, least}) {
        QCOMPARE(page.commandsOf([&] { page.enterNumber(name, text); }), QStringList());
        QCOMPARE(page.text(name), text);
        QCOMPARE(model->property(property).toFloat(), QByteArray(text).toFloat());
    }
    QVERIFY(page.primary(apply));
    for (const QString &text : wrong) {
        page.SetupPage::type(name, text);
        if (text.isEmpty())
            page.press(Qt::Key_Delete);
        page.press(Qt::Key_Return);
        page.settle();
        QVERIFY2(!page.fault(name).isEmpty(), qPrintable(text));
        QCOMPARE(model->property(property).toFloat(), QByteArray(least).toFloat());
        page.item(name).forceActiveFocus();
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text(name), least);
    }
}

void tst_MfgTabSettings::nucShowsTheValuesOfTheCamera()
{
    SettingsPage page(nucSection, scriptNuc);
    QCOMPARE(page.rowsOf("Type"), QStringList({"One Point", "Two Point", "Update Offset"}));
    QCOMPARE(page.rowsOf("Source"), QStringList({"External", "Internal"}));
    QCOMPARE(page.shown("Type"), "Update Offset");
    QCOMPARE(page.shown("Source"), "Internal");
    for (const char *heading : {"A/D Min & Max:", "Gain Min & Max:"})
        QVERIFY2(page.findText(heading), heading);
    const QList<std::pair<const char *, const char *>> texts{
        {"A/D Min", "100"},         {"A/D Max", "15000"},
        {"Gain Min", "0.50"},       {"Gain Max", "1.75"},
        {"Number of Frames", "44"}, {"Twinkler Number of Frames", "70000"},
        {"Twinkler Delta", "321"},  {"Flag Max Temperature", "55.5"},
        {"Flag Timeout", "20000"},  {"Stable Delta", "0.25"},
        {"Stable Count", "12"}};
    for (const auto &[name, text] : texts)
        QCOMPARE(page.text(name), text);
    for (const QString &name : switches)
        QVERIFY2(page.checked(name), qPrintable(name));
}

void tst_MfgTabSettings::nucTypeIsEmptyBeforeTheFirstRead()
{
    MfgPage page;
    page.toggle("Camera Settings");
    page.gate().hold("zvtGetNUCType");
    page.click(nucSection);
    QVERIFY(page.gate().waitHeld("zvtGetNUCType"));
    page.awaitFrame();
    for (const char *name : {"Type", "Source"})
        QCOMPARE(page.shown(name), "");
    for (const Field &field : fields)
        if (field.section == nucSection)
            QCOMPARE(page.text(field.name), "");
    page.gate().release("*");
    page.settle();
    QVERIFY(!page.shown("Type").isEmpty());
}

void tst_MfgTabSettings::nucChoicesAreStored()
{
    SettingsPage page(nucSection, scriptNuc);
    QCOMPARE(page.commandsOf([&] {
        page.choose("Type", "One Point");
        page.step("Source", Qt::Key_Up);
    }),
             QStringList());
    QCOMPARE(page.nuc()->property("selectedNucTypeIndex").toInt(), 0);
    QCOMPARE(page.nuc()->property("selectedNucSourceIndex").toInt(), 0);
    QVERIFY(page.primary("Apply NUC Settings"));
}

void tst_MfgTabSettings::nucSwitchesAreStored_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("Detect Bad Pixels") << "zvtSetNUCSetup 0.5, 1.75, 100, 15000, false";
    QTest::newRow("Detect Twinkler Pixels") << "zvtSetTwinklerSetup false, 70000, 321";
    QTest::newRow("Use Factory Bad Pixels") << "zvtSetNUCUseFactoryBadPixels false";
    QTest::newRow("NUC Video Output") << "zvtSetVideoOutputNUCEnabled false";
    QTest::newRow("Show Bad Pixels") << "zvtSetShowBadPixels false";
    QTest::newRow("NUC Digital Data") << "zvtSetDigitalOutputNUCEnabled false";
}

void tst_MfgTabSettings::nucSwitchesAreStored()
{
    QFETCH(const QString, command);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    SettingsPage page(nucSection, scriptNuc);
    QCOMPARE(page.commandsOf([&] { page.use(name, true); }), QStringList());
    QVERIFY(!page.checked(name));
    const QStringList commands = page.commandsOf([&] { page.click("Apply NUC Settings"); });
    QCOMPARE(commands.size(), nucWrites.size());
    for (const QString &sent : commands)
        QVERIFY2(nucWrites.contains(sent) != (sent == command), qPrintable(sent));
    QVERIFY(commands.contains(command));
}

void tst_MfgTabSettings::unreadNucNumbersAreEmpty()
{
    SettingsPage page(nucSection, [](emulator::Camera &camera) {
        for (const char *name : {"zvtGetNUCSetup", "zvtGetNUCNumFrames", "zvtGetTwinklerSetup", "zvtGetNUCFlagConfig"})
            camera.gate().failAlways(name);
    });
    for (const Field &field : fields)
        if (field.section == nucSection)
            QCOMPARE(page.text(field.name), "");
}

void tst_MfgTabSettings::applyOfOneEditWritesEverything_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_MfgTabSettings::applyOfOneEditWritesEverything()
{
    QFETCH(const bool, byKeyboard);
    SettingsPage page(nucSection, scriptNuc);
    page.enterNumber("A/D Min", "250");
    QStringList expected = nucWrites;
    expected[2] = "zvtSetNUCSetup 0.5, 1.75, 250, 15000, true";
    const size_t mark = page.gate().mark();
    page.use("Apply NUC Settings", byKeyboard);
    page.settle();
    QCOMPARE(page.commands(mark), expected);
    // Nothing is read after it.
    QCOMPARE(page.rig().callsSince(mark).size(), expected.size());
    QVERIFY(!page.primary("Apply NUC Settings"));
}

void tst_MfgTabSettings::refusedValuesStayUntilARead()
{
    SettingsPage page(nucSection);
    const QString before = page.text("Number of Frames");
    page.gate().failAlways("zvtSetNUCNumFrames");
    page.enterNumber("Number of Frames", "77");
    page.click("Apply NUC Settings");
    page.settle();
    QCOMPARE(page.text("Number of Frames"), "77");
    page.refresh(nucSection);
    QCOMPARE(page.text("Number of Frames"), before);
}

void tst_MfgTabSettings::aReadDiscardsEdits()
{
    SettingsPage page(nucSection, scriptNuc);
    page.enterNumber("A/D Min", "250");
    page.choose("Type", "One Point");
    page.click("Show Bad Pixels");
    page.showTab(0);
    page.showTab(MfgPage::tabIndex);
    QCOMPARE(page.text("A/D Min"), "100");
    QCOMPARE(page.shown("Type"), "Update Offset");
    QVERIFY(page.checked("Show Bad Pixels"));
    QVERIFY(!page.primary("Apply NUC Settings"));
}

void tst_MfgTabSettings::onlyTheFieldInUseStaysOnDuringARead_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QString>("other");
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<std::string>("call");
    QTest::newRow("A/D Min") << QByteArray(nucSection) << "Stable Count" << QByteArray("mfgNucSettingsModel")
                             << std::string("zvtGetNUCType");
    QTest::newRow("kI") << QByteArray(coolerSection) << "Cooler Enabled" << QByteArray("mfgCoolerSettingsModel")
                        << std::string("zvtMfgGetCoolerType");
    QTest::newRow("DDE Threshold") << QByteArray(miscSection) << "FPA Clock Phase Shift"
                                   << QByteArray("mfgMiscSettingsModel") << std::string("zvtGetVideoAGCDDEThreshold");
}

void tst_MfgTabSettings::onlyTheFieldInUseStaysOnDuringARead()
{
    QFETCH(const QByteArray, section);
    QFETCH(const QString, other);
    QFETCH(const QByteArray, model);
    QFETCH(const std::string, call);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    SettingsPage page(
        section, [](emulator::Camera &) {}, "te-cooler");
    page.SetupPage::type(name, "1");
    page.gate().hold(call);
    QMetaObject::invokeMethod(page.tabModel(model), "refresh");
    QVERIFY(page.gate().waitHeld(call));
    page.awaitFrame();
    QVERIFY(page.enabled(name));
    for (const QString &off : {other, "Apply " + QString::fromLatin1(section)})
        QVERIFY2(!page.enabled(off), qPrintable(off));
    page.gate().release("*");
    page.settle();
    QVERIFY(page.enabled(other));
    QCOMPARE(page.text(name), "1");
}

// The miscellaneous settings

void tst_MfgTabSettings::miscIsApplied()
{
    SettingsPage page(miscSection);
    page.enterNumber("DDE Threshold", "123");
    const size_t mark = page.gate().mark();
    page.click("Apply Miscellaneous Settings");
    page.settle();
    QCOMPARE(page.commands(mark), QStringList({"zvtSetVideoAGCDDEThreshold 123", "zvtMfgSetClockPhaseShift 40"}));
    QCOMPARE(page.rig().callsSince(mark).size(), 2);
    page.refresh(miscSection);
    QCOMPARE(page.text("DDE Threshold"), "123");
    QCOMPARE(page.text("FPA Clock Phase Shift"), "40");
}

void tst_MfgTabSettings::unreadMiscNumbersAreEmpty()
{
    SettingsPage page(miscSection, [](emulator::Camera &camera) {
        camera.gate().script("zvtGetVideoAGCDDEThreshold", 0);
        camera.gate().failAlways("zvtMfgGetClockPhaseShift");
    });
    QCOMPARE(page.text("DDE Threshold"), "0");
    QCOMPARE(page.text("FPA Clock Phase Shift"), "");
}

// The cooler

void tst_MfgTabSettings::coolerShowsTheValuesOfTheCamera()
{
    SettingsPage page(
        coolerSection,
        [](emulator::Camera &camera) {
            camera.gate().script("zvtGetFPATemperature", 283.146);
            camera.gate().script("zvtGetSCTemperatures", QVariantList{1, 2, 31.5});
            camera.gate().script("zvtMfgGetCoolerSetup", QVariantList{1.5, 0.25, 2.125, -3});
            camera.gate().script("zvtMfgGetCoolerSetpoint", -12.5);
        },
        "te-cooler");
    const QList<std::pair<const char *, const char *>> texts{{"Cooler Type", "Thermoelectric"},
                                                             {"Actual Temperature", "283.15"},
                                                             {"Internal Temperature", "31.50"},
                                                             {"kP", "1.50"},
                                                             {"kI", "0.25"},
                                                             {"kD", "2.13"},
                                                             {"kOff", "-3.00"},
                                                             {"Setpoint", "-12.50"}};
    for (const auto &[name, text] : texts)
        QCOMPARE(page.text(name), text);
    QVERIFY(page.findText("Setup Variables:"));
    QVERIFY(page.checked("Cooler Enabled"));
}

void tst_MfgTabSettings::coolerFieldsAreInOrder()
{
    SettingsPage page(
        coolerSection, [](emulator::Camera &) {}, "te-cooler");
    page.item("Cooler Enabled").forceActiveFocus(Qt::TabFocusReason);
    QStringList walked;
    for (int step = 0; step < 7; ++step) {
        walked << PageDriver::nameOf(*page.window().activeFocusItem());
        page.press(Qt::Key_Tab);
    }
    QCOMPARE(walked, QStringList({"Cooler Enabled", "kP", "kD", "kOff", "Setpoint", "kI", "Apply TE Cooler Settings"}));
}

void tst_MfgTabSettings::coolerNumbersFitAFloat_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::newRow("kP") << QByteArray("kP");
    QTest::newRow("kI") << QByteArray("kI");
    QTest::newRow("kD") << QByteArray("kD");
    QTest::newRow("kOff") << QByteArray("kOff");
    QTest::newRow("Setpoint") << QByteArray("setpoint");
}

void tst_MfgTabSettings::coolerNumbersFitAFloat()
{
    QFETCH(const QByteArray, property);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    SettingsPage page(
        coolerSection, [](emulator::Camera &) {}, "te-cooler");
    const QObject *model = page.tabModel("mfgCoolerSettingsModel");
    for (const char *text : {"1e39", "-1e39"}) {
        const QVariant before = model->property(property);
        page.enterNumber(name, text);
        QVERIFY2(!page.fault(name).isEmpty(), text);
        QCOMPARE(model->property(property), before);
        page.press(Qt::Key_Escape);
    }
    for (const char *text : {"3e38", "-3e38"}) {
        page.enterNumber(name, text);
        QCOMPARE(model->property(property).toFloat(), QByteArray(text).toFloat());
    }
}

void tst_MfgTabSettings::coolerIsApplied_data() { applyOfOneEditWritesEverything_data(); }

void tst_MfgTabSettings::coolerIsApplied()
{
    QFETCH(const bool, byKeyboard);
    SettingsPage page(
        coolerSection, [](emulator::Camera &) {}, "te-cooler");
    QCOMPARE(page.commandsOf([&] {
        page.enterNumber("kP", "2.5");
        page.enterNumber("kI", "0.75");
        page.enterNumber("kD", "2.125");
        page.enterNumber("kOff", "-3");
        page.enterNumber("Setpoint", "-5.5");
        page.use("Cooler Enabled", byKeyboard);
    }),
             QStringList());
    const size_t mark = page.gate().mark();
    page.use("Apply TE Cooler Settings", byKeyboard);
    page.settle();
    QCOMPARE(page.commands(mark),
             QStringList({"zvtMfgSetCoolerPowerEnabled false", "zvtMfgSetCoolerSetup 2.5, 0.75, 2.125, -3",
                          "zvtMfgSetCoolerSetpoint -5.5"}));
    QCOMPARE(page.rig().callsSince(mark).size(), 3);
    QVERIFY(!page.primary("Apply TE Cooler Settings"));
}

void tst_MfgTabSettings::unreadCoolerValuesAreEmpty()
{
    SettingsPage page(
        coolerSection,
        [](emulator::Camera &camera) {
            for (const char *name : {"zvtMfgGetCoolerSetup", "zvtGetFPATemperature"})
                camera.gate().failAlways(name);
            camera.gate().script("zvtMfgGetCoolerSetpoint", 0);
        },
        "te-cooler");
    for (const char *name : {"kP", "kI", "kD", "kOff", "Actual Temperature"})
        QCOMPARE(page.text(name), "");
    QCOMPARE(page.text("Setpoint"), "0.00");
}

ZVT_TEST(tst_MfgTabSettings)
#include "tst_MfgTabSettings.moc"
