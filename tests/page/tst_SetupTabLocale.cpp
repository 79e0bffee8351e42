#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"
#include "tests/support/otherLocale.h"

/// Numbers on the Setup page in a locale that writes decimals with a comma.
class tst_SetupTabLocale : public Test
{
    Q_OBJECT

private slots:
    void decimalsOfTheLocale();
};

void tst_SetupTabLocale::decimalsOfTheLocale()
{
    if (!hasLocale(*this, "de_DE.UTF-8"))
        return;
    SetupPage page;
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), "2,000000");
    QCOMPARE(page.item("Frame Rate 0").property("editText").toString(), "100,00");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Integration Time 0", "1,5");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetIntegrationTime 0, 1, 1.5"});
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), "1,500000");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "33,3");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetFrameRate 0, 1, 33.3"});
    page.type("Distance", "12,25");
    page.press(Qt::Key_Tab);
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.25F);
    QCOMPARE(page.text("Distance"), "12,25");
    QVERIFY(page.text("Range").contains(u','));
    // A point is not a decimal separator here, so the text is refused and the lens does not move.
    QCOMPARE(page.commandsOf([&page] {
        page.type("Distance", "13.5");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.25F);
    QVERIFY(!page.enabled("Focus To Distance"));
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Distance"), "12,25");
    page.type("Distance", "2.5");
    page.press(Qt::Key_Tab);
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.25F);
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "13.5");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "1.013,5");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetFrameRate 0, 1, 1013.5"});
    page.click("Focus");
    page.settle();
    QCOMPARE(page.commandsOf([&page] {
        page.type("Focus", "2.5");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QVERIFY(!page.enabled("Apply"));
    QCOMPARE(page.commandsOf([&page] {
        page.press(Qt::Key_A, Qt::ControlModifier);
        page.PageDriver::type("4321");
        page.press(Qt::Key_Return);
    }),
             QStringList{"zvtSetFocusPos 4321"});
}

ZVT_TEST(tst_SetupTabLocale)
#include "tst_SetupTabLocale.moc"
