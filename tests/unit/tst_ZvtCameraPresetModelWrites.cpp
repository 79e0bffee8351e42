#include "tests/support/Test.h"
#include "tests/unit/SetupRig.h"

#include <cmath>

class tst_ZvtCameraPresetModelWrites : public Test
{
    Q_OBJECT

private slots:
    void integrationTimeIsReadBack();
    void listedRateSelectsItsRow();
    void otherRateGoesToTheCameraAsItIs();
    void notANumberMatchesNoRow();
    void rowOfARateIsSelected();
    void rowOutsideTheListLeavesTheRate();
    void dwellAndSubframeAreWritten();
    void unchangedValueIsNotWritten();
    void refusedValueStaysUntilTheNextRead();
    void calibrationIsLoadedUnlessTheLastRowIs_data();
    void calibrationIsLoadedUnlessTheLastRowIs();
    void everyCalibrationIsLoadedWhileThereAreNoStrings();
    void calibrationUpdatesTheMaskBeforeItIsSignalled();
    void noCalibrationMakesTheTimeEditable();
    void presetWithoutARootIsHarmless();
};

void tst_ZvtCameraPresetModelWrites::integrationTimeIsReadBack()
{
    Preset camera;
    const size_t mark = camera.mark();
    camera.preset->setIntegrationTime(1.23456789);
    QCOMPARE(camera.preset->integrationTime(), 1.23456789);
    QCOMPARE(camera.log.take(), QStringList({"integrationTimeChanged"}));
    CameraRig::settle();
    QCOMPARE(camera.guiCalls(mark), QStringList({"SetPresetIntegrationTime 2, 1, 1.23456789"}));
    QCOMPARE(camera.taskCalls(mark), partialReadOf(presetNumber));
    QCOMPARE(camera.preset->integrationTime(), 1.23455);
    QCOMPARE(camera.log.take().filter("integrationTimeChanged").size(), 1);
    // A time that the camera stores unchanged is signalled once.
    camera.preset->setIntegrationTime(1.5);
    CameraRig::settle();
    QCOMPARE(camera.log.take().filter("integrationTimeChanged").size(), 1);
}

void tst_ZvtCameraPresetModelWrites::listedRateSelectsItsRow()
{
    Preset camera;
    const int row = static_cast<int>(camera.preset->frameRates().indexOf(20.0));
    QVERIFY(row > 0);
    const size_t mark = camera.mark();
    QCOMPARE(camera.write("frameRate", 20.0), QStringList({QStringLiteral("SetPresetFrameRateIndex 2, %1").arg(row)}));
    QCOMPARE(camera.preset->frameRateIndex(), row);
    QCOMPARE(camera.log.take(), QStringList({"frameRateIndexChanged", "frameRateChanged"}));
    CameraRig::settle();
    QCOMPARE(camera.taskCalls(mark), QStringList());
}

void tst_ZvtCameraPresetModelWrites::otherRateGoesToTheCameraAsItIs()
{
    Preset camera;
    const double rate = std::nextafter(20.0, 21.0);
    const QStringList calls = camera.write("frameRate", rate);
    QCOMPARE(calls.size(), 1);
    QVERIFY(calls.first().startsWith("SetPresetFrameRate 2, 1, 20.0000"));
    QCOMPARE(camera.preset->frameRateIndex(), -1);
    QVERIFY(camera.preset->frameRate() == rate);
    // The index is signalled even if it was -1 before.
    QCOMPARE(camera.log.take(), QStringList({"frameRateIndexChanged", "frameRateChanged"}));
    QCOMPARE(camera.write("frameRate", -3.5), QStringList({"SetPresetFrameRate 2, 1, -3.5"}));
    QCOMPARE(camera.log.take(), QStringList({"frameRateIndexChanged", "frameRateChanged"}));
}

void tst_ZvtCameraPresetModelWrites::notANumberMatchesNoRow()
{
    Preset camera;
    camera.preset->ApplyPartialRefreshResult({0, 1.0, notANumber, {notANumber, 5.0}});
    for (int time = 0; time < 2; ++time) { // A NaN does not equal itself.
        QCOMPARE(camera.write("frameRate", notANumber).filter("SetPresetFrameRate 2, 1, ").size(), 1);
        QCOMPARE(camera.preset->frameRateIndex(), -1);
    }
}

void tst_ZvtCameraPresetModelWrites::rowOfARateIsSelected()
{
    Preset camera;
    QCOMPARE(camera.write("frameRateIndex", 0), QStringList({"SetPresetFrameRateIndex 2, 0"}));
    QCOMPARE(camera.preset->frameRate(), camera.preset->frameRates().first());
    QCOMPARE(camera.log.take(), QStringList({"frameRateIndexChanged", "frameRateChanged"}));
}

void tst_ZvtCameraPresetModelWrites::rowOutsideTheListLeavesTheRate()
{
    Preset camera;
    const double rate = camera.preset->frameRate();
    const size_t mark = camera.mark();
    const int rows = static_cast<int>(camera.preset->frameRates().size());
    for (const int row : {rows, -1, -2}) {
        QCOMPARE(camera.write("frameRateIndex", row),
                 QStringList({QStringLiteral("SetPresetFrameRateIndex 2, %1").arg(row)}));
        QCOMPARE(camera.preset->frameRateIndex(), row);
        QCOMPARE(camera.preset->frameRate(), rate);
        QCOMPARE(camera.log.take(), QStringList({"frameRateIndexChanged"}));
    }
    CameraRig::settle();
    QCOMPARE(camera.taskCalls(mark), QStringList());
}

void tst_ZvtCameraPresetModelWrites::dwellAndSubframeAreWritten()
{
    Preset camera;
    QCOMPARE(camera.write("dwellCount", 2147483647U), QStringList({"SetDwellCount 2, 2147483647"}));
    QCOMPARE(camera.write("subframeEnabled", false), QStringList({"SetSubframeEnabled 2, false"}));
    QCOMPARE(camera.log.take(), QStringList({"dwellCountChanged", "subframeEnabledChanged"}));
    camera.read(&ZvtCameraPresetModel::refresh);
    QCOMPARE(camera.preset->dwellCount(), 2147483647U);
    QVERIFY(!camera.preset->subframeEnabled());
    QCOMPARE(camera.log.take(), QStringList());
}

void tst_ZvtCameraPresetModelWrites::unchangedValueIsNotWritten()
{
    Preset camera;
    for (const char *property : {"activeFactoryCalibrationIndex", "integrationTime", "frameRate", "subframeEnabled",
                                 "dwellCount", "frameRateIndex"})
        QCOMPARE(camera.write(property, camera.preset->property(property)), QStringList());
    QCOMPARE(camera.log.take(), QStringList());
}

void tst_ZvtCameraPresetModelWrites::refusedValueStaysUntilTheNextRead()
{
    Preset camera;
    camera.gate().failAlways("controller.SetDwellCount");
    camera.preset->setDwellCount(9);
    QCOMPARE(camera.preset->dwellCount(), 9U);
    QCOMPARE(camera.log.take(), QStringList({"dwellCountChanged"}));
    camera.read(&ZvtCameraPresetModel::refresh);
    QCOMPARE(camera.preset->dwellCount(), 1U);
}

void tst_ZvtCameraPresetModelWrites::calibrationIsLoadedUnlessTheLastRowIs_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("loaded");
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last calibration") << 2 << true;
    QTest::newRow("row for none") << 3 << false;
    QTest::newRow("beyond") << 4 << true;
    QTest::newRow("-1") << -1 << false;
    QTest::newRow("-2") << -2 << false;
}

void tst_ZvtCameraPresetModelWrites::calibrationIsLoadedUnlessTheLastRowIs()
{
    QFETCH(int, index);
    QFETCH(bool, loaded);
    Preset camera;
    QCOMPARE(camera.model->factoryCalibrationStrings().size(), 4);
    camera.preset->setActiveFactoryCalibrationIndex(1);
    camera.log.take();
    const QStringList calls = camera.write("activeFactoryCalibrationIndex", index);
    QCOMPARE(calls.first(), QStringLiteral("SetPresetCalibrationIndex 2, %1, 1").arg(index));
    QCOMPARE(calls.mid(1).filter("zvtGetNUCName").size(), 4);
    QCOMPARE(camera.preset->activeFactoryCalibrationIndex(), index);
    QCOMPARE(camera.preset->factoryCalibrationLoaded(), loaded);
    QCOMPARE(camera.log.take(), QStringList({"activeFactoryCalibrationIndexChanged"}));
}

void tst_ZvtCameraPresetModelWrites::everyCalibrationIsLoadedWhileThereAreNoStrings()
{
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr); // Its read has not been published yet.
    ZvtCameraPresetModel &first = *root.setupGeneralModel()->ps(0);
    QVERIFY(root.setupGeneralModel()->factoryCalibrationStrings().isEmpty());
    for (const int index : {0, 7}) {
        first.setActiveFactoryCalibrationIndex(index);
        QVERIFY(first.factoryCalibrationLoaded());
    }
    first.setActiveFactoryCalibrationIndex(-1);
    QVERIFY(!first.factoryCalibrationLoaded());
    CameraRig::settle();
}

void tst_ZvtCameraPresetModelWrites::calibrationUpdatesTheMaskBeforeItIsSignalled()
{
    Preset camera;
    QCOMPARE(camera.root.hasNucMask(), uint8_t{0b0011});
    camera.log.watch(&camera.root);
    int shownIndex = -1;
    QObject::connect(&camera.root, &ZvtCameraModel::hasNucMaskChanged, this,
                     [&] { shownIndex = camera.preset->activeFactoryCalibrationIndex(); });
    camera.preset->setActiveFactoryCalibrationIndex(0);
    QCOMPARE(camera.log.take(), QStringList({"hasNucMaskChanged", "activeFactoryCalibrationIndexChanged"}));
    QCOMPARE(camera.root.hasNucMask(), uint8_t{0b0111});
    QCOMPARE(shownIndex, 0);
}

void tst_ZvtCameraPresetModelWrites::noCalibrationMakesTheTimeEditable()
{
    Preset camera;
    for (const int index : {1, 3}) {
        camera.preset->setActiveFactoryCalibrationIndex(index);
        camera.read(&ZvtCameraPresetModel::refresh);
        QCOMPARE(camera.preset->activeFactoryCalibrationIndex(), index);
        QCOMPARE(camera.preset->factoryCalibrationLoaded(), index == 1);
        QCOMPARE(camera.preset->integrationTime(), 0.2);
    }
}

void tst_ZvtCameraPresetModelWrites::presetWithoutARootIsHarmless()
{
    QObject parent;
    ZvtCameraPresetModel model(&parent, presetNumber);
    model.setActiveFactoryCalibrationIndex(1);
    QVERIFY(model.factoryCalibrationLoaded());
    model.setFrameRate(5.0);
    model.setFrameRateIndex(2);
    model.setIntegrationTime(3.0);
    QCOMPARE(model.integrationTime(), 3.0);
    CameraRig::settle();
    QCOMPARE(model.integrationTime(), 0.0);
    QCOMPARE(model.frameRate(), 0.0);
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.activeFactoryCalibrationIndex(), -1);
}

ZVT_TEST(tst_ZvtCameraPresetModelWrites)
#include "tst_ZvtCameraPresetModelWrites.moc"
