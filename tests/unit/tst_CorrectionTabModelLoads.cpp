#include "tests/support/Test.h"
#include "tests/unit/NucLoadRig.h"

#include <QRegularExpression>
#include <QThreadPool>

#include <limits>

#include "zvt/zvtsdk.h"

namespace
{

/// Starts a load of a preset, for the walkers.
ModelUnderTest loadedModel()
{
    auto model = modelOf<CorrectionTabModel>();
    model.prepare = [](CameraRig &rig) {
        scriptCorrections(rig.gate());
        rig.gate().script("zvtLoadNUC", true);
    };
    model.read = [](QObject *subject) { qobject_cast<CorrectionTabModel *>(subject)->loadNuc(2, "Sky"); };
    return model;
}

} // namespace

/// Loads, saves and unloads corrections of the presets.
class tst_CorrectionTabModelLoads : public Test
{
    Q_OBJECT

private slots:
    void savesAndReadsTheName();
    void unloadsAndReadsTheName();
    void refusedTaskKeepsTheName_data();
    void refusedTaskKeepsTheName();
    void signalsInOrder();
    void unknownPresetsAreIgnored_data();
    void unknownPresetsAreIgnored();
    void tasksExcludeEachOther_data();
    void tasksExcludeEachOther();
    void endedTaskIsNotReplacedBeforeItIsPublished();
    void automaticValuesStay();
    void cameraLoadsWithItsSettings();

    void heldLoadsOutliveTheModel();
    void secondLoadIsDropped();
    void randomOperator();
};

// The tasks

void tst_CorrectionTabModelLoads::savesAndReadsTheName()
{
    Load load;
    const size_t since = load.gate().mark();
    QCOMPARE(load.taskOf([&] { load.model.saveNuc(3, "Möwe"); }),
             QStringList({"zvtSaveNUCAs 3, \"Möwe\"", "zvtGetNUCName 3"}));
    QCOMPARE(load.calls(since, true), QStringList());
    QCOMPARE(load.model.nucNamePS3(), "Sky");
    QCOMPARE(load.root.hasNucMask() & 8, 8);
}

void tst_CorrectionTabModelLoads::unloadsAndReadsTheName()
{
    Load load;
    load.refresh();
    load.gate().script("zvtGetNUCName", "");
    QCOMPARE(load.taskOf([&] { load.model.unloadNuc(0); }), QStringList({"zvtUnloadNUC 0", "zvtGetNUCName 0"}));
    QCOMPARE(load.model.nucNamePS0(), "");
    QCOMPARE(load.model.nucNamePS1(), "Sky");
    QCOMPARE(load.root.hasNucMask(), uint8_t(14));
}

void tst_CorrectionTabModelLoads::refusedTaskKeepsTheName_data()
{
    QTest::addColumn<QString>("fails");
    QTest::addColumn<int>("calls");
    QTest::newRow("save") << "zvtSaveNUCAs" << 1;
    QTest::newRow("unload") << "zvtUnloadNUC" << 1;
    QTest::newRow("load") << "zvtLoadNUC" << 1;
    QTest::newRow("name") << "zvtGetNUCName" << 2;
}

void tst_CorrectionTabModelLoads::refusedTaskKeepsTheName()
{
    QFETCH(const QString, fails);
    QFETCH(const int, calls);
    Load load;
    load.refresh();
    load.gate().script("zvtGetNUCName", "Other");
    load.gate().failAlways(fails.toStdString());
    const QString task = QTest::currentDataTag();
    QCOMPARE(load.taskOf([&] {
                     if (task == "unload")
                         load.model.unloadNuc(2);
                     else if (task == "load")
                         load.model.loadNuc(2, "Other");
                     else
                         load.model.saveNuc(2, "Other");
                 })
                 .size(),
             calls);
    QCOMPARE(load.model.nucNamePS2(), "Sky");
    QCOMPARE(load.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(!load.model.refreshing());
}

void tst_CorrectionTabModelLoads::signalsInOrder()
{
    Load load;
    QStringList order;
    QObject::connect(&load.model, &CorrectionTabModel::nucNamePS2Changed, this, [&] { order << "name"; });
    QObject::connect(&load.root, &ZvtCameraModel::hasNucMaskChanged, this, [&] { order << "mask"; });
    QObject::connect(&load.model, &CorrectionTabModel::hasRefreshedChanged, this, [&] { order << "hasRefreshed"; });
    QObject::connect(&load.model, &CorrectionTabModel::refreshingChanged, this, [&] { order << "refreshing"; });
    load.model.loadNuc(2, "Sky");
    // Not lowered, but raised at the end.
    QVERIFY(load.model.refreshing() && !load.model.hasRefreshed());
    QCOMPARE(order, QStringList{"refreshing"});
    CameraRig::settle();
    QCOMPARE(order, QStringList({"refreshing", "name", "mask", "hasRefreshed", "refreshing"}));
    QVERIFY(load.model.hasRefreshed());
    load.model.unloadNuc(2);
    QVERIFY(load.model.hasRefreshed());
    CameraRig::settle();
}

void tst_CorrectionTabModelLoads::unknownPresetsAreIgnored_data()
{
    QTest::addColumn<int>("preset");
    QTest::newRow("none") << -1;
    QTest::newRow("beyond the last") << 4;
    QTest::newRow("low byte of a preset") << 256;
    QTest::newRow("least") << std::numeric_limits<int>::min();
}

void tst_CorrectionTabModelLoads::unknownPresetsAreIgnored()
{
    QFETCH(const int, preset);
    Load load;
    load.log.take();
    QCOMPARE(load.taskOf([&] {
        load.model.loadNuc(preset, "Sky");
        load.model.saveNuc(preset, "Sky");
        load.model.unloadNuc(preset);
    }),
             QStringList());
    QCOMPARE(load.log.take(), QStringList());
}

void tst_CorrectionTabModelLoads::tasksExcludeEachOther_data()
{
    QTest::addColumn<QString>("first");
    for (const char *call : {"zvtGetNumPresets", "zvtLoadNUC", "zvtSaveNUCAs", "zvtUnloadNUC"})
        QTest::newRow(call) << QString::fromLatin1(call);
}

void tst_CorrectionTabModelLoads::tasksExcludeEachOther()
{
    QFETCH(const QString, first);
    Load load;
    load.gate().hold(first.toStdString());
    if (first == "zvtGetNumPresets")
        load.model.refresh();
    else if (first == "zvtLoadNUC")
        load.model.loadNuc(1, "Sky");
    else if (first == "zvtSaveNUCAs")
        load.model.saveNuc(1, "Sky");
    else
        load.model.unloadNuc(1);
    QVERIFY(load.gate().waitHeld(first.toStdString()));
    const size_t since = load.gate().mark();
    load.log.take();
    load.model.refresh();
    load.model.loadNuc(0, "Other");
    load.model.saveNuc(0, "Other");
    load.model.unloadNuc(0);
    QCOMPARE(load.log.take(), QStringList());
    load.gate().release("*");
    CameraRig::settle();
    QVERIFY(load.calls(since, false).filter(QRegularExpression("(LoadNUC|SaveNUCAs) 0")).isEmpty());
    QVERIFY(!load.model.refreshing());
}

// Between the end of a task and its publication a new task would discard the result.
void tst_CorrectionTabModelLoads::endedTaskIsNotReplacedBeforeItIsPublished()
{
    Load load;
    load.model.loadNuc(1, "Sky");
    QThreadPool::globalInstance()->waitForDone();
    QVERIFY(load.model.refreshing());
    const size_t since = load.gate().mark();
    load.model.refresh();
    load.model.unloadNuc(1);
    CameraRig::settle();
    QCOMPARE(load.calls(since, false), QStringList());
    QCOMPARE(load.model.nucNamePS1(), "Sky");
    QCOMPARE(load.root.hasNucMask() & 2, 2);
}

// The result of a load has no setup of the automatic correction.
void tst_CorrectionTabModelLoads::automaticValuesStay()
{
    Load load;
    load.refresh();
    load.load();
    QCOMPARE(load.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged", "refreshingChanged"}));
    QCOMPARE(load.model.autoNucDeltaTemp(), 2.5F);
    QCOMPARE(load.model.autoNucDeltaTime(), 30U);
    QCOMPARE(load.model.numPresets(), 3);
}

// The camera's own answers, with its own corrections.
void tst_CorrectionTabModelLoads::cameraLoadsWithItsSettings()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CorrectionTabModel &model = *root.correctionTabModel();
    const auto wait = [](auto action) {
        action();
        CameraRig::settle();
    };
    wait([&] { model.refresh(); });
    QCOMPARE(model.nucNamePS0(), "Factory 2 ms");
    QCOMPARE(model.nucNamePS2(), "");
    const uint64_t handle = rig.camera().handle();
    uint32_t before = 0;
    QCOMPARE(zvtGetIntegrationWidth(handle, 0, &before), 0);
    QVERIFY(rig.controller()->SetWindow(0, 0, 320, 256));

    // The table alone changes no setting.
    wait([&] { model.loadNuc(0, "Factory 1 ms"); });
    QCOMPARE(model.nucNamePS0(), "Factory 1 ms");
    uint32_t width = 0;
    QCOMPARE(zvtGetIntegrationWidth(handle, 0, &width), 0);
    QCOMPARE(width, before);

    root.loadNucOptions()->setLoadSettings(true);
    wait([&] { model.loadNuc(0, "Factory 1 ms"); });
    QCOMPARE(model.nucNamePS0(), "Factory 1 ms");
    QCOMPARE(zvtGetIntegrationWidth(handle, 0, &width), 0);
    QCOMPARE(width, 20'000U);
    uint16_t x = 1;
    uint16_t y = 1;
    uint16_t columns = 0;
    uint16_t rows = 0;
    QCOMPARE(zvtGetWindow(handle, 0, &x, &y, &columns, &rows), 0);
    QCOMPARE(columns, uint16_t(640));
    QCOMPARE(rows, uint16_t(512));

    wait([&] { model.saveNuc(0, "Mine"); });
    QCOMPARE(model.nucNamePS0(), "Mine");
    QVERIFY(model.isFactoryNuc("Factory 1 ms") && !model.isFactoryNuc("Mine"));
    wait([&] { model.unloadNuc(0); });
    QCOMPARE(model.nucNamePS0(), "");
    QCOMPARE(root.hasNucMask() & 1, 0);
}

// The walkers

void tst_CorrectionTabModelLoads::heldLoadsOutliveTheModel() { walkHeldDeletion(loadedModel()); }

void tst_CorrectionTabModelLoads::secondLoadIsDropped() { walkSecondRefresh(loadedModel()); }

void tst_CorrectionTabModelLoads::randomOperator()
{
    auto model = loadedModel();
    model.read = [](QObject *subject) {
        auto *tab = qobject_cast<CorrectionTabModel *>(subject);
        tab->refresh();
        tab->loadNuc(2, "Sky");
        CameraRig::settle();
        tab->saveNuc(1, "Sky");
    };
    walkRandomOperator(model, 55, 100);
}

ZVT_TEST(tst_CorrectionTabModelLoads)
#include "tst_CorrectionTabModelLoads.moc"
