#include "tests/support/Test.h"
#include "tests/unit/AdvancedTabRig.h"

#include <QMetaProperty>

#include "zvt/zvtsdk.h"

namespace
{

const QStringList startSignals{"refreshingChanged", "hasRefreshedChanged"};
const QStringList endSignals{"hasRefreshedChanged", "refreshingChanged"};
const QStringList digitalReads{"zvtGetDigitalGain 0",   "zvtGetDigitalGain 1",   "zvtGetDigitalGain 2",
                               "zvtGetDigitalGain 3",   "zvtGetDigitalOffset 0", "zvtGetDigitalOffset 1",
                               "zvtGetDigitalOffset 2", "zvtGetDigitalOffset 3"};
const QStringList cameraLinkReads{"zvtGetCameraLinkType", "zvtGetCameraLinkTypeWritable"};
const QStringList coaXPressReads{"zvtGetCoaXPressLinkCount", "zvtGetCoaXPressLinkCountWritable"};
const QStringList blackHotReads{"zvtGetBlackHotAvailable", "zvtGetBlackHotEnabled"};
const QStringList allReads = digitalReads + cameraLinkReads + coaXPressReads + blackHotReads;

ModelUnderTest digitalModel()
{
    auto model = modelOf<AdvancedTabModel>();
    model.prepare = [](CameraRig &rig) { scriptDigital(rig.gate()); };
    return model;
}

} // namespace

/// What the Advanced tab reads, and what it shows after a read.
class tst_AdvancedTabModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void limitsAreConstant();
    void readsInOrder_data();
    void readsInOrder();
    void publishesInOrder();
    void unchangedValuesAreSignalledExceptBlackHot();
    void eachPresetHasItsOwnValues();
    void failedReadKeepsLastValue();
    void cameraWithoutLinksKeepsTheIndices();
    void lostLinksKeepTheirValues();
    void unknownCameraLinkTypeIsShownByItsNumber();
    void linkCountIsTheRow_data();
    void linkCountIsTheRow();
    void linkListIsBuiltAgainBeforeTheRowIsSignalled();
    void failedLinkCountLeavesTheList();
    void blackHotIsReadOnlyIfAvailable();

    void readsTheRealCamera();
    void linksOfTheRealCameraAreShown();
    void rootRefreshesTheTab();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_AdvancedTabModel::nothingIsKnownAtFirst()
{
    AdvancedTab tab;
    QVERIFY(!tab.model.refreshing() && !tab.model.hasRefreshed());
    for (const char *value : AdvancedTab::gains + AdvancedTab::offsets)
        QCOMPARE(tab.model.property(value).toFloat(), 0.0F);
    QCOMPARE(tab.model.selectedCameraLinkModeIndex(), -1);
    QCOMPARE(tab.model.selectedCoaXPressLinksIndex(), -1);
    QVERIFY(!tab.model.cameraLinkModeCanBeModified() && !tab.model.coaXPressLinksCanBeModified());
    QCOMPARE(tab.model.coaXPressLinksList()->size(), 0);
    QVERIFY(!tab.model.blackHotAvailable() && !tab.model.blackHotEnabled());
}

void tst_AdvancedTabModel::limitsAreConstant()
{
    const QList<std::pair<const char *, float>> limits{
        {"gainMinValue", 0.0F}, {"gainMaxValue", 3.999F}, {"offsetMinValue", -16383.5F}, {"offsetMaxValue", 16383.5F}};
    AdvancedTab tab;
    const QMetaObject &meta = AdvancedTabModel::staticMetaObject;
    for (int read = 0; read < 2; ++read) {
        for (const auto &[name, value] : limits) {
            QCOMPARE(tab.model.property(name).toFloat(), value);
            const QMetaProperty property = meta.property(meta.indexOfProperty(name));
            QVERIFY(property.isConstant() && !property.isWritable() && !property.hasNotifySignal());
        }
        tab.read();
    }
}

// Reading

void tst_AdvancedTabModel::readsInOrder_data()
{
    QTest::addColumn<bool>("hasCameraLinkMode");
    QTest::addColumn<bool>("hasCoaXPressLinksToUse");
    for (const bool cameraLink : {false, true})
        for (const bool coaXPress : {false, true})
            QTest::addRow("%d %d", cameraLink, coaXPress) << cameraLink << coaXPress;
}

void tst_AdvancedTabModel::readsInOrder()
{
    QFETCH(const bool, hasCameraLinkMode);
    QFETCH(const bool, hasCoaXPressLinksToUse);
    AdvancedTab tab;
    tab.setEquipment("hasCameraLinkMode", hasCameraLinkMode);
    tab.setEquipment("hasCoaXPressLinksToUse", hasCoaXPressLinksToUse);
    QStringList expected = digitalReads;
    if (hasCameraLinkMode)
        expected << cameraLinkReads;
    if (hasCoaXPressLinksToUse)
        expected << coaXPressReads;
    QCOMPARE(tab.read(), expected + blackHotReads);
    QCOMPARE(tab.model.selectedCameraLinkModeIndex(), hasCameraLinkMode ? 1 : -1);
    QCOMPARE(tab.model.selectedCoaXPressLinksIndex(), hasCoaXPressLinksToUse ? 1 : -1);
}

void tst_AdvancedTabModel::publishesInOrder()
{
    AdvancedTab tab;
    tab.model.refresh();
    QCOMPARE(tab.log.take(), startSignals);
    QVERIFY(tab.model.refreshing() && !tab.model.hasRefreshed());
    CameraRig::settle();
    QCOMPARE(tab.log.take(),
             AdvancedTab::readSignals + QStringList({"blackHotAvailableChanged", "blackHotEnabledChanged"})
                 + endSignals);
    QVERIFY(!tab.model.refreshing() && tab.model.hasRefreshed());
    for (const char *gain : AdvancedTab::gains)
        QCOMPARE(tab.model.property(gain).toFloat(), 1.5F);
    for (const char *offset : AdvancedTab::offsets)
        QCOMPARE(tab.model.property(offset).toFloat(), -20.5F);
    QVERIFY(tab.model.cameraLinkModeCanBeModified() && tab.model.coaXPressLinksCanBeModified());
    QVERIFY(tab.model.blackHotAvailable() && tab.model.blackHotEnabled());
}

void tst_AdvancedTabModel::unchangedValuesAreSignalledExceptBlackHot()
{
    AdvancedTab tab;
    tab.read();
    QCOMPARE(tab.refresh(), AdvancedTab::readSignals);
}

void tst_AdvancedTabModel::eachPresetHasItsOwnValues()
{
    AdvancedTab tab;
    tab.gate().script("zvtGetDigitalGain", {});
    tab.gate().script("zvtGetDigitalOffset", {});
    for (uint8_t preset = 0; preset < 4; ++preset) {
        QCOMPARE(zvtSetDigitalGain(tab.rig.camera().handle(), preset, 0.5F + static_cast<float>(preset)), 0);
        QCOMPARE(zvtSetDigitalOffset(tab.rig.camera().handle(), preset, -1.5F - static_cast<float>(preset)), 0);
    }
    tab.read();
    for (int preset = 0; preset < 4; ++preset) {
        QCOMPARE(tab.model.property(AdvancedTab::gains.at(preset)).toFloat(), 0.5F + static_cast<float>(preset));
        QCOMPARE(tab.model.property(AdvancedTab::offsets.at(preset)).toFloat(), -1.5F - static_cast<float>(preset));
    }
}

void tst_AdvancedTabModel::failedReadKeepsLastValue()
{
    AdvancedTab tab;
    tab.read();
    tab.gate().script("zvtGetDigitalGain", 2.5);
    tab.gate().failNext("zvtGetDigitalGain", 3);
    QStringList expected = AdvancedTab::readSignals;
    expected.removeOne("presetTwoGainChanged");
    QCOMPARE(tab.refresh(), expected);
    QCOMPARE(tab.model.presetTwoGain(), 1.5F);
    QCOMPARE(tab.model.presetThreeGain(), 2.5F);
}

void tst_AdvancedTabModel::cameraWithoutLinksKeepsTheIndices()
{
    AdvancedTab tab("low-cost");
    tab.read();
    QVERIFY(tab.model.hasRefreshed());
    QCOMPARE(tab.model.selectedCameraLinkModeIndex(), -1);
    QCOMPARE(tab.model.selectedCoaXPressLinksIndex(), -1);
    QCOMPARE(tab.model.coaXPressLinksList()->size(), 0);
}

void tst_AdvancedTabModel::lostLinksKeepTheirValues()
{
    AdvancedTab tab;
    tab.read();
    tab.setEquipment("hasCameraLinkMode", false);
    tab.setEquipment("hasCoaXPressLinksToUse", false);
    for (const char *call : {"zvtGetCameraLinkType", "zvtGetCameraLinkTypeWritable", "zvtGetCoaXPressLinkCount",
                             "zvtGetCoaXPressLinkCountWritable"})
        tab.gate().script(call, 0);
    QCOMPARE(tab.refresh(), AdvancedTab::presetSignals);
    QCOMPARE(tab.model.selectedCameraLinkModeIndex(), 1);
    QCOMPARE(tab.model.selectedCoaXPressLinksIndex(), 1);
    QVERIFY(tab.model.cameraLinkModeCanBeModified() && tab.model.coaXPressLinksCanBeModified());
    QCOMPARE(tab.model.coaXPressLinksList()->strings(), QStringList({"Single", "Dual"}));
}

void tst_AdvancedTabModel::unknownCameraLinkTypeIsShownByItsNumber()
{
    AdvancedTab tab;
    for (const int type : {0, 2, 255}) {
        tab.gate().script("zvtGetCameraLinkType", type);
        tab.read();
        QCOMPARE(tab.model.selectedCameraLinkModeIndex(), type);
    }
}

void tst_AdvancedTabModel::linkCountIsTheRow_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("shown");
    QTest::newRow("0") << 0 << "Single";
    QTest::newRow("1") << 1 << "Dual";
    QTest::newRow("2") << 2 << "";
    QTest::newRow("255") << 255 << "";
}

void tst_AdvancedTabModel::linkCountIsTheRow()
{
    QFETCH(const int, count);
    QFETCH(const QString, shown);
    AdvancedTab tab;
    tab.gate().script("zvtGetCoaXPressLinkCount", count);
    tab.read();
    QCOMPARE(tab.model.selectedCoaXPressLinksIndex(), count);
    const StringIntDisplaySanityModel &list = *tab.model.coaXPressLinksList();
    QCOMPARE(list.strings(), QStringList({"Single", "Dual"}));
    QCOMPARE(list.values(), QList<int>({1, 2}));
    QCOMPARE(list.stringAt(tab.model.selectedCoaXPressLinksIndex()), shown);
}

void tst_AdvancedTabModel::linkListIsBuiltAgainBeforeTheRowIsSignalled()
{
    AdvancedTab tab;
    SignalLog rows(tab.model.coaXPressLinksList());
    for (int read = 0; read < 2; ++read) {
        const int rowBefore = tab.model.selectedCoaXPressLinksIndex();
        int rowWithList = -2;
        QStringList beforeList;
        QStringList afterList;
        const auto list = QObject::connect(&tab.model, &AdvancedTabModel::coaXPressLinksListChanged, this, [&] {
            rowWithList = tab.model.selectedCoaXPressLinksIndex();
            beforeList = rows.take();
        });
        const auto row = QObject::connect(&tab.model, &AdvancedTabModel::selectedCoaXPressLinksIndexChanged, this,
                                          [&] { afterList = rows.take(); });
        tab.read();
        QObject::disconnect(list);
        QObject::disconnect(row);
        QCOMPARE(beforeList.count("stringsChanged"), 3); // Emptied, then two rows.
        QCOMPARE(afterList, QStringList());
        QCOMPARE(rowWithList, rowBefore);
        QCOMPARE(tab.model.coaXPressLinksList()->size(), 2);
    }
}

void tst_AdvancedTabModel::failedLinkCountLeavesTheList()
{
    AdvancedTab tab;
    tab.gate().failNext("zvtGetCoaXPressLinkCount");
    tab.read();
    QCOMPARE(tab.model.coaXPressLinksList()->size(), 0);
    tab.read();
    SignalLog rows(tab.model.coaXPressLinksList());
    tab.gate().failNext("zvtGetCoaXPressLinkCount");
    QStringList expected = AdvancedTab::readSignals;
    expected.removeOne("coaXPressLinksListChanged");
    expected.removeOne("selectedCoaXPressLinksIndexChanged");
    QCOMPARE(tab.refresh(), expected);
    QCOMPARE(rows.take(), QStringList());
}

void tst_AdvancedTabModel::blackHotIsReadOnlyIfAvailable()
{
    AdvancedTab tab;
    tab.read();
    tab.gate().script("zvtGetBlackHotEnabled", 0);
    tab.gate().failNext("zvtGetBlackHotAvailable");
    QCOMPARE(tab.read(), allReads.first(allReads.size() - 1));
    QVERIFY(tab.model.blackHotAvailable() && tab.model.blackHotEnabled());
    tab.gate().script("zvtGetBlackHotAvailable", 0);
    QCOMPARE(tab.refresh(), AdvancedTab::readSignals + QStringList("blackHotAvailableChanged"));
    QVERIFY(!tab.model.blackHotAvailable() && tab.model.blackHotEnabled());
    QCOMPARE(tab.read(), allReads.first(allReads.size() - 1));
}

// The real answers

void tst_AdvancedTabModel::readsTheRealCamera()
{
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    AdvancedTabModel &model = *root.advancedTabModel();
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.presetThreeGain(), 1.0F);
    QCOMPARE(model.presetThreeOffset(), 0.0F);
    QVERIFY(model.blackHotAvailable() && !model.blackHotEnabled());
    model.setBlackHotEnabled(true);
    model.setPresetTwoOffset(-100.0F);
    AdvancedTabModel other(&root);
    other.refresh();
    CameraRig::settle();
    QVERIFY(other.blackHotEnabled());
    QCOMPARE(other.presetTwoOffset(), -100.0F);
    QCOMPARE(other.presetOneOffset(), 0.0F);
}

void tst_AdvancedTabModel::linksOfTheRealCameraAreShown()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    AdvancedTabModel &model = *root.advancedTabModel();
    QVERIFY(rig.camera().otherClient().set("interfaces.cameraLinkType", 1));
    QVERIFY(rig.camera().otherClient().set("interfaces.coaXPressLinks", 2));
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.selectedCameraLinkModeIndex(), 1);
    QVERIFY(model.cameraLinkModeCanBeModified() && model.coaXPressLinksCanBeModified());
    QCOMPARE(model.coaXPressLinksList()->stringAt(model.selectedCoaXPressLinksIndex()), "");
    QVERIFY(rig.camera().otherClient().set("interfaces.coaXPressLinks", 1));
    model.setSelectedCameraLinkModeIndex(0);
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.selectedCameraLinkModeIndex(), 1);
    QCOMPARE(model.coaXPressLinksList()->stringAt(model.selectedCoaXPressLinksIndex()), "Dual");
}

void tst_AdvancedTabModel::rootRefreshesTheTab()
{
    AdvancedTab tab;
    const size_t since = tab.gate().mark();
    tab.root.refreshAllVisible();
    CameraRig::settle();
    QCOMPARE(tab.calls(since, false).count("zvtGetBlackHotAvailable"), 1);
}

// The walkers

void tst_AdvancedTabModel::failingReads()
{
    walkFailingReads(digitalModel(),
                     {{"zvtGetBlackHotAvailable",
                       {{"blackHotAvailable", "blackHotEnabled"}, "the switch is read only if it is available"}}});
}

void tst_AdvancedTabModel::heldReadsOutliveTheModel() { walkHeldDeletion(digitalModel()); }

void tst_AdvancedTabModel::secondRefreshIsDropped() { walkSecondRefresh(digitalModel()); }

void tst_AdvancedTabModel::readsWithoutACamera() { walkNoCamera(modelOf<AdvancedTabModel>()); }

void tst_AdvancedTabModel::randomOperator() { walkRandomOperator(modelOf<AdvancedTabModel>(), 81); }

ZVT_TEST(tst_AdvancedTabModel)
#include "tst_AdvancedTabModel.moc"
