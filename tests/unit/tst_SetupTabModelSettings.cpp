#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// The settings of the Setup tab one by one: the published values, and the writes.
class tst_SetupTabModelSettings : public Test
{
    Q_OBJECT

private slots:
    void gainLevelWithoutNameShowsItsNumber_data();
    void gainLevelWithoutNameShowsItsNumber();
    void gainWithoutLevelsChangesNothing();
    void gainThatHasGoneMeanwhileIsNotShown();
    void failedGainLevelFallsBackToTheFirst();

    void distanceStartsAtTheNearest_data();
    void distanceStartsAtTheNearest();
    void regionSettingsBecomeIndices_data();
    void regionSettingsBecomeIndices();
    void showWhenNeedsBothFlags();
    void regionSizeIsWrittenInPixels_data();
    void regionSizeIsWrittenInPixels();
    void regionPositionIsStoredBeforeItIsWritten();
    void showWhenWritesTwoFlags_data();
    void showWhenWritesTwoFlags();

    void settersWriteWhatTheCameraTakes_data();
    void settersWriteWhatTheCameraTakes();
    void noiseReductionIsAskedEachTime();
    void noiseReductionReadsThePresetsAnew();
    void noiseReductionWithoutAControllerIsOff();
    void pageStateIsKept();
};

void tst_SetupTabModelSettings::gainLevelWithoutNameShowsItsNumber_data()
{
    QTest::addColumn<QVariant>("named"); // Invalid: the read fails.
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("failing");
    QTest::addColumn<QStringList>("levels");
    QTest::newRow("all named") << QVariant(true) << "Low" << 0 << QStringList{"Low", "Low", "Low"};
    QTest::newRow("a failing name") << QVariant(true) << "Low" << 2 << QStringList{"Low", "1", "Low"};
    QTest::newRow("empty names") << QVariant(true) << "" << 0 << QStringList{"0", "1", "2"};
    QTest::newRow("not named") << QVariant(false) << "Low" << 0 << QStringList{"0", "1", "2"};
    QTest::newRow("not known") << QVariant() << "Low" << 0 << QStringList{"0", "1", "2"};
    const QString foreign = QString::fromUtf8("Größe 高");
    QTest::newRow("beyond Latin") << QVariant(true) << foreign << 0 << QStringList{foreign, foreign, foreign};
}

void tst_SetupTabModelSettings::gainLevelWithoutNameShowsItsNumber()
{
    QFETCH(QVariant, named);
    QFETCH(QString, name);
    QFETCH(int, failing);
    SetupTab tab;
    tab.gate().script("zvtGetGainLevelsAreNamed", named.isValid() ? named : true);
    if (!named.isValid())
        tab.gate().failNext("zvtGetGainLevelsAreNamed");
    tab.gate().script("zvtGetGainLevelName", name);
    if (failing > 0)
        tab.gate().failNext("zvtGetGainLevelName", failing);
    const QStringList calls = tab.refresh();
    QTEST(tab.model->fpaGainLevels(), "levels");
    QCOMPARE(calls.filter("zvtGetGainLevelName").size(), named.toBool() ? 3 : 0);

    // A name that fills its buffer ends at the end of the buffer.
    tab.gate().fillBuffers(true);
    tab.gate().script("zvtGetGainLevelsAreNamed", true);
    tab.refresh();
    QCOMPARE(tab.model->fpaGainLevels().first().toUtf8().size(), 100);
}

void tst_SetupTabModelSettings::gainWithoutLevelsChangesNothing()
{
    SetupTab tab;
    tab.refresh();
    const QStringList levels = tab.model->fpaGainLevels();
    QCOMPARE(levels.size(), 3);
    tab.gate().script("zvtGetGainLevel", 1);
    QVERIFY(tab.rig.camera().changeMakeUp("numFPAGainLevels", 0));
    tab.rig.controller()->capabilities.configure(tab.rig.controller().get());
    tab.root.cameraCapabilitiesModel()->configure();
    QVERIFY(tab.refresh().contains("zvtGetGainLevel"));
    QCOMPARE(tab.model->fpaGainLevels(), levels);
    QCOMPARE(tab.model->selectedFPAGainLevel(), 0);
}

void tst_SetupTabModelSettings::gainThatHasGoneMeanwhileIsNotShown()
{
    SetupTab tab;
    tab.gate().hold("zvtGetFrameSyncSource");
    tab.model->refresh();
    QVERIFY(tab.gate().waitHeld("zvtGetFrameSyncSource"));
    QVERIFY(tab.rig.camera().changeMakeUp("hasFPAGain", false));
    tab.rig.controller()->capabilities.configure(tab.rig.controller().get());
    tab.root.cameraCapabilitiesModel()->configure();
    tab.gate().release("*");
    CameraRig::settle();
    QCOMPARE(tab.model->fpaGainLevels(), QStringList());
}

void tst_SetupTabModelSettings::failedGainLevelFallsBackToTheFirst()
{
    SetupTab tab;
    tab.gate().script("zvtGetGainLevel", 2);
    tab.refresh();
    QCOMPARE(tab.model->selectedFPAGainLevel(), 2);
    tab.gate().failNext("zvtGetGainLevel");
    tab.refresh();
    QCOMPARE(tab.model->selectedFPAGainLevel(), 0);
}

void tst_SetupTabModelSettings::distanceStartsAtTheNearest_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<float>("distance");
    QTest::newRow("cut") << 1.2345 << 1.234F;
    QTest::newRow("whole") << 2.0 << 2.0F;
    QTest::newRow("below zero") << -0.0005 << -0.001F;
    QTest::newRow("too large to cut") << 8388.609 << 8388608.609F / 1000.0F;
}

void tst_SetupTabModelSettings::distanceStartsAtTheNearest()
{
    QFETCH(double, minimum);
    SetupTab tab;
    tab.gate().script("zvtGetFocusToDistanceMin", minimum);
    tab.refresh();
    QTEST(tab.model->distanceToFocus(), "distance");
    QCOMPARE(tab.model->distanceMinimum(), static_cast<float>(minimum));

    // The next refresh replaces the distance that the operator has entered.
    tab.model->setDistanceToFocus(50.0F);
    tab.model->setDistanceToFocus(50.0F);
    QCOMPARE(tab.log.take(), QStringList{"distanceToFocusChanged"});
    tab.refresh();
    QTEST(tab.model->distanceToFocus(), "distance");
}

void tst_SetupTabModelSettings::regionSettingsBecomeIndices_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<bool>("overlay");
    QTest::addColumn<bool>("whenFocusing");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("showWhen");
    QTest::newRow("smallest, always") << 16 << true << true << 0 << 0;
    QTest::newRow("largest, when focusing") << 512 << false << true << 5 << 1;
    QTest::newRow("unknown size, never") << 100 << false << false << 3 << 2;
    QTest::newRow("in between") << 64 << true << false << 2 << 0;
}

void tst_SetupTabModelSettings::regionSettingsBecomeIndices()
{
    QFETCH(int, pixels);
    QFETCH(bool, overlay);
    QFETCH(bool, whenFocusing);
    SetupTab tab;
    tab.gate().script("zvtGetAutoFocusROISize", pixels);
    tab.gate().script("zvtGetAutoFocusROIPosition", 4);
    tab.gate().script("zvtGetVideoOverlayShowFocusROI", overlay);
    tab.gate().script("zvtGetAutoFocusROIShowWhenFocusing", whenFocusing);
    tab.refresh();
    QTEST(tab.model->selectedAFRoiSizeIndex(), "size");
    QCOMPARE(tab.model->selectedAFRoiPositionIndex(), 4);
    QTEST(tab.model->selectedAFRoiShowWhenIndex(), "showWhen");
}

void tst_SetupTabModelSettings::showWhenNeedsBothFlags()
{
    SetupTab tab;
    tab.gate().script("zvtGetVideoOverlayShowFocusROI", true);
    tab.refresh();
    tab.gate().script("zvtGetVideoOverlayShowFocusROI", false);
    tab.gate().failNext("zvtGetAutoFocusROIShowWhenFocusing");
    tab.refresh();
    QCOMPARE(tab.model->selectedAFRoiShowWhenIndex(), 0);
}

void tst_SetupTabModelSettings::regionSizeIsWrittenInPixels_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("pixels");
    QTest::newRow("smallest") << 0 << 16;
    QTest::newRow("largest") << 5 << 512;
    QTest::newRow("beyond the table") << 6 << 128;
    QTest::newRow("before the table") << -1 << 128;
}

void tst_SetupTabModelSettings::regionSizeIsWrittenInPixels()
{
    QFETCH(int, index);
    QFETCH(int, pixels);
    SetupTab tab;
    tab.gate().script("zvtGetAutoFocusROISize", 32);
    tab.gate().script("zvtSetAutoFocusROISize", true);
    tab.refresh();
    const QStringList write{QStringLiteral("zvtSetAutoFocusROISize %1").arg(pixels)};
    QCOMPARE(tab.callsOf([&] { tab.model->setSelectedAFRoiSizeIndex(1); }), QStringList());
    tab.gate().failNext("zvtSetAutoFocusROISize");
    QCOMPARE(tab.callsOf([&] { tab.model->setSelectedAFRoiSizeIndex(index); }), write);
    QCOMPARE(tab.model->selectedAFRoiSizeIndex(), 1);
    QCOMPARE(tab.log.take(), QStringList());
    QCOMPARE(tab.callsOf([&] { tab.model->setSelectedAFRoiSizeIndex(index); }), write);
    QCOMPARE(tab.model->selectedAFRoiSizeIndex(), index);
    QCOMPARE(tab.log.take(), QStringList{"selectedAFRoiSizeIndexChanged"});
}

void tst_SetupTabModelSettings::regionPositionIsStoredBeforeItIsWritten()
{
    SetupTab tab;
    qsizetype before = -1;
    const size_t mark = tab.mark();
    QObject::connect(tab.model, &SetupTabModel::selectedAFRoiPositionIndexChanged, this,
                     [&] { before = tab.calls(mark).size(); });
    tab.gate().failNext("zvtSetAutoFocusROIPosition");
    tab.model->setSelectedAFRoiPositionIndex(0);
    tab.model->setSelectedAFRoiPositionIndex(4);
    QCOMPARE(before, 0);
    QCOMPARE(tab.calls(mark), QStringList{"zvtSetAutoFocusROIPosition 4"});
    QCOMPARE(tab.model->selectedAFRoiPositionIndex(), 4);
}

void tst_SetupTabModelSettings::showWhenWritesTwoFlags_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("overlay");
    QTest::addColumn<QString>("whenFocusing");
    QTest::newRow("always") << 0 << "true"
                            << "false";
    QTest::newRow("when focusing") << 1 << "false"
                                   << "true";
    QTest::newRow("never") << 2 << "false"
                           << "false";
}

void tst_SetupTabModelSettings::showWhenWritesTwoFlags()
{
    QFETCH(int, index);
    QFETCH(QString, overlay);
    QFETCH(QString, whenFocusing);
    for (const bool refused : {false, true}) {
        SetupTab tab;
        tab.gate().script("zvtGetVideoOverlayShowFocusROI", index != 0);
        tab.gate().script("zvtGetAutoFocusROIShowWhenFocusing", true);
        tab.gate().script("zvtSetVideoOverlayShowFocusROI", true);
        tab.refresh();
        qsizetype before = -1;
        const size_t mark = tab.mark();
        QObject::connect(tab.model, &SetupTabModel::selectedAFRoiShowWhenIndexChanged, this,
                         [&] { before = tab.calls(mark).size(); });
        if (refused)
            tab.gate().failNext("zvtSetVideoOverlayShowFocusROI");
        tab.model->setSelectedAFRoiShowWhenIndex(index);
        QCOMPARE(before, 0);
        QStringList expected{"zvtSetVideoOverlayShowFocusROI " + overlay};
        if (!refused)
            expected << "zvtSetAutoFocusROIShowWhenFocusing " + whenFocusing;
        QCOMPARE(tab.calls(mark), expected);
        QCOMPARE(tab.model->selectedAFRoiShowWhenIndex(), index);
    }
}

void tst_SetupTabModelSettings::settersWriteWhatTheCameraTakes_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("write");
    QTest::newRow("hsm") << "hsmEnabled"
                         << "zvtGetHSMEnabled"
                         << "zvtSetHSMEnabled true";
    QTest::newRow("hflip") << "hflipImage"
                           << "zvtGetRevertEnabled"
                           << "zvtSetRevertEnabled true";
    QTest::newRow("vflip") << "vflipImage"
                           << "zvtGetInvertEnabled"
                           << "zvtSetInvertEnabled true";
    QTest::newRow("sync") << "syncSource"
                          << "zvtGetFrameSyncSource"
                          << "zvtSetFrameSyncSource 1";
    QTest::newRow("gain") << "selectedFPAGainLevel"
                          << "zvtGetGainLevel"
                          << "zvtSetGainLevel 1";
    QTest::newRow("athermalization") << "athermalizationEnabled"
                                     << "zvtGetLensAthermalizationEnabled"
                                     << "zvtSetLensAthermalizationEnabled true";
}

void tst_SetupTabModelSettings::settersWriteWhatTheCameraTakes()
{
    QFETCH(QString, property);
    QFETCH(QString, read);
    QFETCH(QString, write);
    SetupTab tab;
    tab.gate().script(read.toStdString(), 0);
    const std::string name = write.section(u' ', 0, 0).toStdString();
    tab.gate().script(name, true);
    tab.refresh();
    const auto set = [&](int value) { tab.model->setProperty(property.toLatin1(), value); };

    QCOMPARE(tab.guiCallsOf([&] { set(0); }), QStringList());
    tab.gate().failNext(name);
    QCOMPARE(tab.guiCallsOf([&] { set(1); }), QStringList{write});
    QCOMPARE(tab.model->property(property.toLatin1()).toInt(), 0);
    QCOMPARE(tab.log.take(), QStringList());

    QCOMPARE(tab.guiCallsOf([&] { set(1); }), QStringList{write});
    QCOMPARE(tab.model->property(property.toLatin1()).toInt(), 1);
    QCOMPARE(tab.log.take(), QStringList{property + "Changed"});
}

void tst_SetupTabModelSettings::noiseReductionIsAskedEachTime()
{
    SetupTab tab;
    tab.gate().script("controller.GetReduceNoise", true);
    QVERIFY(tab.model->reduceNoise());
    tab.gate().script("controller.GetReduceNoise", false);
    QVERIFY(!tab.model->reduceNoise());
}

void tst_SetupTabModelSettings::noiseReductionReadsThePresetsAnew()
{
    SetupTab tab;
    const bool before = tab.model->reduceNoise();
    QCOMPARE(tab.callsOf([&] { tab.model->setReduceNoise(before); }), QStringList{"controller.GetReduceNoise"});
    QCOMPARE(tab.log.take(), QStringList());

    bool shown = before;
    QObject::connect(tab.model, &SetupTabModel::reduceNoiseChanged, this, [&] { shown = tab.model->reduceNoise(); });
    const QStringList calls = tab.callsOf([&] { tab.model->setReduceNoise(!before); });
    QCOMPARE(shown, !before);
    QCOMPARE(calls.mid(0, 2),
             QStringList({"controller.GetReduceNoise",
                          QStringLiteral("controller.SetReduceNoise ") + (before ? "false" : "true")}));
    QCOMPARE(tab.log.take(), QStringList{"reduceNoiseChanged"});
    for (int preset = 0; preset < 4; ++preset)
        QVERIFY(calls.contains(QStringLiteral("controller.GetPresetFrameRates %1").arg(preset)));
    QCOMPARE(tab.model->reduceNoise(), !before);
}

void tst_SetupTabModelSettings::noiseReductionWithoutAControllerIsOff()
{
    ZvtCameraModel root({}, nullptr);
    SignalLog log(root.setupTabModel());
    root.setupTabModel()->setReduceNoise(true);
    QVERIFY(!root.setupTabModel()->reduceNoise());
    QCOMPARE(log.take(), QStringList());
    QCOMPARE(SetupTabModel(nullptr).cameraModel(), nullptr);
    CameraRig::settle();
}

void tst_SetupTabModelSettings::pageStateIsKept()
{
    SetupTab tab;
    const QStringList calls = tab.callsOf([&] {
        for (const bool value : {true, true, false}) {
            tab.model->setVisible(value);
            tab.model->setFpaWindowSizeHasUnsavedValues(value);
        }
    });
    QCOMPARE(calls, QStringList());
    const QStringList once{"visibleChanged", "fpaWindowSizeHasUnsavedValuesChanged"};
    QCOMPARE(tab.log.take(), once + once);
}

ZVT_TEST(tst_SetupTabModelSettings)
#include "tst_SetupTabModelSettings.moc"
