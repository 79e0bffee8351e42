#include "tests/page/CorrectionPage.h"
#include "tests/support/Test.h"

namespace
{

const QString change = QStringLiteral("If front panel temp changes by this amount in °C");
const QString period = QStringLiteral("Periodically, in minutes");

/// The visible items with this name, of one kind.
QQuickItem *controlOf(const PageDriver &page, const QString &name, const char *kind)
{
    for (QQuickItem *item : page.page()->findChildren<QQuickItem *>())
        if (item->isVisible() && item->inherits(kind) && PageDriver::nameOf(*item) == name)
            return item;
    return nullptr;
}
QQuickItem &fieldOf(const PageDriver &page, const QString &name) { return *controlOf(page, name, "QQuickTextField"); }
QQuickItem &switchOf(const PageDriver &page, const QString &name) { return *controlOf(page, name, "QQuickSwitch"); }

} // namespace

/// The settings on the Correction page: where corrections are used, and the automatic correction.
class tst_CorrectionTabSettings : public Test
{
    Q_OBJECT

private slots:
    void switchesWriteTheirSetting_data();
    void switchesWriteTheirSetting();
    void switchesFollowTheModel_data() { switchesWriteTheirSetting_data(); }
    void switchesFollowTheModel();
    void methodIsBoundToNothing();
    void methodNeedsItsCapability();
    void automaticCorrectionStartsNow_data();
    void automaticCorrectionStartsNow();

    void rowsNeedTheAutomaticCorrection();
    void valuesAreShown();
    void valuesAreBlankUntilTheyAreRead();
    void numbersAreEntered_data();
    void numbersAreEntered();
    void wrongNumbersAreNotSent_data();
    void wrongNumbersAreNotSent();
    void refusedNumberSnapsBack();
    void refusedSwitchKeepsTheChoice_data();
    void refusedSwitchKeepsTheChoice();
    void fieldStaysEnabledWhileThePageIsRead();
};

// Where corrections are used

void tst_CorrectionTabSettings::switchesWriteTheirSetting_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("command"); // For the first use.
    for (const bool byKeyboard : {false, true}) {
        const auto row = [byKeyboard](const QString &name, const char *property, const char *command) {
            QTest::addRow("%s by %s", property, byKeyboard ? "keyboard" : "mouse")
                << byKeyboard << name << QString::fromLatin1(property) << QString::fromLatin1(command);
        };
        row("NUC Video Output", "nucAnalogOutput", "zvtSetVideoOutputNUCEnabled false");
        row("NUC Data Output", "nucDigitalOutput", "zvtSetDigitalOutputNUCEnabled true");
        row("Show Bad Pixels", "showBadPixels", "zvtSetShowBadPixels false");
        row("Auto NUC", "autoNucEnabled", "zvtSetAutoNUCSetup false, true, 2.5, false, 30");
        row(change, "autoNucUseDeltaTemp", "zvtSetAutoNUCSetup true, false, 2.5, false, 30");
        row(period, "autoNucUseDeltaTime", "zvtSetAutoNUCSetup true, true, 2.5, true, 30");
    }
}

void tst_CorrectionTabSettings::switchesWriteTheirSetting()
{
    QFETCH(const bool, byKeyboard);
    QFETCH(const QString, name);
    QFETCH(const QString, property);
    QFETCH(const QString, command);
    CorrectionPage page;
    QQuickItem &toggle = switchOf(page, name);
    const bool before = toggle.property("checked").toBool();
    QCOMPARE(page.model()->property(qPrintable(property)).toBool(), before);
    QCOMPARE(page.commandsOf([&] { page.use(toggle, byKeyboard); }), QStringList{command});
    QCOMPARE(toggle.property("checked").toBool(), !before);
    QCOMPARE(page.model()->property(qPrintable(property)).toBool(), !before);
}

void tst_CorrectionTabSettings::switchesFollowTheModel()
{
    QFETCH(const QString, name);
    QFETCH(const QString, property);
    CorrectionPage page;
    const QQuickItem &toggle = switchOf(page, name);
    const bool before = toggle.property("checked").toBool();
    page.model()->setProperty(qPrintable(property), !before);
    QCOMPARE(toggle.property("checked").toBool(), !before);
}

// It neither shows nor sets the method of the camera.
void tst_CorrectionTabSettings::methodIsBoundToNothing()
{
    CorrectionPage page;
    QCOMPARE(page.model()->property("selectedCorrectionMethodIndex").toInt(), 2);
    QCOMPARE(page.shown("Bad Pixel Correction Method"), "Two Point Gradient");
    for (const char *method : {"Nearest Neighbor", "None", "Two Point Gradient"}) {
        const QString text = QString::fromLatin1(method);
        QCOMPARE(page.commandsOf([&] { page.SetupPage::choose("Bad Pixel Correction Method", text); }), QStringList());
        QCOMPARE(page.shown("Bad Pixel Correction Method"), text);
    }
    QCOMPARE(page.model()->property("selectedCorrectionMethodIndex").toInt(), 2);
}

void tst_CorrectionTabSettings::methodNeedsItsCapability()
{
    const CorrectionPage page(scriptCorrections, "bare");
    QVERIFY(page.find("Show Bad Pixels"));
    QVERIFY(!page.find("Bad Pixel Correction Method"));
}

void tst_CorrectionTabSettings::automaticCorrectionStartsNow_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_CorrectionTabSettings::automaticCorrectionStartsNow()
{
    QFETCH(const bool, byKeyboard);
    CorrectionPage page;
    // It needs no automatic corrections.
    page.model()->setProperty("autoNucEnabled", false);
    QCOMPARE(page.commandsOf([&] { page.use("Perform NUC Now", byKeyboard); }), QStringList{"zvtDoAutoNUC"});
}

// The automatic correction

void tst_CorrectionTabSettings::rowsNeedTheAutomaticCorrection()
{
    CorrectionPage page;
    for (const bool enabled : {true, false, true}) {
        page.model()->setProperty("autoNucEnabled", enabled);
        for (const QString &name : {change, period}) {
            QCOMPARE(switchOf(page, name).isEnabled(), enabled);
            QCOMPARE(fieldOf(page, name).isEnabled(), enabled);
        }
        QVERIFY(page.enabled("Auto NUC"));
    }
}

void tst_CorrectionTabSettings::valuesAreShown()
{
    CorrectionPage page;
    QCOMPARE(fieldOf(page, change).property("text").toString(), "2.50");
    QCOMPARE(fieldOf(page, period).property("text").toString(), "30");
    page.gate().script("zvtGetAutoNUCSetup", QVariantList{true, true, 1234.567, false, 604800});
    page.refresh();
    QCOMPARE(fieldOf(page, change).property("text").toString(), "1234.57");
    QCOMPARE(fieldOf(page, period).property("text").toString(), "604800");
    // A time of 0 is shown as it is.
    page.gate().script("zvtGetAutoNUCSetup", QVariantList{true, true, 2.0, false, 0});
    page.refresh();
    QCOMPARE(fieldOf(page, period).property("text").toString(), "0");
}

void tst_CorrectionTabSettings::valuesAreBlankUntilTheyAreRead()
{
    CorrectionPage page([](emulator::Camera &camera) {
        scriptCorrections(camera);
        camera.gate().failAlways("zvtGetAutoNUCSetup");
    });
    QCOMPARE(fieldOf(page, change).property("text").toString(), "");
    QCOMPARE(fieldOf(page, period).property("text").toString(), "");
}

void tst_CorrectionTabSettings::numbersAreEntered_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("shown");
    const int enterKey = Qt::Key_Return;
    QTest::newRow("temperature") << change << "12.345" << enterKey << "true, true, 12.345, false, 30"
                                 << "12.35";
    QTest::newRow("lowest temperature") << change << "0.1" << enterKey << "true, true, 0.1, false, 30"
                                        << "0.10";
    QTest::newRow("highest temperature") << change << "2000" << int(Qt::Key_Tab) << "true, true, 2000, false, 30"
                                         << "2000.00";
    QTest::newRow("lowest time") << period << "1" << int(Qt::Key_Tab) << "true, true, 2.5, false, 1"
                                 << "1";
    QTest::newRow("highest time") << period << "604800" << enterKey << "true, true, 2.5, false, 604800"
                                  << "604800";
}

void tst_CorrectionTabSettings::numbersAreEntered()
{
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    QFETCH(const int, key);
    QFETCH(const QString, command);
    QFETCH(const QString, shown);
    CorrectionPage page;
    QCOMPARE(page.commandsOf([&] { page.enter(fieldOf(page, name), text, static_cast<Qt::Key>(key)); }),
             QStringList{"zvtSetAutoNUCSetup " + command});
    QCOMPARE(fieldOf(page, name).property("text").toString(), shown);
}

void tst_CorrectionTabSettings::wrongNumbersAreNotSent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fault");
    QTest::newRow("too low temperature") << change << "0.09"
                                         << "Not between 0.1 and 2000";
    QTest::newRow("too high temperature") << change << "2000.01"
                                          << "Not between 0.1 and 2000";
    QTest::newRow("letters") << change << "1a"
                             << "Not a number";
    QTest::newRow("too low time") << period << "0"
                                  << "Not between 1 and 604800";
    QTest::newRow("too high time") << period << "604801"
                                   << "Not between 1 and 604800";
    QTest::newRow("decimals") << period << "1.5"
                              << "Not a number";
}

void tst_CorrectionTabSettings::wrongNumbersAreNotSent()
{
    QFETCH(const QString, name);
    QFETCH(const QString, text);
    QFETCH(const QString, fault);
    CorrectionPage page;
    const QString before = fieldOf(page, name).property("text").toString();
    QCOMPARE(page.commandsOf([&] { page.enter(fieldOf(page, name), text, Qt::Key_Return); }), QStringList());
    QCOMPARE(fieldOf(page, name).property("text").toString(), text);
    QCOMPARE(fieldOf(page, name).property("fault").toString(), fault);
    page.press(Qt::Key_Escape);
    QCOMPARE(fieldOf(page, name).property("text").toString(), before);
}

void tst_CorrectionTabSettings::refusedNumberSnapsBack()
{
    CorrectionPage page;
    page.gate().failAlways("zvtSetAutoNUCSetup");
    QCOMPARE(page.commandsOf([&] { page.enter(fieldOf(page, period), "60", Qt::Key_Return); }).size(), 1);
    QCOMPARE(fieldOf(page, period).property("text").toString(), "30");
}

void tst_CorrectionTabSettings::refusedSwitchKeepsTheChoice_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("property");
    QTest::newRow("zvtSetVideoOutputNUCEnabled") << "NUC Video Output"
                                                 << "nucAnalogOutput";
    QTest::newRow("zvtSetDigitalOutputNUCEnabled") << "NUC Data Output"
                                                   << "nucDigitalOutput";
    QTest::newRow("zvtSetShowBadPixels") << "Show Bad Pixels"
                                         << "showBadPixels";
    for (const auto &[name, property] : {std::pair{QStringLiteral("Auto NUC"), "autoNucEnabled"},
                                         {change, "autoNucUseDeltaTemp"},
                                         {period, "autoNucUseDeltaTime"}})
        QTest::addRow("zvtSetAutoNUCSetup, %s", property) << name << QString::fromLatin1(property);
}

// The model does not signal after a refusal. The switch follows the next change of the value.
void tst_CorrectionTabSettings::refusedSwitchKeepsTheChoice()
{
    QFETCH(const QString, name);
    QFETCH(const QString, property);
    const std::string command = QString::fromLatin1(QTest::currentDataTag()).section(',', 0, 0).toStdString();
    CorrectionPage page;
    QQuickItem &toggle = switchOf(page, name);
    const bool before = toggle.property("checked").toBool();
    const auto stored = [&] { return page.model()->property(qPrintable(property)).toBool(); };
    page.gate().failAlways(command);
    QCOMPARE(page.commandsOf([&] { page.use(toggle, false); }).size(), 1);
    QCOMPARE(toggle.property("checked").toBool(), !before);
    QCOMPARE(stored(), before);
    // Each read finds the opposite of the values that the page was opened with, and then these values again.
    for (const bool opposite : {true, false}) {
        page.gate().script("zvtGetShowBadPixels", !opposite);
        page.gate().script("zvtGetAutoNUCSetup", QVariantList{!opposite, !opposite, 2.5, opposite, 30});
        page.gate().script("zvtGetDigitalOutputNUCEnabled", opposite);
        page.gate().script("zvtGetVideoOutputNUCEnabled", !opposite);
        QMetaObject::invokeMethod(page.model(), "refresh");
        page.settle();
        QCOMPARE(stored(), opposite ? !before : before);
        QCOMPARE(toggle.property("checked").toBool(), stored());
    }
}

void tst_CorrectionTabSettings::fieldStaysEnabledWhileThePageIsRead()
{
    CorrectionPage page;
    fieldOf(page, change).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.PageDriver::type("7");
    page.gate().hold("zvtGetShowBadPixels");
    QMetaObject::invokeMethod(page.model(), "refresh");
    QVERIFY(page.gate().waitHeld("zvtGetShowBadPixels"));
    QVERIFY(fieldOf(page, change).isEnabled());
    page.gate().script("zvtGetAutoNUCSetup", QVariantList{false, true, 2.5, false, 30});
    page.gate().release("*");
    page.settle();
    // Also if the read has switched the automatic correction off.
    QVERIFY(fieldOf(page, change).hasActiveFocus());
    QCOMPARE(fieldOf(page, change).property("text").toString(), "7");
    page.press(Qt::Key_Escape);
    page.press(Qt::Key_Tab);
    QVERIFY(!fieldOf(page, change).isEnabled());
}

ZVT_TEST(tst_CorrectionTabSettings)
#include "tst_CorrectionTabSettings.moc"
