#include "tests/support/Test.h"
#include "tests/unit/SaturationRig.h"

#include <QMetaProperty>

#include <limits>

namespace
{

const QStringList values = Saturation::countThresholds + Saturation::pixelThresholds + Saturation::saturatedPixels;
const QStringList readCalls = Saturation::forEachPreset("zvtGetSaturationCountThreshold")
    + Saturation::forEachPreset("zvtGetSaturationPixelThreshold") + Saturation::forEachPreset("zvtGetSaturatedPixels");

ModelUnderTest saturationModel()
{
    auto model = modelOf<AdvancedSaturationSettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptSaturation(rig.gate()); };
    return model;
}

} // namespace

/// What the saturation settings read and write. tst_AdvancedSaturationSettingsModelCount tests the live count.
class tst_AdvancedSaturationSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void limitsAreConstant();
    void readsInOrder();
    void publishesInOrder();
    void failedReadKeepsLastValue_data();
    void failedReadKeepsLastValue();
    void largestNumbersAreRead();

    void thresholdIsWrittenAndItsCountRead_data();
    void thresholdIsWrittenAndItsCountRead();
    void presentThresholdIsNotWritten_data() { thresholdIsWrittenAndItsCountRead_data(); }
    void presentThresholdIsNotWritten();
    void refusedThresholdStays_data() { thresholdIsWrittenAndItsCountRead_data(); }
    void refusedThresholdStays();
    void failedCountAfterAWriteKeepsTheLast();
    void countIsReadAfterTheSignal();
    void thresholdsAreCutForTheCamera_data();
    void thresholdsAreCutForTheCamera();
    void countFollowsTheThreshold();

    void countsOfAllPresetsAreReadAtOnce();
    void failedCountKeepsTheLast();
    void presetOutsideTheRangeIsIgnored_data();
    void presetOutsideTheRangeIsIgnored();
    void modelWithoutARootIsHarmless();

    void rootReadsAVisibleSection();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_AdvancedSaturationSettingsModel::nothingIsKnownAtFirst()
{
    Saturation saturation;
    QVERIFY(!saturation.model.refreshing() && !saturation.model.hasRefreshed() && !saturation.model.visible());
    for (const QString &property : values)
        QCOMPARE(saturation.value(property), 0);
}

void tst_AdvancedSaturationSettingsModel::limitsAreConstant()
{
    const AdvancedSaturationSettingsModel model(nullptr);
    QCOMPARE(model.countThresholdMinValue(), 0);
    QCOMPARE(model.countThresholdMaxValue(), 16383);
    QCOMPARE(model.pixelThresholdMinValue(), 0);
    QCOMPARE(model.pixelThresholdMaxValue(), 1048576);
    for (const char *limit :
         {"countThresholdMinValue", "countThresholdMaxValue", "pixelThresholdMinValue", "pixelThresholdMaxValue"}) {
        const QMetaObject &meta = AdvancedSaturationSettingsModel::staticMetaObject;
        const QMetaProperty property = meta.property(meta.indexOfProperty(limit));
        QVERIFY(property.isConstant() && !property.hasNotifySignal() && !property.isWritable());
    }
}

// The read

void tst_AdvancedSaturationSettingsModel::readsInOrder()
{
    Saturation saturation;
    QCOMPARE(saturation.read(), readCalls);
    for (int preset = 0; preset < 4; ++preset) {
        QCOMPARE(saturation.value(Saturation::countThresholds.at(preset)), 12000);
        QCOMPARE(saturation.value(Saturation::pixelThresholds.at(preset)), 70000);
        QCOMPARE(saturation.value(Saturation::saturatedPixels.at(preset)), 225);
    }
}

void tst_AdvancedSaturationSettingsModel::publishesInOrder()
{
    Saturation saturation;
    for (int read = 0; read < 2; ++read) {
        saturation.model.refresh();
        QCOMPARE(saturation.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
        QVERIFY(saturation.model.refreshing() && !saturation.model.hasRefreshed());
        CameraRig::settle();
        // The second read signals also the unchanged values.
        QCOMPARE(saturation.log.take(),
                 changedSignals(values) + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
        QVERIFY(!saturation.model.refreshing() && saturation.model.hasRefreshed());
    }
}

void tst_AdvancedSaturationSettingsModel::failedReadKeepsLastValue_data()
{
    QTest::addColumn<int>("call");
    for (int call = 0; call < readCalls.size(); ++call)
        QTest::newRow(qPrintable(readCalls.at(call))) << call;
}

// The n-th call is that of the n-th value.
void tst_AdvancedSaturationSettingsModel::failedReadKeepsLastValue()
{
    QFETCH(const int, call);
    Saturation saturation;
    saturation.read();
    saturation.gate().script("zvtGetSaturat*", 7);
    for (const char *name :
         {"zvtGetSaturationCountThreshold", "zvtGetSaturationPixelThreshold", "zvtGetSaturatedPixels"})
        saturation.gate().script(name, {});
    const int before = saturation.value(values.at(call));
    saturation.gate().failNext(readCalls.at(call).section(u' ', 0, 0).toStdString(), call % 4 + 1);
    QStringList published = changedSignals(values);
    published.removeAt(call);
    QCOMPARE(saturation.refresh(), published);
    for (int i = 0; i < values.size(); ++i)
        QCOMPARE(saturation.value(values.at(i)), i == call ? before : 7);
    QVERIFY(saturation.model.hasRefreshed());
}

void tst_AdvancedSaturationSettingsModel::largestNumbersAreRead()
{
    Saturation saturation;
    saturation.gate().script("zvtGetSaturationCountThreshold", 65535);
    saturation.gate().script("zvtGetSaturationPixelThreshold", 1048576U);
    saturation.gate().script("zvtGetSaturatedPixels", 1048576U);
    saturation.read();
    QCOMPARE(saturation.model.presetThreeCountThreshold(), 65535);
    QCOMPARE(saturation.model.presetThreePixelThreshold(), 1048576);
    QCOMPARE(saturation.model.presetThreeSaturatedPixels(), 1048576);
}

// The thresholds

void tst_AdvancedSaturationSettingsModel::thresholdIsWrittenAndItsCountRead_data()
{
    QTest::addColumn<int>("preset");
    QTest::addColumn<QString>("setter");
    for (int preset = 0; preset < 4; ++preset) {
        QTest::newRow(qPrintable(Saturation::countThresholds.at(preset))) << preset << "zvtSetSaturationCountThreshold";
        QTest::newRow(qPrintable(Saturation::pixelThresholds.at(preset))) << preset << "zvtSetSaturationPixelThreshold";
    }
}

void tst_AdvancedSaturationSettingsModel::thresholdIsWrittenAndItsCountRead()
{
    QFETCH(const int, preset);
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    Saturation saturation;
    QCOMPARE(saturation.write(property, 16383),
             QStringList({QStringLiteral("%1 %2, 16383").arg(setter).arg(preset),
                          QStringLiteral("zvtGetSaturatedPixels %1").arg(preset)}));
    QCOMPARE(saturation.log.take(), changedSignals({property, Saturation::saturatedPixels.at(preset)}));
    for (const QString &other : Saturation::countThresholds + Saturation::pixelThresholds)
        QCOMPARE(saturation.value(other), other == QLatin1String(property) ? 16383 : 0);
    for (int other = 0; other < 4; ++other)
        QCOMPARE(saturation.value(Saturation::saturatedPixels.at(other)), other == preset ? 225 : 0);
}

void tst_AdvancedSaturationSettingsModel::presentThresholdIsNotWritten()
{
    const char *property = QTest::currentDataTag();
    Saturation saturation;
    saturation.read();
    QCOMPARE(saturation.write(property, saturation.model.property(property)), QStringList());
    QCOMPARE(saturation.log.take(), QStringList());
}

void tst_AdvancedSaturationSettingsModel::refusedThresholdStays()
{
    QFETCH(const int, preset);
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    Saturation saturation;
    saturation.gate().failNext(setter.toStdString());
    QCOMPARE(saturation.write(property, 5).size(), 2);
    QCOMPARE(saturation.value(property), 5);
    QCOMPARE(saturation.log.take(), changedSignals({property, Saturation::saturatedPixels.at(preset)}));
}

void tst_AdvancedSaturationSettingsModel::failedCountAfterAWriteKeepsTheLast()
{
    Saturation saturation;
    saturation.read();
    saturation.gate().script("zvtGetSaturatedPixels", 9U);
    saturation.gate().failNext("zvtGetSaturatedPixels");
    saturation.write("presetOnePixelThreshold", 3);
    QCOMPARE(saturation.log.take(), changedSignals({"presetOnePixelThreshold"}));
    QCOMPARE(saturation.model.presetOneSaturatedPixels(), 225);
}

void tst_AdvancedSaturationSettingsModel::countIsReadAfterTheSignal()
{
    Saturation saturation;
    const size_t since = saturation.gate().mark();
    QStringList callsBefore;
    QObject::connect(&saturation.model, &AdvancedSaturationSettingsModel::presetTwoCountThresholdChanged, this, [&] {
        callsBefore = saturation.calls(since, true);
        QCOMPARE(saturation.model.presetTwoCountThreshold(), 100);
    });
    saturation.model.setPresetTwoCountThreshold(100);
    QCOMPARE(callsBefore, QStringList("zvtSetSaturationCountThreshold 2, 100"));
    QCOMPARE(saturation.calls(since, true).size(), 2);
}

void tst_AdvancedSaturationSettingsModel::thresholdsAreCutForTheCamera_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("call");
    const QString counts = Saturation::countThresholds.first();
    const QString pixels = Saturation::pixelThresholds.first();
    QTest::newRow("more than the page accepts") << counts << 16384 << "zvtSetSaturationCountThreshold 0, 16384";
    QTest::newRow("16 bits") << counts << 65535 << "zvtSetSaturationCountThreshold 0, 65535";
    QTest::newRow("17 bits") << counts << 65536 << "zvtSetSaturationCountThreshold 0, 0";
    QTest::newRow("negative counts") << counts << -1 << "zvtSetSaturationCountThreshold 0, 65535";
    QTest::newRow("more pixels") << pixels << 1048577 << "zvtSetSaturationPixelThreshold 0, 1048577";
    QTest::newRow("negative pixels") << pixels << -1 << "zvtSetSaturationPixelThreshold 0, 4294967295";
}

void tst_AdvancedSaturationSettingsModel::thresholdsAreCutForTheCamera()
{
    QFETCH(const QString, property);
    QFETCH(const int, value);
    QFETCH(const QString, call);
    Saturation saturation;
    QCOMPARE(saturation.write(property.toLatin1(), value), QStringList({call, "zvtGetSaturatedPixels 0"}));
    QCOMPARE(saturation.value(property), value);
}

// A camera whose answers are not scripted.
void tst_AdvancedSaturationSettingsModel::countFollowsTheThreshold()
{
    Saturation saturation(false);
    CameraRig::coolDetector();
    saturation.read();
    QCOMPARE(saturation.model.presetZeroCountThreshold(), 16000);
    const int before = saturation.model.presetZeroSaturatedPixels();
    saturation.model.setPresetZeroCountThreshold(1000);
    const int many = saturation.model.presetZeroSaturatedPixels();
    QVERIFY2(many > before, qPrintable(QStringLiteral("%1 after %2").arg(many).arg(before)));
    saturation.model.setPresetZeroCountThreshold(65535);
    QCOMPARE(saturation.model.presetZeroSaturatedPixels(), 0);
    // Refused by the camera.
    saturation.model.setPresetZeroPixelThreshold(1048577);
    QCOMPARE(saturation.model.presetZeroPixelThreshold(), 1048577);
    saturation.read();
    QCOMPARE(saturation.model.presetZeroCountThreshold(), 65535);
    QCOMPARE(saturation.model.presetZeroPixelThreshold(), 0);
}

// The counts on the GUI thread

void tst_AdvancedSaturationSettingsModel::countsOfAllPresetsAreReadAtOnce()
{
    Saturation saturation;
    for (int update = 0; update < 2; ++update) {
        QCOMPARE(saturation.callsOf([&] { saturation.model.updateAllSaturatedPixels(); }),
                 Saturation::forEachPreset("zvtGetSaturatedPixels"));
        // The second update signals also the unchanged values.
        QCOMPARE(saturation.log.take(), changedSignals(Saturation::saturatedPixels));
    }
    for (const QString &property : Saturation::saturatedPixels)
        QCOMPARE(saturation.value(property), 225);
    QVERIFY(!saturation.model.hasRefreshed());
}

void tst_AdvancedSaturationSettingsModel::failedCountKeepsTheLast()
{
    Saturation saturation;
    saturation.read();
    saturation.gate().script("zvtGetSaturatedPixels", 9U);
    saturation.gate().failNext("zvtGetSaturatedPixels", 3);
    saturation.callsOf([&] { saturation.model.updateAllSaturatedPixels(); });
    QStringList published = Saturation::saturatedPixels;
    published.removeAt(2);
    QCOMPARE(saturation.log.take(), changedSignals(published));
    QCOMPARE(saturation.model.presetTwoSaturatedPixels(), 225);
    QCOMPARE(saturation.model.presetThreeSaturatedPixels(), 9);
}

void tst_AdvancedSaturationSettingsModel::presetOutsideTheRangeIsIgnored_data()
{
    QTest::addColumn<int>("preset");
    for (const int preset : {-1, -4, 4, 256, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        QTest::addRow("%d", preset) << preset;
}

void tst_AdvancedSaturationSettingsModel::presetOutsideTheRangeIsIgnored()
{
    QFETCH(const int, preset);
    Saturation saturation;
    QCOMPARE(saturation.callsOf([&] { saturation.model.updateSaturationPixels(preset); }), QStringList());
    QCOMPARE(saturation.log.take(), QStringList());
    QCOMPARE(saturation.callsOf([&] { saturation.model.updateSaturationPixels(3); }),
             QStringList("zvtGetSaturatedPixels 3"));
    QCOMPARE(saturation.log.take(), changedSignals({Saturation::saturatedPixels.at(3)}));
}

void tst_AdvancedSaturationSettingsModel::modelWithoutARootIsHarmless()
{
    AdvancedSaturationSettingsModel orphan(nullptr);
    orphan.refresh();
    orphan.startSaturatedPixelUpdate();
    CameraRig::settle();
    QVERIFY(orphan.hasRefreshed());
    orphan.updateAllSaturatedPixels();
    QCOMPARE(orphan.presetZeroSaturatedPixels(), 0);
    orphan.setPresetZeroCountThreshold(5);
    QCOMPARE(orphan.presetZeroCountThreshold(), 5);
}

// The walkers

void tst_AdvancedSaturationSettingsModel::rootReadsAVisibleSection()
{
    Saturation saturation;
    const auto refreshAll = [&] {
        const size_t since = saturation.gate().mark();
        saturation.root.refreshAllVisible();
        CameraRig::settle();
        QStringList calls = saturation.calls(since, false);
        calls.removeIf([](const QString &call) { return !readCalls.contains(call); });
        return calls;
    };
    QCOMPARE(refreshAll(), QStringList());
    saturation.model.setVisible(true);
    QCOMPARE(refreshAll(), readCalls);
}

void tst_AdvancedSaturationSettingsModel::failingReads() { walkFailingReads(saturationModel()); }

void tst_AdvancedSaturationSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(saturationModel()); }

void tst_AdvancedSaturationSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(saturationModel()); }

void tst_AdvancedSaturationSettingsModel::readsWithoutACamera() { walkNoCamera(saturationModel()); }

void tst_AdvancedSaturationSettingsModel::randomOperator()
{
    walkRandomOperator(modelOf<AdvancedSaturationSettingsModel>(), 83);
}

ZVT_TEST(tst_AdvancedSaturationSettingsModel)
#include "tst_AdvancedSaturationSettingsModel.moc"
