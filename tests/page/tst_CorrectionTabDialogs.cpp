#include "tests/page/CorrectionPage.h"
#include "tests/support/Test.h"

namespace
{

/// The dialog that was made from this file; null if there is none.
QObject *dialogOf(const PageDriver &page, const QString &file)
{
    for (QObject *object : page.page()->findChildren<QObject *>())
        if (object->inherits("QQuickDialog")
            && QString::fromLatin1(object->metaObject()->className()).startsWith(file + "_"))
            return object;
    return nullptr;
}

/// The Correction page of a camera with its own corrections: presets 0 and 1 have one.
struct Dialogs : CorrectionPage {
    Dialogs() : CorrectionPage([](emulator::Camera &) {}) { }

    /// Clicks a button, and waits until the dialog with this title is open and the list of corrections is read.
    void open(const QString &button, const QString &title)
    {
        click(button);
        settle();
        QTRY_VERIFY2(findText(title), qPrintable(title));
        settle();
    }
    void waitUntilClosed(const QString &title)
    {
        QTRY_VERIFY2(!findText(title), qPrintable(title));
        settle();
    }
    void doubleClick(const QString &name)
    {
        QTest::mouseDClick(&window(), Qt::LeftButton, Qt::NoModifier, middle(name));
        settle();
    }
};

} // namespace

/// The dialogs of the Correction page, and what follows when they are accepted.
class tst_CorrectionTabDialogs : public Test
{
    Q_OBJECT

private slots:
    void listIsReadBeforeItIsShown_data();
    void listIsReadBeforeItIsShown();
    void chosenCorrectionIsLoaded();
    void cancelledLoadChangesNothing();
    void correctionIsSavedUnderAName();
    void doubleClickInTheManagedListLoads();
    void infoIsShown();
    void infoIsSmallerThanThePage();
    void wizardGetsThePreset();
    void wizardBlocksThePage();
    void acceptedCorrectionIsSaved_data();
    void acceptedCorrectionIsSaved();
};

void tst_CorrectionTabDialogs::listIsReadBeforeItIsShown_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::newRow("manage") << "Manage NUCs"
                            << "Manage NUCs";
    QTest::newRow("load") << "Load Existing NUC 3"
                          << "Load NUC into Preset 3";
    QTest::newRow("save") << "Save Current NUC 1"
                          << "Save NUC in Preset 1";
}

void tst_CorrectionTabDialogs::listIsReadBeforeItIsShown()
{
    QFETCH(const QString, button);
    QFETCH(const QString, title);
    Dialogs page;
    for (int opening = 0; opening < 2; ++opening) {
        const size_t mark = page.gate().mark();
        page.click(button);
        page.settle();
        QCOMPARE(page.rig().callsSince(mark).count("zvtListNUCs"), 1);
        QVERIFY(page.findText(title));
        page.press(Qt::Key_Escape);
        QTRY_VERIFY(!page.find("Factory 2 ms"));
    }
}

void tst_CorrectionTabDialogs::chosenCorrectionIsLoaded()
{
    Dialogs page;
    QCOMPARE(page.nameOf(2), "No NUC Loaded");
    page.open("Load Existing NUC 2", "Load NUC into Preset 2");
    page.click("Factory 1 ms");
    QCOMPARE(page.commandsOf([&] { page.click("Load"); }), QStringList{"zvtLoadNUC 2, \"Factory 1 ms\""});
    page.waitUntilClosed("Load NUC into Preset 2");
    QCOMPARE(page.nameOf(2), "Factory 1 ms");
    QCOMPARE(page.cameraModel()->property("hasNucMask").toInt(), 7);
    QVERIFY(page.enabled("Unload Current NUC 2"));
}

void tst_CorrectionTabDialogs::cancelledLoadChangesNothing()
{
    Dialogs page;
    page.open("Load Existing NUC 2", "Load NUC into Preset 2");
    page.click("Factory 1 ms");
    QCOMPARE(page.commandsOf([&] { page.click("Cancel"); }), QStringList());
    page.waitUntilClosed("Load NUC into Preset 2");
    QCOMPARE(page.nameOf(2), "No NUC Loaded");
}

void tst_CorrectionTabDialogs::correctionIsSavedUnderAName()
{
    Dialogs page;
    page.open("Save Current NUC 1", "Save NUC in Preset 1");
    // The name of the loaded correction is offered.
    QCOMPARE(page.text("Name"), "Factory 1 ms");
    page.type("Name", "Mine");
    QCOMPARE(page.commandsOf([&] { page.click("Save"); }).filter("Save"), QStringList{"zvtSaveNUCAs 1, \"Mine\""});
    page.waitUntilClosed("Save NUC in Preset 1");
    QCOMPARE(page.nameOf(1), "Mine");
}

// The mode for managing has no preset, and keeps that of the last load or save.
void tst_CorrectionTabDialogs::doubleClickInTheManagedListLoads()
{
    Dialogs page;
    page.open("Manage NUCs", "Name");
    QCOMPARE(page.commandsOf([&] { page.doubleClick("Factory 1 ms"); }), QStringList());
    QTRY_VERIFY(!page.find("Factory 1 ms"));
    page.open("Load Existing NUC 3", "Load NUC into Preset 3");
    page.click("Cancel");
    page.waitUntilClosed("Load NUC into Preset 3");
    page.open("Manage NUCs", "Name");
    QCOMPARE(page.commandsOf([&] { page.doubleClick("Factory 1 ms"); }), QStringList{"zvtLoadNUC 3, \"Factory 1 ms\""});
    QTRY_COMPARE(page.nameOf(3), "Factory 1 ms");
}

void tst_CorrectionTabDialogs::infoIsShown()
{
    Dialogs page;
    const size_t mark = page.gate().mark();
    page.open("Show NUC Info 1", "NUC Information");
    QVERIFY(page.rig().callsSince(mark).contains("zvtQueryNUCInfo"));
    QVERIFY(page.findText("Camera Model"));
    const QObject *dialog = dialogOf(page, "NucInfoDialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->property("width").toInt(), 600);
    QCOMPARE(dialog->property("height").toInt(), 800);
    page.click("Done");
    page.waitUntilClosed("NUC Information");
}

void tst_CorrectionTabDialogs::infoIsSmallerThanThePage()
{
    PageDriver page({.size = {640, 480}});
    page.click("Correction");
    page.settle();
    page.click("Show NUC Info 0");
    page.settle();
    QTRY_VERIFY(page.findText("NUC Information"));
    const QObject *dialog = dialogOf(page, "NucInfoDialog");
    QVERIFY(dialog);
    QCOMPARE(dialog->property("width").toInt(), 576);
    // The tool bar takes 40 pixels.
    QCOMPARE(dialog->property("height").toInt(), 376);
}

void tst_CorrectionTabDialogs::wizardGetsThePreset()
{
    Dialogs page;
    for (const int preset : {1, 2}) {
        const bool calibrated = preset == 1;
        page.gate().script("controller.GetPresetCalibrationIndex", calibrated ? 0 : -1);
        page.refresh();
        page.general()->setProperty("activePreset", preset);
        page.settle();
        const size_t mark = page.gate().mark();
        page.open(QStringLiteral("Perform New NUC %1").arg(preset), "Perform NUC");
        QVERIFY(page.rig().callsSince(mark).contains("zvtGetTwinklerSetup"));
        QCOMPARE(page.tabModel("nucProcess")->property("preset").toInt(), preset);
        const QObject *wizard = dialogOf(page, "NucNewDialog");
        QVERIFY(wizard);
        QCOMPARE(wizard->property("nucName").toString(), preset == 1 ? "Factory 1 ms" : "");
        QCOMPARE(wizard->property("hasNuc").toBool(), preset == 1);
        QCOMPARE(wizard->property("hasCal").toBool(), calibrated);
        page.click("Cancel");
        page.waitUntilClosed("Perform NUC");
    }
}

void tst_CorrectionTabDialogs::wizardBlocksThePage()
{
    Dialogs page;
    QObject *overlay = page.object("fakeOverlay");
    QVERIFY(!overlay->property("visible").toBool());
    page.open("Perform New NUC 0", "Perform NUC");
    QVERIFY(overlay->property("visible").toBool() && !page.page()->isEnabled());
    page.click("Cancel");
    page.waitUntilClosed("Perform NUC");
    QVERIFY(!overlay->property("visible").toBool() && page.page()->isEnabled());
}

void tst_CorrectionTabDialogs::acceptedCorrectionIsSaved_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("saved");
    QTest::newRow("one point") << 0 << true;
    QTest::newRow("two points") << 1 << true;
    QTest::newRow("offset update") << 2 << false;
}

void tst_CorrectionTabDialogs::acceptedCorrectionIsSaved()
{
    QFETCH(const int, type);
    QFETCH(const bool, saved);
    Dialogs page;
    page.open("Perform New NUC 0", "Perform NUC");
    page.tabModel("nucProcess")->setProperty("nucType", type);
    QObject *wizard = dialogOf(page, "NucNewDialog");
    wizard->setProperty("nucName", "New");
    QCOMPARE(page.commandsOf([&] { QMetaObject::invokeMethod(wizard, "accept"); }),
             saved ? QStringList{"zvtSaveNUCAs 0, \"New\""} : QStringList());
    QTRY_COMPARE(page.nameOf(0), saved ? "New" : "Factory 2 ms");
}

ZVT_TEST(tst_CorrectionTabDialogs)
#include "tst_CorrectionTabDialogs.moc"
