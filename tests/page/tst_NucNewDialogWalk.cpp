#include "tests/page/NucWizard.h"
#include "tests/support/Test.h"

/// The way through the wizard up to the run.
class tst_NucNewDialogWalk : public Test
{
    Q_OBJECT

private slots:
    void nextLeads_data();
    void nextLeads();
    void previousLeadsBack();
    void nameIsKeptOnNoPage();
    void enterInAFieldLeadsOn();
    void onlyCancelCloses_data();
    void onlyCancelCloses();
    void disconnectionClosesIt_data();
    void disconnectionClosesIt();

    void invalidNameIsRefused();
    void existingNameIsAskedFor_data();
    void existingNameIsAskedFor();
    void freeNameStartsTheRun();
    void chosenRowIsTheName();
};

void tst_NucNewDialogWalk::nextLeads_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("detect");
    QTest::addColumn<QStringList>("pages");
    QTest::newRow("two-point with limits") << 1 << true << QStringList{"A/D Count Limit Low", "Name"};
    QTest::newRow("two-point") << 1 << false << QStringList{"Name"};
    QTest::newRow("one-point") << 0 << true << QStringList{"Name"};
    QTest::newRow("offset update") << 2 << true << QStringList{"Abort"};
}

void tst_NucNewDialogWalk::nextLeads()
{
    QFETCH(const int, type);
    QFETCH(const bool, detect);
    QFETCH(const QStringList, pages);
    NucWizard wizard({.type = type, .detectBadPixels = detect});
    const size_t mark = wizard.gate().mark();
    for (const QString &page : pages) {
        wizard.use("Next");
        QVERIFY2(wizard.shows(page), qPrintable(page));
    }
    // The list is read when its page is shown, and the run starts only from a page before the run.
    QCOMPARE(wizard.rig().callsSince(mark).contains("zvtListNUCs"), pages.contains("Name"));
    QCOMPARE(wizard.rig().callsSince(mark).contains("zvtStartNUC"), type == 2);
}

void tst_NucNewDialogWalk::previousLeadsBack()
{
    NucWizard wizard;
    QVERIFY(!wizard.enabled("Previous"));
    wizard.use("Next");
    QVERIFY(wizard.enabled("Previous"));
    wizard.use("Next");
    QVERIFY(wizard.shows("Name"));
    QVERIFY(wizard.enabled("Previous"));
    wizard.use("Previous");
    QVERIFY(wizard.shows("A/D Count Limit Low"));
    wizard.use("Previous");
    QVERIFY(wizard.shows("Two-Point"));
    QVERIFY(!wizard.enabled("Previous"));
    // Another way from here.
    wizard.use("Bad Pixel Correction");
    wizard.use("Next");
    QVERIFY(wizard.shows("Name"));
    wizard.use("Previous");
    QVERIFY(wizard.shows("Two-Point"));
}

void tst_NucNewDialogWalk::nameIsKeptOnNoPage()
{
    NucWizard wizard({.detectBadPixels = false});
    wizard.use("Next");
    QCOMPARE(wizard.text("Name"), "");
    wizard.enter("Name", "warm");
    wizard.use("Previous");
    wizard.use("Next");
    QCOMPARE(wizard.text("Name"), "");
    wizard.use("Cancel");
    wizard.open();
    QVERIFY(wizard.shows("Two-Point"));
    wizard.use("Next");
    QCOMPARE(wizard.text("Name"), "");
}

void tst_NucNewDialogWalk::enterInAFieldLeadsOn()
{
    NucWizard wizard;
    wizard.focus("Number of frames");
    wizard.press(Qt::Key_A, Qt::ControlModifier);
    wizard.type("20");
    wizard.press(Qt::Key_Return);
    wizard.settle();
    QCOMPARE(wizard.setting("numFrames").toInt(), 20);
    QVERIFY(wizard.shows("A/D Count Limit Low"));
}

void tst_NucNewDialogWalk::onlyCancelCloses_data()
{
    QTest::addColumn<int>("pages");
    QTest::newRow("start") << 0;
    QTest::newRow("limits") << 1;
    QTest::newRow("name") << 2;
}

void tst_NucNewDialogWalk::onlyCancelCloses()
{
    QFETCH(const int, pages);
    NucWizard wizard;
    for (int page = 0; page < pages; ++page)
        wizard.use("Next");
    const size_t mark = wizard.gate().mark();
    wizard.press(Qt::Key_Escape);
    wizard.settle();
    QVERIFY(wizard.isOpen());
    QVERIFY(!wizard.hostMayClose());
    wizard.use("Cancel");
    QVERIFY(!wizard.isOpen());
    QVERIFY(wizard.hostMayClose());
    QCOMPARE(wizard.commands(mark), QStringList());
}

void tst_NucNewDialogWalk::disconnectionClosesIt_data()
{
    QTest::addColumn<int>("pages");
    QTest::addColumn<QString>("name"); // That is confirmed.
    QTest::newRow("start") << 0 << QString();
    QTest::newRow("limits") << 1 << QString();
    QTest::newRow("name") << 2 << QString();
    QTest::newRow("message") << 2 << "a/b";
    QTest::newRow("question") << 2 << "old";
}

void tst_NucNewDialogWalk::disconnectionClosesIt()
{
    QFETCH(const int, pages);
    QFETCH(const QString, name);
    NucWizard wizard;
    for (int page = 0; page < pages; ++page)
        wizard.use("Next");
    if (!name.isEmpty()) {
        wizard.gate().failNever();
        wizard.gate().script("zvtNUCExists", true);
        wizard.gate().script("zvtIsFactoryNUC", false);
        wizard.enter("Name", name);
        wizard.use("Next");
        QVERIFY(wizard.shows(name == "old" ? "Yes" : "OK"));
        QVERIFY(wizard.isShaded());
    }
    wizard.rig().camera().disconnect();
    wizard.settle();
    QVERIFY(!wizard.isOpen());
    QVERIFY(!wizard.shows("Yes") && !wizard.shows("OK"));
    QVERIFY(!wizard.isShaded());
    QVERIFY(wizard.page()->isEnabled());
    QVERIFY(wizard.hostMayClose());
    // The tool bar can be used.
    wizard.click("Configuration");
    QTRY_VERIFY(wizard.shows("About"));
}

// The name

void tst_NucNewDialogWalk::invalidNameIsRefused()
{
    NucWizard wizard({.detectBadPixels = false});
    wizard.use("Next");
    const size_t mark = wizard.gate().mark();
    for (const char *name : {"", " ", "a/b"}) {
        if (*name)
            wizard.enter("Name", QString::fromLatin1(name));
        wizard.use("Next");
        QVERIFY(wizard.findText("NUC name is not valid. NUC names cannot contain:\n   / \\ : \" * ? < > |\nmust have "
                                "at least one nonspace character and cannot start with a space character."));
        wizard.use("OK");
        QVERIFY(wizard.shows("Name"));
    }
    QCOMPARE(wizard.commands(mark), QStringList());
    QVERIFY(!wizard.rig().callsSince(mark).contains("zvtNUCExists"));
}

void tst_NucNewDialogWalk::existingNameIsAskedFor_data()
{
    QTest::addColumn<bool>("factory");
    QTest::newRow("ordinary") << false;
    QTest::newRow("factory's") << true;
}

void tst_NucNewDialogWalk::existingNameIsAskedFor()
{
    QFETCH(const bool, factory);
    const QString question = factory
        ? QStringLiteral("That NUC already exists and is a factory NUC.\n\nDo you want to overwrite it?")
        : QStringLiteral("That NUC already exists.\n\nDo you want to overwrite it?");
    NucWizard wizard({.detectBadPixels = false});
    wizard.gate().failNever();
    wizard.gate().script("zvtNUCExists", true);
    wizard.gate().script("zvtIsFactoryNUC", factory);
    wizard.use("Next");
    wizard.enter("Name", "old");
    size_t mark = wizard.gate().mark();
    wizard.use("Next");
    QVERIFY(wizard.findText(question));
    wizard.use("No");
    QVERIFY(wizard.shows("Name"));
    QCOMPARE(wizard.commands(mark), QStringList());
    wizard.use("Next");
    mark = wizard.gate().mark();
    wizard.use("Yes");
    QVERIFY(wizard.shows("Abort"));
    QVERIFY(wizard.commands(mark).contains("zvtStartNUC"));
}

void tst_NucNewDialogWalk::freeNameStartsTheRun()
{
    NucWizard wizard({.detectBadPixels = false});
    wizard.use("Next");
    wizard.enter("Name", "new");
    const size_t mark = wizard.gate().mark();
    wizard.use("Next");
    QVERIFY(wizard.shows("Abort"));
    QVERIFY(wizard.commands(mark).contains("zvtStartNUC"));
    // The free space is not checked.
    QVERIFY(!wizard.rig().callsSince(mark).contains("zvtGuessNUCSize"));
}

void tst_NucNewDialogWalk::chosenRowIsTheName()
{
    NucWizard wizard({.detectBadPixels = false});
    wizard.use("Next");
    QVERIFY(wizard.findText("Factory 2 ms"));
    wizard.click(wizard.findText("Factory 2 ms"));
    wizard.settle();
    QCOMPARE(wizard.text("Name"), "Factory 2 ms");
    QVERIFY(!wizard.shows("Upload"));
}

ZVT_TEST(tst_NucNewDialogWalk)
#include "tst_NucNewDialogWalk.moc"
