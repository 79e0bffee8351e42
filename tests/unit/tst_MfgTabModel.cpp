#include "tests/support/Test.h"
#include "tests/unit/TabRig.h"

#include "common/ZvtModelModel.h"
#include "common/ZvtModelTable.h"
#include "manufacturing/MfgTabModel.h"

namespace
{

const QStringList reads{"zvtGetBoardType", "zvtGetCameraType",      "zvtGetCameraSubtype",      "zvtGetDetectorType",
                        "zvtGetReadout",   "zvtGetPleoraBoardType", "zvtGetFilterWheelPresent", "zvtGetVariant",
                        "zvtGetCameraSN",  "zvtGetCameraModel"};
const QStringList publishedSignals = changedSignals({"boardType", "cameraType", "cameraSubType", "detector", "readout",
                                                     "pleoraBoardType", "filterWheel", "variant", "serial", "model"});

/// Lets each read return a value that differs from those of a new model.
void scriptIdentity(CameraRig &rig)
{
    rig.gate().script("zvtGetBoardType", 5);
    rig.gate().script("zvtGetCameraType", 11);
    rig.gate().script("zvtGetCameraSubtype", 2);
    rig.gate().script("zvtGetDetectorType", 3);
    rig.gate().script("zvtGetReadout", 255);
    rig.gate().script("zvtGetPleoraBoardType", 4);
    rig.gate().script("zvtGetFilterWheelPresent", 1);
    rig.gate().script("zvtGetVariant", 7);
    rig.gate().script("zvtGetCameraSN", QStringLiteral("SN 0815"));
    rig.gate().script("zvtGetCameraModel", QStringLiteral("Kälte 640"));
}

struct MfgTab : TabRig<MfgTabModel> {
    MfgTab() : TabRig(QStringLiteral("everything"))
    {
        scriptIdentity(rig);
        start();
    }

    /// The row of the camera in the filtered rows of a table; -1 without one.
    int rowIn(const ZvtModelTable &table) const
    {
        return table.getIndexBasedOnCameraInfo(model.boardType(), model.cameraType(), model.cameraSubType(),
                                               model.detector(), model.readout());
    }
};

ModelUnderTest mfgTabModel()
{
    auto model = modelOf<MfgTabModel>();
    model.prepare = scriptIdentity;
    model.ownState = QStringList{"selectedFilteredIndex", "roicConfig"};
    return model;
}

} // namespace

/// The identity of the camera on the Manufacturing tab. tst_MfgRoicConfigModel has the readout circuit.
class tst_MfgTabModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void unreadNumbersFilterNothing();
    void unreadNumbersKeepTheFilteredRows();
    void roicConfigIsAChild();

    void readsInOrder();
    void publishesInOrder();
    void everyReadSignalsEveryValue();
    void valuesAreThoseOfTheCamera();
    void textsFillTheirBuffers();
    void modelIsPublishedWithTheSerialOnly();
    void failedModelIsEmpty();
    void refreshDiscardsEdits();
    void refreshKeepsTheSelectedRow();

    void editsAreStoredOnly_data();
    void editsAreStoredOnly();
    void applyWritesFiveValues();
    void changedSerialIsNotWrittenAlone();
    void numbersAreCutToBytes();
    void refusedValuesStay();
    void applyOnlyWrites();
    void applyWithoutAControllerDoesNothing();
    void appliedIdentityReachesTheCamera();

    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_MfgTabModel::nothingIsKnownAtFirst()
{
    MfgTab tab;
    QVERIFY(!tab.model.refreshing() && !tab.model.hasRefreshed());
    for (const char *number : {"boardType", "cameraType", "cameraSubType", "detector", "readout", "pleoraBoardType",
                               "variant", "selectedFilteredIndex"})
        QCOMPARE(tab.model.property(number), QVariant(-1));
    QVERIFY(!tab.model.filterWheel());
    QCOMPARE(tab.model.serial(), QString());
    QCOMPARE(tab.model.model(), QString());
}

void tst_MfgTabModel::unreadNumbersFilterNothing()
{
    MfgTab tab;
    ZvtModelTable table;
    const int all = table.models()->size();
    table.setBoardTypeFilter(tab.model.boardType());
    table.setDetectorTypeFilter(tab.model.detector());
    table.setReadoutTypeFilter(tab.model.readout());
    QVERIFY(all > 0);
    QCOMPARE(table.filteredModels()->size(), all);
    QCOMPARE(tab.rowIn(table), -1);
}

// The page sets the filters again when a camera that was never read takes the place of another.
void tst_MfgTabModel::unreadNumbersKeepTheFilteredRows()
{
    MfgTab tab;
    ZvtModelTable table;
    const auto *const chosen = qobject_cast<ZvtModelModel *>(table.models()->at(0));
    table.setBoardTypeFilter(chosen->boardSet());
    table.setDetectorTypeFilter(chosen->detectorType());
    table.setReadoutTypeFilter(chosen->roicType());
    const int rows = table.filteredModels()->size();
    QVERIFY(rows > 0 && rows < table.models()->size());
    SignalLog signalsOfTable(&table);
    table.setBoardTypeFilter(tab.model.boardType());
    QCOMPARE(signalsOfTable.take(), QStringList());
    QCOMPARE(table.boardTypeFilter(), chosen->boardSet());
    table.setDetectorTypeFilter(tab.model.detector());
    table.setReadoutTypeFilter(tab.model.readout());
    QCOMPARE(signalsOfTable.take(), changedSignals({"detectorTypeFilter", "readoutTypeFilter"}));
    QCOMPARE(table.filteredModels()->size(), rows);
    QCOMPARE(tab.rowIn(table), -1);
}

void tst_MfgTabModel::roicConfigIsAChild()
{
    MfgTab tab;
    QVERIFY(tab.model.roicConfig());
    QCOMPARE(tab.model.roicConfig()->parent(), &tab.model);
    tab.read();
    QVERIFY(!tab.model.roicConfig()->hasRefreshed());
    // It finds the camera.
    const size_t mark = tab.gate().mark();
    tab.model.roicConfig()->refresh();
    CameraRig::settle();
    QVERIFY(tab.calls(mark, false).contains("zvtGetClockFrequency"));
}

// Reading

void tst_MfgTabModel::readsInOrder()
{
    MfgTab tab;
    QCOMPARE(tab.read(), reads);
}

void tst_MfgTabModel::publishesInOrder()
{
    MfgTab tab;
    tab.model.refresh();
    QCOMPARE(tab.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    QVERIFY(tab.model.refreshing() && !tab.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(tab.log.take(), publishedSignals + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QVERIFY(!tab.model.refreshing() && tab.model.hasRefreshed());
}

void tst_MfgTabModel::everyReadSignalsEveryValue()
{
    MfgTab tab;
    QCOMPARE(tab.refresh(), publishedSignals);
    QCOMPARE(tab.refresh(), publishedSignals);
}

void tst_MfgTabModel::valuesAreThoseOfTheCamera()
{
    MfgTab tab;
    tab.read();
    QCOMPARE(tab.model.boardType(), 5);
    QCOMPARE(tab.model.cameraType(), 11);
    QCOMPARE(tab.model.cameraSubType(), 2);
    QCOMPARE(tab.model.detector(), 3);
    QCOMPARE(tab.model.readout(), 255);
    QCOMPARE(tab.model.pleoraBoardType(), 4);
    QCOMPARE(tab.model.variant(), 7);
    QVERIFY(tab.model.filterWheel());
    QCOMPARE(tab.model.serial(), QStringLiteral("SN 0815"));
    QCOMPARE(tab.model.model(), QStringLiteral("Kälte 640"));
}

void tst_MfgTabModel::textsFillTheirBuffers()
{
    MfgTab tab;
    tab.gate().fillBuffers(true);
    tab.read();
    QCOMPARE(tab.model.serial().toUtf8().size(), 255);
    QCOMPARE(tab.model.model().toUtf8().size(), 256);
}

void tst_MfgTabModel::modelIsPublishedWithTheSerialOnly()
{
    MfgTab tab;
    tab.gate().failNext("zvtGetCameraSN");
    QCOMPARE(tab.refresh(), publishedSignals.first(8));
    QCOMPARE(tab.model.model(), QString());
    tab.read();
    tab.gate().script("zvtGetCameraModel", QStringLiteral("another"));
    tab.gate().failNext("zvtGetCameraSN");
    QCOMPARE(tab.refresh(), publishedSignals.first(8));
    QCOMPARE(tab.model.model(), QStringLiteral("Kälte 640"));
    QCOMPARE(tab.model.serial(), QStringLiteral("SN 0815"));
}

void tst_MfgTabModel::failedModelIsEmpty()
{
    MfgTab tab;
    tab.read();
    tab.gate().failNext("zvtGetCameraModel");
    QCOMPARE(tab.refresh(), publishedSignals);
    QCOMPARE(tab.model.model(), QString());
    QCOMPARE(tab.model.serial(), QStringLiteral("SN 0815"));
}

void tst_MfgTabModel::refreshDiscardsEdits()
{
    MfgTab tab;
    tab.read();
    tab.model.setSerial(QStringLiteral("typed"));
    tab.model.setModel(QStringLiteral("chosen"));
    tab.model.setCameraType(1);
    tab.model.setDetector(1);
    tab.model.setFilterWheel(false);
    tab.read();
    QCOMPARE(tab.model.serial(), QStringLiteral("SN 0815"));
    QCOMPARE(tab.model.model(), QStringLiteral("Kälte 640"));
    QCOMPARE(tab.model.cameraType(), 11);
    QCOMPARE(tab.model.detector(), 3);
    QVERIFY(tab.model.filterWheel());
}

void tst_MfgTabModel::refreshKeepsTheSelectedRow()
{
    MfgTab tab;
    tab.model.setSelectedFilteredIndex(12);
    QVERIFY(!tab.refresh().contains("selectedFilteredIndexChanged"));
    QCOMPARE(tab.model.selectedFilteredIndex(), 12);
}

// Editing

void tst_MfgTabModel::editsAreStoredOnly_data()
{
    QTest::addColumn<QVariant>("value");
    for (const char *number :
         {"cameraType", "cameraSubType", "detector", "readout", "pleoraBoardType", "variant", "selectedFilteredIndex"})
        QTest::newRow(number) << QVariant(9);
    QTest::newRow("filterWheel") << QVariant(true);
    QTest::newRow("serial") << QVariant(QStringLiteral("4711"));
    QTest::newRow("model") << QVariant(QStringLiteral("chosen"));
}

void tst_MfgTabModel::editsAreStoredOnly()
{
    QFETCH(const QVariant, value);
    const char *property = QTest::currentDataTag();
    MfgTab tab;
    QCOMPARE(tab.write(property, value), QStringList());
    QCOMPARE(tab.log.take(), QStringList(changedSignal(property)));
    QCOMPARE(tab.model.property(property), value);
    QCOMPARE(tab.write(property, value), QStringList());
    QCOMPARE(tab.log.take(), QStringList());
}

void tst_MfgTabModel::applyWritesFiveValues()
{
    MfgTab tab;
    tab.read();
    tab.model.setModel(QStringLiteral("Hitze 1280"));
    tab.model.setCameraType(8);
    tab.model.setCameraSubType(1);
    tab.model.setPleoraBoardType(2);
    tab.model.setSerial(QStringLiteral("Nº 1"));
    tab.model.setDetector(77);
    tab.model.setReadout(78);
    tab.model.setVariant(79);
    tab.model.setFilterWheel(false);
    QCOMPARE(tab.callsOf([&] { tab.model.applyCameraSettings(); }),
             QStringList({"zvtSetCameraModel \"Hitze 1280\"", "zvtSetCameraType 8", "zvtSetCameraSubtype 1",
                          "zvtSetPleoraBoardType 2", "zvtSetCameraSN \"Nº 1\""}));
    QCOMPARE(tab.log.take(), QStringList());
}

void tst_MfgTabModel::changedSerialIsNotWrittenAlone()
{
    MfgTab tab;
    tab.read();
    tab.model.setSerial(QStringLiteral("4711"));
    const QStringList calls = tab.callsOf([&] { tab.model.applyCameraSettings(); });
    QCOMPARE(calls,
             QStringList({"zvtSetCameraModel \"Kälte 640\"", "zvtSetCameraType 11", "zvtSetCameraSubtype 2",
                          "zvtSetPleoraBoardType 4", "zvtSetCameraSN \"4711\""}));
    // Nothing has changed, and everything is written again.
    QCOMPARE(tab.callsOf([&] { tab.model.applyCameraSettings(); }), calls);
}

void tst_MfgTabModel::numbersAreCutToBytes()
{
    MfgTab tab;
    tab.model.setCameraType(256);
    tab.model.setCameraSubType(300);
    QCOMPARE(tab.callsOf([&] { tab.model.applyCameraSettings(); }),
             QStringList({"zvtSetCameraModel \"\"", "zvtSetCameraType 0", "zvtSetCameraSubtype 44",
                          "zvtSetPleoraBoardType 255", "zvtSetCameraSN \"\""}));
}

void tst_MfgTabModel::refusedValuesStay()
{
    MfgTab tab;
    tab.read();
    tab.model.setCameraType(8);
    tab.model.setSerial(QStringLiteral("4711"));
    tab.gate().failAlways("zvtSet*");
    QCOMPARE(tab.callsOf([&] { tab.model.applyCameraSettings(); }).size(), 5);
    CameraRig::settle();
    QCOMPARE(tab.log.take(), QStringList());
    QCOMPARE(tab.model.cameraType(), 8);
    QCOMPARE(tab.model.serial(), QStringLiteral("4711"));
}

void tst_MfgTabModel::applyOnlyWrites() { walkApply(mfgTabModel(), "applyCameraSettings"); }

void tst_MfgTabModel::applyWithoutAControllerDoesNothing()
{
    ZvtCameraModel root({}, nullptr);
    MfgTabModel below(&root);
    MfgTabModel alone(nullptr);
    const size_t mark = emulator::Sdk::gate().mark();
    for (MfgTabModel *model : {&below, &alone}) {
        model->setSerial(QStringLiteral("4711"));
        model->applyCameraSettings();
    }
    QVERIFY(emulator::Sdk::gate().callsSince(mark).empty());
}

void tst_MfgTabModel::appliedIdentityReachesTheCamera()
{
    TabRig<MfgTabModel> tab(QStringLiteral("everything"));
    tab.start();
    tab.read();
    tab.model.setSerial(QStringLiteral("4711"));
    tab.model.setModel(QStringLiteral("chosen"));
    tab.model.applyCameraSettings();
    MfgTabModel another(&tab.root);
    another.refresh();
    CameraRig::settle();
    QCOMPARE(another.serial(), QStringLiteral("4711"));
    QCOMPARE(another.model(), QStringLiteral("chosen"));
    QCOMPARE(another.cameraType(), tab.model.cameraType());
}

// The walkers

void tst_MfgTabModel::failingReads()
{
    walkFailingReads(mfgTabModel(),
                     {{"zvtGetCameraSN", {{"model", "serial"}, "the model is published only with the serial"}},
                      {"zvtGetCameraModel", {{"model"}, "a model that was not read is empty", {"model"}}}});
}

void tst_MfgTabModel::heldReadsOutliveTheModel() { walkHeldDeletion(mfgTabModel()); }

void tst_MfgTabModel::secondRefreshIsDropped() { walkSecondRefresh(mfgTabModel()); }

void tst_MfgTabModel::readsWithoutACamera() { walkNoCamera(mfgTabModel()); }

void tst_MfgTabModel::randomOperator() { walkRandomOperator(mfgTabModel(), 91); }

ZVT_TEST(tst_MfgTabModel)
#include "tst_MfgTabModel.moc"
