#include "tests/support/Test.h"
#include "tests/unit/SetupRig.h"

#include <QJSEngine>

namespace
{

using Full = ZvtCameraPresetModel::PresetFullRefreshResult;
using Partial = ZvtCameraPresetModel::PresetPartialRefreshResult;

ModelUnderTest preset(const char *operation = "refresh")
{
    auto model = modelOf<SetupGeneralModel>();
    model.makeModel = [](QObject *root) -> QObject * { return new ZvtCameraPresetModel(root, presetNumber); };
    if (qstrcmp(operation, "partialRefresh") == 0)
        model.read = [](QObject *subject) { qobject_cast<ZvtCameraPresetModel *>(subject)->partialRefresh(); };
    model.prepare = [](CameraRig &rig) { rig.controller()->SetPresetCalibrationIndex(presetNumber, 1, 1); };
    return model;
}

} // namespace

class tst_ZvtCameraPresetModel : public Test
{
    Q_OBJECT

private slots:
    void freshPresetShowsNothing();
    void pageReachesAPresetAndDoesNotOwnIt();

    void fullReadAsksInOrder();
    void partialReadAsksInOrder();
    void readsRunBesideOneAnother();
    void newestReadOfTheExposureCounts();
    void readUnderWayIsNewerThanTheOneThatEnds();
    void olderPartialReadIsNotPublished();
    void calibrationIsFoundInTheStrings_data();
    void calibrationIsFoundInTheStrings();
    void cameraWithoutCalibrationsHasNoRow();
    void changesAreSignalledInOrder();
    void partialResultLeavesTheRestAlone();
    void calibrationSignalsForEitherOfTheTwo();
    void ratesAreComparedBitForBit();
    void failedReadPublishesZeros();

    void failingReads();
    void failingPartialReads();
    void heldReadsOutliveTheModel();
    void secondReadIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_ZvtCameraPresetModel::freshPresetShowsNothing()
{
    QObject parent;
    const auto *const model = new ZvtCameraPresetModel(&parent, presetNumber);
    QCOMPARE(model->parent(), &parent);
    QCOMPARE(model->activeFactoryCalibrationIndex(), -1);
    QCOMPARE(model->frameRateIndex(), -1);
    QVERIFY(!model->factoryCalibrationLoaded());
    QVERIFY(!model->subframeEnabled());
    QCOMPARE(model->dwellCount(), 0U);
    QCOMPARE(model->integrationTime(), 0.0);
    QCOMPARE(model->frameRate(), 0.0);
    QVERIFY(model->frameRates().isEmpty());
}

void tst_ZvtCameraPresetModel::pageReachesAPresetAndDoesNotOwnIt()
{
    Preset camera;
    QJSEngine page;
    page.globalObject().setProperty(QStringLiteral("general"), page.newQObject(camera.model));
    QCOMPARE(page.evaluate(QStringLiteral("general.ps(2).frameRates.length")).toInt(),
             static_cast<int>(camera.preset->frameRates().size()));
    QVERIFY(page.evaluate(QStringLiteral("general.ps(4)")).isNull());
    QVERIFY(!page.evaluate(QStringLiteral("general.ps(2).dwellCount = 2147483647")).isError());
    QCOMPARE(camera.preset->dwellCount(), 2147483647U);
    QCOMPARE(QJSEngine::objectOwnership(camera.preset), QJSEngine::CppOwnership);
}

// Reads

void tst_ZvtCameraPresetModel::fullReadAsksInOrder()
{
    Preset camera;
    const auto controller = camera.rig.controller();
    controller->SetPresetIntegrationTime(presetNumber, 1, 1.5);
    controller->SetPresetFrameRate(presetNumber, 1, 50.0);
    controller->SetSubframeEnabled(presetNumber, false);
    controller->SetDwellCount(presetNumber, 7);
    QCOMPARE(camera.read(&ZvtCameraPresetModel::refresh), fullReadOf(presetNumber));
    QCOMPARE(camera.preset->integrationTime(), 1.5);
    QCOMPARE(camera.preset->frameRate(), 50.0);
    QVERIFY(!camera.preset->subframeEnabled());
    QCOMPARE(camera.preset->dwellCount(), 7U);
    QVERIFY(camera.preset->frameRates().size() > 5);
    QCOMPARE(camera.preset->frameRates().value(camera.preset->frameRateIndex()), 50.0);
    hlx::TArray<double> offered;
    controller->GetPresetFrameRates(presetNumber, &offered);
    QCOMPARE(camera.preset->frameRates(), QList<qreal>(offered.begin(), offered.end()));
}

void tst_ZvtCameraPresetModel::partialReadAsksInOrder()
{
    Preset camera;
    camera.rig.controller()->SetPresetIntegrationTime(presetNumber, 1, 1.5);
    camera.rig.controller()->SetPresetFrameRate(presetNumber, 1, 77.7);
    QCOMPARE(camera.read(&ZvtCameraPresetModel::partialRefresh), partialReadOf(presetNumber));
    QCOMPARE(camera.preset->integrationTime(), 1.5);
    QCOMPARE(camera.preset->frameRate(), 20e6 / 257'400);
    QCOMPARE(camera.preset->frameRateIndex(), -1);
}

void tst_ZvtCameraPresetModel::readsRunBesideOneAnother()
{
    Preset camera;
    camera.gate().hold("controller.GetPresetIntegrationTime");
    camera.preset->refresh();
    camera.preset->partialRefresh();
    QVERIFY(camera.gate().waitHeld("controller.GetPresetIntegrationTime", 2));
}

// A slow read of everything has read the exposure before the operator changes it, and ends after the change.
void tst_ZvtCameraPresetModel::newestReadOfTheExposureCounts()
{
    Preset camera;
    const auto controller = camera.rig.controller();
    controller->SetDwellCount(presetNumber, 9);
    camera.gate().hold("zvtGetActivePreset");
    camera.model->refresh();
    QVERIFY(camera.gate().waitHeld("zvtGetActivePreset"));
    camera.preset->setIntegrationTime(40.0);
    QTRY_VERIFY(camera.preset->frameRates().first() < 25.0);
    const QList<qreal> rates = camera.preset->frameRates();
    camera.log.take();
    camera.gate().release("*");
    CameraRig::settle();
    QCOMPARE(camera.log.take(), QStringList{"dwellCountChanged"});
    QCOMPARE(camera.preset->integrationTime(), 40.0);
    QCOMPARE(camera.preset->frameRates(), rates);
    // The next read is the newest again.
    controller->SetPresetIntegrationTime(presetNumber, 1, 1.5);
    camera.refresh();
    QCOMPARE(camera.preset->integrationTime(), 1.5);
}

void tst_ZvtCameraPresetModel::readUnderWayIsNewerThanTheOneThatEnds()
{
    Preset camera;
    camera.gate().hold("zvtGetActivePreset");
    camera.model->refresh();
    QVERIFY(camera.gate().waitHeld("zvtGetActivePreset"));
    camera.gate().hold("controller.GetPresetFrameRateIndex");
    camera.preset->setIntegrationTime(40.0);
    QVERIFY(camera.gate().waitHeld("controller.GetPresetFrameRateIndex"));
    camera.log.take();
    camera.gate().release("zvtGetActivePreset");
    QTRY_VERIFY(!camera.model->refreshing());
    QCOMPARE(camera.preset->integrationTime(), 40.0);
    QCOMPARE(camera.log.take(), QStringList());
    camera.gate().release("*");
    CameraRig::settle();
    QVERIFY(camera.preset->frameRates().first() < 25.0);
}

void tst_ZvtCameraPresetModel::olderPartialReadIsNotPublished()
{
    Preset camera;
    camera.gate().hold("controller.GetPresetFrameRateIndex");
    camera.preset->partialRefresh();
    QVERIFY(camera.gate().waitHeld("controller.GetPresetFrameRateIndex"));
    Full newer;
    newer.integrationTime = 7.5;
    newer.startTime = std::chrono::steady_clock::now();
    camera.preset->ApplyFullRefreshResult(newer);
    camera.log.take();
    camera.gate().release("*");
    CameraRig::settle();
    QCOMPARE(camera.log.take(), QStringList());
    QCOMPARE(camera.preset->integrationTime(), 7.5);
}

void tst_ZvtCameraPresetModel::calibrationIsFoundInTheStrings_data()
{
    QTest::addColumn<QVariant>("answer"); // Invalid: the read fails.
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("loaded");
    QTest::newRow("none is the last row") << QVariant(-1) << 3 << false;
    QTest::newRow("failed is the last row") << QVariant() << 3 << false;
    QTest::newRow("-2 stays") << QVariant(-2) << -2 << false;
    QTest::newRow("first") << QVariant(0) << 0 << true;
    QTest::newRow("last") << QVariant(2) << 2 << true;
    QTest::newRow("as many as there are") << QVariant(3) << 3 << false;
    QTest::newRow("beyond") << QVariant(9) << 9 << false;
}

void tst_ZvtCameraPresetModel::calibrationIsFoundInTheStrings()
{
    QFETCH(QVariant, answer);
    Preset camera;
    if (answer.isValid())
        camera.gate().script("controller.GetPresetCalibrationIndex", answer);
    else
        camera.gate().failAlways("controller.GetPresetCalibrationIndex");
    camera.read(&ZvtCameraPresetModel::refresh);
    QTEST(camera.preset->activeFactoryCalibrationIndex(), "index");
    QTEST(camera.preset->factoryCalibrationLoaded(), "loaded");
}

void tst_ZvtCameraPresetModel::cameraWithoutCalibrationsHasNoRow()
{
    Preset camera(QStringLiteral("bare"));
    const QStringList calls = camera.read(&ZvtCameraPresetModel::refresh);
    QCOMPARE(calls.last(), QStringLiteral("GetFactoryCalibrations"));
    QCOMPARE(camera.preset->activeFactoryCalibrationIndex(), -1);
    QVERIFY(!camera.preset->factoryCalibrationLoaded());
}

void tst_ZvtCameraPresetModel::changesAreSignalledInOrder()
{
    QObject parent;
    ZvtCameraPresetModel model(&parent, presetNumber);
    SignalLog log(&model);
    const Full full{3, 4, true, 5.0, 6.0, {7.0}, 8, true};
    model.ApplyFullRefreshResult(full);
    QCOMPARE(log.take(),
             QStringList({"integrationTimeChanged", "frameRateChanged", "subframeEnabledChanged", "dwellCountChanged",
                          "frameRatesChanged", "frameRateIndexChanged", "activeFactoryCalibrationIndexChanged"}));
    model.ApplyFullRefreshResult(full);
    QCOMPARE(log.take(), QStringList());
    const Partial partial{30, 50.0, 60.0, {70.0}};
    model.ApplyPartialRefreshResult(partial);
    QCOMPARE(log.take(),
             QStringList({"integrationTimeChanged", "frameRateChanged", "frameRatesChanged", "frameRateIndexChanged"}));
    model.ApplyPartialRefreshResult(partial);
    QCOMPARE(log.take(), QStringList());
}

void tst_ZvtCameraPresetModel::partialResultLeavesTheRestAlone()
{
    QObject parent;
    ZvtCameraPresetModel model(&parent, presetNumber);
    model.ApplyFullRefreshResult({3, 4, true, 5.0, 6.0, {7.0}, 8, true});
    model.ApplyPartialRefreshResult({});
    QCOMPARE(model.integrationTime(), 0.0);
    QCOMPARE(model.frameRate(), 0.0);
    QCOMPARE(model.frameRateIndex(), -1);
    QVERIFY(model.frameRates().isEmpty());
    QCOMPARE(model.dwellCount(), 4U);
    QVERIFY(model.subframeEnabled());
    QCOMPARE(model.activeFactoryCalibrationIndex(), 8);
    QVERIFY(model.factoryCalibrationLoaded());
}

void tst_ZvtCameraPresetModel::calibrationSignalsForEitherOfTheTwo()
{
    QObject parent;
    ZvtCameraPresetModel model(&parent, presetNumber);
    SignalLog log(&model);
    Full result;
    result.factoryCalibrationLoaded = true;
    model.ApplyFullRefreshResult(result);
    QCOMPARE(log.take(), QStringList({"activeFactoryCalibrationIndexChanged"}));
    result.activeFactoryCalibrationIndex = 0;
    model.ApplyFullRefreshResult(result);
    QCOMPARE(log.take(), QStringList({"activeFactoryCalibrationIndexChanged"}));
}

void tst_ZvtCameraPresetModel::ratesAreComparedBitForBit()
{
    QObject parent;
    ZvtCameraPresetModel model(&parent, presetNumber);
    SignalLog log(&model);
    Partial result;
    // A NaN equals itself here; zero and negative zero differ.
    const QList<QList<qreal>> lists{{notANumber}, {0.0}, {-0.0}, {-0.0, 1.0}, {}};
    for (const QList<qreal> &rates : lists) {
        result.frameRates = rates;
        model.ApplyPartialRefreshResult(result);
        QCOMPARE(log.take(), QStringList({"frameRatesChanged"}));
        model.ApplyPartialRefreshResult(result);
        QCOMPARE(log.take(), QStringList());
    }
}

void tst_ZvtCameraPresetModel::failedReadPublishesZeros()
{
    Preset camera;
    QVERIFY(camera.preset->frameRate() > 0.0);
    camera.gate().failAlways("*");
    camera.read(&ZvtCameraPresetModel::refresh);
    QCOMPARE(camera.preset->integrationTime(), 0.0);
    QCOMPARE(camera.preset->frameRate(), 0.0);
    QCOMPARE(camera.preset->dwellCount(), 0U);
    QVERIFY(camera.preset->frameRates().isEmpty());
    QCOMPARE(camera.preset->frameRateIndex(), -1);
    QCOMPARE(camera.preset->activeFactoryCalibrationIndex(), -1);
}

// The walkers

namespace
{

/// The properties that a failing call resets: the record has no flags, so its defaults are published.
ReadException resets(const QStringList &properties)
{
    return {properties, "a failed read publishes zeros", properties};
}

ReadExceptions partialExceptions()
{
    return {{"controller.GetPresetIntegrationTime", resets({"integrationTime"})},
            {"controller.GetPresetFrameRate", resets({"frameRate"})},
            {"controller.GetPresetFrameRates", resets({"frameRates"})},
            {"controller.GetPresetFrameRateIndex", resets({"frameRateIndex"})}};
}

} // namespace

void tst_ZvtCameraPresetModel::failingReads()
{
    const auto calibration = resets({"activeFactoryCalibrationIndex", "factoryCalibrationLoaded"});
    auto exceptions = partialExceptions();
    exceptions.insert({{"controller.GetSubframeEnabled", resets({"subframeEnabled"})},
                       {"controller.GetDwellCount", resets({"dwellCount"})},
                       {"controller.GetFactoryCalibrations", calibration},
                       {"controller.GetPresetCalibrationIndex", calibration}});
    walkFailingReads(preset(), exceptions);
}

void tst_ZvtCameraPresetModel::failingPartialReads()
{
    walkFailingReads(preset("partialRefresh"), partialExceptions());
}

void tst_ZvtCameraPresetModel::heldReadsOutliveTheModel()
{
    walkHeldDeletion(preset());
    walkHeldDeletion(preset("partialRefresh"));
}

void tst_ZvtCameraPresetModel::secondReadIsDropped()
{
    walkSecondRefresh(preset());
    walkSecondRefresh(preset("partialRefresh"));
}

void tst_ZvtCameraPresetModel::readsWithoutACamera()
{
    walkNoCamera(preset());
    walkNoCamera(preset("partialRefresh"));
}

void tst_ZvtCameraPresetModel::randomOperator()
{
    for (uint32_t seed = 1; seed <= 3; ++seed)
        walkRandomOperator(preset(), seed);
}

ZVT_TEST(tst_ZvtCameraPresetModel)
#include "tst_ZvtCameraPresetModel.moc"
