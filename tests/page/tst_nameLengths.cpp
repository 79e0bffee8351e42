#include "tests/page/NucListPage.h"
#include "tests/page/NucWizard.h"
#include "tests/page/StateDialog.h"
#include "tests/support/Test.h"

#include <QClipboard>
#include <QGuiApplication>

/// The length of the names that fields accept, in bytes of UTF-8.
class tst_nameLengths : public Test
{
    Q_OBJECT

private slots:
    void aFieldLeavesOutWhatIsTooLong_data();
    void aFieldLeavesOutWhatIsTooLong();
    void aFieldWithoutALimitTakesAnyText();
    void aTextOfTheModelIsNotCut();
    void aNucIsSavedUnderAShorterName();
    void aNucIsRenamedToAShorterName();
    void theWizardTakesAShorterName();
    void aStateIsSavedUnderAShorterName();
    void aStateIsRenamedToAShorterName();

private:
    static void paste(PageDriver &driver, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        driver.press(Qt::Key_V, Qt::ControlModifier);
    }
    /// A name of 254 bytes, which files can have, and its first `bytes` bytes.
    static QString longName() { return QString(127, QChar(0xe4)); }
    static QString shortened(int bytes) { return longName().left(bytes / 2); }
};

void tst_nameLengths::aFieldLeavesOutWhatIsTooLong_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("cursor");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("after");
    QTest::newRow("fits") << "abc" << 3 << "defgh"
                          << "abcdefgh";
    QTest::newRow("too long") << "abc" << 3 << "defghi"
                              << "abcdefgh";
    QTest::newRow("in the middle") << "abc" << 1 << "123456"
                                   << "a12345bc";
    QTest::newRow("full") << "abcdefgh" << 0 << "x"
                          << "abcdefgh";
    QTest::newRow("two bytes") << "abcdefg" << 7 << QStringLiteral("ä") << "abcdefg";
    QTest::newRow("three bytes") << "ab" << 2 << QStringLiteral("€€€") << QStringLiteral("ab€€");
    QTest::newRow("four bytes") << "abc" << 3 << QStringLiteral("😀😀") << QStringLiteral("abc😀");
    QTest::newRow("very long") << "" << 0 << QString(20'000, u'x') << "xxxxxxxx";
}

void tst_nameLengths::aFieldLeavesOutWhatIsTooLong()
{
    QFETCH(const QString, before);
    QFETCH(const int, cursor);
    QFETCH(const QString, pasted);
    PageDriver driver;
    auto *field = qobject_cast<QQuickItem *>(driver.create("TextBox { maximumBytes: 8 }", {{"modelText", before}}));
    field->forceActiveFocus();
    field->setProperty("cursorPosition", cursor);
    paste(driver, pasted);
    QTEST(field->property("text").toString(), "after");
    QVERIFY(field->property("edited").toBool());
    // The text that Esc restores is the model's.
    driver.press(Qt::Key_Escape);
    QCOMPARE(field->property("text").toString(), before);
}

void tst_nameLengths::aFieldWithoutALimitTakesAnyText()
{
    PageDriver driver;
    auto *field = qobject_cast<QQuickItem *>(driver.create("TextBox {}"));
    field->forceActiveFocus();
    paste(driver, longName());
    QCOMPARE(field->property("text").toString(), longName());
}

void tst_nameLengths::aTextOfTheModelIsNotCut()
{
    PageDriver driver;
    auto *field = qobject_cast<QQuickItem *>(driver.create("TextBox { maximumBytes: 8; modelText: \"abcdefghij\" }"));
    QCOMPARE(field->property("text").toString(), "abcdefghij");
    field->forceActiveFocus();
    driver.press(Qt::Key_End);
    driver.press(Qt::Key_Backspace);
    QCOMPARE(field->property("text").toString(), "abcdefghi");
    // It does not become longer.
    driver.type("xy");
    QCOMPARE(field->property("text").toString(), "abcdefghi");
}

void tst_nameLengths::aNucIsSavedUnderAShorterName()
{
    NucListPage page({"Alpha"});
    page.open("Save Current NUC 2");
    QTRY_VERIFY(page.nameField()->hasActiveFocus());
    page.press(Qt::Key_A, Qt::ControlModifier);
    paste(page, longName());
    QCOMPARE(page.name(), shortened(200));
    const size_t mark = page.gate().mark();
    page.press(Qt::Key_Return);
    page.settle();
    QTRY_VERIFY(!page.isOpen());
    QVERIFY(page.calls(mark).contains("zvtSaveNUCAs 2, \"" + shortened(200) + "\""));
}

void tst_nameLengths::aNucIsRenamedToAShorterName()
{
    NucListPage page({"Alpha"});
    page.open("Manage NUCs");
    page.choose("Alpha");
    page.click("Rename");
    QTRY_VERIFY(page.find("New Name") && page.find("New Name")->hasActiveFocus());
    paste(page, longName());
    page.press(Qt::Key_Return);
    QTRY_VERIFY(!page.find("New Name"));
    page.settle();
    QCOMPARE(page.names(), QStringList(shortened(200)));
}

void tst_nameLengths::theWizardTakesAShorterName()
{
    NucWizard wizard({.detectBadPixels = false});
    wizard.use("Next");
    wizard.item("Name").forceActiveFocus(Qt::TabFocusReason);
    wizard.press(Qt::Key_A, Qt::ControlModifier);
    paste(wizard, longName());
    QCOMPARE(wizard.text("Name"), shortened(200));
}

void tst_nameLengths::aStateIsSavedUnderAShorterName()
{
    StateDialog dialog({"Alpha"});
    dialog.open("Save State As");
    QTRY_VERIFY(dialog.driver.item("State Name").hasActiveFocus());
    paste(dialog.driver, longName());
    dialog.driver.press(Qt::Key_Return);
    dialog.driver.settle();
    QTRY_VERIFY(!dialog.isOpen());
    QCOMPARE(zvtStateExists(dialog.handle(), shortened(199).toUtf8().constData()), 0);
}

void tst_nameLengths::aStateIsRenamedToAShorterName()
{
    StateDialog dialog({"Alpha"});
    dialog.open("Manage States");
    dialog.click("Alpha");
    dialog.driver.click("Rename");
    QTRY_VERIFY(dialog.driver.find("New Name") && dialog.driver.find("New Name")->hasActiveFocus());
    paste(dialog.driver, longName());
    dialog.driver.press(Qt::Key_Return);
    QTRY_VERIFY(!dialog.driver.find("New Name"));
    dialog.driver.settle();
    QCOMPARE(dialog.names(), QStringList(shortened(199)));
}

ZVT_TEST(tst_nameLengths)
#include "tst_nameLengths.moc"
