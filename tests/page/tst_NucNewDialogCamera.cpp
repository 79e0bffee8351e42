#include "tests/page/NucWizard.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"

namespace
{

/// The wizard with an emulated camera without scripts: a cold detector, a small window, and a blackbody of 20 C before
/// the lens.
class RealWizard : public NucWizard
{
public:
    RealWizard() : NucWizard(&prepareCamera) { CameraRig::coolDetector(); }

    uint64_t handle() { return rig().camera().handle(); }
    bool exists(const char *name) { return zvtNUCExists(handle(), name) == 0; }
    qsizetype storedCount()
    {
        hlx::TArray<zvtSDirEntry> entries;
        zvtListNUCs(handle(), &entries);
        return static_cast<qsizetype>(entries.size());
    }
    QString loaded()
    {
        char name[256] = "";
        return zvtGetNUCName(handle(), 0, name, sizeof name) == 0 ? QString::fromUtf8(name) : QString();
    }
    void showSource(double celsius) { rig().camera().otherClient().set("emulator./BlackbodyTemp1", celsius); }

    /// Lets the run take its time, and presses Next when the camera waits for a source. Ends with the run.
    void walk()
    {
        double source = 20;
        for (int second = 0; second < 600 && shows("Abort"); ++second) {
            emulator::Clock::advance(500);
            QMetaObject::invokeMethod(statusTimer(), "timeout");
            settle();
            if (shows("Abort") && enabled("Next")) {
                showSource(source);
                source += 15;
                emulator::Clock::advance(500);
                use("Next");
            }
        }
    }

private:
    static void prepareCamera(emulator::Camera &camera)
    {
        camera.otherClient().set("sensor.window", QVariantList{240, 192, 160, 128});
        camera.otherClient().set("emulator./Pattern", 3);
        camera.otherClient().set("emulator./BlackbodyTemp1", 20);
    }
};

} // namespace

/// Whole walks through the wizard with the emulated camera.
class tst_NucNewDialogCamera : public Test
{
    Q_OBJECT

private slots:
    void acceptedCorrectionIsStored();
    void discardedCorrectionIsNotStored();
    void abortedRunStoresNothing();
    void offsetUpdateByTheFlagStoresNothing();
    void refusedParametersCloseIt();
};

void tst_NucNewDialogCamera::acceptedCorrectionIsStored()
{
    RealWizard wizard;
    wizard.use("Two-Point");
    wizard.use("External Blackbody");
    wizard.start();
    wizard.walk();
    QCOMPARE(wizard.setting("resultText").toString(), "Done");
    QVERIFY(wizard.shows("Accept"));
    QVERIFY(wizard.text("Total Bad Pixels").toInt() > 0);
    QVERIFY(!wizard.exists("new"));
    wizard.use("Accept");
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.exists("new"));
    QCOMPARE(wizard.loaded(), "new");
    QCOMPARE(wizard.text("NUC 0"), "new");
}

void tst_NucNewDialogCamera::discardedCorrectionIsNotStored()
{
    RealWizard wizard;
    const qsizetype before = wizard.storedCount();
    const QString loaded = wizard.loaded();
    wizard.use("Two-Point");
    wizard.use("Bad Pixel Correction");
    wizard.start();
    wizard.walk();
    wizard.use("Discard");
    QVERIFY(!wizard.isOpen());
    QCOMPARE(wizard.storedCount(), before);
    QCOMPARE(wizard.loaded(), loaded);
}

void tst_NucNewDialogCamera::abortedRunStoresNothing()
{
    RealWizard wizard;
    const qsizetype before = wizard.storedCount();
    wizard.use("Two-Point");
    wizard.start();
    wizard.use("Abort");
    wizard.walk();
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.hostMayClose());
    QCOMPARE(wizard.storedCount(), before);
}

void tst_NucNewDialogCamera::offsetUpdateByTheFlagStoresNothing()
{
    RealWizard wizard;
    const qsizetype before = wizard.storedCount();
    const QString loaded = wizard.loaded();
    QVERIFY(!loaded.isEmpty());
    QVERIFY(wizard.checked("Offset Update"));
    wizard.use("Internal Flag");
    wizard.start();
    wizard.walk();
    QCOMPARE(wizard.setting("resultText").toString(), "Done");
    QVERIFY(wizard.shows("Accept"));
    QVERIFY(!wizard.shows("Total Bad Pixels"));
    wizard.use("Accept");
    QCOMPARE(wizard.storedCount(), before);
    QCOMPARE(wizard.loaded(), loaded);
}

// The camera judges the settings when the run starts, and ends it with a result of its own.
void tst_NucNewDialogCamera::refusedParametersCloseIt()
{
    RealWizard wizard;
    const qsizetype before = wizard.storedCount();
    wizard.use("Two-Point");
    wizard.use("Next");
    wizard.enter("A/D Count Limit Low", "15001");
    wizard.start();
    wizard.walk();
    QVERIFY(!wizard.isOpen());
    QCOMPARE(wizard.setting("result").toInt(), 2);
    QCOMPARE(wizard.storedCount(), before);
}

ZVT_TEST(tst_NucNewDialogCamera)
#include "tst_NucNewDialogCamera.moc"
