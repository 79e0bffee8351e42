#include "tests/support/Test.h"
#include "tests/unit/NucLoadRig.h"

#include "setup/SetupTabModel.h"

#include <QRegularExpression>

namespace
{

/// What a load with settings asks and sets without an option.
const QStringList callsWithoutOptions{"zvtQueryNUCInfo \"Sky\"",
                                      "zvtGetWindow 1",
                                      "zvtLoadNUC 1, \"Sky\"",
                                      "zvtGetNUCName 1",
                                      "zvtGetPresetSequencingMode",
                                      "zvtGetIntegrationWidth 1",
                                      "zvtGetFrameSyncMode",
                                      "zvtGetFrameWidth 1",
                                      "zvtCalcMinFrameWidthEx 640, 512, 30000, false"};

} // namespace

/// What a load of a correction asks the camera and sets, in order, for every choice of the settings.
class tst_NucLoad : public Test
{
    Q_OBJECT

private slots:
    void tableAloneIsLoadedByDefault();
    void optionsAloneInOrder_data();
    void optionsAloneInOrder();
    void allOptionsInOrder();
    void optionsAreCopiedAtTheCall();
    void sameWindowIsNotSet();
    void eachEdgeOfTheWindowCounts_data();
    void eachEdgeOfTheWindowCounts();
    void windowThatIsNotReadDiffers();
    void secondBiasNeedsItsKind();
    void presentFilterIsNotSet();
    void sequencingFlag_data();
    void sequencingFlag();
    void frameWidth_data();
    void frameWidth();
    void equipmentIsAskedFor_data();
    void equipmentIsAskedFor();
    void settingsNeedTheDescription();
    void settingsAreSetAfterARefusedLoad();
    void statusesOfSettingsAreIgnored();
    void otherModelsAreNotRead();
};

// The options

void tst_NucLoad::tableAloneIsLoadedByDefault()
{
    Load load;
    load.choose(optionNames.mid(1));
    QCOMPARE(load.load(), QStringList({"zvtLoadNUC 1, \"Sky\"", "zvtGetNUCName 1"}));
    QCOMPARE(load.model.nucNamePS1(), "Sky");
}

void tst_NucLoad::optionsAloneInOrder_data()
{
    QTest::addColumn<QStringList>("leftOut"); // Calls that are not made with the option.
    QTest::addColumn<QString>("before"); // The call after the added ones.
    QTest::addColumn<QStringList>("added");
    const auto row = [](const char *option, const QString &before, const QStringList &added,
                        const QStringList &leftOut = {}) { QTest::newRow(option) << leftOut << before << added; };
    const QString integration = "zvtGetIntegrationWidth 1";
    const QString minimum = "zvtCalcMinFrameWidthEx 640, 512, 30000, false";
    row("loadSettings", "zvtLoadNUC 1, \"Sky\"", {});
    row("useIntTime", "zvtGetFrameSyncMode", {"zvtSetIntegrationWidth 1, 40000"}, {integration});
    row("useWindowSize", "zvtLoadNUC 1, \"Sky\"", {"zvtUnloadNUC 1", "controller.SetWindow 16, 8, 320, 256"});
    row("useInvertRevert", "zvtLoadNUC 1, \"Sky\"", {"zvtSetInvertEnabled true", "zvtSetRevertEnabled false"});
    row("useFrameRate", QString(), {"zvtSetFrameWidth 1, 250000"}, {"zvtGetFrameWidth 1"});
    row("useFilter", integration, {"zvtGetCurrentFilterID", "zvtSetCurrentFilterID 5"});
    row("useFrameSyncMode", "zvtGetFrameWidth 1", {"zvtSetFrameSyncMode 0"}, {"zvtGetFrameSyncMode"});
    row("useDigitalGainOffset", integration, {"zvtSetDigitalGain 1, 1.25", "zvtSetDigitalOffset 1, -3.5"});
    row("useAnalogOffset", integration, {"zvtSetGlobalOffsetVoltage 0.75"});
    row("useDetectorBias", integration, {"zvtSetFPABias 310.5"});
    row("useFPAGainLevel", integration, {"zvtSetGainLevel 2"});
    row("useSkimming", QString(),
        {"zvtGetSkimmingAvailable", "zvtSetSkimmingEnabled true", "zvtSetSkimmingVoltage 3.25"});
    row("useColor", QString(), {"zvtGetNumColors", "zvtSetColor 1, 1"});
}

void tst_NucLoad::optionsAloneInOrder()
{
    QFETCH(const QStringList, leftOut);
    QFETCH(const QString, before);
    QFETCH(const QStringList, added);
    const QString option = QTest::currentDataTag();
    Load load;
    load.choose({"loadSettings", option});
    QStringList expected;
    for (QString call : callsWithoutOptions) {
        if (call == before)
            expected << added;
        if (call.startsWith("zvtCalcMin") && option == "useIntTime")
            call.replace("30000", "40000");
        if (call.startsWith("zvtCalcMin") && option == "useWindowSize")
            call.replace("640, 512", "320, 256");
        if (!leftOut.contains(call))
            expected << call;
    }
    if (before.isEmpty())
        expected << added;
    QCOMPARE(load.load(), expected);
    QCOMPARE(load.model.nucNamePS1(), "Sky");
}

void tst_NucLoad::allOptionsInOrder()
{
    Load load;
    load.choose(optionNames);
    const size_t since = load.gate().mark();
    QCOMPARE(load.load(),
             QStringList({"zvtQueryNUCInfo \"Sky\"",
                          "zvtGetWindow 1",
                          "zvtUnloadNUC 1",
                          "zvtSetInvertEnabled true",
                          "zvtSetRevertEnabled false",
                          "controller.SetWindow 16, 8, 320, 256",
                          "zvtLoadNUC 1, \"Sky\"",
                          "zvtGetNUCName 1",
                          "zvtGetPresetSequencingMode",
                          "zvtSetGainLevel 2",
                          "zvtSetGlobalOffsetVoltage 0.75",
                          "zvtSetFPABias 310.5",
                          "zvtSetDigitalGain 1, 1.25",
                          "zvtSetDigitalOffset 1, -3.5",
                          "zvtGetCurrentFilterID",
                          "zvtSetCurrentFilterID 5",
                          "zvtSetIntegrationWidth 1, 40000",
                          "zvtSetFrameSyncMode 0",
                          "zvtCalcMinFrameWidthEx 320, 256, 40000, false",
                          "zvtSetFrameWidth 1, 250000",
                          "zvtGetSkimmingAvailable",
                          "zvtSetSkimmingEnabled true",
                          "zvtSetSkimmingVoltage 3.25",
                          "zvtGetNumColors",
                          "zvtSetColor 1, 1"}));
    QCOMPARE(load.calls(since, true), QStringList());
}

void tst_NucLoad::optionsAreCopiedAtTheCall()
{
    Load load;
    load.choose({"loadSettings", "useFPAGainLevel"});
    load.gate().hold("zvtQueryNUCInfo");
    const size_t since = load.gate().mark();
    load.model.loadNuc(1, "Sky");
    QVERIFY(load.gate().waitHeld("zvtQueryNUCInfo"));
    load.choose({"useColor"});
    load.gate().release("*");
    CameraRig::settle();
    const QStringList calls = load.calls(since, false);
    QVERIFY(calls.contains("zvtSetGainLevel 2"));
    QVERIFY(!calls.contains("zvtGetNumColors"));
}

void tst_NucLoad::sameWindowIsNotSet()
{
    Load load;
    load.choose(optionNames);
    load.gate().script("zvtGetWindow", QVariantList{16, 8, 320, 256});
    const QStringList calls = load.load();
    QCOMPARE(calls.mid(1, 4),
             QStringList(
                 {"zvtGetWindow 1", "zvtSetInvertEnabled true", "zvtSetRevertEnabled false", "zvtLoadNUC 1, \"Sky\""}));
    QVERIFY(!calls.contains("controller.SetWindow 16, 8, 320, 256"));
}

void tst_NucLoad::eachEdgeOfTheWindowCounts_data()
{
    QTest::addColumn<QVariantList>("window");
    QTest::newRow("x") << QVariantList{17, 8, 320, 256};
    QTest::newRow("y") << QVariantList{16, 9, 320, 256};
    QTest::newRow("width") << QVariantList{16, 8, 321, 256};
    QTest::newRow("height") << QVariantList{16, 8, 320, 257};
}

void tst_NucLoad::eachEdgeOfTheWindowCounts()
{
    QFETCH(const QVariantList, window);
    Load load;
    load.choose({"loadSettings", "useWindowSize"});
    load.gate().script("zvtGetWindow", window);
    const QStringList calls = load.load();
    QCOMPARE(calls.mid(2, 3),
             QStringList({"zvtUnloadNUC 1", "controller.SetWindow 16, 8, 320, 256", "zvtLoadNUC 1, \"Sky\""}));
}

void tst_NucLoad::windowThatIsNotReadDiffers()
{
    Load load;
    load.gate().script("zvtGetWindow", QVariantList{16, 8, 320, 256});
    load.gate().failAlways("zvtGetWindow");
    load.choose({"loadSettings", "useWindowSize"});
    QCOMPARE(load.load().mid(2, 2), QStringList({"zvtUnloadNUC 1", "controller.SetWindow 16, 8, 320, 256"}));
    load.choose({"loadSettings"});
    QCOMPARE(load.callsWith("zvtCalcMin"), QStringList{"zvtCalcMinFrameWidthEx 0, 0, 30000, false"});
}

void tst_NucLoad::secondBiasNeedsItsKind()
{
    Load load;
    load.choose({"loadSettings", "useDetectorBias"});
    for (const uint8_t kind : {0, 1, 2, 3}) {
        zvtSNUCInfo info = record();
        info.biasKind = kind;
        load.gate().script("zvtQueryNUCInfo", QVariant::fromValue(info));
        QStringList expected{"zvtSetFPABias 310.5"};
        if (kind == 2)
            expected << "zvtSetFPABiasEx 1, 290.5";
        QCOMPARE(load.callsWith("Bias"), expected);
    }
}

void tst_NucLoad::presentFilterIsNotSet()
{
    Load load;
    load.choose({"loadSettings", "useFilter"});
    load.gate().script("zvtGetCurrentFilterID", 5);
    QCOMPARE(load.callsWith("Filter"), QStringList{"zvtGetCurrentFilterID"});
    load.gate().failNext("zvtGetCurrentFilterID");
    QCOMPARE(load.callsWith("Filter"), QStringList({"zvtGetCurrentFilterID", "zvtSetCurrentFilterID 5"}));
}

void tst_NucLoad::sequencingFlag_data()
{
    QTest::addColumn<int>("recordSync");
    QTest::addColumn<int>("cameraSync");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("useRecord");
    QTest::addColumn<bool>("sequencing");
    QTest::newRow("single preset") << 0 << 0 << 0 << false << false;
    QTest::newRow("superframe") << 1 << 0 << 1 << false << true;
    QTest::newRow("sequence") << 1 << 0 << 2 << false << true;
    QTest::newRow("sequence, sync starts the readout") << 0 << 1 << 2 << false << false;
    QTest::newRow("mode of the correction") << 0 << 1 << 2 << true << true;
    QTest::newRow("other mode of the correction") << 1 << 0 << 2 << true << false;
}

void tst_NucLoad::sequencingFlag()
{
    QFETCH(const int, recordSync);
    QFETCH(const int, cameraSync);
    QFETCH(const int, mode);
    QFETCH(const bool, useRecord);
    QFETCH(const bool, sequencing);
    Load load;
    zvtSNUCInfo info = record();
    info.frameSyncMode = static_cast<uint8_t>(recordSync);
    load.gate().script("zvtQueryNUCInfo", QVariant::fromValue(info));
    load.gate().script("zvtGetFrameSyncMode", cameraSync);
    load.gate().script("zvtGetPresetSequencingMode", mode);
    load.choose(useRecord ? QStringList({"loadSettings", "useFrameSyncMode"}) : QStringList{"loadSettings"});
    QCOMPARE(load.callsWith("zvtCalcMin"),
             QStringList{QStringLiteral("zvtCalcMinFrameWidthEx 640, 512, 30000, ") + (sequencing ? "true" : "false")});
}

void tst_NucLoad::frameWidth_data()
{
    QTest::addColumn<bool>("useRecord");
    QTest::addColumn<QVariant>("present"); // Invalid: the call fails.
    QTest::addColumn<QVariant>("minimum");
    QTest::addColumn<QString>("written");
    const QVariant failed;
    QTest::newRow("record above the minimum") << true << QVariant(1) << QVariant(200'000) << "250000";
    QTest::newRow("record below the minimum") << true << QVariant(1) << QVariant(300'000) << "300000";
    QTest::newRow("record without a minimum") << true << QVariant(1) << failed << "250000";
    QTest::newRow("present above the minimum") << false << QVariant(200'000) << QVariant(199'999) << "";
    QTest::newRow("present at the minimum") << false << QVariant(200'000) << QVariant(200'000) << "";
    QTest::newRow("present below the minimum") << false << QVariant(200'000) << QVariant(200'001) << "200001";
    QTest::newRow("present is not read") << false << failed << QVariant(150'000) << "150000";
    QTest::newRow("present without a minimum") << false << QVariant(200'000) << failed << "";
}

void tst_NucLoad::frameWidth()
{
    QFETCH(const bool, useRecord);
    QFETCH(const QVariant, present);
    QFETCH(const QVariant, minimum);
    QFETCH(const QString, written);
    Load load;
    const auto answer = [&load](const char *name, const QVariant &value) {
        if (value.isValid())
            load.gate().script(name, value);
        else
            load.gate().failAlways(name);
    };
    answer("zvtGetFrameWidth", present);
    answer("zvtCalcMinFrameWidthEx", minimum);
    load.choose(useRecord ? QStringList({"loadSettings", "useFrameRate"}) : QStringList{"loadSettings"});
    QCOMPARE(load.callsWith("zvtSetFrameWidth"),
             written.isEmpty() ? QStringList() : QStringList{"zvtSetFrameWidth 1, " + written});
}

void tst_NucLoad::equipmentIsAskedFor_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QVariant>("answer"); // Invalid: the call fails.
    QTest::addColumn<int>("writes");
    QTest::newRow("skimming") << "useSkimming"
                              << "zvtGetSkimmingAvailable" << QVariant(true) << 2;
    QTest::newRow("no skimming") << "useSkimming"
                                 << "zvtGetSkimmingAvailable" << QVariant(false) << 0;
    QTest::newRow("skimming not read") << "useSkimming"
                                       << "zvtGetSkimmingAvailable" << QVariant() << 0;
    QTest::newRow("two colors") << "useColor"
                                << "zvtGetNumColors" << QVariant(2) << 1;
    QTest::newRow("one color") << "useColor"
                               << "zvtGetNumColors" << QVariant(1) << 0;
    QTest::newRow("colors not read") << "useColor"
                                     << "zvtGetNumColors" << QVariant() << 0;
}

void tst_NucLoad::equipmentIsAskedFor()
{
    QFETCH(const QString, option);
    QFETCH(const QString, question);
    QFETCH(const QVariant, answer);
    QFETCH(const int, writes);
    Load load;
    if (answer.isValid())
        load.gate().script(question.toStdString(), answer);
    else
        load.gate().failAlways(question.toStdString());
    load.choose({"loadSettings", option});
    const QStringList calls = load.load();
    QCOMPARE(calls.size() - 1 - calls.indexOf(question), writes);
}

// Failures

void tst_NucLoad::settingsNeedTheDescription()
{
    Load load;
    load.choose(optionNames);
    load.gate().failAlways("zvtQueryNUCInfo");
    QCOMPARE(load.load(), QStringList({"zvtQueryNUCInfo \"Sky\"", "zvtLoadNUC 1, \"Sky\"", "zvtGetNUCName 1"}));
    QCOMPARE(load.model.nucNamePS1(), "Sky");
}

void tst_NucLoad::settingsAreSetAfterARefusedLoad()
{
    Load load;
    load.refresh();
    load.choose(optionNames);
    load.gate().failAlways("zvtLoadNUC");
    load.gate().script("zvtGetNUCName", "Other");
    const QStringList calls = load.load();
    // The old correction is already unloaded, but its name stays until the next read.
    QVERIFY(calls.contains("zvtUnloadNUC 1"));
    QVERIFY(!calls.contains("zvtGetNUCName 1"));
    QVERIFY(calls.contains("zvtSetGainLevel 2"));
    QCOMPARE(calls.last(), "zvtSetColor 1, 1");
    QCOMPARE(load.model.nucNamePS1(), "Sky");
    load.refresh();
    QCOMPARE(load.model.nucNamePS1(), "Other");
}

void tst_NucLoad::statusesOfSettingsAreIgnored()
{
    Load load;
    load.choose(optionNames);
    const QStringList all = load.load();
    const QRegularExpression writes("^(zvtSet|controller.SetWindow|zvtUnloadNUC)");
    for (const QString &call : all.filter(writes))
        load.gate().failAlways(call.section(u' ', 0, 0).toStdString());
    QCOMPARE(load.load(), all);
    QCOMPARE(load.model.nucNamePS1(), "Sky");
}

void tst_NucLoad::otherModelsAreNotRead()
{
    Load load;
    load.choose(optionNames);
    SignalLog setup(load.root.setupGeneralModel());
    setup.watch(load.root.setupTabModel());
    load.load();
    QCOMPARE(setup.take(), QStringList());
}

ZVT_TEST(tst_NucLoad)
#include "tst_NucLoad.moc"
