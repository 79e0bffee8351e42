#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"

#include "plugin/ZvtCameraModel.h"
#include "recording/SsdTabModel.h"
#include "status/StatusTabModel.h"

/// A host may delete the root at any moment.
class tst_RootTeardown : public Test
{
    Q_OBJECT

private slots:
    void rootDiesWithEverythingInFlight_data();
    void rootDiesWithEverythingInFlight();
    void disconnectInTheMiddleOfAReadEndsIt();
};

void tst_RootTeardown::rootDiesWithEverythingInFlight_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_RootTeardown::rootDiesWithEverythingInFlight()
{
    QFETCH(QString, profile);
    CameraRig rig(profile);
    auto root = std::make_unique<ZvtCameraModel>(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold("*");
    root->refreshAllVisible();
    root->statusTabModel()->setVisible(true);
    root->ssdTabModel()->loadAndViewFiles();
    QVERIFY(rig.gate().waitHeld("*", 2));
    root.reset(); // The calls are still held, so a destructor that waits would never return.
    rig.gate().release("*");
    CameraRig::settle();
}

void tst_RootTeardown::disconnectInTheMiddleOfAReadEndsIt()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    rig.gate().hold("controller.GetPresetSequencingMode");
    root.statusTabModel()->refresh();
    QVERIFY(rig.gate().waitHeld("controller.GetPresetSequencingMode"));
    rig.camera().disconnect();
    rig.gate().release("*");
    CameraRig::settle();
    // Values that were read before are published, the others stay as they were.
    QVERIFY(!root.statusTabModel()->frameSize().isEmpty());
    QVERIFY(root.statusTabModel()->frameRate().isEmpty());
}

ZVT_TEST(tst_RootTeardown)
#include "tst_RootTeardown.moc"
