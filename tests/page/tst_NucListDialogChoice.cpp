#include "tests/page/NucListPage.h"
#include "tests/support/Test.h"

namespace
{

const QStringList threeNucs{"Alpha", "Bravo", "Charlie"};
const char *const manage = "Manage NUCs";
const char *const save = "Save Current NUC 2";
const char *const load = "Load Existing NUC 2";

} // namespace

/// The choice of a correction to load, or of a name to save one under, in the dialog with the list of corrections.
class tst_NucListDialogChoice : public Test
{
    Q_OBJECT

private slots:
    void aDoubleClickLoads();
    void aDoubleClickSaves();
    void aDoubleClickInManageModeOnlyCloses();
    void aNucIsLoaded_data();
    void aNucIsLoaded();
    void theCorrectionIsSaved_data();
    void theCorrectionIsSaved();
    void savingTestsInThisOrder_data();
    void savingTestsInThisOrder();
    void aFailedGuessNeedsAnyFreeSpace_data();
    void aFailedGuessNeedsAnyFreeSpace();
    void overwritingIsAsked_data();
    void overwritingIsAsked();
    void informationOfARowIsShown_data();
    void informationOfARowIsShown();
    void savingSelectsTheNucOfThePreset_data();
    void savingSelectsTheNucOfThePreset();
    void savingUnderAnUnlistedNameSelectsNothing();
};

void tst_NucListDialogChoice::aDoubleClickLoads()
{
    NucListPage page(threeNucs);
    page.open(load);
    const size_t mark = page.gate().mark();
    page.doubleClick("Charlie");
    QTRY_VERIFY(!page.isOpen());
    QVERIFY(page.calls(mark).contains("zvtLoadNUC 2, \"Charlie\""));
}

void tst_NucListDialogChoice::aDoubleClickSaves()
{
    NucListPage page(threeNucs);
    page.open(save);
    const size_t mark = page.gate().mark();
    page.doubleClick("Charlie");
    QTRY_VERIFY(page.findText(overwriteNuc));
    QCOMPARE(page.name(), "Charlie");
    page.awaitFrame();
    page.click("Yes");
    page.settle();
    QTRY_VERIFY(!page.isOpen());
    QVERIFY(page.calls(mark).contains("zvtSaveNUCAs 2, \"Charlie\""));
}

// The dialog accepts. No preset was chosen, so the page loads nothing.
void tst_NucListDialogChoice::aDoubleClickInManageModeOnlyCloses()
{
    NucListPage page(threeNucs);
    page.open(manage);
    const size_t mark = page.gate().mark();
    page.doubleClick("Charlie");
    QTRY_VERIFY(!page.isOpen());
    QCOMPARE(page.calls(mark).filter("zvtLoadNUC"), QStringList());
}

void tst_NucListDialogChoice::aNucIsLoaded_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the button") << false;
    QTest::newRow("by Enter") << true;
}

void tst_NucListDialogChoice::aNucIsLoaded()
{
    QFETCH(const bool, byKey);
    NucListPage page(threeNucs);
    page.open(load);
    page.choose("Alpha");
    const size_t mark = page.gate().mark();
    byKey ? page.press(Qt::Key_Return) : page.click("Load");
    page.settle();
    QTRY_VERIFY(!page.isOpen());
    const QStringList calls = page.calls(mark);
    QVERIFY(calls.contains("zvtLoadNUC 2, \"Alpha\""));
    QCOMPARE(calls.filter("zvtNUCExists"), QStringList());
}

void tst_NucListDialogChoice::theCorrectionIsSaved_data() { aNucIsLoaded_data(); }

void tst_NucListDialogChoice::theCorrectionIsSaved()
{
    QFETCH(const bool, byKey);
    NucListPage page(threeNucs);
    page.open(save);
    QTRY_VERIFY(page.nameField()->hasActiveFocus());
    page.type("Delta");
    const size_t mark = page.gate().mark();
    byKey ? page.press(Qt::Key_Return) : page.click("Save");
    page.settle();
    QTRY_VERIFY(!page.isOpen());
    QVERIFY(page.calls(mark).contains("zvtSaveNUCAs 2, \"Delta\""));
}

void tst_NucListDialogChoice::savingTestsInThisOrder_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasSpace");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QStringList>("calls");
    const QString guess = "zvtGuessNUCSize 640, 512";
    QTest::newRow("no space, before all else") << "a:b" << false << noSpaceForNuc << QStringList(guess);
    QTest::newRow("no space for a name that exists") << "Alpha" << false << noSpaceForNuc << QStringList(guess);
    QTest::newRow("an invalid name, before existence") << "a:b" << true << invalidNucName << QStringList(guess);
    QTest::newRow("an existing name") << "Alpha" << true << overwriteNuc
                                      << QStringList({guess, "zvtNUCExists \"Alpha\"", "zvtIsFactoryNUC \"Alpha\""});
}

void tst_NucListDialogChoice::savingTestsInThisOrder()
{
    QFETCH(const QString, name);
    QFETCH(const bool, hasSpace);
    QFETCH(const QString, message);
    NucListPage page(threeNucs);
    // A size that equals the free space does not fit.
    page.gate().script("zvtGetNUCFreeSpace", 2'950'148 + (hasSpace ? 1 : 0));
    page.open(save);
    QTRY_VERIFY(page.nameField()->hasActiveFocus());
    page.type(name);
    const size_t mark = page.gate().mark();
    page.press(Qt::Key_Return);
    QTRY_VERIFY(page.findText(message));
    QVERIFY(page.findText(message == overwriteNuc ? "Warning" : "Error"));
    QTEST(page.calls(mark), "calls");
    page.press(Qt::Key_Escape);
    QTRY_VERIFY(!page.findText(message));
    // The name can be corrected.
    QVERIFY(page.isOpen());
    QTRY_VERIFY(page.nameField()->hasActiveFocus());
    QCOMPARE(page.name(), name);
}

void tst_NucListDialogChoice::aFailedGuessNeedsAnyFreeSpace_data()
{
    QTest::addColumn<int>("freeSpace");
    QTest::newRow("one byte") << 1;
    QTest::newRow("none") << 0;
}

void tst_NucListDialogChoice::aFailedGuessNeedsAnyFreeSpace()
{
    QFETCH(const int, freeSpace);
    NucListPage page(threeNucs);
    page.gate().failAlways("zvtGuessNUCSize");
    page.gate().script("zvtGetNUCFreeSpace", freeSpace);
    page.open(save);
    QTRY_VERIFY(page.nameField()->hasActiveFocus());
    page.type("Delta");
    const size_t mark = page.gate().mark();
    page.press(Qt::Key_Return);
    page.settle();
    QTRY_COMPARE(page.findText(noSpaceForNuc) != nullptr, freeSpace == 0);
    QTRY_COMPARE(page.isOpen(), freeSpace == 0);
    QCOMPARE(page.calls(mark).contains("zvtSaveNUCAs 2, \"Delta\""), freeSpace > 0);
}

void tst_NucListDialogChoice::overwritingIsAsked_data()
{
    QTest::addColumn<bool>("factory");
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes") << false << true;
    QTest::newRow("no") << false << false;
    QTest::newRow("factory, yes") << true << true;
    QTest::newRow("factory, no") << true << false;
}

void tst_NucListDialogChoice::overwritingIsAsked()
{
    QFETCH(const bool, factory);
    QFETCH(const bool, yes);
    const QString question = factory ? overwriteFactoryNuc : overwriteNuc;
    NucListPage page(threeNucs);
    page.gate().script("zvtIsFactoryNUC", factory);
    page.open(save);
    const size_t mark = page.gate().mark();
    page.click("Save");
    QTRY_VERIFY(page.findText(question));
    page.awaitFrame();
    QVERIFY(page.find("Yes")->property("destructive").toBool());
    QVERIFY(page.find("No")->hasActiveFocus());
    page.click(yes ? "Yes" : "No");
    page.settle();
    QTRY_VERIFY(!page.findText(question));
    QCOMPARE(page.isOpen(), !yes);
    QCOMPARE(page.calls(mark).filter("zvtSaveNUCAs"), yes ? QStringList("zvtSaveNUCAs 2, \"Bravo\"") : QStringList());
}

void tst_NucListDialogChoice::informationOfARowIsShown_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by its button") << false;
    QTest::newRow("by the space bar") << true;
}

void tst_NucListDialogChoice::informationOfARowIsShown()
{
    QFETCH(const bool, byKey);
    NucListPage page(threeNucs);
    page.open(load);
    if (byKey) {
        page.choose("Charlie");
        page.press(Qt::Key_Space);
    } else {
        page.click("Show NUC Info of Charlie");
        QCOMPARE(page.selected(), QStringList());
    }
    QTRY_VERIFY(page.find("NUC Information"));
    page.settle();
    QVERIFY(page.findText("3.25 KB"));
    page.press(Qt::Key_Escape);
    QTRY_VERIFY(!page.find("NUC Information"));
    QVERIFY(page.isOpen());
}

void tst_NucListDialogChoice::savingSelectsTheNucOfThePreset_data()
{
    QTest::addColumn<bool>("held");
    QTest::newRow("the list is read while it opens") << false;
    QTest::newRow("the list is read later") << true;
}

void tst_NucListDialogChoice::savingSelectsTheNucOfThePreset()
{
    QFETCH(const bool, held);
    NucListPage page(threeNucs);
    if (held) {
        page.gate().hold("zvtListNUCs");
        page.click(save);
        QTRY_VERIFY(page.isOpen());
        page.awaitFrame();
        page.gate().release("zvtListNUCs");
        page.settle();
    } else {
        page.open(save);
    }
    QCOMPARE(page.selected(), QStringList("Bravo"));
    QCOMPARE(page.name(), "Bravo");
    // Only once: a later read does not select it again.
    page.type("x");
    QMetaObject::invokeMethod(page.model(), "refresh");
    page.settle();
    QCOMPARE(page.selected(), QStringList());
    QCOMPARE(page.name(), "x");
}

void tst_NucListDialogChoice::savingUnderAnUnlistedNameSelectsNothing()
{
    NucListPage page({"Alpha", "Charlie"});
    page.open(save);
    QCOMPARE(page.selected(), QStringList());
    QCOMPARE(page.name(), "Bravo");
    QVERIFY(page.enabled("Save"));
    QVERIFY(!page.enabled("Rename"));
}

ZVT_TEST(tst_NucListDialogChoice)
#include "tst_NucListDialogChoice.moc"
