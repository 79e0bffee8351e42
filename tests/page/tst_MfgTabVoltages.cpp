#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

namespace
{

const QString section = QStringLiteral("Voltage Settings");
const QString warning = QStringLiteral("Warning: Setting voltages improperly can damage the camera.");

struct VoltagePage : MfgPage {
    explicit VoltagePage(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(profile, prepare)
    {
        openOnly(section);
    }

    QObject *model() const { return tabModel("mfgVoltageSettingsModel"); }
    QObject *rows() const { return model()->property("voltageListModel").value<QObject *>(); }
};

} // namespace

/// The section "Voltage Settings" of the Mfg page.
class tst_MfgTabVoltages : public Test
{
    Q_OBJECT

private slots:
    void eachVoltageHasARow();
    void fixedVoltagesAreOnlyShown();
    void aVoltageIsWrittenAtOnce_data();
    void aVoltageIsWrittenAtOnce();
    void theLimitsAreInTheToolTip();
    void wrongNumbersAreNotWritten();
    void refusedVoltageStaysUntilARead();
    void theTableIsReadAgain();
    void onlyTheFieldInUseStaysOnDuringARead();
    void aReadDiscardsATypedVoltage();
    void withoutVoltagesThereIsNoTable_data();
    void withoutVoltagesThereIsNoTable();
    void limitsAreThoseOfTheirTexts();
    void unknownLimitsAcceptNothing();
    void longNamesHaveAToolTip();
};

void tst_MfgTabVoltages::eachVoltageHasARow()
{
    VoltagePage page;
    for (const char *text : {"Name", "Value", "Analog supply", "Reference", "Detector common"})
        QVERIFY2(page.findText(text), text);
    QVERIFY(page.findText(warning));
    QVERIFY(!page.findText("No voltages available."));
    QCOMPARE(page.text("Analog supply"), "5.000");
    QCOMPARE(page.text("Reference"), "1.650");
    QCOMPARE(page.text("Detector common"), "2.400");
    QCOMPARE(page.text("Flag heater"), "0.000");
}

void tst_MfgTabVoltages::fixedVoltagesAreOnlyShown()
{
    VoltagePage page;
    QVERIFY(page.item("Reference").inherits("QQuickTextField"));
    for (const char *name : {"Analog supply", "Flag heater"})
        QVERIFY2(page.item(name).inherits("QQuickText"), name);
}

void tst_MfgTabVoltages::aVoltageIsWrittenAtOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("command");
    QTest::newRow("Reference") << "2.125"
                               << "zvtSetVoltage \"VREF\", 2.125";
    QTest::newRow("Detector common") << "3.000"
                                     << "zvtSetVoltage \"VDET\", 3";
}

void tst_MfgTabVoltages::aVoltageIsWrittenAtOnce()
{
    QFETCH(const QString, text);
    QFETCH(const QString, command);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    VoltagePage page;
    QCOMPARE(page.commandsOf([&] { page.enterNumber(name, text); }), QStringList(command));
    page.refresh(section);
    QCOMPARE(page.text(name), text);
}

void tst_MfgTabVoltages::theLimitsAreInTheToolTip()
{
    VoltagePage page;
    QCOMPARE(page.item("Reference").property("toolTip").toString(), "1.000 to 2.300");
    QCOMPARE(page.item("Detector common").property("toolTip").toString(), "1.800 to 3.000");
}

void tst_MfgTabVoltages::wrongNumbersAreNotWritten()
{
    VoltagePage page;
    for (const char *text : {"0.999", "2.301", "1.0005", "x"}) {
        QCOMPARE(page.commandsOf([&] { page.enterNumber("Reference", text); }), QStringList());
        QVERIFY2(!page.fault("Reference").isEmpty(), text);
        page.press(Qt::Key_Escape);
        QCOMPARE(page.text("Reference"), "1.650");
    }
    // The limits as numbers of type float are not exact.
    for (const char *text : {"2.3", "1", "2.300", "1.000"})
        QCOMPARE(page.commandsOf([&] { page.enterNumber("Reference", text); }).size(), 1);
}

void tst_MfgTabVoltages::refusedVoltageStaysUntilARead()
{
    VoltagePage page;
    page.gate().failAlways("zvtSetVoltage");
    page.enterNumber("Reference", "2");
    QCOMPARE(page.text("Reference"), "2.000");
    page.refresh(section);
    QCOMPARE(page.text("Reference"), "1.650");
}

// Each read makes new rows.
void tst_MfgTabVoltages::theTableIsReadAgain()
{
    VoltagePage page;
    QObject *before = nullptr;
    QMetaObject::invokeMethod(page.rows(), "at", Q_RETURN_ARG(QObject *, before), Q_ARG(int, 1));
    QVERIFY(page.set("voltages.reference", 1.25));
    QCOMPARE(page.calls("zvtListVoltages", [&] { page.click("Refresh Voltages"); }), 1);
    QCOMPARE(page.text("Reference"), "1.250");
    QObject *after = nullptr;
    QMetaObject::invokeMethod(page.rows(), "at", Q_RETURN_ARG(QObject *, after), Q_ARG(int, 1));
    QVERIFY(after && after != before);
}

void tst_MfgTabVoltages::onlyTheFieldInUseStaysOnDuringARead()
{
    VoltagePage page;
    page.SetupPage::type("Reference", "2");
    page.gate().hold("zvtListVoltages");
    QMetaObject::invokeMethod(page.model(), "refresh");
    QVERIFY(page.gate().waitHeld("zvtListVoltages"));
    page.awaitFrame();
    QVERIFY(page.enabled("Reference"));
    for (const char *name : {"Detector common", "Refresh Voltages"})
        QVERIFY2(!page.enabled(name), name);
    page.gate().release("*");
    page.settle();
    for (const char *name : {"Reference", "Detector common", "Refresh Voltages"})
        QVERIFY2(page.enabled(name), name);
}

// The read takes the field away from the operator, who has not confirmed the voltage.
void tst_MfgTabVoltages::aReadDiscardsATypedVoltage()
{
    VoltagePage page;
    page.SetupPage::type("Reference", "2.2");
    QVERIFY(page.item("Reference").property("edited").toBool());
    QCOMPARE(page.calls("zvtSetVoltage", [&] { QMetaObject::invokeMethod(page.cameraModel(), "refreshAllVisible"); }),
             0);
    QCOMPARE(page.text("Reference"), "1.650");
    QVERIFY(!page.item("Reference").property("edited").toBool());
}

void tst_MfgTabVoltages::withoutVoltagesThereIsNoTable_data()
{
    QTest::addColumn<bool>("fails");
    QTest::newRow("bare") << false;
    QTest::newRow("low-cost") << false;
    QTest::newRow("everything") << true;
}

void tst_MfgTabVoltages::withoutVoltagesThereIsNoTable()
{
    QFETCH(const bool, fails);
    VoltagePage page(QString::fromLatin1(QTest::currentDataTag()), [&](emulator::Camera &camera) {
        if (fails)
            camera.gate().failAlways("zvtListVoltages");
    });
    QVERIFY(page.findText("No voltages available."));
    for (const char *text : {"Name", "Value"})
        QVERIFY2(!page.findText(text), text);
    QVERIFY(!page.find("Refresh Voltages"));
}

// As numbers of type float, 0.1 is more than 0.1, and 2.3 is less than 2.3.
void tst_MfgTabVoltages::limitsAreThoseOfTheirTexts()
{
    VoltagePage page("everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetVoltageLimits", QVariantList{0.1, 2.3});
    });
    for (const char *text : {"0.1", "2.3"}) {
        page.enterNumber("Reference", text);
        QVERIFY2(page.fault("Reference").isEmpty(), text);
        page.press(Qt::Key_Escape);
    }
    for (const char *text : {"0.099", "2.301"}) {
        page.enterNumber("Reference", text);
        QVERIFY2(!page.fault("Reference").isEmpty(), text);
        page.press(Qt::Key_Escape);
    }
}

void tst_MfgTabVoltages::unknownLimitsAcceptNothing()
{
    VoltagePage page("everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetVoltageLimits", QVariantList{qQNaN(), qInf()});
    });
    QCOMPARE(page.item("Reference").property("toolTip").toString(), "");
    QCOMPARE(page.commandsOf([&] { page.enterNumber("Reference", "2"); }), QStringList());
}

void tst_MfgTabVoltages::longNamesHaveAToolTip()
{
    const QString name = QStringLiteral("A narrow name ").repeated(7);
    VoltagePage page("everything",
                     [&](emulator::Camera &camera) { camera.gate().script("zvtGetVoltageDisplayName", name); });
    const QQuickItem *shown = page.findText(name);
    QVERIFY(shown && shown->property("truncated").toBool());
    QTest::mouseMove(&page.window(), shown->mapToScene({20, 10}).toPoint());
    QTRY_COMPARE(page.hint(), name);
}

ZVT_TEST(tst_MfgTabVoltages)
#include "tst_MfgTabVoltages.moc"
