#include "tests/support/Test.h"
#include "tests/unit/OverlayRig.h"

namespace
{

/// The getters in the order of a read; `withText` if the camera has a text of the user.
QStringList readOrder(bool withText = true)
{
    QStringList calls{
        "zvtGetVideoOverlayPalette",      "zvtGetVideoOverlayShowMessage",    "zvtGetVideoOverlayEnabled",
        "zvtGetVideoOverlayTextColor",    "zvtGetVideoOverlayTextBackground", "zvtGetVideoOverlayShowAGCROI",
        "zvtGetVideoOverlayShowFocusROI", "zvtGetVideoOverlayAGCROIColor",    "zvtGetVideoOverlayFocusROIColor"};
    for (size_t flag = 2; flag < std::size(overlayFlags); ++flag)
        calls << QString::fromStdString(overlayFlags[flag].getter());
    calls << "zvtGetHasLensTemperature"
          << "zvtGetVideoOverlayTextColorsAvailable"
          << "zvtGetVideoOverlayUserDefinedFieldAvailable";
    if (withText)
        calls << "zvtGetVideoOverlayShowUserDefinedField"
              << "zvtGetVideoOverlayUserDefinedFieldText";
    return calls;
}

/// The signals of the values that every read signals, in order.
QStringList signalsOfEachRead()
{
    QStringList order{"videoPaletteStringListChanged", "showMessagesChanged", "showOverlayChanged"};
    order << overlayColors[0].signalNames() << overlayColors[1].signalNames();
    order << "showAgcRoiChanged"
          << "showFocusRoiChanged";
    order << overlayColors[2].signalNames() << overlayColors[3].signalNames();
    for (size_t flag = 2; flag < std::size(overlayFlags); ++flag)
        order << overlayFlags[flag].signal();
    return order;
}

const QStringList firstFlags{"refreshingChanged", "hasRefreshedChanged"};
const QStringList lastFlags{"hasRefreshedChanged", "refreshingChanged"};

ModelUnderTest changedModel()
{
    auto model = modelOf<OverlaySettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptOverlay(rig.gate()); };
    return model;
}

} // namespace

/// What the settings of the overlay read from the camera, and what they show after a read.
class tst_OverlaySettingsModel : public Test
{
    Q_OBJECT

private slots:
    void startsWithDefaults();
    void readsInOrder();
    void theTextOfTheUserIsReadOnlyIfTheCameraHasIt();
    void publishesInOrder();
    void readsSignalUnchangedSwitchesAndColours();
    void thePaletteIsTheCameras();
    void aFailedReadOfThePaletteMakesItBlack();
    void aTextThatFillsItsBufferIsRead();
    void entry0IsTransparentForTexts();
    void eachColourIsAnEntryOfThePalette_data();
    void eachColourIsAnEntryOfThePalette();

    void visibleIsKept();
    void theRootReadsAVisibleSection();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

// The read

void tst_OverlaySettingsModel::startsWithDefaults()
{
    Overlay overlay;
    const OverlaySettingsModel &model = overlay.model;
    QVERIFY(!model.refreshing() && !model.hasRefreshed() && !model.visible());
    QVERIFY(!model.showMessages() && !model.showOverlay() && !model.hasLensTemp());
    for (const OverlayFlag &flag : overlayFlags)
        QVERIFY2(!overlay.shows(flag.property), flag.property);
    QVERIFY(model.textColorsAvailable());
    QVERIFY(!model.userDefinedFieldAvailable() && !model.showUserDefinedField());
    QCOMPARE(model.userDefinedFieldText(), QString());
    QCOMPARE(model.videoPaletteStringList(), QStringList());
    QVERIFY(!model.overlayTextHasColor() && !model.overlayTextBackgroundHasColor());
    QCOMPARE(model.overlayTextColorIndex(), -1);
    QCOMPARE(model.overlayTextBackgroundColorIndex(), -1);
    QCOMPARE(model.agcRoiColorIndex(), 0);
    QCOMPARE(model.focusRoiColorIndex(), 0);
    QVERIFY(!model.overlayTextColor().isValid());
    for (const QColor &color : {model.overlayTextBackgroundColor(), model.agcRoiColor(), model.focusRoiColor()})
        QCOMPARE(color, QColor("black"));
}

void tst_OverlaySettingsModel::readsInOrder()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    QCOMPARE(overlay.read(), readOrder());
    // Values of equipment that the camera lacks are read too.
    Overlay lowCost("low-cost");
    scriptOverlay(lowCost.gate());
    QCOMPARE(lowCost.read(), readOrder());
}

void tst_OverlaySettingsModel::theTextOfTheUserIsReadOnlyIfTheCameraHasIt()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    overlay.gate().failNext("zvtGetVideoOverlayUserDefinedFieldAvailable");
    QCOMPARE(overlay.read(), readOrder(false));
    QVERIFY(!overlay.model.userDefinedFieldAvailable());
    overlay.gate().script("zvtGetVideoOverlayUserDefinedFieldAvailable", false);
    QCOMPARE(overlay.read(), readOrder(false));
    QVERIFY(!overlay.model.showUserDefinedField());
}

void tst_OverlaySettingsModel::publishesInOrder()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    QCOMPARE(overlay.signalsOfRead(),
             firstFlags + signalsOfEachRead()
                 + QStringList({"hasLensTempChanged", "textColorsAvailableChanged", "userDefinedFieldAvailableChanged",
                                "showUserDefinedFieldChanged", "userDefinedFieldTextChanged"})
                 + lastFlags);
    QVERIFY(overlay.model.showMessages() && overlay.model.showOverlay() && overlay.model.hasLensTemp());
    QVERIFY(!overlay.model.textColorsAvailable() && overlay.model.userDefinedFieldAvailable());
    QVERIFY(overlay.model.showUserDefinedField());
    QCOMPARE(overlay.model.userDefinedFieldText(), "Bench 3 µ");
}

void tst_OverlaySettingsModel::readsSignalUnchangedSwitchesAndColours()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    overlay.read();
    QCOMPARE(overlay.signalsOfRead(), firstFlags + signalsOfEachRead() + lastFlags);
}

void tst_OverlaySettingsModel::thePaletteIsTheCameras()
{
    Overlay overlay;
    overlay.read();
    const QStringList palette = overlay.model.videoPaletteStringList();
    QCOMPARE(palette.size(), 256);
    QCOMPARE(palette.mid(1, 7),
             QStringList({"#ffffff", "#ff0000", "#00ff00", "#0000ff", "#ffff00", "#00ffff", "#ff00ff"}));
    // A component below 16 has two digits.
    overlay.gate().script("zvtGetVideoOverlayPalette", QByteArray("\x0a"));
    overlay.read();
    QCOMPARE(overlay.model.videoPaletteStringList().at(0), "#0a0000");
}

void tst_OverlaySettingsModel::aFailedReadOfThePaletteMakesItBlack()
{
    Overlay overlay;
    overlay.read();
    overlay.gate().failNext("zvtGetVideoOverlayPalette");
    QVERIFY(overlay.signalsOfRead().contains("videoPaletteStringListChanged"));
    QCOMPARE(overlay.model.videoPaletteStringList(), QStringList(256, "#000000"));
    QCOMPARE(overlay.model.agcRoiColor(), QColor("black"));
}

void tst_OverlaySettingsModel::aTextThatFillsItsBufferIsRead()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    overlay.gate().fillBuffers(true);
    overlay.read();
    QCOMPARE(overlay.model.userDefinedFieldText().toUtf8().size(), 65);
}

void tst_OverlaySettingsModel::entry0IsTransparentForTexts()
{
    Overlay overlay;
    scriptOverlay(overlay.gate());
    overlay.read();
    QVERIFY(overlay.model.overlayTextHasColor() && overlay.model.overlayTextBackgroundHasColor());
    for (const OverlayColor &color : overlayColors)
        overlay.gate().script(color.getter(), 0);
    overlay.read();
    QVERIFY(!overlay.model.overlayTextHasColor() && !overlay.model.overlayTextBackgroundHasColor());
    QVERIFY(!overlay.model.overlayTextColor().isValid());
    // Frames have no transparent colour.
    for (const char *color : {"overlayTextBackgroundColor", "agcRoiColor", "focusRoiColor"})
        QCOMPARE(overlay.model.property(color).value<QColor>(), QColor("black"));
}

void tst_OverlaySettingsModel::eachColourIsAnEntryOfThePalette_data()
{
    QTest::addColumn<int>("color");
    for (int color = 0; color < overlayColors.size(); ++color)
        QTest::newRow(qPrintable(overlayColors.at(color).name)) << color;
}

void tst_OverlaySettingsModel::eachColourIsAnEntryOfThePalette()
{
    QFETCH(const int, color);
    const OverlayColor &row = overlayColors.at(color);
    Overlay overlay;
    overlay.read();
    const auto shown = [&] { return overlay.model.property(row.color()).value<QColor>(); };
    for (const int entry : {1, 2, 200, 255}) {
        overlay.gate().script(row.getter(), entry);
        overlay.read();
        QCOMPARE(overlay.model.property(row.index()).toInt(), entry);
        QCOMPARE(shown().name(), overlay.model.videoPaletteStringList().at(entry));
        if (row.mayBeTransparent)
            QVERIFY(overlay.model.property(row.hasColor()).toBool());
    }
    for (const int outside : {0, -1, 256, 1000}) {
        overlay.model.setProperty(row.index(), outside);
        QCOMPARE(shown(), color == 0 ? QColor() : QColor("black"));
    }
}

void tst_OverlaySettingsModel::visibleIsKept()
{
    Overlay overlay;
    QCOMPARE(overlay.write("visible", true), QStringList());
    QVERIFY(overlay.model.visible());
    QCOMPARE(overlay.log.take(), QStringList("visibleChanged"));
}

void tst_OverlaySettingsModel::theRootReadsAVisibleSection()
{
    Overlay overlay;
    for (const bool visible : {false, true}) {
        overlay.model.setVisible(visible);
        const size_t mark = overlay.gate().mark();
        overlay.root.refreshAllVisible();
        CameraRig::settle();
        QCOMPARE(overlay.rig.callsSince(mark).count("zvtGetVideoOverlayPalette"), visible ? 1 : 0);
    }
}

// Rules for every model

void tst_OverlaySettingsModel::failingReads()
{
    const QStringList ofPalette{"videoPaletteStringList", "overlayTextColor", "overlayTextBackgroundColor",
                                "agcRoiColor", "focusRoiColor"};
    walkFailingReads(changedModel(),
                     {{"zvtGetVideoOverlayPalette", {ofPalette, "a palette that was not read is black", ofPalette}},
                      {"zvtGetVideoOverlayUserDefinedFieldAvailable",
                       {{"userDefinedFieldAvailable", "showUserDefinedField", "userDefinedFieldText"},
                        "the user's text is asked for only if the camera has it"}}});
}

void tst_OverlaySettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(modelOf<OverlaySettingsModel>()); }

void tst_OverlaySettingsModel::secondRefreshIsDropped() { walkSecondRefresh(modelOf<OverlaySettingsModel>()); }

void tst_OverlaySettingsModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<OverlaySettingsModel>(), {"videoPaletteStringList"});
}

void tst_OverlaySettingsModel::randomOperator() { walkRandomOperator(modelOf<OverlaySettingsModel>(), 62); }

ZVT_TEST(tst_OverlaySettingsModel)
#include "tst_OverlaySettingsModel.moc"
