#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QRect>

/// The window settings of the Setup page, and the rules that a window must meet before it is sent to the camera.
class tst_SetupTabWindow : public Test
{
    Q_OBJECT

private slots:
    void sizeIsChosen();
    void imageIsFlipped_data();
    void imageIsFlipped();
    void editorFollowsTheModel();
    void ruleThatFailsIsToldAndMarked_data();
    void ruleThatFailsIsToldAndMarked();
    void windowThatFitsIsApplied();
    void firstFailingRuleIsTold();
    void dragIsAnEditToo();
    void anotherWindowReplacesATypedText();
    void nothingToApplyWithoutAnEdit();
    void fieldWithoutANumberIsNotApplied();
    void fieldsTellTheirRules();
    void fieldsTakeNumbersOnly();
    void withoutOffsetsTheWindowStaysInTheMiddle();
    void withoutFreeWindowsThereIsNoEditor();
    void warningGoes_data();
    void warningGoes();
    void editedWindowSurvivesReadsAndOtherTabs();
    void anotherWindowOfTheCameraOvertakesAnEdit();
    void escapeDiscardsAnEdit();
    void mendedFieldTakesTheWarningAway();
    void warningComesIntoView();

private:
    static constexpr auto warning = "Window Warning";
    /// Types texts into fields: a list of field, text, field, text.
    static void edit(SetupPage &page, const QStringList &fieldsAndTexts);
    static QStringList marked(SetupPage &page);
    static bool unsaved(SetupPage &page) { return page.tab()->property("fpaWindowSizeHasUnsavedValues").toBool(); }
};

void tst_SetupTabWindow::edit(SetupPage &page, const QStringList &fieldsAndTexts)
{
    for (qsizetype i = 0; i + 1 < fieldsAndTexts.size(); i += 2)
        page.type(fieldsAndTexts.at(i), fieldsAndTexts.at(i + 1));
}

QStringList tst_SetupTabWindow::marked(SetupPage &page)
{
    QStringList names;
    for (const QString name : {"Width", "Height", "X Offset", "Y Offset"}) {
        const auto *background = page.item(name).property("background").value<QQuickItem *>();
        if (background->property("color").value<QColor>() == QColor("#5a1a1a"))
            names << name;
    }
    return names;
}

void tst_SetupTabWindow::sizeIsChosen()
{
    SetupPage page;
    QCOMPARE(page.shown("Image Size"), "640x512");
    edit(page, {"Width", "320"});
    QVERIFY(unsaved(page));
    QCOMPARE(page.commandsOf([&page] { page.choose("Image Size", "320x256"); }),
             QStringList{"controller.SetWindowSizeIndex 2"});
    QVERIFY(!unsaved(page));
    QCOMPARE(page.text("Width"), "320");
    QCOMPARE(page.text("Height"), "256");
    // The free size itself changes nothing, and the text typed before is discarded.
    edit(page, {"Width", "640"});
    page.choose("Image Size", "Custom");
    QVERIFY(!unsaved(page));
    QCOMPARE(page.text("Width"), "320");
}

void tst_SetupTabWindow::imageIsFlipped_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("flip");
    QTest::newRow("left to right") << "Flip Horizontally"
                                   << "zvtSetRevertEnabled"
                                   << "hFlip";
    QTest::newRow("top to bottom") << "Flip Vertically"
                                   << "zvtSetInvertEnabled"
                                   << "vFlip";
}

void tst_SetupTabWindow::imageIsFlipped()
{
    QFETCH(const QString, button);
    QFETCH(const QString, command);
    QFETCH(const QString, flip);
    SetupPage page;
    QCOMPARE(page.item(button).property("toolTip").toString(), button);
    QCOMPARE(page.commandsOf([&] { page.click(button); }), QStringList{command + " true"});
    QVERIFY(page.item(button).property("highlighted").toBool());
    QVERIFY(page.item("Image Window").property(qPrintable(flip)).toBool());
    QCOMPARE(page.commandsOf([&] { page.click(button); }), QStringList{command + " false"});
    // A refused flip is not shown.
    page.rig().gate().failAlways(command.toStdString());
    page.click(button);
    QVERIFY(!page.item(button).property("highlighted").toBool());
}

void tst_SetupTabWindow::editorFollowsTheModel()
{
    SetupPage page;
    const QQuickItem &editor = page.item("Image Window");
    page.general()->setProperty("window", QRect(160, 128, 320, 256));
    QCOMPARE(editor.property("window").toRect(), QRect(160, 128, 320, 256));
    QCOMPARE(page.text("X Offset"), "160");
    QCOMPARE(page.text("Y Offset"), "128");
    QCOMPARE(editor.property("minSize").toSize(), QSize(64, 4));
    QCOMPARE(editor.property("maxSize").toSize(), QSize(640, 512));
    QCOMPARE(editor.property("increment").toPoint(), QPoint(16, 4));
    QVERIFY(!editor.property("centeredOnly").toBool());
    QVERIFY(!unsaved(page));
}

void tst_SetupTabWindow::ruleThatFailsIsToldAndMarked_data()
{
    QTest::addColumn<QStringList>("edits");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("fields");
    const QString width = QStringLiteral("The width must be between 64 and 640 in increments of 16");
    const QString height = QStringLiteral("The height must be between 4 and 512 in increments of 4");
    const QString x = QStringLiteral("The X Offset must be between 0 and 576 in increments of 16");
    const QString y = QStringLiteral("The Y Offset must be between 0 and 508 in increments of 4");
    QTest::newRow("too wide at its place")
        << QStringList{"Width", "320", "X Offset", "336"} << "Width + X Offset cannot be greater than FPA Width"
        << QStringList{"Width", "X Offset"};
    QTest::newRow("too high at its place")
        << QStringList{"Height", "512", "Y Offset", "4"} << "Height + Y Offset cannot be greater than FPA Height"
        << QStringList{"Height", "Y Offset"};
    QTest::newRow("no width") << QStringList{"Width", "0"} << width << QStringList{"Width"};
    QTest::newRow("too narrow") << QStringList{"Width", "48"} << width << QStringList{"Width"};
    QTest::newRow("width between steps") << QStringList{"Width", "72"} << width << QStringList{"Width"};
    QTest::newRow("no height") << QStringList{"Height", "0"} << height << QStringList{"Height"};
    QTest::newRow("height between steps") << QStringList{"Height", "6"} << height << QStringList{"Height"};
    QTest::newRow("place between steps") << QStringList{"Width", "64", "X Offset", "8"} << x << QStringList{"X Offset"};
    QTest::newRow("line between steps") << QStringList{"Height", "4", "Y Offset", "2"} << y << QStringList{"Y Offset"};
}

void tst_SetupTabWindow::ruleThatFailsIsToldAndMarked()
{
    QFETCH(const QStringList, edits);
    QFETCH(const QString, text);
    QFETCH(const QStringList, fields);
    SetupPage page;
    QCOMPARE(page.commandsOf([&] {
        edit(page, edits);
        QVERIFY(!page.find(warning));
        page.click("Apply Settings");
    }),
             QStringList());
    QCOMPARE(page.text(warning), text);
    QCOMPARE(marked(page), fields);
    QVERIFY(unsaved(page));
    // A valid window removes the warning.
    edit(page, {"Width", "64", "Height", "64", "X Offset", "0", "Y Offset", "0"});
    page.click("Apply Settings");
    QVERIFY(!page.find(warning));
    QCOMPARE(marked(page), QStringList());
}

void tst_SetupTabWindow::windowThatFitsIsApplied()
{
    SetupPage page;
    edit(page, {"Width", "320", "Height", "256", "X Offset", "160", "Y Offset", "128"});
    QVERIFY(unsaved(page));
    QCOMPARE(page.commandsOf([&page] { page.click("Apply Settings"); }),
             QStringList{"controller.SetWindow 160, 128, 320, 256"});
    QVERIFY(!unsaved(page));
    QCOMPARE(page.general()->property("window").toRect(), QRect(160, 128, 320, 256));
    QVERIFY(!page.enabled("Apply Settings"));
}

// All rules are broken. Each is reported when all rules before it are met.
void tst_SetupTabWindow::firstFailingRuleIsTold()
{
    SetupPage page;
    edit(page, {"Width", "632", "Height", "510", "X Offset", "24", "Y Offset", "6"});
    const auto told = [&page](const QStringList &mended) {
        edit(page, mended);
        page.click("Apply Settings");
        return page.text(warning).section(u' ', 0, 2);
    };
    QCOMPARE(told({}), "Width + X");
    QCOMPARE(told({"Width", "600"}), "Height + Y");
    QCOMPARE(told({"Height", "502"}), "The width must");
    QCOMPARE(told({"Width", "608"}), "The height must");
    QCOMPARE(told({"Height", "504"}), "The X Offset");
    QCOMPARE(told({"X Offset", "16"}), "The Y Offset");
    QCOMPARE(page.commandsOf([&] { told({"Y Offset", "4"}); }), QStringList{"controller.SetWindow 16, 4, 608, 504"});
}

void tst_SetupTabWindow::dragIsAnEditToo()
{
    SetupPage page;
    page.general()->setProperty("window", QRect(0, 0, 320, 256));
    QVERIFY(!unsaved(page));
    page.item("Image Window").forceActiveFocus();
    const QStringList commands = page.commandsOf([&page] { page.press(Qt::Key_Right); });
    QCOMPARE(commands, QStringList());
    QVERIFY(unsaved(page));
    QCOMPARE(page.text("X Offset"), "16");
    QCOMPARE(page.commandsOf([&page] { page.click("Apply Settings"); }),
             QStringList{"controller.SetWindow 16, 0, 320, 256"});
}

void tst_SetupTabWindow::anotherWindowReplacesATypedText()
{
    SetupPage page;
    page.general()->setProperty("window", QRect(0, 0, 320, 256));
    page.type("X Offset", "12a");
    QVERIFY(!page.enabled("Apply Settings"));
    page.item("Image Window").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    // The next step of the picture from 12, which was typed before the letter.
    QCOMPARE(page.text("X Offset"), "32");
    QCOMPARE(page.item("X Offset").property("fault").toString(), QString());
    QVERIFY(page.enabled("Apply Settings"));
}

void tst_SetupTabWindow::nothingToApplyWithoutAnEdit()
{
    SetupPage page;
    QVERIFY(!page.enabled("Apply Settings"));
    edit(page, {"Width", "320"});
    QVERIFY(page.enabled("Apply Settings"));
}

void tst_SetupTabWindow::fieldWithoutANumberIsNotApplied()
{
    SetupPage page;
    edit(page, {"Width", "320"});
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_Delete);
    QVERIFY(!page.enabled("Apply Settings"));
    QCOMPARE(marked(page), QStringList{"Width"});
    // The text stays until it is corrected or discarded.
    page.press(Qt::Key_Tab);
    QCOMPARE(page.text("Width"), "");
    QVERIFY(!page.enabled("Apply Settings"));
    page.item("Width").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Width"), "320");
    QVERIFY(page.enabled("Apply Settings"));
}

void tst_SetupTabWindow::fieldsTellTheirRules()
{
    SetupPage page;
    const auto toolTip = [&page](const QString &name) { return page.item(name).property("toolTip").toString(); };
    QCOMPARE(toolTip("Width"), "The width must be between 64 and 640 in increments of 16");
    QCOMPARE(toolTip("Height"), "The height must be between 4 and 512 in increments of 4");
    QCOMPARE(toolTip("X Offset"), "The X Offset must be between 0 and 576 in increments of 16");
    QCOMPARE(toolTip("Y Offset"), "The Y Offset must be between 0 and 508 in increments of 4");
}

void tst_SetupTabWindow::fieldsTakeNumbersOnly()
{
    SetupPage page;
    for (const QString name : {"Width", "Height", "X Offset", "Y Offset"}) {
        QCOMPARE(page.item(name).property("from").toInt(), 0);
        QCOMPARE(page.item(name).property("to").toInt(), 10000);
        page.type(name, "12a");
        QCOMPARE(page.item(name).property("fault").toString(), "Not a number");
        QVERIFY(!page.enabled("Apply Settings"));
        page.press(Qt::Key_Escape);
        QCOMPARE(page.item(name).property("fault").toString(), QString());
    }
}

void tst_SetupTabWindow::withoutOffsetsTheWindowStaysInTheMiddle()
{
    SetupPage page("discrete-fov");
    QVERIFY(page.item("Image Window").property("centeredOnly").toBool());
    QVERIFY(!page.find("X Offset"));
    QVERIFY(!page.find("Y Offset"));
    edit(page, {"Width", "320", "Height", "256"});
    QCOMPARE(page.commandsOf([&page] { page.click("Apply Settings"); }),
             QStringList{"controller.SetWindow 160, 128, 320, 256"});
}

void tst_SetupTabWindow::withoutFreeWindowsThereIsNoEditor()
{
    const SetupPage page("low-cost");
    QVERIFY(page.find("Image Size"));
    for (const QString name : {"Image Window", "Width", "Apply Settings"})
        QVERIFY(!page.find(name));
}

void tst_SetupTabWindow::warningGoes_data()
{
    QTest::addColumn<QString>("with");
    for (const char *with : {"size", "header", "tab"})
        QTest::newRow(with) << with;
}

void tst_SetupTabWindow::warningGoes()
{
    QFETCH(const QString, with);
    SetupPage page;
    edit(page, {"Width", "72"});
    page.click("Apply Settings");
    QVERIFY(page.find(warning));
    if (with == "size") {
        page.choose("Image Size", "512x512");
    } else if (with == "header") {
        page.click("Refresh General Setup");
    } else {
        page.showTab(0);
        page.showTab(1);
    }
    page.settle();
    QVERIFY(!page.find(warning));
    QCOMPARE(marked(page), QStringList());
}

void tst_SetupTabWindow::editedWindowSurvivesReadsAndOtherTabs()
{
    SetupPage page;
    edit(page, {"Width", "320"});
    page.click("Refresh General Setup");
    page.settle();
    page.showTab(0);
    page.showTab(1);
    QCOMPARE(page.text("Width"), "320");
    QVERIFY(unsaved(page));
    QCOMPARE(page.commandsOf([&page] { page.click("Apply Settings"); }),
             QStringList{"controller.SetWindow 0, 0, 320, 512"});
}

void tst_SetupTabWindow::anotherWindowOfTheCameraOvertakesAnEdit()
{
    SetupPage page;
    edit(page, {"Width", "320"});
    QVERIFY(page.rig().camera().otherClient().set("sensor.window", QVariantList{160, 128, 320, 256}));
    page.click("Refresh General Setup");
    page.settle();
    QCOMPARE(page.text("X Offset"), "160");
    QVERIFY(!unsaved(page));
}

void tst_SetupTabWindow::escapeDiscardsAnEdit()
{
    SetupPage page;
    edit(page, {"Width", "72"});
    page.click("Apply Settings");
    QVERIFY(page.find(warning));
    page.item("Width").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Escape);
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Width"), "640");
    QVERIFY(!unsaved(page));
    QVERIFY(!page.find(warning));
}

void tst_SetupTabWindow::mendedFieldTakesTheWarningAway()
{
    SetupPage page;
    edit(page, {"Width", "72"});
    page.click("Apply Settings");
    QVERIFY(page.find(warning));
    edit(page, {"Width", "64"});
    QVERIFY(!page.find(warning));
    QCOMPARE(marked(page), QStringList());
}

void tst_SetupTabWindow::warningComesIntoView()
{
    SetupPage page;
    page.page()->setHeight(480);
    page.settle();
    page.type("Width", "639");
    page.settle();
    page.item("Apply Settings").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Return);
    page.settle();
    page.settle();
    const QQuickItem &label = page.item(warning);
    const QRectF place = label.mapRectToScene(label.boundingRect());
    QVERIFY(place.height() > 10);
    QVERIFY2(place.bottom() <= 480, qPrintable(QString::number(place.bottom())));
}

ZVT_TEST(tst_SetupTabWindow)
#include "tst_SetupTabWindow.moc"
