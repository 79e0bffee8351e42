#include "tests/support/Test.h"
#include "tests/unit/SyncRig.h"

#include <cmath>

namespace
{

const QStringList started{"refreshingChanged", "hasRefreshedChanged"};
const QStringList rebuilt{"triggerModeStringsChanged", "triggerModeChanged"};
const QStringList delays{"syncInDelay",     "triggerInDelay",  "syncOutDelayPS0",
                         "syncOutDelayPS1", "syncOutDelayPS2", "syncOutDelayPS3"};
const QStringList finished{"hasRefreshedChanged", "refreshingChanged"};

} // namespace

/// What the model of the synchronisation settings reads, and what it shows after a read.
class tst_SyncSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readAsksInOrder();
    void readPublishesInOrder();
    void onlyChangedValuesAreSignalled();
    void readShowsTheCamera();
    void delaysAreReadOneByOne();
    void rootReadsItWithTheGeneralSetup();

    void triggerRowsFollowModeAndSupport_data();
    void triggerRowsFollowModeAndSupport();
    void rowsStandBeforeTheMode();
    void indexNeverPointsAtAnotherMode_data();
    void indexNeverPointsAtAnotherMode();
    void modeThatGoesAwayHasNoRow();
    void failedModeChangesNothing();
    void failedListOfModesKeepsTheSupport();
    void generalSetupRebuildsTheRowsBeforeItStores();
    void triLevelAddsARow();
    void triLevelGoesAway();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondReadIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_SyncSettingsModel::nothingIsKnownAtFirst()
{
    Sync sync;
    QVERIFY(!sync.model->refreshing());
    QVERIFY(!sync.model->hasRefreshed());
    QVERIFY(!sync.model->sequencingSupported());
    for (const char *property : {"syncMode", "syncSource", "triggerMode", "triggerModeIndex", "triggerSource",
                                 "syncOutPolarity", "syncOutSource", "syncInPolarity", "triggerInPolarity"})
        QCOMPARE(sync.model->property(property).toInt(), -1);
    for (const char *property : {"triggerRate", "sequenceCount", "triggerTimeDay", "triggerTimeMicrosecond"})
        QCOMPARE(sync.model->property(property).toDouble(), 0.0);
    for (const QString &delay : delays)
        QVERIFY2(std::isnan(sync.model->property(qPrintable(delay)).toFloat()), qPrintable(delay));
    QCOMPARE(sync.model->triggerModeStrings(), QStringList());
    QCOMPARE(sync.model->syncSourceStrings(), QStringList({"Internal", "External", "Video"}));
}

void tst_SyncSettingsModel::readAsksInOrder()
{
    Sync sync;
    const size_t mark = sync.gate().mark();
    sync.model->refresh();
    QVERIFY(sync.model->refreshing());
    CameraRig::settle();
    QCOMPARE(
        sync.calls(mark, Sync::OnPool),
        QStringList({"zvtGetFrameSyncMode", "zvtGetTriggerMode", "zvtGetTriggerSource", "zvtGetSequenceCount",
                     "zvtGetInternalTriggerRate", "zvtGetFrameSyncSource", "zvtGetFrameSyncDelay", "zvtGetTriggerDelay",
                     "zvtGetTriggerPolarity", "zvtGetFrameSyncPolarity", "zvtGetSyncOutPolarity", "zvtGetSyncOutSource",
                     "zvtGetSyncOutDelay 0", "zvtGetSyncOutDelay 1", "zvtGetSyncOutDelay 2", "zvtGetSyncOutDelay 3",
                     "zvtGetIRIGTriggerTime", "zvtGetTriLevelSyncSourceAvailable"}));
    QCOMPARE(sync.calls(mark, Sync::OnGui),
             QStringList({"controller.GetSequencingModes", "controller.GetPresetSequencingMode"}));
}

void tst_SyncSettingsModel::readPublishesInOrder()
{
    Sync sync;
    scriptValues(sync.gate());
    QCOMPARE(sync.refresh(),
             started + QStringList("sequencingSupportedChanged") + rebuilt + publishedSignals
                 + QStringList({"syncSourceStringsChanged", "syncSourceChanged"}) + finished);
}

void tst_SyncSettingsModel::onlyChangedValuesAreSignalled()
{
    Sync sync;
    scriptValues(sync.gate());
    sync.refresh();
    QCOMPARE(sync.refresh(), started + rebuilt + finished);
    sync.gate().script("zvtGetTriggerSource", 1);
    sync.gate().script("zvtGetIRIGTriggerTime", QVariantList{366, 23, 59, 57, 999, 998});
    QCOMPARE(sync.refresh(),
             started + rebuilt + QStringList({"triggerSourceChanged", "triggerTimeSecondChanged"}) + finished);
}

void tst_SyncSettingsModel::readShowsTheCamera()
{
    Sync sync;
    scriptValues(sync.gate());
    sync.refresh();
    const QMap<const char *, QVariant> expected{{"syncMode", 1},
                                                {"syncSource", 2},
                                                {"triggerMode", 2},
                                                {"triggerModeIndex", 2},
                                                {"triggerSource", 3},
                                                {"triggerRate", 12.5},
                                                {"sequenceCount", 7U},
                                                {"syncInDelay", 1.5F},
                                                {"triggerInDelay", 2.5F},
                                                {"syncOutDelayPS2", 3.5F},
                                                {"syncOutPolarity", 1},
                                                {"syncOutSource", 2},
                                                {"syncInPolarity", 1},
                                                {"triggerInPolarity", 0},
                                                {"triggerTimeDay", 366},
                                                {"triggerTimeHour", 23},
                                                {"triggerTimeMinute", 59},
                                                {"triggerTimeSecond", 58},
                                                {"triggerTimeMillisecond", 999},
                                                {"triggerTimeMicrosecond", 998}};
    for (auto it = expected.cbegin(); it != expected.cend(); ++it)
        QCOMPARE(sync.model->property(it.key()), it.value());
}

// The delays of a new camera are 0, which differs from a delay that has not been read.
void tst_SyncSettingsModel::delaysAreReadOneByOne()
{
    Sync sync;
    sync.gate().failNext("zvtGetTriggerDelay");
    sync.gate().failNext("zvtGetSyncOutDelay", 3);
    const QStringList unread{"triggerInDelay", "syncOutDelayPS2"};
    const QStringList signalled = sync.refresh();
    for (const QString &delay : delays) {
        const float microseconds = sync.model->property(qPrintable(delay)).toFloat();
        QVERIFY2(unread.contains(delay) ? std::isnan(microseconds) : microseconds == 0, qPrintable(delay));
        QCOMPARE(signalled.contains(delay + "Changed"), !unread.contains(delay));
    }
    QCOMPARE(sync.refresh().filter("Delay"), QStringList({"triggerInDelayChanged", "syncOutDelayPS2Changed"}));
    // A delay that has not been read can be written, also as 0.
    Sync fresh;
    QCOMPARE(fresh.write("syncInDelay", 0.0F), QStringList("zvtSetFrameSyncDelay 0"));
    QCOMPARE(fresh.model->syncInDelay(), 0.0F);
}

void tst_SyncSettingsModel::rootReadsItWithTheGeneralSetup()
{
    Sync sync;
    for (const bool visible : {true, false}) {
        sync.root.setupGeneralModel()->setVisible(visible);
        const QStringList calls = sync.callsOf([&sync] { sync.root.refreshAllVisible(); }, Sync::OnPool);
        QCOMPARE(calls.contains("zvtGetTriggerMode"), visible);
        QCOMPARE(calls.contains("controller.GetWindowSizes"), visible);
    }
}

// The trigger modes

void tst_SyncSettingsModel::triggerRowsFollowModeAndSupport_data()
{
    QTest::addColumn<bool>("supported");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("rows");
    const QString sequence = "Free Run, Triggered Free Run, Triggered Sequence";
    const QString superframe = "Free Run, Triggered Free Run, Triggered Superframe";
    for (const int mode : {0, 1, 2, 3}) {
        QTest::addRow("supported, mode %d", mode)
            << true << mode << (mode == 2 ? sequence + ", Triggered Preset Advance" : sequence);
        QTest::addRow("not supported, mode %d", mode) << false << mode << superframe;
    }
}

void tst_SyncSettingsModel::triggerRowsFollowModeAndSupport()
{
    QFETCH(const bool, supported);
    QFETCH(const int, mode);
    QFETCH(const QString, rows);
    Sync sync(supported ? QStringLiteral("everything") : QStringLiteral("bare"));
    sync.gate().script("controller.GetPresetSequencingMode", mode);
    sync.refresh();
    QCOMPARE(sync.model->triggerModeStrings().join(", "), rows);
    QCOMPARE(sync.model->sequencingSupported(), supported);
    // Each row has the number of its mode.
    for (int row = 0; row < sync.model->triggerModeStrings().size(); ++row) {
        sync.gate().script("zvtGetTriggerMode", row);
        sync.refresh();
        QCOMPARE(sync.model->triggerModeIndex(), row);
    }
}

void tst_SyncSettingsModel::rowsStandBeforeTheMode()
{
    Sync sync;
    sync.setSequencing(2);
    sync.gate().script("zvtGetTriggerMode", 3);
    QList<int> rowsAtSignal;
    QObject::connect(sync.model, &SyncSettingsModel::triggerModeChanged, this,
                     [&] { rowsAtSignal << int(sync.model->triggerModeStrings().size()); });
    sync.refresh();
    QCOMPARE(rowsAtSignal, (QList<int>{4, 4}));
    QCOMPARE(sync.model->triggerModeIndex(), 3);
}

namespace
{

/// The name of a trigger mode; empty for one that has no row.
QString nameOf(int mode, bool supported, int sequencing)
{
    switch (mode) {
    case SyncSettingsModel::FREE_RUN:
        return QStringLiteral("Free Run");
    case SyncSettingsModel::TRIGGERED_FREE_RUN:
        return QStringLiteral("Triggered Free Run");
    case SyncSettingsModel::TRIGGERED_SEQUENCE:
        return supported ? QStringLiteral("Triggered Sequence") : QStringLiteral("Triggered Superframe");
    default:
        return supported && sequencing == 2 ? QStringLiteral("Triggered Preset Advance") : QString();
    }
}

/// The name of the row of the index; empty without a row.
QString shownName(const SyncSettingsModel &model) { return model.triggerModeStrings().value(model.triggerModeIndex()); }

} // namespace

void tst_SyncSettingsModel::indexNeverPointsAtAnotherMode_data()
{
    QTest::addColumn<bool>("supported");
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("sequencing");
    for (const bool supported : {false, true})
        for (const int mode : {0, 1, 2, 3})
            for (const int sequencing : {0, 1, 2})
                QTest::addRow("%ssupported, mode %d, sequencing mode %d", supported ? "" : "not ", mode, sequencing)
                    << supported << mode << sequencing;
}

// From each combination to every other one, by a read and by the general setup. At every signal the row of the index
// has the name of the mode.
void tst_SyncSettingsModel::indexNeverPointsAtAnotherMode()
{
    QFETCH(const bool, supported);
    QFETCH(const int, mode);
    QFETCH(const int, sequencing);
    Sync sync;
    const auto setCamera = [&sync](bool offered, int triggerMode, int sequencingMode) {
        // The list of a scripted success has no entries.
        sync.gate().script("controller.GetSequencingModes", offered ? QVariant() : QVariant(true));
        sync.gate().script("zvtGetTriggerMode", triggerMode);
        sync.setSequencing(static_cast<uint32_t>(sequencingMode));
    };
    bool rowsSupported = false; // Of the present rows, which a read replaces after it has signalled the support.
    int rowsSequencing = 0;
    const auto check
        = [&] { QCOMPARE(shownName(*sync.model), nameOf(sync.model->triggerMode(), rowsSupported, rowsSequencing)); };
    const auto takeRows = [&] {
        rowsSupported = sync.model->sequencingSupported();
        rowsSequencing = sync.sequencing();
        check();
    };
    auto *const general = sync.root.setupGeneralModel();
    for (const bool nextSupported : {false, true})
        for (const int nextMode : {0, 1, 2, 3})
            for (const int nextSequencing : {0, 1, 2}) {
                setCamera(supported, mode, sequencing);
                sync.refresh();
                general->refresh();
                CameraRig::settle();
                rowsSupported = supported;
                rowsSequencing = sequencing;
                QCOMPARE(shownName(*sync.model), nameOf(mode, supported, sequencing));
                const QObject context;
                QObject::connect(sync.model, &SyncSettingsModel::triggerModeStringsChanged, &context, takeRows);
                for (auto signal :
                     {&SyncSettingsModel::triggerModeChanged, &SyncSettingsModel::sequencingSupportedChanged})
                    QObject::connect(sync.model, signal, &context, check);
                general->setSequencingMode(static_cast<SetupGeneralModel::ESEQUENCING_MODE>(nextSequencing));
                QCOMPARE(shownName(*sync.model), nameOf(mode, supported, nextSequencing));
                setCamera(nextSupported, nextMode, nextSequencing);
                sync.refresh();
                QCOMPARE(shownName(*sync.model), nameOf(nextMode, nextSupported, nextSequencing));
            }
}

void tst_SyncSettingsModel::modeThatGoesAwayHasNoRow()
{
    Sync sync;
    sync.setSequencing(2);
    sync.gate().script("zvtGetTriggerMode", 3);
    sync.refresh();
    sync.root.setupGeneralModel()->setSequencingMode(SetupGeneralModel::PRESET_SEQUENCING);
    sync.log.take();
    sync.root.setupGeneralModel()->setSequencingMode(SetupGeneralModel::SINGLE_PRESET);
    QCOMPARE(sync.model->triggerModeIndex(), -1);
    QCOMPARE(sync.model->triggerMode(), 3);
    QCOMPARE(sync.model->triggerModeStrings().size(), 3);
    QCOMPARE(sync.log.take(), rebuilt);
}

void tst_SyncSettingsModel::failedModeChangesNothing()
{
    Sync sync;
    sync.setSequencing(2);
    sync.refresh();
    const QStringList before = sync.model->triggerModeStrings();
    sync.setSequencing(0);
    sync.gate().failNext("controller.GetPresetSequencingMode");
    sync.model->sequencingModeChanged();
    QCOMPARE(sync.log.take(), QStringList());
    QCOMPARE(sync.model->triggerModeStrings(), before);
    sync.model->sequencingModeChanged();
    QCOMPARE(sync.log.take(), rebuilt);
}

void tst_SyncSettingsModel::failedListOfModesKeepsTheSupport()
{
    Sync sync;
    sync.refresh();
    QVERIFY(sync.model->sequencingSupported());
    sync.gate().failNext("controller.GetSequencingModes");
    QCOMPARE(sync.refresh(), started + rebuilt + finished);
    QVERIFY(sync.model->sequencingSupported());
}

void tst_SyncSettingsModel::generalSetupRebuildsTheRowsBeforeItStores()
{
    Sync sync;
    sync.refresh();
    auto *const general = sync.root.setupGeneralModel();
    QList<SetupGeneralModel::ESEQUENCING_MODE> modes;
    QObject::connect(sync.model, &SyncSettingsModel::triggerModeStringsChanged, this,
                     [&] { modes << general->sequencingMode(); });
    const QStringList calls = sync.callsOf([&] { general->setSequencingMode(SetupGeneralModel::PRESET_SEQUENCING); });
    QCOMPARE(calls, QStringList({"controller.SetPresetSequencingMode 2", "controller.GetPresetSequencingMode"}));
    QCOMPARE(modes, (QList{SetupGeneralModel::SINGLE_PRESET}));
    QCOMPARE(sync.model->triggerModeStrings().last(), "Triggered Preset Advance");
}

// The sources of the frame sync

void tst_SyncSettingsModel::triLevelAddsARow()
{
    Sync sync;
    sync.refresh();
    sync.gate().script("zvtGetTriLevelSyncSourceAvailable", true);
    sync.gate().script("zvtGetFrameSyncSource", 3);
    QList<qsizetype> rowsAtSignal;
    QObject::connect(sync.model, &SyncSettingsModel::syncSourceChanged, this,
                     [&] { rowsAtSignal << sync.model->syncSourceStrings().size(); });
    // The source is signalled again after its row has appeared.
    QCOMPARE(sync.refresh(),
             started + rebuilt + QStringList({"syncSourceChanged", "syncSourceStringsChanged", "syncSourceChanged"})
                 + finished);
    QCOMPARE(rowsAtSignal, (QList<qsizetype>{3, 4}));
    QCOMPARE(sync.model->syncSourceStrings(), QStringList({"Internal", "External", "Video", "Tri-level"}));
}

void tst_SyncSettingsModel::triLevelGoesAway()
{
    Sync sync;
    scriptValues(sync.gate());
    sync.refresh();
    sync.gate().script("zvtGetTriLevelSyncSourceAvailable", false);
    QCOMPARE(sync.refresh(),
             started + rebuilt + QStringList({"syncSourceStringsChanged", "syncSourceChanged"}) + finished);
    QCOMPARE(sync.model->syncSourceStrings().size(), 3);
}

// The walkers

namespace
{

ModelUnderTest scriptedModel()
{
    auto model = modelOf<SyncSettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptValues(rig.gate()); };
    return model;
}

} // namespace

void tst_SyncSettingsModel::failingReads()
{
    // The two calls of the controller are made when the read has ended.
    const ReadExceptions exceptions{
        {"zvtGetTriggerMode",
         {{"triggerMode", "triggerModeIndex"},
          "the row belongs to the mode, which each read signals with the rows",
          {"triggerMode", "triggerModeIndex"}}},
        {"zvtGetIRIGTriggerTime",
         {{"triggerTimeDay", "triggerTimeHour", "triggerTimeMinute", "triggerTimeSecond", "triggerTimeMillisecond",
           "triggerTimeMicrosecond"},
          "one call reads all parts of the time"}},
        {"zvtGetTriLevelSyncSourceAvailable", {{"syncSourceStrings"}, "the list depends on the input"}},
    };
    walkFailingReads(scriptedModel(), exceptions);
}

void tst_SyncSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(scriptedModel()); }

void tst_SyncSettingsModel::secondReadIsDropped() { walkSecondRefresh(scriptedModel()); }

void tst_SyncSettingsModel::readsWithoutACamera() { walkNoCamera(modelOf<SyncSettingsModel>()); }

void tst_SyncSettingsModel::randomOperator() { walkRandomOperator(modelOf<SyncSettingsModel>(), 41); }

ZVT_TEST(tst_SyncSettingsModel)
#include "tst_SyncSettingsModel.moc"
