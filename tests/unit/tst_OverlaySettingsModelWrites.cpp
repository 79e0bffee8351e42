#include "tests/support/Test.h"
#include "tests/unit/OverlayRig.h"

#include "video/VideoTabModel.h"

#include <QMetaProperty>

/// What the operator changes on the overlay.
class tst_OverlaySettingsModelWrites : public Test
{
    Q_OBJECT

private slots:
    void eachFlagIsReadAndWritten_data();
    void eachFlagIsReadAndWritten();
    void aRefusedFlagStaysUntilTheNextRead();
    void eachColourIsWritten_data();
    void eachColourIsWritten();
    void aColourThatIsOffKeepsItsEntry_data();
    void aColourThatIsOffKeepsItsEntry();
    void aChosenTextColourDoesNotTurnItOn();
    void aRefusedSwitchOfTheUserTextFallsBack();
    void aRefusedTextOfTheUserFallsBack();
    void aTextOfTheUserIsWrittenInUtf8();
    void unchangedValuesAreNotWritten();

    void allFlagsAreSetInOrder();
    void flagsWithoutEquipmentAreNotSet_data();
    void flagsWithoutEquipmentAreNotSet();
    void onlyFlagsThatDifferAreSet();
    void defaultsAreReadAfterwards();
    void aClearedMessageIsNotFollowedByARead();
    void theCameraTakesAllValues();
    void theTabShowsTheSwitchAfterItsOwnRead();
};

// Setters

void tst_OverlaySettingsModelWrites::eachFlagIsReadAndWritten_data()
{
    QTest::addColumn<int>("flag");
    for (int flag = 0; flag < int(std::size(overlayFlags)); ++flag)
        QTest::newRow(overlayFlags[flag].property) << flag;
}

void tst_OverlaySettingsModelWrites::eachFlagIsReadAndWritten()
{
    QFETCH(const int, flag);
    const OverlayFlag &row = overlayFlags[flag];
    Overlay overlay;
    for (const bool shown : {true, false}) {
        overlay.gate().script(row.getter(), shown);
        QCOMPARE(overlay.signalsOfRead().count(row.signal()), 1);
        QCOMPARE(overlay.shows(row.property), shown);
        QCOMPARE(overlay.write(row.property, !shown), QStringList(row.command(!shown)));
        QCOMPARE(overlay.log.take(), QStringList(row.signal()));
        QCOMPARE(overlay.shows(row.property), !shown);
        QCOMPARE(overlay.write(row.property, !shown), QStringList());
    }
}

void tst_OverlaySettingsModelWrites::aRefusedFlagStaysUntilTheNextRead()
{
    Overlay overlay;
    for (const char *property : {"showMessages", "showOverlay", "showAgcRoi", "showLogo", "showChassisTemp"}) {
        overlay.read();
        for (const char *setter : {"ShowMessage", "Enabled", "ShowAGCROI", "ShowLogo", "ShowChassisTemp"})
            overlay.gate().failAlways(std::string("zvtSetVideoOverlay") + setter);
        const bool before = overlay.shows(property);
        QCOMPARE(overlay.write(property, !before).size(), 1);
        QCOMPARE(overlay.shows(property), !before);
        overlay.gate().failNever();
        overlay.read();
        QCOMPARE(overlay.shows(property), before);
    }
}

void tst_OverlaySettingsModelWrites::eachColourIsWritten_data()
{
    QTest::addColumn<int>("color");
    for (int color = 0; color < overlayColors.size(); ++color)
        QTest::newRow(qPrintable(overlayColors.at(color).name)) << color;
}

void tst_OverlaySettingsModelWrites::eachColourIsWritten()
{
    QFETCH(const int, color);
    const OverlayColor &row = overlayColors.at(color);
    Overlay overlay;
    scriptOverlay(overlay.gate());
    overlay.read();
    overlay.log.take();
    QCOMPARE(overlay.write(row.index(), 77), QStringList(row.command(77)));
    QCOMPARE(overlay.log.take(), row.signalNames().mid(0, 2));
    QCOMPARE(overlay.model.property(row.color()).value<QColor>().name(), overlay.model.videoPaletteStringList().at(77));
    QCOMPARE(overlay.write(row.index(), 77), QStringList());
    // The camera gets the lowest 8 bits. The model keeps the number, also a refused one.
    overlay.gate().failAlways(row.setter());
    QCOMPARE(overlay.write(row.index(), 0x102), QStringList(row.command(2)));
    QCOMPARE(overlay.model.property(row.index()).toInt(), 0x102);
    overlay.gate().failNever();
    overlay.read();
    QCOMPARE(overlay.model.property(row.index()).toInt(), color + 2);
}

void tst_OverlaySettingsModelWrites::aColourThatIsOffKeepsItsEntry_data()
{
    QTest::addColumn<int>("color");
    QTest::newRow("text") << 0;
    QTest::newRow("background") << 1;
}

void tst_OverlaySettingsModelWrites::aColourThatIsOffKeepsItsEntry()
{
    QFETCH(const int, color);
    const OverlayColor &row = overlayColors.at(color);
    Overlay overlay;
    // Before the first read the entry is -1.
    QCOMPARE(overlay.write(row.hasColor(), true), QStringList(row.command(255)));
    overlay.gate().script(row.getter(), 12);
    overlay.read();
    overlay.log.take();
    // Each call writes, also of the present value.
    for (const bool on : {true, true, false, false, true}) {
        QCOMPARE(overlay.write(row.hasColor(), on), QStringList(row.command(on ? 12 : 0)));
        QCOMPARE(overlay.log.take(), QStringList(row.hasColor() + "Changed"));
        QCOMPARE(overlay.model.property(row.hasColor()).toBool(), on);
        QCOMPARE(overlay.model.property(row.index()).toInt(), 12);
    }
    overlay.gate().failAlways(row.setter());
    QCOMPARE(overlay.write(row.hasColor(), false), QStringList(row.command(0)));
    QVERIFY(!overlay.model.property(row.hasColor()).toBool());
}

void tst_OverlaySettingsModelWrites::aChosenTextColourDoesNotTurnItOn()
{
    Overlay overlay;
    for (const OverlayColor &row : {overlayColors.at(0), overlayColors.at(1)}) {
        overlay.gate().script(row.getter(), 0);
        overlay.read();
        overlay.model.setProperty(row.index(), 9);
        QVERIFY(!overlay.model.property(row.hasColor()).toBool());
    }
}

void tst_OverlaySettingsModelWrites::aRefusedSwitchOfTheUserTextFallsBack()
{
    Overlay overlay;
    overlay.read();
    overlay.log.take();
    QVERIFY(!overlay.model.showUserDefinedField());
    overlay.gate().failNext("zvtSetVideoOverlayShowUserDefinedField");
    for (const bool stored : {false, true}) {
        QCOMPARE(overlay.write("showUserDefinedField", true),
                 QStringList("zvtSetVideoOverlayShowUserDefinedField true"));
        QCOMPARE(overlay.model.showUserDefinedField(), stored);
        QCOMPARE(overlay.log.take(), QStringList("showUserDefinedFieldChanged"));
    }
    QCOMPARE(overlay.write("showUserDefinedField", true), QStringList());
}

void tst_OverlaySettingsModelWrites::aRefusedTextOfTheUserFallsBack()
{
    Overlay overlay;
    overlay.read();
    overlay.model.setUserDefinedFieldText("Bench 3");
    overlay.log.take();
    // More than the camera takes.
    const QString tooLong(65, u'x');
    QCOMPARE(overlay.write("userDefinedFieldText", tooLong),
             QStringList("zvtSetVideoOverlayUserDefinedFieldText \"" + tooLong + "\""));
    QCOMPARE(overlay.model.userDefinedFieldText(), "Bench 3");
    QCOMPARE(overlay.log.take(), QStringList("userDefinedFieldTextChanged"));
}

void tst_OverlaySettingsModelWrites::aTextOfTheUserIsWrittenInUtf8()
{
    Overlay overlay;
    overlay.read();
    overlay.log.take();
    QCOMPARE(overlay.write("userDefinedFieldText", "Prüfstand µ"),
             QStringList("zvtSetVideoOverlayUserDefinedFieldText \"Prüfstand µ\""));
    QCOMPARE(overlay.log.take(), QStringList("userDefinedFieldTextChanged"));
    QVERIFY(!overlay.signalsOfRead().contains("userDefinedFieldTextChanged"));
    QCOMPARE(overlay.model.userDefinedFieldText(), "Prüfstand µ");
}

void tst_OverlaySettingsModelWrites::unchangedValuesAreNotWritten()
{
    Overlay overlay;
    overlay.read();
    overlay.log.take();
    QByteArrayList properties{"visible", "showMessages", "showOverlay", "showUserDefinedField", "userDefinedFieldText"};
    for (const OverlayFlag &flag : overlayFlags)
        properties << flag.property;
    for (const OverlayColor &color : overlayColors)
        properties << color.index();
    for (const QByteArray &property : properties)
        QCOMPARE(overlay.write(property, overlay.model.property(property)), QStringList());
    QCOMPARE(overlay.log.take(), QStringList());
}

// Commands

void tst_OverlaySettingsModelWrites::allFlagsAreSetInOrder()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    // A sensor in the interior is read only from a camera without one at the chassis, and then stays.
    overlay.setEquipment("hasChassisTemperature", false);
    overlay.setEquipment("hasInternalTemperature", true);
    overlay.setEquipment("hasChassisTemperature", true);
    overlay.read();
    overlay.log.take();
    QStringList calls;
    QStringList changes;
    for (const OverlayFlag &flag : overlayFlags) {
        calls << flag.command(false);
        changes << flag.signal();
    }
    QCOMPARE(overlay.callsOf([&] { overlay.model.setAllShowBoolsTo(false); }),
             calls << "zvtSetVideoOverlayShowUserDefinedField false");
    QCOMPARE(overlay.log.take(), changes << "showUserDefinedFieldChanged");
    // The switches of the messages and of the whole overlay stay.
    QVERIFY(overlay.model.showMessages() && overlay.model.showOverlay());
}

void tst_OverlaySettingsModelWrites::flagsWithoutEquipmentAreNotSet_data()
{
    QTest::addColumn<QString>("needed");
    for (const OverlayFlag &flag : overlayFlags)
        if (flag.needs)
            QTest::newRow(flag.needs) << QString::fromLatin1(flag.needs);
    QTest::newRow("userDefinedFieldAvailable") << "userDefinedFieldAvailable";
}

void tst_OverlaySettingsModelWrites::flagsWithoutEquipmentAreNotSet()
{
    QFETCH(const QString, needed);
    for (const bool has : {false, true}) {
        Overlay overlay;
        if (needed == "hasLensTemp")
            overlay.gate().script("zvtGetHasLensTemperature", has);
        else if (needed == "userDefinedFieldAvailable")
            overlay.gate().script("zvtGetVideoOverlayUserDefinedFieldAvailable", has);
        else {
            overlay.setEquipment("hasChassisTemperature", false);
            overlay.setEquipment(needed, has);
        }
        overlay.read();
        overlay.model.setAllShowBoolsTo(false);
        overlay.model.setAllShowBoolsTo(true);
        for (const OverlayFlag &flag : overlayFlags)
            if (flag.needs == needed)
                // Only the page hides the switch of the flag.
                QCOMPARE(overlay.shows(flag.property), has || needed == "hasFlag");
        if (needed == "userDefinedFieldAvailable")
            QCOMPARE(overlay.model.showUserDefinedField(), has);
        QVERIFY(overlay.model.showLogo() && overlay.model.showFrameRate());
    }
}

void tst_OverlaySettingsModelWrites::onlyFlagsThatDifferAreSet()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    overlay.read();
    overlay.model.setShowZoom(false);
    overlay.model.setShowAgcRoi(false);
    QCOMPARE(overlay.callsOf([&] { overlay.model.setAllShowBoolsTo(true); }),
             QStringList({"zvtSetVideoOverlayShowAGCROI true", "zvtSetVideoOverlayShowZoom true"}));
}

void tst_OverlaySettingsModelWrites::defaultsAreReadAfterwards()
{
    Overlay overlay;
    overlay.read();
    overlay.model.setShowLogo(true);
    overlay.model.setShowTime(false);
    overlay.model.setAgcRoiColorIndex(200);
    overlay.log.take();
    QCOMPARE(overlay.callsOf([&] { overlay.model.useDefaults(); }), QStringList("zvtVideoOverlayUseDefaults"));
    QCOMPARE(overlay.log.take().mid(0, 2), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(!overlay.model.showLogo() && overlay.model.showTime());
    QCOMPARE(overlay.model.agcRoiColorIndex(), 5);
    // A refusal is followed by a read too.
    overlay.gate().failNext("zvtVideoOverlayUseDefaults");
    overlay.model.useDefaults();
    QVERIFY(overlay.model.refreshing());
}

void tst_OverlaySettingsModelWrites::aClearedMessageIsNotFollowedByARead()
{
    Overlay overlay;
    overlay.read();
    overlay.log.take();
    QCOMPARE(overlay.callsOf([&] { overlay.model.clearMessage(); }), QStringList("zvtVideoOverlayClearMessage"));
    QCOMPARE(overlay.log.take(), QStringList());
}

void tst_OverlaySettingsModelWrites::theCameraTakesAllValues()
{
    Overlay overlay;
    overlay.read();
    overlay.model.setAllShowBoolsTo(false);
    overlay.model.setAllShowBoolsTo(true);
    overlay.model.setShowMessages(false);
    overlay.model.setOverlayTextColorIndex(11);
    overlay.model.setOverlayTextBackgroundColorIndex(12);
    overlay.model.setOverlayTextBackgroundHasColor(true);
    overlay.model.setAgcRoiColorIndex(13);
    overlay.model.setFocusRoiColorIndex(14);
    overlay.model.setUserDefinedFieldText(QString(64, u'x'));
    // Another model of the same camera shows them.
    OverlaySettingsModel other(&overlay.root);
    other.refresh();
    CameraRig::settle();
    const QMetaObject *meta = other.metaObject();
    for (int property = meta->propertyOffset(); property < meta->propertyCount(); ++property) {
        const char *name = meta->property(property).name();
        QVERIFY2(other.property(name) == overlay.model.property(name), name);
    }
    QVERIFY(other.showLogo() && !other.showMessages() && other.overlayTextBackgroundHasColor());
}

void tst_OverlaySettingsModelWrites::theTabShowsTheSwitchAfterItsOwnRead()
{
    Overlay overlay;
    const VideoTabModel *tab = overlay.root.videoTabModel();
    const auto readTab = [&] {
        overlay.root.videoTabModel()->refresh();
        CameraRig::settle();
    };
    overlay.read();
    readTab();
    QVERIFY(tab->showOverlay());
    overlay.model.setShowOverlay(false);
    QVERIFY(tab->showOverlay());
    readTab();
    QVERIFY(!tab->showOverlay());
    overlay.root.videoTabModel()->setShowOverlay(true);
    QVERIFY(!overlay.model.showOverlay());
    overlay.read();
    QVERIFY(overlay.model.showOverlay());
}

ZVT_TEST(tst_OverlaySettingsModelWrites)
#include "tst_OverlaySettingsModelWrites.moc"
