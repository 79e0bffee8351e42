#include "tests/support/Test.h"
#include "tests/unit/SetupRig.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QSet>

class tst_SetupGeneralModel : public Test
{
    Q_OBJECT

private slots:
    void freshModelShowsNothing();
    void presetsBelongToTheParent();
    void modesKeepTheirNumbers();

    void rootReadsItAtConstruction();
    void rootRefreshesItWhileItIsVisible();

    void readAsksInOrder();
    void readBringsEverything();
    void namesAreUtf8();
    void everythingIsSignalledInOrder();
    void stringsAreReplacedByEachRead();
    void sectionStaysEnabledInLaterReads();
    void modesKeepTheOrderOfTheCamera();
    void cameraOfOnePresetHasFourModels();
    void windowOfNoStandardSizeIsTheLastRow_data();
    void windowOfNoStandardSizeIsTheLastRow();
    void lonelyCustomRow();
    void modeIsAskedTwice();
    void modeThatIsNotOnOfferHasNoRow();
    void failedReadPublishesWhatIsLeft();
    void readDoesNotTouchTheOperatorsChoice();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondReadIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_SetupGeneralModel::freshModelShowsNothing()
{
    QObject parent;
    SetupGeneralModel model(&parent);
    QVERIFY(model.visible());
    QVERIFY(!model.refreshing());
    QVERIFY(!model.hasRefreshed());
    for (const QStringList &strings :
         {model.windowSizeStrings(), model.factoryCalibrationStrings(), model.sequencingModeStrings()})
        QVERIFY(strings.isEmpty());
    for (const int index : {model.windowSizeIndex(), model.sequencingModeIndex(), model.superframeRateIndex()})
        QCOMPARE(index, -1);
    QCOMPARE(model.sequencingMode(), SetupGeneralModel::SINGLE_PRESET);
    for (const bool flag : {model.canWindowCustom(), model.canWindowCustomOffset(), model.isLowCost(),
                            model.isFactoryCalibrated(), model.selectedWindowSizeIsCustom()})
        QVERIFY(!flag);
    QCOMPARE(model.window(), QRect());
    QCOMPARE(model.windowMinSize(), QSize(0, 0));
    QCOMPARE(model.windowMaxSize(), QSize(0, 0));
    QCOMPARE(model.windowIncrement(), QPoint(0, 0));
    QCOMPARE(model.numPresets(), 4);
    QCOMPARE(model.activePreset(), 0);
    QCOMPARE(model.gigEPreset(), 4);
    QCOMPARE(model.videoPreset(), 0);
    QCOMPARE(model.superframeRate(), 0.0);
    QVERIFY(model.superframeRates().isEmpty());
}

void tst_SetupGeneralModel::presetsBelongToTheParent()
{
    QObject parent;
    auto *model = new SetupGeneralModel(&parent);
    QSet<ZvtCameraPresetModel *> presets;
    for (int preset = 0; preset < 4; ++preset) {
        QVERIFY(model->ps(preset));
        QCOMPARE(model->ps(preset)->parent(), &parent);
        presets << model->ps(preset);
    }
    QCOMPARE(presets.size(), 4);
    for (const int none : {-1, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        QCOMPARE(model->ps(none), nullptr);
    delete model;
    QCOMPARE(parent.children().size(), 4);
}

void tst_SetupGeneralModel::modesKeepTheirNumbers()
{
    const auto modes = QMetaEnum::fromType<SetupGeneralModel::ESEQUENCING_MODE>();
    QCOMPARE(modes.keyCount(), 3);
    QCOMPARE(modes.keyToValue("SINGLE_PRESET"), 0);
    QCOMPARE(modes.keyToValue("SUPERFRAMING"), 1);
    QCOMPARE(modes.keyToValue("PRESET_SEQUENCING"), 2);
}

// The starts of a read

void tst_SetupGeneralModel::rootReadsItAtConstruction()
{
    for (const bool connected : {true, false}) {
        CameraRig rig(QStringLiteral("everything"), connected);
        ZvtCameraModel root(rig.controller(), nullptr);
        QVERIFY(root.setupGeneralModel()->refreshing());
        CameraRig::settle();
        QVERIFY(root.setupGeneralModel()->hasRefreshed());
        QCOMPARE(root.setupGeneralModel()->windowSizeStrings().isEmpty(), !connected);
        QCOMPARE(root.property("setupGeneralModel").value<SetupGeneralModel *>(), root.setupGeneralModel());
        // The root does not read a camera that connects later; the page does.
        rig.camera().connect();
        const size_t mark = rig.gate().mark();
        CameraRig::settle();
        QVERIFY(!rig.callsSince(mark).contains("controller.GetWindowSizes"));
    }
    ZvtCameraModel without({}, nullptr);
    QVERIFY(!without.setupGeneralModel()->refreshing());
}

void tst_SetupGeneralModel::rootRefreshesItWhileItIsVisible()
{
    Setup setup;
    SignalLog log(setup.model);
    for (const bool visible : {true, false}) {
        setup.model->setVisible(visible);
        const size_t mark = setup.mark();
        setup.root.refreshAllVisible();
        CameraRig::settle();
        QCOMPARE(setup.taskCalls(mark).contains("GetWindowSizes"), visible);
    }
    QCOMPARE(log.take().filter("visibleChanged").size(), 1);
}

// The read

void tst_SetupGeneralModel::readAsksInOrder()
{
    QStringList expected{"GetWindowSizes",
                         "GetCanWindowCustom",
                         "GetWindowSizeIndex",
                         "GetIsLowCost",
                         "GetCanWindowCustom",
                         "GetCanWindowCustomOffset",
                         "GetIsFactoryCalibrated",
                         "GetFactoryCalibrations",
                         "GetWindow",
                         "GetWindowLimits",
                         "GetPresetSequencingMode",
                         "GetSequencingModes",
                         "GetPresetSequencingMode",
                         "zvtGetNumPresets",
                         "GetSuperframeRate",
                         "GetSuperframeRates",
                         "GetSuperframeRateIndex"};
    for (int preset = 0; preset < 4; ++preset)
        expected += fullReadOf(preset);
    expected += QStringList{"zvtGetVideoPreset", "zvtGetGigEPreset", "zvtGetActivePreset"};
    Setup setup;
    QCOMPARE(setup.refresh(), expected);
}

void tst_SetupGeneralModel::readBringsEverything()
{
    Setup setup;
    const auto controller = setup.rig.controller();
    controller->SetWindow(16, 4, 96, 100);
    controller->SetSuperframeRate(1, 20.0);
    controller->SetVideoPreset(2);
    controller->SetActivePreset(3);
    controller->SetPresetSequencingMode(2);
    controller->SetPresetIntegrationTime(3, 1, 4.5);
    setup.gate().script("zvtGetGigEPreset", 1);
    setup.gate().script("zvtGetNumPresets", 3);
    setup.gate().script("controller.GetIsLowCost", true);
    setup.refresh();
    const SetupGeneralModel &model = *setup.model;
    QCOMPARE(model.windowSizeStrings(), QStringList({"640x512", "512x512", "320x256", "160x128", "64x4", "Custom"}));
    QCOMPARE(model.windowSizeIndex(), 5);
    QVERIFY(model.canWindowCustom() && model.canWindowCustomOffset());
    QVERIFY(model.isLowCost() && model.isFactoryCalibrated());
    QCOMPARE(model.window(), QRect(16, 4, 96, 100));
    QCOMPARE(model.windowMinSize(), QSize(64, 4));
    QCOMPARE(model.windowMaxSize(), QSize(640, 512));
    QCOMPARE(model.windowIncrement(), QPoint(16, 4));
    QCOMPARE(model.sequencingModeStrings(), QStringList({"Single Preset", "Superframing", "Preset Sequencing"}));
    QCOMPARE(model.sequencingMode(), SetupGeneralModel::PRESET_SEQUENCING);
    QCOMPARE(model.sequencingModeIndex(), 2);
    QCOMPARE(model.numPresets(), 3);
    QCOMPARE(model.superframeRate(), 20.0);
    QVERIFY(model.superframeRates().size() > 5);
    QCOMPARE(model.superframeRates().value(model.superframeRateIndex()), 20.0);
    QCOMPARE(model.videoPreset(), 2);
    QCOMPARE(model.gigEPreset(), 1);
    QCOMPARE(model.activePreset(), 3);
    QCOMPARE(setup.model->ps(3)->integrationTime(), 4.5);
    QCOMPARE(setup.model->ps(0)->activeFactoryCalibrationIndex(), 3);
}

void tst_SetupGeneralModel::namesAreUtf8()
{
    const Setup setup;
    QCOMPARE(setup.model->factoryCalibrationStrings(),
             QStringList({QStringLiteral("10 to 60 \u00b0C"), QStringLiteral("50 to 150 \u00b0C"),
                          QStringLiteral("120 to 350 \u00b0C"), "No Factory Calibration"}));
    const Setup edge(QStringLiteral("edge-values"));
    QCOMPARE(edge.model->factoryCalibrationStrings(), QStringList({"", "No Factory Calibration"}));
}

void tst_SetupGeneralModel::everythingIsSignalledInOrder()
{
    Setup setup;
    SignalLog log(setup.model);
    for (int preset = 0; preset < 4; ++preset) {
        log.watch(setup.model->ps(preset), QStringLiteral("ps%1.").arg(preset));
        setup.rig.controller()->SetDwellCount(preset, 77);
    }
    setup.refresh();
    QCOMPARE(log.take(),
             QStringList({"refreshingChanged",
                          "factoryCalibrationStringsChanged",
                          "windowSizeStringsChanged",
                          "windowSizeIndexChanged",
                          "canWindowCustomChanged",
                          "canWindowCustomOffsetChanged",
                          "isLowCostChanged",
                          "isFactoryCalibratedChanged",
                          "windowChanged",
                          "windowMinSizeChanged",
                          "windowMaxSizeChanged",
                          "windowIncrementChanged",
                          "sequencingModeStringsChanged",
                          "sequencingModeChanged",
                          "numPresetsChanged",
                          "superframeRateChanged",
                          "superframeRateIndexChanged",
                          "superframeRatesChanged",
                          "ps0.dwellCountChanged",
                          "ps1.dwellCountChanged",
                          "ps2.dwellCountChanged",
                          "ps3.dwellCountChanged",
                          "videoPresetChanged",
                          "gigEPresetChanged",
                          "activePresetChanged",
                          "refreshingChanged"}));
}

void tst_SetupGeneralModel::stringsAreReplacedByEachRead()
{
    Setup setup;
    QStringList shown;
    QObject::connect(setup.model, &SetupGeneralModel::windowSizeStringsChanged, this,
                     [&] { shown << setup.model->windowSizeStrings().first(); });
    // The signal of the modes comes with the old row, the signal of the mode with the new one.
    QList<int> rows;
    setup.rig.controller()->SetPresetSequencingMode(1);
    const auto note = [&] { rows << setup.model->sequencingModeIndex(); };
    QObject::connect(setup.model, &SetupGeneralModel::sequencingModeStringsChanged, this, note);
    QObject::connect(setup.model, &SetupGeneralModel::sequencingModeChanged, this, note);
    setup.refresh();
    QCOMPARE(shown, QStringList({"640x512"}));
    QCOMPARE(rows, QList<int>({0, 1}));
}

void tst_SetupGeneralModel::sectionStaysEnabledInLaterReads()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    SetupGeneralModel &model = *root.setupGeneralModel();
    SignalLog log(&model);
    CameraRig::settle();
    QCOMPARE(log.take().mid(20), QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    model.refresh();
    QVERIFY(model.refreshing());
    QVERIFY(model.hasRefreshed());
    CameraRig::settle();
    QVERIFY(!log.take().contains("hasRefreshedChanged"));
}

void tst_SetupGeneralModel::modesKeepTheOrderOfTheCamera()
{
    Setup setup(QStringLiteral("edge-values")); // It also has a mode that pages do not show.
    QCOMPARE(setup.model->sequencingModeStrings(), QStringList({"Single Preset", "Preset Sequencing", "Superframing"}));
    setup.rig.controller()->SetPresetSequencingMode(1);
    setup.refresh();
    QCOMPARE(setup.model->sequencingModeIndex(), 2);
    QCOMPARE(setup.model->sequencingMode(), SetupGeneralModel::SUPERFRAMING);
}

void tst_SetupGeneralModel::cameraOfOnePresetHasFourModels()
{
    Setup setup(QStringLiteral("low-cost"));
    QCOMPARE(setup.model->numPresets(), 1);
    QCOMPARE(setup.model->sequencingModeStrings(), QStringList({"Single Preset"}));
    QCOMPARE(setup.model->sequencingModeIndex(), 0);
    QVERIFY(setup.model->isLowCost());
    QCOMPARE(setup.refresh().filter("GetPresetIntegrationTime").size(), 4);
    QVERIFY(setup.model->ps(0)->integrationTime() > 0.0);
    for (int preset = 1; preset < 4; ++preset)
        QCOMPARE(setup.model->ps(preset)->integrationTime(), 0.0);
}

void tst_SetupGeneralModel::windowOfNoStandardSizeIsTheLastRow_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QVariant>("answer"); // Invalid: the read fails.
    QTest::addColumn<QString>("row");
    QTest::newRow("custom") << "everything" << QVariant(-1) << "Custom";
    QTest::newRow("custom, failed") << "everything" << QVariant() << "Custom";
    QTest::newRow("no custom") << "low-cost" << QVariant(-1) << "192x144";
    QTest::newRow("no custom, failed") << "low-cost" << QVariant() << "192x144";
    QTest::newRow("standard") << "everything" << QVariant(2) << "320x256";
}

void tst_SetupGeneralModel::windowOfNoStandardSizeIsTheLastRow()
{
    QFETCH(QString, profile);
    QFETCH(QVariant, answer);
    Setup setup(profile);
    if (answer.isValid())
        setup.gate().script("controller.GetWindowSizeIndex", answer);
    else
        setup.gate().failAlways("controller.GetWindowSizeIndex");
    setup.refresh();
    QTEST(setup.model->windowSizeStrings().value(setup.model->windowSizeIndex()), "row");
}

void tst_SetupGeneralModel::lonelyCustomRow()
{
    Setup setup;
    setup.gate().failAlways("controller.GetWindowSizes");
    setup.gate().failAlways("controller.GetWindowSizeIndex");
    setup.refresh();
    QCOMPARE(setup.model->windowSizeStrings(), QStringList({"Custom"}));
    QCOMPARE(setup.model->windowSizeIndex(), 0);
    // Without a row none is selected.
    setup.gate().failAlways("controller.GetCanWindowCustom");
    setup.refresh();
    QCOMPARE(setup.model->windowSizeStrings(), QStringList());
    QCOMPARE(setup.model->windowSizeIndex(), -1);
}

void tst_SetupGeneralModel::modeIsAskedTwice()
{
    Setup setup;
    setup.rig.controller()->SetPresetSequencingMode(2);
    setup.gate().failNext("controller.GetPresetSequencingMode");
    setup.refresh();
    QCOMPARE(setup.model->sequencingMode(), SetupGeneralModel::SINGLE_PRESET);
    QCOMPARE(setup.model->sequencingModeIndex(), 2);
    setup.gate().failNext("controller.GetPresetSequencingMode", 2);
    setup.refresh();
    QCOMPARE(setup.model->sequencingMode(), SetupGeneralModel::PRESET_SEQUENCING);
    QCOMPARE(setup.model->sequencingModeIndex(), 0);
}

void tst_SetupGeneralModel::modeThatIsNotOnOfferHasNoRow()
{
    Setup setup(QStringLiteral("edge-values"));
    setup.rig.controller()->SetPresetSequencingMode(7);
    setup.refresh();
    QCOMPARE(int(setup.model->sequencingMode()), 7);
    QCOMPARE(setup.model->sequencingModeIndex(), -1);
}

void tst_SetupGeneralModel::failedReadPublishesWhatIsLeft()
{
    Setup setup;
    setup.gate().failAlways("*");
    setup.refresh();
    const SetupGeneralModel &model = *setup.model;
    QCOMPARE(model.factoryCalibrationStrings(), QStringList({"No Factory Calibration"}));
    QCOMPARE(model.sequencingModeStrings(), QStringList());
    QCOMPARE(model.windowSizeStrings(), QStringList());
    QCOMPARE(model.window(), QRect());
    QCOMPARE(model.windowMinSize(), QSize(0, 0));
    QCOMPARE(model.windowMaxSize(), QSize(0, 0));
    QCOMPARE(model.windowIncrement(), QPoint(0, 0));
    QCOMPARE(model.numPresets(), 4);
    QCOMPARE(model.gigEPreset(), 4);
    QCOMPARE(model.superframeRate(), 0.0);
    QCOMPARE(model.superframeRateIndex(), -1);
    QVERIFY(!model.canWindowCustom());
    QVERIFY(model.hasRefreshed());
}

void tst_SetupGeneralModel::readDoesNotTouchTheOperatorsChoice()
{
    Setup setup;
    setup.rig.controller()->SetWindow(16, 4, 96, 100);
    setup.refresh();
    QCOMPARE(setup.model->windowSizeIndex(), 5);
    QVERIFY(!setup.model->selectedWindowSizeIsCustom());
    setup.model->setWindow(QRect(32, 4, 96, 100));
    setup.rig.controller()->SetWindowSizeIndex(0);
    setup.refresh();
    QCOMPARE(setup.model->windowSizeIndex(), 0);
    QVERIFY(setup.model->selectedWindowSizeIsCustom());
}

// The walkers

namespace
{

ModelUnderTest setup()
{
    auto model = modelOf<SetupGeneralModel>();
    // Each value differs from the default that a failed read publishes.
    model.prepare = [](CameraRig &rig) {
        const auto controller = rig.controller();
        controller->SetWindowSizeIndex(2);
        controller->SetPresetSequencingMode(2);
        controller->SetSuperframeRateIndex(1);
        controller->SetVideoPreset(2);
        controller->SetActivePreset(3);
        rig.gate().script("zvtGetGigEPreset", 1);
        rig.gate().script("zvtGetNumPresets", 3);
        rig.gate().script("controller.GetIsLowCost", true);
    };
    model.ownState << QStringLiteral("selectedWindowSizeIsCustom");
    return model;
}

} // namespace

void tst_SetupGeneralModel::failingReads()
{
    const QMap<QString, QStringList> affected{
        {"controller.GetWindowSizes", {"windowSizeStrings"}},
        {"controller.GetCanWindowCustom", {"windowSizeStrings"}},
        {"controller.GetCanWindowCustom#2", {"canWindowCustom"}},
        {"controller.GetWindowSizeIndex", {"windowSizeIndex"}},
        {"controller.GetIsLowCost", {"isLowCost"}},
        {"controller.GetCanWindowCustomOffset", {"canWindowCustomOffset"}},
        {"controller.GetIsFactoryCalibrated", {"isFactoryCalibrated"}},
        {"controller.GetFactoryCalibrations", {"factoryCalibrationStrings"}},
        {"controller.GetWindow", {"window"}},
        {"controller.GetWindowLimits", {"windowMinSize", "windowMaxSize", "windowIncrement"}},
        {"controller.GetPresetSequencingMode", {"sequencingMode"}},
        {"controller.GetPresetSequencingMode#2", {"sequencingModeIndex"}},
        {"controller.GetSequencingModes", {"sequencingModeIndex", "sequencingModeStrings"}},
        {"zvtGetNumPresets", {"numPresets"}},
        {"controller.GetSuperframeRate", {"superframeRate"}},
        {"controller.GetSuperframeRates", {"superframeRates"}},
        {"controller.GetSuperframeRateIndex", {"superframeRateIndex"}},
        {"zvtGetVideoPreset", {"videoPreset"}},
        {"zvtGetGigEPreset", {"gigEPreset"}},
        {"zvtGetActivePreset", {"activePreset"}}};
    ReadExceptions exceptions;
    for (auto it = affected.cbegin(); it != affected.cend(); ++it)
        exceptions.insert(it.key(), {it.value(), "a failed read publishes the defaults", it.value()});
    QMap<QString, int> counts{{"GetFactoryCalibrations", 1}}; // The list that the model itself reads.
    for (int preset = 0; preset < 4; ++preset) {
        for (const QString &call : fullReadOf(preset)) {
            const QString name = call.section(u' ', 0, 0);
            const int nth = ++counts[name];
            const QString key = "controller." + name + (nth == 1 ? QString() : QStringLiteral("#%1").arg(nth));
            exceptions.insert(key, {{}, "the value belongs to a preset"});
        }
    }
    walkFailingReads(setup(), exceptions);
}

void tst_SetupGeneralModel::heldReadsOutliveTheModel() { walkHeldDeletion(setup()); }

void tst_SetupGeneralModel::secondReadIsDropped() { walkSecondRefresh(setup()); }

void tst_SetupGeneralModel::readsWithoutACamera()
{
    // All values that are read; each is signalled in any case.
    QStringList published;
    const QMetaObject &meta = SetupGeneralModel::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        if (!QStringList{"visible", "selectedWindowSizeIsCustom"}.contains(QLatin1String(meta.property(i).name())))
            published << QString::fromLatin1(meta.property(i).name());
    walkNoCamera(setup(), published);
}

void tst_SetupGeneralModel::randomOperator()
{
    for (uint32_t seed = 1; seed <= 3; ++seed)
        walkRandomOperator(setup(), seed);
}

ZVT_TEST(tst_SetupGeneralModel)
#include "tst_SetupGeneralModel.moc"
