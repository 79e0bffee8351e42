#include "tests/support/Test.h"
#include "tests/unit/ForeignController.h"
#include "tests/unit/SetupTabRig.h"

#include "setup/SetupGeneralModel.h"

/// The setup below a controller that is not a CZVTController.
class tst_SetupForeignController : public Test
{
    Q_OBJECT

private slots:
    void readsWhatTheSdkGives();
    void changedMakeUpLeavesTheFrameworkAlone();
    void operationsThatItRefusesEnd();
};

namespace
{

/// A Setup tab on a camera with a foreign controller.
struct Foreign {
    Foreign()
        : controller(hlx::TSharedPtr<ForeignController>::make(rig.camera().handle())), root(adopt(), nullptr),
          model(root.setupTabModel())
    {
        CameraRig::settle();
    }

    /// Copies the capabilities from the camera's own controller once, and returns the foreign controller.
    hlx::TSharedPtr<hlx::cam::IZVTController> adopt()
    {
        controller->capabilities.configure(rig.controller().get());
        return controller;
    }

    CameraRig rig;
    hlx::TSharedPtr<ForeignController> controller;
    ZvtCameraModel root;
    SetupTabModel *model;
};

} // namespace

void tst_SetupForeignController::readsWhatTheSdkGives()
{
    Foreign foreign;
    foreign.rig.gate().script("zvtGetFrameSyncSource", 2);
    foreign.model->refresh();
    CameraRig::settle();
    QVERIFY(foreign.model->hasRefreshed());
    QCOMPARE(foreign.model->syncSource(), 2);
    QVERIFY(foreign.model->fullRangeZoomMaximum() > 0);
    QVERIFY(foreign.root.setupGeneralModel()->hasRefreshed());
    QCOMPARE(foreign.root.setupGeneralModel()->factoryCalibrationStrings(), QStringList{"No Factory Calibration"});
    QCOMPARE(foreign.root.setupGeneralModel()->windowSizeIndex(), -1);
}

// Only a CZVTController can read its capabilities again. The page is refreshed with the old ones.
void tst_SetupForeignController::changedMakeUpLeavesTheFrameworkAlone()
{
    Foreign foreign;
    foreign.model->setVisible(true);
    QVERIFY(foreign.rig.camera().changeMakeUp("hasLensCover", false));
    SignalLog log(foreign.root.cameraCapabilitiesModel());
    const size_t mark = foreign.rig.gate().mark();
    QMetaObject::invokeMethod(foreign.model, "timeoutEventQueueTimer");
    CameraRig::settle();
    QCOMPARE(log.take(), QStringList{"cameraCapabilitiesChanged"});
    QVERIFY(foreign.controller->capabilities.hasLensCover());
    QVERIFY(foreign.root.cameraCapabilitiesModel()->hasLensCover());
    QVERIFY(foreign.model->hasRefreshed());
    QVERIFY(foreign.rig.callsSince(mark).contains("zvtGetLensCoverState"));
}

void tst_SetupForeignController::operationsThatItRefusesEnd()
{
    Foreign foreign;
    foreign.rig.gate().script("zvtAutoFocusFast", true);
    int ended = 0;
    foreign.controller->autoFocusEndedListeners.Add({[](void *context) { ++*static_cast<int *>(context); }, &ended});
    foreign.model->autoFocus();
    CameraRig::settle();
    QCOMPARE(ended, 1);
    QVERIFY(foreign.model->lensBasedControlsEnabled());
    foreign.model->setReduceNoise(true);
    QVERIFY(!foreign.model->reduceNoise());
    foreign.root.setupGeneralModel()->setWindow(QRect(0, 0, 64, 64));
    foreign.root.setupGeneralModel()->ps(0)->setIntegrationTime(2.0);
    CameraRig::settle();
    QCOMPARE(foreign.root.setupGeneralModel()->ps(0)->integrationTime(), 0.0);
    QCOMPARE(foreign.root.device(), hlx::TSharedPtr<hlx::cam::IDevice>());
}

ZVT_TEST(tst_SetupForeignController)
#include "tst_SetupForeignController.moc"
