#include "tests/page/TemperaturePage.h"
#include "tests/support/Test.h"

#include <cmath>

#include "zvt/zvtsdk.h"

/// The section of the cooler on the Setup page.
class tst_SetupTabCooler : public Test
{
    Q_OBJECT

private slots:
    void coolerShowsItsValues();
    void unreadValuesAreEmpty();
    void nothingIsShownBeforeTheFirstRead();
    void zeroIsShown();
    void polledTemperatureIsShown();
    void powerIsAppliedByTheButton_data();
    void powerIsAppliedByTheButton();
    void setpointIsAppliedByTheButton();
    void wrongSetpointIsKeptAndNotSent();
    void refreshDiscardsEdits();
};

void tst_SetupTabCooler::coolerShowsItsValues()
{
    TemperaturePage page(coolerSection, "te-cooler", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetFPATemperature", 283.146);
        camera.gate().script("zvtGetSCTemperatures", QVariantList{1, 2, 31.5});
        camera.gate().script("zvtMfgGetCoolerSetpoint", -12.5);
    });
    QCOMPARE(page.text("Cooler Type"), "Thermoelectric");
    QCOMPARE(page.text("Actual Temperature"), "283.15");
    QCOMPARE(page.text("Internal Temperature"), "31.50");
    QCOMPARE(page.text("Setpoint"), "-12.50");
    QVERIFY(page.checked("Cooler Enabled"));
    QVERIFY(page.rig().camera().otherClient().set("cooler.power", false));
    page.refresh(page.cooler());
    QVERIFY(!page.checked("Cooler Enabled"));
}

void tst_SetupTabCooler::unreadValuesAreEmpty()
{
    TemperaturePage page(coolerSection, "everything", [](emulator::Camera &camera) {
        camera.gate().failAlways("zvtGetFlagTemperature");
        camera.gate().failAlways("zvtMfgGetCoolerType");
        camera.gate().failAlways("zvtMfgGetCoolerSetpoint");
    });
    QCOMPARE(page.text("Cooler Type"), "N/A");
    QCOMPARE(page.text("Actual Temperature"), "");
    QCOMPARE(page.text("Setpoint"), "");
    QVERIFY(!page.text("Internal Temperature").isEmpty());
    page.gate().failNever();
    page.pollsOfASecond(page.cooler());
    QVERIFY(!page.text("Actual Temperature").isEmpty());
    page.refresh(page.cooler());
    QVERIFY(!page.text("Setpoint").isEmpty());
}

void tst_SetupTabCooler::nothingIsShownBeforeTheFirstRead()
{
    SetupPage page;
    page.click("General Setup");
    page.rig().gate().hold("zvtMfgGetCoolerType");
    page.click(coolerSection);
    QVERIFY(page.rig().gate().waitHeld("zvtMfgGetCoolerType"));
    page.awaitFrame();
    for (const char *name : {"Cooler Type", "Actual Temperature", "Internal Temperature", "Setpoint"})
        QCOMPARE(page.text(name), "");
    page.rig().gate().release("*");
    page.settle();
    for (const char *name : {"Cooler Type", "Actual Temperature", "Internal Temperature", "Setpoint"})
        QVERIFY2(!page.text(name).isEmpty(), name);
}

void tst_SetupTabCooler::zeroIsShown()
{
    TemperaturePage page(coolerSection, "everything", [](emulator::Camera &camera) {
        camera.gate().script("zvtGetFlagTemperature", 0.0);
        camera.gate().script("zvtGetSCTemperatures", QVariantList{1, 2, 0.0});
        camera.gate().script("zvtMfgGetCoolerSetpoint", 0.0);
    });
    for (const char *name : {"Actual Temperature", "Internal Temperature", "Setpoint"})
        QCOMPARE(page.text(name), "0.00");
}

void tst_SetupTabCooler::polledTemperatureIsShown()
{
    TemperaturePage page(coolerSection);
    page.gate().script("zvtGetFlagTemperature", 31.25);
    QCOMPARE(page.pollsOfASecond(page.cooler()), 1);
    QCOMPARE(page.text("Actual Temperature"), "31.25");
    // A poll neither disables the section nor discards an edit.
    page.type("Setpoint", "12");
    page.gate().script("zvtGetFlagTemperature", 31.5);
    page.pollsOfASecond(page.cooler());
    QCOMPARE(page.text("Actual Temperature"), "31.50");
    QCOMPARE(page.text("Setpoint"), "12");
}

void tst_SetupTabCooler::powerIsAppliedByTheButton_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_SetupTabCooler::powerIsAppliedByTheButton()
{
    QFETCH(const bool, byKeyboard);
    TemperaturePage page(coolerSection, "te-cooler");
    QVERIFY(page.checked("Cooler Enabled"));
    QVERIFY(!page.item("Apply").property("primary").toBool());
    QCOMPARE(page.commandsOf([&] { page.use("Cooler Enabled", byKeyboard); }), QStringList());
    QVERIFY(!page.checked("Cooler Enabled"));
    QVERIFY(page.item("Apply").property("primary").toBool());
    QCOMPARE(page.commandsOf([&] { page.use("Apply", byKeyboard); }),
             QStringList({"zvtMfgSetCoolerPowerEnabled false", "zvtMfgSetCoolerSetpoint 10"}));
    QVERIFY(!page.item("Apply").property("primary").toBool());
    emulator::Clock::advance(600'000);
    float kelvin = 0;
    QCOMPARE(zvtGetFPATemperature(page.rig().camera().handle(), &kelvin), 0);
    QVERIFY(std::abs(kelvin - 295.15) < 0.1);
}

void tst_SetupTabCooler::setpointIsAppliedByTheButton()
{
    TemperaturePage page(coolerSection, "te-cooler");
    QCOMPARE(page.commandsOf([&] {
        page.type("Setpoint", "-5.125");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QCOMPARE(page.text("Setpoint"), "-5.13");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }),
             QStringList({"zvtMfgSetCoolerPowerEnabled true", "zvtMfgSetCoolerSetpoint -5.125"}));
    page.refresh(page.cooler());
    QCOMPARE(page.text("Setpoint"), "-5.13");
    // Out of the range of the cooler: refused without a message, until the next read.
    page.type("Setpoint", "500");
    QCOMPARE(page.commandsOf([&] { page.click("Apply"); }).last(), "zvtMfgSetCoolerSetpoint 500");
    QCOMPARE(page.text("Setpoint"), "500.00");
    page.refresh(page.cooler());
    QCOMPARE(page.text("Setpoint"), "-5.13");
}

void tst_SetupTabCooler::wrongSetpointIsKeptAndNotSent()
{
    TemperaturePage page(coolerSection, "te-cooler");
    page.type("Setpoint", "cold");
    page.press(Qt::Key_Return);
    QCOMPARE(page.text("Setpoint"), "cold");
    QVERIFY(!page.item("Setpoint").property("fault").toString().isEmpty());
    QCOMPARE(page.cooler()->property("setpoint").toDouble(), 10.0);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Setpoint"), "10.00");
}

void tst_SetupTabCooler::refreshDiscardsEdits()
{
    TemperaturePage page(coolerSection, "te-cooler");
    page.type("Setpoint", "-5");
    page.press(Qt::Key_Return);
    page.click("Cooler Enabled");
    QCOMPARE(page.commandsOf([&] { page.click("Refresh Cooler Settings"); }), QStringList());
    QCOMPARE(page.text("Setpoint"), "10.00");
    QVERIFY(page.checked("Cooler Enabled"));
    QVERIFY(!page.item("Apply").property("primary").toBool());
}

ZVT_TEST(tst_SetupTabCooler)
#include "tst_SetupTabCooler.moc"
